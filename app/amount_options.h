// The options of names and amounts in `elugraph render`.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "app/curve_options.h"
#include "app/quantification.h"

namespace app {

struct AmountTexts {
  std::string windows;                 // empty: none but "STEM.components.csv" beside a single file
  std::vector<std::string> standards;  // tables
  std::string response = "auto";
  CurveOptions curve;
};

// --components, --calibration, --response and those of the curve. `texts` must live as long as the
// command.
void AddAmountOptions(CLI::App& command, AmountTexts& texts);

// Reads the tables and fits the curves. Throws FileError.
Quantification ReadQuantification(const AmountTexts& texts);

}  // namespace app
