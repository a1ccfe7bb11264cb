#include "app/formats/table.h"

#include <gtest/gtest.h>

#include <cmath>

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
      {"blanks", "time value\n 0.5  7\n 1.0 8\n", "time|value", "0.5|7\n1.0|8"},
      {"no header", "1\t2\n3\t4", "column 1|column 2", "1|2\n3|4"},
      {"text columns", "name,amount,note\nA,1,x\n\"B, C\",2,\n", "name|amount|note",
       "A|1|x\nB, C|2|"},
      {"numbers in the header", "nm,200,202\n0,1,2\n1,3,4\n", "nm|200|202", "0|1|2\n1|3|4"},
      {"numbers above the header", "10,,10\nt,u,v\n0,1,2\n1,,4\n2,5,6\n", "t|u|v",
       "0|1|2\n1||4\n2|5|6"},
      {"text around", "Report of 3 runs\n\nx,y\n1,2\n\n2,n.a.\nend of table\n", "x|y",
       "1|2\n2|n.a."},
      {"short row", "x,y\n1,2\n2\n3,4\n", nullptr, "t.csv:3: expected 2 columns, found 1"},
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

TEST(Table, NumbersAndColumnsByName) {
  const std::string file = "t.csv";
  const Table table(file, "Amount,2nd,Area\n1,a,-\n2,b,3e2\n3,c,4\n");
  EXPECT_EQ(table.Find("amount"), 0u);
  EXPECT_EQ(table.Find("3"), 2u);
  EXPECT_EQ(table.Find("2nd"), 1u);
  EXPECT_FALSE(table.Find("4") || table.Find("0") || table.Find("2n"));
  EXPECT_TRUE(table.IsNumeric(0) && !table.IsNumeric(1) && table.IsNumeric(2));
  EXPECT_TRUE(std::isnan(table.Number(0, 2)));
  EXPECT_EQ(table.Number(1, 2), 300);
  EXPECT_THROW(table.Number(1, 1), FileError);
  EXPECT_THROW(table.Require("height"), FileError);
}

}  // namespace
}  // namespace app
