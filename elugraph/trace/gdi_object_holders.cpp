#include "elugraph/trace/gdi_object_holders.h"

GdiObjectHolder::~GdiObjectHolder() {
  if (object == nullptr) return;
  if (hdc != nullptr && GetCurrentObject(hdc, GetObjectType(object)) == object) {
    SelectObject(hdc, previous);
  }
  DeleteObject(object);
}

GdiObjectSelector::GdiObjectSelector(HDC target, HGDIOBJ owned)
    : GdiObjectHolder(owned != nullptr ? target : nullptr, owned, nullptr) {
  if (hdc != nullptr) previous = SelectObject(hdc, object);
}

GdiObjectSlot::GdiObjectSlot(HDC target, UINT type)
    : GdiObjectHolder(target, nullptr,
                      target != nullptr ? GetCurrentObject(target, type) : nullptr) {}

void GdiObjectSlot::Set(HGDIOBJ replacement) {
  if (replacement == nullptr) return;
  if (object != nullptr) {
    DeleteObject(replacement);
    return;
  }
  object = replacement;
  if (hdc == nullptr) return;
  const UINT type = GetObjectType(replacement);
  if (type == 0 || type != GetObjectType(previous)) {
    hdc = nullptr;
  } else {
    SelectObject(hdc, object);
  }
}
