// The paint cache.
#include <algorithm>
#include <limits>

#include "elugraph/host/controls.h"
#include "platform/ui/resources.h"

namespace {

constexpr LONG kFar = std::numeric_limits<LONG>::max();
constexpr RECT kAll{0, 0, kFar, kFar};

RECT Enclosing(const RECT& a, const RECT& b) {
  if (IsRectEmpty(a)) return b;
  if (IsRectEmpty(b)) return a;
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

// The client area without the strip that belongs to the controls.
RECT PictureArea(HWND window) {
  RECT area{0, 0, 0, 0};
  GetClientRect(window, &area);
  if (const ui::DialogTemplate* form = ui::TemplateOf(window)) {
    area.top = std::min(area.bottom, ui::TemplateToPixels(window, {0, form->topStrip}).cy);
  }
  return area;
}

// A memory context that has a bitmap selected while it lives.
class BitmapContext {
 public:
  BitmapContext(HDC like, HBITMAP bitmap)
      : hdc_(CreateCompatibleDC(like)), before_(SelectObject(hdc_, bitmap)) {}
  BitmapContext(const BitmapContext&) = delete;
  BitmapContext& operator=(const BitmapContext&) = delete;
  ~BitmapContext() {
    SelectObject(hdc_, before_);
    DeleteDC(hdc_);
  }
  HDC Get() const { return hdc_; }

 private:
  HDC hdc_;
  HGDIOBJ before_;
};

}  // namespace

LastPaint::LastPaint() : invalid_(kAll) {}

LastPaint::~LastPaint() { EraseBMP(); }

bool LastPaint::ExistCursor() { return false; }

void LastPaint::DrawCursor(HDC) {}

bool LastPaint::MsgFilter(LRESULT& result, HWND window, UINT message, WPARAM, LPARAM) {
  if (message == WM_NCDESTROY) EraseBMP();
  if (message != WM_PAINT) return false;
  PAINTSTRUCT paint;
  const HDC hdc = BeginPaint(window, &paint);
  const RECT picture = PictureArea(window);
  const RECT strip{picture.left, 0, picture.right, picture.top};
  FillRect(hdc, &strip, GetSysColorBrush(COLOR_3DFACE));
  if (!IsRectEmpty(picture)) {
    if (Update(window, hdc, picture)) {
      const BitmapContext cached(hdc, cache_);
      BitBlt(hdc, picture.left, picture.top, picture.right - picture.left,
             picture.bottom - picture.top, cached.Get(), picture.left, picture.top, SRCCOPY);
    } else {
      PaintImage(window, hdc, picture);
    }
    if (ExistCursor()) DrawCursor(hdc);
  }
  EndPaint(window, &paint);
  result = 0;
  return true;
}

// Brings the cache up to date; false where there is no memory for it. The cache covers the whole
// client area, so that what paints into it sees client coordinates.
bool LastPaint::Update(HWND window, HDC hdc, const RECT& picture) {
  const bool same = extent_.left == picture.left && extent_.top == picture.top &&
                    extent_.right == picture.right && extent_.bottom == picture.bottom;
  if (cache_ == nullptr || !same) {
    EraseBMP();
    cache_ = CreateCompatibleBitmap(hdc, picture.right, picture.bottom);
    if (cache_ == nullptr) return false;
    extent_ = picture;
  }
  if (IsRectEmpty(invalid_)) return true;
  const RECT part = invalid_;
  // What PaintImage makes invalid is for the next time.
  invalid_ = {0, 0, 0, 0};
  const BitmapContext context(hdc, cache_);
  IntersectClipRect(context.Get(), std::max(part.left, picture.left),
                    std::max(part.top, picture.top), std::min(part.right, picture.right),
                    std::min(part.bottom, picture.bottom));
  PaintImage(window, context.Get(), picture);
  // Unless the cache was dropped meanwhile.
  return cache_ != nullptr;
}

void LastPaint::Invalidate(const RECT* part) {
  invalid_ = Enclosing(invalid_, part != nullptr ? *part : kAll);
}

void LastPaint::EraseBMP() {
  if (cache_ != nullptr) DeleteObject(cache_);
  cache_ = nullptr;
  extent_ = {0, 0, 0, 0};
  invalid_ = kAll;
}
