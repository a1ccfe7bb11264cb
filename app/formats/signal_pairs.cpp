#include "app/formats/signal_pairs.h"

#include <algorithm>
#include <array>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"

namespace app {
namespace {

constexpr std::size_t kMaxHeaderLines = 10;

constexpr std::array kDetectorUnits = {"au",  "mau",  "uau", "rfu", "eu", "lu", "fu",
                                       "riu", "nriu", "mv",  "uv",  "v",  "pa", "na"};

// Seconds in one unit of time or, at 1 ml/min, of volume; 0 for other words.
double SecondsInX(std::string_view word) {
  if (const TimeUnit unit = TimeUnitOf(word); unit != TimeUnit::kUnknown) return SecondsIn(unit);
  return Lower(word) == "ml" ? 60 : 0;
}

bool IsUnitRow(const std::vector<std::string_view>& cells) {
  if (cells.size() < 3 || SecondsInX(cells[0]) == 0) return false;
  for (std::size_t i = 2; i < cells.size(); i += 2) {
    if (cells[i] != cells[0]) return false;
  }
  return true;
}

std::optional<std::size_t> UnitRow(const TextFile& file) {
  LineCells cells(file, Separator::kTab);
  for (std::size_t line = 0; line < std::min(file.lines.size(), kMaxHeaderLines); ++line) {
    if (IsUnitRow(cells.Of(line))) return line;
  }
  return std::nullopt;
}

struct Pair {
  Trace trace;
  bool events = false;
  bool ended = false;
};

class PairReader {
 public:
  PairReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : options_(options), file_(name, text), cells_(file_, Separator::kTab) {}

  RunData Read() {
    const std::size_t unitRow = UnitRow(file_).value_or(0);
    ReadHeader(unitRow);
    for (std::size_t line = unitRow + 1; line < file_.lines.size(); ++line) ReadRow(line);
    Assign();
    return std::move(run_);
  }

 private:
  void ReadHeader(std::size_t unitRow);
  void ReadRow(std::size_t line);
  void ReadPair(std::size_t line, std::size_t index);
  void Assign();

  const ReadOptions& options_;
  const TextFile file_;
  LineCells cells_;
  double unitS_ = 0;
  std::vector<Pair> pairs_;
  RunData run_;
};

// "(Fractions)" and "Logbook" stand where signals have a unit.
bool IsEventUnit(std::string_view unit) {
  constexpr std::size_t kLongestUnitWord = 6;
  const bool isWord = std::all_of(unit.begin(), unit.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ' ';
  });
  return unit.starts_with('(') || (isWord && unit.size() > kLongestUnitWord);
}

// "Run 7:10_UV1_280nm" is "UV1 280nm": behind the run's name stands that of the block.
std::string SignalName(std::string_view cell) {
  if (const std::size_t colon = cell.rfind(':'); colon != cell.npos) {
    cell = cell.substr(colon + 1);
    if (const std::size_t block = cell.find('_'); block != cell.npos) cell = cell.substr(block + 1);
  }
  std::string name(cell);
  std::replace(name.begin(), name.end(), '_', ' ');
  return name;
}

void PairReader::ReadHeader(std::size_t unitRow) {
  const std::vector<std::string_view> units = cells_.Of(unitRow);
  pairs_.resize((units.size() + 1) / 2);
  for (std::size_t i = 0; i < pairs_.size(); ++i) {
    const std::string_view unit = 2 * i + 1 < units.size() ? units[2 * i + 1] : std::string_view();
    pairs_[i].events = IsEventUnit(unit);
    pairs_[i].trace.unit = PlainUnit(unit);
  }
  unitS_ = SecondsInX(units[0]);
  if (TimeUnitOf(units[0]) == TimeUnit::kUnknown) {
    run_.Note("the signals are recorded over volume; 1 ml is drawn as 1 min");
  }
  if (options_.timeUnit != TimeUnit::kUnknown) unitS_ = SecondsIn(options_.timeUnit);
  if (unitRow == 0) return;
  const auto& names = cells_.Of(unitRow - 1);
  for (std::size_t i = 0; i < pairs_.size() && 2 * i < names.size(); ++i) {
    pairs_[i].trace.name = SignalName(names[2 * i]);
  }
}

void PairReader::ReadPair(std::size_t line, std::size_t index) {
  Pair& pair = pairs_[index];
  const auto& cells = cells_.Of(line);
  const auto cell = [&cells](std::size_t i) {
    return i < cells.size() ? cells[i] : std::string_view();
  };
  const std::string_view x = cell(2 * index);
  const std::string_view y = cell(2 * index + 1);
  if (pair.events) return;
  if (x.empty() && y.empty()) {
    pair.ended = true;
    return;
  }
  if (pair.ended) file_.Fail(line, "column " + std::to_string(2 * index + 1) + ": a gap above");
  // A text in the first row makes events of the whole pair, an empty one too.
  if (pair.trace.values.empty() && !cells_.Number(y)) {
    pair.events = true;
    return;
  }
  const double time = cells_.Need(line, 2 * index);
  pair.trace.values.push_back(cells_.Need(line, 2 * index + 1));
  AppendTime(file_, line, time * unitS_, pair.trace.timesS);
}

void PairReader::ReadRow(std::size_t line) {
  const std::size_t found = cells_.Of(line).size();
  if (found == 0) return;
  if (found > 2 * pairs_.size()) {
    file_.Fail(line, "expected " + std::to_string(2 * pairs_.size()) + " columns, found " +
                         std::to_string(found));
  }
  for (std::size_t i = 0; i < pairs_.size(); ++i) ReadPair(line, i);
}

void PairReader::Assign() {
  std::string events;
  for (Pair& pair : pairs_) {
    if (pair.events) events += (events.empty() ? "" : ", ") + pair.trace.name;
    Trace& trace = pair.trace;
    if (trace.values.size() < 2 || trace.timesS.front() == trace.timesS.back()) continue;
    const bool isDetector = std::find(kDetectorUnits.begin(), kDetectorUnits.end(),
                                      Lower(trace.unit)) != kDetectorUnits.end();
    (isDetector ? run_.channels : run_.auxiliary).push_back(std::move(trace));
  }
  if (!events.empty()) run_.Note("events are not drawn: " + events);
  if (run_.channels.empty() && !run_.auxiliary.empty()) {
    run_.channels.push_back(std::move(run_.auxiliary.front()));
    run_.auxiliary.erase(run_.auxiliary.begin());
  }
  if (run_.channels.empty()) file_.Fail("holds no signal of two samples or more");
}

}  // namespace

bool IsSignalPairs(std::string_view text) {
  // The header is all that counts.
  std::size_t end = 0;
  for (std::size_t i = 0; i < kMaxHeaderLines && end < text.size(); ++i) {
    end = std::min(text.find('\n', end), text.size() - 1) + 1;
  }
  const std::string name;
  return UnitRow(TextFile(name, text.substr(0, end))).has_value();
}

RunData ReadSignalPairs(const std::string& name, std::string_view text,
                        const ReadOptions& options) {
  return PairReader(name, text, options).Read();
}

}  // namespace app
