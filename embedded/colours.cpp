#include "embedded/colours.h"

#include <algorithm>
#include <array>

namespace embedded {
namespace {

// Places in ORVWCOLORS::entries; the last one is unused.
enum Entry { kBack, kAlternateGround, kAxis, kBaseline, kFirstChannel };
constexpr int kChannels = 8;

constexpr COLORREF Hex(unsigned rgb) {
  return RGB(static_cast<BYTE>(rgb >> 16), static_cast<BYTE>(rgb >> 8), static_cast<BYTE>(rgb));
}

ORVWCOLORS Scheme(COLORREF back, COLORREF alternate, COLORREF axis, COLORREF baseline,
                  const std::array<unsigned, kChannels>& channels) {
  ORVWCOLORS scheme{};
  scheme.entries[kBack] = back;
  scheme.entries[kAlternateGround] = alternate;
  scheme.entries[kAxis] = axis;
  scheme.entries[kBaseline] = baseline;
  for (int i = 0; i < kChannels; ++i) {
    scheme.entries[kFirstChannel + i] = Hex(channels[static_cast<std::size_t>(i)]);
  }
  return scheme;
}

constexpr std::array<unsigned, kChannels> kClassicOnLight{0x0000C0, 0xC00000, 0x007800, 0x900090,
                                                          0x007878, 0x9C5400, 0x404040, 0x6060FF};
constexpr std::array<unsigned, kChannels> kClassicOnDark{0x80A8FF, 0xFF6060, 0x50E050, 0xFF80FF,
                                                         0x40E0E0, 0xFFB040, 0xE0E0E0, 0xC0C060};
constexpr std::array<unsigned, kChannels> kSafeOnLight{0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7,
                                                       0x000000, 0xE69F00, 0x56B4E9, 0xF0E442};
constexpr std::array<unsigned, kChannels> kSafeOnDark{0x56B4E9, 0xE69F00, 0x009E73, 0xF0E442,
                                                      0xCC79A7, 0xFFFFFF, 0xD55E00, 0x0072B2};

}  // namespace

ORVWCOLORS ColourScheme(Palette palette, Ground ground) {
  const bool classic = palette == Palette::kClassic;
  if (ground == Ground::kLight) {
    return Scheme(Hex(0xFFFFFF), Hex(0xF6F6F0), Hex(0x000000), Hex(classic ? 0xC06000 : 0x707070),
                  classic ? kClassicOnLight : kSafeOnLight);
  }
  return Scheme(Hex(0x101418), Hex(0x1C2228), Hex(0xD8D8D8), Hex(0xA0A0A0),
                classic ? kClassicOnDark : kSafeOnDark);
}

std::optional<ORVWCOLORS> ColourSchemeNamed(std::string_view name) {
  if (name == "classic") return ColourScheme(Palette::kClassic, Ground::kLight);
  if (name == "classic-dark") return ColourScheme(Palette::kClassic, Ground::kDark);
  if (name == "safe") return ColourScheme(Palette::kColourBlindSafe, Ground::kLight);
  if (name == "safe-dark") return ColourScheme(Palette::kColourBlindSafe, Ground::kDark);
  return std::nullopt;
}

ORVWCOLORS Muted(const ORVWCOLORS& scheme, int first) {
  ORVWCOLORS muted = scheme;
  const COLORREF back = scheme.back();
  const auto mean = [](BYTE a, BYTE b) { return static_cast<BYTE>((a + b) / 2); };
  for (int i = 0; i < kChannels; ++i) {
    const COLORREF color = scheme.chan(first + i, ChromColor::none);
    muted.entries[kFirstChannel + i] =
        RGB(mean(GetRValue(color), GetRValue(back)), mean(GetGValue(color), GetGValue(back)),
            mean(GetBValue(color), GetBValue(back)));
  }
  return muted;
}

ThicknessPool Thicknesses(BYTE trace, BYTE axis) {
  ThicknessPool pool;
  for (int slot = 0; slot < kChannels; ++slot) pool[slot] = trace;
  pool[kChannels] = axis;
  return pool;
}

}  // namespace embedded

COLORREF ORVWCOLORS::back() const { return entries[embedded::kBack]; }
COLORREF ORVWCOLORS::alterground() const { return entries[embedded::kAlternateGround]; }
COLORREF ORVWCOLORS::axis() const { return entries[embedded::kAxis]; }
COLORREF ORVWCOLORS::baseline() const { return entries[embedded::kBaseline]; }
COLORREF ORVWCOLORS::chan(int index, ChromColor::_default_color_) const {
  return entries[embedded::kFirstChannel + (index & (embedded::kChannels - 1))];
}
