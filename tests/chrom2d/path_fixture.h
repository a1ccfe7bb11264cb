// Path editors on generated runs, used with the mouse.
#pragma once

#include <cstdio>
#include <sstream>

#include "elugraph/chrom2d/editor_resources.h"
#include "elugraph/chrom2d/integration_path_dlg.h"
#include "tests/chrom2d/map_fixture.h"
#include "tests/support/journal_text.h"

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
  using TIntegrationPathDlg::TIntegrationPathDlg;

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
  PathEditors() { spectra.samples = 101; }

  // A shown editor on `text`.
  void OpenPath(const std::string& text) {
    run = MakeSpectralRun(spectra);
    OpenOnRun(text);
  }
  void OpenOnRun(const std::string& text) {
    SetPath(path, text);
    editor = new EditorWindow(nullptr, run.get(), path);
    Show(editor, true);
  }

  // The path as it would be accepted now.
  std::string Edited() {
    EXPECT_TRUE(editor->CanClose());
    const std::string text = TextOf(path);
    EXPECT_TRUE(editor->CanClose());  // swaps back
    return text;
  }

  // What status label and path are drawn with.
  std::vector<std::string> Drawn() {
    std::string journal;
    const HDC hdc = gfx::CreateJournalContext(journal);
    RECT client{0, 0, 0, 0};
    GetClientRect(window, &client);
    editor->axis(hdc, client);
    DeleteDC(hdc);
    // Behind the line over the strip.
    const std::size_t strip = journal.find("\nline 0,");
    return LinesOf(journal.substr(journal.find('\n', strip + 1)));
  }
  // The status label; empty where no handle is selected.
  std::string Selected() {
    for (const std::string& line : Drawn()) {
      const std::size_t label = line.find('"') + 1;
      if (label != 0) return line.substr(label, line.find('"', label) - label);
    }
    return "";
  }

  // Where the mouse is to go: the row of a channel, the column of a time.
  int X(double timeSec) { return editor->Time2X(timeSec); }
  int Y(int channel) { return editor->ChanV2Y(spectra.lowest + spectra.step * channel); }
  POINT At(double timeSec, int channel) { return {X(timeSec), Y(channel)}; }
  void DragTo(POINT from, POINT to) { desk.Drag(window, from, to); }
  void RightClick(POINT at) { desk.Click(window, at.x, at.y, ui::MouseButton::kRight); }

  using Maps::desk;
  using Maps::window;

  Spectra spectra;
  SIPathHolder path;  // the caller's
  EditorWindow* editor = nullptr;
};
