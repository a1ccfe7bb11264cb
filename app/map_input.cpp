#include "app/map_input.h"

#include <filesystem>

#include "app/demo_spectra.h"
#include "app/formats/header_words.h"
#include "app/formats/read_run.h"

namespace app {

void AddMapInput(CLI::App& command, MapInput& input) {
  command.add_option(
      "FILE", input.file,
      "File with signals at three wavelengths or more; without one, a generated run");
  command
      .add_option(
          "--time-unit", input.timeUnit,
          "Unit of the file's times instead of the one it states or suggests: ms, s, min, h")
      ->type_name("UNIT");
  AddAxisOptions(command, input.axes);
  command.add_option("--axis-unit", input.axisUnit, "Unit of the time axis: s, min, h")
      ->capture_default_str();
}

bool ReadMap(const MapInput& input, const MapPart& part, MapRun& map,
             std::vector<std::string>& notes, std::string& error) {
  ReadOptions read;
  if (!UnderstandAxisOptions(input.axes, read, error)) return false;
  read.timeUnit = TimeUnitOf(input.timeUnit);
  if (!input.timeUnit.empty() && read.timeUnit == TimeUnit::kUnknown) {
    error = "--time-unit: '" + input.timeUnit + "' is not one of ms, s, min, h";
    return false;
  }
  const TimeUnit axis = TimeUnitOf(input.axisUnit);
  if (axis == TimeUnit::kUnknown || axis == TimeUnit::kMillisecond) {
    error = "--axis-unit: '" + input.axisUnit + "' is not one of s, min, h";
    return false;
  }
  RunData run;
  if (input.file.empty()) {
    run = DemoSpectra();
  } else if (!ReadRun(input.file, read, run, error)) {
    return false;
  }
  if (!MakeMapRun(run, part, map, error)) {
    if (!input.file.empty()) error.insert(0, input.file + ": ");
    return false;
  }
  map.run->SetTimeUnit(axis == TimeUnit::kSecond   ? embedded::TimeUnit::kSeconds
                       : axis == TimeUnit::kMinute ? embedded::TimeUnit::kMinutes
                                                   : embedded::TimeUnit::kHours);
  notes = run.notes;
  return true;
}

std::string StemOf(const MapInput& input) {
  return input.file.empty() ? "generated run" : std::filesystem::path(input.file).stem().string();
}

}  // namespace app
