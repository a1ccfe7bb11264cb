#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/app/run_text.h"
#include "tests/support/case_name.h"

namespace app {
namespace {

std::string Read(std::string_view text, TimeUnit unit = TimeUnit::kUnknown) {
  return ReadText(text, {.timeUnit = unit});
}

struct FileCase {
  const char* name;
  const char* text;
  const char* result;
};
class ColumnFile : public testing::TestWithParam<FileCase> {};
TEST_P(ColumnFile, Reads) { EXPECT_EQ(Read(GetParam().text), GetParam().result); }

const FileCase kDialectsColumnFile[] = {
    {"Comma", "0,1.5\n1,-2e1\n", "| 0+60: 1.5 -20"},
    {"Tab", "0\t1\r\n1\t2\r\n", "| 0+60: 1 2"},
    {"DoubledMarks", "t,\"a \"\"b\"\"\"\n0,1\n1,2\n", "a \"b\"| 0+60: 1 2"},
    {"QuotedBlanks", "t \"a b\" c\n0 1 2\n1 3 4\n", "a b| 0+60: 1 3; c| 0+60: 2 4"},
    {"Semicolon", "0;1.5\n1;2\n", "| 0+60: 1.5 2"},
    {"DecimalCommaSemicolon", "0,0;1\n0,5;2\n1,0;3\n", "| 0+30: 1 2 3"},
    {"DecimalCommaTab", "0\t1,5\n1\t2\n", "| 0+60: 1.5 2"},
    {"DecimalCommaQuoted", "\"0,0\",\"1,5\"\n\"0,5\",\"2\"\n", "| 0+30: 1.5 2"},
    {"OnlyCarriageReturns", "0\t1\r1\t2\r", "| 0+60: 1 2"},
    {"TrailingSeparator", "a\tb\n0\t1\t\n1\t2\t\n", "b| 0+60: 1 2"}};
INSTANTIATE_TEST_SUITE_P(Dialects, ColumnFile, testing::ValuesIn(kDialectsColumnFile), CaseName());

const FileCase kHeadersColumnFile[] = {
    {"UnitsInBrackets", "Time (s),Abs [mAU]\n0,1\n2,2\n", "Abs|mAU 0+2: 1 2"},
    {"UnitsAfterMarks", "time_min;Flow/ml/min\n0;1\n2;2\n", "Flow|ml/min 0+120: 1 2"},
    {"UnitRow", "Time\tUV\tCond\nmin\tmAU\tmS/cm\n0\t1\t2\n1\t3\t4\n",
     "UV|mAU 0+60: 1 3; Cond|mS/cm 0+60: 2 4"},
    {"NoValueName", "RT (min),\n0,1\n1,2\n", "| 0+60: 1 2"},
    {"Wavelengths", ",220.00000,254\n0,1,2\n1,3,4\n", "220 nm| 0+60: 1 3; 254 nm| 0+60: 2 4"},
    {"QuotedKeysAndValues",
     "\"Sample\"\t\"Channel\"\t\"Set\"\n\"A\"\t\"FLR 350\"\t\"B\"\n0\t1\n1\t2\n",
     "FLR 350| 0+60: 1 2"},
    {"MetadataLines",
     "Path\tC:\\x\nChannel\tUV_1\n\nPoints\t2\nTime(min)\tStep(sec)\tValue(mAU)\n"
     "0,0\t0,00\t1,5\t\n1,0\t60,00\t2,5\t\n",
     "UV_1|mAU 0+60: 1.5 2.5"},
    {"NumbersInTheHeader", "200 202\nt y\n0 1\n1 2\n2 3\n", "| 0+60: 1 2 3"}};
INSTANTIATE_TEST_SUITE_P(Headers, ColumnFile, testing::ValuesIn(kHeadersColumnFile), CaseName());

const FileCase kColumnsColumnFile[] = {
    {"StepsTellTheUnit", "0,n.a.,7\n0.5,30,8\n1,30,9\n", "| 0+30: 7 8 9"},
    {"NamedStepsOfAnotherKind", "t,Step,y\n0,1,7\n1,9,8\n2,4,9\n", "| 0+60: 7 8 9"},
    {"ConstantSignalIsNoStep", "t,a,b\n0,1,7\n1,1,8\n", "a| 0+60: 1 1; b| 0+60: 7 8"},
    {"CountBeforeTimes", "0,0.5,7\n1,1.0,8\n2,1.5,9\n", "| 30+30: 7 8 9"},
    {"OnlyCounted", "index,a\n1,7\n2,8\n", "a| 1+1: 7 8"},
    {"TimeIsNotFirst", "UV (mAU),Time (s)\n7,0\n8,2\n", "UV|mAU 0+2: 7 8"},
    {"ShorterColumns", "t,a,b,c\n0,1,,\n1,2,5,\n2,,6,\n", "a| 0+60: 1 2; b| 60+60: 5 6"},
    {"Irregular", "t(s),y\n0,1\n1,2\n1.5,3\n", "| t=0,1,1.5,: 1 2 3"}};
INSTANTIATE_TEST_SUITE_P(Columns, ColumnFile, testing::ValuesIn(kColumnsColumnFile), CaseName());

const FileCase kRefusedColumnFile[] = {
    {"Nothing", "", "run: is empty"},
    {"OneColumn", "# y\n1\n2\n", "run:2: expected 2 columns, found 1"},
    {"ShortRow", "0,1\n1,2\n2\n3,4\n", "run:3: expected 2 columns, found 1"},
    {"LongRow", "0,1\n1,2\n2,3,4\n3,4\n", "run:3: expected 2 columns, found 3"},
    {"WordForNumber", "0,1\n1,x7\n2,3\n", "run:2: column 2: 'x7' is not a number"},
    {"WordsBetweenRows", "0,1\n1,2\nnote\n2,3\n3,4\n", "run:3: expected 2 columns, found 1"},
    {"TimesGoBack", "0,1\n2,2\n1,3\n", "run:3: time 1 lies before the time above it, 2"},
    {"TimesStandStill", "1,1\n1,2\n", "run:2: all times are the same"},
    {"NoTime", "0,1\n,2\n2,3\n", "run:2: no time"},
    {"GapInAColumn", "0,1\n1,n.a.\n2,3\n", "run:2: column 2: no value"},
    {"SingleRow", "t,y\n1,2\n", "run:2: a single row of values makes no trace"},
    {"TimeBeyondTheLimit", "t (h),y\n0,1\n300,2\n", "run:3: time 1080000 s is beyond 1000000 s"}};
INSTANTIATE_TEST_SUITE_P(Refused, ColumnFile, testing::ValuesIn(kRefusedColumnFile), CaseName());

TEST(ColumnFileTimes, UnitComesFromTheOptionThenTheHeaderThenTheSize) {
  EXPECT_EQ(Read("t (s),y\n0,1\n2,2\n", TimeUnit::kHour), "| 0+7200: 1 2");
  EXPECT_EQ(Read("t (s),y\n0,1\n2,2\n"), "| 0+2: 1 2");
  EXPECT_EQ(Read("0,1\n2,2\n", TimeUnit::kHour), "| 0+7200: 1 2");
  EXPECT_EQ(Read("index,y\n0,1\n1,2\n", TimeUnit::kMillisecond), "| 0+0.001: 1 2");
  EXPECT_EQ(Read("0,1\n240,2\n"), "| 0+14400: 1 2");
  EXPECT_EQ(Read("0,1\n241,2\n"), "| 0+241: 1 2");
  EXPECT_EQ(Read("0,1\n100001,2\n"), "| 0+100.001: 1 2");
}

// Whatever the bytes, the reader answers: with a run that keeps its promises, or with one line.
class ReadRunOptions : public testing::TestWithParam<ReadOptions> {};
TEST_P(ReadRunOptions, RandomBytesNeverBreakThem) {
  std::mt19937 random(20240611);
  const std::string_view pieces[] = {
      "0",    "1",        "2.5", ",",  ";", "\t",  " ", "\n",   "\r", "\"",       "-",   "e9",
      "n.a.", "\xFF\xFE", "[A]", "##", "t", "min", "(", "1e99", "{",  "\xC2\xB5", "3\n", "4,5\n"};
  const auto pick = [&random](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  };
  int read = 0;
  for (int round = 0; round < 20'000; ++round) {
    std::string text = pick(2) == 0 ? "" : "t,y,z\n0,1,2\n1,2,9\n2,3,4\n3,5,6\n";
    for (std::size_t i = text.empty() ? pick(60) : pick(4); i > 0; --i) {
      text.insert(pick(text.size() + 1), pick(20) == 0
                                             ? std::string(1, static_cast<char>(pick(256)))
                                             : std::string(pieces[pick(std::size(pieces))]));
    }
    RunData run;
    std::string error;
    if (!ReadRunBytes("run", text, GetParam(), run, error)) {
      ASSERT_TRUE(error.starts_with("run:") && error.find('\n') == error.npos) << error;
      continue;
    }
    ++read;
    for (const Trace& trace : run.channels) {
      ASSERT_GE(trace.values.size(), 2U) << text;
      ASSERT_EQ(trace.timesS.size(), trace.values.size()) << text;
      ASSERT_TRUE(std::is_sorted(trace.timesS.begin(), trace.timesS.end())) << text;
    }
  }
  EXPECT_GT(read, 100);  // enough of them are files
}
INSTANTIATE_TEST_SUITE_P(ReadRun, ReadRunOptions,
                         testing::Values(ReadOptions{}, ReadOptions{.timesIn = TimesIn::kColumns},
                                         ReadOptions{
                                             .wavelengthsNm = StatedAxis{200, 220, std::nullopt}},
                                         ReadOptions{.wavelengthsNm = StatedAxis{200, 210, 10.0},
                                                     .timesS = StatedAxis{0, 60, std::nullopt}},
                                         ReadOptions{.timesS = StatedAxis{0, 60, std::nullopt}}));

}  // namespace
}  // namespace app
