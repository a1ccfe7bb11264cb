// A full pass over 8 channels at 1600 × 900, split by stage, beside a plain read of the samples.
//
// Each iteration times the read (the 64-bit sum of all samples, vectorised for the machine), the
// reduction alone (into callbacks that do nothing), the reduction into a pool on a context that
// draws nothing, and the whole pass on a raster context whose driver times itself. Times are the
// thread's CPU time, so that other work on the machine counts less. Counters: of_read is the read's
// time over the pass's (1: as fast as reading the memory); the stages are parts of the pass, pool
// being what the second reduction took longer than the first, rest what none of them explains.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <random>

#include "elugraph/chromview/chrom_render.h"
#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/reduce_kernels.h"
#include "elugraph/trace/yval.h"
#include "embedded/colours.h"
#include "embedded/run.h"
#include "platform/gfx/context.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"

namespace {

constexpr int kChannels = 8;
constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr int kPeaks = 40;

double Now() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Passes everything on to another driver and adds up the time spent there.
class TimedDriver : public gfx::Driver {
 public:
  TimedDriver(gfx::Driver& inner, double& shapes, double& text)
      : inner_(inner), shapes_(shapes), text_(text) {}
  SIZE Extent() const override { return inner_.Extent(); }
  gfx::TextEngine& Text() override { return inner_.Text(); }
  void Line(POINT from, POINT to, const gfx::Pen& pen, gfx::Clip clip) override {
    Timed(shapes_, [&] { inner_.Line(from, to, pen, clip); });
  }
  void Polyline(const POINT* points, int count, const gfx::Pen& pen, gfx::Clip clip) override {
    Timed(shapes_, [&] { inner_.Polyline(points, count, pen, clip); });
  }
  void Polygon(const POINT* points, int count, const gfx::Pen& pen, const gfx::Brush& brush,
               gfx::Clip clip) override {
    Timed(shapes_, [&] { inner_.Polygon(points, count, pen, brush, clip); });
  }
  void Rectangle(const RECT& box, const gfx::Pen& pen, const gfx::Brush& brush,
                 gfx::Clip clip) override {
    Timed(shapes_, [&] { inner_.Rectangle(box, pen, brush, clip); });
  }
  void Ellipse(const RECT& box, const gfx::Pen& pen, const gfx::Brush& brush,
               gfx::Clip clip) override {
    Timed(shapes_, [&] { inner_.Ellipse(box, pen, brush, clip); });
  }
  void Fill(const RECT& box, const gfx::Brush& brush, gfx::Clip clip) override {
    Timed(shapes_, [&] { inner_.Fill(box, brush, clip); });
  }
  void TextOut(const gfx::TextRun& run, gfx::Clip clip) override {
    Timed(text_, [&] { inner_.TextOut(run, clip); });
  }
  void Dib(POINT, const gfx::ImageView&, gfx::Clip) override {}
  void Stretch(const RECT&, const gfx::ImageView&, const RECT&, gfx::Clip) override {}
  void Blit(const RECT&, const gfx::Surface*, POINT, gfx::Clip) override {}

 private:
  template <typename Work>
  static void Timed(double& sum, Work work) {
    const double start = Now();
    work();
    sum += Now() - start;
  }
  gfx::Driver& inner_;
  double& shapes_;
  double& text_;
};

// Noisy baselines with peaks, 1 ms a sample.
embedded::RunRef MakeRun(std::int64_t samples) {
  embedded::RunData data;
  std::minstd_rand random(99);
  for (int c = 0; c < kChannels; ++c) {
    embedded::ChannelData& channel = data.channels.emplace_back();
    channel.name = "UV " + std::to_string(200 + 20 * c);
    channel.unit = "mAU";
    channel.periodSec = 0.001;
    channel.unitsPerCount = 0.001F;
    channel.counts.resize(static_cast<std::size_t>(samples));
    for (std::int64_t i = 0; i < samples; ++i) {
      const double phase = static_cast<double>(i % (samples / kPeaks)) * kPeaks / samples - 0.5;
      const double height = 1 / (1 + 900 * phase * phase);
      channel.counts[static_cast<std::size_t>(i)] =
          static_cast<LONG>(200'000 * height) + static_cast<LONG>(random() % 2000);
    }
  }
  std::string fault;
  embedded::RunRef run = embedded::MakeRun(data, fault);
  std::vector<PeakRecord> peaks;
  const LONG width = static_cast<LONG>(samples / kPeaks);
  for (LONG i = 0; i < kPeaks; ++i) {
    const LONG start = i * width;
    peaks.push_back({start, start + width / 2, start + width - 1, 0, 0, 0.0F, 1000, 1000, 0});
  }
  const bool taken = run != nullptr && run->SetPeaks(0, peaks, true).empty();
  return taken ? std::move(run) : nullptr;
}

std::int64_t Read(const chromatogram& run) {
  std::int64_t sum = 0;
  for (int c = 0; c < kChannels; ++c) {
    const TChannel& channel = *run.channels.At(c);
    sum += Kernels().signedSum(channel.samples, static_cast<std::size_t>(channel.sampleCount));
  }
  return sum;
}

// As the pass reduces the channels, into `pool`, or into nothing.
void Reduce(const embedded::Run& run, const THoldWindow& view, bool exact, bool intoPool, HDC hdc) {
  const auto noPoint = [](int, LONG, void*, void*) {};
  const auto noColumn = [](int, LONG, LONG, LONG, LONG, void*, void*) {};
  const RECT band{0, 0, kWidth, kHeight};
  for (int c = 0; c < kChannels; ++c) {
    TChannel& channel = *run.channels.At(c);
    GetTime time(&channel, view.t0, view.t1 - view.t0, static_cast<ULONG>(view.plotWidth), 0.001,
                 view.timePerPixel);
    YVAL yval(&channel, view.plotBottom, view.unitsPerPixel, false, 0, 0);
    PolyLinePool pool(4 * kWidth + 16, &band, hdc);
    EachPoint points(pool, yval, time, 0, 0, kWidth, intoPool ? nullptr : +noPoint,
                     intoPool ? nullptr : +noColumn);
    points.Draw(0, 1, channel.samples, channel.sampleCount, exact, 0, nullptr);
  }
}

struct Stages {
  std::vector<double> read, reduction, pooled, pass, shapes, text;
};

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

void BM_FullPass(benchmark::State& state) {
  const embedded::RunRef run = MakeRun(state.range(0));
  if (run == nullptr) return state.SkipWithError("no run");
  const bool exact = state.range(1) != 0;
  THoldWindow& view = run->View();
  view.flags = static_cast<WORD>((exact ? THoldWindow::kExact : 0) | THoldWindow::kBaselines |
                                 THoldWindow::kGrid | 2);
  view.colours = *embedded::ColourSchemeNamed("safe");

  gfx::Surface surface(kWidth, kHeight);
  const HDC raster = gfx::CreateRasterContext(surface, gfx::SystemText());
  double shapes = 0;
  double text = 0;
  const HDC timed =
      gfx::CreateContext(std::make_unique<TimedDriver>(*gfx::DriverOf(raster), shapes, text));
  const HDC null = gfx::CreateNullContext();
  LOGFONTA logical{};
  logical.lfHeight = -20;
  const HFONT font = CreateFontIndirectA(&logical);
  logical.lfEscapement = 900;
  const HFONT labelFont = CreateFontIndirectA(&logical);
  {
    TChromRender render(run.get());
    render.SetSize(kWidth, kHeight);
    render.SetFonts(font, labelFont);
    render.setFontSize(timed);
    render.xysetfull(timed);
    RECT all{0, 0, kWidth, kHeight};
    Stages times;
    const auto measure = [](std::vector<double>& into, auto work) {
      const double start = Now();
      work();
      into.push_back(Now() - start);
    };
    for (auto _ : state) {
      measure(times.read, [&] { benchmark::DoNotOptimize(Read(*run)); });
      measure(times.reduction, [&] { Reduce(*run, view, exact, false, null); });
      measure(times.pooled, [&] { Reduce(*run, view, exact, true, null); });
      shapes = text = 0;
      measure(times.pass, [&] { render.showchrom(timed, true, all, 0); });
      times.shapes.push_back(shapes);
      times.text.push_back(text);
      state.SetIterationTime(times.pass.back());
    }
    const double pass = Median(times.pass);
    const double reduction = Median(times.reduction);
    const double pool = std::max(0.0, Median(times.pooled) - reduction);
    state.counters["of_read"] = Median(times.read) / pass;
    state.counters["read_ms"] = 1e3 * Median(times.read);
    state.counters["reduction"] = reduction / pass;
    state.counters["pool"] = pool / pass;
    state.counters["raster"] = Median(times.shapes) / pass;
    state.counters["text"] = Median(times.text) / pass;
    state.counters["rest"] =
        1 - (reduction + pool + Median(times.shapes) + Median(times.text)) / pass;
  }
  for (const HDC context : {timed, null, raster}) DeleteDC(context);
  DeleteObject(font);
  DeleteObject(labelFont);
  state.SetItemsProcessed(state.iterations() * kChannels * state.range(0));
}
BENCHMARK(BM_FullPass)
    ->ArgNames({"samples", "exact"})
    ->ArgsProduct({{100'000, 10'000'000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
