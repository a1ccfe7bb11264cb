#include "app/peak_labels.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "app/channel_names.h"
#include "app/fit.h"
#include "app/host_amounts.h"
#include "app/host_run.h"
#include "app/trace_bands.h"

namespace app {
namespace {

constexpr double kFlatPx = 4;  // peaks lower than this are hardly more than a line

bool IsVertical(const Plot& plot, const PeakRecord& peak) {
  return plot.LabelMode() == 2 || (plot.LabelMode() > 2 && peak.component != 0);
}

// As the view makes it, but for unknown amounts: it would write 0.
std::string LabelText(const Plot& plot, int number) {
  const PeakRecord& peak = *plot.host.peaks.At(number - 1);
  const component* of = plot.host.calibration.components.At(peak.component - 1);
  const int mode = plot.LabelMode();
  char text[100];
  if (mode == 2) {
    std::snprintf(text, sizeof text, "%.2f", plot.host.units(plot.host.rtime(number)));
  } else if (mode == 4 && of != nullptr && IsAmountKnown(plot.run, plot.host, peak)) {
    std::snprintf(text, sizeof text, "%s %.3f", of->name, static_cast<double>(peak.amount));
  } else if (mode > 2 && of != nullptr) {
    std::snprintf(text, sizeof text, "%s", of->name);
  } else {
    std::snprintf(text, sizeof text, "%d", number);
  }
  return text;
}

// The view labels all peaks or none; but a component may have any name, an empty one too, so that
// the labels become names.
std::vector<PeakRecord> TableWith(const Plot& plot, const std::vector<LabelBox>& boxes,
                                  const std::vector<bool>& chosen) {
  // One of the spare components has the empty name.
  const WORD noName = static_cast<WORD>(NamedComponents(plot.run) + 1);
  WORD next = static_cast<WORD>(noName + 1);
  const double flat = kFlatPx * plot.view.unitsPerPixel /
                      static_cast<double>(plot.Channel(plot.Current()).unitsPerCount);
  // A label that is a number counts the peaks in front of it, and so do the options.
  const DisplayOptions& options = plot.options;
  const bool byNumber =
      options.fillFirst > 1 || options.fillLast < plot.host.peaks.count || options.selectedPeak > 0;
  int lastNumber = byNumber ? plot.host.peaks.count : 0;
  for (int k = 1; k <= plot.host.peaks.count; ++k) {
    const bool vertical = IsVertical(plot, *plot.host.peaks.At(k - 1));
    if (chosen[static_cast<std::size_t>(k) - 1] && !vertical) lastNumber = std::max(lastNumber, k);
  }
  std::vector<PeakRecord> table;
  for (int k = 1; k <= plot.host.peaks.count; ++k) {
    const auto index = static_cast<std::size_t>(k) - 1;
    PeakRecord peak = *plot.host.peaks.At(k - 1);
    if (!chosen[index]) {
      if (boxes[index].weight < flat && k > lastNumber) continue;
      peak.component = noName;
    } else if (!IsVertical(plot, peak)) {
      peak.component = 0;
    } else {
      component& of = *plot.host.calibration.components.At(next - 1);
      std::snprintf(of.name, sizeof of.name, "%s", LabelText(plot, k).c_str());
      peak.component = next++;
    }
    table.push_back(peak);
  }
  return table;
}

std::vector<bool> WithRoom(Plot& plot, const std::vector<LabelBox>& boxes, int thinPx) {
  const RECT area{plot.view.x0, 0, plot.render.width - plot.render.rightReserve,
                  plot.render.height};
  return LabelsWithRoom(boxes, BandsOf(plot, false), area, thinPx, NameBoxes(plot),
                        kSpareComponents - 1);
}

std::vector<LabelBox> BoxesInView(Plot& plot) {
  std::vector<LabelBox> boxes;
  for (int k = 1; plot.LabelMode() != 0 && k <= plot.host.peaks.count; ++k) {
    const LONG apex = plot.host.peaks.At(k - 1)->apex;
    if (plot.IsInView(plot.Current(), static_cast<std::size_t>(apex))) {
      boxes.push_back(BoxOf(plot, k));
    }
  }
  return boxes;
}

}  // namespace

void SetLabels(Plot& plot) {
  const PeakLabels labels =
      plot.options.labels == PeakLabels::kAuto ? BestLabels(plot.host) : plot.options.labels;
  if (labels == PeakLabels::kNameAndAmount) NoteUnknownAmounts(plot.run, plot.host);
  const int mode = static_cast<int>(labels) - static_cast<int>(PeakLabels::kNone);
  plot.SetFlags(static_cast<WORD>(mode), true);
}

LabelBox BoxOf(Plot& plot, int number) {
  const PeakRecord& peak = *plot.host.peaks.At(number - 1);
  const bool vertical = IsVertical(plot, peak);
  const std::string text = LabelText(plot, number);
  const TChannel& channel = plot.Channel(plot.Current());
  const double time = static_cast<double>(plot.host.sampleInterval) * peak.apex;
  const LONG x = static_cast<LONG>(
      std::floor(plot.view.x0 + (time - plot.view.t0) / plot.view.timePerPixel + 0.5));
  const LONG bottom = plot.Rows(plot.Current()).Pixel(peak.apex) - 2 * plot.render.charHeight / 3;

  SIZE extent{0, 0};
  const HGDIOBJ previous =
      SelectObject(plot.hdc, vertical ? plot.labelFont.Handle() : plot.font.Handle());
  GetTextExtentPoint32A(plot.hdc, text.c_str(), static_cast<int>(text.size()), &extent);
  SelectObject(plot.hdc, previous);
  const double height = (channel.samples[peak.apex] -
                         0.5 * (static_cast<double>(peak.baselineStart) + peak.baselineEnd));
  if (vertical) {
    const LONG right = x + plot.render.charHeight / 2;
    return {{right - extent.cy, bottom - extent.cx, right, bottom}, height};
  }
  // Two numbers side by side must not read as one.
  const LONG half = extent.cx / 2 + plot.render.charWidth / 2;
  return {{x - half, bottom - extent.cy, x + half, bottom}, height};
}

double LabelledPart(Plot& plot) {
  const std::vector<LabelBox> boxes = BoxesInView(plot);
  const std::vector<bool> chosen = WithRoom(plot, boxes, 0);
  double all = 0;
  double labelled = 0;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const double weight = std::max(boxes[i].weight, 0.0);
    all += weight;
    if (chosen[i]) labelled += weight;
  }
  return all > 0 ? labelled / all : 1;
}

void DropCrowdedLabels(Plot& plot) {
  const LONG count = plot.host.peaks.count;
  if (plot.LabelMode() == 0 || count == 0) return;
  std::vector<LabelBox> boxes;
  for (int k = 1; k <= count; ++k) boxes.push_back(BoxOf(plot, k));
  const std::vector<bool> chosen =
      WithRoom(plot, boxes, static_cast<int>(plot.render.charHeight / 5));
  const bool asTheyAre = plot.LabelMode() != 4 || !NoteUnknownAmounts(plot.run, plot.host);
  if (asTheyAre && std::find(chosen.begin(), chosen.end(), false) == chosen.end()) return;

  std::vector<PeakRecord> table = TableWith(plot, boxes, chosen);
  static_cast<void>(plot.host.SetPeaks(plot.host.curchan(), std::move(table), true));
  EndIdentification(plot.host);
  plot.SetFlags(THoldWindow::kLabelMode, false);
  plot.SetFlags(3, true);
  // Traces that need no room for labels may grow, but not into the names.
  const double scale = plot.view.fullScale;
  Fit(plot);
  if (NamesHaveRoom(plot)) return;
  plot.view.fullScale = scale;
  plot.render.scalewindow();
}

}  // namespace app
