// The map window: making its picture by stage, and its repaints beside a plain copy.
//
// BM_Rebuild makes the picture anew each time. Stages are medians of the thread's CPU time:
// bins_ms the averaging of the samples (a grid of one row), grid_ms the rest of the grid, color_ms
// its colouring, copy_ms the copy of the picture to a raster context; read_ms is a plain read of
// all samples. BM_Repaint repaints a window in which nothing has changed: draw_ms is the picture's
// copy to a raster context, paint_ms a WM_PAINT (which copies the window's cache), shown_ms what
// brings the window's picture to the front. copy_ms is a plain copy of as many pixels; of_copy is
// its time over paint_ms.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <numeric>
#include <string>
#include <vector>

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/color_scale.h"
#include "embedded/controls/host_module.h"
#include "embedded/run.h"
#include "platform/gfx/context.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "platform/ui/headless.h"

namespace {

double Now() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

template <typename Work>
void Measure(std::vector<double>& into, Work work) {
  const double start = Now();
  work();
  into.push_back(Now() - start);
}

// Thirty peaks of Gaussian shape and spectrum, 190 … 600 nm.
embedded::RunRef MakeRun(std::int64_t waves, std::int64_t samples) {
  embedded::RunData data;
  for (std::int64_t w = 0; w < waves; ++w) {
    embedded::ChannelData& channel = data.channels.emplace_back();
    const double wavelength = 190.0 + 410.0 * static_cast<double>(w) / static_cast<double>(waves);
    channel.name = std::to_string(wavelength).substr(0, 7);
    channel.periodSec = 0.1;
    channel.counts.resize(static_cast<std::size_t>(samples));
    for (std::int64_t i = 0; i < samples; ++i) {
      const double place = 30.0 * static_cast<double>(i) / static_cast<double>(samples);
      const double peak = std::floor(place);
      const double t = (place - peak - 0.5) * 8;
      const double s = (wavelength - 200 - 12 * peak) / 40;
      channel.counts[static_cast<std::size_t>(i)] =
          static_cast<LONG>(2e6 * std::exp(-(t * t + s * s) / 2)) +
          static_cast<LONG>(i * 7919 % 500);
    }
  }
  std::string fault;
  return embedded::MakeRun(data, fault);
}

void SetScale(bool log) {
  ColorScale& scale = TheColorScale();
  const COLORREF colors[] = {RGB(0, 0, 64), RGB(0, 128, 255), RGB(0, 200, 0), RGB(255, 240, 0),
                             RGB(255, 0, 0)};
  BuildColorTable();
  for (const COLORREF color : colors) scale.colorTable[scale.colorCount++] = MapColorOf(color);
  scale.formula = log ? ScaleFormula::LOG : ScaleFormula::LINE;
  ResetScaleCoefficients();
}

class MapWindow : public TChrom2DBase {
 public:
  explicit MapWindow(chromatogram* run)
      : TChrom2DBase(nullptr, ResIdCheck(embedded::kMapDialog, nullptr, RT_DIALOG), run, nullptr) {}
  using TChrom2DBase::BuildPicture;
  using TChrom2DBase::heightMap;
  using TChrom2DBase::mapRect;
};

std::int64_t Read(const chromatogram& run) {
  std::int64_t sum = 0;
  for (int c = 0; c < run.channelCount; ++c) {
    const TChannel& channel = *run.channels.At(c);
    sum = std::accumulate(channel.samples, channel.samples + channel.sampleCount, sum);
  }
  return sum;
}

void BM_Rebuild(benchmark::State& state) {
  const LONG width = static_cast<LONG>(state.range(0)), height = static_cast<LONG>(state.range(1));
  const embedded::RunRef run = MakeRun(state.range(2), state.range(3));
  SetScale(state.range(4) != 0);
  gfx::Surface surface(width, height);
  const HDC hdc = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  {
    MapWindow map(run.get());
    map.mapRect = {0, 0, width, height};
    std::vector<double> read, bins, grid, color, copy, whole;
    for (auto _ : state) {
      Measure(read, [&] { benchmark::DoNotOptimize(Read(*run)); });
      map.heightMap.Reset();
      Measure(bins, [&] { map.heightMap.DoMap(width, 1, 2); });
      map.heightMap.Reset();
      Measure(grid, [&] { map.heightMap.DoMap(width, height, 2); });
      Measure(color, [&] { map.BuildPicture(map.mapRect); });
      Measure(copy, [&] { map.graphs(hdc, map.mapRect); });
      whole.push_back(grid.back() + color.back() + copy.back());
      state.SetIterationTime(whole.back());
    }
    state.counters["read_ms"] = 1e3 * Median(read);
    state.counters["bins_ms"] = 1e3 * Median(bins);
    state.counters["grid_ms"] = 1e3 * (Median(grid) - Median(bins));
    state.counters["color_ms"] = 1e3 * Median(color);
    state.counters["copy_ms"] = 1e3 * Median(copy);
    state.counters["all_ms"] = 1e3 * Median(whole);
  }
  DeleteDC(hdc);
  state.SetItemsProcessed(state.iterations() * width * height);
}
BENCHMARK(BM_Rebuild)
    ->ArgNames({"width", "height", "waves", "samples", "log"})
    ->Args({1200, 700, 200, 6000, 0})
    ->Args({1200, 700, 200, 6000, 1})
    ->Args({2400, 700, 200, 6000, 0})
    ->Args({1200, 1400, 200, 6000, 0})
    ->Args({1200, 700, 400, 6000, 0})
    ->Args({1200, 700, 200, 12000, 0})
    ->Args({1200, 700, 200, 96000, 0})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_Repaint(benchmark::State& state) {
  const embedded::RunRef run = MakeRun(200, 6000);
  SetScale(false);
  ui::Headless desk;
  auto* const map = new MapWindow(run.get());
  const HWND window = map->Create(-1);
  PostExecute(window, nullptr, nullptr, false);
  desk.Resize(window, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  desk.RunFor(1000);
  RECT client;
  GetClientRect(window, &client);
  gfx::Surface surface(client.right, client.bottom);
  const HDC hdc = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  const gfx::Surface from = surface;
  gfx::Surface to = surface;
  const std::size_t bytes = sizeof(std::uint32_t) * static_cast<std::size_t>(client.right) *
                            static_cast<std::size_t>(client.bottom);
  std::vector<double> copy, draw, paint, shown;
  for (auto _ : state) {
    Measure(copy, [&] {
      std::memcpy(to.Row(0), from.Row(0), bytes);
      benchmark::ClobberMemory();
    });
    Measure(draw, [&] { map->graphs(hdc, map->mapRect); });
    InvalidateRect(window, nullptr, FALSE);
    Measure(paint, [&] { SendMessageA(window, WM_PAINT, 0, 0); });
    Measure(shown, [&] { desk.RunUntilIdle(); });
    state.SetIterationTime(paint.back());
  }
  state.counters["of_copy"] = Median(copy) / Median(paint);
  state.counters["copy_ms"] = 1e3 * Median(copy);
  state.counters["draw_ms"] = 1e3 * Median(draw);
  state.counters["paint_ms"] = 1e3 * Median(paint);
  state.counters["shown_ms"] = 1e3 * Median(shown);
  DeleteDC(hdc);
  DestroyWindow(window);
}
BENCHMARK(BM_Repaint)
    ->ArgNames({"width", "height"})
    ->Args({1260, 760})
    ->Args({1860, 1000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
