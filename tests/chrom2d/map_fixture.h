// Map windows on generated runs.
#pragma once

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/color_scale.h"
#include "embedded/controls/host_module.h"
#include "embedded/run.h"
#include "tests/support/probe.h"

// Counts above the reference level.
using Signal = std::function<double(double wavelength, double timeSec)>;

// Some peaks of different spectra on a baseline of 100 counts.
inline double GaussianPeaks(double wavelength, double timeSec) {
  constexpr struct {
    double height, timeSec, widthSec, wavelength, bandwidth;
  } kPeaks[] = {{90'000, 40, 4, 230, 18}, {60'000, 75, 6, 262, 25}, {120'000, 130, 5, 210, 12}};
  double sum = 100;
  for (const auto& peak : kPeaks) {
    const double t = (timeSec - peak.timeSec) / peak.widthSec;
    const double w = (wavelength - peak.wavelength) / peak.bandwidth;
    sum += peak.height * std::exp(-(t * t + w * w) / 2);
  }
  return sum;
}

// A run of spectral channels `lowest`, `lowest` + `step`, … nm.
struct Spectra {
  int channels = 21;
  double lowest = 200;
  double step = 5;
  int samples = 400;
  double periodSec = 0.5;
  double startSec = 0;
  Signal signal = GaussianPeaks;
};

inline embedded::RunRef MakeSpectralRun(const Spectra& spectra) {
  embedded::RunData data;
  for (int c = 0; c < spectra.channels; ++c) {
    const double wavelength = spectra.lowest + c * spectra.step;
    embedded::ChannelData& channel = data.channels.emplace_back();
    char name[32];
    std::snprintf(name, sizeof name, "%g", wavelength);
    channel.name = name;
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

// A map window that shows its inside and counts.
class MapWindow : public TChrom2DBase {
 public:
  explicit MapWindow(chromatogram* run, HWND parent = nullptr, unsigned form = embedded::kMapDialog)
      : TChrom2DBase(parent, ResIdCheck(form, nullptr, RT_DIALOG), run, nullptr) {}

  using TChrom2DBase::axis_col;
  using TChrom2DBase::bk_col;
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

  void axis(HDC hdc, const RECT& rect) override {
    if (axes) TChrom2DBase::axis(hdc, rect);
  }

  bool axes = true;  // their ticks reach into the map
  int images = 0;    // paints of the whole window
  int builds = 0;    // pictures made
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
    window = nullptr;
    const void* record = static_cast<chromatogram*>(run.get());
    run.reset();
    if (record != nullptr) {
      EXPECT_EQ(chromatogram::pIs(record), nullptr) << "still referenced";
    }
    probe::Fixture::TearDown();
    TheColorScale() = scaleBefore_;
  }

  static void SetScale(const std::vector<COLORREF>& colors,
                       ScaleFormula formula = ScaleFormula::LINE) {
    BuildColorTable();
    for (const COLORREF color : colors) {
      TheColorScale().colorTable[TheColorScale().colorCount++] = MapColorOf(color);
    }
    TheColorScale().formula = formula;
    ResetScaleCoefficients();
  }

  // Makes the run and a shown window on it, which ends with the test, or when it is closed.
  MapWindow& Open(const Spectra& spectra = {}, unsigned form = embedded::kMapDialog) {
    run = MakeSpectralRun(spectra);
    return OpenOn(run.get(), form);
  }
  MapWindow& OpenOn(chromatogram* record, unsigned form = embedded::kMapDialog) {
    auto* made = new MapWindow(record, nullptr, form);
    window = made->Create(-1);
    PostExecute(window, nullptr, nullptr, false);
    desk.RunUntilIdle();
    return *made;
  }

  embedded::RunRef run;
  HWND window = nullptr;

 private:
  const ColorScale scaleBefore_ = TheColorScale();
};
