// The state of device contexts: stack, selection, mapping, colours and modes.
#include "platform/gfx/device_context.h"

namespace {

using gfx::ContextOf;
using gfx::ContextState;

// Replaces a field of the context's state; `failure` where there is no such context.
template <class T>
T Exchange(HDC hdc, T ContextState::*field, T value, T failure) {
  gfx::DeviceContext* context = ContextOf(hdc);
  return context == nullptr ? failure : std::exchange(context->state.*field, value);
}

template <class T>
T Get(HDC hdc, T ContextState::*field, T failure) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  return context == nullptr ? failure : context->state.*field;
}

template <class Map>
BOOL MapInPlace(HDC hdc, POINT* points, int count, Map map) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || count < 0 || (points == nullptr && count > 0)) return FALSE;
  for (int i = 0; i < count; ++i) points[i] = map(context->state.mapping, points[i]);
  return TRUE;
}

// A region's complexity is the answer of selecting it, as a handle.
HGDIOBJ Complexity(int value) { return reinterpret_cast<HGDIOBJ>(static_cast<UINT_PTR>(value)); }

}  // namespace

int SaveDC(HDC hdc) {
  gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return 0;
  return gfx::Guarded(0, [context] { return context->Save(); });
}

BOOL RestoreDC(HDC hdc, int level) {
  gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return FALSE;
  return gfx::Guarded(FALSE, [=] { return context->Restore(level) ? TRUE : FALSE; });
}

int SetMapMode(HDC hdc, int mode) {
  gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || (mode != MM_TEXT && mode != MM_TWIPS)) return 0;
  return std::exchange(context->state.mapping.mode, mode);
}

int GetMapMode(HDC hdc) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  return context == nullptr ? 0 : context->state.mapping.mode;
}

BOOL SetViewportOrgEx(HDC hdc, int x, int y, POINT* previous) {
  gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return FALSE;
  const POINT old = std::exchange(context->state.mapping.origin, POINT{x, y});
  if (previous != nullptr) *previous = old;
  return TRUE;
}

BOOL GetViewportOrgEx(HDC hdc, POINT* origin) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || origin == nullptr) return FALSE;
  *origin = context->state.mapping.origin;
  return TRUE;
}

BOOL LPtoDP(HDC hdc, POINT* points, int count) {
  return MapInPlace(hdc, points, count, [](const gfx::Mapping& mapping, POINT point) {
    return mapping.ToDevice(point);
  });
}

BOOL DPtoLP(HDC hdc, POINT* points, int count) {
  return MapInPlace(hdc, points, count, [](const gfx::Mapping& mapping, POINT point) {
    return mapping.ToLogical(point);
  });
}

int SetBkMode(HDC hdc, int mode) {
  if (mode != TRANSPARENT && mode != OPAQUE) return 0;
  return Exchange(hdc, &ContextState::bkMode, mode, 0);
}

COLORREF SetBkColor(HDC hdc, COLORREF color) {
  return Exchange(hdc, &ContextState::bkColor, color, CLR_INVALID);
}

COLORREF GetBkColor(HDC hdc) { return Get(hdc, &ContextState::bkColor, CLR_INVALID); }

COLORREF SetTextColor(HDC hdc, COLORREF color) {
  return Exchange(hdc, &ContextState::textColor, color, CLR_INVALID);
}

COLORREF GetTextColor(HDC hdc) { return Get(hdc, &ContextState::textColor, CLR_INVALID); }

UINT SetTextAlign(HDC hdc, UINT align) {
  return Exchange(hdc, &ContextState::align, align, GDI_ERROR);
}

UINT GetTextAlign(HDC hdc) { return Get(hdc, &ContextState::align, GDI_ERROR); }

int GetDeviceCaps(HDC hdc, int index) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return 0;
  switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY:
      return context->DotsPerInch();
    case HORZRES:
      return context->Target().Extent().cx;
    case VERTRES:
      return context->Target().Extent().cy;
    default:
      return 0;
  }
}

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object) {
  using namespace gfx;
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr) return nullptr;
  if (auto pen = Share<PenObject>(object)) return context->Select(std::move(pen));
  if (auto brush = Share<BrushObject>(object)) return context->Select(std::move(brush));
  if (auto font = Share<FontObject>(object)) return context->Select(std::move(font));
  if (auto bitmap = Share<BitmapObject>(object)) {
    return Guarded<HGDIOBJ>(nullptr, [&] { return context->Select(bitmap); });
  }
  if (const auto* region = Find<RegionObject>(object)) {
    return Complexity(context->SetClip(region->box));
  }
  return nullptr;
}

HGDIOBJ GetCurrentObject(HDC hdc, UINT type) {
  const gfx::DeviceContext* context = ContextOf(hdc);
  return context == nullptr ? nullptr : context->Selected(type);
}
