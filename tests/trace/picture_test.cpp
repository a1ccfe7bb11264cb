// Nothing is lost by the reduction: the picture of the exact trace is that of every sample.
#include <algorithm>
#include <random>

#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/yval.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/trace/trace_journal.h"

namespace {

constexpr int kWidth = 48;
constexpr int kHeight = 32;
constexpr int kLeft = 5;
constexpr RECT kBand = {0, 6, kWidth, 25};

struct View {
  std::vector<LONG> samples;
  std::vector<LONG> times;           // empty: equidistant
  double startMs, period, perPixel;  // ms
  int step, runPoints;
};

TChannel ChannelOf(const View& view) {
  TChannel channel = {};
  channel.samples = view.samples.data();
  channel.sampleCount = static_cast<LONG>(view.samples.size());
  channel.times = view.times.empty() ? nullptr : view.times.data();
  channel.unitsPerCount = -1;  // counts are rows
  return channel;
}
GetTime TimeOf(const View& view, TChannel& channel) {
  return GetTime(&channel, view.startMs / 1e3, view.perPixel * kWidth / 1e3, kWidth,
                 view.period / 1e3, view.perPixel / 1e3);
}

// The last pixel of an open line is not drawn, and where runs end depends on the points: a dot
// closes the trace.
void CloseAt(HDC hdc, POINT last) {
  MoveToEx(hdc, last.x, last.y, nullptr);
  LineTo(hdc, last.x + 1, last.y);
}

// The trace from its first sample on, each sample in the column that its time has on the grid of
// columns through the first one.
void DrawEverySample(const View& view, PolyLinePool& pool) {
  TChannel channel = ChannelOf(view);
  GetTime time = TimeOf(view, channel);
  const int start = static_cast<int>(view.startMs);
  FixedPoint64 column, phase, t;
  time.X2ExactTime(view.step, column);
  int index = time.tfrom2Idx(start, column, phase);
  if (index < 0) index = 0, phase.value = 0;
  if (index >= channel.sampleCount) return;
  time.IndexTime(index, t);
  const LONG first = kLeft + static_cast<LONG>(time.Time2X(t));
  const std::int64_t base =
      phase.value -
      (view.times.empty() ? index * time.period.value : std::int64_t{view.times[index]} << 32);
  POINT p = {};
  for (; index < channel.sampleCount; ++index) {
    const std::int64_t at = base + (view.times.empty() ? index * time.period.value
                                                       : std::int64_t{view.times[index]} << 32);
    p = {first + static_cast<LONG>(std::max<std::int64_t>(0, at / column.value)) * view.step,
         view.samples[index]};
    pool(p.x, p.y);
    if (p.x > kWidth) break;
  }
  pool.Draw();
  CloseAt(pool.hdc, p);
}

void DrawReduced(const View& view, PolyLinePool& pool) {
  TChannel channel = ChannelOf(view);
  GetTime time = TimeOf(view, channel);
  YVAL yval(&channel, 0, 1, false, 0, 0);
  EachPoint each(pool, yval, time, -1, kLeft, kWidth, nullptr, nullptr);
  const int x = each.Draw(static_cast<int>(view.startMs), view.step, view.samples.data(),
                          channel.sampleCount, true, 0, nullptr);
  if (each.lastIndex >= 0) CloseAt(pool.hdc, {x, view.samples[each.lastIndex]});
}

gfx::Surface Picture(const View& view, const RECT* clip, void (*draw)(const View&, PolyLinePool&)) {
  gfx::Surface surface(kWidth, kHeight);
  const HDC hdc = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  {
    PolyLinePool pool(view.runPoints, clip, hdc);
    draw(view, pool);
  }
  DeleteDC(hdc);
  return surface;
}

// The rows that differ, and how many pixels of the second picture are drawn.
struct Difference {
  std::vector<int> rows;
  int inked = 0;
};
Difference Compare(const gfx::Surface& a, const gfx::Surface& b) {
  Difference difference;
  for (int y = 0; y < kHeight; ++y) {
    if (!std::equal(a.Row(y), a.Row(y) + kWidth, b.Row(y))) difference.rows.push_back(y);
    difference.inked += static_cast<int>(
        kWidth - std::count(b.Row(y), b.Row(y) + kWidth, gfx::PixelOf(RGB(255, 255, 255))));
  }
  return difference;
}

View RandomView(std::mt19937& random) {
  const auto upTo = [&](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n + 1));
  };
  View view;
  const int count = 1 + upTo(upTo(2) != 0 ? 60 : 1500);
  const int jump = upTo(1) != 0 ? 3 : 40;
  const int most = 1 + upTo(30);
  LONG level = upTo(kHeight), at = upTo(20);
  const bool table = upTo(2) == 0;
  for (int i = 0; i < count; ++i) {
    level = std::clamp(level + upTo(2 * jump) - jump, -60, 90);
    view.samples.push_back(level);
    if (table) view.times.push_back(at += upTo(most));
  }
  view.period = upTo(1) != 0 ? 1 + upTo(20) : (1 + upTo(5000)) / 256.0;
  view.step = 1 + upTo(2) / 2;
  view.runPoints = 2 + upTo(200);
  const double duration = count * (table ? most / 2.0 : view.period);
  view.perPixel = duration / (1 + upTo(3 * kWidth)) + 0.001;
  view.startMs = upTo(3) != 0 ? 0 : duration * (upTo(150) - 50) / 100;
  return view;
}

TEST(Picture, OfTheExactTraceIsThatOfEverySample) {
  std::mt19937 random(20240229);
  int inked = 0;
  for (int round = 0; round < 4000; ++round) {
    const View view = RandomView(random);
    const Difference whole =
        Compare(Picture(view, nullptr, DrawReduced), Picture(view, nullptr, DrawEverySample));
    ASSERT_EQ(whole.rows, std::vector<int>()) << "round " << round;
    inked += whole.inked;
    // Cut runs end on the band's edges, where their last pixels are not drawn: those two rows may
    // differ.
    for (const int row :
         Compare(Picture(view, &kBand, DrawReduced), Picture(view, &kBand, DrawEverySample)).rows) {
      ASSERT_TRUE(row == kBand.top || row == kBand.bottom) << "round " << round << " row " << row;
    }
  }
  EXPECT_GT(inked, 4000 * kWidth);  // the pictures are not empty
}

}  // namespace
