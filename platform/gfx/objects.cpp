#include "platform/gfx/objects.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "platform/gfx/context.h"
#include "platform/gfx/device_context.h"

namespace gfx {
namespace {

// Made at the first use and kept until the process ends: unload work may still draw.
class StockObjects {
 public:
  StockObjects() {
    for (const auto& [index, color] :
         {std::pair{WHITE_BRUSH, RGB(255, 255, 255)}, {BLACK_BRUSH, RGB(0, 0, 0)}}) {
      Add(index, std::make_shared<BrushObject>(LOGBRUSH{BS_SOLID, color, 0}, true));
    }
    Add(NULL_BRUSH, std::make_shared<BrushObject>(LOGBRUSH{BS_NULL, 0, 0}, true));
    Add(WHITE_PEN, Pen(PS_SOLID, RGB(255, 255, 255)));
    Add(BLACK_PEN, Pen(PS_SOLID, RGB(0, 0, 0)));
    Add(NULL_PEN, Pen(PS_NULL, RGB(0, 0, 0)));
    LOGFONTA font{};
    font.lfHeight = 16;
    font.lfWeight = FW_BOLD;
    font.lfCharSet = DEFAULT_CHARSET;
    std::strcpy(font.lfFaceName, "System");
    Add(SYSTEM_FONT, std::make_shared<FontObject>(font, true));
  }

  std::shared_ptr<Object> Get(int index) const {
    const auto found = objects_.find(index);
    return found == objects_.end() ? nullptr : found->second;
  }

 private:
  static std::shared_ptr<Object> Pen(int style, COLORREF color) {
    return std::make_shared<PenObject>(LOGPEN{static_cast<UINT>(style), {0, 0}, color}, true);
  }
  void Add(int index, std::shared_ptr<Object> object) {
    HandleTable::Instance().Add(object);
    objects_.emplace(index, std::move(object));
  }
  std::map<int, std::shared_ptr<Object>> objects_;
};

const StockObjects& Stock() {
  static const StockObjects* const objects = new StockObjects;
  return *objects;
}

// Copies a structure; `partial`: as much of it as fits instead of all or nothing.
template <class T>
int CopyOut(const T& structure, int size, void* buffer, bool partial) {
  if (buffer == nullptr) return static_cast<int>(sizeof(T));
  if (size <= 0 || (!partial && size < static_cast<int>(sizeof(T)))) return 0;
  const int bytes = std::min(size, static_cast<int>(sizeof(T)));
  std::memcpy(buffer, &structure, static_cast<std::size_t>(bytes));
  return bytes;
}

BITMAP Describe(const Surface& surface) {
  BITMAP bitmap{};
  bitmap.bmWidth = surface.Width();
  bitmap.bmHeight = surface.Height();
  bitmap.bmWidthBytes = Saturate(std::int64_t{surface.Width()} * 4);
  bitmap.bmPlanes = 1;
  bitmap.bmBitsPixel = 32;
  return bitmap;
}

}  // namespace

std::shared_ptr<PenObject> StockPen(int index) {
  return std::static_pointer_cast<PenObject>(Stock().Get(index));
}

std::shared_ptr<BrushObject> StockBrush(int index) {
  return std::static_pointer_cast<BrushObject>(Stock().Get(index));
}

std::shared_ptr<FontObject> StockFont() {
  return std::static_pointer_cast<FontObject>(Stock().Get(SYSTEM_FONT));
}

std::size_t LiveObjects() { return Object::Live(); }

}  // namespace gfx

HPEN CreatePen(int style, int width, COLORREF color) {
  const bool known = style >= PS_SOLID && style <= PS_INSIDEFRAME;
  const LOGPEN pen{static_cast<UINT>(known ? style : PS_SOLID), {width, 0}, color};
  return static_cast<HPEN>(gfx::MakeHandle<gfx::PenObject>(pen));
}

HPEN CreatePenIndirect(const LOGPEN* pen) {
  if (pen == nullptr) return nullptr;
  return CreatePen(static_cast<int>(pen->lopnStyle), pen->lopnWidth.x, pen->lopnColor);
}

HBRUSH CreateSolidBrush(COLORREF color) {
  return static_cast<HBRUSH>(gfx::MakeHandle<gfx::BrushObject>(LOGBRUSH{BS_SOLID, color, 0}));
}

HBRUSH CreateBrushIndirect(const LOGBRUSH* brush) {
  if (brush == nullptr || (brush->lbStyle != BS_SOLID && brush->lbStyle != BS_NULL)) return nullptr;
  return static_cast<HBRUSH>(gfx::MakeHandle<gfx::BrushObject>(*brush));
}

HFONT CreateFontIndirectA(const LOGFONTA* font) {
  if (font == nullptr) return nullptr;
  LOGFONTA copy = *font;
  copy.lfFaceName[LF_FACESIZE - 1] = '\0';
  return static_cast<HFONT>(gfx::MakeHandle<gfx::FontObject>(copy));
}

HBITMAP CreateCompatibleBitmap(HDC hdc, int width, int height) {
  if (gfx::Find<gfx::DeviceContext>(hdc) == nullptr || width <= 0 || height <= 0) return nullptr;
  if (std::int64_t{width} * height > gfx::Surface::kMaxPixels) return nullptr;
  return static_cast<HBITMAP>(gfx::MakeHandle<gfx::BitmapObject>(width, height));
}

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
  const RECT box = gfx::Ordered({left, top, right, bottom});
  return static_cast<HRGN>(gfx::MakeHandle<gfx::RegionObject>(box));
}

HRGN CreateRectRgnIndirect(const RECT* rect) {
  if (rect == nullptr) return nullptr;
  return CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
}

HGDIOBJ GetStockObject(int index) {
  const std::shared_ptr<gfx::Object> object = gfx::Stock().Get(index);
  return object ? object->Handle() : nullptr;
}

BOOL DeleteObject(HGDIOBJ object) {
  const gfx::Object* found = gfx::HandleTable::Instance().Find(object).get();
  if (found == nullptr || gfx::DeviceContext::Is(found->Kind())) return FALSE;
  if (!found->Stock()) gfx::HandleTable::Instance().Remove(object);
  return TRUE;
}

UINT GetObjectType(HGDIOBJ object) {
  const gfx::Object* found = gfx::HandleTable::Instance().Find(object).get();
  return found == nullptr ? 0 : found->Kind();
}

int GetObjectA(HGDIOBJ object, int size, void* buffer) {
  using namespace gfx;
  if (const auto* pen = Find<PenObject>(object)) return CopyOut(pen->pen, size, buffer, false);
  if (const auto* brush = Find<BrushObject>(object)) {
    return CopyOut(brush->brush, size, buffer, false);
  }
  if (const auto* font = Find<FontObject>(object)) return CopyOut(font->font, size, buffer, true);
  if (const auto* bitmap = Find<BitmapObject>(object)) {
    return CopyOut(Describe(bitmap->surface), size, buffer, false);
  }
  return 0;
}
