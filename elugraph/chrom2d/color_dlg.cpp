#include "elugraph/chrom2d/color_dlg.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "elugraph/chrom2d/swatch_bevel.h"
#include "elugraph/resources/library_module.h"

namespace {

constexpr unsigned kTemplate = 14114;

constexpr UINT kAdd = 662;
constexpr UINT kDelete = 663;
constexpr UINT kChange = 664;
constexpr UINT kLinear = 665;
constexpr UINT kLogarithmic = 666;
constexpr int kFirstSwatch = 670;

// Constant before any code runs: the load may come before other static objects are made.
constinit std::optional<ResIdCheck> dialogTemplate;

const ResIdCheck& DialogTemplate() {
  if (!dialogTemplate) CheckColorDialogTemplate();
  return *dialogTemplate;
}

bool IsSwatch(UINT id) { return id >= kFirstSwatch && id < kFirstSwatch + ColorScale::kMaxColors; }

// Moves what follows `place` down by one; `count` entries are left.
template <class T>
void CloseGap(T* entries, int place, int count) {
  std::memmove(entries + place, entries + place + 1,
               static_cast<std::size_t>(count - place) * sizeof(T));
}

}  // namespace

void CheckColorDialogTemplate() { dialogTemplate.emplace(kTemplate, LibraryModule(), RT_DIALOG); }

TChrom2DColorDlg::TChrom2DColorDlg(TChrom2DBase* itsOwner)
    : TORVDlg(itsOwner != nullptr ? itsOwner->hwnd : nullptr, DialogTemplate(), nullptr,
              ResId(0U, LibraryModule())),
      savedCount(TheColorScale().colorCount),
      owner(itsOwner) {
  const ColorScale& scale = TheColorScale();
  std::copy_n(scale.colorTable, ColorScale::kMaxColors, savedTable);
  for (int i = 0; i < scale.colorCount; ++i) SetColor(i, ColorRefOf(scale.colorTable[i]));
}

// Cancel, and the dialogs of other maps, change the count: it does not tell what is to be deleted.
TChrom2DColorDlg::~TChrom2DColorDlg() {
  for (HBRUSH brush : brushes) DeleteObject(brush);
}

void TChrom2DColorDlg::SetupWindow() {
  TORVDlg::SetupWindow();
  const ColorScale& scale = TheColorScale();
  CheckDlgButton(hwnd, scale.formula == ScaleFormula::LOG ? kLogarithmic : kLinear, BST_CHECKED);
  for (int i = 0; i < ColorScale::kMaxColors; ++i) Show(i, i < scale.colorCount);
}

LRESULT TChrom2DColorDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DRAWITEM && lParam != 0) {
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    if (IsSwatch(item.CtlID)) {
      DrawSwatchBevel(item.hDC, item.rcItem, static_cast<int>(item.CtlID) == selectedId);
      return TRUE;
    }
  }
  if (message == WM_CTLCOLORBTN) {
    const HBRUSH face = FaceOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
    if (face != nullptr) return reinterpret_cast<LRESULT>(face);
  }
  return TORVDlg::WindowProc(message, wParam, lParam);
}

LRESULT TChrom2DColorDlg::EvCommand(UINT id, HWND control, UINT notification) {
  switch (id) {
    case kAdd:
      Add();
      break;
    case kDelete:
      Delete();
      break;
    case kChange:
      Change();
      break;
    case kLinear:
      SetFormula(ScaleFormula::LINE);
      break;
    case kLogarithmic:
      SetFormula(ScaleFormula::LOG);
      break;
    case IDCANCEL:
      Restore();
      break;
    default:
      if (IsSwatch(id) && notification == BN_CLICKED) Select(static_cast<int>(id));
      break;
  }
  return TORVDlg::EvCommand(id, control, notification);
}

void TChrom2DColorDlg::Select(int id) {
  Repaint(selectedId);
  selectedId = id;
  Repaint(selectedId);
}

void TChrom2DColorDlg::Add() {
  ColorScale& scale = TheColorScale();
  if (scale.colorCount >= ColorScale::kMaxColors) return;
  COLORREF color = colors[scale.colorCount];
  if (!Choose(color)) return;
  // Read again: another map's dialog may have changed it while the user chose.
  const int added = scale.colorCount;
  if (added >= ColorScale::kMaxColors) return;
  SetColor(added, color);
  Show(added, true);
  scale.colorTable[added] = MapColorOf(color);
  scale.colorCount = added + 1;
  ResetScaleCoefficients();
  Refresh();
}

void TChrom2DColorDlg::Delete() {
  ColorScale& scale = TheColorScale();
  const int deleted = Selected();
  if (scale.colorCount <= 2 || deleted < 0) return;
  const int left = --scale.colorCount;
  Show(left, false);
  DeleteObject(brushes[deleted]);
  CloseGap(scale.colorTable, deleted, left);
  CloseGap(colors, deleted, left);
  CloseGap(brushes, deleted, left);
  // Its brush has moved down or is deleted.
  brushes[left] = nullptr;
  ResetScaleCoefficients();
  Repaint(selectedId);
  Refresh();
}

void TChrom2DColorDlg::Change() {
  ColorScale& scale = TheColorScale();
  const int before = Selected();
  if (before < 0) return;
  COLORREF color = ColorRefOf(scale.colorTable[before]);
  if (!Choose(color)) return;
  const int changed = Selected();
  if (changed < 0) return;
  scale.colorTable[changed] = MapColorOf(color);
  SetColor(changed, color);
  Refresh();
}

void TChrom2DColorDlg::SetFormula(ScaleFormula formula) {
  TheColorScale().formula = formula;
  Refresh();
}

void TChrom2DColorDlg::Restore() {
  ColorScale& scale = TheColorScale();
  std::copy_n(savedTable, ColorScale::kMaxColors, scale.colorTable);
  scale.colorCount = savedCount;
  ResetScaleCoefficients();
  Refresh();
}

int TChrom2DColorDlg::Selected() const {
  const int index = selectedId - kFirstSwatch;
  return index >= 0 && index < TheColorScale().colorCount ? index : -1;
}

bool TChrom2DColorDlg::Choose(COLORREF& color) {
  return ChooseColorA(hwnd, &color, nullptr, nullptr, 0);
}

void TChrom2DColorDlg::Show(int swatch, bool shown) {
  ShowWindow(GetDlgItem(hwnd, kFirstSwatch + swatch), shown ? SW_SHOW : SW_HIDE);
}

void TChrom2DColorDlg::Repaint(int id) { InvalidateRect(GetDlgItem(hwnd, id), nullptr, TRUE); }

// The swatches by themselves: a dialog's invalid parts are not its controls'.
void TChrom2DColorDlg::Refresh() {
  InvalidateRect(hwnd, nullptr, TRUE);
  for (int i = 0; i < ColorScale::kMaxColors; ++i) Repaint(kFirstSwatch + i);
  if (TChrom2DBase::IsLive(owner)) owner->InvalidateAll(nullptr);
}

void TChrom2DColorDlg::SetColor(int swatch, COLORREF color) {
  DeleteObject(brushes[swatch]);
  brushes[swatch] = CreateSolidBrush(color);
  colors[swatch] = color;
}

HBRUSH TChrom2DColorDlg::FaceOf(HWND control, HDC hdc) const {
  const int swatch = GetDlgCtrlID(control) - kFirstSwatch;
  if (swatch < 0 || swatch >= TheColorScale().colorCount) return nullptr;
  if (brushes[swatch] != nullptr) SetBkColor(hdc, colors[swatch]);
  return brushes[swatch];
}
