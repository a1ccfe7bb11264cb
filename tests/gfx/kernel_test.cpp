#include "platform/kernel/kernel.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>

#include "tests/gfx/gdi_fixture.h"

namespace {

TEST(MulDiv, RoundsHalvesAwayFromZero) {
  // number, numerator, denominator, result
  const int cases[][4] = {{7, 3, 2, 11},      {-7, 3, 2, -11},   {7, -3, 2, -11},
                          {7, 3, -2, -11},    {-7, -3, -2, -11}, {10, 1, 3, 3},
                          {11, 1, 3, 4},      {5, 5, 0, -1},     {kMax, kMax, kMax, kMax},
                          {kMin, 1, -1, -1},  {kMax, 2, 1, -1},  {kMin, kMin, kMin, kMin},
                          {kMin, 1, 1, kMin}, {1, 1, kMin, 0},   {kMin, kMin, kMax, -1}};
  for (const auto& c : cases) EXPECT_EQ(MulDiv(c[0], c[1], c[2]), c[3]) << c[0] << " " << c[1];
}

TEST(IsBadStringPtr, ReadsToTheTerminatorOrTheLimit) {
  const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  char* memory = static_cast<char*>(
      mmap(nullptr, 3 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
  ASSERT_NE(memory, MAP_FAILED);
  std::memset(memory, 'x', 3 * page);
  char* const end = memory + 2 * page;  // behind it nothing can be read
  ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
  EXPECT_FALSE(IsBadStringPtrA(end - 5, 5));
  EXPECT_TRUE(IsBadStringPtrA(end - 5, 6));
  EXPECT_TRUE(IsBadStringPtrA(memory + 1, ~UINT_PTR{0}));
  EXPECT_FALSE(IsBadStringPtrA(memory + 1, 2 * page - 1));
  end[-1] = '\0';
  EXPECT_FALSE(IsBadStringPtrA(memory, ~UINT_PTR{0})) << "over a page border to the terminator";
  EXPECT_FALSE(IsBadStringPtrA(end - 1, 100));
  EXPECT_TRUE(IsBadStringPtrA(end, 1));
  EXPECT_FALSE(IsBadStringPtrA(end - 1, 0));
  munmap(memory, 3 * page);
  EXPECT_TRUE(IsBadStringPtrA(memory, 1)) << "no longer there";
  for (const UINT_PTR address : {UINT_PTR{0}, UINT_PTR{1}, ~UINT_PTR{0}, ~UINT_PTR{0} - 4096}) {
    EXPECT_TRUE(IsBadStringPtrA(reinterpret_cast<const char*>(address), ~UINT_PTR{0})) << address;
  }
  EXPECT_FALSE(IsBadStringPtrA("", 10));
}

}  // namespace
