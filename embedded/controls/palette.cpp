#include "embedded/controls/palette.h"

#include <algorithm>

#include "platform/ui/art.h"
#include "platform/ui/front.h"

namespace embedded {
namespace {

// Mixed with white (above 0) or black (below), in 1/256.
constexpr int kTints[kPaletteRows] = {0, 192, 128, 64, 0, -64, -128, -176};
constexpr COLORREF kHues[kPaletteColumns] = {
    RGB(255, 0, 0),   RGB(255, 128, 0), RGB(255, 255, 0), RGB(0, 255, 0),   RGB(0, 255, 255),
    RGB(0, 128, 255), RGB(0, 0, 255),   RGB(128, 0, 255), RGB(255, 0, 255), RGB(255, 0, 128)};

struct Grid {
  explicit Grid(HWND window)
      : handle(window), selected(static_cast<int>(GetWindowLongPtrA(window, GWLP_USERDATA))) {
    GetClientRect(window, &client);
  }

  RECT Cell(int index) const {
    const int row = index / kPaletteColumns, column = index % kPaletteColumns;
    return {client.right * column / kPaletteColumns, client.bottom * row / kPaletteRows,
            client.right * (column + 1) / kPaletteColumns,
            client.bottom * (row + 1) / kPaletteRows};
  }
  int IndexAt(POINT at) const {
    for (int index = 0; index < kPaletteColumns * kPaletteRows; ++index) {
      if (PtInRect(Cell(index), at)) return index;
    }
    return -1;
  }
  void Select(int index) const {
    SetWindowLongPtrA(handle, GWLP_USERDATA, index);
    InvalidateRect(handle, nullptr, FALSE);
    SendMessageA(GetParent(handle), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(handle), BN_CLICKED),
                 reinterpret_cast<LPARAM>(handle));
  }
  // Arrow keys stop at the edges; without a selection they start at the first colour.
  void Move(int key) const {
    int row = std::max(0, selected) / kPaletteColumns;
    int column = std::max(0, selected) % kPaletteColumns;
    if (selected >= 0) {
      row += key == VK_DOWN ? 1 : key == VK_UP ? -1 : 0;
      column += key == VK_RIGHT ? 1 : key == VK_LEFT ? -1 : 0;
    }
    Select(std::clamp(row, 0, kPaletteRows - 1) * kPaletteColumns +
           std::clamp(column, 0, kPaletteColumns - 1));
  }

  HWND handle;
  RECT client{0, 0, 0, 0};
  int selected;
};

RECT Shrunk(const RECT& box, int by) {
  return {box.left + by, box.top + by, box.right - by, box.bottom - by};
}

int Scaled(int pixels) { return pixels * ui::Scale() / 100; }

void PaintGrid(const Grid& grid) {
  PAINTSTRUCT paint;
  const HDC hdc = BeginPaint(grid.handle, &paint);
  const COLORREF around = GetSysColor(COLOR_3DFACE);
  FillRect(hdc, &grid.client, GetSysColorBrush(COLOR_3DFACE));
  for (int index = 0; index < kPaletteColumns * kPaletteRows; ++index) {
    const RECT cell = grid.Cell(index);
    const COLORREF color = PaletteColor(index / kPaletteColumns, index % kPaletteColumns);
    if (index == grid.selected) {
      const bool focused = GetFocus() == grid.handle;
      const COLORREF ring = GetSysColor(focused ? COLOR_HIGHLIGHT : COLOR_3DSHADOW);
      ui::DrawBox(hdc, cell, {around, ring, around, Scaled(5), Scaled(2)});
    }
    ui::DrawBox(hdc, Shrunk(cell, Scaled(3)),
                {around, ui::Mix(color, RGB(0, 0, 0), 64), color, Scaled(3), Scaled(1)});
  }
  EndPaint(grid.handle, &paint);
}

LRESULT GridProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const Grid grid(window);
  switch (message) {
    case WM_PAINT:
      PaintGrid(grid);
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS;
    case WM_LBUTTONDOWN: {
      SetFocus(window);
      const int index = grid.IndexAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      if (index >= 0) grid.Select(index);
      return 0;
    }
    case WM_KEYDOWN:
      if (wParam >= VK_LEFT && wParam <= VK_DOWN) grid.Move(static_cast<int>(wParam));
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}

LRESULT PatchProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ERASEBKGND) return TRUE;
  if (message != WM_PAINT) return DefWindowProcA(window, message, wParam, lParam);
  PAINTSTRUCT paint;
  const HDC hdc = BeginPaint(window, &paint);
  RECT client{};
  GetClientRect(window, &client);
  const auto color = static_cast<COLORREF>(GetWindowLongPtrA(window, GWLP_USERDATA));
  ui::DrawBox(
      hdc, client,
      {GetSysColor(COLOR_3DFACE), ui::Mix(color, RGB(0, 0, 0), 64), color, Scaled(3), Scaled(1)});
  EndPaint(window, &paint);
  return 0;
}

const char* Register(const char* name, WNDPROC procedure) {
  WNDCLASSA window{};
  window.lpfnWndProc = procedure;
  window.lpszClassName = name;
  window.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  RegisterClassA(&window);
  return name;
}

}  // namespace

COLORREF PaletteColor(int row, int column) {
  if (row < 0 || row >= kPaletteRows || column < 0 || column >= kPaletteColumns) return 0;
  if (row == 0) {
    const auto level = static_cast<BYTE>(255 * column / (kPaletteColumns - 1));
    return RGB(level, level, level);
  }
  const int tint = kTints[row];
  const COLORREF towards = tint > 0 ? RGB(255, 255, 255) : RGB(0, 0, 0);
  return ui::Mix(kHues[column], towards, tint > 0 ? tint : -tint);
}

int PaletteIndex(COLORREF color) {
  for (int index = 0; index < kPaletteColumns * kPaletteRows; ++index) {
    if (PaletteColor(index / kPaletteColumns, index % kPaletteColumns) == color) return index;
  }
  return -1;
}

const char* RegisteredGridClass() {
  static const char* const name = Register("colour grid", GridProcedure);
  return name;
}

const char* RegisteredPatchClass() {
  static const char* const name = Register("colour patch", PatchProcedure);
  return name;
}

}  // namespace embedded
