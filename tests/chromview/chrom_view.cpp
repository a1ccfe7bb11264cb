#include "tests/chromview/chrom_view.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <sstream>

#include "tests/support/journal_text.h"

ChromView::ChromView() : render(&chrom) {
  Host() = {};
  chrom.sampleCount = 100;
  chrom.sampleInterval = 0.25F;
  chrom.runDurationMs = 25'000;
  chrom.useBackColor = 1;
  chrom.state = 1;
  chrom.window = &view;
  view.colours = {{kBack, RGB(200, 200, 200), RGB(10, 10, 10), RGB(0, 128, 0)}};
  for (int i = 0; i < 8; ++i) {
    view.colours.entries[4 + i] = RGB(static_cast<BYTE>(100 + i), 0, 0);
    view.auxColours.entries[4 + i] = RGB(0, 0, static_cast<BYTE>(200 + i));
  }
  view.t1 = 25.0;
  view.fullScale = 260.0;
  hdc = gfx::CreateJournalContext(journal);
  LOGFONTA logical{};
  logical.lfHeight = 12;
  font = CreateFontIndirectA(&logical);
  logical.lfEscapement = 900;
  labelFont = CreateFontIndirectA(&logical);
  render.SetSize(400, 300);
  render.SetFonts(font, labelFont);
  render.setFontSize(hdc);
  render.auxPosition = 2;
}

ChromView::~ChromView() {
  DeleteDC(hdc);
  DeleteObject(font);
  DeleteObject(labelFont);
}

TestChannel& ChromView::AddChannel(const char* name, std::vector<LONG> samples) {
  TestChannel& channel = owned_.emplace_back();
  std::strncpy(channel.name, name, sizeof channel.name - 1);
  std::strcpy(channel.unit, "mV");
  channel.unitsPerCount = 1.0F;
  channel.samplePeriod = 0.25F;
  channel.visible = 1;
  channel.defaultFullScale = 50;
  channel.Samples(std::move(samples));
  channel.apexLimit = channel.sampleCount;
  channels_.push_back(&channel);
  Publish();
  return channel;
}

TestChannel& ChromView::AddAuxiliary(const char* name, std::vector<LONG> samples,
                                     std::vector<LONG> times) {
  TestChannel& channel = AddChannel(name, std::move(samples));
  channels_.pop_back();
  aux_.push_back(&channel);
  channel.Times(std::move(times));
  Publish();
  return channel;
}

void ChromView::AddPeak(LONG start, LONG apex, LONG end, LONG baseline) {
  peaks_.push_back({start, apex, end, 0, 0, 0.0F, baseline, baseline, 0});
  Publish();
}

void ChromView::AddComponent(const char* name) {
  std::snprintf(component_.name, sizeof component_.name, "%s", name);
  peaks_.back().component = 1;
  chrom.calibration.components = {&componentItem_, 0, 1};
}

void ChromView::Publish() {
  chrom.channels = {channels_.data(), 0, static_cast<LONG>(channels_.size())};
  chrom.channelCount = static_cast<WORD>(channels_.size());
  chrom.auxChannels = {aux_.data(), 0, static_cast<LONG>(aux_.size())};
  chrom.peaks = {0, static_cast<LONG>(peaks_.size()), peaks_.data()};
  chrom.peakCount = static_cast<WORD>(peaks_.size());
}

Strings ChromView::Draw(int flags, RECT rect, bool erase) {
  render.scalewindow();
  journal.clear();
  other_host::Calls().clear();
  render.showchrom(hdc, erase, rect, flags);
  return LinesOf(journal);
}

Strings ChromView::With(const Strings& lines, const std::string& part) {
  Strings found;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
               [&](const std::string& line) { return line.find(part) != std::string::npos; });
  return found;
}

std::vector<POINT> ChromView::TracePoints(const Strings& lines) {
  std::vector<POINT> points;
  for (const std::string& line : With(lines, "polyline")) {
    std::istringstream stream(line);
    for (std::string word; stream >> word && word.rfind("pen=", 0) != 0;) {
      POINT point{0, 0};
      if (std::sscanf(word.c_str(), "%d,%d", &point.x, &point.y) == 2) points.push_back(point);
    }
  }
  return points;
}
