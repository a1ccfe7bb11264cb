// Texts, print buffers and diagnostics.
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

#include "elugraph/host/kernel.h"
#include "embedded/diagnostics.h"

namespace {

TEST(Text, CopiesAreIndependentAndTheEmptyTextIsShared) {
  str a("flow");
  str b(a);
  EXPECT_TRUE(b.Append(" rate"));
  EXPECT_TRUE(b.Append(b.c_str()));  // its own characters
  EXPECT_TRUE(b.Append(nullptr));
  EXPECT_STREQ(a.c_str(), "flow");
  EXPECT_STREQ(b.c_str(), "flow rateflow rate");
  a = a;
  EXPECT_STREQ(a.c_str(), "flow");
  b = str(nullptr);
  EXPECT_EQ(b.text, str::GetStrNull());
}

TEST(PrintBuffer, GrowsShrinksAndTakesItsOwnText) {
  PrintBuffer<20> buffer("%s", "peak");
  const char* room = buffer.text;
  struct Case {
    std::size_t letters;
    bool inside;
  };
  for (const Case& c : {Case{19, true}, Case{20, false}, Case{5000, false}, Case{3, true}}) {
    const std::string text(c.letters, 'x');
    EXPECT_EQ(sprintf(buffer, "%s", text.c_str()), static_cast<int>(c.letters));
    EXPECT_EQ(buffer.text, text) << c.letters;
    EXPECT_EQ(buffer.text == room, c.inside) << c.letters;
  }
  for (int i = 0; i < 6; ++i) sprintf(buffer, "%s+%s", buffer.text, buffer.text);
  EXPECT_EQ(buffer.length, 3 * 64 + 63);
  EXPECT_EQ(std::string(buffer.text).substr(0, 8), "xxx+xxx+");
}

// A buffer with more room than its draft read beyond the draft.
TEST(PrintBuffer, HoldsLongTextInALargeRoom) {
  PrintBuffer<2000> buffer;
  for (const std::size_t letters : {599U, 600U, 1999U}) {
    const std::string text(letters, 'y');
    EXPECT_EQ(sprintf(buffer, "%s", text.c_str()), static_cast<int>(letters));
    EXPECT_EQ(buffer.text, text);
    EXPECT_EQ(static_cast<const void*>(buffer.text), &buffer.length + 1) << "in its own room";
  }
}

class Diagnostics : public testing::Test {
 protected:
  void SetUp() override {
    old_ = embedded::SetLogSink([this](std::string_view line) { lines.emplace_back(line); });
  }
  void TearDown() override { embedded::SetLogSink(old_); }
  std::vector<std::string> lines;

 private:
  embedded::LogSink old_;
};

TEST_F(Diagnostics, OneLineWhateverIsSaid) {
  const std::string longText(2000, 'a');
  exceptout("CalcLen( 0x%X, %d ) catched", 0xAFU, 3);
  exceptout("two\nlines\r\n");
  exceptout("%s", longText.c_str());
  exceptout(nullptr);
  EXPECT_EQ(lines,
            (std::vector<std::string>{"CalcLen( 0xAF, 3 ) catched", "two lines  ", longText}));
  embedded::SetLogSink([](std::string_view) { throw std::runtime_error("disk full"); });
  EXPECT_NO_THROW(exceptout("draft draw()"));
  const unsigned before = embedded::Int3Count();
  int3call();
  EXPECT_EQ(embedded::Int3Count(), before + 1);
}

TEST_F(Diagnostics, BreaksStopUnderADebugger) {
  const pid_t traced = fork();
  if (traced == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(1);
    int3call();
    _exit(7);
  }
  int status = 0;
  ASSERT_EQ(waitpid(traced, &status, 0), traced);
  if (WIFEXITED(status) && WEXITSTATUS(status) == 1) GTEST_SKIP() << "no tracing is allowed here";
  ASSERT_TRUE(WIFSTOPPED(status) && WSTOPSIG(status) == SIGTRAP) << status;
  // Handed on, as by a tracer that does not take the signal for its own.
  ASSERT_EQ(ptrace(PTRACE_CONT, traced, nullptr, SIGTRAP), 0);
  ASSERT_EQ(waitpid(traced, &status, 0), traced);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7) << status;
}

}  // namespace
