#include "app/amount_options.h"

#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/text.h"
#include "app/formats/window_table.h"

namespace app {
namespace {

constexpr double kHeight = 0;
constexpr double kSecond = 1;
constexpr double kMinute = 60;

// What the responses are, from the option or the header of their column: an area's time unit in
// seconds, or kHeight.
double ResponseUnitS(const std::string& option, const std::string& header) {
  if (option == "height") return kHeight;
  if (option == "area-min") return kMinute;
  if (option == "area-s") return kSecond;
  const ColumnHeader parts = ParseHeaderCell(header);
  if (Lower(parts.name) == "height") return kHeight;
  return Lower(parts.unit).find("min") != std::string::npos ? kMinute : kSecond;
}

}  // namespace

void AddAmountOptions(CLI::App& command, AmountTexts& texts) {
  command
      .add_option("--components", texts.windows,
                  "Table of components (name, time, window) that names the peaks; default: "
                  "STEM.components.csv beside a single file, where there is one")
      ->type_name("FILE");
  command
      .add_option("--calibration", texts.standards,
                  "Table of standards (component, amount, response; excluded) from which amounts "
                  "of the peaks of the same name are computed; may be given several times")
      ->allow_extra_args(false)
      ->type_name("FILE");
  command
      .add_option("--response", texts.response,
                  "What the standards' responses are: height, area-s or area-min (signal times "
                  "seconds or minutes), or auto (as their column's header says, else area-s)")
      ->check(CLI::IsMember({"auto", "height", "area-s", "area-min"}))
      ->capture_default_str();
  AddCurveOptions(command, texts.curve);
}

Quantification ReadQuantification(const AmountTexts& texts) {
  Quantification read;
  if (!texts.windows.empty()) read.windows = ReadWindows(texts.windows);
  std::optional<double> unitS;
  for (const std::string& file : texts.standards) {
    const StandardsTable table = ReadStandards(file, {"", "", texts.response == "height"});
    const double tableUnitS = ResponseUnitS(texts.response, table.responseHeader);
    if (unitS.value_or(tableUnitS) != tableUnitS) {
      throw FileError(file + ": responses of another kind than in " + texts.standards.front() +
                      " (--response says which they are)");
    }
    unitS = tableUnitS;
    for (const ComponentStandards& each : table.components) {
      read.calibrations.push_back(
          {each.name, file, each.standards, FitStandards(file, each, texts.curve)});
    }
  }
  read.areaUnitS = unitS.value_or(kSecond);
  return read;
}

}  // namespace app
