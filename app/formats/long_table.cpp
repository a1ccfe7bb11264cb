#include "app/formats/long_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"

namespace app {
namespace {

constexpr std::array kSignalNames = {"detector", "channel", "signal", "trace"};
constexpr std::array kValueNames = {"intensity", "value", "response", "absorbance", "signal value"};

constexpr std::size_t kProbedBytes = 4096;
constexpr std::array kSeparators = {Separator::kTab, Separator::kSemicolon, Separator::kComma};

template <typename Names>
bool IsOneOf(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

struct Columns {
  std::size_t time = 0;
  std::size_t value = 0;
  std::size_t signal = 0;
  std::size_t count = 0;
  ColumnHeader timeHeader;
  ColumnHeader valueHeader;
  Separator separator = Separator::kTab;
};

std::optional<Columns> FindColumns(const TextFile& file) {
  if (file.lines.empty()) return std::nullopt;
  for (const Separator separator : kSeparators) {
    LineCells cells(file, separator);
    std::optional<std::size_t> time;
    std::optional<std::size_t> value;
    std::optional<std::size_t> signal;
    std::vector<ColumnHeader> headers;
    for (const std::string_view cell : cells.Of(0)) {
      const std::size_t i = headers.size();
      headers.push_back(ParseHeaderCell(cell));
      const std::string name = Lower(headers.back().name);
      if (!time && headers.back().role == ColumnRole::kTime) {
        time = i;
      } else if (!value && IsOneOf(kValueNames, name)) {
        value = i;
      } else if (!signal && IsOneOf(kSignalNames, name)) {
        signal = i;
      }
    }
    if (time && value && signal) {
      return Columns{*time,          *value,          *signal,  headers.size(),
                     headers[*time], headers[*value], separator};
    }
  }
  return std::nullopt;
}

}  // namespace

bool IsLongTable(std::string_view text) {
  // The header and the first row, with some room for blank lines.
  const std::string name;
  const TextFile file(name, text.substr(0, kProbedBytes));
  const std::optional<Columns> columns = FindColumns(file);
  if (!columns) return false;
  LineCells cells(file, columns->separator);
  for (std::size_t line = 1; line < file.lines.size(); ++line) {
    const auto& row = cells.Of(line);
    if (row.empty()) continue;
    // A column of numbers is a signal, not the name of one.
    return columns->signal < row.size() && !cells.Number(row[columns->signal]);
  }
  return false;
}

RunData ReadLongTable(const std::string& name, std::string_view text, const ReadOptions& options) {
  const TextFile file(name, text);
  const Columns columns = *FindColumns(file);
  LineCells cells(file, columns.separator);
  RunData run;
  std::map<std::string, std::size_t, std::less<>> indexOf;
  double latest = 0;
  for (std::size_t line = 1; line < file.lines.size(); ++line) {
    const auto& row = cells.Of(line);
    if (row.empty()) continue;
    if (row.size() != columns.count) {
      file.Fail(line, "expected " + std::to_string(columns.count) + " columns, found " +
                          std::to_string(row.size()));
    }
    if (line == 1 && !cells.Number(row[columns.time])) cells.SetDecimalMark(',');
    const std::string_view signal = row[columns.signal];
    auto found = indexOf.find(signal);
    if (found == indexOf.end()) {
      found = indexOf.emplace(signal, run.channels.size()).first;
      run.channels.emplace_back();
      run.channels.back().name = signal;
      run.channels.back().unit = columns.valueHeader.unit;
    }
    Trace& trace = run.channels[found->second];
    trace.values.push_back(cells.Need(line, columns.value));
    // In the file's unit until all of them are known.
    AppendTime(file, line, cells.Need(line, columns.time), trace.timesS);
    latest = std::max(latest, std::abs(trace.timesS.back()));
  }
  if (run.channels.empty()) file.Fail("holds no samples");
  TimeUnit unit = columns.timeHeader.timeUnit;
  if (options.timeUnit != TimeUnit::kUnknown) unit = options.timeUnit;
  if (unit == TimeUnit::kUnknown) {
    unit = AssumedTimeUnit(0, latest);
    run.Note(AssumedUnitNote(unit));
  }
  if (latest * SecondsIn(unit) > kMaxTimeS) {
    file.Fail("holds times beyond " + NumberText(kMaxTimeS) + " s");
  }
  for (Trace& trace : run.channels) {
    for (double& time : trace.timesS) time *= SecondsIn(unit);
    if (trace.timesS.front() == trace.timesS.back()) {
      file.Fail("'" + trace.name + "' has values at a single time");
    }
  }
  return run;
}

}  // namespace app
