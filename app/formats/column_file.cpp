#include "app/formats/column_file.h"
#include "app/formats/dialect.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/text.h"

namespace app {
namespace {

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

bool IsBlankLine(std::string_view line) { return Trim(line).empty(); }

// Words, not a damaged row of numbers.
bool IsWords(std::string_view line) {
  line = Trim(line);
  return !line.empty() && std::string_view("0123456789+-.,").find(line.front()) == line.npos;
}

class ColumnReader {
 public:
  ColumnReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : options_(options), file_(name, text) {}

  RunData Read() {
    FindTable();
    ReadHeader();
    ReadRows();
    ChooseTime();
    MakeTraces();
    return std::move(run_);
  }

 private:
  // The line's cells in the dialect; views stay valid until the next call.
  const std::vector<std::string_view>& Cells(std::size_t line, Separator separator) {
    SplitCells(lines_[line], separator, cells_, storage_);
    return cells_;
  }
  // True for a row of numbers and missing values that begins with a number.
  bool IsRow(std::size_t line, const Dialect& dialect) {
    const auto& cells = Cells(line, dialect.separator);
    if (cells.size() < 2 || !ParseNumber(cells[0], dialect.decimalMark)) return false;
    return std::all_of(cells.begin(), cells.end(), [&dialect](std::string_view cell) {
      return IsMissing(cell) || ParseNumber(cell, dialect.decimalMark);
    });
  }
  // A row with the table's number of cells.
  bool FitsTable(std::size_t line) {
    return IsRow(line, dialect_) && UsedCells(cells_) == columnCount_;
  }
  // First number of the row last looked at.
  double FirstCell() const { return ParseNumber(cells_[0], dialect_.decimalMark).value_or(0); }
  // Cells up to the table's last column; more only where they are not empty.
  std::size_t UsedCells(const std::vector<std::string_view>& cells) const {
    std::size_t used = cells.size();
    while (used > columnCount_ && cells[used - 1].empty()) --used;
    return used;
  }

  void FindTable();
  bool Probe(const Dialect& dialect, std::size_t& rows);
  std::size_t FirstRow();
  [[noreturn]] void FailWithoutTable();
  void ReadHeader();
  void JoinUnits();
  std::vector<ColumnHeader> HeaderOf(std::size_t line);
  void ReadMetadata(std::size_t end);
  void ReadRows();
  bool IsClosingText(std::size_t line);
  bool EndsTable(std::size_t line);
  void ReadRow(std::size_t line);
  void ChooseTime();
  bool IsCount(std::size_t column) const;
  double StepFactor(std::size_t column) const;
  void UseStepColumn(std::size_t column);
  TimeUnit AssumedUnit();
  std::vector<double> TimesS();
  void MakeTraces();
  void NameOnlyTrace(Trace& trace) const;
  void AddTrace(std::size_t column, const std::vector<double>& timesS);

  const ReadOptions& options_;
  const TextFile file_;
  const std::vector<std::string_view>& lines_ = file_.lines;
  std::vector<std::string_view> cells_;
  CellStorage storage_;

  Dialect dialect_ = kDialects[0];
  std::size_t columnCount_ = 0;  // up to the last one that holds a value
  std::size_t cellCount_ = 0;    // of a row, empty cells at its end included
  std::size_t firstRow_ = 0;     // line
  std::vector<ColumnHeader> header_;
  std::vector<std::vector<double>> columns_;
  std::vector<std::size_t> rowLine_;  // line of each row
  std::size_t timeColumn_ = 0;
  bool counted_ = false;  // the time column numbers the samples
  TimeUnit timeUnit_ = TimeUnit::kUnknown;
  RunData run_;
};

// Rows of the most frequent shape. Sets columnCount_ where there are more rows than in `rows`.
bool ColumnReader::Probe(const Dialect& dialect, std::size_t& rows) {
  struct Shape {
    std::size_t rows = 0;
    std::size_t used = 0;  // columns up to the last one with a value
  };
  std::map<std::size_t, Shape> shapes;
  const std::size_t end = std::min<std::size_t>(lines_.size(), kMaxProbedLines);
  for (std::size_t line = 0; line < end; ++line) {
    if (!IsRow(line, dialect)) continue;
    Shape& shape = shapes[cells_.size()];
    ++shape.rows;
    std::size_t used = cells_.size();
    while (used > 0 && cells_[used - 1].empty()) --used;
    shape.used = std::max(shape.used, used);
  }
  const auto best = std::max_element(
      shapes.begin(), shapes.end(), [](auto& a, auto& b) { return a.second.rows < b.second.rows; });
  if (best == shapes.end() || best->second.rows <= rows || best->second.used < 2) return false;
  rows = best->second.rows;
  columnCount_ = best->second.used;
  cellCount_ = best->first;
  return true;
}

void ColumnReader::FindTable() {
  std::size_t rows = 0;
  for (const Dialect& dialect : kDialects) {
    if (Probe(dialect, rows)) dialect_ = dialect;
  }
  if (rows == 0) FailWithoutTable();
  firstRow_ = FirstRow();
}

// The first fitting row. A few rows before words belong to the header where the times start anew
// behind the words; where they go on, the words are a damaged row.
std::size_t ColumnReader::FirstRow() {
  std::size_t first = lines_.size();
  std::size_t rows = 0;
  double time = 0;
  for (std::size_t line = 0; line < lines_.size() && rows <= kMaxHeaderRows; ++line) {
    if (FitsTable(line)) {
      if (rows++ == 0) first = line;
      time = FirstCell();
    } else if (rows > 0 && IsWords(lines_[line])) {
      while (line + 1 < lines_.size() && !FitsTable(line + 1)) ++line;
      if (line + 1 == lines_.size() || FirstCell() > time) break;
      rows = 0;
    }
  }
  // Lines of numbers right above, of another shape, are damaged rows and not a header.
  for (std::size_t line = first; line > 0;) {
    --line;
    if (IsBlankLine(lines_[line])) continue;
    const auto& cells = Cells(line, dialect_.separator);
    if (cells.size() < 2 || !ParseNumber(cells[0], dialect_.decimalMark)) break;
    first = line;
  }
  return first;
}

void ColumnReader::FailWithoutTable() {
  for (std::size_t line = 0; line < lines_.size(); ++line) {
    const std::string_view text = Trim(lines_[line]);
    if (ParseNumber(text, '.') || ParseNumber(text, ',')) {
      file_.Fail(line, "expected 2 columns, found 1");
    }
  }
  file_.Fail("holds no table of times and values");
}

// "Time (min)  Signal (mV)": a unit belongs to the word before it.
void ColumnReader::JoinUnits() {
  std::vector<std::string_view> joined;
  for (const std::string_view cell : cells_) {
    const bool isUnit = cell.starts_with('(') || cell.starts_with('[');
    if (isUnit && !joined.empty()) {
      storage_.push_back(std::string(joined.back()) + ' ' + std::string(cell));
      joined.back() = storage_.back();
    } else {
      joined.push_back(cell);
    }
  }
  cells_ = std::move(joined);
}

// A comment mark before the words of a header is not part of them.
std::vector<ColumnHeader> ColumnReader::HeaderOf(std::size_t line) {
  std::string_view text = Trim(lines_[line]);
  const std::string_view whole = text;
  while (!text.empty() && std::string_view("#%;/!").find(text.front()) != text.npos &&
         !(text.front() == '%' && text.size() > 1 && text[1] != ' ')) {
    text = Trim(text.substr(1));
  }
  const bool commented = text.size() != whole.size();
  const auto split = [&](Separator separator) {
    SplitCells(commented ? text : lines_[line], separator, cells_, storage_);
    return UsedCells(cells_) == columnCount_ || cells_.size() == cellCount_;
  };
  std::vector<ColumnHeader> header;
  bool fits = split(dialect_.separator);
  if (!fits && dialect_.separator == Separator::kBlanks) {
    JoinUnits();
    fits = cells_.size() == columnCount_;
  }
  if (!fits) return header;
  for (std::size_t i = 0; i < columnCount_; ++i) header.push_back(ParseHeaderCell(cells_[i]));
  return header;
}

void ColumnReader::ReadHeader() {
  std::size_t line = firstRow_;
  const auto previous = [&] {
    while (line > 0 && IsBlankLine(lines_[line - 1])) --line;
    return line > 0;
  };
  std::size_t metadataEnd = firstRow_;
  if (previous()) {
    header_ = HeaderOf(--line);
    if (!header_.empty()) metadataEnd = line;
  }
  const bool onlyUnits =
      !header_.empty() && std::all_of(header_.begin(), header_.end(),
                                      [](const ColumnHeader& cell) { return cell.name.empty(); });
  if (onlyUnits && previous()) {
    const std::vector<ColumnHeader> names = HeaderOf(--line);
    if (!names.empty()) metadataEnd = line;
    for (std::size_t i = 0; i < names.size(); ++i) {
      header_[i].name = names[i].name;
      if (header_[i].unit.empty()) header_[i].unit = names[i].unit;
      if (header_[i].role != ColumnRole::kTime) header_[i].role = names[i].role;
    }
  }
  header_.resize(columnCount_);
  ReadMetadata(metadataEnd);
}

// "Key<separator>value" lines, and pairs of a row of quoted names above a row of values.
void ColumnReader::ReadMetadata(std::size_t end) {
  const auto isQuoted = [this](std::size_t line) { return Trim(lines_[line]).starts_with('"'); };
  for (std::size_t line = 0; line < end; ++line) {
    if (IsBlankLine(lines_[line])) continue;
    const std::vector<std::string_view> cells = Cells(line, dialect_.separator);
    if (isQuoted(line) && line + 1 < end && isQuoted(line + 1)) {
      const std::vector<std::string> keys(cells.begin(), cells.end());
      Cells(line + 1, dialect_.separator);
      for (std::size_t i = 0; i < std::min(keys.size(), cells_.size()); ++i) {
        run_.metadata.emplace_back(keys[i], cells_[i]);
      }
      ++line;
    } else if (cells.size() >= 2 && dialect_.separator != Separator::kBlanks) {
      run_.metadata.emplace_back(cells[0], cells[1]);
    } else {
      run_.metadata.emplace_back("", Trim(lines_[line]));
    }
  }
}

// True for words that are not a row of the table with its time missing.
bool ColumnReader::IsClosingText(std::size_t line) {
  if (!IsWords(lines_[line])) return false;
  const auto& cells = Cells(line, dialect_.separator);
  return UsedCells(cells) != columnCount_ ||
         std::none_of(cells.begin(), cells.end(), [this](std::string_view cell) {
           return IsMissing(cell) || ParseNumber(cell, dialect_.decimalMark);
         });
}

// True where nothing but closing text follows.
bool ColumnReader::EndsTable(std::size_t line) {
  for (; line < lines_.size(); ++line) {
    if (!IsBlankLine(lines_[line]) && !IsClosingText(line)) return false;
  }
  return true;
}

void ColumnReader::ReadRow(std::size_t line) {
  Cells(line, dialect_.separator);
  const std::size_t used = UsedCells(cells_);
  if (used != columnCount_) {
    file_.Fail(line, "expected " + std::to_string(columnCount_) + " columns, found " +
                         std::to_string(used));
  }
  for (std::size_t i = 0; i < columnCount_; ++i) {
    const std::optional<double> value = ParseNumber(cells_[i], dialect_.decimalMark);
    if (!value && !IsMissing(cells_[i])) {
      file_.Fail(line, "column " + std::to_string(i + 1) + ": '" +
                           std::string(cells_[i].substr(0, 40)) + "' is not a number");
    }
    columns_[i].push_back(value.value_or(kNoValue));
  }
  rowLine_.push_back(line);
}

void ColumnReader::ReadRows() {
  columns_.resize(columnCount_);
  for (auto& column : columns_) column.reserve(lines_.size() - firstRow_);
  rowLine_.reserve(lines_.size() - firstRow_);
  for (std::size_t line = firstRow_; line < lines_.size(); ++line) {
    if (IsBlankLine(lines_[line])) continue;
    if (EndsTable(line)) {
      run_.Note("text after the table, from line " + std::to_string(line + 1) + ", is not used");
      break;
    }
    ReadRow(line);
  }
  if (rowLine_.size() < 2) file_.Fail(firstRow_, "a single row of values makes no trace");
}

// Consecutive whole numbers from 0 or 1.
bool ColumnReader::IsCount(std::size_t column) const {
  const std::vector<double>& values = columns_[column];
  if (values[0] != 0 && values[0] != 1) return false;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] != values[0] + static_cast<double>(i)) return false;
  }
  return true;
}

void ColumnReader::ChooseTime() {
  const auto hasRole = [](ColumnRole role) {
    return [role](const ColumnHeader& cell) { return cell.role == role; };
  };
  const auto time = std::find_if(header_.begin(), header_.end(), hasRole(ColumnRole::kTime));
  if (std::count_if(time, header_.end(), hasRole(ColumnRole::kTime)) > 1) {
    file_.Fail(firstRow_,
               "several columns of times; signals with times of their own are not read yet");
  }
  if (time != header_.end()) {
    timeColumn_ = static_cast<std::size_t>(time - header_.begin());
  } else if (header_[0].role == ColumnRole::kIndex) {
    counted_ = true;
  } else if (columnCount_ >= 3 && header_[0].role == ColumnRole::kUnnamed &&
             header_[1].role == ColumnRole::kUnnamed && IsCount(0) && !IsCount(1) &&
             std::is_sorted(columns_[1].begin(), columns_[1].end()) &&
             columns_[1].front() < columns_[1].back()) {
    timeColumn_ = 1;
    header_[0].role = ColumnRole::kIndex;
  }
  header_[timeColumn_].role = ColumnRole::kTime;

  const std::vector<double>& times = columns_[timeColumn_];
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (std::isnan(times[i])) file_.Fail(rowLine_[i], "no time");
    if (i > 0 && times[i] < times[i - 1]) {
      file_.Fail(rowLine_[i], "time " + NumberText(times[i]) + " lies before the time above it, " +
                                  NumberText(times[i - 1]));
    }
  }
  if (times.front() == times.back()) file_.Fail(rowLine_.back(), "all times are the same");
}

// k where the column holds k times the time differences (in its first row nothing, or any number);
// 0 where it does not.
double ColumnReader::StepFactor(std::size_t column) const {
  const std::vector<double>& times = columns_[timeColumn_];
  const std::vector<double>& steps = columns_[column];
  for (const double factor : {60.0, 1000.0, 60'000.0, 1.0}) {
    bool fits = true;
    for (std::size_t i = 1; fits && i < times.size(); ++i) {
      const double expected = factor * (times[i] - times[i - 1]);
      fits = steps[i] > 0 && std::abs(steps[i] - expected) <= 0.05 * steps[i];
    }
    if (fits) return factor;
  }
  return 0;
}

// Marks a column that holds the time differences, and takes the time unit from it.
void ColumnReader::UseStepColumn(std::size_t column) {
  ColumnHeader& cell = header_[column];
  if (cell.role != ColumnRole::kStep && cell.role != ColumnRole::kUnnamed) return;
  const double factor = counted_ ? 0 : StepFactor(column);
  if (factor == 0) return;
  // A constant signal may equal the period by chance.
  const double first = columns_[column][0];
  if (factor == 1 && cell.role != ColumnRole::kStep && !std::isnan(first) && first != 0) return;
  cell.role = ColumnRole::kStep;
  if (header_[timeColumn_].timeUnit != TimeUnit::kUnknown) return;
  const double stepUnitS = cell.timeUnit != TimeUnit::kUnknown ? SecondsIn(cell.timeUnit)
                           : factor == 1                       ? 0
                           : factor == 60                      ? 1
                                                               : 0.001;
  for (const TimeUnit unit : {TimeUnit::kSecond, TimeUnit::kMinute, TimeUnit::kHour}) {
    if (std::abs(SecondsIn(unit) - stepUnitS * factor) > 1e-9) continue;
    timeUnit_ = unit;
    run_.Note(std::string("times are in ") + TimeUnitText(unit) + ", as the column of steps shows");
  }
}

TimeUnit ColumnReader::AssumedUnit() {
  if (counted_) {
    run_.Note("samples are numbered, not timed; one second per sample is assumed");
    return TimeUnit::kSecond;
  }
  const TimeUnit unit =
      AssumedTimeUnit(columns_[timeColumn_].front(), columns_[timeColumn_].back());
  run_.Note(AssumedUnitNote(unit));
  return unit;
}

std::vector<double> ColumnReader::TimesS() {
  const TimeUnit stated = header_[timeColumn_].timeUnit;
  if (options_.timeUnit != TimeUnit::kUnknown) {
    timeUnit_ = options_.timeUnit;
  } else if (stated != TimeUnit::kUnknown) {
    timeUnit_ = stated;
  } else if (timeUnit_ == TimeUnit::kUnknown) {
    timeUnit_ = AssumedUnit();
  }
  std::vector<double> timesS = columns_[timeColumn_];
  for (double& time : timesS) {
    time *= SecondsIn(timeUnit_);
    if (std::abs(time) > kMaxTimeS) {
      file_.Fail(rowLine_[static_cast<std::size_t>(&time - timesS.data())],
                 "time " + NumberText(time) + " s is beyond " + NumberText(kMaxTimeS) + " s");
    }
  }
  return timesS;
}

void ColumnReader::AddTrace(std::size_t column, const std::vector<double>& timesS) {
  const std::vector<double>& values = columns_[column];
  const auto hasValue = [](double value) { return !std::isnan(value); };
  const auto first = std::find_if(values.begin(), values.end(), hasValue);
  if (first == values.end()) return;
  const auto last = std::find_if(values.rbegin(), values.rend(), hasValue).base();
  const auto gap = std::find_if_not(first, last, hasValue);
  const auto row = [&values](auto at) { return static_cast<std::size_t>(at - values.begin()); };
  if (gap != last)
    file_.Fail(rowLine_[row(gap)], "column " + std::to_string(column + 1) + ": no value");

  Trace trace;
  trace.name = header_[column].name;
  trace.unit = header_[column].unit;
  trace.values.assign(first, last);
  trace.timesS.assign(timesS.begin() + (first - values.begin()),
                      timesS.begin() + (last - values.begin()));
  if (trace.timesS.front() == trace.timesS.back()) {
    file_.Fail(rowLine_[row(first)],
               "column " + std::to_string(column + 1) + ": values at a single time make no trace");
  }
  run_.channels.push_back(std::move(trace));
}

// "Value" and its like tell nothing about the only signal; what the file says about its channel
// does.
void ColumnReader::NameOnlyTrace(Trace& trace) const {
  static constexpr std::array kPlainNames = {"value", "signal", "intensity",
                                             "y",     "data",   "response"};
  const std::string name = Lower(trace.name);
  if (std::find(kPlainNames.begin(), kPlainNames.end(), name) != kPlainNames.end()) {
    trace.name.clear();
  }
  for (const auto& [key, value] : run_.metadata) {
    if (trace.name.empty() && Lower(key) == "channel") trace.name = value;
  }
}

void ColumnReader::MakeTraces() {
  for (std::size_t i = 0; columnCount_ >= 3 && i < columnCount_; ++i) {
    if (i != timeColumn_) UseStepColumn(i);
  }
  const std::vector<double> timesS = TimesS();
  for (std::size_t i = 0; i < columnCount_; ++i) {
    const ColumnRole role = header_[i].role;
    if (role == ColumnRole::kValue || role == ColumnRole::kUnnamed) AddTrace(i, timesS);
  }
  if (run_.channels.empty()) file_.Fail(firstRow_, "no column of values beside the times");
  if (run_.channels.size() == 1) NameOnlyTrace(run_.channels[0]);
}

}  // namespace

RunData ReadColumnFile(const std::string& name, std::string_view text, const ReadOptions& options) {
  return ColumnReader(name, text, options).Read();
}

}  // namespace app
