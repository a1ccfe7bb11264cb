// A run of records built by hand in a view of known size, drawn into a journal.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "elugraph/chromview/chrom_render.h"
#include "platform/gfx/context.h"
#include "tests/otherhost/other_host.h"

using Strings = std::vector<std::string>;
inline other_host::Answers& Host() { return other_host::Answer(); }

// A channel's record with its samples.
struct TestChannel : TChannel {
  std::vector<LONG> counts;
  std::vector<LONG> table;
  void Samples(std::vector<LONG> values) {
    counts = std::move(values);
    samples = counts.data();
    sampleCount = static_cast<LONG>(counts.size());
  }
  void Times(std::vector<LONG> ms) {
    table = std::move(ms);
    times = table.empty() ? nullptr : table.data();
  }
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // the interface's own
class Renderer final : public TChromRender2 {
 public:
  using TChromRender::AuxZero;
  using TChromRender::xpost;
  using TChromRender2::TChromRender2;
};
#pragma GCC diagnostic pop

constexpr COLORREF kBack = RGB(250, 250, 250);

// 100 samples of 0.25 s per channel in a view of 400 × 300: the plot spans x 0 to 400 and y 24 to
// 284, 4 pixels per sample and one per count. Colours: axis #0A0A0A, baselines #008000, channels
// #640000 …, auxiliary channels #0000C8 …; fonts of 12 × 6 pixels.
class ChromView : public testing::Test {
 public:
  ChromView();
  ~ChromView() override;

  TestChannel& AddChannel(const char* name, std::vector<LONG> samples);
  TestChannel& AddAuxiliary(const char* name, std::vector<LONG> samples, std::vector<LONG> times);
  void AddPeak(LONG start, LONG apex, LONG end, LONG baseline = 0);
  // The component of the last peak.
  void AddComponent(const char* name);
  TChannel& channel(int index) { return *chrom.channels.At(index); }
  PeakRecord& peak(int index) { return *chrom.peaks.At(index); }

  // Scales and draws; returns the journal. other_host::Calls() has the calls of this pass.
  Strings Draw(int flags = 0, RECT rect = {0, 0, 400, 300}, bool erase = false);
  static Strings With(const Strings& lines, const std::string& part);
  // The points of all polylines.
  static std::vector<POINT> TracePoints(const Strings& lines);

  chromatogram chrom{};
  THoldWindow view{};
  Renderer render;
  std::string journal;
  HDC hdc;
  HFONT font;
  HFONT labelFont;

 private:
  void Publish();
  std::deque<TestChannel> owned_;
  std::vector<TChannel*> channels_;
  std::vector<TChannel*> aux_;
  std::vector<PeakRecord> peaks_;
  component component_{};
  component* componentItem_ = &component_;
};
