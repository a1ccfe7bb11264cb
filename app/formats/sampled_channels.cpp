#include "app/formats/sampled_channels.h"

#include <algorithm>
#include <map>

#include "app/formats/line_cells.h"
#include "app/formats/text.h"

namespace app {
namespace {

constexpr std::string_view kRate = "sampling rate:";
constexpr std::string_view kPoints = "total data points:";
constexpr std::size_t kMaxHeaderLines = 200;
constexpr std::size_t kMaxChannels = 1000;

bool IsNumber(std::string_view line) {
  line = Trim(line);
  return ParseNumber(line, '.') || ParseNumber(line, ',');
}

class SampledReader {
 public:
  SampledReader(const std::string& name, std::string_view text)
      : file_(name, text), cells_(file_, Separator::kTab) {}

  RunData Read() {
    ReadHeader();
    const std::size_t channels = static_cast<std::size_t>(
        std::count_if(keys_[std::string(kPoints)].begin(), keys_[std::string(kPoints)].end(),
                      [](const std::string& cell) { return IsNumber(cell); }));
    if (channels == 0) file_.Fail("states no number of data points");
    if (channels > kMaxChannels) file_.Fail("states more than 1000 channels");
    for (std::size_t i = 0; i < channels; ++i) ReadChannel(i);
    for (; line_ < file_.lines.size(); ++line_) {
      if (!Trim(file_.lines[line_]).empty()) file_.Fail(line_, "more data than stated");
    }
    return std::move(run_);
  }

 private:
  void ReadHeader() {
    for (; line_ < file_.lines.size() && !IsNumber(file_.lines[line_]); ++line_) {
      const auto& cells = cells_.Of(line_);
      if (cells.empty()) continue;
      const std::string key = Lower(cells[0]);
      keys_[key].assign(cells.begin() + 1, cells.end());
      keyLines_[key] = line_;
      if (cells.size() > 1) run_.metadata.emplace_back(cells[0], cells[1]);
    }
  }
  // The channel's cell of a header line; empty where there is none.
  std::string Cell(std::string_view key, std::size_t channel) const {
    const auto found = keys_.find(std::string(key));
    if (found == keys_.end() || channel >= found->second.size()) return {};
    return found->second[channel];
  }
  // The positive number in it, or `fallback` where the line is missing.
  double Number(std::string_view key, std::size_t channel, double fallback) const {
    const std::string cell = Cell(key, channel);
    if (cell.empty() && fallback > 0) return fallback;
    const std::optional<double> value = ParseNumber(cell, cell.find(',') == cell.npos ? '.' : ',');
    if (!value || *value <= 0) {
      const auto line = keyLines_.find(std::string(key));
      file_.Fail(line != keyLines_.end() ? line->second : 0,
                 "'" + std::string(key) + "' holds no number above 0 for channel " +
                     std::to_string(channel + 1));
    }
    return *value;
  }
  void ReadChannel(std::size_t channel);

  const TextFile file_;
  LineCells cells_;
  std::size_t line_ = 0;
  std::map<std::string, std::vector<std::string>> keys_;  // in lower case
  std::map<std::string, std::size_t> keyLines_;
  RunData run_;
};

void SampledReader::ReadChannel(std::size_t channel) {
  const double points = Number(kPoints, channel, 0);
  Trace trace;
  trace.name = "Ch " + std::to_string(channel + 1);
  trace.unit = PlainUnit(Cell("y axis title:", channel));
  trace.periodS = Number("x axis multiplier:", channel, 1) / Number(kRate, channel, 0);
  const double multiplier = Number("y axis multiplier:", channel, 1);
  for (; line_ < file_.lines.size() && static_cast<double>(trace.values.size()) < points; ++line_) {
    if (cells_.Of(line_).empty()) continue;
    trace.values.push_back(cells_.Need(line_, 0) * multiplier);
  }
  if (static_cast<double>(trace.values.size()) < points || trace.values.size() < 2) {
    file_.Fail("channel " + std::to_string(channel + 1) + " has " +
               std::to_string(trace.values.size()) + " of " + NumberText(points) + " samples");
  }
  if (trace.periodS * static_cast<double>(trace.values.size()) > kMaxTimeS) {
    file_.Fail("channel " + std::to_string(channel + 1) + " lasts longer than " +
               NumberText(kMaxTimeS) + " s");
  }
  run_.channels.push_back(std::move(trace));
}

}  // namespace

bool IsSampledChannels(std::string_view text) {
  bool rate = false;
  bool points = false;
  for (std::size_t i = 0; i < kMaxHeaderLines && !text.empty() && !(rate && points); ++i) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string line = Lower(text.substr(0, std::min<std::size_t>(end, 80)));
    rate = rate || line.starts_with(kRate);
    points = points || line.starts_with(kPoints);
    if (IsNumber(line)) break;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return rate && points;
}

RunData ReadSampledChannels(const std::string& name, std::string_view text) {
  return SampledReader(name, text).Read();
}

}  // namespace app
