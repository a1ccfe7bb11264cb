// The run that `elugraph map` and `elugraph path` work on.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "app/axis_options.h"
#include "app/map_run.h"

namespace app {

struct MapInput {
  std::string file;  // empty: a generated run
  std::string timeUnit;
  std::string axisUnit = "min";
  AxisTexts axes;
};
// FILE and the options that tell how it is read. `input` must live as long as the command.
void AddMapInput(CLI::App& command, MapInput& input);

// Reads or generates the run and makes a map of the part. What was assumed or left out stands in
// `notes`. False, and the cause in `error`, where there is no map.
bool ReadMap(const MapInput& input, const MapPart& part, MapRun& map,
             std::vector<std::string>& notes, std::string& error);

// What a window and a picture are called after.
std::string StemOf(const MapInput& input);

}  // namespace app
