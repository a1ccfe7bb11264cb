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
    Clear();
    graph.Render(hdc(), rect);
  }
  TXYGraph graph;
};

void ExpectRange(const TXYGraph::Range& range, double xLow, double xHigh, double yLow,
                 double yHigh) {
  EXPECT_DOUBLE_EQ(range.xLow, xLow);
  EXPECT_DOUBLE_EQ(range.xHigh, xHigh);
  EXPECT_DOUBLE_EQ(range.yLow, yLow);
  EXPECT_DOUBLE_EQ(range.yHigh, yHigh);
}

TEST_F(XYGraph, RangesFollowTheData) {
  struct {
    std::vector<Line> series;
    TXYGraph::Range view;
    double fullYLow;
    double fullYHigh;
  } const cases[] = {
      {{{{0, 0}, {10, 5}}}, {0, 10, 0, 5}, -0.2625, 5.25},
      {{{{0, 2}, {10, 5}}}, {0, 10, 2, 5}, 0, 5.15},
      {{{{3, -1}}, {{-2, 4}, {1, 0}}}, {-2, 3, -1, 4}, -1.2625, 4.25},
      {{{{3, 3}}}, {3, 4, 3, 4}, 0, 4.05},
      {{{{1, kNaN}, {kNaN, 7}, {2, 8}}}, {1, 2, 7, 8}, 0, 8.05},
      {{{}, {}}, {0, 1, 0, 1}, -0.0525, 1.05},
      {{{{kInfinity, 1}, {0, 2}}}, {0, 1, 1, 2}, 0, 2.05},
      {{{{1e20, 1}, {1e20, 2}}}, {1e20, std::nextafter(1e20, 1e21), 1, 2}, 0, 2.05},
      {{}, {0, 1, 0, 1}, 0, 1},
  };
  for (const auto& c : cases) {
    Data data(c.series);
    graph.SetXYData(&data);
    graph.ViewAll();
    ExpectRange(graph.ViewRange(), c.view.xLow, c.view.xHigh, c.view.yLow, c.view.yHigh);
    ExpectRange(graph.FullRange(), c.view.xLow, c.view.xHigh, c.fullYLow, c.fullYHigh);
  }
}

TEST_F(XYGraph, ScalingAndScrollingStayWithinLimits) {
  struct {
    char operation;  // x, y: scale; h, v: scroll
    double argument;
    TXYGraph::Range view;
  } const steps[] = {
      {'x', 3, {0, 10, 0, 5}},    {'x', 0.00009, {0, 10, 0, 5}}, {'x', kNaN, {0, 10, 0, 5}},
      {'x', -1, {0, 10, 0, 5}},   {'x', 2, {0, 20, 0, 5}},       {'x', 0.5, {0, 10, 0, 5}},
      {'h', 0.5, {5, 15, 0, 5}},  {'h', 1.5, {5, 15, 0, 5}},     {'h', 0.5, {10, 20, 0, 5}},
      {'h', -2, {-10, 0, 0, 5}},  {'h', -0.1, {-10, 0, 0, 5}},   {'y', 0.5, {-10, 0, 0, 2.5}},
      {'v', 2, {-10, 0, 5, 7.5}}, {'v', 1, {-10, 0, 5, 7.5}},    {'x', 0.001, {-10, -9.99, 5, 7.5}},
  };
  Data data({{{0, 0}, {10, 5}}});
  graph.SetXYData(&data);
  graph.ViewAll();
  for (const auto& step : steps) {
    SCOPED_TRACE(testing::Message() << step.operation << " " << step.argument);
    if (step.operation == 'x') graph.ScaleX(step.argument);
    if (step.operation == 'y') graph.ScaleY(step.argument);
    if (step.operation == 'h') graph.ScrollX(step.argument);
    if (step.operation == 'v') graph.ScrollY(step.argument);
    ExpectRange(graph.ViewRange(), step.view.xLow, step.view.xHigh, step.view.yLow,
                step.view.yHigh);
  }
}

// Every margin, and the legend before and after the first line.
TEST_F(XYGraph, LayoutAxesSeriesAndLegend) {
  Data data({{{1, 1}}, {{0, 0}, {5, 5}, {10, 0}}, {{0, 5}, {10, 5}}});
  graph.SetBackgrtound(RGB(1, 2, 3));
  Render(data, {10, 20, 310, 220});
  EXPECT_EQ(Journal(),
            "fill 10,20 310,220 brush=#010203 clip=none\n"
            "line 28,198 283,198 pen=0/0/#000000 clip=none\n"
            "line 28,194 28,203 pen=0/0/#000000 clip=none\n"
            "text 28,202 \"0\" font=14x7@0 color=#000000 align=6 bk=1 clip=none\n"
            "line 79,194 79,203 pen=0/0/#000000 clip=none\n"
            "text 79,202 \"2\" font=14x7@0 color=#000000 align=6 bk=1 clip=none\n"
            "line 130,194 130,203 pen=0/0/#000000 clip=none\n"
            "text 130,202 \"4\" font=14x7@0 color=#000000 align=6 bk=1 clip=none\n"
            "line 180,194 180,203 pen=0/0/#000000 clip=none\n"
            "text 180,202 \"6\" font=14x7@0 color=#000000 align=6 bk=1 clip=none\n"
            "line 231,194 231,203 pen=0/0/#000000 clip=none\n"
            "text 231,202 \"8\" font=14x7@0 color=#000000 align=6 bk=1 clip=none\n"
            "text 283,205 \"min\" font=14x7@0 color=#000000 align=8 bk=1 clip=none\n"
            "line 28,198 28,41 pen=0/0/#000000 clip=none\n"
            "line 24,198 32,198 pen=0/0/#000000 clip=none\n"
            "text 24,198 \"0\" font=14x7@0 color=#000000 align=26 bk=1 clip=none\n"
            "line 24,167 32,167 pen=0/0/#000000 clip=none\n"
            "text 24,167 \"1\" font=14x7@0 color=#000000 align=26 bk=1 clip=none\n"
            "line 24,136 32,136 pen=0/0/#000000 clip=none\n"
            "text 24,136 \"2\" font=14x7@0 color=#000000 align=26 bk=1 clip=none\n"
            "line 24,104 32,104 pen=0/0/#000000 clip=none\n"
            "text 24,104 \"3\" font=14x7@0 color=#000000 align=26 bk=1 clip=none\n"
            "line 24,73 32,73 pen=0/0/#000000 clip=none\n"
            "text 24,73 \"4\" font=14x7@0 color=#000000 align=26 bk=1 clip=none\n"
            "text 28,41 \"mV\" font=14x7@0 color=#000000 align=14 bk=1 clip=none\n"
            "text 289,42 \"s0\" font=14x7@0 color=#000000 align=0 bk=1 clip=none\n"
            "polyline 3 28,198 155,42 282,198 pen=0/0/#F00000 clip=28,42,282,198\n"
            "text 289,56 \"s1\" font=14x7@0 color=#F00000 align=24 bk=1 clip=none\n"
            "polyline 2 28,42 282,42 pen=0/0/#0000F0 clip=28,42,282,198\n"
            "text 289,70 \"s2\" font=14x7@0 color=#0000F0 align=24 bk=1 clip=none\n");
}

TEST_F(XYGraph, EmptyTitlesNeedADigitOnly) {
  Data data({{{0, 0}, {10, 5}}});
  data.xTitle = nullptr;
  data.yTitle = "";
  Render(data);
  EXPECT_NE(Drawn("polyline").find(" 18,178 293,14"), std::string::npos) << Drawn();
}

TEST_F(XYGraph, BackgroundOnlyWithoutSeriesOrRoom) {
  Data none({});
  Render(none);
  EXPECT_EQ(Drawn(), "fill 0,0 300,200 brush=#FFFFFF clip=none\n");
  Data data({{{0, 0}, {10, 5}}});
  for (const RECT& rect : {RECT{0, 0, 56, 200}, RECT{0, 0, 300, 54}, RECT{300, 200, 0, 0}}) {
    Render(data, rect);
    EXPECT_EQ(Journal().find('\n'), Journal().size() - 1) << Journal();
  }
  graph.Render(nullptr, {0, 0, 300, 200});
}

TEST_F(XYGraph, ColoursRepeatAfterSixteenSeries) {
  Data data(std::vector<Line>(17, {{0, 0}, {10, 5}}));
  Render(data);
  EXPECT_NE(Journal().find("\"s15\" font=14x7@0 color=#008040"), std::string::npos);
  EXPECT_NE(Journal().find("\"s16\" font=14x7@0 color=#000000"), std::string::npos);
}

// Under a shifted viewport the clip must follow the plot on the device.
TEST_F(XYGraph, ClipsToThePlotOnTheDevice) {
  Data data({{{0, 0}, {10, 5}}});
  SetViewportOrgEx(hdc(), 100, 50, nullptr);
  Render(data);
  EXPECT_NE(Journal().find("polyline 2 118,228 372,72 pen=0/0/#000000 clip=118,72,372,228"),
            std::string::npos)
      << Journal();
}

TEST_F(XYGraph, PlacesThatAreNotFiniteInterruptTheLine) {
  Data data({{{0, 0}, {2, 5}, {4, kNaN}, {6, 5}, {kNaN, 3}, {8, 0}, {10, 0}}});
  Render(data);
  EXPECT_EQ(Drawn("polyline"),
            "polyline 2 18,178 69,22\n"
            "polyline 2 221,178 272,178\n");
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
  Clear();
  graph.Render(hdc(), {0, 0, 300, 200});
  int left = 0;
  ASSERT_EQ(std::sscanf(Drawn("line").c_str(), "line %d,178 273,178", &left), 1) << Drawn();
  std::istringstream polylines(Drawn("polyline"));
  int segments = 0;
  for (std::string row; std::getline(polylines, row); ++segments) {
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
    ExpectRange(graph.ViewRange(), 0, 10, 0, 5);
  }
  const std::size_t objects = gfx::LiveObjects();
  for (int call = 1; call <= renderCalls; ++call) {
    data.calls = 0;
    data.failingCall = call;
    graph.Render(hdc(), {0, 0, 300, 200});
    EXPECT_EQ(gfx::LiveObjects(), objects) << "call " << call;
    EXPECT_EQ(SaveDC(hdc()), 1) << "call " << call;  // no state left on the stack
    RestoreDC(hdc(), -1);
  }
}

}  // namespace
