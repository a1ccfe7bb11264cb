// The options of `elugraph render` and `elugraph demo`.
#pragma once

#include <CLI/App.hpp>
#include <optional>
#include <string>

#include "app/amount_options.h"
#include "app/axis_options.h"
#include "app/display_options.h"
#include "app/output.h"
#include "app/run_data.h"

namespace app {

// The options as they are given; numbers and flags are in `display`.
struct RenderTexts {
  OutputOptions output;
  AmountTexts amounts;
  std::string peakTable;  // empty: none but "STEM.peaks.csv" beside a file
  std::string timeUnit;
  AxisTexts axes;
  std::string from;
  std::string to;
  std::string signal;
  std::string axisUnit = "min";
  std::string traces = "exact";
  std::string peaks = "auto";
  std::string labels = "auto";
  std::string fill = "all";
  std::string markers = "none";
  std::string names = "auto";
  std::string aux = "behind";
  bool average = false;
  double fontPx = 0;  // 0: by the picture's height
  double step = -1;   // percent; below 0: chosen
  DisplayOptions display;
};

// `texts` must live as long as the command.
void AddRenderOptions(CLI::App& command, RenderTexts& texts);

// False, and what is wrong in `error`, where an option has no meaning.
bool UnderstandRenderOptions(const RenderTexts& texts, DisplayOptions& display, ReadOptions& read,
                             std::string& error);

// "2.5", "2.5min", "90 s" in seconds; without a unit in `unit`. Nothing for other texts and for
// times beyond kMaxTimeS.
std::optional<double> ParseTimeS(const std::string& text, TimeUnit unit);

}  // namespace app
