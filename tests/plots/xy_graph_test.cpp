#include "elugraph/plots/xy_graph.h"

#include <cmath>
#include <limits>
#include <utility>

#include "tests/plots/plot_fixture.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Line = std::vector<std::pair<double, double>>;

// Series named "s0", "s1", …; fails at one call where the test asks for it.
class Data final : public IXYGraphData {
 public:
  explicit Data(std::vector<Line> series) : series_(std::move(series)) {}

  bool XTitle(ITextSink& sink) override { return Call(), sink.Put(xTitle); }
  bool YTitle(ITextSink& sink) override { return Call(), sink.Put(yTitle); }
  int Count() override { return Call(), static_cast<int>(series_.size()); }
  int Points(int series) override { return Call(), static_cast<int>(series_.at(series).size()); }
  bool Name(int series, ITextSink& sink) override {
    return Call(), sink.Put(("s" + std::to_string(series)).c_str());
  }
  double X(int series, int point) override { return Call(), series_.at(series).at(point).first; }
  double Y(int series, int point) override { return Call(), series_.at(series).at(point).second; }

  const char* xTitle = "min";
  const char* yTitle = "mV";
  int calls = 0;
  int failingCall = 0;

 private:
  void Call() {
    if (++calls == failingCall) throw calls;
  }
  std::vector<Line> series_;
};

class XYGraph : public PlotTest {
 protected:
  void Render(Data& data, RECT rect = {0, 0, 300, 200}) {
    graph.SetXYData(&data);
    graph.ViewAll();
    graph.Render(hdc(), rect);
  }
  TXYGraph graph;
};

std::string Text(const TXYGraph::Range& range) {
  char text[128];
  std::snprintf(text, sizeof text, "%g %g %g %g", range.xLow, range.xHigh, range.yLow, range.yHigh);
  return text;
}

TEST_F(XYGraph, RangesFollowTheData) {
  struct {
    std::vector<Line> series;
    const char* view;
    const char* full;
  } const cases[] = {
      {{{{0, 0}, {10, 5}}}, "0 10 0 5", "0 10 -0.2625 5.25"},
      {{{{0, 2}, {10, 5}}}, "0 10 2 5", "0 10 0 5.15"},
      {{{{3, -1}}, {{-2, 4}, {1, 0}}}, "-2 3 -1 4", "-2 3 -1.2625 4.25"},
      {{{{3, 3}}}, "3 4 3 4", "3 4 0 4.05"},
      {{{{1, kNaN}, {kNaN, 7}, {2, 8}}}, "1 2 7 8", "1 2 0 8.05"},
      {{{}, {}}, "0 1 0 1", "0 1 -0.0525 1.05"},
      {{{{kInfinity, 1}, {0, 2}}}, "0 1 1 2", "0 1 0 2.05"},
      {{}, "0 1 0 1", "0 1 0 1"},
  };
  for (const auto& c : cases) {
    Data data(c.series);
    graph.SetXYData(&data);
    graph.ViewAll();
    EXPECT_EQ(Text(graph.ViewRange()), c.view);
    EXPECT_EQ(Text(graph.FullRange()), c.full);
  }
  Data far({{{1e20, 1}, {1e20, 2}}});  // 1e20 + 1 is 1e20
  graph.SetXYData(&far);
  graph.ViewAll();
  EXPECT_GT(graph.ViewRange().xHigh, graph.ViewRange().xLow);
}

TEST_F(XYGraph, ScalingAndScrollingStayWithinLimits) {
  struct {
    void (TXYGraph::*operation)(double);
    double argument;
    const char* view;
  } const steps[] = {
      {&TXYGraph::ScaleX, 3, "0 10 0 5"},           {&TXYGraph::ScaleX, 0.00009, "0 10 0 5"},
      {&TXYGraph::ScaleX, kNaN, "0 10 0 5"},        {&TXYGraph::ScaleX, -1, "0 10 0 5"},
      {&TXYGraph::ScaleX, 2, "0 20 0 5"},           {&TXYGraph::ScaleX, 0.5, "0 10 0 5"},
      {&TXYGraph::ScrollX, 0.5, "5 15 0 5"},        {&TXYGraph::ScrollX, 1.5, "5 15 0 5"},
      {&TXYGraph::ScrollX, 0.5, "10 20 0 5"},       {&TXYGraph::ScrollX, -2, "-10 0 0 5"},
      {&TXYGraph::ScrollX, -0.1, "-10 0 0 5"},      {&TXYGraph::ScaleY, 0.5, "-10 0 0 2.5"},
      {&TXYGraph::ScrollY, 2, "-10 0 5 7.5"},       {&TXYGraph::ScrollY, 1, "-10 0 5 7.5"},
      {&TXYGraph::ScaleX, 0.001, "-10 -9.99 5 7.5"}};
  Data data({{{0, 0}, {10, 5}}});
  graph.SetXYData(&data);
  graph.ViewAll();
  for (const auto& step : steps) {
    (graph.*step.operation)(step.argument);
    EXPECT_EQ(Text(graph.ViewRange()), step.view) << step.argument;
  }
}

// Every margin, and the legend before and after the first line.
TEST_F(XYGraph, GoldenLayoutAxesSeriesAndLegend) {
  Data data({{{1, 1}}, {{0, 0}, {5, 5}, {10, 0}}, {{0, 5}, {10, 5}}});
  graph.SetBackgrtound(RGB(1, 2, 3));
  graph.SetAxisColor(RGB(4, 5, 6));
  Render(data, {10, 20, 170, 120});
  ExpectGolden("xy_graph.txt");
}

TEST_F(XYGraph, TitlesColoursAndPlacesThatAreNotNumbers) {
  std::vector<Line> series(17, {{0, 0}, {2, 5}, {4, kNaN}, {6, 5}, {kNaN, 3}, {8, 0}, {10, 0}});
  Data data(series);
  data.xTitle = nullptr;  // needs a digit only
  data.yTitle = "";
  Render(data);
  const std::string drawn = Journal();
  EXPECT_NE(drawn.find("polyline 2 18,178 73,14 pen=0/0/#000000"), drawn.npos) << drawn;
  EXPECT_NE(drawn.find("polyline 2 238,178 293,178 pen=0/0/#000000"), drawn.npos);
  EXPECT_NE(drawn.find("\"s15\" font=14x7@0 color=#008040"), drawn.npos);
  EXPECT_NE(drawn.find("\"s16\" font=14x7@0 color=#000000"), drawn.npos);
}

TEST_F(XYGraph, BackgroundOnlyWithoutSeriesOrRoom) {
  Data none({});
  Render(none);
  EXPECT_EQ(Journal(), "fill 0,0 300,200 brush=#FFFFFF clip=none\n");
  Data data({{{0, 0}, {10, 5}}});
  for (const RECT& rect : {RECT{0, 0, 56, 200}, RECT{0, 0, 300, 54}, RECT{300, 200, 0, 0}}) {
    Render(data, rect);
    EXPECT_EQ(LinesOf(Journal()).size(), 1u);
  }
  graph.Render(nullptr, {0, 0, 300, 200});
}

// Under a shifted viewport the clip must follow the plot on the device.
TEST_F(XYGraph, ClipsToThePlotOnTheDevice) {
  Data data({{{0, 0}, {10, 5}}});
  SetViewportOrgEx(hdc(), 100, 50, nullptr);
  Render(data);
  EXPECT_NE(Journal().find("polyline 2 118,228 372,72 pen=0/0/#000000 clip=118,72,372,228"),
            std::string::npos);
}

// Deep in a zoom, the pool's 32-bit crossings of long segments overflow: the line went astray.
TEST_F(XYGraph, LongSegmentsCrossTheZoomedViewWhereTheyShould) {
  Data data({{{-400, -400}, {600, 600}, {-700, -700}}});
  graph.SetXYData(&data);
  graph.ViewAll();
  graph.ScrollX(0.5);
  graph.ScrollY(0.5);
  graph.ScaleX(2e-4);  // -50 … -49.74
  graph.ScaleY(2e-4);
  graph.Render(hdc(), {0, 0, 300, 200});
  int segments = 0;
  int left = 0;
  for (const std::string& row : LinesOf(Drawn())) {
    if (row.ends_with(" 273,178")) std::sscanf(row.c_str(), "line %d", &left);
    if (!row.starts_with("polyline")) continue;
    ++segments;
    int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    ASSERT_EQ(std::sscanf(row.c_str(), "polyline 2 %d,%d %d,%d", &x0, &y0, &x1, &y1), 4) << row;
    // From the plot's lower left corner to its upper right one, or back.
    if (y0 < y1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    EXPECT_EQ(y0, 178);
    EXPECT_EQ(y1, 22);
    EXPECT_NEAR(x0, left, 1);
    EXPECT_NEAR(x1, 272, 1);
  }
  EXPECT_EQ(segments, 2);
}

TEST_F(XYGraph, AFailingSourceEndsTheCallQuietly) {
  Data data({{{0, 0}, {10, 5}}, {{0, 1}, {10, 2}}});
  Render(data);
  data.calls = 0;
  graph.ViewAll();
  const int viewCalls = data.calls;
  data.calls = 0;
  graph.Render(hdc(), {0, 0, 300, 200});
  const int renderCalls = data.calls;
  for (int call = 1; call <= viewCalls; ++call) {
    data.calls = 0;
    data.failingCall = call;
    graph.ViewAll();
    EXPECT_EQ(Text(graph.ViewRange()), "0 10 0 5");
  }
  const std::size_t objects = gfx::LiveObjects();
  for (int call = 1; call <= renderCalls; ++call) {
    data.calls = 0;
    data.failingCall = call;
    graph.Render(hdc(), {0, 0, 300, 200});
    EXPECT_EQ(gfx::LiveObjects(), objects) << "call " << call;
  }
}

}  // namespace
