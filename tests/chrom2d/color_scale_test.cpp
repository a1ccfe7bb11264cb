// Colours of values; the scale in the settings file.
#include <cfenv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "elugraph/chrom2d/color_scale.h"
#include "embedded/diagnostics.h"
#include "tests/support/probe.h"

namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255), kRed = RGB(255, 0, 0),
                   kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);
constexpr auto kLine = ScaleFormula::LINE, kLog = ScaleFormula::LOG;

using Colors = std::vector<COLORREF>;

class Scale : public testing::Test {
 protected:
  void TearDown() override { TheColorScale() = before_; }

  static void Set(const Colors& colors, ScaleFormula formula) {
    BuildColorTable();
    for (const COLORREF color : colors) {
      TheColorScale().colorTable[TheColorScale().colorCount++] = MapColorOf(color);
    }
    TheColorScale().formula = formula;
    ResetScaleCoefficients();
  }
  static Colors Get() {
    Colors colors;
    for (int i = 0; i < TheColorScale().colorCount; ++i) {
      colors.push_back(ColorRefOf(TheColorScale().colorTable[i]));
    }
    return colors;
  }
  // As the map's picture computes it.
  static COLORREF ColorOf(LONG lo, double s, LONG v) {
    const int rounding = std::fegetround();
    std::fesetround(FE_TOWARDZERO);
    const MapColor color = ColorOfValue({lo, s}, v);
    std::fesetround(rounding);
    return ColorRefOf(color);
  }

 private:
  const ColorScale before_ = TheColorScale();
};

struct ValueCase {
  const char* name;
  Colors colors;
  ScaleFormula formula;
  LONG lo;
  double s;
  LONG v;
  COLORREF expected;
};

class Values : public Scale, public testing::WithParamInterface<ValueCase> {};

TEST_P(Values, HaveTheirColor) {
  const ValueCase& c = GetParam();
  Set(c.colors, c.formula);
  EXPECT_EQ(ColorOf(c.lo, c.s, c.v), c.expected) << std::hex << ColorOf(c.lo, c.s, c.v);
}

const Colors kGrey = {kBlack, kWhite};
const Colors kFour = {kBlack, kRed, kGreen, kBlue};
constexpr LONG kLeast = std::numeric_limits<LONG>::min();
constexpr LONG kMost = std::numeric_limits<LONG>::max();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    All, Values,
    testing::Values(ValueCase{"Lowest", kGrey, kLine, 0, 1.0 / 100, 0, kBlack},
                    ValueCase{"Middle", kGrey, kLine, 0, 1.0 / 100, 50, RGB(126, 126, 126)},
                    ValueCase{"Highest", kGrey, kLine, 0, 1.0 / 100, 100, RGB(254, 254, 254)},
                    // A fraction of 128, downwards: −127.5 is rounded to −128.
                    ValueCase{
                        "Falling", {kWhite, kBlack}, kLine, 0, 1.0 / 1000, 501, RGB(127, 127, 127)},
                    ValueCase{"ChannelsApart",
                              {RGB(0, 200, 9), RGB(100, 0, 9)},
                              kLine,
                              0,
                              1.0 / 1000,
                              501,
                              RGB(50, 100, 9)},
                    ValueCase{"LogHighest", kFour, kLog, 0, 1.0 / 1000, 1000, RGB(0, 0, 254)},
                    // The second colour is at (1.5 − 1) / 2.375 of the range.
                    ValueCase{"LogBelowAnEntry", kFour, kLog, 0, 1.0 / 1000, 210, RGB(254, 0, 0)},
                    ValueCase{"LogAtAnEntry", kFour, kLog, 0, 1.0 / 1000, 211, kRed},
                    ValueCase{"BelowZero", kGrey, kLine, -50, 1.0 / 100, 0, RGB(126, 126, 126)},
                    // The difference needs more than 32 bits.
                    ValueCase{"WholeRange", kGrey, kLine, kLeast, 1.0 / 4294967295.0, kMost,
                              RGB(254, 254, 254)},
                    ValueCase{"WholeRangeMiddle", kGrey, kLog, kLeast, 1.0 / 4294967295.0, 0,
                              RGB(139, 139, 139)},
                    ValueCase{"BelowTheRange", kFour, kLog, 100, 1.0, -100, kBlack},
                    ValueCase{"AboveTheRange", kFour, kLine, 0, 1.0, kMost, RGB(0, 0, 254)},
                    ValueCase{"NoNumber", kFour, kLine, 0, kNoNumber, 5, kBlack}),
    probe::CaseName());

// Whatever the count, both ends of the scale are at the ends of the range, and a scale of rising
// greys rises.
TEST_F(Scale, RisesFromItsFirstColorToItsLast) {
  for (int count = 2; count <= ColorScale::kMaxColors; ++count) {
    Colors greys;
    for (int i = 0; i < count; ++i) {
      const auto level = static_cast<BYTE>(10 + 200 * i / (count - 1));
      greys.push_back(RGB(level, level, level));
    }
    for (const ScaleFormula formula : {kLine, kLog}) {
      Set(greys, formula);
      COLORREF last = ColorOf(-7, 1.0 / 500, -7);
      EXPECT_EQ(last, greys.front());
      for (LONG v = -7; v <= 493; ++v) {
        const COLORREF color = ColorOf(-7, 1.0 / 500, v);
        EXPECT_GE(color, last) << count << " colours, value " << v;
        last = color;
      }
      EXPECT_EQ(GetRValue(last), 209) << count;
    }
  }
}

class ScaleSettings : public Scale {
 protected:
  void SetUp() override {
    char name[] = "/tmp/elugraph-scale-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    folder_ = name;
    path = folder_ + "/settings.ini";
    if (const char* before = std::getenv("ELUGRAPH_SETTINGS")) settingsBefore_ = before;
    setenv("ELUGRAPH_SETTINGS", path.c_str(), 1);
    sinkBefore_ = embedded::SetLogSink([this](std::string_view line) { log.emplace_back(line); });
  }
  void TearDown() override {
    embedded::SetLogSink(sinkBefore_);
    setenv("ELUGRAPH_SETTINGS", settingsBefore_.c_str(), 1);
    std::filesystem::remove_all(folder_);
    Scale::TearDown();
  }
  void Put(const std::string& content) const { std::ofstream(path) << content; }
  std::string Content() const {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
  }

  std::string path;
  std::vector<std::string> log;

 private:
  std::string folder_, settingsBefore_;
  embedded::LogSink sinkBefore_;
};

struct LoadCase {
  const char* name;
  const char* entries;
  ScaleFormula formula;
  Colors colors;
};

class LoadedSettings : public ScaleSettings, public testing::WithParamInterface<LoadCase> {};

TEST_P(LoadedSettings, GiveTheScale) {
  const LoadCase& c = GetParam();
  Set(kFour, c.formula == kLine ? kLog : kLine);
  TheColorScale().logBase = 3;
  Put(std::string("[CHROM_2D_COLORS]\n") + c.entries);
  LoadColorSettings();
  EXPECT_EQ(TheColorScale().formula, c.formula);
  EXPECT_EQ(Get(), c.colors);
  EXPECT_EQ(TheColorScale().logBase, 1.5);
  EXPECT_EQ(ColorOf(0, 1.0, 0), c.colors.front());
  EXPECT_EQ(log, std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(
    All, LoadedSettings,
    testing::Values(
        LoadCase{"Nothing", "", kLine, kGrey},
        LoadCase{"LogLowerCase", "FORMULA=log\n", kLog, kGrey},
        LoadCase{"OtherFormula", "FORMULA=Logarithmic\n", kLine, kGrey},
        LoadCase{"RedAndBlue", "COLOR00=255\nCOLOR01=16711680\n", kLine, {kRed, kBlue}},
        LoadCase{"OneColor", "COLOR00=255\n", kLine, kGrey},
        LoadCase{"Eleven",
                 "COLOR00=1\nCOLOR01=2\nCOLOR02=3\nCOLOR03=4\nCOLOR04=5\nCOLOR05=6\nCOLOR06=7\n"
                 "COLOR07=8\nCOLOR08=9\nCOLOR09=10\nCOLOR10=11\n",
                 kLine,
                 {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        LoadCase{"Gap", "COLOR00=1\nCOLOR01=2\nCOLOR03=4\n", kLine, {1, 2}},
        LoadCase{"EmptyEntry", "COLOR00=1\nCOLOR01=2\nCOLOR02=\nCOLOR03=4\n", kLine, {1, 2}},
        LoadCase{"NoNumber", "COLOR00=red\nCOLOR01=7 or so\n", kLine, {kBlack, 7}},
        LoadCase{"BeyondAColor", "COLOR00=-1\nCOLOR01=16777217\n", kLine, {kWhite, 1}}),
    probe::CaseName());

TEST_F(ScaleSettings, OfAShorterListLeaveNothingOfTheLongerOne) {
  Put("; mine\n[CHROM_2D_COLORS]\nFORMULA=LOG\nCOLOR00=1\nCOLOR01=2\nCOLOR02=3\nCOLOR03=4\n"
      "COLOR04=5\n[other]\nCOLOR03=9\n");
  LoadColorSettings();
  Set({1, 2, 30}, kLog);
  SaveColorSettings();
  EXPECT_EQ(Content(),
            "; mine\n[CHROM_2D_COLORS]\nFORMULA=LOG\nCOLOR00=1\nCOLOR01=2\nCOLOR02=30\n[other]\n"
            "COLOR03=9\n");
}

// A list that grows up to what a gap had hidden ends where it ends.
TEST_F(ScaleSettings, ComeBackAsTheyWereSaved) {
  Put("[CHROM_2D_COLORS]\nCOLOR00=1\nCOLOR01=2\nCOLOR03=4\n");
  LoadColorSettings();
  for (const Colors& colors : {Colors{1, 2}, Colors{5, 6, 0xFFFFFF},
                               Colors{9, 8, 7, 6, 5, 4, 3, 2, 1, 0}, Colors{kRed, kBlue}}) {
    for (const ScaleFormula formula : {kLine, kLog}) {
      Set(colors, formula);
      SaveColorSettings();
      Set(kFour, kLine);
      LoadColorSettings();
      EXPECT_EQ(Get(), colors);
      EXPECT_EQ(TheColorScale().formula, formula);
    }
  }
}

TEST_F(ScaleSettings, ThatCannotBeWrittenAreOneLineOfDiagnostics) {
  std::filesystem::create_directory(path);
  Set(kFour, kLine);
  SaveColorSettings();
  EXPECT_EQ(log.size(), 1U);
}

}  // namespace
