// Making and ending device contexts.
#include <strings.h>

#include "platform/gfx/context.h"
#include "platform/gfx/device_context.h"
#include "platform/gfx/driver/journal.h"
#include "platform/gfx/driver/null.h"
#include "platform/gfx/driver/raster.h"

namespace gfx {
namespace {

TextEngine* displayText = nullptr;  // null: SystemText()

TextEngine& DisplayText() { return displayText != nullptr ? *displayText : SystemText(); }

// The screen as a reference: it measures and draws nothing.
class DisplayDriver final : public NullDriver {
 public:
  SIZE Extent() const override { return {1920, 1080}; }
  TextEngine& Text() override { return DisplayText(); }
};

// Cells have no glyphs: bitmaps beside a journal get the font that draws the same everywhere.
TextEngine& MemoryText(DeviceContext* partner) {
  TextEngine& text = partner != nullptr ? partner->Target().Text() : DisplayText();
  return &text == &CellText() ? BuiltinText() : text;
}

template <class Made, class... Arguments>
HDC MakeContext(Arguments&&... arguments) {
  return Guarded<HDC>(nullptr, [&] {
    return CreateContext(std::make_unique<Made>(std::forward<Arguments>(arguments)...));
  });
}

}  // namespace

HDC CreateContext(std::unique_ptr<Driver> driver) {
  if (!driver) return nullptr;
  return static_cast<HDC>(MakeHandle<DeviceContext>(std::move(driver)));
}

Driver* DriverOf(HDC hdc) {
  DeviceContext* context = ContextOf(hdc);
  return context == nullptr ? nullptr : &context->Target();
}

HDC CreateRasterContext(Surface& surface, TextEngine& text) {
  return Guarded<HDC>(nullptr, [&] { return CreateContext(MakeRasterDriver(surface, text)); });
}

HDC CreateJournalContext(std::string& journal) { return MakeContext<JournalDriver>(journal); }

HDC CreateNullContext() { return MakeContext<NullDriver>(); }

TextEngine* SetDisplayText(TextEngine* text) { return std::exchange(displayText, text); }

}  // namespace gfx

HDC CreateDCA(const char* driver, const char*, const char*, const void*) {
  if (driver == nullptr || strcasecmp(driver, "DISPLAY") != 0) return nullptr;
  return gfx::MakeContext<gfx::DisplayDriver>();
}

HDC CreateCompatibleDC(HDC hdc) {
  gfx::DeviceContext* partner = gfx::ContextOf(hdc);
  if (hdc != nullptr && partner == nullptr) return nullptr;
  const int dpi = partner != nullptr ? partner->DotsPerInch() : 96;
  return static_cast<HDC>(gfx::MakeHandle<gfx::DeviceContext>(gfx::MemoryText(partner), dpi));
}

BOOL DeleteDC(HDC hdc) {
  if (gfx::ContextOf(hdc) == nullptr) return FALSE;
  gfx::HandleTable::Instance().Remove(hdc);
  return TRUE;
}
