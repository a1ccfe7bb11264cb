#include "elugraph/chromview/chrom_render.h"

#include <cstddef>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct TChromRender::LayoutCheck {
  static constexpr std::size_t kPointer = sizeof(void*);
  static_assert(offsetof(TChromRender, chrom) == kPointer);
  static_assert(offsetof(TChromRender, font) == 2 * kPointer);
  static_assert(offsetof(TChromRender, charWidth) == 3 * kPointer);
  static_assert(offsetof(TChromRender, labelFont) == 3 * kPointer + 8);
  static_assert(offsetof(TChromRender, labelCharWidth) == 4 * kPointer + 8);
  static_assert(offsetof(TChromRender, markMode) == 4 * kPointer + 16);
  static_assert(offsetof(TChromRender, rightReserve) == 4 * kPointer + 28);
  static_assert(offsetof(TChromRender, selectedPeak) == 4 * kPointer + 32);
  static_assert(offsetof(TChromRender, selectedPeakEnd) == 4 * kPointer + 37);
  static_assert(offsetof(TChromRender, auxPosition) == 4 * kPointer + 41);
  static_assert(sizeof(TChromRender) == 4 * kPointer + 45);
  static_assert(sizeof(TChromRender2) == sizeof(TChromRender));
};
#pragma GCC diagnostic pop

TChromRender::TChromRender(chromatogram* chrom_)
    : chrom(chrom_),
      font(nullptr),
      charWidth(0),
      charHeight(0),
      labelFont(nullptr),
      labelCharWidth(0),
      labelCharHeight(0),
      markMode(0),
      width(0),
      height(0),
      rightReserve(0),
      selectedPeak(0),
      hostByte(0),
      selectedPeakEnd(0),
      auxPosition(0) {}

TChromRender::~TChromRender() = default;

void TChromRender::drawTraingle(HDC, RECT&, int, bool) {}

void TChromRender::SetSize(int width_, int height_) {
  width = width_;
  height = height_;
}

void TChromRender::SetFonts(HFONT font_, HFONT labelFont_) {
  font = font_;
  labelFont = labelFont_;
}

TChromRender2::TChromRender2(chromatogram* chrom_) : TChromRender(chrom_) {}

void TChromRender2::showchrom(HDC hdc, bool erase, RECT& rect, int flags) {
  TChromRender::showchrom(hdc, erase, rect, flags);
}
