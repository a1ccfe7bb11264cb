// Tables of any content: named columns of text cells, some of them numbers.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/formats/text.h"

namespace app {

// Rows and columns count from 0. Cells and the file's name and text are borrowed.
class Table {
 public:
  // Finds the table in `text` (UTF-8): the rows with the same number of cells, at least two, under
  // the separator and decimal mark that give the most numbers within the first kMaxProbedRows
  // lines. Columns that are mostly numbers tell where it starts; the line above with as many cells
  // is the header. Blank lines and words after the last row do not count. Throws FileError for
  // a text without a table (or with a zero byte) and for a row with another number of cells.
  Table(const std::string& name, std::string_view text);

  static constexpr std::size_t kMaxProbedRows = 4096;

  std::size_t RowCount() const { return rowLines_.size(); }
  std::size_t ColumnCount() const { return names_.size(); }
  // The header's text; "column 3" where it has none.
  const std::string& ColumnName(std::size_t column) const { return names_[column]; }
  std::string_view Cell(std::size_t row, std::size_t column) const {
    return cells_[row * names_.size() + column];
  }
  // NaN for a missing value. Throws FileError for any other text.
  double Number(std::size_t row, std::size_t column) const;
  // Numbers and missing values only, and at least one number.
  bool IsNumeric(std::size_t column) const;

  // The column of that name, in any case, or of that number, from 1.
  std::optional<std::size_t> Find(std::string_view nameOrNumber) const;
  // The first of these names (in lower case) that a column has, alone or with a unit behind it, as
  // in "area (mAU*s)".
  std::optional<std::size_t> FindUsual(std::initializer_list<std::string_view> names) const;
  // Find, or a FileError that lists the columns.
  std::size_t Require(std::string_view nameOrNumber) const;

  // Throws FileError: "NAME:LINE: cause".
  [[noreturn]] void Fail(std::size_t row, const std::string& cause) const;

 private:
  struct Shape;
  bool Probe(Shape& best, Separator separator, char decimalMark);
  bool Fits(std::size_t line, const Shape& shape);
  std::size_t FirstRow(const Shape& shape);
  void ReadHeader(std::size_t firstRow);
  void ReadRows(std::size_t firstRow);
  bool HasNumber(std::size_t line);
  bool Split(std::size_t line);
  std::optional<double> Parse(std::string_view cell) const { return ParseNumber(cell, mark_); }

  TextFile file_;
  Separator separator_ = Separator::kTab;
  char mark_ = '.';
  std::vector<std::string> names_;
  std::vector<std::string_view> cells_;  // row after row
  std::vector<std::size_t> rowLines_;
  CellStorage storage_;
  std::vector<std::string_view> split_;  // cells of the line split last
};

}  // namespace app
