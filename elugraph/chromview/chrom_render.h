// Draws one chromatogram into a device context: background, axes and labels, auxiliary trace,
// detector channels with their names, and peaks.
//
// Units: times are seconds; positions and lengths are device units of the contexts drawn on, y
// growing downward; all text offsets and line thicknesses are multiples of the main font's height.
// Peaks are numbered from 1, channels from 0.
// Use: construct, SetSize, SetFonts, one of the setFontSize operations, scalewindow or one of the
// fitting operations; set the public fields; then showchrom for every repaint. All calls come from
// one thread, and the chromatogram must not change during a call.
// Failures: nothing is reported to the caller and nothing thrown leaves the object. Without a
// chromatogram or its display settings nothing of a run is drawn; showchrom may still fill the
// background, report a caught failure and have the host recalculate its times.
// Rounding: doubles truncate toward zero where nothing else is said and saturate at the range of
// the integer (a NaN gives 0). Sums of positions wrap at 32 bits.
#pragma once

#include "elugraph/host/chromatogram_ref.h"
#include "elugraph/host/export.h"
#include "elugraph/host/records.h"
#include "platform/gfx/gdi.h"

struct ChannelPass;

// The interface has no destructor among its virtual operations: delete renderers by their own type.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#pragma pack(push, 1)

class ELUGRAPH_API TChromRender {
 public:
  // Takes a counted reference to `chrom` (may be null) for its lifetime. All fields start at 0.
  explicit TChromRender(chromatogram* chrom);
  ~TChromRender();

  // ---- virtual operations, in slot order ----

  // One complete drawing pass. `rect` is the area to paint, `erase` asks for its background.
  // `flags`: the kPass bits below. The context's state is as before afterwards, and so are the
  // process's signal handlers. A failure, a machine fault on bad data included, is reported to the
  // host's exceptout and ends the trace it happened in ("draft draw()") or the picture ("showchrom
  // catched"). Without raw data `rect` gets the window colour, nothing else happens.
  virtual void showchrom(HDC hdc, bool erase, RECT& rect, int flags);
  // Does nothing, and is never called; for overriding.
  virtual void drawTraingle(HDC hdc, RECT& rect, int kind, bool flag);
  // Measures the two fonts on `hdc`. With a null context the character height is the font's
  // logical height and the width comes from the display's metrics in proportion; for the label font
  // the logical height becomes the width, and the height follows in proportion. What cannot be
  // measured keeps its value.
  virtual void setFontSize(HDC hdc);
  // Measures on the window's context; a null or dead window measures with a null context.
  virtual void setFontSizeW(HWND window);

  static constexpr int kPassWholeWidth = 0x01;   // the drawn x range is the whole width
  static constexpr int kPassIncremental = 0x02;  // new trace data only
  static constexpr int kPassAxisLine = 0x04;     // vertical axis line even without a signal strip
  static constexpr int kPassFrame = 0x08;        // rectangle around the drawing area
  static constexpr int kPassFit = 0x10;          // xysetfull first

  // ---- set-up ----

  void SetSize(int width, int height);
  // The fonts stay the caller's. Measure them afterwards.
  void SetFonts(HFONT font, HFONT labelFont);

  // ---- view scaling ----

  // Free band above the plot.
  int margin();
  // Derives the pixel fields of the display settings, and rightReserve, from size, character sizes,
  // time range and full scale. A range or height that is 0 gives scales of 1.
  void scalewindow();
  // Time range to the whole run, then scalewindow. Nothing without raw data.
  void xsetfull();
  // Signal range to the data of the current channel in the visible time range, such that peaks and
  // their labels fit (auxPosition 0), or the auxiliary range to the auxiliary channels
  // (auxPosition 1); then scalewindow. Labels are measured on `hdc`, which keeps the last label's
  // font. A time window outside the samples counts as its nearest sample.
  void ysetfull(HDC hdc);
  // xsetfull, then ysetfull.
  void xysetfull(HDC hdc);
  // y of the zero line of a channel; 0 without display settings.
  int getoffset(int channel);
  // Auxiliary units per pixel; 1 where the height or the range is 0.
  double dAuxScale();

  // ---- markers ----

  // An arrow with its tip at (x, y), in the current pen and brush. `kind`: 4 points left, 5 right,
  // 6 down; any other kind collapses into the point. Only `size.cy`, a text height, is used.
  void DrawArrowMarker(HDC hdc, int x, int y, int kind, SIZE size);

 protected:
  // Sets zeroLift and zeroFraction to one text line less one channel step, and the current
  // channel's zero from the sample at `index`.
  void zero(LONG index);
  // x of a time, halves rounded up; 0 without display settings.
  int xpost(double t);
  // x of a sample index of the chromatogram's own sampling interval.
  int xposi(LONG index);
  // Distance from the plot's bottom down to the auxiliary zero line.
  int AuxZero();
  // The axes with ticks, numbers and units, legends and grid. A failure ends it silently.
  void DrawAxes(HDC hdc, int flags);
  // All visible auxiliary channels and their names.
  void DrawAuxTrace(HDC hdc, bool erase, RECT& rect, int flags);

 public:
  // ---- fields, in this order and without gaps ----
  ChromatogramRef chrom;
  HFONT font;       // axis labels, channel names, horizontal peak labels
  LONG charWidth;   // average character width of `font`
  LONG charHeight;  // its character height
  HFONT labelFont;  // vertical peak labels
  LONG labelCharWidth;
  LONG labelCharHeight;
  // 0: normal; 1: arrow markers on the selected peak; 2: on every peak. Other than 0 draws the
  // current channel only, visible or not.
  LONG markMode;
  LONG width;  // of the drawing area
  LONG height;
  LONG rightReserve;  // kept free at the right of the plot; written by scalewindow
  LONG selectedPeak;
  BYTE hostByte;         // the host's
  LONG selectedPeakEnd;  // last peak of a range that starts at selectedPeak
  LONG auxPosition;      // auxiliary trace 0: behind the channels; 1: in front; else not drawn

 private:
  struct LayoutCheck;
  struct NameStacks;
  class AxesPainter;
  class PeakPainter;
  class SignalFit;

  THoldWindow* View() const { return chrom ? chrom->window : nullptr; }

  ELUGRAPH_INTERNAL void Picture(HDC hdc, bool erase, RECT& rect, int flags);
  ELUGRAPH_INTERNAL void FillBackground(HDC hdc, const RECT& rect);
  ELUGRAPH_INTERNAL COLORREF Background() const;
  ELUGRAPH_INTERNAL void DrawChannels(HDC hdc, RECT& rect, int flags);
  ELUGRAPH_INTERNAL void DrawChannel(ChannelPass& pass, int drawn, NameStacks& stacks, HDC hdc,
                                     RECT& rect, int flags);
  ELUGRAPH_INTERNAL void PrepareScale(ChannelPass& pass);
  ELUGRAPH_INTERNAL void DrawName(const ChannelPass& pass, int drawn, NameStacks& stacks, HDC hdc);

  ELUGRAPH_INTERNAL bool channelRange(ChannelPass& pass, HDC hdc, RECT& rect, int flags);
  ELUGRAPH_INTERNAL void drawTrace(ChannelPass& pass, HDC hdc, RECT& rect);
  ELUGRAPH_INTERNAL void drawPeaks(ChannelPass& pass, HDC hdc, RECT& rect);

  ELUGRAPH_INTERNAL void FitTime();
  ELUGRAPH_INTERNAL void FitSignal(HDC hdc);
  ELUGRAPH_INTERNAL void FitAuxiliary(THoldWindow& view);
};

// The same renderer under a second name.
class ELUGRAPH_API TChromRender2 : public TChromRender {
 public:
  explicit TChromRender2(chromatogram* chrom);

  void showchrom(HDC hdc, bool erase, RECT& rect, int flags) override;
};

#pragma pack(pop)
#pragma GCC diagnostic pop
