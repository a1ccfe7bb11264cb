#include "elugraph/plots/axis.h"

#include <cmath>
#include <limits>
#include <random>
#include <utility>

#include "tests/plots/plot_fixture.h"

namespace {

constexpr UINT kBelow = TA_CENTER | TA_TOP;
constexpr UINT kLeft = TA_BASELINE | TA_RIGHT;

class Axis : public PlotTest {
 protected:
  void Across(double from, double to, int pixels, const char* title = "") {
    THAxis(from, to, title).Draw(hdc(), 100, 0, pixels, kBelow);
  }
  void Up(double from, double to, int pixels, const char* title = "") {
    TVAxis(from, to, title).Draw(hdc(), 100, 0, pixels, kLeft);
  }
};

TEST_F(Axis, ChoosesStepAndPrecision) {
  int cases = 0;
  for (const std::string& line : LinesOf(GoldenText("tick_labels.txt"))) {
    if (line.starts_with('#')) continue;
    ++cases;
    SCOPED_TRACE(line);
    double from = 0, to = 0;
    int pixels = 0, width = 0, height = 0;
    std::sscanf(line.c_str(), "%lf %lf %d %d %d", &from, &to, &pixels, &width, &height);
    const std::size_t across = line.find('|') + 1;
    const std::size_t up = line.find('|', across) + 1;
    UseDigits(width, height);
    Across(from, to, pixels);
    EXPECT_EQ(Labels(), line.substr(across, up - 1 - across));
    Up(from, to, pixels);
    EXPECT_EQ(Labels(), line.substr(up));
  }
  EXPECT_GT(cases, 10);
}

TEST_F(Axis, GoldenLinesTicksAndTitles) {
  Across(0, 10, 80, "min");
  THAxis(0, 10, "T").Draw(hdc(), 100, 80, 0, kBelow);  // leftward
  TVAxis(0, 10, "mV").Draw(hdc(), 50, 20, 100, kLeft);
  ExpectGolden("axes.txt");
  TVAxis(0, 10, "mV").Draw(hdc(), 50, 20, 100, kLeft);
  const std::string drawn = Journal();
  TVAxis(10, 0, "mV").Draw(hdc(), 50, 100, 20, kLeft);
  EXPECT_EQ(Journal(), drawn);
}

TEST_F(Axis, TextsFollowTheAlignment) {
  for (const auto& [align, row] :
       {std::pair{TA_TOP, 104}, {TA_BOTTOM, 96}, {TA_BASELINE, 96}, {16u, 100}}) {
    THAxis(0, 10, "T").Draw(hdc(), 100, 0, 100, TA_CENTER | align);
    const std::vector<DrawnText> texts = Texts();
    EXPECT_EQ(texts.front().y, row) << align;
    EXPECT_EQ(texts.front().align & ~16u, (TA_CENTER | align) & ~16u);
    EXPECT_EQ(texts.back().align, TA_BOTTOM | TA_LEFT);
  }
  for (const auto& [align, column] : {std::pair{TA_RIGHT, 46}, {TA_CENTER, 46}, {TA_LEFT, 54}}) {
    TVAxis(0, 10, "T").Draw(hdc(), 50, 0, 100, TA_BASELINE | align);
    const std::vector<DrawnText> texts = Texts();
    EXPECT_EQ(texts.front().x, column) << align;
    EXPECT_EQ(texts.back().align, TA_BOTTOM | TA_CENTER);
  }
}

TEST_F(Axis, SpaceIsTheWidestLabel) {
  EXPECT_EQ(TVAxis(0, 60000, "").Space(hdc(), 400, 0), 5 * 7);
  EXPECT_EQ(TVAxis(-1e6, 10, "").Space(hdc(), 0, 400), 8 * 7);
  EXPECT_EQ(TVAxis(0, 60000, "").Space(hdc(), 0, 4), 0);
  EXPECT_EQ(TVAxis(0, 60000, "").Space(nullptr, 0, 400), 0);
  EXPECT_EQ(TVAxis(0, 1e250, "").Space(hdc(), 0, 400), 99 * 7);
  Across(0, 1, 4, "T");
  Up(0, 1, 4, "T");
  EXPECT_EQ(Journal(), "");
}

// Ticks that do not advance, ranges beyond doubles and digits without a size could loop for ever.
TEST_F(Axis, HopelessRangesEndWithFewTicksAndATitle) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const std::pair<double, double> ranges[] = {
      {1e17, 1e17 + 64}, {1e300, 1e300},          {-1e308, 1e308}, {0, 1.7e308},
      {0, kInfinity},    {-kInfinity, kInfinity}, {kNaN, 1},       {-1e300, -1e300 + 1e284},
      {0, 1e-27},        {5, 5 + 1e-15},          {1e-320, 0},     {1e9, 1e9 + 1e-6}};
  for (const int digit : {1, 7, 2000}) {
    UseDigits(digit, 2 * digit);
    for (const auto& [from, to] : ranges) {
      SCOPED_TRACE(testing::Message() << from << " to " << to << " digits " << digit);
      Across(from, to, 300, "end");
      const std::vector<DrawnText> across = Texts();
      TVAxis(from, to, "").Space(hdc(), 0, 300);
      Up(from, to, 300, "end");
      const std::vector<DrawnText> up = Texts();
      EXPECT_LE(std::max(across.size(), up.size()), 302u);
      EXPECT_TRUE(across.back().text == "end" && up.back().text == "end");
      for (const DrawnText& label : across) EXPECT_TRUE(label.x >= 0 && label.x <= 301);
      for (const DrawnText& label : up) EXPECT_TRUE(label.y >= -1 && label.y <= 300);
    }
  }
  const LONG most = std::numeric_limits<LONG>::max();
  TVAxis(0, 1, "").Draw(hdc(), -most - 1, -most - 1, -most + 100, kLeft);
  THAxis(0, 1, "").Draw(hdc(), most, most - 100, most, kBelow);
  EXPECT_NE(Drawn().find("line 2147483547,2147483647 2147483647,2147483647"), std::string::npos);
}

// Products of large numbers and steps are rounded to before the start: no reason to lose the ticks.
TEST_F(Axis, NarrowRangesFarFromZeroKeepTheirTicks) {
  for (const auto& [from, span] : {std::pair{1776143380.8906603, 1e-4},
                                   {1828544849.6055002, 3e-4},
                                   {1030081.3816329901, 3e-8}}) {
    SCOPED_TRACE(from);
    Across(from, from + span, 1000);
    EXPECT_GT(Texts().size(), 3u);
  }
}

TEST_F(Axis, LabelsNeverTouch) {
  std::mt19937 random(4);
  const auto uniform = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  std::size_t labelsSeen = 0;
  for (int i = 0; i < 4000; ++i) {
    const int width = static_cast<int>(uniform(1, 20));
    const int height = static_cast<int>(uniform(1, 40));
    const double span = std::pow(10, uniform(-9, 9));
    const double start = uniform(-1, 1) * span * std::pow(10, uniform(-1, 3));
    const double end = start + (random() % 2 != 0 ? span : -span);
    const int pixels = static_cast<int>(uniform(5, 2000));
    SCOPED_TRACE(testing::Message() << start << " to " << end << " over " << pixels << " digits "
                                    << width << "x" << height);
    UseDigits(width, height);
    const auto widthOf = [&](const DrawnText& label) {
      return width * static_cast<int>(label.text.size());
    };

    Across(start, end, pixels);
    const std::vector<DrawnText> across = Texts();
    for (std::size_t k = 1; k < across.size(); ++k) {
      const DrawnText& left = across[k - 1];
      ASSERT_LE(left.x + (widthOf(left) + 1) / 2, across[k].x - widthOf(across[k]) / 2);
      ASSERT_NE(left.text, across[k].text);
    }
    Up(start, end, pixels);
    const std::vector<DrawnText> up = Texts();
    const int space = TVAxis(start, end, "").Space(hdc(), 0, pixels);
    for (std::size_t k = 0; k < up.size(); ++k) {
      ASSERT_GE(up[k].y, height - 1);  // clear of the title above the axis
      ASSERT_TRUE(k == 0 || up[k - 1].y - up[k].y >= height);
      ASSERT_TRUE(k == 0 || up[k - 1].text != up[k].text);
      ASSERT_LE(widthOf(up[k]), space);
    }
    labelsSeen += across.size() + up.size();
  }
  EXPECT_GT(labelsSeen, 40000u);
}

}  // namespace
