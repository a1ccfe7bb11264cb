// A picture in the making: what is drawn, the renderer with its fonts, and the scales in force.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/display_options.h"
#include "app/run_data.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/trace/yval.h"
#include "embedded/run.h"
#include "platform/gfx/surface.h"

namespace app {

class OwnedFont {
 public:
  // `escapement` in tenths of a degree.
  OwnedFont(const std::string& family, double heightPx, int escapement);
  OwnedFont(const OwnedFont&) = delete;
  OwnedFont& operator=(const OwnedFont&) = delete;
  ~OwnedFont();
  HFONT Handle() const { return handle_; }

 private:
  HFONT handle_;
};

class OwnedContext {
 public:
  explicit OwnedContext(gfx::Surface& surface);
  OwnedContext(const OwnedContext&) = delete;
  OwnedContext& operator=(const OwnedContext&) = delete;
  ~OwnedContext();
  HDC Handle() const { return hdc_; }

 private:
  HDC hdc_;
};

// A length of the unscaled picture in pixels.
int Scaled(double px, const DisplayOptions& options);

// Above the auxiliary traces, part of their range.
inline constexpr double kAuxHeadroom = 0.05;

inline constexpr std::size_t kColours = 8;  // of traces

struct PlacedName {
  std::string text;
  RECT box;
};

// `host` was made of `run`, so that their channels correspond. Both are borrowed, as is the
// surface. fit.h, channel_names.h and peak_labels.h work on a plot.
struct Plot {
  // Takes over the options that are mere flags, and measures the fonts.
  Plot(RunData& run, const DisplayOptions& options, embedded::Run& host, gfx::Surface& surface);

  TChannel& Channel(std::size_t index) const { return *host.channels.At(static_cast<LONG>(index)); }
  std::size_t Current() const { return static_cast<std::size_t>(host.curchan()); }
  // Of the peaks of any channel, from 1.
  bool IsFilled(int peak) const;
  // Of a trace, as the view chooses it.
  COLORREF Colour(std::size_t channel) const;
  bool SameUnit(std::size_t a, std::size_t b) const;
  int LabelMode() const { return view.flags & THoldWindow::kLabelMode; }
  void SetFlags(WORD bits, bool on);
  // The view counts times from the run's first sample: this much less than the file.
  double OffsetS() const { return host.timeOffsetMs / 1000.0; }
  // Or less than a column beside the view: records round their times.
  bool IsInView(std::size_t channel, std::size_t sample) const;
  // Rows of a channel's samples, and of an auxiliary channel's.
  YVAL Rows(std::size_t channel);
  YVAL AuxRows(std::size_t channel);

  RunData& run;
  const DisplayOptions& options;
  embedded::Run& host;
  THoldWindow& view;
  double fontPx;
  int marginPx;  // around the renderer's area
  double auxHeadroom = kAuxHeadroom;
  int signalHeadroomPx = 0;  // kept free of the channels' traces
  // Names of the channels that stand where the view would not write them, which then writes none.
  std::vector<PlacedName> names;
  OwnedContext context;
  HDC hdc;
  OwnedFont font;
  OwnedFont labelFont;
  TChromRender render;

 private:
  void SetViewFlags();
  void SetColours();
  void SetRenderer();
};

}  // namespace app
