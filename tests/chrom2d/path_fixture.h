// Path editors on generated runs, used with the mouse.
#pragma once

#include <cstdio>
#include <sstream>
#include <string>

#include "elugraph/chrom2d/editor_resources.h"
#include "elugraph/chrom2d/integration_path_dlg.h"
#include "tests/chrom2d/map_fixture.h"

// Paths as text: "3-7 until 60, 5-9".
inline std::string TextOf(const SIPath& path) {
  std::string text;
  for (int i = 0; i < path.count; ++i) {
    const SIPathItem& item = path.items[i];
    char part[64];
    std::snprintf(part, sizeof part, "%s%d-%d", i > 0 ? ", " : "", item.lowChannel,
                  item.highChannel);
    text += part;
    if (item.endTime == kOpenEnd) continue;
    std::snprintf(part, sizeof part, " until %.10g", item.endTime);
    text += part;
  }
  return text;
}

inline void SetPath(SIPath& path, const std::string& text) {
  path.Resize(0);
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, ',');) {
    int low = 0, high = 0;
    double end = kOpenEnd;
    std::sscanf(part.c_str(), "%d-%d until %lf", &low, &high, &end);
    *path.Insert(path.count) = {static_cast<std::int16_t>(low), static_cast<std::int16_t>(high),
                                end};
  }
}

class EditorWindow : public TIntegrationPathDlg {
 public:
  EditorWindow(HWND parent, chromatogram* record, SIPath& original)
      : TIntegrationPathDlg(parent, record, original) {}

  bool ApplyData() override { return agrees; }

  using TChrom2DBase::axis_col;
  using TChrom2DBase::mapRect;
  using TChrom2DBase::picture;

  bool agrees = true;
};

// 21 channels of 200 … 300 nm, 50 s of 0.5 s; a step is some 8 columns wide, a channel 24 rows
// high.
class PathEditors : public Maps {
 public:
  PathEditors() {
    LoadEditorCursors();
    CheckEditorTemplate();
    ReadDragThresholds();
    spectra.samples = 101;
  }

  // A shown editor on `text`.
  EditorWindow& OpenPath(const std::string& text) {
    run = MakeSpectralRun(spectra);
    return OpenOnRun(text);
  }
  EditorWindow& OpenOnRun(const std::string& text) {
    SetPath(path, text);
    editor = new EditorWindow(nullptr, run.get(), path);
    window = editor->Create(-1);
    PostExecute(window, nullptr, nullptr, true);
    desk.RunUntilIdle();
    return *editor;
  }

  // The path as it would be accepted now.
  std::string Edited() {
    EXPECT_TRUE(editor->CanClose());
    const std::string text = TextOf(path);
    EXPECT_TRUE(editor->CanClose());  // swaps back
    return text;
  }

  // What axes, status label and path are drawn with, line by line.
  std::vector<std::string> Journal() {
    std::string journal;
    const HDC hdc = gfx::CreateJournalContext(journal);
    RECT client{0, 0, 0, 0};
    GetClientRect(window, &client);
    editor->axis(hdc, client);
    DeleteDC(hdc);
    std::istringstream stream(journal);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  // The marked handle as a line upright or level, and the status label: "| 1.00 min", "- 250".
  std::string Selected() {
    std::string text;
    int markX = -1;
    for (const std::string& line : Journal()) {
      RECT r{};
      char label[100] = "";
      if (std::sscanf(line.c_str(), "ellipse %d,%d %d,%d", &r.left, &r.top, &r.right, &r.bottom) ==
          4) {
        if (markX >= 0) text.insert(0, markX == r.left ? "|" : "-");
        markX = r.left;
      } else if (std::sscanf(line.c_str(), "text %d,%d \"%99[^\"]\" ", &r.left, &r.top, label) ==
                     3 &&
                 r.left == editor->mapRect.left && r.top == StripTop()) {
        text += std::string(" ") + label;
      }
    }
    return text;
  }
  LONG StripTop() const {
    POINT top{0, 0};
    RECT ok{0, 0, 0, 0};
    GetWindowRect(GetDlgItem(window, IDOK), &ok);
    ClientToScreen(window, &top);
    return ok.top - top.y;
  }

  // Where the mouse is to go: the row of a channel, the column of a time.
  int X(double timeSec) { return editor->Time2X(timeSec); }
  int Y(int channel) { return editor->ChanV2Y(spectra.lowest + spectra.step * channel); }
  POINT At(double timeSec, int channel) { return {X(timeSec), Y(channel)}; }
  void DragTo(POINT from, POINT to) { desk.Drag(window, from, to); }
  void RightClick(POINT at) { desk.Click(window, at.x, at.y, ui::MouseButton::kRight); }

  using Maps::desk;
  using Maps::run;
  using Maps::window;

  Spectra spectra;
  SIPathHolder path;  // the caller's
  EditorWindow* editor = nullptr;
};
