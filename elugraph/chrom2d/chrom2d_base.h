// The map window: a run's spectral channels as colours over time and wavelength.
#pragma once

#include <memory>

#include "elugraph/heightmap/height_map.h"
#include "elugraph/host/chromatogram_ref.h"
#include "elugraph/host/controls.h"
#include "elugraph/host/export.h"

// A dialog window that is a paint cache too.
class ELUGRAPH_API TLastPaintDlg : public TORVDlg, public LastPaint {
 public:
  // As TORVDlg's, in the library's own module.
  TLastPaintDlg(HWND parent, const ResIdCheck& dialogTemplate, HWND* place);
  ~TLastPaintDlg() override;

  // The paint cache sees each message first; WM_ERASEBKGND does nothing.
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// Time runs from left to right, wavelength from bottom to top, the colour of a pixel tells the
// signal through the colour scale. The coloured picture is kept for one extent of the map: a
// resize shows it stretched until sizes have not changed for kResizePauseMs; other repaints copy
// it.
//
// Device positions are client coordinates in pixels; mapRect is where the last paint put the map.
// A run without usable spectral channels (see HeightMap; fewer than three channels; no samples)
// shows the scale's first colour.
class ELUGRAPH_API TChrom2DBase : public TLastPaintDlg {
 public:
  static constexpr UINT_PTR kResizeTimer = 777;
  static constexpr UINT kResizePauseMs = 200;
  static constexpr UINT kColorCommand = 652;  // opens the colour dialog

  // Takes a reference to `chrom` (may be null) for the window object's life. The window is made
  // later, by Create or Execute. `place` (may be null) is told the window handle.
  TChrom2DBase(HWND parent, const ResIdCheck& dialogTemplate, chromatogram* chrom, HWND* place);
  ~TChrom2DBase() override;

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT EvCommand(UINT id, HWND control, UINT notification) override;
  void SetupWindow() override;
  void PaintImage(HWND window, HDC hdc, RECT rect) override;

  // Paints background, map and axes into the rectangle, whatever window it is; the context's state
  // is as before.
  virtual void draw(HDC hdc, const RECT& rect);
  // The map, in mapRect.
  virtual void graphs(HDC hdc, const RECT& rect);
  virtual void axis(HDC hdc, const RECT& rect);
  // Sets mapRect for a picture of that rectangle with the context's font. False where no map fits.
  virtual bool ViewsCalc(HDC hdc, const RECT& rect);

  // Column of a time (seconds) and row of a wavelength, rounded half up, limited to 16 bits with a
  // sign; also outside the map. An unbounded time (above half the largest double) is at the far
  // right. Without a span all times are at the map's left and all wavelengths at its bottom, one
  // below its last row, as is what is not a number.
  int Time2X(double time);
  int ChanV2Y(double wavelength);
  // The inverse on the map's columns and rows; 0 where the map has fewer than two.
  double X2Time(int x);
  double Y2ChanV(int y);
  // Channel of the wavelength nearest to a wavelength, or to a row's; the upper one on a tie, the
  // last one for what is not a number, 0 without spectral channels.
  short GetMapChannel(double wavelength);
  short GetMapChannel(int y);

  // Invalidates the cached paint within the rectangle (null: all of it), and the whole window.
  ELUGRAPH_INTERNAL void InvalidateAll(const RECT* rect);
  // Drops the picture, so that the next paint makes it anew.
  ELUGRAPH_INTERNAL void Rebuild();
  // Whether the pointer is one of an object that has not been destroyed; null is none.
  ELUGRAPH_INTERNAL static bool IsLive(const TChrom2DBase* map);

 protected:
  ELUGRAPH_INTERNAL bool InitRanges();
  ELUGRAPH_INTERNAL bool BuildPicture(const RECT& map);

  // Of all map windows; a change takes effect at the next paint.
  static COLORREF bk_col;    // background, light grey
  static COLORREF axis_col;  // axes, texts, paths; black

  bool resizePending = false;
  std::unique_ptr<Bitmap> picture;  // 3 bytes per pixel, the map's extent; null: to be made
  ChromatogramRef chrom;
  HeightMap heightMap;
  double timeFrom = 0.0;  // seconds at the map's first and last column
  double timeTo = 0.0;
  double waveFrom = 0.0;  // at the map's last and first row
  double waveTo = 0.0;
  RECT mapRect{0, 0, 0, 0};  // right and bottom excluded
  HFONT font = nullptr;      // owned
};
