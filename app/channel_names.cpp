#include "app/channel_names.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "app/fit.h"
#include "app/peak_labels.h"
#include "app/trace_bands.h"

namespace app {
namespace {

constexpr double kAuxHighHeadroom = 0.4;  // enough for a list of names
constexpr double kMajorPart = 0.25;       // of the highest peak
constexpr double kMaxListPart = 0.25;     // of the plot's height, above the traces

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

// y of the sample that the view writes the name at: the first one in sight, but the trace's second
// at the earliest.
double StartY(Plot& plot, std::size_t channel) {
  const Trace& trace = plot.run.channels[channel];
  std::size_t sample = std::min<std::size_t>(1, trace.values.size() - 1);
  while (sample + 1 < trace.values.size() && trace.TimeAt(sample) - plot.OffsetS() < plot.view.t0) {
    ++sample;
  }
  return plot.Rows(channel).Value(static_cast<int>(sample));
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

// Where the labels of the highest peaks go, with their ticks.
std::vector<RECT> MajorLabels(Plot& plot) {
  std::vector<LabelBox> labels;
  double highest = 0;
  for (int k = 1; plot.LabelMode() != 0 && k <= plot.host.peaks.count; ++k) {
    labels.push_back(BoxOf(plot, k));
    highest = std::max(highest, labels.back().weight);
  }
  std::vector<RECT> boxes;
  for (LabelBox& label : labels) {
    if (label.weight < kMajorPart * highest) continue;
    label.box.bottom += plot.render.charHeight;
    boxes.push_back(label.box);
  }
  return boxes;
}

bool MajorLabelsHaveRoom(Plot& plot) {
  const std::vector<RECT> labels = MajorLabels(plot);
  const std::vector<RECT> names = NameBoxes(plot);
  return std::none_of(labels.begin(), labels.end(), [&](const RECT& label) {
    return std::any_of(names.begin(), names.end(),
                       [&](const RECT& name) { return Overlap(label, name); });
  });
}

// What is done so that names find room.
enum class Room {
  kNothing,
  kBelowAuxiliary,  // auxiliary traces are lower
  kAbove,           // traces are lower
  kInFront,         // the time axis begins earlier
  kBeforeZero,      // even before the file's zero
};

// How much earlier the view must begin so that the names fit in front of the traces.
double NamesS(Plot& plot) {
  LONG widest = 0;
  for (const RECT& box : NameBoxes(plot)) widest = std::max(widest, box.right - plot.view.x0);
  const LONG columns = plot.render.width - plot.render.rightReserve - plot.view.x0;
  if (2 * widest > columns) return 0;
  return (plot.view.t1 - plot.view.t0) * widest / (columns - widest);
}

// False where that is not possible. `startS`: where the view begins without it.
bool MakeRoom(Plot& plot, Room room, double startS) {
  const LONG line = plot.render.charHeight;
  const LONG lines = static_cast<LONG>(plot.run.channels.size()) * line + line / 2;
  plot.view.t0 = startS;
  plot.auxHeadroom = room == Room::kBelowAuxiliary ? kAuxHighHeadroom : kAuxHeadroom;
  plot.signalHeadroomPx = room == Room::kAbove ? lines : 0;
  plot.render.scalewindow();
  switch (room) {
    case Room::kNothing:
      return true;
    case Room::kBelowAuxiliary:
      return !plot.run.auxiliary.empty();
    case Room::kAbove:
      return kMaxListPart * plot.view.plotHeight > lines;
    case Room::kInFront:
    case Room::kBeforeZero:
      break;
  }
  if (plot.options.fromS || !plot.run.auxiliary.empty()) return false;
  plot.SetFlags(THoldWindow::kNameList, true);
  plot.view.t0 = startS - NamesS(plot);
  plot.render.scalewindow();
  return plot.view.t0 < startS && (room == Room::kBeforeZero || plot.view.t0 + plot.OffsetS() >= 0);
}

// Tries the ways of writing names in the room that there is, beside the labels of the highest peaks
// too where that is asked for.
bool FindRoom(Plot& plot, bool besideLabels) {
  Fit(plot);
  const std::vector<TraceBands> bands = BandsOf(plot, true);
  for (const bool list : {false, true}) {
    plot.SetFlags(THoldWindow::kNameList, list);
    if (HaveRoom(plot, bands) && (!besideLabels || MajorLabelsHaveRoom(plot))) return true;
  }
  return false;
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

bool NamesHaveRoom(Plot& plot) { return HaveRoom(plot, BandsOf(plot, true)); }

void ChooseNames(Plot& plot) {
  plot.SetFlags(THoldWindow::kNameList, plot.options.names == Names::kList);
  if (plot.options.names != Names::kAuto) {
    Fit(plot);
    return;
  }
  const double startS = plot.view.t0;
  std::vector<const char*> descriptions;
  for (LONG i = 0; i < plot.host.channels.count; ++i) {
    // Copied: a record's field is not aligned.
    const char* const description = plot.host.channels.At(i)->description;
    descriptions.push_back(description);
  }
  const auto findRoom = [&](Room room, bool besideLabels) {
    return MakeRoom(plot, room, startS) && FindRoom(plot, besideLabels);
  };
  for (const bool besideLabels : {true, false}) {
    for (const bool whole : {true, false}) {
      for (LONG i = 0; i < plot.host.channels.count; ++i) {
        plot.host.channels.At(i)->description =
            whole ? descriptions[static_cast<std::size_t>(i)] : "";
      }
      for (const Room room :
           {Room::kNothing, Room::kBelowAuxiliary, Room::kAbove, Room::kInFront}) {
        if (findRoom(room, besideLabels)) return;
      }
    }
  }
  if (findRoom(Room::kBeforeZero, false)) return;
  plot.SetFlags(THoldWindow::kNameList, false);
  MakeRoom(plot, Room::kNothing, startS);
  Fit(plot);
}

}  // namespace app
