// Options for matrices of times and wavelengths whose axes are not in the file.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "app/run_data.h"

namespace app {

struct AxisTexts {
  std::string wavelengths;
  std::string times;
  std::string timesIn;
};
// `texts` must live as long as the command.
void AddAxisOptions(CLI::App& command, AxisTexts& texts);

// False, and what is wrong in `error`, where an option has no meaning.
bool UnderstandAxisOptions(const AxisTexts& texts, ReadOptions& read, std::string& error);

// "LOW:HIGH": two different numbers above 0, in either order.
std::optional<StatedAxis> ParseWavelengths(const std::string& text);

}  // namespace app
