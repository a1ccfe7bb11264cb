// Containment of failures: C++ exceptions, and machine faults of the calling thread.
#pragma once

#include <cxxabi.h>

#include <exception>
#include <utility>

// While one lives, a memory or division fault of this thread (SIGSEGV, SIGBUS, SIGFPE raised by the
// processor, not sent by someone) is thrown as a MachineFault out of the faulting instruction. Code
// that may fault has to be compiled with -fnon-call-exceptions; see docs/faults.md for what else
// cannot be caught.
//
// The first scope of the process installs handlers, the last one puts back those it found. Faults
// of threads without a scope, and signals that are not faults, go to the handlers found. Scopes
// nest, and different threads may have theirs at the same time; each ends on the thread and in the
// stack frame that began it.
class FaultScope {
 public:
  FaultScope();
  FaultScope(const FaultScope&) = delete;
  FaultScope& operator=(const FaultScope&) = delete;
  ~FaultScope();
};

struct MachineFault : std::exception {
  explicit MachineFault(int signal_) : signal(signal_) {}
  const char* what() const noexcept override { return "machine fault"; }
  int signal;
};

// Runs `work`. False where it threw or faulted; all its objects are then destroyed. Only the ending
// of the thread itself (pthread_cancel, pthread_exit) passes through.
template <typename Work>
bool Guarded(Work&& work) {
  const FaultScope scope;
  try {
    std::forward<Work>(work)();
    return true;
  } catch (abi::__forced_unwind&) {
    throw;
  } catch (...) {
    return false;
  }
}
