#include "app/channel_names.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "app/fit.h"
#include "app/trace_bands.h"

namespace app {
namespace {

constexpr double kAuxHighHeadroom = 0.4;  // enough for a list of names

// As the view joins them.
std::string NameText(const TChannel& channel) {
  const std::string_view name = channel.name;
  const std::string_view description = channel.description;
  constexpr std::size_t kCompared = 8;
  if (description.empty() || description.substr(0, kCompared) == name) return std::string(name);
  return std::string(name) + "(" + std::string(description) + ")";
}

SIZE ExtentOf(HDC hdc, std::string_view text) {
  SIZE extent{0, 0};
  GetTextExtentPoint32A(hdc, text.data(), static_cast<int>(text.size()), &extent);
  return extent;
}

RECT BoxAt(LONG left, LONG top, SIZE extent) {
  return {left, top, left + extent.cx, top + extent.cy};
}

bool IsList(const Plot& plot) { return (plot.view.flags & THoldWindow::kNameList) != 0; }

// Top of the name in row `index` of a list.
LONG ListTop(const Plot& plot, std::size_t index) {
  return (static_cast<LONG>(index) + 2) * plot.render.charHeight + plot.render.charHeight / 3;
}

// y of the first sample that is drawn.
double StartY(Plot& plot, std::size_t channel) {
  const Trace& trace = plot.run.channels[channel];
  std::size_t first = 0;
  while (first + 1 < trace.values.size() && trace.TimeAt(first) - plot.OffsetS() < plot.view.t0) {
    ++first;
  }
  return plot.Rows(channel).Value(static_cast<int>(first));
}

void AddChannelBoxes(Plot& plot, std::vector<RECT>& boxes) {
  const LONG gap = plot.render.charHeight / 3 / 2;
  LONG lowest = 0;
  for (std::size_t c = 0; c < plot.run.channels.size(); ++c) {
    const SIZE extent = ExtentOf(plot.hdc, NameText(plot.Channel(c)));
    if (IsList(plot)) {
      boxes.push_back(BoxAt(plot.view.x0 + plot.render.charWidth, ListTop(plot, c), extent));
      continue;
    }
    const double y = StartY(plot, c);
    if (!(y > 0 && y < 16'382 && gap + y > lowest)) continue;
    boxes.push_back(
        BoxAt(plot.view.x0 + plot.render.charWidth / 2, static_cast<LONG>(y) + gap, extent));
    lowest = boxes.back().bottom;
  }
}

void AddAuxiliaryBoxes(Plot& plot, std::vector<RECT>& boxes) {
  for (std::size_t c = 0; c < plot.run.auxiliary.size(); ++c) {
    const TChannel& channel = *plot.host.auxChannels.At(static_cast<LONG>(c));
    const SIZE extent = ExtentOf(plot.hdc, channel.name);
    const LONG left =
        plot.render.width - extent.cx - plot.render.rightReserve - plot.render.charWidth / 2;
    boxes.push_back(BoxAt(
        left, IsList(plot) ? ListTop(plot, c) : plot.AuxRows(c).Pixel(channel.sampleCount - 1),
        extent));
  }
}

bool HaveRoom(Plot& plot, const std::vector<TraceBands>& bands) {
  const std::vector<RECT> boxes = NameBoxes(plot);
  return boxes.size() == plot.run.channels.size() + plot.run.auxiliary.size() &&
         std::none_of(boxes.begin(), boxes.end(), [&](const RECT& box) {
           return box.bottom > plot.view.plotBottom || IsCrossed(box, bands);
         });
}

void DropDescriptions(Plot& plot) {
  for (LONG i = 0; i < plot.host.channels.count; ++i) plot.host.channels.At(i)->description = "";
}

}  // namespace

std::vector<RECT> NameBoxes(Plot& plot) {
  const HGDIOBJ previous = SelectObject(plot.hdc, plot.font.Handle());
  std::vector<RECT> boxes;
  AddChannelBoxes(plot, boxes);
  AddAuxiliaryBoxes(plot, boxes);
  SelectObject(plot.hdc, previous);
  return boxes;
}

void ChooseNames(Plot& plot) {
  plot.SetFlags(THoldWindow::kNameList, plot.options.names == Names::kList);
  if (plot.options.names != Names::kAuto) {
    Fit(plot);
    return;
  }
  for (const bool whole : {true, false}) {
    if (!whole) DropDescriptions(plot);
    for (const double headroom : {kAuxHeadroom, kAuxHighHeadroom}) {
      plot.auxHeadroom = headroom;
      Fit(plot);
      const std::vector<TraceBands> bands = BandsOf(plot);
      for (const bool list : {false, true}) {
        plot.SetFlags(THoldWindow::kNameList, list);
        if (HaveRoom(plot, bands)) return;
      }
      if (plot.run.auxiliary.empty()) break;
    }
  }
  plot.SetFlags(THoldWindow::kNameList, false);
  plot.auxHeadroom = kAuxHeadroom;
  Fit(plot);
}

}  // namespace app
