#include "app/formats/table.h"
#include "app/formats/dialect.h"
#include "app/formats/header_words.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>

namespace app {

// Rows of one number of cells.
struct Table::Shape {
  std::size_t columns = 0;
  std::size_t rows = 0;
  std::size_t numbers = 0;
  std::vector<std::size_t> numbersIn;  // by column

  bool IsMostlyNumbers(std::size_t column) const { return 2 * numbersIn[column] > rows; }
};

Table::Table(const std::string& name, std::string_view text) : file_(name, text) {
  if (text.find('\0') != text.npos) file_.Fail("is not a text");
  Shape best;
  Dialect dialect = kDialects[0];
  for (const Dialect& tried : kDialects) {
    if (Probe(best, tried.separator, tried.decimalMark)) dialect = tried;
  }
  if (best.numbers == 0) file_.Fail("holds no table of numbers");
  separator_ = dialect.separator;
  mark_ = dialect.decimalMark;
  names_.resize(best.columns);
  const std::size_t first = FirstRow(best);
  ReadHeader(first);
  ReadRows(first);
}

// False for a blank line.
bool Table::Split(std::size_t line) {
  if (Trim(file_.lines[line]).empty()) return false;
  SplitCells(file_.lines[line], separator_, split_, storage_);
  return true;
}

// True, and the most frequent shape in `best`, where it holds more numbers than `best` did.
bool Table::Probe(Shape& best, Separator separator, char decimalMark) {
  separator_ = separator;
  mark_ = decimalMark;
  std::map<std::size_t, Shape> shapes;
  const std::size_t end = std::min(file_.lines.size(), kMaxProbedRows);
  for (std::size_t line = 0; line < end; ++line) {
    if (!Split(line) || split_.size() < 2) continue;
    Shape& shape = shapes[split_.size()];
    shape.columns = split_.size();
    shape.numbersIn.resize(shape.columns);
    ++shape.rows;
    for (std::size_t column = 0; column < shape.columns; ++column) {
      const bool isNumber = Parse(split_[column]).has_value();
      shape.numbersIn[column] += isNumber;
      shape.numbers += isNumber;
    }
  }
  bool better = false;
  for (auto& [columns, shape] : shapes) {
    if (shape.numbers <= best.numbers) continue;
    best = std::move(shape);
    better = true;
  }
  return better;
}

// A row with a number, and nothing but numbers and missing values in the columns of numbers.
bool Table::Fits(std::size_t line, const Shape& shape) {
  if (!Split(line) || split_.size() != shape.columns) return false;
  bool hasNumber = false;
  for (std::size_t column = 0; column < shape.columns; ++column) {
    const bool isNumber = Parse(split_[column]).has_value();
    hasNumber = hasNumber || isNumber;
    if (shape.IsMostlyNumbers(column) && !isNumber && !IsMissing(split_[column])) return false;
  }
  return hasNumber;
}

// A few rows of numbers above words belong to the header.
std::size_t Table::FirstRow(const Shape& shape) {
  const std::size_t end = file_.lines.size();
  const auto nextRow = [&](std::size_t line) {
    while (line < end && !Fits(line, shape)) ++line;
    return line;
  };
  std::size_t first = nextRow(0);
  std::size_t rows = 0;
  for (std::size_t line = first; line < end && rows <= kMaxHeaderRows; ++line) {
    if (Fits(line, shape)) {
      ++rows;
    } else if (Split(line) && !HasNumber(line)) {
      const std::size_t next = nextRow(line);
      if (next == end) break;
      first = line = next;
      rows = 1;
    }
  }
  if (first == end) file_.Fail("holds no table of numbers");
  return first;
}

void Table::ReadHeader(std::size_t firstRow) {
  std::size_t line = firstRow;
  while (line > 0 && !Split(line - 1)) --line;
  const bool hasHeader = line > 0 && split_.size() == names_.size();
  for (std::size_t column = 0; column < names_.size(); ++column) {
    if (hasHeader) names_[column] = split_[column];
    if (names_[column].empty()) names_[column] = "column " + std::to_string(column + 1);
  }
}

bool Table::HasNumber(std::size_t line) {
  return Split(line) && std::any_of(split_.begin(), split_.end(), [this](std::string_view cell) {
           return Parse(cell).has_value();
         });
}

void Table::ReadRows(std::size_t firstRow) {
  std::size_t end = file_.lines.size();
  while (!HasNumber(end - 1)) --end;
  for (std::size_t line = firstRow; line < end; ++line) {
    if (!Split(line)) continue;
    if (split_.size() != names_.size()) {
      file_.Fail(line, "expected " + std::to_string(names_.size()) + " columns, found " +
                           std::to_string(split_.size()));
    }
    cells_.insert(cells_.end(), split_.begin(), split_.end());
    rowLines_.push_back(line);
  }
}

double Table::Number(std::size_t row, std::size_t column) const {
  const std::string_view cell = Cell(row, column);
  if (const std::optional<double> value = Parse(cell)) return *value;
  if (IsMissing(cell)) return std::numeric_limits<double>::quiet_NaN();
  Fail(row, names_[column] + ": '" + std::string(cell.substr(0, 40)) + "' is not a number");
}

bool Table::IsNumeric(std::size_t column) const {
  bool hasNumber = false;
  for (std::size_t row = 0; row < RowCount(); ++row) {
    const std::string_view cell = Cell(row, column);
    const bool isNumber = Parse(cell).has_value();
    if (!isNumber && !IsMissing(cell)) return false;
    hasNumber = hasNumber || isNumber;
  }
  return hasNumber;
}

std::optional<std::size_t> Table::Find(std::string_view nameOrNumber) const {
  for (std::size_t column = 0; column < names_.size(); ++column) {
    if (Lower(names_[column]) == Lower(nameOrNumber)) return column;
  }
  std::size_t number = 0;
  const char* end = nameOrNumber.data() + nameOrNumber.size();
  const auto parsed = std::from_chars(nameOrNumber.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end || number < 1 || number > names_.size()) {
    return std::nullopt;
  }
  return number - 1;
}

std::optional<std::size_t> Table::FindUsual(std::initializer_list<std::string_view> names) const {
  for (const std::string_view name : names) {
    for (std::size_t column = 0; column < names_.size(); ++column) {
      const std::string whole = Lower(names_[column]);
      if (whole == name || ParseHeaderCell(whole).name == name) return column;
    }
  }
  return std::nullopt;
}

std::size_t Table::Require(std::string_view nameOrNumber) const {
  if (const std::optional<std::size_t> column = Find(nameOrNumber)) return *column;
  std::string list;
  for (const std::string& name : names_) list += (list.empty() ? "" : ", ") + name;
  file_.Fail("has no column '" + std::string(nameOrNumber) + "'; its columns are: " + list);
}

void Table::Fail(std::size_t row, const std::string& cause) const {
  file_.Fail(rowLines_[row], cause);
}

}  // namespace app
