// The machine's fonts: from family names to faces, and from characters to the glyphs of faces.
#pragma once

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <compare>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/gfx/gdi.h"

namespace gfx {

// Calls a library's closing function.
template <auto close>
struct Closer {
  template <class Object>
  void operator()(Object* object) const {
    close(object);
  }
};

// An open scalable font file. Distances in font units, of which `unitsPerEm` make an em.
struct FontFace {
  std::unique_ptr<FT_FaceRec_, Closer<FT_Done_Face>> ft;
  LONG unitsPerEm;
  LONG ascent;          // of the cell, above the baseline
  LONG descent;         // below it, positive
  LONG lineGap;         // what lines keep between their cells
  LONG averageAdvance;  // of running text in lower case
};

// A face as one style wants it: bold or slanted artificially where the machine has only the plain
// one.
struct StyledFace {
  FontFace* face = nullptr;
  bool embolden = false;
  FT_Matrix shape{0x10000, 0, 0, 0x10000};
  LONG weight = FW_NORMAL;
};

struct GlyphPlace {
  const StyledFace* styled;
  FT_UInt index;  // 0: the face's sign for characters it does not have
};

// What a family name, weight and slant stand for on this machine: the nearest face and, for the
// characters it lacks, the next ones in fontconfig's order.
class FontStyle {
 public:
  const StyledFace& Primary() const { return *faces_.front().second; }
  GlyphPlace Find(char32_t code);

 private:
  friend class FontFaces;
  using FontSet = std::unique_ptr<FcFontSet, Closer<FcFontSetDestroy>>;

  const StyledFace* Open(int place);

  class FontFaces* owner_ = nullptr;
  bool bold_ = false;
  bool italic_ = false;
  std::unique_ptr<FcPattern, Closer<FcPatternDestroy>> wanted_;
  FontSet order_;
  std::vector<std::pair<int, std::unique_ptr<StyledFace>>> faces_;  // by place in order_
  std::unordered_map<char32_t, GlyphPlace> found_;
};

class FontFaces {
 public:
  FontFaces();

  // Null where the machine has no scalable font at all. Lives as long as this object.
  FontStyle* Style(const LOGFONTA& font);

 private:
  friend class FontStyle;
  struct StyleKey {
    std::string family;
    LONG weight;
    bool italic;
    BYTE pitchAndFamily;
    auto operator<=>(const StyleKey&) const = default;
  };

  std::unique_ptr<FontStyle> MakeStyle(const StyleKey& key);
  FontFace* Open(const std::string& file, int index);

  std::unique_ptr<FT_LibraryRec_, Closer<FT_Done_FreeType>> library_;
  std::unique_ptr<FcConfig, Closer<FcConfigDestroy>> config_;
  std::map<std::pair<std::string, int>, std::unique_ptr<FontFace>> faces_;  // null: not usable
  std::map<StyleKey, std::unique_ptr<FontStyle>> styles_;
};

}  // namespace gfx
