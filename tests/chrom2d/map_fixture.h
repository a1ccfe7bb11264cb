// Map windows on generated runs, and the colour scale.
#pragma once

#include <cfenv>
#include <cmath>
#include <functional>
#include <string>

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/color_scale.h"
#include "embedded/controls/host_module.h"
#include "embedded/run.h"
#include "tests/support/probe.h"

// Counts above the reference level.
using Signal = std::function<double(double wavelength, double timeSec)>;

// A peak on a baseline of 100 counts.
inline double GaussianPeak(double wavelength, double timeSec) {
  const double t = (timeSec - 40) / 10;
  const double w = (wavelength - 230) / 30;
  return 100 + 1e5 * std::exp(-(t * t + w * w) / 2);
}

// A run of spectral channels `lowest`, `lowest` + `step`, … nm.
struct Spectra {
  int channels = 21;
  double lowest = 200;
  double step = 5;
  int samples = 400;
  double periodSec = 0.5;
  double startSec = 0;
  Signal signal = GaussianPeak;
};

inline embedded::RunRef MakeSpectralRun(const Spectra& spectra) {
  embedded::RunData data;
  for (int c = 0; c < spectra.channels; ++c) {
    const int wavelength = static_cast<int>(spectra.lowest + c * spectra.step);
    embedded::ChannelData& channel = data.channels.emplace_back();
    channel.name = std::to_string(wavelength);
    channel.periodSec = spectra.periodSec;
    channel.startSec = spectra.startSec;
    for (int i = 0; i < spectra.samples; ++i) {
      channel.counts.push_back(
          static_cast<LONG>(std::lround(spectra.signal(wavelength, i * spectra.periodSec))));
    }
  }
  std::string fault;
  embedded::RunRef run = embedded::MakeRun(data, fault);
  EXPECT_EQ(fault, "");
  return run;
}

using Colors = std::vector<COLORREF>;

inline void SetScale(const Colors& colors, ScaleFormula formula = ScaleFormula::LINE) {
  BuildColorTable();
  for (const COLORREF color : colors) {
    TheColorScale().colorTable[TheColorScale().colorCount++] = MapColorOf(color);
  }
  TheColorScale().formula = formula;
  ResetScaleCoefficients();
}

inline Colors ScaleColors() {
  Colors colors;
  for (int i = 0; i < TheColorScale().colorCount; ++i) {
    colors.push_back(ColorRefOf(TheColorScale().colorTable[i]));
  }
  return colors;
}

// As a map's picture computes it.
inline COLORREF ColorOf(LONG lowest, double s, LONG value) {
  const int rounding = std::fegetround();
  std::fesetround(FE_TOWARDZERO);
  const MapColor color = ColorOfValue({lowest, s}, value);
  std::fesetround(rounding);
  return ColorRefOf(color);
}

// A map window that shows its inside and counts.
class MapWindow : public TChrom2DBase {
 public:
  explicit MapWindow(chromatogram* run)
      : TChrom2DBase(nullptr, ResIdCheck(embedded::kMapDialog, nullptr, RT_DIALOG), run, nullptr) {}

  using TChrom2DBase::heightMap;
  using TChrom2DBase::mapRect;
  using TChrom2DBase::picture;
  using TChrom2DBase::resizePending;
  using TChrom2DBase::timeFrom;
  using TChrom2DBase::timeTo;
  using TChrom2DBase::waveFrom;
  using TChrom2DBase::waveTo;

  void PaintImage(HWND window, HDC hdc, RECT rect) override {
    ++images;
    TChrom2DBase::PaintImage(window, hdc, rect);
  }
  void graphs(HDC hdc, const RECT& rect) override {
    const bool had = picture != nullptr;
    TChrom2DBase::graphs(hdc, rect);
    if (!had && picture != nullptr) ++builds;
  }

  int images = 0;  // paints of the whole window
  int builds = 0;  // pictures made
};

// Checks that a test leaves no reference to its run, no drawing object and no window behind, and
// brings the colour scale back.
class Maps : public probe::Fixture {
 protected:
  Maps() {
    SetScale({RGB(0, 0, 64), RGB(0, 128, 255), RGB(0, 200, 0), RGB(255, 240, 0), RGB(255, 0, 0)});
  }
  void TearDown() override {
    for (HWND top : ui::TopLevelWindows()) DestroyWindow(top);
    const void* record = static_cast<chromatogram*>(run.get());
    run.reset();
    if (record != nullptr) {
      EXPECT_EQ(chromatogram::pIs(record), nullptr) << "still referenced";
    }
    probe::Fixture::TearDown();
    TheColorScale() = scaleBefore_;
  }

  // Shows the window, which ends with the test, or when it is closed.
  void Show(TChrom2DBase* made, bool modal) {
    window = made->Create(-1);
    PostExecute(window, nullptr, nullptr, modal);
    desk.RunUntilIdle();
  }
  MapWindow& Open() {
    run = MakeSpectralRun({});
    auto* made = new MapWindow(run.get());
    Show(made, false);
    desk.RunFor(1000);
    return *made;
  }

  embedded::RunRef run;
  HWND window = nullptr;

 private:
  const ColorScale scaleBefore_ = TheColorScale();
};
