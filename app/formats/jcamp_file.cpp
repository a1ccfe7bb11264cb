#include "app/formats/jcamp_file.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"

namespace app {
namespace {

// "##RETENTION_TIME= 8.8" as its label and its value. Labels are compared without case, blanks,
// underlines, dashes and slashes. Some writers forget one of the two marks.
struct Record {
  std::string label;
  std::string_view value;
};
std::optional<Record> ParseRecord(std::string_view line) {
  line = Trim(line);
  const std::size_t equals = line.find('=');
  if (!line.starts_with('#') || (equals == line.npos && !line.starts_with("##"))) {
    return std::nullopt;
  }
  Record record;
  for (const char c : line.substr(0, equals)) {
    if (std::string_view(" #_-/").find(c) == std::string_view::npos) record.label.push_back(c);
  }
  record.label = Lower(record.label);
  if (equals != line.npos) record.value = Trim(line.substr(equals + 1));
  return record;
}

bool IsTable(const std::string& label) {
  return label == "xydata" || label == "xypoints" || label == "peaktable";
}

class JcampReader {
 public:
  JcampReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : options_(options), file_(name, text) {}

  RunData Read() {
    for (std::size_t line = 0; line < file_.lines.size(); ++line) {
      const std::optional<Record> record = ParseRecord(file_.lines[line]);
      if (!record) continue;
      if (IsTable(record->label) && !scans_) ReadTable(line, *record);
      if (record->label == "retentiontime") ReadScan(line, *record);
      if (record->label == "tic") totals_.push_back(Number(line, record->value));
      if (!scans_) Keep(*record);
    }
    Finish();
    return std::move(run_);
  }

 private:
  double Number(std::size_t line, std::string_view text) const;
  double Value(const char* label, double fallback) const;
  void Keep(const Record& record);
  void ReadScan(std::size_t line, const Record& record);
  void ReadTable(std::size_t line, const Record& record);
  void ReadPairs(std::size_t line);
  void ReadSteps(std::size_t line);
  std::vector<double> Numbers(std::size_t line) const;
  void Finish();

  const ReadOptions& options_;
  const TextFile file_;
  std::map<std::string, std::string> values_;
  bool scans_ = false;
  bool table_ = false;
  std::vector<double> times_;
  std::vector<double> totals_;  // of scans, or the values of the table
  RunData run_;
};

double JcampReader::Number(std::size_t line, std::string_view text) const {
  const std::optional<double> value = ParseNumber(Trim(text), '.');
  if (!value) {
    file_.Fail(line, "'" + std::string(text.substr(0, 40)) + "' is not a number");
  }
  return *value;
}

double JcampReader::Value(const char* label, double fallback) const {
  const auto found = values_.find(label);
  if (found == values_.end()) return fallback;
  return ParseNumber(found->second, '.').value_or(fallback);
}

void JcampReader::Keep(const Record& record) {
  if (record.value.empty() || !values_.emplace(record.label, record.value).second) return;
  if (!IsTable(record.label)) run_.metadata.emplace_back(record.label, record.value);
}

void JcampReader::ReadScan(std::size_t line, const Record& record) {
  if (table_) file_.Fail(line, "a scan behind a table of points");
  scans_ = true;
  if (times_.size() != totals_.size()) file_.Fail(line, "the scan above has no total ion current");
  times_.push_back(Number(line, record.value));
}

// The numbers of a line: separated by blanks, commas or semicolons, or by the sign of the next one.
std::vector<double> JcampReader::Numbers(std::size_t line) const {
  std::vector<double> numbers;
  std::string_view text = file_.lines[line];
  text = text.substr(0, text.find("$$"));  // a comment
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t,;"), text.size()));
    if (text.empty()) return numbers;
    std::size_t end = 1;
    while (end < text.size() && std::string_view(" \t,;").find(text[end]) == text.npos &&
           !((text[end] == '+' || text[end] == '-') && Lower(text.substr(end - 1, 1)) != "e")) {
      ++end;
    }
    numbers.push_back(Number(line, text.substr(0, end)));
    text.remove_prefix(end);
  }
}

void JcampReader::ReadPairs(std::size_t line) {
  for (; line < file_.lines.size() && !ParseRecord(file_.lines[line]); ++line) {
    const std::vector<double> numbers = Numbers(line);
    if (numbers.size() % 2 != 0) file_.Fail(line, "a time without a value");
    for (std::size_t i = 0; i < numbers.size(); i += 2) {
      if (!times_.empty() && numbers[i] * Value("xfactor", 1) < times_.back()) {
        file_.Fail(line, "time " + NumberText(numbers[i]) + " lies before the one in front of it");
      }
      times_.push_back(numbers[i] * Value("xfactor", 1));
      totals_.push_back(numbers[i + 1]);
    }
  }
}

// Lines of a time and the values from it on. The times at their starts are rounded; only the grid
// counts.
void JcampReader::ReadSteps(std::size_t line) {
  for (; line < file_.lines.size() && !ParseRecord(file_.lines[line]); ++line) {
    const std::vector<double> numbers = Numbers(line);
    if (numbers.size() == 1) file_.Fail(line, "a time without a value");
    for (std::size_t i = 1; i < numbers.size(); ++i) totals_.push_back(numbers[i]);
  }
  const double count = static_cast<double>(totals_.size());
  const double first = Value("firstx", 0);
  const double step = values_.contains("lastx") && count > 1
                          ? (Value("lastx", 0) - first) / (count - 1)
                          : Value("deltax", 0);
  if (!(step > 0)) file_.Fail("states no increasing times (FIRSTX, LASTX, DELTAX)");
  for (std::size_t i = 0; i < totals_.size(); ++i) {
    times_.push_back(first + step * static_cast<double>(i));
  }
}

void JcampReader::ReadTable(std::size_t line, const Record& record) {
  if (table_) {
    run_.Note("only the first of several tables is read");
    return;
  }
  table_ = true;
  std::string form;
  for (const char c : record.value) {
    if (c != ' ') form.push_back(c);
  }
  form = Lower(form);
  if (form.starts_with("(xy..xy)")) {
    ReadPairs(line + 1);
  } else if (form.starts_with("(x++(y..y))")) {
    ReadSteps(line + 1);
  } else {
    file_.Fail(line, "a table of the form '" + std::string(record.value.substr(0, 40)) +
                         "', which is not read");
  }
  const double stated = Value("npoints", static_cast<double>(totals_.size()));
  if (stated != static_cast<double>(totals_.size())) {
    file_.Fail(line, "states " + NumberText(stated) + " points and holds " +
                         std::to_string(totals_.size()));
  }
  for (double& value : totals_) value *= Value("yfactor", 1);
}

void JcampReader::Finish() {
  if (times_.size() < 2) file_.Fail("holds no chromatogram");
  if (times_.size() != totals_.size()) file_.Fail("the last scan has no total ion current");
  if (!std::is_sorted(times_.begin(), times_.end()) || times_.front() == times_.back()) {
    file_.Fail("the times do not increase");
  }
  TimeUnit unit = scans_ ? TimeUnit::kUnknown : TimeUnitOf(values_["xunits"]);
  if (options_.timeUnit != TimeUnit::kUnknown) unit = options_.timeUnit;
  if (unit == TimeUnit::kUnknown) {
    unit = AssumedTimeUnit(times_.front(), times_.back());
    run_.Note(AssumedUnitNote(unit));
  }
  Trace trace;
  for (double& time : times_) time *= SecondsIn(unit);
  if (std::max(std::abs(times_.front()), std::abs(times_.back())) > kMaxTimeS) {
    file_.Fail("holds times beyond " + NumberText(kMaxTimeS) + " s");
  }
  trace.name = scans_ ? "TIC" : values_["title"];
  trace.unit = scans_ ? "" : PlainUnit(values_["yunits"]);
  trace.timesS = std::move(times_);
  trace.values = std::move(totals_);
  run_.channels.push_back(std::move(trace));
}

}  // namespace

bool IsJcamp(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return text.starts_with("##");
}

RunData ReadJcamp(const std::string& name, std::string_view text, const ReadOptions& options) {
  return JcampReader(name, text, options).Read();
}

}  // namespace app
