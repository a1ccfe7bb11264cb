// Failures inside a pass: where they are reported, where drawing goes on, and what is left behind.
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <thread>

#include "elugraph/chromview/guard.h"
#include "tests/chromview/chrom_view.h"

namespace {

// 64 KiB of memory that nobody may read, behind `readable` bytes from data() on.
class CutMemory {
 public:
  explicit CutMemory(std::size_t readable)
      : readable_(readable),
        base_(static_cast<char*>(
            mmap(nullptr, 2 * kHalf, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    mprotect(base_ + kHalf, kHalf, PROT_NONE);
  }
  CutMemory(const CutMemory&) = delete;
  CutMemory& operator=(const CutMemory&) = delete;
  ~CutMemory() { munmap(base_, 2 * kHalf); }
  char* data() const { return base_ + kHalf - readable_; }

 private:
  static constexpr std::size_t kHalf = 65536;
  std::size_t readable_;
  char* base_;
};

std::array<struct sigaction, 3> Handlers() {
  std::array<struct sigaction, 3> now{};
  const int signals[] = {SIGSEGV, SIGBUS, SIGFPE};
  for (int i = 0; i < 3; ++i) sigaction(signals[i], nullptr, &now[i]);
  return now;
}

// Checks that all is as before: handlers, drawing objects, saved states.
struct Unchanged {
  explicit Unchanged(HDC hdc) : hdc_(hdc), pen_(GetCurrentObject(hdc, OBJ_PEN)) {}
  void Check() const {
    const auto now = Handlers();
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(now[i].sa_sigaction, handlers_[i].sa_sigaction);
      EXPECT_EQ((now[i].sa_flags ^ handlers_[i].sa_flags) & (SA_SIGINFO | SA_NODEFER), 0);
    }
    EXPECT_EQ(gfx::LiveObjects(), objects_);
    EXPECT_EQ(GetCurrentObject(hdc_, OBJ_PEN), pen_);
    EXPECT_EQ(SaveDC(hdc_), 1);
    RestoreDC(hdc_, 1);
  }
  HDC hdc_;
  HGDIOBJ pen_;
  std::array<struct sigaction, 3> handlers_ = Handlers();
  std::size_t objects_ = gfx::LiveObjects();
};

__attribute__((no_sanitize("undefined"), noinline)) void DivideByZero() {
  volatile int zero = 0;
  volatile int quotient = 100 / zero;
  static_cast<void>(quotient);
}
__attribute__((noinline)) void ReadProtected() {
  static const CutMemory memory(0);
  volatile char value = memory.data()[0];
  static_cast<void>(value);
}

// Three channels; the samples of the middle one end after 50 of 100.
class BrokenChannel : public ChromView {
 protected:
  BrokenChannel() : memory_(50 * sizeof(LONG)) {
    AddChannel("a", std::vector<LONG>(100, 10));
    AddChannel("b", {}).sampleCount = 100;
    auto* samples = reinterpret_cast<LONG*>(memory_.data());
    for (int i = 0; i < 50; ++i) samples[i] = 20 + i;
    channel(1).samples = samples;
    AddChannel("c", std::vector<LONG>(100, 30));
    AddPeak(10, 15, 20);
    view.flags = THoldWindow::kBaselines;
  }
  CutMemory memory_;
};

TEST_F(BrokenChannel, LosesItsTraceOnly) {
  const Unchanged before(hdc);
  for (const int path : {0, 0x2000, 0x8000, 0x18000}) {  // averaged, exact, per pixel, overlay
    SCOPED_TRACE(path);
    Host().developer = path > 0xFFFF;
    view.flags = static_cast<WORD>(THoldWindow::kBaselines | path);
    const Strings lines = Draw();
    EXPECT_EQ(other_host::Calls(), (Strings{"bHasRawData", "basecalc 0", "exceptout draft draw()",
                                            "basecalc 1", "basecalc 2", "recalctime"}));
    EXPECT_EQ(With(lines, "#008000").size(), 9U) << "three baselines of three lines";
    EXPECT_FALSE(With(With(lines, "polyline"), "#660000").empty()) << "the channel behind";
    before.Check();
  }
}

TEST_F(BrokenChannel, LosesItsTraceOnlyWhereNothingOfItCanBeRead) {
  const Unchanged before(hdc);
  channel(1).samples += 50;
  chrom.peakCount = 0;
  view.flags = THoldWindow::kNameList | 1;
  // Reporting fails as well: the next steps follow nevertheless.
  Host().onCall = [](const std::string& call) {
    if (call.starts_with("exceptout")) throw std::runtime_error("host");
  };
  EXPECT_FALSE(With(With(Draw(), "polyline"), "#660000").empty()) << "the channel behind";
  EXPECT_EQ(other_host::Calls(), (Strings{"bHasRawData", "basecalc 0", "exceptout draft draw()",
                                          "basecalc 1", "basecalc 2", "recalctime"}));
  before.Check();
}

TEST_F(BrokenChannel, EndsThePictureWhereItIsReadOutsideTheTrace) {
  const Unchanged before(hdc);
  channel(1).samples += 50;  // its name finds no place
  EXPECT_TRUE(With(Draw(), "#660000").empty());
  EXPECT_EQ(other_host::Calls(),
            (Strings{"bHasRawData", "basecalc 0", "exceptout showchrom catched", "recalctime"}));
  before.Check();
}

TEST_F(ChromView, FailuresOfTheHost) {
  AddChannel("a", std::vector<LONG>(100, 10));
  const Unchanged before(hdc);
  const struct {
    const char* call;
    WORD labelMode;
    Strings last;
  } cases[] = {{"bHasRawData", 0, {}},
               {"recognize", 3, {"exceptout showchrom catched", "recalctime"}},
               {"update_quant", 4, {"exceptout showchrom catched", "recalctime"}},
               {"basecalc 0", 1, {"exceptout showchrom catched", "recalctime"}},
               {"recalctime", 0, {}}};
  void (*const failures[])() = {[] { throw std::runtime_error("host"); }, ReadProtected,
                                DivideByZero};
  for (const auto fail : failures) {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.call);
      Host().onCall = [&](const std::string& call) {
        if (call == c.call) fail();
      };
      view.flags = c.labelMode;
      Draw();
      const Strings& calls = other_host::Calls();
      const auto failed = std::find(calls.begin(), calls.end(), c.call);
      ASSERT_NE(failed, calls.end());
      EXPECT_EQ(Strings(failed + 1, calls.end()), c.last);
      before.Check();
    }
  }
  Host().onCall = nullptr;
  chrom.window = nullptr;
  Draw();
  EXPECT_EQ(With(other_host::Calls(), "catched"), Strings{"exceptout showchrom catched"});
}

// The axes stop without a word, and before their first line.
TEST_F(ChromView, HostWithoutTimeUnits) {
  AddChannel("a", std::vector<LONG>(100, 10));
  const Unchanged before(hdc);
  EXPECT_FALSE(With(Draw(), "#0A0A0A").empty());
  Host().unitsFail = true;
  const Strings lines = Draw();
  EXPECT_EQ(With(lines, "#0A0A0A"), Strings());
  EXPECT_FALSE(With(lines, "polyline").empty());
  EXPECT_EQ(other_host::Calls(), (Strings{"bHasRawData", "recalctime"}));
  before.Check();
}

TEST_F(ChromView, TextThatEndsInUnreadableMemory) {
  const CutMemory text(5000);
  std::memset(text.data(), 'x', 5000);
  AddChannel("a", std::vector<LONG>(100, 10)).description = text.data();
  EXPECT_EQ(With(Draw(), "\"a(\"").size(), 1U);
  char expected[60];
  std::snprintf(expected, sizeof expected, "exceptout CalcLen( 0x%X, 2 ) catched",
                static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(text.data())));
  EXPECT_EQ(With(other_host::Calls(), "catched"), Strings{expected});
}

#ifdef __SANITIZE_ADDRESS__
#define EXPECT_ENDS_AS_USUAL(statement) EXPECT_DEATH(statement, "AddressSanitizer")
#else
#define EXPECT_ENDS_AS_USUAL(statement) EXPECT_EXIT(statement, testing::KilledBySignal(SIGSEGV), "")
#endif

TEST_F(BrokenChannel, FaultsElsewhereAreTheProcesssOwn) {
  const auto drawWith = [this](void (*duringPass)()) {
    Host().onCall = [=](const std::string&) { duringPass(); };
    Draw();
  };
  const auto nothing = [] {};
  const auto otherThread = [] { std::thread(ReadProtected).join(); };
  EXPECT_ENDS_AS_USUAL((drawWith(nothing), ReadProtected()));
  EXPECT_ENDS_AS_USUAL(drawWith(otherThread));
  // With a handler of the process, which also gets signals that are no faults.
  struct sigaction found {};
  struct sigaction own {};
  own.sa_handler = [](int) { _exit(77); };
  sigaction(SIGSEGV, &own, &found);
  const auto left = testing::ExitedWithCode(77);
  EXPECT_EXIT((drawWith(nothing), ReadProtected()), left, "");
  EXPECT_EXIT(drawWith(otherThread), left, "");
  EXPECT_EXIT(drawWith([] { raise(SIGSEGV); }), left, "");
  sigaction(SIGSEGV, &found, nullptr);
}

TEST(Guard, NestsAndServesEveryThread) {
  std::array<int, 4> caught{};
  std::vector<std::thread> threads;
  for (int& count : caught) {
    threads.emplace_back([&count] {
      for (int i = 0; i < 100; ++i) {
        Guarded([&] {
          count += Guarded(ReadProtected) ? 0 : 1;
          count += Guarded([] { throw 1; }) ? 0 : 1;
          ReadProtected();
          count = -1;
        });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(caught, (std::array<int, 4>{200, 200, 200, 200}));
}

}  // namespace
