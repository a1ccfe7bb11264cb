// Pens, brushes, fonts, bitmaps and regions.
#pragma once

#include <memory>
#include <optional>

#include "platform/gfx/handle_table.h"
#include "platform/gfx/surface.h"

namespace gfx {

class DeviceContext;

struct PenObject final : Object {
  static bool Is(UINT kind) { return kind == OBJ_PEN; }
  explicit PenObject(const LOGPEN& logical, bool stock = false)
      : Object(OBJ_PEN, stock), pen(logical) {}
  const LOGPEN pen;
};

struct BrushObject final : Object {
  static bool Is(UINT kind) { return kind == OBJ_BRUSH; }
  explicit BrushObject(const LOGBRUSH& logical, bool stock = false)
      : Object(OBJ_BRUSH, stock), brush(logical) {}
  const LOGBRUSH brush;
};

struct FontObject final : Object {
  static bool Is(UINT kind) { return kind == OBJ_FONT; }
  explicit FontObject(const LOGFONTA& logical, bool stock = false)
      : Object(OBJ_FONT, stock), font(logical) {}
  const LOGFONTA font;
};

struct RegionObject final : Object {
  static bool Is(UINT kind) { return kind == OBJ_REGION; }
  explicit RegionObject(const RECT& ordered) : Object(OBJ_REGION, false), box(ordered) {}
  const RECT box;  // device units, edges in order
};

struct BitmapHold;

struct BitmapObject final : Object {
  static bool Is(UINT kind) { return kind == OBJ_BITMAP; }
  BitmapObject(int width, int height, bool stock = false)
      : Object(OBJ_BITMAP, stock), surface(width, height, RGB(0, 0, 0)) {}
  Surface surface;
  std::weak_ptr<BitmapHold> hold;  // set while a state of some context has the bitmap selected
};

// A bitmap's stay in one context, shared by all states (current and saved) that have it selected.
struct BitmapHold {
  std::shared_ptr<BitmapObject> bitmap;
  const DeviceContext* context;
};

// GetStockObject's objects for the kinds a context starts with.
std::shared_ptr<PenObject> StockPen(int index);
std::shared_ptr<BrushObject> StockBrush(int index);
std::shared_ptr<FontObject> StockFont();

// The brush FillRect means: a handle's, or the system colour's of an index + 1. Null: neither.
std::shared_ptr<BrushObject> BrushOf(HBRUSH brush);

// The colour of a COLOR_ index that exists.
std::optional<COLORREF> SystemColor(int index);

}  // namespace gfx
