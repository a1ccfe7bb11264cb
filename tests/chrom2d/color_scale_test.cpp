// Colours of values; the scale in the settings file.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>

#include "tests/chrom2d/map_fixture.h"

namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255), kRed = RGB(255, 0, 0),
                   kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);
constexpr auto kLine = ScaleFormula::LINE, kLog = ScaleFormula::LOG;

class Scale : public Maps {};

const Colors kGrey = {kBlack, kWhite};
const Colors kFour = {kBlack, kRed, kGreen, kBlue};
constexpr LONG kLeast = std::numeric_limits<LONG>::min();
constexpr LONG kMost = std::numeric_limits<LONG>::max();
constexpr double kWhole = 1.0 / 4294967295.0;
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

TEST_F(Scale, ColorsOfValues) {
  struct {
    Colors colors;
    ScaleFormula formula;
    LONG lowest;
    double s;
    LONG value;
    COLORREF expected;
  } const cases[] = {
      {kGrey, kLine, 0, 1.0 / 100, 50, RGB(126, 126, 126)},
      // A fraction of 128, downwards: −127.5 is rounded to −128.
      {{kWhite, kBlack}, kLine, 0, 1.0 / 1000, 501, RGB(127, 127, 127)},
      {{RGB(0, 200, 9), RGB(100, 0, 9)}, kLine, 0, 1.0 / 1000, 501, RGB(50, 100, 9)},
      // The second colour is at (1.5 − 1) / 2.375 of the range.
      {kFour, kLog, 0, 1.0 / 1000, 210, RGB(254, 0, 0)},
      {kFour, kLog, 0, 1.0 / 1000, 211, kRed},
      // The difference needs more than 32 bits.
      {kGrey, kLine, kLeast, kWhole, kMost, RGB(254, 254, 254)},
      {kGrey, kLog, kLeast, kWhole, 0, RGB(139, 139, 139)},
      {kFour, kLog, 100, 1.0, -100, kBlack},
      {kFour, kLine, 0, 1.0, kMost, RGB(0, 0, 254)},
      {kFour, kLine, 0, kNoNumber, 5, kBlack},
  };
  for (const auto& c : cases) {
    SetScale(c.colors, c.formula);
    EXPECT_EQ(ColorOf(c.lowest, c.s, c.value), c.expected) << c.lowest << " " << c.value;
  }
}

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
      SetScale(greys, formula);
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
    if (const char* before = std::getenv("ELUGRAPH_SETTINGS")) settingsBefore_ = before;
    path_ = testing::TempDir() + "scale." + std::to_string(getpid()) + ".ini";
    setenv("ELUGRAPH_SETTINGS", path_.c_str(), 1);
  }
  void TearDown() override {
    setenv("ELUGRAPH_SETTINGS", settingsBefore_.c_str(), 1);
    std::filesystem::remove(path_);
    Scale::TearDown();
  }
  void Put(const std::string& content) const { std::ofstream(path_) << content; }

 private:
  std::string path_, settingsBefore_;
};

TEST_F(ScaleSettings, AreLoaded) {
  struct {
    const char* entries;
    ScaleFormula formula;
    Colors colors;
  } const cases[] = {
      {"", kLine, kGrey},
      {"FORMULA=log\nCOLOR00=255\n", kLog, kGrey},
      {"COLOR00=1\nCOLOR01=2\nCOLOR02=3\nCOLOR03=4\nCOLOR04=5\nCOLOR05=6\nCOLOR06=7\n"
       "COLOR07=8\nCOLOR08=9\nCOLOR09=10\nCOLOR10=11\n",
       kLine,
       {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"COLOR00=1\nCOLOR01=2\nCOLOR02=\nCOLOR03=4\n", kLine, {1, 2}},
      {"COLOR00=red\nCOLOR01=-1\n", kLine, {kBlack, kWhite}},
  };
  for (const auto& c : cases) {
    SetScale(kFour, c.formula == kLine ? kLog : kLine);
    Put(std::string("[CHROM_2D_COLORS]\n") + c.entries);
    LoadColorSettings();
    EXPECT_EQ(TheColorScale().formula, c.formula) << c.entries;
    EXPECT_EQ(ScaleColors(), c.colors) << c.entries;
    // The highest value has the last colour, but for the last step.
    EXPECT_NEAR(GetBValue(ColorOf(0, 1.0, 1)), GetBValue(c.colors.back()), 1);
  }
}

// A list that grows up to what a gap had hidden, even twice, ends where it ends.
TEST_F(ScaleSettings, ComeBackAsTheyWereSaved) {
  Put("[CHROM_2D_COLORS]\nCOLOR00=1\nCOLOR01=2\nCOLOR03=4\nCOLOR03=5\n");
  LoadColorSettings();
  for (const Colors& colors : {Colors{1, 2}, Colors{5, 6, 0xFFFFFF},
                               Colors{9, 8, 7, 6, 5, 4, 3, 2, 1, 0}, Colors{kRed, kBlue}}) {
    for (const ScaleFormula formula : {kLine, kLog}) {
      SetScale(colors, formula);
      SaveColorSettings();
      SetScale(kFour, kLine);
      LoadColorSettings();
      EXPECT_EQ(ScaleColors(), colors);
      EXPECT_EQ(TheColorScale().formula, formula);
    }
  }
}

}  // namespace
