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
    if (!plot.names.empty()) {
      boxes.push_back(plot.names[c].box);
      continue;
    }
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

// Where the labels go, with their ticks, of peaks of at least `part` of the highest one.
std::vector<RECT> LabelBoxes(Plot& plot, double part) {
  std::vector<LabelBox> labels;
  double highest = 0;
  for (int k = 1; plot.LabelMode() != 0 && k <= plot.host.peaks.count; ++k) {
    labels.push_back(BoxOf(plot, k));
    highest = std::max(highest, labels.back().weight);
  }
  std::vector<RECT> boxes;
  for (LabelBox& label : labels) {
    if (label.weight < part * highest) continue;
    label.box.bottom += plot.render.charHeight;
    boxes.push_back(label.box);
  }
  return boxes;
}

bool OverlapsAny(const RECT& box, const std::vector<RECT>& others) {
  return std::any_of(others.begin(), others.end(),
                     [&](const RECT& other) { return Overlap(box, other); });
}

bool MajorLabelsHaveRoom(Plot& plot) {
  const std::vector<RECT> labels = LabelBoxes(plot, kMajorPart);
  const std::vector<RECT> names = NameBoxes(plot);
  return std::none_of(names.begin(), names.end(),
                      [&](const RECT& name) { return OverlapsAny(name, labels); });
}

// What is done so that names find room.
enum class Room {
  kNothing,
  kBelowAuxiliary,  // auxiliary traces are lower
  kElsewhere,       // likewise, and a list where there is room
  kAbove,           // traces are lower
  kBehind,          // a list behind the time axis' last time
};

// Width of the list of names with a margin at either side.
LONG ListWidth(Plot& plot) {
  LONG widest = 0;
  const HGDIOBJ previous = SelectObject(plot.hdc, plot.font.Handle());
  for (std::size_t c = 0; c < plot.run.channels.size(); ++c) {
    widest = std::max<LONG>(widest, ExtentOf(plot.hdc, NameText(plot.Channel(c))).cx);
  }
  SelectObject(plot.hdc, previous);
  return widest + 2 * plot.render.charWidth;
}

// How much later the view must end so that the list fits behind the traces.
double ListS(Plot& plot) {
  const LONG width = ListWidth(plot);
  const LONG columns = plot.render.width - plot.render.rightReserve - plot.view.x0;
  if (2 * width > columns) return 0;
  return (plot.view.t1 - plot.view.t0) * width / (columns - width);
}

// False where that is not possible. `endS`: where the view ends without it.
bool MakeRoom(Plot& plot, Room room, double endS) {
  const LONG line = plot.render.charHeight;
  const LONG lines = static_cast<LONG>(plot.run.channels.size()) * line + line / 2;
  plot.view.t1 = endS;
  plot.auxHeadroom =
      room == Room::kBelowAuxiliary || room == Room::kElsewhere ? kAuxHighHeadroom : kAuxHeadroom;
  plot.signalHeadroomPx = room == Room::kAbove ? lines : 0;
  plot.render.scalewindow();
  switch (room) {
    case Room::kNothing:
    case Room::kElsewhere:
      return true;
    case Room::kBelowAuxiliary:
      return !plot.run.auxiliary.empty();
    case Room::kAbove:
      return kMaxListPart * plot.view.plotHeight > lines;
    case Room::kBehind:
      break;
  }
  if (plot.options.toS) return false;
  plot.view.t1 = endS + ListS(plot);
  plot.render.scalewindow();
  return plot.view.t1 > endS;
}

// A list clear of traces, of labels, if they matter, and of the auxiliary names: as far up as
// possible, and there as far right.
bool PlaceList(Plot& plot, const std::vector<TraceBands>& bands, bool besideLabels) {
  const LONG line = plot.render.charHeight;
  const LONG margin = plot.render.charWidth;
  const SIZE size{ListWidth(plot), static_cast<LONG>(plot.run.channels.size()) * line};
  plot.SetFlags(THoldWindow::kNameList, true);
  std::vector<RECT> taken;
  const HGDIOBJ previous = SelectObject(plot.hdc, plot.font.Handle());
  AddAuxiliaryBoxes(plot, taken);
  SelectObject(plot.hdc, previous);
  for (const RECT& box : taken) {
    if (IsCrossed(box, bands)) return false;
  }
  if (besideLabels) {
    const std::vector<RECT> labels = LabelBoxes(plot, 0);
    taken.insert(taken.end(), labels.begin(), labels.end());
  }
  for (LONG top = line / 2; top + size.cy <= plot.view.plotBottom; top += line) {
    for (LONG left = plot.render.width - plot.render.rightReserve - size.cx; left >= plot.view.x0;
         left -= margin) {
      const RECT box{left, top, left + size.cx, top + size.cy};
      if (IsCrossed(box, bands) || OverlapsAny(box, taken)) continue;
      for (std::size_t c = 0; c < plot.run.channels.size(); ++c) {
        const LONG y = top + static_cast<LONG>(c) * line;
        plot.names.push_back(
            {NameText(plot.Channel(c)), {left + margin, y, left + size.cx - margin, y + line}});
      }
      return true;
    }
  }
  return false;
}

// Tries the ways of writing names in the room that there is, beside the labels of the highest peaks
// too where that is asked for.
bool FindRoom(Plot& plot, Room room, bool besideLabels) {
  plot.names.clear();
  Fit(plot);
  const std::vector<TraceBands> bands = BandsOf(plot, true);
  if (room == Room::kElsewhere || room == Room::kBehind) {
    return PlaceList(plot, bands, besideLabels);
  }
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
  const double endS = plot.view.t1;
  std::vector<const char*> descriptions;
  for (LONG i = 0; i < plot.host.channels.count; ++i) {
    // Copied: a record's field is not aligned.
    const char* const description = plot.host.channels.At(i)->description;
    descriptions.push_back(description);
  }
  const auto findRoom = [&](Room room, bool besideLabels) {
    return MakeRoom(plot, room, endS) && FindRoom(plot, room, besideLabels);
  };
  for (const bool besideLabels : {true, false}) {
    for (const bool whole : {true, false}) {
      for (LONG i = 0; i < plot.host.channels.count; ++i) {
        plot.host.channels.At(i)->description =
            whole ? descriptions[static_cast<std::size_t>(i)] : "";
      }
      // Where colours repeat, names tell their traces by their places.
      const bool byColour = plot.run.channels.size() <= kColours || !whole;
      for (const Room room :
           {Room::kNothing, Room::kBelowAuxiliary, Room::kElsewhere, Room::kAbove}) {
        if (room == Room::kElsewhere && !byColour) continue;
        if (findRoom(room, besideLabels)) return;
      }
    }
  }
  if (findRoom(Room::kBehind, false)) return;
  plot.SetFlags(THoldWindow::kNameList, false);
  MakeRoom(plot, Room::kNothing, endS);
  Fit(plot);
}

void HidePlacedNames(Plot& plot) {
  for (std::size_t c = 0; c < plot.names.size(); ++c) {
    plot.Channel(c).name[0] = '\0';
    plot.Channel(c).description = "";
  }
}

void WritePlacedNames(Plot& plot) {
  SaveDC(plot.hdc);
  SelectObject(plot.hdc, plot.font.Handle());
  SetTextAlign(plot.hdc, TA_LEFT | TA_TOP);
  SetBkMode(plot.hdc, TRANSPARENT);
  for (std::size_t c = 0; c < plot.names.size(); ++c) {
    if (plot.render.markMode != 0 && c != plot.Current()) continue;
    const PlacedName& name = plot.names[c];
    SetTextColor(plot.hdc, plot.Colour(c));
    TextOutA(plot.hdc, name.box.left, name.box.top, name.text.c_str(),
             static_cast<int>(name.text.size()));
  }
  RestoreDC(plot.hdc, -1);
}

}  // namespace app
