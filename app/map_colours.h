// Colours of maps: what the command line names, and the scale that the library draws with.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "elugraph/chrom2d/color_scale.h"

namespace app {

// A built-in scale by its name: colours of evenly spaced lightness, as OKLab measures it (Ottosson
// 2020). Empty for another name.
std::vector<COLORREF> BuiltinScale(const std::string& name);
// "dusk, ember, …"
std::string BuiltinScaleNames();

struct MapColourTexts {
  std::string colours;  // a built-in scale, or "#rrggbb,#rrggbb,…"; empty: the user's own
  std::string formula;  // linear or log; empty likewise
};
// Sets the library's scale: what `texts` ask for; for the rest the user's settings, and where these
// hold no scale, a built-in one. Nothing is saved. False, and the cause in `error`, for texts
// without a meaning; nothing is then changed.
bool SetMapColours(const MapColourTexts& texts, std::string& error);

// Saves the library's scale in the user's settings where its colours or formula are not those of
// `before`.
void SaveMapColours(const ColorScale& before);

}  // namespace app
