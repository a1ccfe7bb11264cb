#include "app/formats/section_report.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"

namespace app {
namespace {

constexpr std::size_t kProbedLines = 60;

// "[LC Chromatogram(Detector A-Ch1)]": kind "LC Chromatogram", of "Detector A-Ch1".
struct Heading {
  std::string_view kind;
  std::string_view of;
};

bool IsHeading(std::string_view line) {
  line = Trim(line);
  return line.size() > 2 && line.front() == '[' && line.back() == ']';
}

Heading ParseHeading(std::string_view line) {
  line = Trim(line);
  line = line.substr(1, line.size() - 2);
  const std::size_t open = line.find('(');
  if (open == std::string_view::npos || line.back() != ')') return {line, {}};
  return {Trim(line.substr(0, open)), Trim(line.substr(open + 1, line.size() - open - 2))};
}

Separator SeparatorOf(const std::vector<std::string_view>& lines) {
  std::array<std::pair<Separator, int>, 3> counts = {
      {{Separator::kTab, 0}, {Separator::kSemicolon, 0}, {Separator::kComma, 0}}};
  for (std::size_t i = 0; i < std::min(lines.size(), kProbedLines); ++i) {
    if (IsHeading(lines[i])) continue;
    for (std::size_t k = 0; k < counts.size(); ++k) {
      if (lines[i].find("\t;,"[k]) != std::string_view::npos) ++counts[k].second;
    }
  }
  return std::max_element(counts.begin(), counts.end(),
                          [](auto& a, auto& b) { return a.second < b.second; })
      ->first;
}

// Tables of peaks stand before the traces; the traces' own headers tell the mark.
char DecimalMarkOf(const std::vector<std::string_view>& lines) {
  for (const std::string_view line : lines) {
    const std::string key = Lower(line.substr(0, 20));
    if (!key.starts_with("start time") && !key.starts_with("intensity multip")) continue;
    const std::size_t mark = line.find_last_of(".,");
    if (mark != line.npos && mark + 1 < line.size()) return line[mark];
  }
  return '.';
}

// A trace section's lines before its table.
struct TraceKeys {
  std::string unit;
  double multiplier = 1;
  std::optional<double> points;
  std::string wavelengths;
};

class SectionReader {
 public:
  SectionReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : options_(options), file_(name, text), cells_(file_, SeparatorOf(file_.lines)) {
    // A comma between cells is none inside of numbers.
    if (SeparatorOf(file_.lines) != Separator::kComma) {
      cells_.SetDecimalMark(DecimalMarkOf(file_.lines));
    }
  }

  RunData Read() {
    std::size_t line = 0;
    while (line < file_.lines.size()) {
      const std::size_t heading = line;
      std::size_t end = line + 1;
      while (end < file_.lines.size() && !IsHeading(file_.lines[end])) ++end;
      if (IsHeading(file_.lines[heading])) ReadSection(heading, end);
      line = end;
    }
    if (run_.channels.empty()) file_.Fail("holds no section with a chromatogram");
    AssignPeaks();
    return std::move(run_);
  }

 private:
  void ReadSection(std::size_t heading, std::size_t end);
  void ReadTrace(std::size_t heading, std::size_t end, bool auxiliary);
  bool ReadKey(std::size_t line, TraceKeys& keys);
  void ReadRows(std::size_t line, std::size_t end, double unitS, double multiplier, Trace& trace);
  void ReadPeaks(std::size_t heading, std::size_t end);
  void ReadPeak(std::size_t line, const std::map<std::string, std::size_t>& columns,
                std::string_view of);
  void AssignPeaks();
  std::optional<double> Optional(const std::map<std::string, std::size_t>& columns,
                                 const char* column) const;

  struct PendingPeak {
    Peak peak;
    std::string of;
  };

  const ReadOptions& options_;
  const TextFile file_;
  LineCells cells_;
  const std::vector<std::string_view>* row_ = nullptr;
  RunData run_;
  std::vector<std::string> detectors_;  // of the channels
  std::vector<double> multipliers_;     // of the channels
  std::vector<PendingPeak> peaks_;
};

void SectionReader::ReadSection(std::size_t heading, std::size_t end) {
  const Heading section = ParseHeading(file_.lines[heading]);
  const std::string kind = Lower(section.kind);
  if (kind.ends_with("chromatogram")) {
    ReadTrace(heading, end, false);
  } else if (kind.ends_with("status trace")) {
    ReadTrace(heading, end, true);
  } else if (kind.ends_with("peak table")) {
    ReadPeaks(heading, end);
  } else {
    for (std::size_t line = heading + 1; line < end; ++line) {
      const auto& cells = cells_.Of(line);
      if (cells.size() < 2) continue;
      run_.metadata.emplace_back(std::string(section.kind) + ": " + std::string(cells[0]),
                                 cells[1]);
    }
  }
}

// False for a line that is none of the keys, the table's header among them.
bool SectionReader::ReadKey(std::size_t line, TraceKeys& keys) {
  const auto& cells = cells_.Of(line);
  if (cells.empty()) return true;
  const std::string key = Lower(cells[0]);
  if (key.starts_with("r.time")) return false;
  const std::string_view value = cells.size() > 1 ? cells[1] : std::string_view();
  if (key == "intensity units") keys.unit = PlainUnit(value);
  if (key == "intensity multiplier") keys.multiplier = cells_.Need(line, 1);
  if (key == "# of points") keys.points = cells_.Need(line, 1);
  if (key.find("wavelength") != std::string::npos && !value.empty()) {
    const std::string_view which = cells[0].substr(0, key.find("wavelength"));
    keys.wavelengths +=
        (keys.wavelengths.empty() ? "" : ", ") + std::string(which) + std::string(value) + " nm";
  }
  return true;
}

void SectionReader::ReadRows(std::size_t line, std::size_t end, double unitS, double multiplier,
                             Trace& trace) {
  for (; line < end; ++line) {
    if (cells_.Of(line).empty()) continue;
    const double time = cells_.Need(line, 0);
    trace.values.push_back(cells_.Need(line, 1) * multiplier);
    AppendTime(file_, line, time * unitS, trace.timesS);
  }
}

void SectionReader::ReadTrace(std::size_t heading, std::size_t end, bool auxiliary) {
  TraceKeys keys;
  std::size_t line = heading + 1;
  while (line < end && ReadKey(line, keys)) ++line;
  if (line == end) {
    if (keys.points.value_or(0) == 0) return;  // a detector without data
    file_.Fail(heading, "the section has no table headed 'R.Time'");
  }
  const ColumnHeader header = ParseHeaderCell(cells_.Of(line)[0]);
  TimeUnit unit = header.timeUnit == TimeUnit::kUnknown ? TimeUnit::kMinute : header.timeUnit;
  if (options_.timeUnit != TimeUnit::kUnknown) unit = options_.timeUnit;

  Trace trace;
  const std::string of(ParseHeading(file_.lines[heading]).of);
  // "Detector A-Ch1" is "A-Ch1" where little room is.
  trace.name = of.starts_with("Detector ") ? of.substr(9) : of;
  trace.description = keys.wavelengths;
  trace.unit = keys.unit;
  ReadRows(line + 1, end, SecondsIn(unit), keys.multiplier, trace);
  if (keys.points && *keys.points != static_cast<double>(trace.values.size())) {
    file_.Fail(heading, "the section tells of " + NumberText(*keys.points) + " points and holds " +
                            std::to_string(trace.values.size()));
  }
  if (trace.values.empty()) return;
  if (trace.timesS.front() == trace.timesS.back()) {
    file_.Fail(heading, "a single sample makes no trace");
  }
  if (auxiliary) {
    run_.auxiliary.push_back(std::move(trace));
    return;
  }
  run_.channels.push_back(std::move(trace));
  detectors_.push_back(of);
  multipliers_.push_back(keys.multiplier);
}

void SectionReader::ReadPeaks(std::size_t heading, std::size_t end) {
  std::map<std::string, std::size_t> columns;
  const std::string_view of = ParseHeading(file_.lines[heading]).of;
  for (std::size_t line = heading + 1; line < end; ++line) {
    const auto& cells = cells_.Of(line);
    if (cells.empty()) continue;
    if (!columns.empty()) {
      ReadPeak(line, columns, of);
    } else if (Lower(cells[0]).starts_with("peak#")) {
      for (std::size_t i = 0; i < cells.size(); ++i) columns.emplace(Lower(cells[i]), i);
      for (const char* needed : {"r.time", "i.time", "f.time"}) {
        if (!columns.contains(needed)) {
          file_.Fail(line, std::string("the peak table has no column '") + needed + "'");
        }
      }
    }
  }
}

std::optional<double> SectionReader::Optional(const std::map<std::string, std::size_t>& columns,
                                              const char* column) const {
  const auto found = columns.find(column);
  if (found == columns.end() || found->second >= row_->size()) return std::nullopt;
  return cells_.Number((*row_)[found->second]);
}

void SectionReader::ReadPeak(std::size_t line, const std::map<std::string, std::size_t>& columns,
                             std::string_view of) {
  row_ = &cells_.Of(line);
  Peak peak;
  peak.apexS = cells_.Need(line, columns.at("r.time")) * 60;
  peak.startS = cells_.Need(line, columns.at("i.time")) * 60;
  peak.endS = cells_.Need(line, columns.at("f.time")) * 60;
  if (!(*peak.startS <= peak.apexS && peak.apexS <= *peak.endS)) {
    file_.Fail(line, "the peak's start, apex and end are not in this order");
  }
  peak.area = Optional(columns, "area");
  peak.height = Optional(columns, "height");
  // 0 is what an uncalibrated peak has.
  if (const auto amount = Optional(columns, "conc."); amount && *amount != 0) peak.amount = amount;
  if (const auto name = columns.find("name");
      name != columns.end() && name->second < row_->size()) {
    peak.name = (*row_)[name->second];
  }
  peaks_.push_back({std::move(peak), std::string(of)});
}

// A peak table belongs to a detector, or to its only channel.
void SectionReader::AssignPeaks() {
  for (PendingPeak& pending : peaks_) {
    const auto found = std::find_if(detectors_.begin(), detectors_.end(), [&](auto& detector) {
      return detector == pending.of || detector.starts_with(pending.of + "-");
    });
    if (found == detectors_.end()) {  // its trace was not exported
      run_.Note("the peaks of '" + pending.of + "' are not used: it has no trace");
      continue;
    }
    Peak& peak = pending.peak;
    peak.channel = static_cast<std::size_t>(found - detectors_.begin());
    const double multiplier = multipliers_[peak.channel];
    if (peak.area) *peak.area *= multiplier;
    if (peak.height) *peak.height *= multiplier;
    run_.peaks.push_back(std::move(peak));
  }
}

}  // namespace

bool IsSectionReport(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return IsHeading(text.substr(0, text.find_first_of("\r\n")));
}

RunData ReadSectionReport(const std::string& name, std::string_view text,
                          const ReadOptions& options) {
  return SectionReader(name, text, options).Read();
}

}  // namespace app
