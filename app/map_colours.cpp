#include "app/map_colours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "embedded/settings.h"

namespace app {
namespace {

// Light where most of a map lies: black axes and paths stand out on it.
constexpr const char* kDefaultScale = "tide";

// A path through OKLab in polar form: lightness, and hue and chroma at three places.
struct Path {
  const char* name;
  double lowest, highest;  // lightness
  std::array<double, 3> hueDeg;
  std::array<double, 3> chroma;
};
constexpr std::array kPaths = {
    Path{"tide", 0.98, 0.24, {100, 205, 285}, {0.02, 0.11, 0.14}},
    Path{"dusk", 0.20, 0.92, {285, 205, 105}, {0.13, 0.11, 0.18}},
    Path{"ember", 0.15, 0.95, {-40, 35, 105}, {0.10, 0.21, 0.13}},
    Path{"ocean", 0.16, 0.95, {270, 240, 195}, {0.10, 0.13, 0.06}},
    Path{"grey", 0.10, 1.00, {0, 0, 0}, {0, 0, 0}},
};

struct Linear {
  double red, green, blue;
  bool IsColour() const {
    const auto inside = [](double v) { return v >= -1e-6 && v <= 1 + 1e-6; };
    return inside(red) && inside(green) && inside(blue);
  }
};

Linear FromOklab(double lightness, double a, double b) {
  const auto cube = [](double v) { return v * v * v; };
  const double l = cube(lightness + 0.3963377774 * a + 0.2158037573 * b);
  const double m = cube(lightness - 0.1055613458 * a - 0.0638541728 * b);
  const double s = cube(lightness - 0.0894841775 * a - 1.2914855480 * b);
  return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
          -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
          -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

BYTE Encoded(double v) {
  v = std::clamp(v, 0.0, 1.0);
  v = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
  return static_cast<BYTE>(std::lround(255 * v));
}

// The most colourful one of that lightness and hue, up to a chroma.
COLORREF ColourAt(double lightness, double hueDeg, double chroma) {
  const double hue = hueDeg * std::numbers::pi / 180;
  Linear colour{};
  do {
    colour = FromOklab(lightness, chroma * std::cos(hue), chroma * std::sin(hue));
    chroma -= 0.001;
  } while (!colour.IsColour() && chroma > 0);
  return RGB(Encoded(colour.red), Encoded(colour.green), Encoded(colour.blue));
}

// Through three values at 0, ½ and 1.
double Between(const std::array<double, 3>& values, double t) {
  return t < 0.5 ? values[0] + (values[1] - values[0]) * 2 * t
                 : values[1] + (values[2] - values[1]) * (2 * t - 1);
}

std::optional<COLORREF> ParseColour(std::string_view text) {
  if (text.size() != 7 || text[0] != '#') return std::nullopt;
  unsigned value = 0;
  for (const char c : text.substr(1)) {
    const std::size_t digit =
        std::string_view("0123456789abcdef")
            .find(static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c));
    if (digit == std::string_view::npos) return std::nullopt;
    value = value * 16 + static_cast<unsigned>(digit);
  }
  return RGB(value >> 16 & 255, value >> 8 & 255, value & 255);
}

// "#rrggbb,#rrggbb,…"; empty for other texts.
std::vector<COLORREF> ParseList(std::string_view text) {
  std::vector<COLORREF> colours;
  for (bool more = true; more;) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const auto colour = ParseColour(text.substr(0, comma));
    if (!colour || colours.size() == ColorScale::kMaxColors) return {};
    colours.push_back(*colour);
    more = comma < text.size();
    text.remove_prefix(more ? comma + 1 : comma);
  }
  return colours.size() >= 2 ? colours : std::vector<COLORREF>();
}

bool SettingsHoldAScale() {
  std::string fault;
  const auto content = embedded::ReadSettings(embedded::SettingsPath(), fault);
  return content && embedded::FindEntry(*content, "CHROM_2D_COLORS", "COLOR01").has_value();
}

void SetColours(const std::vector<COLORREF>& colours) {
  ColorScale& scale = TheColorScale();
  scale.colorCount = static_cast<int>(colours.size());
  std::transform(colours.begin(), colours.end(), scale.colorTable, MapColorOf);
  ResetScaleCoefficients();
}

}  // namespace

std::vector<COLORREF> BuiltinScale(const std::string& name) {
  std::vector<COLORREF> colours;
  const auto* path = std::find_if(kPaths.begin(), kPaths.end(),
                                  [&name](const Path& each) { return each.name == name; });
  if (path == kPaths.end()) return colours;
  for (int i = 0; i < ColorScale::kMaxColors; ++i) {
    const double t = i / (ColorScale::kMaxColors - 1.0);
    colours.push_back(ColourAt(path->lowest + (path->highest - path->lowest) * t,
                               Between(path->hueDeg, t), Between(path->chroma, t)));
  }
  return colours;
}

std::string BuiltinScaleNames() {
  std::string names;
  for (const Path& path : kPaths) names += (names.empty() ? "" : ", ") + std::string(path.name);
  return names;
}

bool SetMapColours(const MapColourTexts& texts, std::string& error) {
  std::vector<COLORREF> colours;
  if (!texts.colours.empty()) {
    colours = BuiltinScale(texts.colours);
    if (colours.empty()) colours = ParseList(texts.colours);
    if (colours.empty()) {
      error = "--colours: '" + texts.colours +
              "' is neither 2 to 10 colours such as #00204c,#ffea46 nor one of " +
              BuiltinScaleNames();
      return false;
    }
  }
  if (!texts.formula.empty() && texts.formula != "linear" && texts.formula != "log") {
    error = "--formula: '" + texts.formula + "' is not one of linear, log";
    return false;
  }
  if (!SettingsHoldAScale()) {
    if (colours.empty()) colours = BuiltinScale(kDefaultScale);
    TheColorScale().formula = ScaleFormula::LOG;  // shows the small peaks too
  }
  if (!colours.empty()) SetColours(colours);
  if (!texts.formula.empty()) {
    TheColorScale().formula = texts.formula == "log" ? ScaleFormula::LOG : ScaleFormula::LINE;
  }
  return true;
}

void SaveMapColours(const ColorScale& before) {
  const ColorScale& now = TheColorScale();
  if (now.formula == before.formula && now.colorCount == before.colorCount &&
      std::equal(now.colorTable, now.colorTable + now.colorCount, before.colorTable)) {
    return;
  }
  embedded::KeepSettings(true);
  SaveColorSettings();
  embedded::KeepSettings(false);
}

}  // namespace app
