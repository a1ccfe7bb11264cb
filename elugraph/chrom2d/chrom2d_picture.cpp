// The coloured picture: making it, and copying it to the device.
#include <cstdint>
#include <limits>
#include <memory>

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/color_scale.h"
#include "elugraph/heightmap/truncation_scope.h"

namespace {

constexpr int kBytesPerPixel = 3;
constexpr int kColorTableType = 1;
constexpr LONG kFitOrder = 2;

// 0 for an extent that does not fit.
LONG Extent(LONG low, LONG high) {
  const std::int64_t extent = std::int64_t{high} - low;
  return extent <= std::numeric_limits<LONG>::max() ? static_cast<LONG>(extent) : 0;
}

// Row 0 of the grid, the lowest wavelength, becomes the lowest row of the picture. Runs under
// truncation; see TruncationScope.
[[gnu::noinline]] void ColorRows(HeightMap& map, LONG lowest, LONG highest,
                                 const RandomAccess& access) {
  const double span = static_cast<double>(std::int64_t{highest} - lowest);
  const ColorRamp ramp({lowest, span > 0 ? 1.0 / span : 1.0});
  for (int row = 0; row < access.rowCount; ++row) {
    ramp.Color(map.Row(access.rowCount - 1 - row), map.Columns(),
               reinterpret_cast<MapColor*>(access.rows[row]));
  }
}

bool Colored(HeightMap& map, LONG lowest, LONG highest, Bitmap& into) {
  RandomAccess access;
  if (!access.Set(&into, {0, 0, into.Width(), into.Height()}) || access.rowCount != map.Rows()) {
    return false;
  }
  const TruncationScope truncation;
  ColorRows(map, lowest, highest, access);
  return true;
}

COLORREF FirstColor() {
  const ColorScale& scale = TheColorScale();
  return scale.colorCount > 0 ? ColorRefOf(scale.colorTable[0]) : RGB(255, 255, 255);
}

}  // namespace

void TChrom2DBase::graphs(HDC hdc, const RECT&) {
  if (picture == nullptr) BuildPicture(mapRect);
  const LONG width = Extent(mapRect.left, mapRect.right);
  const LONG height = Extent(mapRect.top, mapRect.bottom);
  if (picture == nullptr) {
    const HBRUSH brush = CreateSolidBrush(FirstColor());
    if (brush == nullptr) return;
    FillRect(hdc, &mapRect, brush);
    DeleteObject(brush);
  } else if (picture->Width() == width && picture->Height() == height) {
    SetDIBitsToDevice(hdc, mapRect.left, mapRect.top, static_cast<DWORD>(width),
                      static_cast<DWORD>(height), 0, 0, 0, static_cast<UINT>(picture->Height()),
                      picture->bits, picture->info, DIB_RGB_COLORS);
  } else {
    StretchDIBits(hdc, mapRect.left, mapRect.top, width, height, 0, 0, picture->Width(),
                  picture->Height(), picture->bits, picture->info, DIB_RGB_COLORS, SRCCOPY);
  }
}

bool TChrom2DBase::BuildPicture(const RECT& map) try {
  picture.reset();
  if (!chrom || chrom->sampleCount <= 0) return false;
  const LONG width = Extent(map.left, map.right);
  const LONG height = Extent(map.top, map.bottom);
  if (!heightMap.DoMap(width, height, kFitOrder)) return false;
  LONG lowest = 0;
  LONG highest = 0;
  if (heightMap.WaveCount() == 0 || !heightMap.GetValueRange(&lowest, &highest)) return false;
  auto made = std::make_unique<Bitmap>();
  if (!made->Create(width, height, kBytesPerPixel, kColorTableType)) return false;
  if (!Colored(heightMap, lowest, highest, *made)) return false;
  picture = std::move(made);
  return true;
} catch (...) {  // no memory, or the host's
  return false;
}
