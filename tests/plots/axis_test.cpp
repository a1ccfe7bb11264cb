#include "elugraph/plots/axis.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "tests/plots/plot_fixture.h"

namespace {

constexpr UINT kBelow = TA_CENTER | TA_TOP;
constexpr UINT kLeft = TA_BASELINE | TA_RIGHT;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class Axis : public PlotTest {};

struct LabelCase {
  double from;
  double to;
  int pixels;
  int digitWidth;
  int digitHeight;
  const char* horizontal;
  const char* vertical;
};

TEST_F(Axis, ChoosesStepAndPrecision) {
  const LabelCase cases[] = {
      {0, 1, 500, 7, 14, "0.0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9",
       "0.0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9"},
      {-0.7, 0.3, 500, 7, 14, "-0.7 -0.6 -0.5 -0.4 -0.3 -0.2 -0.1 0.0 0.1 0.2",
       "-0.7 -0.6 -0.5 -0.4 -0.3 -0.2 -0.1 0.0 0.1 0.2"},
      {0, 10, 500, 7, 14, "0 1 2 3 4 5 6 7 8 9", "0 1 2 3 4 5 6 7 8 9"},
      {0, 10, 250, 7, 14, "0 2 4 6 8", "0 2 4 6 8"},
      {0, 10, 80, 7, 14, "0 5", "0 5"},
      {0, 10, 5, 7, 14, "0", ""},
      {0, 10, 500, 20, 40, "0 2 4 6 8", "0 2 4 6 8"},
      {2.5, 3.1, 300, 7, 14, "2.5 2.6 2.7 2.8 2.9 3.0", "2.5 2.6 2.7 2.8 2.9 3.0"},
      {-37, 500, 300, 7, 14, "0 50 100 150 200 250 300 350 400 450", "0 100 200 300 400"},
      {0, 60000, 400, 7, 14, "0 10000 20000 30000 40000 50000",
       "0 5000 10000 15000 20000 25000 30000 35000 40000 45000 50000 55000"},
      {-1e6, -2.5e5, 200, 7, 14, "-1000000 -500000", "-1000000 -800000 -600000 -400000"},
      {0, 4e-5, 300, 7, 14, "0.00000 0.00001 0.00002 0.00003",
       "0.000000 0.000005 0.000010 0.000015 0.000020 0.000025 0.000030 0.000035"},
      {0, 1e-14, 150, 7, 14, "0.00000000000",
       "0.000000000000000 0.000000000000002 0.000000000000004 0.000000000000006 0.000000000000008"},
      {7, 7, 200, 7, 14, "7.0 7.2 7.4 7.6 7.8", "7.0 7.2 7.4 7.6 7.8"},
  };
  for (const LabelCase& c : cases) {
    SCOPED_TRACE(testing::Message() << c.from << " to " << c.to << " over " << c.pixels);
    UseDigits(c.digitWidth, c.digitHeight);
    Clear();
    THAxis(c.from, c.to, "").Draw(hdc(), 100, 50, 50 + c.pixels, kBelow);
    EXPECT_EQ(Labels(), c.horizontal);
    Clear();
    TVAxis(c.from, c.to, "").Draw(hdc(), 100, 50, 50 + c.pixels, kLeft);
    EXPECT_EQ(Labels(), c.vertical);
  }
}

TEST_F(Axis, HorizontalGeometry) {
  THAxis(0, 10, "min").Draw(hdc(), 100, 20, 100, kBelow);
  EXPECT_EQ(Drawn(),
            "line 20,100 101,100\n"
            "line 20,96 20,105\n"
            "text 20,104 \"0\"\n"
            "line 60,96 60,105\n"
            "text 60,104 \"5\"\n"
            "text 101,107 \"min\"\n");
  EXPECT_EQ(Texts()[0].align, kBelow);
  EXPECT_EQ(Texts()[2].align, TA_BOTTOM | TA_LEFT);
}

struct DirectionCase {
  double first;
  double last;
  int x0;
  int x1;
  const char* labels;
  const char* firstLabel;
  const char* title;
};

TEST_F(Axis, HorizontalDirections) {
  const DirectionCase cases[] = {
      {10, 0, 0, 500, "10 9 8 7 6 5 4 3 2 1 T", "text 0,104 \"10\"", "text 501,107 \"T\""},
      {0, 10, 500, 0, "0 1 2 3 4 5 6 7 8 9 T", "text 500,104 \"0\"", "text -1,107 \"T\""},
      {9.5, -1, 0, 500, "9 8 7 6 5 4 3 2 1 0 T", "text 24,104 \"9\"", "text 501,107 \"T\""},
      {0, -10, 0, 500, "0 -1 -2 -3 -4 -5 -6 -7 -8 -9 T", "text 0,104 \"0\"", "text 501,107 \"T\""},
  };
  for (const DirectionCase& c : cases) {
    SCOPED_TRACE(c.labels);
    Clear();
    THAxis(c.first, c.last, "T").Draw(hdc(), 100, c.x0, c.x1, kBelow);
    EXPECT_EQ(Labels(), c.labels);
    EXPECT_NE(Drawn().find(c.firstLabel), std::string::npos);
    EXPECT_NE(Drawn().find(c.title), std::string::npos);
    EXPECT_EQ(Texts().back().align, TA_BOTTOM | (c.x0 < c.x1 ? TA_LEFT : TA_RIGHT));
  }
}

TEST_F(Axis, LabelsFollowTheAlignment) {
  const std::pair<UINT, int> rows[] = {
      {TA_TOP, 104}, {TA_BOTTOM, 96}, {TA_BASELINE, 96}, {16, 100}};
  for (const auto& [align, row] : rows) {
    Clear();
    THAxis(0, 10, "").Draw(hdc(), 100, 0, 100, TA_CENTER | align);
    EXPECT_EQ(Texts()[0].y, row) << align;
  }
  const std::pair<UINT, int> columns[] = {{TA_RIGHT, 46}, {TA_CENTER, 46}, {TA_LEFT, 54}};
  for (const auto& [align, column] : columns) {
    Clear();
    TVAxis(0, 10, "").Draw(hdc(), 50, 0, 100, TA_BASELINE | align);
    EXPECT_EQ(Texts()[0].x, column) << align;
  }
}

TEST_F(Axis, VerticalGeometryWhateverTheOrder) {
  TVAxis(0, 10, "mV").Draw(hdc(), 50, 20, 100, kLeft);
  const std::string drawn = Drawn();
  EXPECT_EQ(drawn,
            "line 50,100 50,19\n"
            "line 46,100 54,100\n"
            "text 46,100 \"0\"\n"
            "line 46,60 54,60\n"
            "text 46,60 \"5\"\n"
            "text 50,19 \"mV\"\n");
  EXPECT_EQ(Texts()[2].align, TA_BOTTOM | TA_CENTER);
  Clear();
  TVAxis(10, 0, "mV").Draw(hdc(), 50, 100, 20, kLeft);
  EXPECT_EQ(Drawn(), drawn);
}

TEST_F(Axis, SpaceIsTheWidestLabel) {
  EXPECT_EQ(TVAxis(0, 60000, "").Space(hdc(), 400, 0), 5 * 7);
  EXPECT_EQ(TVAxis(-1e6, 10, "").Space(hdc(), 0, 400), 8 * 7);
  EXPECT_EQ(TVAxis(0, 60000, "").Space(hdc(), 0, 4), 0);
  EXPECT_EQ(TVAxis(0, 60000, "").Space(nullptr, 0, 400), 0);
  EXPECT_EQ(TVAxis(0, 1e250, "").Space(hdc(), 0, 400), 99 * 7);
}

TEST_F(Axis, TooShortOrUnmeasurableDrawsNothing) {
  THAxis(0, 1, "T").Draw(hdc(), 0, 10, 6, kBelow);
  TVAxis(0, 1, "T").Draw(hdc(), 0, 10, 14, kLeft);
  EXPECT_EQ(Journal(), "");
  THAxis(0, 1, "T").Draw(nullptr, 0, 0, 100, kBelow);
}

// Ticks that no longer advance, ranges beyond doubles and digits without a size once looped for
// ever.
TEST_F(Axis, HopelessRangesEndWithFewTicksAndATitle) {
  const std::pair<double, double> ranges[] = {
      {1e17, 1e17 + 64}, {1e300, 1e300}, {-1e308, 1e308},
      {0, 1.7e308},      {0, kInfinity}, {-kInfinity, kInfinity},
      {kNaN, 1},         {kNaN, kNaN},   {-1e300, -1e300 + 1e284},
      {0, 1e-27},        {5, 5 + 1e-15}, {1e-320, 0}};
  for (const SIZE digit : {SIZE{7, 14}, SIZE{1, 1}, SIZE{2000, 2000}}) {
    UseDigits(digit.cx, digit.cy);
    for (const auto& [from, to] : ranges) {
      SCOPED_TRACE(testing::Message() << from << " to " << to << " digits " << digit.cx);
      Clear();
      THAxis(from, to, "end").Draw(hdc(), 0, 0, 300, kBelow);
      EXPECT_LE(Texts().size(), 302u);
      EXPECT_EQ(Texts().back().text, "end");
      for (const DrawnText& label : Texts()) EXPECT_TRUE(label.x >= 0 && label.x <= 301);
      Clear();
      TVAxis axis(from, to, "end");
      axis.Space(hdc(), 0, 300);
      axis.Draw(hdc(), 0, 0, 300, kLeft);
      EXPECT_LE(Texts().size(), 302u);
      EXPECT_EQ(Texts().back().text, "end");
      for (const DrawnText& label : Texts()) EXPECT_TRUE(label.y >= -1 && label.y <= 300);
    }
  }
  const LONG most = std::numeric_limits<LONG>::max();
  Clear();
  THAxis(0, 1, "").Draw(hdc(), most, most - 100, most, kBelow);
  TVAxis(0, 1, "").Draw(hdc(), -most - 1, -most - 1, -most + 100, kLeft);
  EXPECT_NE(Drawn().find("line 2147483547,2147483647 2147483647,2147483647"), std::string::npos);
}

// A step is wider than the widest label and half a digit (horizontal), or more than twice as high
// as a label (vertical), whatever the range.
TEST_F(Axis, LabelsNeverTouch) {
  std::mt19937 random(4);
  const auto uniform = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  int labelsSeen = 0;
  for (int i = 0; i < 4000; ++i) {
    const int digitWidth = static_cast<int>(uniform(1, 20));
    const int digitHeight = static_cast<int>(uniform(1, 40));
    const double span = std::pow(10, uniform(-9, 9));
    const double start = uniform(-1, 1) * span * std::pow(10, uniform(-1, 3));
    const double end = start + (random() % 2 != 0 ? span : -span);
    const int pixels = static_cast<int>(uniform(5, 2000));
    SCOPED_TRACE(testing::Message() << start << " to " << end << " over " << pixels << " digits "
                                    << digitWidth << "x" << digitHeight);
    UseDigits(digitWidth, digitHeight);

    Clear();
    THAxis(start, end, "").Draw(hdc(), 0, 0, pixels, kBelow);
    const std::vector<DrawnText> across = Texts();
    for (std::size_t k = 1; k < across.size(); ++k) {
      const int leftWidth = digitWidth * static_cast<int>(across[k - 1].text.size());
      const int rightWidth = digitWidth * static_cast<int>(across[k].text.size());
      ASSERT_LE(across[k - 1].x + (leftWidth + 1) / 2, across[k].x - rightWidth / 2);
      ASSERT_NE(across[k - 1].text, across[k].text);
    }

    Clear();
    TVAxis axis(start, end, "");
    const int space = axis.Space(hdc(), 0, pixels);
    axis.Draw(hdc(), 0, 0, pixels, kLeft);
    const std::vector<DrawnText> up = Texts();
    for (std::size_t k = 0; k < up.size(); ++k) {
      ASSERT_GE(up[k].y, digitHeight - 1);  // clear of the title above the axis
      ASSERT_TRUE(k == 0 || up[k - 1].y - up[k].y >= digitHeight);
      ASSERT_TRUE(k == 0 || up[k - 1].text != up[k].text);
      ASSERT_LE(static_cast<int>(up[k].text.size()) * digitWidth, space);
    }
    labelsSeen += static_cast<int>(across.size() + up.size());
  }
  EXPECT_GT(labelsSeen, 40000);
}

}  // namespace
