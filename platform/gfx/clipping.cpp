#include "platform/gfx/device_context.h"

using gfx::ContextOf;

int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom) {
  gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return ERROR;
  const RECT box = context->state.mapping.ToDevice(RECT{left, top, right, bottom});
  return context->SetClip(context->state.clip ? gfx::Intersection(*context->state.clip, box) : box);
}

int SelectClipRgn(HDC hdc, HRGN region) {
  gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return ERROR;
  if (region == nullptr) {
    context->state.clip.reset();
    return SIMPLEREGION;
  }
  const auto* found = gfx::Find<gfx::RegionObject>(region);
  return found == nullptr ? ERROR : context->SetClip(found->box);
}

int GetClipBox(HDC hdc, RECT* rect) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || rect == nullptr) return ERROR;
  const SIZE extent = context->Target().Extent();
  RECT box{0, 0, extent.cx, extent.cy};
  if (context->state.clip) box = gfx::Intersection(box, *context->state.clip);
  if (gfx::IsEmpty(box)) {
    *rect = {0, 0, 0, 0};
    return NULLREGION;
  }
  const POINT corner = context->state.mapping.ToLogical(POINT{box.left, box.top});
  const POINT opposite = context->state.mapping.ToLogical(POINT{box.right, box.bottom});
  *rect = {corner.x, corner.y, opposite.x, opposite.y};
  return SIMPLEREGION;
}
