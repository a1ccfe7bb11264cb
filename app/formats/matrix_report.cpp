#include "app/formats/matrix_report.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"
#include "app/formats/wavelength.h"

namespace app {
namespace {

constexpr std::size_t kMaxHeaderLines = 50;
constexpr double kMaxWavelengths = 10'000;

// "200msec" or "2,00nm".
struct Measure {
  double value;
  std::string_view unit;
};
std::optional<Measure> ParseMeasure(std::string_view text) {
  const std::size_t end = text.find_last_of("0123456789");
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view digits = text.substr(0, end + 1);
  const char mark = digits.find(',') == digits.npos ? '.' : ',';
  const std::optional<double> value = ParseNumber(digits, mark);
  if (!value) return std::nullopt;
  return Measure{*value, Trim(text.substr(end + 1))};
}

class MatrixReader {
 public:
  MatrixReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : options_(options), file_(name, text), cells_(file_, Separator::kTab) {}

  RunData Read() {
    ReadHeader();
    MakeTraces();
    ReadRows();
    return std::move(run_);
  }

 private:
  void ReadHeader();
  Measure Need(const char* key) const;
  double NeedTimeS(const char* key) const;
  void MakeTraces();
  void ReadRows();

  const ReadOptions& options_;
  const TextFile file_;
  LineCells cells_;
  std::size_t firstRow_ = 0;
  std::map<std::string, std::string> header_;
  RunData run_;
};

void MatrixReader::ReadHeader() {
  for (std::size_t line = 0; line < file_.lines.size(); ++line) {
    const auto& cells = cells_.Of(line);
    if (cells.empty()) continue;
    if (cells.size() == 1 && Lower(cells[0]) == "intensity") {
      firstRow_ = line + 1;
      return;
    }
    if (cells.size() != 2) break;
    header_[Lower(cells[0])] = cells[1];
    run_.metadata.emplace_back(cells[0], cells[1]);
  }
  file_.Fail("the header has no line INTENSITY before the values");
}

Measure MatrixReader::Need(const char* key) const {
  const auto found = header_.find(key);
  const auto measure = found != header_.end() ? ParseMeasure(found->second) : std::nullopt;
  if (!measure) file_.Fail(std::string("the header has no number '") + key + "'");
  return *measure;
}

double MatrixReader::NeedTimeS(const char* key) const {
  const Measure measure = Need(key);
  TimeUnit unit = TimeUnitOf(measure.unit);
  if (options_.timeUnit != TimeUnit::kUnknown) unit = options_.timeUnit;
  if (unit == TimeUnit::kUnknown) file_.Fail(std::string("'") + key + "' has no unit of time");
  return measure.value * SecondsIn(unit);
}

void MatrixReader::MakeTraces() {
  const double count = Need("wl_npoints").value;
  if (!(count >= 1 && count <= kMaxWavelengths)) file_.Fail("'wl_npoints' is not from 1 to 10000");
  const double startS = NeedTimeS("start_time");
  const double periodS = NeedTimeS("time_interval");
  if (!(periodS > 0)) file_.Fail("'time_interval' is not above 0");
  for (int i = 0; i < static_cast<int>(count); ++i) {
    Trace trace;
    trace.name = WavelengthName(Need("start_wl").value + i * Need("wl_interval").value);
    trace.unit = PlainUnit(header_["intensity_unit"]);
    trace.startS = startS;
    trace.periodS = periodS;
    run_.channels.push_back(std::move(trace));
  }
}

void MatrixReader::ReadRows() {
  for (std::size_t line = firstRow_; line < file_.lines.size(); ++line) {
    const std::size_t found = cells_.Of(line).size();
    if (found == 0) continue;
    if (found != run_.channels.size()) {
      file_.Fail(line, "expected " + std::to_string(run_.channels.size()) + " columns, found " +
                           std::to_string(found));
    }
    if (run_.channels[0].values.empty() && header_["start_time"].find(',') != std::string::npos) {
      cells_.SetDecimalMark(',');
    }
    for (std::size_t i = 0; i < found; ++i) {
      run_.channels[i].values.push_back(cells_.Need(line, i));
    }
  }
  const Trace& trace = run_.channels[0];
  const double stated = Need("time_npoints").value;
  if (stated != static_cast<double>(trace.values.size())) {
    file_.Fail("states " + NumberText(stated) + " times and holds " +
               std::to_string(trace.values.size()));
  }
  if (trace.values.size() < 2) file_.Fail("holds a single time");
  if (std::max(std::abs(trace.startS), std::abs(trace.TimeAt(trace.values.size()))) > kMaxTimeS) {
    file_.Fail("holds times beyond " + NumberText(kMaxTimeS) + " s");
  }
}

}  // namespace

bool IsMatrixReport(std::string_view text) {
  bool times = false;
  bool wavelengths = false;
  for (std::size_t i = 0; i < kMaxHeaderLines && !text.empty() && !(times && wavelengths); ++i) {
    times = times || text.starts_with("TIME_INTERVAL");
    wavelengths = wavelengths || text.starts_with("WL_INTERVAL");
    text.remove_prefix(std::min(std::min(text.find('\n'), text.size() - 1) + 1, text.size()));
  }
  return times && wavelengths;
}

RunData ReadMatrixReport(const std::string& name, std::string_view text,
                         const ReadOptions& options) {
  return MatrixReader(name, text, options).Read();
}

}  // namespace app
