#include "app/formats/peak_table.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"
#include "app/selection.h"

namespace app {
namespace {

enum class Column { kTime, kStart, kEnd, kName, kAmount, kArea, kHeight, kChannel };

struct ColumnWord {
  const char* word;
  Column column;
};
constexpr std::array kWords = {
    ColumnWord{"time", Column::kTime},      ColumnWord{"rt", Column::kTime},
    ColumnWord{"r.t.", Column::kTime},      ColumnWord{"r.time", Column::kTime},
    ColumnWord{"apex", Column::kTime},      ColumnWord{"retention time", Column::kTime},
    ColumnWord{"start", Column::kStart},    ColumnWord{"begin", Column::kStart},
    ColumnWord{"end", Column::kEnd},        ColumnWord{"stop", Column::kEnd},
    ColumnWord{"name", Column::kName},      ColumnWord{"compound", Column::kName},
    ColumnWord{"component", Column::kName}, ColumnWord{"substance", Column::kName},
    ColumnWord{"amount", Column::kAmount},  ColumnWord{"concentration", Column::kAmount},
    ColumnWord{"area", Column::kArea},      ColumnWord{"height", Column::kHeight},
    ColumnWord{"channel", Column::kChannel}};

struct FoundColumn {
  std::size_t index;
  double unitS;
  std::string unit;
};
using Columns = std::map<Column, FoundColumn>;

// A row as text: what stands before "=," is its key.
std::string_view WithoutKey(std::string_view line) {
  const std::size_t equals = line.find("=,");
  return equals != line.npos && equals < line.find(',') ? line.substr(equals + 2) : line;
}

Columns ColumnsOf(const std::vector<std::string_view>& cells) {
  Columns columns;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const ColumnHeader header = ParseHeaderCell(cells[i]);
    const std::string name = Lower(header.name);
    for (const ColumnWord& word : kWords) {
      if (name != word.word) continue;
      const double unitS = header.timeUnit == TimeUnit::kUnknown ? 60 : SecondsIn(header.timeUnit);
      columns.emplace(word.column, FoundColumn{i, unitS, header.unit});
    }
  }
  return columns;
}

class PeakTableReader {
 public:
  PeakTableReader(const std::string& name, std::string_view text, const RunData& run)
      : file_(name, text), run_(run) {}

  std::vector<Peak> Read() {
    std::size_t line = 0;
    while (line < file_.lines.size() && !FindHeader(line)) ++line;
    if (line == file_.lines.size()) file_.Fail("holds no table of peaks with their times");
    std::vector<Peak> peaks;
    for (++line; line < file_.lines.size(); ++line) {
      SplitCells(WithoutKey(file_.lines[line]), separator_, cells_, storage_);
      const bool isBlank = std::all_of(cells_.begin(), cells_.end(),
                                       [](std::string_view cell) { return cell.empty(); });
      if (isBlank) continue;
      if (cells_.size() < columnCount_) {
        file_.Fail(line, "expected " + std::to_string(columnCount_) + " columns, found " +
                             std::to_string(cells_.size()));
      }
      peaks.push_back(ReadPeak(line));
    }
    std::stable_sort(peaks.begin(), peaks.end(), [](const Peak& a, const Peak& b) {
      return std::pair(a.channel, a.apexS) < std::pair(b.channel, b.apexS);
    });
    return peaks;
  }

 private:
  bool FindHeader(std::size_t line) {
    for (const Separator separator : {Separator::kTab, Separator::kSemicolon, Separator::kComma}) {
      SplitCells(WithoutKey(file_.lines[line]), separator, cells_, storage_);
      columns_ = ColumnsOf(cells_);
      separator_ = separator;
      columnCount_ = cells_.size();
      if (cells_.size() >= 2 && columns_.contains(Column::kTime)) return true;
    }
    return false;
  }
  // The cell of a column; empty where there is none.
  std::string_view Cell(Column column) const {
    const auto found = columns_.find(column);
    return found != columns_.end() && found->second.index < cells_.size()
               ? cells_[found->second.index]
               : std::string_view();
  }
  std::optional<double> Number(std::size_t line, Column column) const {
    const std::string_view cell = Cell(column);
    if (IsMissing(cell)) return std::nullopt;
    const char mark = cell.find(',') == cell.npos ? '.' : ',';
    const std::optional<double> value = ParseNumber(cell, mark);
    if (!value) file_.Fail(line, "'" + std::string(cell.substr(0, 40)) + "' is not a number");
    return value;
  }
  std::optional<double> TimeS(std::size_t line, Column column) const {
    const std::optional<double> time = Number(line, column);
    if (!time) return std::nullopt;
    // Limits without a unit of their own are in that of the times.
    const double unitS = columns_.at(Column::kTime).unitS;
    return *time * unitS;
  }
  std::size_t ChannelIndex(std::size_t line) const {
    const std::string wish(Cell(Column::kChannel));
    if (wish.empty()) return 0;
    std::vector<std::size_t> found;
    std::string error;
    if (!FindTraces(run_.channels, {wish}, found, error)) file_.Fail(line, error);
    return found.front();
  }
  Peak ReadPeak(std::size_t line) const {
    const std::optional<double> apex = TimeS(line, Column::kTime);
    if (!apex) file_.Fail(line, "a peak without a time");
    Peak peak;
    peak.channel = ChannelIndex(line);
    peak.apexS = *apex;
    peak.startS = TimeS(line, Column::kStart);
    peak.endS = TimeS(line, Column::kEnd);
    if (peak.startS.value_or(*apex) > *apex || peak.endS.value_or(*apex) < *apex) {
      file_.Fail(line, "the peak's start, time and end are not in this order");
    }
    peak.name = Cell(Column::kName);
    peak.amount = Number(line, Column::kAmount);
    if (columns_.contains(Column::kAmount)) peak.amountUnit = columns_.at(Column::kAmount).unit;
    peak.area = Number(line, Column::kArea);
    peak.height = Number(line, Column::kHeight);
    return peak;
  }

  const TextFile file_;
  const RunData& run_;
  Separator separator_ = Separator::kComma;
  std::size_t columnCount_ = 0;
  Columns columns_;
  std::vector<std::string_view> cells_;
  CellStorage storage_;
};

}  // namespace

bool ReadPeakTable(const std::string& path, const RunData& run, std::vector<Peak>& peaks,
                   std::string& error) {
  try {
    const std::string text = DecodeText(ReadBytes(path));
    peaks = PeakTableReader(path, text, run).Read();
    return true;
  } catch (const FileError& failure) {
    error = failure.what();
    return false;
  }
}

}  // namespace app
