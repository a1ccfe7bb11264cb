// Vendor texts: reports of sections, channels one after another, pairs of columns, long tables,
// matrices; JCAMP-DX and JSON.
#include <gtest/gtest.h>

#include "tests/app/run_text.h"
#include "tests/support/case_name.h"

namespace app {
namespace {

struct ReportCase {
  const char* name;
  std::string text;
  const char* result;
};
class Report : public testing::TestWithParam<ReportCase> {};
TEST_P(Report, Reads) {
  std::string wanted = GetParam().result;
  std::string got = ReadText(GetParam().text);
  if (wanted.ends_with("…")) {  // words of a library follow
    wanted.resize(wanted.size() - std::string("…").size());
    got.resize(std::min(got.size(), wanted.size()));
  }
  EXPECT_EQ(got, wanted);
}

const auto kName = CaseName();

const std::string kSections =
    "[Header]\nName\tX\n\n"
    "[Peak Table(Detector A)]\n# of Peaks\t2\n"
    "Peak#\tR.Time\tI.Time\tF.Time\tArea\tHeight\tConc.\tName\n"
    "1\t0.3\t0.2\t0.5\t10\t5\t1.5\tfirst\n2\t0.1\t0.05\t0.2\t10\t5\t0.0\t\n"
    "[Peak Table(Detector B)]\nPeak#\tR.Time\tI.Time\tF.Time\n1\t1\t1\t1\n\n"
    "[LC Chromatogram(Detector A-Ch1)]\nInterval(msec)\t30000\n# of Points\t2\n"
    "Intensity Units\tmV\nStart Time(min)\t0.0\nIntensity Multiplier\t0.001\nWavelength(nm)\t215\n"
    "R.Time (min)\tIntensity\n0.0\t100\n0.5\t-200\n\n"
    "[LC Status Trace(Pump A Pressure)]\n# of Points\t2\nIntensity Units\tC\n"
    "Intensity Multiplier\t2\nR.Time (min)\tIntensity\n0.0\t1\n1.0\t2\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != text.npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

constexpr const char* kSectionsResult =
    "A-Ch1|mV 0+30: 0.1 -0.2; aux Pump A Pressure|\u00B0C 0+60: 2 4; "
    "peak 0  3<6<12; peak 0 first 12<18<30 =1.5 ";

const ReportCase kSectionsReport[] = {
    {"Tabs", kSections, kSectionsResult},
    {"Commas", Replaced(kSections, "\t", ","), kSectionsResult},
    {"WrongNumberOfPoints", Replaced(kSections, "# of Points\t2", "# of Points\t3"),
     "run:13: the section tells of 3 points and holds 2"},
    {"DamagedRow", Replaced(kSections, "0.5\t-200", "0.5\t-2OO"),
     "run:22: column 2: '-2OO' is not a number"},
    {"PeakOutOfOrder", Replaced(kSections, "0.3\t0.2", "0.3\t0.4"),
     "run:7: the peak's start, apex and end are not in this order"}};
INSTANTIATE_TEST_SUITE_P(Sections, Report, testing::ValuesIn(kSectionsReport), kName);

const std::string kSampled =
    "Version:\t3\nSampling Rate:\t2.0\t4.0\tHz\nTotal Data Points:\t2\t3\tPts.\n"
    "Y Axis Title:\tmVolts\tVolts\nY Axis Multiplier:\t0.001\t1.0\n5\n-6\n1\n2\n3\n";

const ReportCase kSampledReport[] = {
    {"OneAfterAnother", kSampled, "Ch 1|mV 0+0.5: 0.005 -0.006; Ch 2|V 0+0.25: 1 2 3"},
    {"TooFew", kSampled.substr(0, kSampled.size() - 2), "run: channel 2 has 2 of 3 samples"},
    {"TooMany", kSampled + "4\n", "run:11: more data than stated"},
    {"NoRate", Replaced(kSampled, "2.0\t4.0", "0\t0"),
     "run:2: 'sampling rate:' holds no number above 0 for channel 1"}};
INSTANTIATE_TEST_SUITE_P(Sampled, Report, testing::ValuesIn(kSampledReport), kName);

const std::string kPairs =
    "Run 1:10_Cond\t\tRun 1:10_UV1_280nm\t\tRun 1:10_Log\t\n"
    "min\t mS/cm\tmin\t mAU\tmin\t(Marks)\n"
    "0\t80\t0\t1\t-5\t\" \"\"Start\"\"\"\n1\t81\t0.5\t2\t \t\n \t \t1\t3\t \t\n";

const ReportCase kPairsReport[] = {
    {"OwnTimesAndLengths", kPairs, "UV1 280nm|mAU 0+30: 1 2 3; aux Cond|mS/cm 0+60: 80 81"},
    {"NoDetector", Replaced(kPairs, "mAU", "pH"),
     "Cond|mS/cm 0+60: 80 81; aux UV1 280nm|pH 0+30: 1 2 3"},
    {"DamagedValue", Replaced(kPairs, "\t81\t", "\tx81\t"),
     "run:4: column 2: 'x81' is not a number"},
    {"Gap", kPairs + "2\t82\t2\t4\t\t\n", "run:6: column 1: a gap above"},
    {"TimesGoBack", Replaced(kPairs, "0.5\t2", "-0.5\t2"),
     "run:4: time -30 s lies before the time above it, 0 s"}};
INSTANTIATE_TEST_SUITE_P(Pairs, Report, testing::ValuesIn(kPairsReport), kName);

const ReportCase kLongTablesReport[] = {
    {"TwoDetectors",
     "\"Minutes\"\t\"Intensity\"\t\"File\"\t\"Detector\"\n0\t1\t\"f\"\t\"UV\"\n"
     "1\t2\t\"f\"\t\"UV\"\n0\t3\t\"f\"\t\"RI\"\n2\t4\t\"f\"\t\"RI\"\n",
     "UV| 0+60: 1 2; RI| 0+120: 3 4"},
    {"Alternating", "time;value (mV);channel\n0,5;1;a\n0,5;5;b\n1,5;2;a\n2,5;6;b\n",
     "a|mV 30+60: 1 2; b|mV 30+120: 5 6"},
    {"MissingCell", "time,value,channel\n0,1,a\n1,2\n", "run:3: expected 3 columns, found 2"},
    {"SingleSample", "time,value,channel\n0,1,a\n1,2,a\n1,2,b\n",
     "run: 'b' has values at a single time"},
    {"NumbersAreNoNames", "time,value,signal\n0,1,5\n1,2,6\n",
     "value| 0+60: 1 2; signal| 0+60: 5 6"}};
INSTANTIATE_TEST_SUITE_P(LongTables, Report, testing::ValuesIn(kLongTablesReport), kName);

const std::string kMatrix =
    "TIME_INTERVAL\t200msec\nWL_INTERVAL\t2,00nm\nSTART_TIME\t1,0000min\nSTART_WL\t200,00nm\n"
    "TIME_NPOINTS\t2\nWL_NPOINTS\t3\nINTENSITY_UNIT\tmicroAU\nINTENSITY\n"
    "1\t2\t3\t\n4\t5\t-6,5\t\n";

const ReportCase kMatricesReport[] = {
    {"AxesInTheHeader", kMatrix,
     "200 nm|\u00B5AU 60+0.2: 1 4; 202 nm|\u00B5AU 60+0.2: 2 5; "
     "204 nm|\u00B5AU 60+0.2: 3 -6.5"},
    {"ShortRow", Replaced(kMatrix, "2\t3\t", "2\t\t"), "run:9: expected 3 columns, found 2"},
    {"MissingRow", kMatrix.substr(0, kMatrix.find("4\t5")), "run: states 2 times and holds 1"},
    {"NoInterval", Replaced(kMatrix, "200msec", "often"),
     "run: the header has no number 'time_interval'"}};
INSTANTIATE_TEST_SUITE_P(Matrices, Report, testing::ValuesIn(kMatricesReport), kName);

const ReportCase kJcampReport[] = {
    {"Pairs",
     "##TITLE=a b\n##XUNITS=SECONDS\n##YUNITS=mVolts\n##NPOINTS=3\n"
     "##XYPOINTS=(XY..XY)\n0,1; 2,-2.5e1\n4 3 $$ end\n##END=\n",
     "a b|mV 0+2: 1 -25 3"},
    {"Steps",
     "##XUNITS=MINUTES\n##FIRSTX=1\n##LASTX=3\n##YFACTOR=0.5\n"
     "##XYDATA=(X++(Y..Y))\n1+2-4\n3 6\n##END=\n",
     "| 60+60: 1 -2 3"},
    {"Scans",
     "##TITLE=\n##RETENTION_TIME= 8\n##TIC= 5\n#NPOINTS= 1\n##XYDATA= "
     "(XY..XY)\n14 4\n##RETENTION_TIME= 9\n##TIC= 6\n##XYDATA=(XY..XY)\n1 2\n",
     "TIC| 480+60: 5 6"},
    {"Compressed", "##FIRSTX=1\n##LASTX=3\n##XYDATA=(X++(Y..Y))\n1A2B\n##END=\n",
     "run:4: '1A2B' is not a number"},
    {"WrongNumberOfPoints", "##NPOINTS=3\n##XYPOINTS=(XY..XY)\n0,1\n1,2\n##END=\n",
     "run:2: states 3 points and holds 2"},
    {"LoneTime", "##XYPOINTS=(XY..XY)\n0,1\n1\n##END=\n", "run:3: a time without a value"},
    {"ScanWithoutTotal", "##RETENTIONTIME=1\n##RETENTIONTIME=2\n##TIC=2\n",
     "run:2: the scan above has no total ion current"}};
INSTANTIATE_TEST_SUITE_P(Jcamp, Report, testing::ValuesIn(kJcampReport), kName);

const std::string kCube =
    R"({"doc":[{"m":{"detection type":"flame","chromatogram data cube":{"label":"","cube-structure":
{"dimensions":[{"unit":"min"}],"measures":[{"unit":"pA"}]},"data":{"dimensions":[[0,1]],
"measures":[[5,6.5]]}},"p":{"peak list":{"peak":[{"retention time":{"value":30,"unit":"s"},
"peak start":{"value":0.25,"unit":"min"},"peak end":{"value":40,"unit":"s"}}]}}}}]})";

const ReportCase kJsonReport[] = {
    {"CubeWithPeaks", kCube, "flame|pA 0+60: 5 6.5; peak 0  15<30<40"},
    {"NoCube", R"({"a":[1,{"b":2}]})", "run: holds no chromatogram data cube"},
    {"Damaged", "{\"a\":\n[1,}", "run:2: damaged JSON: …"},
    {"NotANumber", Replaced(kCube, "6.5", "null"), "run: chromatogram 1: value 2 is not a number"},
    {"DifferentLengths", Replaced(kCube, "5,6.5", "5"),
     "run: chromatogram 1: 1 values, but 2 times"}};
INSTANTIATE_TEST_SUITE_P(Json, Report, testing::ValuesIn(kJsonReport), kName);

TEST(Report, DeepNestingIsNoDanger) {
  EXPECT_EQ(ReadText("{\"a\":" + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}"),
            "run: holds no chromatogram data cube");
}

}  // namespace
}  // namespace app
