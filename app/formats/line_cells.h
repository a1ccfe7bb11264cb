// Small helpers that the readers of vendor texts share.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/formats/text.h"
#include "app/run_data.h"

namespace app {

// One dialect for a whole text, and the cells of its lines.
class LineCells {
 public:
  LineCells(const TextFile& file, Separator separator, char decimalMark = '.')
      : file_(file), separator_(separator), decimalMark_(decimalMark) {}

  // Trimmed cells, empty ones at the end dropped. Valid until the next call.
  const std::vector<std::string_view>& Of(std::size_t line);
  // The number in a cell; nothing where it holds none.
  std::optional<double> Number(std::string_view cell) const {
    return ParseNumber(cell, decimalMark_);
  }
  // The number in a cell of the line last asked for. Fails where there is none.
  double Need(std::size_t line, std::size_t cell) const;
  void SetDecimalMark(char mark) { decimalMark_ = mark; }

 private:
  const TextFile& file_;
  Separator separator_;
  char decimalMark_;
  std::vector<std::string_view> cells_;
  CellStorage storage_;
};

// Fails where `timeS` lies beyond kMaxTimeS, or before the last one of `timesS`; appends it.
void AppendTime(const TextFile& file, std::size_t line, double timeS, std::vector<double>& timesS);

// A unit as it is written today: "C" is °C, "mVolts" mV, "uV" µV, "microAU" µAU, "RELATIVE
// ABUNDANCE" none; others as they are.
std::string PlainUnit(std::string_view unit);

}  // namespace app
