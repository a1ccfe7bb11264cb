// The editor for integration paths on the map.
#pragma once

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/si_path.h"

// Opens the editor on a copy of `path` and returns its window at once; null where it could not be
// made, or where the path cannot be copied (no memory, or too many segments). `path` must stay
// valid until the window has closed, and gets the edited items where it closes with OK. An empty
// path counts as one segment over the run. A run that is null or has no spectral channels shows no
// map to edit on; the path stays as it is.
ELUGRAPH_API HWND CallChromatogramIntegrationPathEdit(HWND parent, chromatogram* chrom,
                                                      SIPath& path);

// The editor's window: the map, the path over it, and a strip for buttons and a status label below.
//
// Segment i has three handles: 3i is its boundary, the vertical line at its end, 3i + 1 and 3i + 2
// are the lines of its low and its high channel. The left button drags handles, the right one adds
// boundaries. While a handle is dragged only its line moves; the path changes at the release.
// Boundaries are set to multiples of a step, the run's sample interval where that is from 0.0001 to
// 1 s and 0.1 s otherwise, or to the run's end; those of the caller stay as they are.
class TIntegrationPathDlg : public TChrom2DBase {
 public:
  TIntegrationPathDlg(HWND parent, chromatogram* chrom, SIPath& path);

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  void SetupWindow() override;
  bool CanClose() override;
  void graphs(HDC hdc, const RECT& rect) override;
  void axis(HDC hdc, const RECT& rect) override;
  bool ViewsCalc(HDC hdc, const RECT& rect) override;

  // False where the path could not be copied.
  bool HasPath() const { return edit.count > 0; }

 private:
  static constexpr int kOnMap = -1;  // no handle
  static constexpr int kOutside = -2;

  struct BoundaryPlace {
    int x;
    bool visible;
  };

  // Of the wavelengths: the lowest one whose channel is not below the band, the highest one whose
  // channel is not above it; null where there is none. They are the band's lines.
  const WaveEntry* LowLine(const SIPathItem& item) const;
  const WaveEntry* HighLine(const SIPathItem& item) const;
  bool OnMap(int x, int y) const;

  // A handle's code, kOnMap or kOutside. Boundaries go before band lines.
  int HitTest(int x, int y);
  HCURSOR CursorFor(int code) const;
  // Adds a boundary at a position of the mouse and returns its code. −1 where there is none:
  // outside the map, on a map of one column (whose column has no time), in a run without duration,
  // without memory.
  int AddBoundary(int x, int y);
  // Applies a drag that ends there; false where none is under way. The handle may have gone.
  bool DropHandle(int x, int y);
  void DropBoundary(int k, int x);
  void DropBandLine(int k, int y);

  void PressLeft(int x, int y);
  void ReleaseLeft(int x, int y);
  void MoveMouse(int x, int y);
  bool Dragging() const { return activeHandle >= 0 && dragPos >= 0; }
  void PlaceButtons();

  void DrawPath(HDC hdc, const RECT& rect, bool lines);
  int DraggedHandle() const;
  BoundaryPlace PlaceOfBoundary(int i);
  // Row of a band line; −1 outside the map.
  int RowOf(const WaveEntry* line, int code);
  void DrawBand(HDC hdc, int i, int left, int right, bool lines);
  void HandleLine(HDC hdc, int xa, int ya, int xb, int yb, bool marked);
  void DrawStatus(HDC hdc, const RECT& rect);

  // Darkens a part of the map by a quarter.
  void ShadeRect(HDC hdc, int x0, int y0, int x1, int y1);
  bool PictureFits() const;

  HCURSOR savedCursor;  // the one before the editor
  SIPath& path;         // the caller's
  SIPathHolder edit;
  double timeStep;  // seconds
  HCURSOR cursor;
  int activeHandle = -1;  // the selected one; −1: none
  int dragPos = -1;       // column of the dragged boundary, row of the dragged line; −1: no drag
  // Buttons keep their distances from the window's edges. Pixels.
  bool buttonsKnown = false;
  int okFromRight = 0;
  int stripHeight = 0;
  int cancelFromRight = 0;
};
