# Settings every target of the project shares, and a helper that makes a target of a folder.
#
# Floating-point results must not depend on the compiler: no contraction into fused operations, and
# SSE arithmetic in 32-bit builds too.
add_library(elugraph-settings INTERFACE)
target_include_directories(elugraph-settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(elugraph-settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wimplicit-fallthrough -Werror -ffp-contract=off)
# GCC 12 takes std::string's own copying for an overlapping one when it optimises.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(elugraph-settings INTERFACE -Wno-restrict)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_options(elugraph-settings INTERFACE -msse2 -mfpmath=sse)
endif()

# For code between a drawing pass and the instruction that may fault on a host's data: cleanups of a
# function also run when one of its own instructions, not only a call, throws.
add_library(elugraph-fault-unwinding INTERFACE)
target_compile_options(elugraph-fault-unwinding INTERFACE
  -fnon-call-exceptions -fasynchronous-unwind-tables)

# elugraph_folder(<target> <folder>): an object library of the folder's sources.
function(elugraph_folder target folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  add_library(${target} OBJECT ${sources})
  target_link_libraries(${target} PUBLIC elugraph-settings)
endfunction()
