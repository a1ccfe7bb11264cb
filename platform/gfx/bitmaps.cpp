// Copying images between memory, bitmaps and contexts.
#include <algorithm>
#include <cstring>

#include "platform/gfx/device_context.h"
#include "platform/gfx/dib.h"

namespace {

using gfx::ContextOf;
using gfx::DeviceContext;
using gfx::DibForm;
using gfx::Saturate;

// A half-open range of columns or rows.
struct Range {
  std::int64_t begin;
  std::int64_t end;

  std::int64_t Size() const { return end - begin; }
  Range operator&(const Range& other) const {
    return {std::max(begin, other.begin), std::min(end, other.end)};
  }
};

Range From(std::int64_t begin, std::int64_t size) { return {begin, begin + size}; }

// The destination of `shown` where `asked` goes to `to`: the pixels c whose middle lies in a shown
// column, floor((2c + 1) × asked / (2 × to)). `asked` has 1 … 2^31 columns, `to` fewer than 2^32.
Range Shrink(const Range& to, const Range& asked, const Range& shown) {
  const auto place = [&](std::int64_t source) {
    const std::int64_t product = (source - asked.begin) * to.Size();  // below 2^63 − 2^31
    return to.begin + (product + (asked.Size() - 1) / 2) / asked.Size();
  };
  return {place(shown.begin), place(shown.end)};
}

// One row of a bitmap as 24- or 32-bit pixels; what the bitmap lacks, and padding, becomes 0.
void CopyRow(const gfx::Surface& surface, int y, const DibForm& form, BYTE* to) {
  std::memset(to, 0, static_cast<std::size_t>(form.stride));
  const std::uint32_t* row = surface.Row(y);
  const int columns = std::min(form.width, surface.Width());
  for (int x = 0; x < columns; ++x, to += form.bytesPerPixel) {
    to[0] = static_cast<BYTE>(row[x]);
    to[1] = static_cast<BYTE>(row[x] >> 8);
    to[2] = static_cast<BYTE>(row[x] >> 16);
  }
}

int DescribeBitmap(const gfx::Surface& surface, BITMAPINFO* info) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = surface.Width();
  header.biHeight = surface.Height();
  header.biPlanes = 1;
  header.biBitCount = 32;
  header.biCompression = BI_RGB;
  const std::int64_t bytes = std::int64_t{surface.Width()} * surface.Height() * 4;
  header.biSizeImage = static_cast<DWORD>(std::min<std::int64_t>(bytes, 0xFFFFFFFF));
  std::memcpy(static_cast<void*>(info), &header, sizeof header);
  return surface.Height();
}

}  // namespace

int SetDIBitsToDevice(HDC hdc, int x, int y, DWORD width, DWORD height, int sourceX, int sourceY,
                      UINT firstScan, UINT scanCount, const void* bits, const BITMAPINFO* info,
                      UINT usage) {
  DeviceContext* context = ContextOf(hdc);
  DibForm form;
  if (context == nullptr || bits == nullptr || usage != DIB_RGB_COLORS || !form.Parse(info)) {
    return 0;
  }
  const Range columns = From(sourceX, width) & Range{0, form.width};
  const Range scans = From(sourceY, height) & From(firstScan, scanCount) & Range{0, form.height};
  if (columns.Size() <= 0 || scans.Size() <= 0) return 0;
  const POINT at = context->state.mapping.ToDevice(POINT{x, y});
  const std::int64_t above =
      form.bottomUp ? std::int64_t{sourceY} + height - scans.end : scans.begin - sourceY;
  const int rows = static_cast<int>(scans.Size());
  context->Target().Dib(
      {Saturate(at.x + columns.begin - sourceX), Saturate(at.y + above)},
      form.View(bits, static_cast<int>(columns.begin), static_cast<int>(scans.begin - firstScan),
                static_cast<int>(columns.Size()), rows),
      context->CurrentClip());
  return context->Target().Ok() ? rows : 0;
}

int StretchDIBits(HDC hdc, int x, int y, int width, int height, int sourceX, int sourceY,
                  int sourceWidth, int sourceHeight, const void* bits, const BITMAPINFO* info,
                  UINT usage, DWORD operation) {
  DeviceContext* context = ContextOf(hdc);
  DibForm form;
  if (context == nullptr || bits == nullptr || usage != DIB_RGB_COLORS || operation != SRCCOPY ||
      width <= 0 || height <= 0 || sourceWidth <= 0 || sourceHeight <= 0 || !form.Parse(info)) {
    return 0;
  }
  const RECT to = context->state.mapping.ToDevice(
      RECT{x, y, Saturate(std::int64_t{x} + width), Saturate(std::int64_t{y} + height)});
  // Rows counted from the top of the image.
  const std::int64_t top =
      form.bottomUp ? std::int64_t{form.height} - sourceY - sourceHeight : sourceY;
  const Range columns = From(sourceX, sourceWidth);
  const Range rows = From(top, sourceHeight);
  const Range shownColumns = columns & Range{0, form.width};
  const Range shownRows = rows & Range{0, form.height};
  if (shownColumns.Size() <= 0 || shownRows.Size() <= 0) return 0;
  const Range across = Shrink({to.left, to.right}, columns, shownColumns);
  const Range down = Shrink({to.top, to.bottom}, rows, shownRows);
  if (across.Size() <= 0 || down.Size() <= 0) return 0;  // no pixel of it remains
  const auto edge = [](std::int64_t value) { return static_cast<LONG>(value); };
  context->Target().Stretch(
      {edge(across.begin), edge(down.begin), edge(across.end), edge(down.end)},
      form.View(bits, 0, 0, form.width, form.height),
      {edge(shownColumns.begin), edge(shownRows.begin), edge(shownColumns.end),
       edge(shownRows.end)},
      context->CurrentClip());
  return context->Target().Ok() ? static_cast<int>(shownRows.Size()) : 0;
}

BOOL BitBlt(HDC hdc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
            DWORD operation) {
  DeviceContext* context = ContextOf(hdc);
  const DeviceContext* from = ContextOf(source);
  if (context == nullptr || from == nullptr || operation != SRCCOPY || width < 0 || height < 0) {
    return FALSE;
  }
  const RECT to = context->state.mapping.ToDevice(
      RECT{x, y, Saturate(std::int64_t{x} + width), Saturate(std::int64_t{y} + height)});
  context->Target().Blit(to, from->Target().Pixels(),
                         from->state.mapping.ToDevice(POINT{sourceX, sourceY}),
                         context->CurrentClip());
  return context->Target().Ok() ? TRUE : FALSE;
}

int GetDIBits(HDC hdc, HBITMAP bitmap, UINT first, UINT count, void* bits, BITMAPINFO* info,
              UINT usage) {
  const auto* found = gfx::Find<gfx::BitmapObject>(bitmap);
  if (ContextOf(hdc) == nullptr || found == nullptr || info == nullptr || usage != DIB_RGB_COLORS) {
    return 0;
  }
  if (bits == nullptr) return DescribeBitmap(found->surface, info);
  DibForm form;
  if (!form.Parse(info)) return 0;
  const int height = found->surface.Height();
  const Range scans = From(first, count) & Range{0, std::min(form.height, height)};
  if (scans.Size() <= 0) return 0;
  BYTE* to = static_cast<BYTE*>(bits);
  for (std::int64_t scan = scans.begin; scan < scans.end; ++scan, to += form.stride) {
    const int row = static_cast<int>(scan);
    CopyRow(found->surface, form.bottomUp ? height - 1 - row : row, form, to);
  }
  return static_cast<int>(scans.Size());
}
