#include "app/formats/table.h"

#include <gtest/gtest.h>

namespace app {
namespace {

struct TableCase {
  const char* name;
  const char* text;
  const char* columns;  // the names, joined by |
  const char* cells;    // of all rows, joined by | and newlines; or the error's text
};

std::string Shown(const Table& table) {
  std::string shown;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    for (std::size_t column = 0; column < table.ColumnCount(); ++column) {
      shown += (column > 0 ? "|" : row > 0 ? "\n" : "") + std::string(table.Cell(row, column));
    }
  }
  return shown;
}

TEST(Table, FindsHeaderAndRows) {
  const TableCase cases[] = {
      {"commas", "a,b\n1,2\n3,4\n", "a|b", "1|2\n3|4"},
      {"decimal commas", "a;b\n1,5;2\n3,25;4\n", "a|b", "1,5|2\n3,25|4"},
      {"no header", "1\t2\n3\t4", "column 1|column 2", "1|2\n3|4"},
      {"text columns", "name,amount,note\nA,1,x\n\"B, C\",2,\n", "name|amount|note",
       "A|1|x\nB, C|2|"},
      {"numbers above the header", "10,,10\nt,u,v\n0,1,2\n1,,4\n2,5,6\n", "t|u|v",
       "0|1|2\n1||4\n2|5|6"},
      {"text around", "Report of 3 runs\n\nx,y\n1,2\n\n2,n.a.\nend of table\n", "x|y",
       "1|2\n2|n.a."},
      {"damaged row", "x,y\n1,2\n2,4;5\n3,4\n", "x|y", "1|2\n2|4;5\n3|4"},
      {"no table", "nothing\nto see", nullptr, "t.csv: holds no table of numbers"},
      {"empty", "", nullptr, "t.csv: holds no table of numbers"},
  };
  const std::string file = "t.csv";
  for (const TableCase& c : cases) {
    SCOPED_TRACE(c.name);
    try {
      const Table table(file, c.text);
      std::string columns;
      for (std::size_t i = 0; i < table.ColumnCount(); ++i) {
        columns += (i > 0 ? "|" : "") + table.ColumnName(i);
      }
      EXPECT_EQ(columns, c.columns != nullptr ? c.columns : "an error");
      EXPECT_EQ(Shown(table), c.cells);
    } catch (const FileError& error) {
      EXPECT_STREQ(error.what(), c.cells);
    }
  }
}

}  // namespace
}  // namespace app
