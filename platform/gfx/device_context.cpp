#include "platform/gfx/device_context.h"

#include <algorithm>

#include "platform/gfx/driver/raster.h"

namespace gfx {
namespace {

constexpr LONG kDefaultFontHeight = 12;  // pixels at 96 dots per inch
constexpr int kMaxDotsPerInch = 100'000;

// A font size that does not vanish: 0 would mean "default" to the engines.
LONG FontLength(const Mapping& mapping, LONG logical) {
  const LONG device = mapping.LengthToDevice(logical);
  if (device != 0 || logical == 0) return device;
  return logical < 0 ? -1 : 1;
}

}  // namespace

COLORREF Plain(COLORREF color) { return color & 0x00FFFFFF; }

Brush Resolve(const BrushObject& brush) {
  return {brush.brush.lbStyle != BS_SOLID, Plain(brush.brush.lbColor)};
}

DeviceContext::DeviceContext(std::unique_ptr<Driver> driver)
    : Object(OBJ_DC, false), driver_(std::move(driver)) {
  UseStockObjects();
  state.mapping.dpi = std::clamp(driver_->DotsPerInch(), 1, kMaxDotsPerInch);
}

DeviceContext::DeviceContext(TextEngine& text, int dpi)
    : Object(OBJ_MEMDC, false),
      memoryText_(&text),
      ownBitmap_(std::make_shared<BitmapObject>(1, 1, true)) {
  UseStockObjects();
  state.mapping.dpi = dpi;
  HandleTable::Instance().Add(ownBitmap_);
  Select(ownBitmap_);
}

DeviceContext::~DeviceContext() {
  if (ownBitmap_) HandleTable::Instance().Remove(ownBitmap_->Handle());
}

void DeviceContext::UseStockObjects() {
  state.pen = StockPen(BLACK_PEN);
  state.brush = StockBrush(WHITE_BRUSH);
  state.font = StockFont();
}

void DeviceContext::DrawOn(const std::shared_ptr<BitmapHold>& hold) {
  if (hold) driver_ = MakeRasterDriver(hold->bitmap->surface, *memoryText_);
}

int DeviceContext::Save() {
  saved_.push_back(state);
  return static_cast<int>(saved_.size());
}

bool DeviceContext::Restore(int level) {
  const std::int64_t count = static_cast<std::int64_t>(saved_.size());
  const std::int64_t index = level < 0 ? count + level : std::int64_t{level} - 1;
  if (index < 0 || index >= count) return false;
  if (saved_[static_cast<std::size_t>(index)].bitmap != state.bitmap) {
    DrawOn(saved_[static_cast<std::size_t>(index)].bitmap);
  }
  state = std::move(saved_[static_cast<std::size_t>(index)]);
  saved_.erase(saved_.begin() + index, saved_.end());
  return true;
}

HGDIOBJ DeviceContext::Select(std::shared_ptr<PenObject> pen) {
  return std::exchange(state.pen, std::move(pen))->Handle();
}

HGDIOBJ DeviceContext::Select(std::shared_ptr<BrushObject> brush) {
  return std::exchange(state.brush, std::move(brush))->Handle();
}

HGDIOBJ DeviceContext::Select(std::shared_ptr<FontObject> font) {
  return std::exchange(state.font, std::move(font))->Handle();
}

HGDIOBJ DeviceContext::Select(const std::shared_ptr<BitmapObject>& bitmap) {
  if (memoryText_ == nullptr) return nullptr;
  std::shared_ptr<BitmapHold> hold = bitmap->hold.lock();
  if (hold && hold->context != this) return nullptr;
  if (!hold) hold = std::make_shared<BitmapHold>(BitmapHold{bitmap, this});
  if (hold != state.bitmap) DrawOn(hold);
  bitmap->hold = hold;
  const std::shared_ptr<BitmapHold> previous = std::exchange(state.bitmap, std::move(hold));
  return previous ? previous->bitmap->Handle() : nullptr;
}

HGDIOBJ DeviceContext::Selected(UINT kind) const {
  switch (kind) {
    case OBJ_PEN:
      return state.pen->Handle();
    case OBJ_BRUSH:
      return state.brush->Handle();
    case OBJ_FONT:
      return state.font->Handle();
    case OBJ_BITMAP:
      return state.bitmap ? state.bitmap->bitmap->Handle() : nullptr;
    default:
      return nullptr;
  }
}

Pen DeviceContext::CurrentPen() const {
  const LOGPEN& pen = state.pen->pen;
  const LONG width = std::max(pen.lopnWidth.x, LONG{0});
  return {static_cast<int>(pen.lopnStyle), state.mapping.LengthToDevice(width),
          Plain(pen.lopnColor), state.bkMode, Plain(state.bkColor)};
}

Brush DeviceContext::CurrentBrush() const { return Resolve(*state.brush); }

Font DeviceContext::CurrentFont() const {
  const LOGFONTA& font = state.font->font;
  Font resolved{font, FontLength(state.mapping, font.lfHeight),
                FontLength(state.mapping, font.lfWidth)};
  if (font.lfHeight == 0) {
    const std::int64_t height = ScaleRounded(kDefaultFontHeight, state.mapping.dpi, 96);
    resolved.height = std::max(Saturate(height), LONG{1});
  }
  return resolved;
}

const POINT* DeviceContext::MapPoints(const POINT* points, int count) {
  if (state.mapping.Identity()) return points;
  mapped_.resize(static_cast<std::size_t>(count));
  std::transform(points, points + count, mapped_.begin(),
                 [this](POINT point) { return state.mapping.ToDevice(point); });
  return mapped_.data();
}

int DeviceContext::SetClip(const RECT& box) {
  const RECT ordered = Ordered(box);
  state.clip = IsEmpty(ordered) ? RECT{0, 0, 0, 0} : ordered;
  return IsEmpty(ordered) ? NULLREGION : SIMPLEREGION;
}

}  // namespace gfx
