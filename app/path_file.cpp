#include "app/path_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "app/formats/text.h"

namespace app {
namespace {

constexpr const char* kHeader = "end_s,low_nm,low_channel,high_nm,high_channel";
constexpr std::string_view kOpen = "open";
constexpr std::array<std::string_view, 3> kColumns = {"end_s", "low_nm", "high_nm"};

std::string Exact(double value) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

class PathReader {
 public:
  PathReader(const std::string& name, std::string_view text, const std::vector<double>& wavesNm)
      : file_(name, text), wavesNm_(wavesNm) {}

  // Throws FileError.
  void Read(SIPath& path) {
    for (std::size_t line = 0; line < file_.lines.size(); ++line) {
      if (Trim(file_.lines[line]).empty()) continue;
      SplitCells(file_.lines[line], Separator::kComma, cells_, storage_);
      if (cellCount_ == 0) {
        ReadHeader(line);
      } else {
        AddSegment(line, path);
      }
    }
    if (path.count == 0) file_.Fail("holds no segments");
    if (path.items[path.count - 1].endTime != kOpenEnd) {
      file_.Fail("the last segment does not end with '" + std::string(kOpen) + "'");
    }
  }

 private:
  void ReadHeader(std::size_t line) {
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      const auto found = std::find(cells_.begin(), cells_.end(), kColumns[i]);
      if (found == cells_.end()) {
        file_.Fail(line, "the header has no column '" + std::string(kColumns[i]) + "'");
      }
      columns_[i] = static_cast<std::size_t>(found - cells_.begin());
    }
    cellCount_ = cells_.size();
  }
  double Number(std::size_t line, std::size_t column) const {
    const std::string_view cell = cells_[columns_[column]];
    if (const auto value = ParseNumber(cell, '.')) return *value;
    file_.Fail(line, std::string(kColumns[column]) + ": '" + std::string(cell.substr(0, 40)) +
                         "' is not a number");
  }
  std::int16_t Channel(std::size_t line, std::size_t column) const {
    const double nm = Number(line, column);
    if (nm < wavesNm_.front() || nm > wavesNm_.back()) {
      file_.Fail(line, std::string(kColumns[column]) + ": " + NumberText(nm) +
                           " nm is not within the run's " + NumberText(wavesNm_.front()) + " to " +
                           NumberText(wavesNm_.back()) + " nm");
    }
    const auto nearer = [nm](double a, double b) { return std::abs(a - nm) < std::abs(b - nm); };
    const auto nearest = std::min_element(wavesNm_.begin(), wavesNm_.end(), nearer);
    return static_cast<std::int16_t>(nearest - wavesNm_.begin());
  }
  void AddSegment(std::size_t line, SIPath& path) {
    if (cells_.size() != cellCount_) {
      file_.Fail(line, "expected " + std::to_string(cellCount_) + " columns, found " +
                           std::to_string(cells_.size()));
    }
    const double before = path.count > 0 ? path.items[path.count - 1].endTime : 0.0;
    if (before == kOpenEnd) file_.Fail(line, "a segment behind the open one");
    SIPathItem item{Channel(line, 1), Channel(line, 2), kOpenEnd};
    if (cells_[columns_[0]] != kOpen) {
      item.endTime = Number(line, 0);
      if (!(item.endTime > before)) {
        file_.Fail(line, "end_s: " + NumberText(item.endTime) + " is not behind " +
                             NumberText(before) + ", where the segment begins");
      }
    }
    if (item.lowChannel > item.highChannel) file_.Fail(line, "low_nm is above high_nm");
    SIPathItem* const added = path.Insert(path.count);
    if (added == nullptr) throw std::bad_alloc();
    *added = item;
  }

  const TextFile file_;
  const std::vector<double>& wavesNm_;
  std::vector<std::string_view> cells_;
  CellStorage storage_;
  std::size_t cellCount_ = 0;  // of the header; 0 before it
  std::array<std::size_t, kColumns.size()> columns_{};
};

}  // namespace

std::string PathText(const SIPath& path, const std::vector<double>& wavesNm) {
  std::string text = std::string(kHeader) + '\n';
  for (int i = 0; i < path.count; ++i) {
    const SIPathItem& item = path.items[i];
    text += item.endTime < kOpenEnd ? Exact(item.endTime) : std::string(kOpen);
    for (const std::int16_t channel : {item.lowChannel, item.highChannel}) {
      text += ',' + Exact(wavesNm.at(static_cast<std::size_t>(channel))) + ',' +
              std::to_string(channel + 1);
    }
    text += '\n';
  }
  return text;
}

bool ParsePath(const std::string& name, std::string_view text, const std::vector<double>& wavesNm,
               SIPath& path, std::string& error) {
  SIPathHolder read;
  try {
    PathReader(name, text, wavesNm).Read(read);
  } catch (const FileError& failure) {
    error = failure.what();
    return false;
  }
  path.Swap(read);
  return true;
}

}  // namespace app
