#include "app/formats/matrix_file.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

#include "app/formats/header_words.h"
#include "app/formats/table.h"
#include "app/formats/text.h"
#include "app/formats/wavelength.h"

namespace app {
namespace {

constexpr std::size_t kProbedBytes = 1 << 18;
constexpr std::size_t kMinEvenValues = 4;  // fewer may be even by chance

// "200", "200,5 nm", "0.5 min".
struct Measure {
  double value;
  std::string_view unit;
};
std::optional<Measure> ParseMeasure(std::string_view text) {
  const std::size_t end = text.find_last_of("0123456789.");
  if (end == text.npos) return std::nullopt;
  std::optional<double> value = ParseNumber(text.substr(0, end + 1), '.');
  if (!value) value = ParseNumber(text.substr(0, end + 1), ',');
  const std::string_view unit = Trim(text.substr(end + 1));
  const bool known = unit.empty() || unit == "nm" || TimeUnitOf(unit) != TimeUnit::kUnknown;
  return value && known ? std::optional(Measure{*value, unit}) : std::nullopt;
}

bool Ascends(std::span<const double> values) {
  return std::adjacent_find(values.begin(), values.end(), std::greater_equal<>()) == values.end();
}

bool IsEven(std::span<const double> values) {
  if (values.size() < kMinEvenValues) return false;
  const double step = (values.back() - values.front()) / static_cast<double>(values.size() - 1);
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (std::abs(values[i] - values[i - 1] - step) > 1e-3 * std::abs(step)) return false;
  }
  return step != 0;
}

bool AreWavelengths(std::span<const double> values) {
  const std::vector<double> reversed(values.rbegin(), values.rend());
  return values.size() >= 2 && (Ascends(values) || Ascends(reversed)) &&
         std::all_of(values.begin(), values.end(),
                     [](double nm) { return nm >= kLowestNm && nm <= kHighestNm; });
}

// Letters, lower case.
std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words(1);
  for (const char c : Lower(text)) {
    if ((c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80) {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  return words;
}

bool BeginsWithWavelength(std::string_view corner) {
  const std::string first = Words(corner)[0];
  return first == "nm" || first == "wl" || first == "\u03BB" || first.starts_with("wave") ||
         first == "lambda";
}

bool BeginsWithTime(std::string_view corner) {
  const std::string first = Words(corner)[0];
  return TimeUnitOf(first) != TimeUnit::kUnknown || first == "t" || first.starts_with("rt") ||
         first.starts_with("ret") || first.starts_with("tim") || first == "zeit";
}

TimeUnit UnitIn(std::string_view corner) {
  for (const std::string& word : Words(corner)) {
    if (const TimeUnit unit = TimeUnitOf(word); unit != TimeUnit::kUnknown) return unit;
  }
  return TimeUnit::kUnknown;
}

// A table of numbers with its edges.
class Matrix {
 public:
  Matrix(const std::string& name, std::string_view text) : name_(name), table_(name, text) {
    for (columns_ = table_.ColumnCount(); columns_ > 0 && IsEmpty(columns_ - 1);) --columns_;
  }

  [[noreturn]] void Fail(const std::string& cause) const { throw FileError(name_ + ": " + cause); }
  const Table& Cells() const { return table_; }
  std::size_t Columns() const { return columns_; }
  std::size_t Rows() const { return table_.RowCount(); }
  // Text in the corner, where the header has one.
  std::string Corner() const { return HeaderIsAxis() ? table_.ColumnName(0) : std::string(); }

  // The header, behind `first` cells, holds numbers.
  bool HeaderIsAxis(std::size_t first = 1) const {
    for (std::size_t i = first; i < columns_; ++i) {
      if (!ParseMeasure(table_.ColumnName(i))) return false;
    }
    return columns_ > first;
  }
  // The first row has an empty corner.
  bool FirstRowIsAxis() const { return IsMissing(table_.Cell(0, 0)); }

  double Value(std::size_t row, std::size_t column) const {
    const double value = table_.Number(row, column);
    if (std::isnan(value)) {
      table_.Fail(row, "column " + std::to_string(column + 1) + ": no value");
    }
    return value;
  }
  // Of the header or of row 0; nothing where a cell is no number.
  std::vector<Measure> Across(bool inHeader, std::size_t first) const {
    std::vector<Measure> values;
    for (std::size_t i = first; i < columns_; ++i) {
      const auto cell =
          ParseMeasure(inHeader ? std::string_view(table_.ColumnName(i)) : table_.Cell(0, i));
      if (!cell) return {};
      values.push_back(*cell);
    }
    return values;
  }
  std::vector<double> Down(std::size_t firstRow) const {
    std::vector<double> values;
    for (std::size_t row = firstRow; row < Rows(); ++row) values.push_back(Value(row, 0));
    return values;
  }

 private:
  bool IsEmpty(std::size_t column) const {
    for (std::size_t row = 0; row < table_.RowCount(); ++row) {
      if (!table_.Cell(row, column).empty()) return false;
    }
    return true;
  }

  const std::string& name_;
  Table table_;
  std::size_t columns_ = 0;
};

std::vector<double> ValuesOf(const std::vector<Measure>& cells) {
  std::vector<double> values;
  for (const Measure& cell : cells) values.push_back(cell.value);
  return values;
}

// What the edges of a matrix suggest where no option does.
struct Suggestion {
  bool isMatrix = false;  // one that the reader of columns does not understand
  TimesIn timesIn = TimesIn::kRows;
};

Suggestion Suggest(const Matrix& matrix) {
  if (matrix.Columns() < 3 || matrix.Rows() < 2) return {};
  const bool header = matrix.HeaderIsAxis();
  const bool numberInCorner = !header && !matrix.FirstRowIsAxis();
  const std::vector<Measure> cells = matrix.Across(header, 1);
  const std::vector<double> across = ValuesOf(cells);
  const std::vector<double> down = matrix.Down(header ? 0 : 1);
  if (numberInCorner && !IsEven(across)) return {};
  const bool timesAcross = !cells.empty() && Ascends(across) && cells.front().unit != "nm";
  const bool wavesDown =
      AreWavelengths(down) && (!numberInCorner || IsEven(down)) && !BeginsWithTime(matrix.Corner());
  if (!AreWavelengths(across) || TimeUnitOf(cells.front().unit) != TimeUnit::kUnknown) {
    return {wavesDown && timesAcross, TimesIn::kColumns};
  }
  if (wavesDown && BeginsWithWavelength(matrix.Corner())) return {true, TimesIn::kColumns};
  return {numberInCorner, TimesIn::kRows};
}

// "200:400:2" or its count; fails where it does not fit.
std::vector<double> Spread(const Matrix& matrix, const StatedAxis& axis, std::size_t count,
                           const char* what) {
  const double span = axis.to - axis.from;
  if (axis.step) {
    const double steps = std::abs(span / *axis.step);
    if (std::abs(steps - std::round(steps)) > 0.01) {
      matrix.Fail("steps of " + NumberText(std::abs(*axis.step)) + " do not lead from " +
                  NumberText(axis.from) + " to " + NumberText(axis.to));
    }
    if (std::abs(steps + 1 - static_cast<double>(count)) > 0.01) {
      matrix.Fail("holds " + std::to_string(count) + " " + what + ", not the " +
                  NumberText(std::round(steps) + 1) + " from " + NumberText(axis.from) + " to " +
                  NumberText(axis.to) + " by " + NumberText(std::abs(*axis.step)));
    }
  }
  std::vector<double> values(count);
  for (std::size_t i = 0; i < count; ++i) {
    values[i] = axis.from + span * static_cast<double>(i) / static_cast<double>(count - 1);
  }
  return values;
}

class MatrixReader {
 public:
  MatrixReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : options_(options), matrix_(name, text) {}

  RunData Read() {
    FindEdges();
    const std::vector<double> across = Across();
    const std::vector<double> down = Down();
    const bool rows = timesIn_ == TimesIn::kRows;
    const std::vector<double> timesS = TimesS(rows ? down : across);
    CheckWavelengths(rows ? across : down);
    MakeTraces(rows ? across : down, timesS);
    return std::move(run_);
  }

 private:
  // The stated axis of one direction.
  const std::optional<StatedAxis>& Stated(TimesIn timesAreThere) const {
    return timesIn_ == timesAreThere ? options_.timesS : options_.wavelengthsNm;
  }
  const char* What(TimesIn timesAreThere) const {
    return timesIn_ == timesAreThere ? "times" : "wavelengths";
  }
  TimesIn Guess() const;
  void FindEdges();
  std::vector<double> Across();
  std::vector<double> Down() const;
  std::vector<double> TimesS(std::vector<double> times);
  void CheckWavelengths(const std::vector<double>& nm) const;
  void MakeTraces(const std::vector<double>& nm, const std::vector<double>& timesS);

  const ReadOptions& options_;
  const Matrix matrix_;
  TimesIn timesIn_ = TimesIn::kRows;
  bool axisInHeader_ = false;
  std::size_t firstRow_ = 0;  // of values
  std::size_t firstColumn_ = 0;
  TimeUnit cellUnit_ = TimeUnit::kUnknown;
  RunData run_;
};

// With one axis stated, the other one's values tell; with both, a step does.
TimesIn MatrixReader::Guess() const {
  const auto fits = [this](std::size_t count) {
    const std::optional<StatedAxis>& nm = options_.wavelengthsNm;
    return nm && nm->step &&
           std::abs(std::abs((nm->to - nm->from) / *nm->step) + 1 - static_cast<double>(count)) <
               0.01;
  };
  if (options_.wavelengthsNm) {
    const std::size_t rows = matrix_.Rows() - (options_.timesS || matrix_.HeaderIsAxis() ? 0 : 1);
    const std::size_t columns = matrix_.Columns() - (options_.timesS ? 0 : 1);
    return fits(rows) && !fits(columns) ? TimesIn::kColumns : TimesIn::kRows;
  }
  if (!options_.timesS) return Suggest(matrix_).timesIn;
  return AreWavelengths(matrix_.Down(0)) ? TimesIn::kColumns : TimesIn::kRows;
}

void MatrixReader::FindEdges() {
  timesIn_ = options_.timesIn != TimesIn::kUnknown ? options_.timesIn : Guess();
  firstColumn_ = Stated(TimesIn::kRows) ? 0 : 1;
  if (!Stated(TimesIn::kColumns)) {
    axisInHeader_ = matrix_.HeaderIsAxis(firstColumn_);
    firstRow_ = axisInHeader_ ? 0 : 1;
  }
  if (matrix_.Columns() < firstColumn_ + 2 || matrix_.Rows() < firstRow_ + 2) {
    matrix_.Fail("holds fewer than two times or two wavelengths");
  }
}

std::vector<double> MatrixReader::Across() {
  if (const auto& stated = Stated(TimesIn::kColumns)) {
    return Spread(matrix_, *stated, matrix_.Columns() - firstColumn_, What(TimesIn::kColumns));
  }
  const std::vector<Measure> cells = matrix_.Across(axisInHeader_, firstColumn_);
  if (cells.empty()) {
    matrix_.Fail(std::string("the first row holds no ") + What(TimesIn::kColumns));
  }
  cellUnit_ = TimeUnitOf(cells.front().unit);
  return ValuesOf(cells);
}

std::vector<double> MatrixReader::Down() const {
  if (const auto& stated = Stated(TimesIn::kRows)) {
    return Spread(matrix_, *stated, matrix_.Rows() - firstRow_, What(TimesIn::kRows));
  }
  return matrix_.Down(firstRow_);
}

std::vector<double> MatrixReader::TimesS(std::vector<double> times) {
  TimeUnit unit = TimeUnit::kSecond;  // stated ones
  if (!options_.timesS) {
    unit = options_.timeUnit;
    if (unit == TimeUnit::kUnknown) unit = cellUnit_;
    if (unit == TimeUnit::kUnknown) unit = UnitIn(matrix_.Corner());
    if (unit == TimeUnit::kUnknown) {
      unit = AssumedTimeUnit(times.front(), times.back());
      run_.Note(AssumedUnitNote(unit));
    }
  }
  for (std::size_t i = 0; i < times.size(); ++i) {
    const std::string number = "time " + std::to_string(i + 1);
    if (i > 0 && times[i] < times[i - 1]) {
      matrix_.Fail(number + ", " + NumberText(times[i]) + ", lies before the one in front of it, " +
                   NumberText(times[i - 1]));
    }
    if (!(std::abs(times[i] * SecondsIn(unit)) <= kMaxTimeS)) {
      matrix_.Fail(number + ", " + NumberText(times[i] * SecondsIn(unit)) + " s, is beyond " +
                   NumberText(kMaxTimeS) + " s");
    }
  }
  if (times.front() == times.back()) matrix_.Fail("all times are the same");
  for (double& time : times) time *= SecondsIn(unit);
  return times;
}

void MatrixReader::CheckWavelengths(const std::vector<double>& nm) const {
  for (std::size_t i = 0; i < nm.size(); ++i) {
    if (nm[i] > 0) continue;
    matrix_.Fail("wavelength " + std::to_string(i + 1) + ", " + NumberText(nm[i]) +
                 ", is not above 0");
  }
}

void MatrixReader::MakeTraces(const std::vector<double>& nm, const std::vector<double>& timesS) {
  for (std::size_t w = 0; w < nm.size(); ++w) {
    Trace trace;
    trace.name = WavelengthName(nm[w]);
    trace.timesS = timesS;
    trace.values.resize(timesS.size());
    for (std::size_t t = 0; t < timesS.size(); ++t) {
      const bool rows = timesIn_ == TimesIn::kRows;
      trace.values[t] = matrix_.Value(firstRow_ + (rows ? t : w), firstColumn_ + (rows ? w : t));
    }
    run_.channels.push_back(std::move(trace));
  }
}

}  // namespace

bool IsMatrixFile(const std::string& name, std::string_view text, const ReadOptions& options) {
  if (options.SayMatrix()) return true;
  if (text.size() > kProbedBytes) {
    text = text.substr(0, text.find_last_of("\r\n", kProbedBytes) + 1);
  }
  try {
    return Suggest(Matrix(name, text)).isMatrix;
  } catch (const FileError&) {
    return false;  // no table: for others to tell why
  }
}

RunData ReadMatrixFile(const std::string& name, std::string_view text, const ReadOptions& options) {
  return MatrixReader(name, text, options).Read();
}

}  // namespace app
