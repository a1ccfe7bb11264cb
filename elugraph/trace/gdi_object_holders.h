// Scoped owners of pens, brushes and fonts that are selected into a device context.
#pragma once

#include "platform/gfx/gdi.h"

// Common end of both holders: puts `previous` back if `object` is still the selected one, and
// deletes `object` in any case.
class GdiObjectHolder {
 public:
  GdiObjectHolder(const GdiObjectHolder&) = delete;
  GdiObjectHolder& operator=(const GdiObjectHolder&) = delete;

 protected:
  GdiObjectHolder(HDC hdc_, HGDIOBJ object_, HGDIOBJ previous_)
      : hdc(hdc_), object(object_), previous(previous_) {}
  ~GdiObjectHolder();

  HDC hdc;
  HGDIOBJ object;    // owned
  HGDIOBJ previous;  // to be selected again; not owned
};

// Owns `object` and keeps it selected for its own lifetime. A null object: nothing happens.
class GdiObjectSelector : public GdiObjectHolder {
 public:
  GdiObjectSelector(HDC hdc, HGDIOBJ object);
};

// Remembers the current object of one type (OBJ_PEN, OBJ_BRUSH, OBJ_FONT) and takes at most one
// replacement for it.
class GdiObjectSlot : public GdiObjectHolder {
 public:
  GdiObjectSlot(HDC hdc, UINT type);
  // Takes over `replacement` and selects it. Null is ignored; a second replacement is deleted at
  // once; one of another type is owned but never selected.
  void Set(HGDIOBJ replacement);
};
