// A journal to draw on, read back by kind of drawing effect.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"
#include "tests/support/journal_text.h"

struct DrawnText {
  int x;
  int y;
  std::string text;
  unsigned align;
};

// A text of tests/golden/plots.
inline std::string GoldenText(const std::string& name) {
  std::ifstream file(ELUGRAPH_SOURCE_DIR "/tests/golden/plots/" + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Every test must leave as many objects as it found, and the context's states as deep.
class PlotTest : public testing::Test {
 protected:
  PlotTest() : objects_(gfx::LiveObjects()), hdc_(gfx::CreateJournalContext(journal_)) {
    UseDigits(7, 14);
  }
  ~PlotTest() override {
    EXPECT_EQ(SaveDC(hdc_), 1);
    DeleteDC(hdc_);
    DeleteObject(font_);
    EXPECT_EQ(gfx::LiveObjects(), objects_);
  }

  void UseDigits(int width, int height) {
    LOGFONTA logical{};
    logical.lfWidth = width;
    logical.lfHeight = height;
    const HFONT font = CreateFontIndirectA(&logical);
    SelectObject(hdc_, font);
    if (font_ != nullptr) DeleteObject(font_);
    font_ = font;
  }
  HDC hdc() const { return hdc_; }
  HFONT font() const { return font_; }

  // Compares what was drawn since the last look with a golden text, or renews that
  // (scripts/goldens).
  void ExpectGolden(const std::string& name) {
    const std::string drawn = Journal();
    if (std::getenv("ELUGRAPH_RENEW_GOLDENS") != nullptr) {
      std::ofstream(ELUGRAPH_SOURCE_DIR "/tests/golden/plots/" + name) << drawn;
    }
    EXPECT_EQ(drawn, GoldenText(name)) << name;
  }
  // What was drawn since the last look: in full; or the lines that start with `kind`, without pen,
  // font and clip.
  std::string Journal() { return std::exchange(journal_, ""); }
  std::string Drawn(const std::string& kind = "") {
    std::string kept;
    for (const std::string& line : LinesOf(Journal())) {
      if (line.rfind(kind, 0) != 0) continue;
      kept += "\n" + EffectOf(line);
    }
    return kept;
  }
  std::vector<DrawnText> Texts() {
    std::vector<DrawnText> texts;
    for (const std::string& line : LinesOf(Journal())) {
      DrawnText text{};
      if (std::sscanf(line.c_str(), "text %d,%d", &text.x, &text.y) != 2) continue;
      const std::size_t open = line.find('"') + 1;
      text.text = line.substr(open, line.rfind("\" font=") - open);
      std::sscanf(line.c_str() + line.rfind(" align="), " align=%u", &text.align);
      texts.push_back(text);
    }
    return texts;
  }
  // All texts, one blank between two.
  std::string Labels() {
    std::string joined;
    for (const DrawnText& text : Texts()) joined += (joined.empty() ? "" : " ") + text.text;
    return joined;
  }

 private:
  std::size_t objects_;
  std::string journal_;
  HDC hdc_;
  HFONT font_ = nullptr;
};
