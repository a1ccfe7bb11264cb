// A device context: a driver and the state that drawing calls resolve against.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/gfx/driver.h"
#include "platform/gfx/mapping.h"
#include "platform/gfx/objects.h"
#include "platform/gfx/text_engine.h"

namespace gfx {

// What SaveDC keeps. Colours as the program gave them; `position` in logical units.
struct ContextState {
  std::shared_ptr<PenObject> pen;
  std::shared_ptr<BrushObject> brush;
  std::shared_ptr<FontObject> font;
  std::shared_ptr<BitmapHold> bitmap;  // memory contexts only
  COLORREF textColor = RGB(0, 0, 0);
  COLORREF bkColor = RGB(255, 255, 255);
  int bkMode = OPAQUE;
  UINT align = TA_LEFT | TA_TOP;
  Mapping mapping;
  std::optional<RECT> clip;  // device pixels; an empty clip is all zero
  POINT position{0, 0};
};

class DeviceContext final : public Object {
 public:
  static bool Is(UINT kind) { return kind == OBJ_DC || kind == OBJ_MEMDC; }

  explicit DeviceContext(std::unique_ptr<Driver> driver);
  // A memory context that measures with `text`, with its own 1 × 1 bitmap selected. Throws where
  // memory runs out.
  DeviceContext(TextEngine& text, int dpi);
  ~DeviceContext() override;

  Driver& Target() const { return *driver_; }
  int DotsPerInch() const { return state.mapping.dpi; }

  // The new level, from 1. Throws where memory runs out.
  int Save();
  // As RestoreDC; false for a level that does not exist.
  bool Restore(int level);

  // Each answers the handle selected before; for a bitmap null where it may not be selected.
  HGDIOBJ Select(std::shared_ptr<PenObject> pen);
  HGDIOBJ Select(std::shared_ptr<BrushObject> brush);
  HGDIOBJ Select(std::shared_ptr<FontObject> font);
  HGDIOBJ Select(const std::shared_ptr<BitmapObject>& bitmap);
  // The handle of the selected object of an OBJ_ kind; null for kinds without one.
  HGDIOBJ Selected(UINT kind) const;

  // Resolved for the driver.
  Pen CurrentPen() const;
  Brush CurrentBrush() const;
  Font CurrentFont() const;
  Clip CurrentClip() const { return state.clip ? &*state.clip : nullptr; }
  // Device points, valid until the next call; `points` itself where mapping changes nothing.
  const POINT* MapPoints(const POINT* points, int count);
  // Makes `box` (device pixels, any order) the clip; returns its complexity.
  int SetClip(const RECT& box);

  ContextState state;

 private:
  void UseStockObjects();
  void DrawOn(const std::shared_ptr<BitmapHold>& hold);

  std::unique_ptr<Driver> driver_;
  TextEngine* memoryText_ = nullptr;
  std::shared_ptr<BitmapObject> ownBitmap_;
  std::vector<ContextState> saved_;
  std::vector<POINT> mapped_;
};

// Colours without the bits above 24.
COLORREF Plain(COLORREF color);
Brush Resolve(const BrushObject& brush);

inline DeviceContext* ContextOf(HDC hdc) { return Find<DeviceContext>(hdc); }

}  // namespace gfx
