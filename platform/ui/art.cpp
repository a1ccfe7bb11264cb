#include "platform/ui/art.h"

#include <algorithm>
#include <vector>

#include "platform/gfx/surface.h"

namespace ui {
namespace {

// Positions inside a pixel are counted in eighths; the 4 × 4 sample points lie at odd eighths.
constexpr int kEighths = 8;

struct RoundBox {
  int left, top, right, bottom, radius;  // eighths of a pixel

  bool Holds(int x, int y) const {
    if (x < left || x >= right || y < top || y >= bottom) return false;
    const int dx = std::max({left + radius - x, x - (right - radius), 0});
    const int dy = std::max({top + radius - y, y - (bottom - radius), 0});
    return dx * dx + dy * dy <= radius * radius;
  }
  // 0 … 16 of the pixel's sample points.
  int Coverage(int column, int row) const {
    int held = 0;
    for (int y = 1; y < kEighths; y += 2) {
      for (int x = 1; x < kEighths; x += 2) {
        held += Holds(column * kEighths + x, row * kEighths + y) ? 1 : 0;
      }
    }
    return held;
  }
};

RoundBox Inset(int width, int height, int radius, int inset) {
  return {inset * kEighths, inset * kEighths, (width - inset) * kEighths,
          (height - inset) * kEighths, std::max(0, radius - inset) * kEighths};
}

}  // namespace

COLORREF Mix(COLORREF a, COLORREF b, int share) {
  const auto mix = [share](int from, int to) {
    return static_cast<BYTE>((from * (256 - share) + to * share + 128) / 256);
  };
  return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)),
             mix(GetBValue(a), GetBValue(b)));
}

void DrawBox(HDC hdc, const RECT& box, const BoxLook& look) {
  const int width = box.right - box.left, height = box.bottom - box.top;
  if (width <= 0 || height <= 0) return;
  const int radius = std::min({look.radius, width / 2, height / 2});
  const RoundBox outer = Inset(width, height, radius, 0);
  const RoundBox inner = Inset(width, height, radius, look.border);
  const int margin = std::max(radius, look.border);
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(width) * height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const bool deep =
          (x >= margin && x < width - margin && y >= look.border && y < height - look.border) ||
          (y >= margin && y < height - margin && x >= look.border && x < width - look.border);
      if (deep) {
        pixels.push_back(gfx::PixelOf(look.face));
        continue;
      }
      const COLORREF edge = Mix(look.around, look.edge, outer.Coverage(x, y) * 16);
      pixels.push_back(gfx::PixelOf(Mix(edge, look.face, inner.Coverage(x, y) * 16)));
    }
  }
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  SetDIBitsToDevice(hdc, box.left, box.top, static_cast<DWORD>(width), static_cast<DWORD>(height),
                    0, 0, 0, static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS);
}

void DrawLine(HDC hdc, const RECT& box, std::string_view text, UINT align) {
  const int length = static_cast<int>(text.size());
  SIZE extent{0, 0};
  GetTextExtentPoint32A(hdc, text.data(), length, &extent);
  const LONG x = align == TA_CENTER  ? (box.left + box.right - extent.cx) / 2
                 : align == TA_RIGHT ? box.right - extent.cx
                                     : box.left;
  const int mode = SetBkMode(hdc, TRANSPARENT);
  const UINT before = SetTextAlign(hdc, TA_LEFT | TA_TOP);
  TextOutA(hdc, x, (box.top + box.bottom - extent.cy) / 2, text.data(), length);
  SetTextAlign(hdc, before);
  SetBkMode(hdc, mode);
}

}  // namespace ui
