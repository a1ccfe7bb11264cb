#include "app/formats/data_cube.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/text.h"

namespace app {
namespace {

using Json = nlohmann::json;

constexpr const char* kCubeName = "data cube";
constexpr int kMaxDepth = 200;

// The member's text; empty where there is none.
std::string Text(const Json& object, const char* member) {
  const auto found = object.is_object() ? object.find(member) : object.end();
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

// The member of an object; null where there is none.
const Json& Member(const Json& object, const char* member) {
  static const Json kNone;
  if (!object.is_object()) return kNone;
  const auto found = object.find(member);
  return found != object.end() ? *found : kNone;
}

const Json& Element(const Json& array, std::size_t index) {
  static const Json kNone;
  return array.is_array() && index < array.size() ? array[index] : kNone;
}

// {"value": 16.8, "unit": "s"}, with times in seconds; nothing where the member is missing.
struct Quantity {
  double value;
  std::string unit;
};
std::optional<Quantity> QuantityOf(const Json& object, const char* member) {
  const Json& entry = Member(object, member);
  if (entry.is_number()) return Quantity{entry.get<double>(), {}};
  const Json& value = Member(entry, "value");
  if (!value.is_number()) return std::nullopt;
  return Quantity{value.get<double>(), Text(entry, "unit")};
}

std::optional<double> SecondsOf(const Json& object, const char* member) {
  const std::optional<Quantity> quantity = QuantityOf(object, member);
  if (!quantity) return std::nullopt;
  const TimeUnit unit = TimeUnitOf(quantity->unit);
  return quantity->value * (unit == TimeUnit::kUnknown ? 1 : SecondsIn(unit));
}

class CubeReader {
 public:
  CubeReader(const std::string& name, std::string_view text, const ReadOptions& options)
      : name_(name), options_(options) {
    try {
      document_ = Json::parse(text);
    } catch (const Json::parse_error& error) {
      // "[json.exception.parse_error.101] parse error at line 1, column 9: …"
      std::string cause = error.what();
      const std::size_t at = cause.find("parse error at line ");
      const std::string line =
          at == cause.npos ? "1" : cause.substr(at + 20, cause.find(',', at) - at - 20);
      const std::size_t colon = cause.find(": ", at == cause.npos ? 0 : at);
      throw FileError(name + ":" + line + ": damaged JSON" +
                      (colon == cause.npos ? "" : cause.substr(colon)));
    }
  }

  RunData Read() {
    Walk(document_, 0);
    if (run_.channels.empty()) throw FileError(name_ + ": holds no chromatogram data cube");
    return std::move(run_);
  }

 private:
  [[noreturn]] void Fail(const std::string& cause) const {
    throw FileError(name_ + ": chromatogram " + std::to_string(run_.channels.size() + 1) + ": " +
                    cause);
  }
  void Walk(const Json& node, int depth);
  bool ReadCube(const Json& cube, const Json& measurement);
  std::vector<double> Numbers(const Json& array, const char* what) const;
  void ReadPeaks(const Json& node, std::size_t channel, int depth);
  void ReadPeak(const Json& entry, std::size_t channel);

  const std::string& name_;
  const ReadOptions& options_;
  Json document_;
  RunData run_;
};

void CubeReader::Walk(const Json& node, int depth) {
  if (depth > kMaxDepth) return;
  if (node.is_object()) {
    const std::size_t before = run_.channels.size();
    for (const auto& [key, value] : node.items()) {
      if (key.ends_with(kCubeName) && value.is_object() && ReadCube(value, node)) continue;
      Walk(value, depth + 1);
    }
    // Peaks stand beside the cube, some levels down.
    const bool hasCube =
        std::any_of(node.items().begin(), node.items().end(),
                    [](const auto& item) { return item.key().ends_with(kCubeName); });
    if (hasCube && run_.channels.size() > before) ReadPeaks(node, before, depth);
  } else if (node.is_array()) {
    for (const Json& element : node) {
      if (element.is_structured()) Walk(element, depth + 1);
    }
  }
}

std::vector<double> CubeReader::Numbers(const Json& array, const char* what) const {
  std::vector<double> numbers;
  for (const Json& element : array) {
    if (!element.is_number() || !std::isfinite(element.get<double>())) {
      Fail(std::string(what) + " " + std::to_string(numbers.size() + 1) + " is not a number");
    }
    numbers.push_back(element.get<double>());
  }
  return numbers;
}

// False where the cube is no chromatogram.
bool CubeReader::ReadCube(const Json& cube, const Json& measurement) {
  const Json& structure = Member(cube, "cube-structure");
  const Json& dimensions = Member(structure, "dimensions");
  const Json& data = Member(cube, "data");
  const Json& times = Element(Member(data, "dimensions"), 0);
  const Json& measures = Member(data, "measures");
  const TimeUnit stated = TimeUnitOf(Text(Element(dimensions, 0), "unit"));
  if (dimensions.size() != 1 || stated == TimeUnit::kUnknown || !times.is_array()) return false;

  const double unitS =
      SecondsIn(options_.timeUnit != TimeUnit::kUnknown ? options_.timeUnit : stated);
  std::vector<double> timesS = Numbers(times, "time");
  for (std::size_t i = 0; i < timesS.size(); ++i) {
    timesS[i] *= unitS;
    if (std::abs(timesS[i]) > kMaxTimeS || (i > 0 && timesS[i] < timesS[i - 1])) {
      Fail("time " + std::to_string(i + 1) + " lies before the one in front of it, or beyond " +
           NumberText(kMaxTimeS) + " s");
    }
  }
  if (timesS.size() < 2 || timesS.front() == timesS.back()) Fail("holds a single time");
  for (std::size_t i = 0; i < measures.size(); ++i) {
    const Json& measure = Element(Member(structure, "measures"), i);
    Trace trace;
    trace.values = Numbers(Element(measures, i), "value");
    if (trace.values.size() != timesS.size()) {
      Fail(std::to_string(trace.values.size()) + " values, but " + std::to_string(timesS.size()) +
           " times");
    }
    trace.timesS = timesS;
    trace.unit = PlainUnit(Text(measure, "unit"));
    trace.name = Text(cube, "label");
    if (trace.name.empty()) trace.name = Text(measurement, "detection type");
    trace.description = Text(measure, "concept");
    run_.channels.push_back(std::move(trace));
  }
  return measures.is_array() && !measures.empty();
}

void CubeReader::ReadPeak(const Json& entry, std::size_t channel) {
  const std::optional<double> apex = SecondsOf(entry, "retention time");
  if (!apex) return;
  Peak peak;
  peak.channel = channel;
  peak.apexS = *apex;
  if (const auto start = SecondsOf(entry, "peak start"); start && *start <= *apex) {
    peak.startS = start;
  }
  if (const auto end = SecondsOf(entry, "peak end"); end && *end >= *apex) peak.endS = end;
  if (const auto area = QuantityOf(entry, "peak area")) peak.area = area->value;
  if (const auto height = QuantityOf(entry, "peak height")) peak.height = height->value;
  for (const char* member : {"written name", "peak name", "analyte", "compound"}) {
    if (peak.name.empty()) peak.name = Text(entry, member);
  }
  run_.peaks.push_back(std::move(peak));
}

void CubeReader::ReadPeaks(const Json& node, std::size_t channel, int depth) {
  if (depth > kMaxDepth) return;
  if (node.is_array()) {
    for (const Json& element : node) {
      if (element.is_structured()) ReadPeaks(element, channel, depth + 1);
    }
  } else if (node.is_object()) {
    for (const auto& [key, value] : node.items()) {
      if (key == "peak list") {
        for (const Json& entry : Member(value, "peak")) ReadPeak(entry, channel);
      } else if (value.is_structured() && !key.ends_with(kCubeName)) {
        ReadPeaks(value, channel, depth + 1);
      }
    }
  }
}

}  // namespace

bool IsJson(std::string_view text) {
  const auto skip = [&text] {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  };
  skip();
  if (text.starts_with('[')) {
    text.remove_prefix(1);
    skip();
  }
  return text.starts_with('{');
}

RunData ReadDataCubes(const std::string& name, std::string_view text, const ReadOptions& options) {
  return CubeReader(name, text, options).Read();
}

}  // namespace app
