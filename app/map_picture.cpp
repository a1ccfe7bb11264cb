#include "app/map_picture.h"

#include "elugraph/chrom2d/chrom2d_base.h"
#include "platform/gfx/text_engine.h"
#include "platform/ui/headless.h"
#include "platform/ui/resources.h"

namespace app {
namespace {

constexpr unsigned kPictureDialog = 1;

HMODULE PictureModule(int widthPx, int heightPx) {
  ui::DialogTemplate form;
  form.style = WS_POPUP;
  form.width = widthPx;
  form.height = heightPx;
  const HMODULE module = ui::RegisterModule("map pictures");
  ui::AddDialog(module, MAKEINTRESOURCEA(kPictureDialog), form);
  return module;
}

class PictureWindow : public TChrom2DBase {
 public:
  PictureWindow(HMODULE module, chromatogram& run)
      : TChrom2DBase(nullptr, ResIdCheck(kPictureDialog, module, RT_DIALOG), &run, nullptr) {
    _AddRef();  // it lives on the stack
  }
  bool ViewsCalc(HDC hdc, const RECT& rect) override {
    return hasRoom = TChrom2DBase::ViewsCalc(hdc, rect);
  }

  bool hasRoom = false;
};

}  // namespace

bool DrawMap(chromatogram& run, int widthPx, int heightPx, gfx::Surface& surface,
             std::string& error) {
  ui::Headless screen(gfx::SystemText(), {widthPx, heightPx});
  PictureWindow window(PictureModule(widthPx, heightPx), run);
  if (window.Create(0) == nullptr) {
    error = "the map cannot be drawn";
    return false;
  }
  surface = screen.Picture(window.hwnd);
  if (!window.hasRoom) error = "the picture has no room for a map";
  return window.hasRoom;
}

}  // namespace app
