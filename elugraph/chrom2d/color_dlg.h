// The dialog that edits the colour scale.
#pragma once

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/color_scale.h"

// Changes take effect in the shared scale at once; Cancel brings back the colours, not the formula.
// Made with `new` by a map window; ends as TORVDlg says. Several may be open, one for each map:
// each shows the colours it knows, and all change the one scale.
class TChrom2DColorDlg : public TORVDlg {
 public:
  // `owner` may be null, and may end before the dialog does.
  explicit TChrom2DColorDlg(TChrom2DBase* owner);
  ~TChrom2DColorDlg() override;

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT EvCommand(UINT id, HWND control, UINT notification) override;
  void SetupWindow() override;

 private:
  void Select(int id);
  void Add();
  void Delete();
  void Change();
  void SetFormula(ScaleFormula formula);
  void Restore();

  // Index of the selected swatch, −1 where that is no colour of the scale.
  int Selected() const;
  bool Choose(COLORREF& color);
  void Show(int swatch, bool shown);
  void Repaint(int id);
  void Refresh();
  void SetColor(int swatch, COLORREF color);
  HBRUSH FaceOf(HWND control, HDC hdc) const;

  HBRUSH brushes[ColorScale::kMaxColors] = {};  // owned; null where none was made
  COLORREF colors[ColorScale::kMaxColors] = {};
  int selectedId = 0;  // control id of the selected swatch; 0: none
  MapColor savedTable[ColorScale::kMaxColors];
  int savedCount;
  TChrom2DBase* owner;
};

// Looks the dialog's template up; a step of the library's load.
void CheckColorDialogTemplate();
