// Text in the machine's fonts. Glyphs are placed on quarters of a pixel along the line by their
// unrounded advances; the extent is the sum of these, rounded. There is no kerning and no shaping:
// one glyph per character, from left to right.
//
// Upright glyphs are fitted to pixel rows only, so their widths do not depend on it. Multiples of
// 90 degrees turn the upright pixels; other angles turn the outlines.
#include <ft2build.h>
#include FT_ADVANCES_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cstring>
#include <tuple>

#include "platform/gfx/driver/integer_math.h"
#include "platform/gfx/system/font_faces.h"
#include "platform/gfx/text_engine.h"
#include "platform/gfx/turn.h"

namespace gfx {
namespace {

constexpr LONG kDefaultHeight = 12;
constexpr LONG kMaxHeight = 2000;  // pixels; larger fonts are drawn and measured like this
constexpr std::int64_t kSubpixel = 64;

std::int64_t RoundedDiv(std::int64_t value, std::int64_t divisor) {
  return FloorDiv(2 * value + divisor, 2 * divisor);
}

// A style at a size. Extents in pixels, sizes of the em in 1/64 pixel.
struct SizedFont {
  FontStyle* style;
  FT_F26Dot6 emWidth;
  FT_F26Dot6 emHeight;
  LONG ascent;
  LONG descent;
};

SizedFont SizeOf(FontStyle& style, const Font& font) {
  const FontFace& face = *style.Primary().face;
  const std::int64_t cell = std::int64_t{face.ascent} + face.descent;
  const auto height = static_cast<std::int64_t>(
      font.height == 0 ? kDefaultHeight
                       : std::min<std::uint64_t>(Magnitude(font.height), kMaxHeight));
  SizedFont sized{&style, 0, 0, 0, 0};
  const std::int64_t em =
      font.height < 0 ? height * kSubpixel : RoundedDiv(height * kSubpixel * face.unitsPerEm, cell);
  const std::int64_t whole = font.height < 0 ? RoundedDiv(height * cell, face.unitsPerEm) : height;
  sized.ascent = static_cast<LONG>(RoundedDiv(whole * face.ascent, cell));
  sized.descent = static_cast<LONG>(whole) - sized.ascent;
  sized.emHeight = static_cast<FT_F26Dot6>(std::max<std::int64_t>(em, kSubpixel));
  sized.emWidth = sized.emHeight;
  if (font.width != 0) {
    const auto width =
        static_cast<std::int64_t>(std::min<std::uint64_t>(Magnitude(font.width), kMaxHeight));
    const std::int64_t wide = RoundedDiv(width * kSubpixel * face.unitsPerEm, face.averageAdvance);
    sized.emWidth = static_cast<FT_F26Dot6>(
        std::clamp<std::int64_t>(wide, kSubpixel, 4 * kMaxHeight * kSubpixel));
  }
  return sized;
}

// A rendered glyph; left and top are counted from the pixel of its origin.
struct CachedGlyph {
  int left = 0, top = 0, width = 0, height = 0;
  std::vector<BYTE> coverage;
};

struct GlyphKey {
  const StyledFace* styled;
  FT_UInt index;
  FT_F26Dot6 emWidth, emHeight;
  LONG tenths;         // the line's direction, 0 … 3599
  int phaseX, phaseY;  // quarters of a pixel; y only for lines that are not at a multiple of 90°
  auto operator<=>(const GlyphKey&) const = default;
};

class SystemEngine : public TextEngine {
 public:
  bool Usable() { return faces_.Style(LOGFONTA{}) != nullptr; }

  SIZE Extent(const Font& font, std::string_view text) override {
    const SizedFont sized = Sized(font);
    std::int64_t width = 0;
    for (char32_t code : DecodeText(text)) width += Advance(sized, sized.style->Find(code));
    return {static_cast<LONG>(std::min<std::int64_t>(RoundedDiv(width, kSubpixel), INT32_MAX)),
            sized.ascent + sized.descent};
  }
  TEXTMETRICA Metrics(const Font& font) override;
  void Render(const Font& font, std::string_view text, POINT origin,
              const GlyphSink& sink) override {
    RenderVisible(font, text, origin, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, sink);
  }
  void RenderVisible(const Font& font, std::string_view text, POINT origin, const RECT& visible,
                     const GlyphSink& sink) override;

 private:
  static constexpr std::size_t kCacheBytes = std::size_t{32} << 20;

  SizedFont Sized(const Font& font) {
    FontStyle* style = faces_.Style(font.logical);
    return SizeOf(style ? *style : *faces_.Style(LOGFONTA{}), font);
  }
  // In 1/64 pixel.
  std::int64_t Advance(const SizedFont& sized, GlyphPlace glyph);
  const CachedGlyph& Glyph(const GlyphKey& key, const Turn& turn);

  FontFaces faces_;
  std::map<std::tuple<const StyledFace*, FT_UInt>, FT_Fixed> advances_;  // font units
  std::map<GlyphKey, CachedGlyph> glyphs_;
  std::size_t cachedBytes_ = 0;
};

std::int64_t SystemEngine::Advance(const SizedFont& sized, GlyphPlace glyph) {
  auto [place, isNew] = advances_.try_emplace({glyph.styled, glyph.index}, 0);
  const FontFace& face = *glyph.styled->face;
  if (isNew) FT_Get_Advance(face.ft.get(), glyph.index, FT_LOAD_NO_SCALE, &place->second);
  return RoundedDiv(std::int64_t{place->second} * sized.emWidth, face.unitsPerEm);
}

TEXTMETRICA SystemEngine::Metrics(const Font& font) {
  const SizedFont sized = Sized(font);
  const StyledFace& styled = sized.style->Primary();
  const FontFace& face = *styled.face;
  const auto pixels = [&](std::int64_t units, FT_F26Dot6 em) {
    return static_cast<LONG>(RoundedDiv(units * em, face.unitsPerEm * kSubpixel));
  };
  TEXTMETRICA metrics{};
  metrics.tmHeight = sized.ascent + sized.descent;
  metrics.tmAscent = sized.ascent;
  metrics.tmDescent = sized.descent;
  metrics.tmInternalLeading =
      metrics.tmHeight - static_cast<LONG>(RoundedDiv(sized.emHeight, kSubpixel));
  metrics.tmExternalLeading = pixels(face.lineGap, sized.emHeight);
  metrics.tmAveCharWidth = std::max<LONG>(pixels(face.averageAdvance, sized.emWidth), 1);
  metrics.tmMaxCharWidth =
      std::max(pixels(face.ft->max_advance_width, sized.emWidth), metrics.tmAveCharWidth);
  metrics.tmWeight = styled.weight;
  metrics.tmDigitizedAspectX = metrics.tmDigitizedAspectY = 96;
  metrics.tmFirstChar = 0x20;
  metrics.tmLastChar = 0xFF;
  metrics.tmDefaultChar = 0x7F;
  metrics.tmBreakChar = ' ';
  metrics.tmItalic = font.logical.lfItalic;
  metrics.tmUnderlined = font.logical.lfUnderline;
  metrics.tmStruckOut = font.logical.lfStrikeOut;
  // Bit 0 is set for proportional fonts; 2 and 4: scalable outlines.
  metrics.tmPitchAndFamily = FT_IS_FIXED_WIDTH(face.ft.get()) ? 0x36 : 0x07;
  metrics.tmCharSet = font.logical.lfCharSet;
  return metrics;
}

// `quarters` quarter turns counter-clockwise about the origin.
void TurnPixels(CachedGlyph& glyph, int quarters) {
  for (; quarters > 0; --quarters) {
    CachedGlyph turned;
    turned.width = glyph.height;
    turned.height = glyph.width;
    turned.left = glyph.top;
    turned.top = -(glyph.left + glyph.width);
    turned.coverage.reserve(glyph.coverage.size());
    for (int column = glyph.width - 1; column >= 0; --column) {
      for (int row = 0; row < glyph.height; ++row) {
        turned.coverage.push_back(
            glyph.coverage[static_cast<std::size_t>(row) * glyph.width + column]);
      }
    }
    glyph = std::move(turned);
  }
}

CachedGlyph Rasterize(const GlyphKey& key, const Turn& turn) {
  FT_Face face = key.styled->face->ft.get();
  const bool upright = turn.Quarters() >= 0;
  const FT_Int32 load = upright ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING;
  CachedGlyph glyph;
  if (FT_Set_Char_Size(face, key.emWidth, key.emHeight, 72, 72) != 0 ||
      FT_Load_Glyph(face, key.index, load | FT_LOAD_NO_BITMAP) != 0 ||
      face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
    return glyph;
  }
  FT_Outline* const outline = &face->glyph->outline;
  if (key.styled->embolden) FT_Outline_Embolden(outline, key.emHeight / 24);
  FT_Outline_Transform(outline, &key.styled->shape);
  if (!upright) {
    const FT_Fixed cosine = turn.Cosine() >> 14, sine = turn.Sine() >> 14;
    const FT_Matrix matrix{cosine, -sine, sine, cosine};
    FT_Outline_Transform(outline, &matrix);
  }
  FT_Outline_Translate(outline, key.phaseX * kSubpixel / 4, -key.phaseY * kSubpixel / 4);
  if (FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) != 0) return glyph;

  const FT_Bitmap& bitmap = face->glyph->bitmap;
  if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) return glyph;
  glyph.left = face->glyph->bitmap_left;
  glyph.top = -face->glyph->bitmap_top;
  glyph.width = static_cast<int>(bitmap.width);
  glyph.height = static_cast<int>(bitmap.rows);
  glyph.coverage.resize(static_cast<std::size_t>(bitmap.width) * bitmap.rows);
  for (int row = 0; row < glyph.height; ++row) {
    std::memcpy(glyph.coverage.data() + static_cast<std::size_t>(row) * bitmap.width,
                bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch, bitmap.width);
  }
  if (upright) TurnPixels(glyph, turn.Quarters());
  return glyph;
}

const CachedGlyph& SystemEngine::Glyph(const GlyphKey& key, const Turn& turn) {
  if (const auto known = glyphs_.find(key); known != glyphs_.end()) return known->second;
  if (cachedBytes_ > kCacheBytes) {
    glyphs_.clear();
    cachedBytes_ = 0;
  }
  const CachedGlyph& glyph = glyphs_[key] = Rasterize(key, turn);
  cachedBytes_ += glyph.coverage.size() + sizeof(GlyphKey) + sizeof(CachedGlyph);
  return glyph;
}

// Where a glyph's origin lies: a pixel and quarters of one.
struct PenPlace {
  std::int64_t x, y;
  int phaseX, phaseY;
};

PenPlace PlaceOf(const Turn& turn, std::int64_t along) {
  constexpr std::int64_t kPhase = kSubpixel / 4;
  const auto quarters = [](std::int64_t at) { return FloorDiv(at + kPhase / 2, kPhase); };
  const auto phase = [](std::int64_t at) { return static_cast<int>(at - 4 * FloorDiv(at, 4)); };
  if (turn.Quarters() >= 0) {
    // The phase is taken along the line, before the turn.
    const Offset at = turn.Apply(FloorDiv(quarters(along), 4), 0);
    return {at.x, at.y, phase(quarters(along)), 0};
  }
  const Offset at = turn.Apply(along, 0);
  const std::int64_t x = quarters(at.x), y = quarters(at.y);
  return {FloorDiv(x, 4), FloorDiv(y, 4), phase(x), phase(y)};
}

// How far glyphs of a face reach from their origin, in pixels.
std::int64_t Reach(const StyledFace& styled, const SizedFont& sized) {
  const FT_BBox& box = styled.face->ft->bbox;
  const std::int64_t units = std::max({std::int64_t{-box.xMin}, std::int64_t{box.xMax},
                                       std::int64_t{-box.yMin}, std::int64_t{box.yMax}});
  const std::int64_t em = std::max(sized.emWidth, sized.emHeight);
  // Doubled for slanting and turning.
  return 2 * (units * em / (styled.face->unitsPerEm * kSubpixel) + 2);
}

void SystemEngine::RenderVisible(const Font& font, std::string_view text, POINT origin,
                                 const RECT& visible, const GlyphSink& sink) {
  const SizedFont sized = Sized(font);
  const LONG tenths = (font.logical.lfEscapement % 3600 + 3600) % 3600;
  const Turn turn(tenths);
  std::int64_t along = 0;  // 1/64 pixel
  for (char32_t code : DecodeText(text)) {
    const GlyphPlace glyph = sized.style->Find(code);
    const PenPlace pen = PlaceOf(turn, along);
    along += Advance(sized, glyph);
    const std::int64_t x = origin.x + pen.x, y = origin.y + pen.y;
    const std::int64_t reach = Reach(*glyph.styled, sized);
    if (x + reach < visible.left || x - reach >= visible.right || y + reach < visible.top ||
        y - reach >= visible.bottom) {
      continue;
    }
    const CachedGlyph& image = Glyph(
        {glyph.styled, glyph.index, sized.emWidth, sized.emHeight, tenths, pen.phaseX, pen.phaseY},
        turn);
    const std::int64_t left = x + image.left, top = y + image.top;
    if (image.width > 0 && std::min(left, top) >= INT32_MIN && std::max(left, top) <= INT32_MAX) {
      sink({static_cast<int>(left), static_cast<int>(top), image.width, image.height,
            image.coverage.data(), image.width});
    }
  }
}

}  // namespace

TextEngine& SystemText() {
  static SystemEngine engine;
  static const bool usable = engine.Usable();
  return usable ? static_cast<TextEngine&>(engine) : BuiltinText();
}

}  // namespace gfx
