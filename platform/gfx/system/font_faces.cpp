#include "platform/gfx/system/font_faces.h"

#include FT_ADVANCES_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cstring>
#include <string_view>

namespace gfx {
namespace {

// How often the small letters and the space occur in 1000 characters of running text.
constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz ";
constexpr LONG kShares[] = {64, 14, 27, 35, 100, 20, 14, 42, 63, 3, 6,  35, 20, 56,
                            56, 17, 4,  49, 56,  71, 31, 10, 18, 3, 18, 2,  166};

LONG AverageAdvance(FT_Face face, const TT_OS2* os2) {
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < kLetters.size(); ++i) {
    FT_Fixed advance = 0;
    const FT_UInt glyph = FT_Get_Char_Index(face, static_cast<unsigned char>(kLetters[i]));
    if (glyph == 0 || FT_Get_Advance(face, glyph, FT_LOAD_NO_SCALE, &advance) != 0) {
      // A font without Latin letters.
      return std::max<LONG>(os2 ? os2->xAvgCharWidth : face->units_per_EM / 2, 1);
    }
    sum += std::int64_t{advance} * kShares[i];
  }
  return std::max<LONG>(static_cast<LONG>((sum + 500) / 1000), 1);
}

const char* GenericFamily(BYTE pitchAndFamily) {
  switch (pitchAndFamily & 0xF0) {
    case 0x10:
      return "serif";
    case 0x30:
      return "monospace";
    default:
      return (pitchAndFamily & 0x03) == 1 ? "monospace" : "sans-serif";
  }
}

constexpr LONG kBold = 600;

const FcChar8* Text(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

}  // namespace

FontFaces::FontFaces() {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) == 0) library_.reset(library);
  config_.reset(FcInitLoadConfigAndFonts());
}

FontStyle* FontFaces::Style(const LOGFONTA& font) {
  if (!library_ || !config_) return nullptr;
  const auto* nameEnd =
      static_cast<const char*>(std::memchr(font.lfFaceName, 0, sizeof font.lfFaceName));
  const std::size_t length =
      nameEnd ? static_cast<std::size_t>(nameEnd - font.lfFaceName) : sizeof font.lfFaceName;
  const StyleKey key{{font.lfFaceName, length},
                     font.lfWeight <= 0 ? FW_NORMAL : std::min<LONG>(font.lfWeight, 1000),
                     font.lfItalic != 0,
                     font.lfPitchAndFamily};
  auto [place, isNew] = styles_.try_emplace(key);
  if (isNew) place->second = MakeStyle(key);
  return place->second.get();
}

std::unique_ptr<FontStyle> FontFaces::MakeStyle(const StyleKey& key) {
  auto style = std::make_unique<FontStyle>();
  style->owner_ = this;
  style->bold_ = key.weight >= kBold;
  style->italic_ = key.italic;
  style->wanted_.reset(FcPatternCreate());
  FcPattern* const wanted = style->wanted_.get();
  if (!wanted) return nullptr;
  if (!key.family.empty()) FcPatternAddString(wanted, FC_FAMILY, Text(key.family.c_str()));
  FcPatternAddString(wanted, FC_FAMILY, Text(GenericFamily(key.pitchAndFamily)));
  FcPatternAddInteger(wanted, FC_WEIGHT, FcWeightFromOpenType(static_cast<int>(key.weight)));
  FcPatternAddInteger(wanted, FC_SLANT, key.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(wanted, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(config_.get(), wanted, FcMatchPattern);
  FcDefaultSubstitute(wanted);
  FcResult result = FcResultMatch;
  style->order_.reset(FcFontSort(config_.get(), wanted, FcTrue, nullptr, &result));
  if (!style->order_) return nullptr;
  for (int i = 0; i < style->order_->nfont; ++i) {
    if (style->Open(i)) return style;
  }
  return nullptr;
}

FontFace* FontFaces::Open(const std::string& file, int index) {
  auto [place, isNew] = faces_.try_emplace({file, index});
  if (!isNew) return place->second.get();
  FT_Face ft = nullptr;
  if (FT_New_Face(library_.get(), file.c_str(), index, &ft) != 0) return nullptr;
  auto face = std::make_unique<FontFace>();
  face->ft.reset(ft);
  if (!FT_IS_SCALABLE(ft) || ft->units_per_EM == 0) return nullptr;
  const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(ft, FT_SFNT_OS2));
  const bool hasCell = os2 && os2->usWinAscent + os2->usWinDescent > 0;
  face->unitsPerEm = ft->units_per_EM;
  face->ascent = std::max<LONG>(hasCell ? os2->usWinAscent : ft->ascender, 1);
  face->descent = std::max<LONG>(hasCell ? os2->usWinDescent : -ft->descender, 0);
  face->lineGap = std::max<LONG>(ft->height - face->ascent - face->descent, 0);
  face->averageAdvance = AverageAdvance(ft, os2);
  place->second = std::move(face);
  return place->second.get();
}

const StyledFace* FontStyle::Open(int place) {
  for (const auto& [opened, styled] : faces_) {
    if (opened == place) return styled.get();
  }
  std::unique_ptr<FcPattern, Closer<FcPatternDestroy>> font(
      FcFontRenderPrepare(owner_->config_.get(), wanted_.get(), order_->fonts[place]));
  FcChar8* file = nullptr;
  int index = 0, weight = FC_WEIGHT_REGULAR, slant = FC_SLANT_ROMAN;
  if (!font || FcPatternGetString(font.get(), FC_FILE, 0, &file) != FcResultMatch) return nullptr;
  FcPatternGetInteger(font.get(), FC_INDEX, 0, &index);
  FcPatternGetInteger(font.get(), FC_WEIGHT, 0, &weight);
  auto styled = std::make_unique<StyledFace>();
  styled->face = owner_->Open(reinterpret_cast<const char*>(file), index);
  if (!styled->face) return nullptr;
  FcPatternGetInteger(font.get(), FC_SLANT, 0, &slant);
  styled->weight = FcWeightToOpenType(weight);
  // Some configurations ask for it, and then report the weight as wanted.
  FcBool embolden = FcFalse;
  FcPatternGetBool(font.get(), FC_EMBOLDEN, 0, &embolden);
  styled->embolden = embolden != FcFalse || (bold_ && styled->weight < kBold);
  if (styled->embolden) styled->weight = FW_BOLD;
  FcMatrix* shape = nullptr;
  if (FcPatternGetMatrix(font.get(), FC_MATRIX, 0, &shape) == FcResultMatch && shape) {
    const auto fixed = [](double value) { return static_cast<FT_Fixed>(value * 0x10000); };
    styled->shape = {fixed(shape->xx), fixed(shape->xy), fixed(shape->yx), fixed(shape->yy)};
  } else if (italic_ && slant == FC_SLANT_ROMAN) {
    styled->shape.xy = 0x10000 / 5;
  }
  faces_.emplace_back(place, std::move(styled));
  return faces_.back().second.get();
}

GlyphPlace FontStyle::Find(char32_t code) {
  if (const auto known = found_.find(code); known != found_.end()) return known->second;
  GlyphPlace place{&Primary(), FT_Get_Char_Index(Primary().face->ft.get(), code)};
  for (int i = 0; i < order_->nfont && place.index == 0; ++i) {
    FcCharSet* characters = nullptr;
    if (FcPatternGetCharSet(order_->fonts[i], FC_CHARSET, 0, &characters) != FcResultMatch ||
        !FcCharSetHasChar(characters, code)) {
      continue;
    }
    const StyledFace* const other = Open(i);
    const FT_UInt index = other ? FT_Get_Char_Index(other->face->ft.get(), code) : 0;
    if (index != 0) place = {other, index};
  }
  return found_[code] = place;
}

}  // namespace gfx
