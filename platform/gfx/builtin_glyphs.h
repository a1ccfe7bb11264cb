// The glyphs of the built-in font, as bits.
#pragma once

#include <array>
#include <cstdint>

namespace gfx {

// The cell of one character: six columns, of which glyphs use the first five, and twelve rows. The
// baseline is the lower edge of row 8.
inline constexpr int kGlyphColumns = 6;
inline constexpr int kGlyphRows = 12;
inline constexpr int kGlyphAscent = 9;

// Row by row; bit c is set where column c (0: the leftmost) is black.
using GlyphBits = std::array<std::uint8_t, kGlyphRows>;

// ASCII 0x20 … 0x7E, all of Latin-1 from 0xA0, Δ, Ω, λ and the superscript minus; the minus sign,
// typographic dashes, quotes, bullets and spaces and the micro, angstrom, ohm and increment signs
// as their nearest relatives; a box for all else.
const GlyphBits& BuiltinGlyph(char32_t code);

}  // namespace gfx
