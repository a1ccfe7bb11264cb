// A journal to draw on, read back by kind of drawing effect.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"

struct DrawnText {
  int x;
  int y;
  std::string text;
  unsigned align;
};

// Every test must leave as many objects as it found.
class PlotTest : public testing::Test {
 protected:
  PlotTest() : objects_(gfx::LiveObjects()), hdc_(gfx::CreateJournalContext(journal_)) {
    UseDigits(7, 14);
  }
  ~PlotTest() override {
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
  void Clear() { journal_.clear(); }

  // The journal, or its lines that start with `kind`, without pen, font and clip.
  std::string Drawn(const std::string& kind = "") const {
    std::istringstream lines(journal_);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind(kind, 0) != 0) continue;
      const std::size_t end = std::min(line.find(" pen="), line.find(" font="));
      kept += line.substr(0, end) + "\n";
    }
    return kept;
  }
  const std::string& Journal() const { return journal_; }

  std::vector<DrawnText> Texts() const {
    std::istringstream lines(journal_);
    std::vector<DrawnText> texts;
    for (std::string line; std::getline(lines, line);) {
      DrawnText text{};
      if (std::sscanf(line.c_str(), "text %d,%d", &text.x, &text.y) != 2) continue;
      const std::size_t open = line.find('"');
      const std::size_t close = line.rfind("\" font=");
      text.text = line.substr(open + 1, close - open - 1);
      std::sscanf(line.c_str() + line.rfind(" align="), " align=%u", &text.align);
      texts.push_back(text);
    }
    return texts;
  }
  // All texts, one blank between two.
  std::string Labels() const {
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
