#include "platform/gfx/text_engine.h"
#include "platform/gfx/turn.h"

namespace gfx {
namespace {

// Length of the well-formed UTF-8 sequence at the start of `text`; 0 where there is none: stray or
// missing continuation bytes, overlong forms, surrogates and values above U+10FFFF.
std::size_t SequenceLength(std::string_view text, char32_t& code) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) {
    code = lead;
    return 1;
  }
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  code = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    code = code << 6 | (byte(i) & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code < 0xE000;
  return code < kSmallest[length] || code > 0x10FFFF || surrogate ? 0 : length;
}

}  // namespace

std::u32string DecodeText(std::string_view text) {
  std::u32string codes;
  codes.reserve(text.size());
  while (!text.empty()) {
    char32_t code = 0;
    std::size_t length = SequenceLength(text, code);
    if (length == 0) {
      code = static_cast<unsigned char>(text[0]);
      length = 1;
    }
    codes.push_back(code);
    text.remove_prefix(length);
  }
  return codes;
}

POINT BaselineOrigin(const TextRun& run, SIZE extent, LONG ascent) {
  constexpr UINT kHorizontal = TA_CENTER, kVertical = TA_BASELINE;
  std::int64_t along = 0, down = ascent;
  if ((run.align & kHorizontal) == TA_RIGHT) along = -std::int64_t{extent.cx};
  if ((run.align & kHorizontal) == TA_CENTER) along = -std::int64_t{extent.cx} / 2;
  if ((run.align & kVertical) == TA_BOTTOM) down = std::int64_t{ascent} - extent.cy;
  if ((run.align & kVertical) == TA_BASELINE) down = 0;
  return MovePoint(run.at, Turn(run.font.logical.lfEscapement).Apply(along, down));
}

}  // namespace gfx
