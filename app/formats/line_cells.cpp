#include "app/formats/line_cells.h"

#include <array>
#include <cmath>
#include <utility>

namespace app {

const std::vector<std::string_view>& LineCells::Of(std::size_t line) {
  SplitCells(file_.lines[line], separator_, cells_, storage_);
  while (!cells_.empty() && cells_.back().empty()) cells_.pop_back();
  return cells_;
}

double LineCells::Need(std::size_t line, std::size_t cell) const {
  if (cell >= cells_.size()) {
    file_.Fail(line, "expected " + std::to_string(cell + 1) + " columns, found " +
                         std::to_string(cells_.size()));
  }
  const std::optional<double> value = Number(cells_[cell]);
  if (!value) {
    file_.Fail(line, "column " + std::to_string(cell + 1) + ": '" +
                         std::string(cells_[cell].substr(0, 40)) + "' is not a number");
  }
  return *value;
}

void AppendTime(const TextFile& file, std::size_t line, double timeS, std::vector<double>& timesS) {
  if (std::abs(timeS) > kMaxTimeS) {
    file.Fail(line, "time " + NumberText(timeS) + " s is beyond " + NumberText(kMaxTimeS) + " s");
  }
  if (!timesS.empty() && timeS < timesS.back()) {
    file.Fail(line, "time " + NumberText(timeS) + " s lies before the time above it, " +
                        NumberText(timesS.back()) + " s");
  }
  timesS.push_back(timeS);
}

std::string PlainUnit(std::string_view unit) {
  using namespace std::string_view_literals;
  static constexpr std::array kUnits = {
      std::pair{"c"sv, "\u00B0C"sv},        std::pair{"volts"sv, "V"sv},
      std::pair{"volt"sv, "V"sv},           std::pair{"mvolts"sv, "mV"sv},
      std::pair{"uvolts"sv, "\u00B5V"sv},   std::pair{"microvolts"sv, "\u00B5V"sv},
      std::pair{"millivolts"sv, "mV"sv},    std::pair{"microau"sv, "\u00B5AU"sv},
      std::pair{"milliau"sv, "mAU"sv},      std::pair{"uv"sv, "\u00B5V"sv},
      std::pair{"us"sv, "\u00B5S"sv},       std::pair{"us/cm"sv, "\u00B5S/cm"sv},
      std::pair{"a.u."sv, "AU"sv},          std::pair{"relative abundance"sv, ""sv},
      std::pair{"arbitrary units"sv, ""sv},
  };
  unit = Trim(unit);
  const std::string lower = Lower(unit);
  for (const auto& [written, plain] : kUnits) {
    if (lower == written) return std::string(plain);
  }
  return std::string(unit);
}

}  // namespace app
