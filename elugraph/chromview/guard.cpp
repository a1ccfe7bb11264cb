#include "elugraph/chromview/guard.h"

#include <pthread.h>
#include <signal.h>

#include <array>
#include <cstddef>
#include <mutex>

namespace {

constexpr std::array<int, 3> kSignals = {SIGSEGV, SIGBUS, SIGFPE};

// Read in the handler, so it must not be allocated on first use: initial-exec storage is part of
// the thread from its start.
thread_local int scopesOfThread __attribute__((tls_model("initial-exec"))) = 0;

std::mutex installation;  // guards the two below, but for reading `found` in the handler
int threadsInside = 0;
// What each signal did before. Kept after the last scope's end: a handler installed over ours in
// the meantime may still call ours.
std::array<struct sigaction, kSignals.size()> found{};

std::size_t SlotOf(int signal) {
  std::size_t slot = 0;
  while (slot + 1 < kSignals.size() && kSignals[slot] != signal) ++slot;
  return slot;
}

// What the kernel itself raised for an instruction, which raises it again if executed again. The
// codes of kill, raise and timers are 0 and below.
bool IsFault(const siginfo_t& info) { return info.si_code > 0; }

// Acts as if the handler found had been there all along.
void PassOn(int signal, siginfo_t* info, void* context) {
  const struct sigaction before = found[SlotOf(signal)];
  const bool takesInfo = (before.sa_flags & SA_SIGINFO) != 0;
  if (!takesInfo && before.sa_handler == SIG_IGN && !IsFault(*info)) return;
  if (!takesInfo && (before.sa_handler == SIG_DFL || before.sa_handler == SIG_IGN)) {
    // A fault comes again on return, and then ends the process at the instruction that caused it.
    struct sigaction fallback {};
    fallback.sa_handler = SIG_DFL;
    sigaction(signal, &fallback, nullptr);
    if (!IsFault(*info)) raise(signal);
    return;
  }
  sigset_t blocked = before.sa_mask;
  if ((before.sa_flags & SA_NODEFER) == 0) sigaddset(&blocked, signal);
  sigset_t outside;
  pthread_sigmask(SIG_BLOCK, &blocked, &outside);
  if (takesInfo) {
    before.sa_sigaction(signal, info, context);
  } else {
    before.sa_handler(signal);
  }
  pthread_sigmask(SIG_SETMASK, &outside, nullptr);
}

void OnFault(int signal, siginfo_t* info, void* context) {
  if (scopesOfThread > 0 && IsFault(*info)) throw MachineFault(signal);
  PassOn(signal, info, context);
}

// SA_NODEFER: the handler is left by an exception, which does not give back a signal mask. No
// SA_ONSTACK: unwinding needs more room than an alternate stack is sure to have.
void Install() {
  struct sigaction ours {};
  ours.sa_sigaction = OnFault;
  ours.sa_flags = SA_SIGINFO | SA_NODEFER;
  sigemptyset(&ours.sa_mask);
  for (std::size_t slot = 0; slot < kSignals.size(); ++slot) {
    sigaction(kSignals[slot], nullptr, &found[slot]);
    sigaction(kSignals[slot], &ours, nullptr);
  }
}

// A handler that someone else installed over ours stays.
void Uninstall() {
  for (std::size_t slot = 0; slot < kSignals.size(); ++slot) {
    struct sigaction current {};
    sigaction(kSignals[slot], nullptr, &current);
    const bool ours = (current.sa_flags & SA_SIGINFO) != 0 && current.sa_sigaction == OnFault;
    if (ours) sigaction(kSignals[slot], &found[slot], nullptr);
  }
}

}  // namespace

FaultScope::FaultScope() {
  if (scopesOfThread == 0) {
    const std::lock_guard lock(installation);
    if (threadsInside == 0) Install();
    ++threadsInside;
  }
  ++scopesOfThread;
}

FaultScope::~FaultScope() {
  --scopesOfThread;
  if (scopesOfThread > 0) return;
  const std::lock_guard lock(installation);
  --threadsInside;
  if (threadsInside == 0) Uninstall();
}
