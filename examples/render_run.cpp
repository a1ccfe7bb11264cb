// A host in small: makes a run of a detector and a pump, finds and names the peaks, and lets the
// renderer draw it into a picture.
#include <cmath>
#include <cstdio>
#include <string>

#include "elugraph/chromview/chrom_render.h"
#include "embedded/colours.h"
#include "embedded/run.h"
#include "platform/gfx/context.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"

namespace {

embedded::RunData Measured() {
  embedded::ChannelData detector, pump;
  detector.name = "450 nm";
  detector.unit = "mAU";
  pump.name = "Acetone";
  pump.unit = "%";
  detector.periodSec = pump.periodSec = 0.2;
  for (double t = 0; t <= 600; t += 0.2) {
    const auto peak = [t](double at, double height, double sigma) {
      return height * std::exp(-0.5 * std::pow((t - at) / sigma, 2));
    };
    detector.values.push_back(peak(130, 42, 5) + peak(260, 88, 7) + peak(300, 35, 7) +
                              peak(455, 61, 10) + 0.004 * t);
    pump.values.push_back(t < 60 ? 10 : t < 480 ? 10 + (t - 60) / 6 : 80);
  }
  embedded::RunData data;
  data.channels = {detector};
  data.auxChannels = {pump};
  // Names, retention times and how far off a peak may be, in seconds.
  data.components = {{"lutein", 132, 15}, {"lycopene", 258, 15}, {"carotene", 450, 20}};
  return data;
}

HFONT Font(int heightPx, int escapement) {
  LOGFONTA font{};
  font.lfHeight = -heightPx;
  font.lfEscapement = font.lfOrientation = escapement;
  std::snprintf(font.lfFaceName, sizeof font.lfFaceName, "sans-serif");
  return CreateFontIndirectA(&font);
}

void Draw(embedded::Run& run, gfx::Surface& picture) {
  THoldWindow& view = run.View();
  view.colours = *embedded::ColourSchemeNamed("safe-dark");
  view.auxColours = embedded::Muted(view.colours, 1);
  view.thickness = view.auxThickness = embedded::Thicknesses(9, 6);
  constexpr WORD kNames = 3;
  view.flags = THoldWindow::kSignalStrip | THoldWindow::kBaselines | THoldWindow::kExact |
               THoldWindow::kLabelAll | kNames;

  const HDC hdc = gfx::CreateRasterContext(picture, gfx::SystemText());
  const HFONT font = Font(16, 0);
  const HFONT labelFont = Font(13, 900);
  TChromRender render(&run);
  render.SetSize(picture.Width(), picture.Height());
  render.SetFonts(font, labelFont);
  render.setFontSize(hdc);
  render.selectedPeakEnd = run.peakCount;  // all are filled
  for (const int auxPosition : {1, 0}) {   // fits the auxiliary scale, then that of the signal
    render.auxPosition = auxPosition;
    render.xysetfull(hdc);
  }
  view.zeroFraction = 0.06;  // room for the channel's name
  view.fullScale *= 1.06;
  render.scalewindow();
  RECT all{0, 0, picture.Width(), picture.Height()};
  render.showchrom(hdc, true, all, 0);
  DeleteDC(hdc);
  DeleteObject(labelFont);
  DeleteObject(font);
}

}  // namespace

int main(int argc, char** argv) {
  std::string fault = "usage: render-run PICTURE.png";
  const embedded::RunRef run = argc == 2 ? embedded::MakeRun(Measured(), fault) : nullptr;
  if (run != nullptr) {
    run->DetectPeaks(0);
    run->recognize();  // before the fit, which makes room for the labels
    gfx::Surface picture(1000, 560);
    Draw(*run, picture);
    if (gfx::SavePng(picture, argv[1], fault)) return 0;
  }
  std::fprintf(stderr, "render-run: %s\n", fault.c_str());
  return 1;
}
