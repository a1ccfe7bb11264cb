// The dialog that edits the colour scale.
#pragma once

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/color_scale.h"

// Changes take effect in the shared scale at once; Cancel brings back the colours, not the formula.
// Made with `new` by a map window, which outlives it; ends as TORVDlg says.
class TChrom2DColorDlg : public TORVDlg {
 public:
  explicit TChrom2DColorDlg(TChrom2DBase* owner);
  ~TChrom2DColorDlg() override;

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT EvCommand(UINT id, HWND control, UINT notification) override;
  void SetupWindow() override;

 private:
  HBRUSH brushes[ColorScale::kMaxColors] = {};  // owned; null where none was made
  COLORREF colors[ColorScale::kMaxColors] = {};
  int selectedId = 0;  // control id of the selected swatch; 0: none
  MapColor savedTable[ColorScale::kMaxColors];
  int savedCount;
  TChrom2DBase* owner;
};

// Looks the dialog's template up; a step of the library's load.
void CheckColorDialogTemplate();
