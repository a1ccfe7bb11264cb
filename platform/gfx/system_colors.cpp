#include <map>

#include "platform/gfx/objects.h"

namespace gfx {
namespace {

struct SystemColorEntry {
  int index;
  COLORREF color;
};

constexpr SystemColorEntry kSystemColors[] = {
    {COLOR_BACKGROUND, RGB(0x2F, 0x4F, 0x6F)},   {COLOR_WINDOW, RGB(0xFF, 0xFF, 0xFF)},
    {COLOR_WINDOWFRAME, RGB(0x60, 0x60, 0x60)},  {COLOR_WINDOWTEXT, RGB(0, 0, 0)},
    {COLOR_HIGHLIGHT, RGB(0x00, 0x60, 0xC0)},    {COLOR_HIGHLIGHTTEXT, RGB(0xFF, 0xFF, 0xFF)},
    {COLOR_BTNFACE, RGB(0xE8, 0xE8, 0xE8)},      {COLOR_BTNSHADOW, RGB(0xA0, 0xA0, 0xA0)},
    {COLOR_GRAYTEXT, RGB(0x70, 0x70, 0x70)},     {COLOR_BTNTEXT, RGB(0, 0, 0)},
    {COLOR_BTNHIGHLIGHT, RGB(0xFF, 0xFF, 0xFF)}, {COLOR_3DDKSHADOW, RGB(0x68, 0x68, 0x68)},
    {COLOR_3DLIGHT, RGB(0xF4, 0xF4, 0xF4)},
};

// Made at the first use and kept until the process ends.
const std::map<int, std::shared_ptr<BrushObject>>& SystemBrushes() {
  static const auto* const brushes = [] {
    auto* made = new std::map<int, std::shared_ptr<BrushObject>>;
    for (const SystemColorEntry& entry : kSystemColors) {
      auto brush = std::make_shared<BrushObject>(LOGBRUSH{BS_SOLID, entry.color, 0}, true);
      HandleTable::Instance().Add(brush);
      made->emplace(entry.index, std::move(brush));
    }
    return made;
  }();
  return *brushes;
}

std::shared_ptr<BrushObject> SystemBrush(UINT_PTR index) {
  if (index > COLOR_3DLIGHT) return nullptr;
  const auto found = SystemBrushes().find(static_cast<int>(index));
  return found == SystemBrushes().end() ? nullptr : found->second;
}

}  // namespace

std::optional<COLORREF> SystemColor(int index) {
  for (const SystemColorEntry& entry : kSystemColors) {
    if (entry.index == index) return entry.color;
  }
  return std::nullopt;
}

std::shared_ptr<BrushObject> BrushOf(HBRUSH brush) {
  if (auto found = Share<BrushObject>(brush)) return found;
  // For null the subtraction wraps to a value no index has.
  return SystemBrush(reinterpret_cast<UINT_PTR>(brush) - 1);
}

}  // namespace gfx

COLORREF GetSysColor(int index) { return gfx::SystemColor(index).value_or(0); }

HBRUSH GetSysColorBrush(int index) {
  if (index < 0) return nullptr;
  const auto brush = gfx::SystemBrush(static_cast<UINT_PTR>(index));
  return brush ? static_cast<HBRUSH>(brush->Handle()) : nullptr;
}
