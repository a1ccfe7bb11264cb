// Labels: static texts.
#include "platform/ui/art.h"
#include "platform/ui/desk.h"

namespace ui {
namespace {

UINT AlignOf(const Window& label) {
  switch (label.style & SS_TYPEMASK) {
    case SS_CENTER:
      return TA_CENTER;
    case SS_RIGHT:
      return TA_RIGHT;
    default:
      return TA_LEFT;
  }
}

void DrawLines(const Window& label, HDC hdc) {
  const RECT client = label.Client();
  if ((label.style & SS_CENTERIMAGE) != 0) {
    return DrawLine(hdc, client, label.text, AlignOf(label));
  }
  TEXTMETRICA metrics{};
  GetTextMetricsA(hdc, &metrics);
  RECT line{client.left, client.top, client.right, client.top + metrics.tmHeight};
  std::string_view rest = label.text;
  while (!rest.empty() && line.top < client.bottom) {
    const std::size_t end = rest.find('\n');
    DrawLine(hdc, line, rest.substr(0, end), AlignOf(label));
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    line = Moved(line, {0, metrics.tmHeight});
  }
}

void Paint(const WindowRef& label) {
  PAINTSTRUCT paint;
  const HDC hdc = BeginPaint(label->Self(), &paint);
  const auto brush = reinterpret_cast<HBRUSH>(
      SendMessageA(label->parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(hdc),
                   reinterpret_cast<LPARAM>(label->Self())));
  const RECT client = label->Client();
  if (brush != nullptr) FillRect(hdc, &client, brush);
  if (!label->Enabled()) SetTextColor(hdc, GetSysColor(COLOR_GRAYTEXT));
  {
    const FontScope font(hdc, label->font);
    DrawLines(*label, hdc);
  }
  EndPaint(label->Self(), &paint);
}

}  // namespace

LRESULT LabelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const WindowRef label = WindowOf(window);
  if (!label) return 0;
  switch (message) {
    case WM_PAINT:
      Paint(label);
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_GETDLGCODE:
      return DLGC_STATIC;
    case WM_ENABLE:
      InvalidateRect(window, nullptr, TRUE);
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}

}  // namespace ui
