// Lines, polygons and boxes.
#include "platform/gfx/device_context.h"

using gfx::ContextOf;
using gfx::DeviceContext;

namespace {

// Calls `draw(context, points)` with device points. False where a call may not draw.
template <class Draw>
BOOL DrawPoints(HDC hdc, const POINT* points, int count, Draw draw) {
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || points == nullptr || count < 2) return FALSE;
  return gfx::Guarded(FALSE, [&] {
    draw(*context, context->MapPoints(points, count));
    return context->Target().Ok() ? TRUE : FALSE;
  });
}

}  // namespace

BOOL MoveToEx(HDC hdc, int x, int y, POINT* previous) {
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return FALSE;
  const POINT old = std::exchange(context->state.position, POINT{x, y});
  if (previous != nullptr) *previous = old;
  return TRUE;
}

BOOL LineTo(HDC hdc, int x, int y) {
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return FALSE;
  const POINT from = std::exchange(context->state.position, POINT{x, y});
  const gfx::Mapping& mapping = context->state.mapping;
  context->Target().Line(mapping.ToDevice(from), mapping.ToDevice(POINT{x, y}),
                         context->CurrentPen(), context->CurrentClip());
  return context->Target().Ok() ? TRUE : FALSE;
}

BOOL Polyline(HDC hdc, const POINT* points, int count) {
  return DrawPoints(hdc, points, count, [count](DeviceContext& context, const POINT* mapped) {
    context.Target().Polyline(mapped, count, context.CurrentPen(), context.CurrentClip());
  });
}

BOOL Polygon(HDC hdc, const POINT* points, int count) {
  return DrawPoints(hdc, points, count, [count](DeviceContext& context, const POINT* mapped) {
    context.Target().Polygon(mapped, count, context.CurrentPen(), context.CurrentBrush(),
                             context.CurrentClip());
  });
}

BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom) {
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return FALSE;
  context->Target().Rectangle(context->state.mapping.ToDevice(RECT{left, top, right, bottom}),
                              context->CurrentPen(), context->CurrentBrush(),
                              context->CurrentClip());
  return context->Target().Ok() ? TRUE : FALSE;
}

BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom) {
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return FALSE;
  context->Target().Ellipse(context->state.mapping.ToDevice(RECT{left, top, right, bottom}),
                            context->CurrentPen(), context->CurrentBrush(), context->CurrentClip());
  return context->Target().Ok() ? TRUE : FALSE;
}

int FillRect(HDC hdc, const RECT* rect, HBRUSH brush) {
  DeviceContext* context = ContextOf(hdc);
  const std::shared_ptr<gfx::BrushObject> found = gfx::BrushOf(brush);
  if (context == nullptr || rect == nullptr || !found) return FALSE;
  context->Target().Fill(context->state.mapping.ToDevice(*rect), gfx::Resolve(*found),
                         context->CurrentClip());
  return context->Target().Ok() ? TRUE : FALSE;
}
