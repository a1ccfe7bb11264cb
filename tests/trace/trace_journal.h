// A journal context that checks, when it goes, that no drawing object was left behind.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"
#include "tests/support/journal_text.h"

class TraceJournal {
 public:
  TraceJournal() : objects_(gfx::LiveObjects()), hdc_(gfx::CreateJournalContext(text_)) {}
  ~TraceJournal() {
    DeleteDC(hdc_);
    EXPECT_EQ(gfx::LiveObjects(), objects_);
  }
  TraceJournal(const TraceJournal&) = delete;
  TraceJournal& operator=(const TraceJournal&) = delete;

  HDC hdc() const { return hdc_; }
  // The effects since the last call without their attributes: "polyline 2 0,1 2,3".
  std::vector<std::string> Take() {
    std::vector<std::string> effects;
    for (const std::string& line : LinesOf(text_)) effects.push_back(EffectOf(line));
    text_.clear();
    return effects;
  }

 private:
  std::string text_;
  std::size_t objects_;
  HDC hdc_;
};
