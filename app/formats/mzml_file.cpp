#include "app/formats/mzml_file.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <pugixml.hpp>

#include "app/formats/header_words.h"
#include "app/formats/text.h"

namespace app {
namespace {

// Terms of the PSI-MS and unit vocabularies.
constexpr const char* kTimeArray = "MS:1000595";
constexpr const char* kIntensityArray = "MS:1000515";
constexpr const char* kPressureArray = "MS:1000821";
constexpr const char* kFlowArray = "MS:1000820";
constexpr const char* kTemperatureArray = "MS:1000822";
constexpr const char* kFloat32 = "MS:1000521";
constexpr const char* kFloat64 = "MS:1000523";
constexpr const char* kZlib = "MS:1000574";
constexpr const char* kUncompressed = "MS:1000576";
// Names of the chromatograms' own kinds, as parts of the terms' names.
constexpr std::array kAuxiliaryKinds = {"pressure", "flow", "temperature"};

constexpr std::size_t kMaxPoints = 100'000'000;
// Faster than any detector of separations; times at such a rate have a wrong unit.
constexpr double kMaxPlausibleRate = 200;

struct UnitTerm {
  const char* accession;
  const char* unit;
};
constexpr std::array kUnits = {
    UnitTerm{"MS:1000131", "counts"}, UnitTerm{"MS:1000814", "cps"}, UnitTerm{"UO:0000269", "AU"},
    UnitTerm{"UO:0000110", "Pa"},     UnitTerm{"UO:0000109", "Pa"},  UnitTerm{"UO:0000012", "K"},
};

// The parameter with this accession; none where the element has none.
pugi::xml_node Param(pugi::xml_node element, const char* accession) {
  return element.find_child_by_attribute("cvParam", "accession", accession);
}

std::string Base64(std::string_view text, bool& good) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;
  int held = 0;
  good = true;
  for (const char c : text) {
    int value = -1;
    if (c >= 'A' && c <= 'Z') value = c - 'A';
    if (c >= 'a' && c <= 'z') value = c - 'a' + 26;
    if (c >= '0' && c <= '9') value = c - '0' + 52;
    if (c == '+') value = 62;
    if (c == '/') value = 63;
    if (c == '=' || c == ' ' || c == '\n' || c == '\r' || c == '\t') continue;
    if (value < 0) good = false;
    bits = bits << 6 | static_cast<std::uint32_t>(value & 63);
    held += 6;
    if (held < 8) continue;
    held -= 8;
    bytes.push_back(static_cast<char>(bits >> held & 0xFF));
  }
  return bytes;
}

// The bytes that are expected to be `size`; anything else is an empty text.
std::string Inflate(const std::string& packed, std::size_t size) {
  // Deflate does not compress further; a smaller text cannot hold what is expected.
  constexpr std::size_t kMaxRatio = 1040;
  if (size / kMaxRatio > packed.size()) return {};
  std::string bytes(size, '\0');
  uLongf length = static_cast<uLongf>(size);
  const int status =
      uncompress(reinterpret_cast<Bytef*>(bytes.data()), &length,
                 reinterpret_cast<const Bytef*>(packed.data()), static_cast<uLong>(packed.size()));
  if (status != Z_OK || length != size) return {};
  return bytes;
}

template <typename Float, typename Bits>
void DecodeFloats(const std::string& bytes, std::vector<double>& values) {
  for (std::size_t at = 0; at + sizeof(Float) <= bytes.size(); at += sizeof(Float)) {
    Bits bits = 0;  // little endian whatever the machine
    for (std::size_t k = sizeof(Float); k > 0; --k) {
      bits = static_cast<Bits>(bits << 8) | static_cast<unsigned char>(bytes[at + k - 1]);
    }
    values.push_back(static_cast<double>(std::bit_cast<Float>(bits)));
  }
}

class MzMlReader {
 public:
  MzMlReader(const std::string& name, std::string_view bytes, const ReadOptions& options)
      : name_(name), options_(options) {
    const pugi::xml_parse_result result =
        document_.load_buffer(bytes.data(), bytes.size(), pugi::parse_default);
    if (!result) {
      const auto end =
          bytes.begin() +
          std::clamp<std::ptrdiff_t>(result.offset, 0, static_cast<std::ptrdiff_t>(bytes.size()));
      throw FileError(name + ":" + std::to_string(1 + std::count(bytes.begin(), end, '\n')) +
                      ": damaged XML: " + result.description());
    }
  }

  RunData Read() {
    pugi::xml_node root = document_.child("indexedmzML").child("mzML");
    if (!root) root = document_.child("mzML");
    const pugi::xml_node list = root.child("run").child("chromatogramList");
    for (const pugi::xml_node chromatogram : list.children("chromatogram")) Add(chromatogram);
    if (short_ > 0) {
      run_.Note(std::to_string(short_) + " chromatograms of less than two points are left out");
    }
    if (run_.channels.empty()) throw FileError(name_ + ": holds no chromatogram");
    return std::move(run_);
  }

 private:
  [[noreturn]] void Fail(pugi::xml_node chromatogram, const std::string& cause) const {
    throw FileError(name_ + ": chromatogram '" + chromatogram.attribute("id").value() +
                    "': " + cause);
  }
  void Add(pugi::xml_node chromatogram);
  pugi::xml_node ArrayWith(pugi::xml_node chromatogram,
                           std::initializer_list<const char*> accessions) const;
  std::vector<double> Values(pugi::xml_node chromatogram, pugi::xml_node array) const;
  double UnitS(pugi::xml_node chromatogram, pugi::xml_node timeArray,
               const std::vector<double>& times);

  const std::string& name_;
  const ReadOptions& options_;
  pugi::xml_document document_;
  RunData run_;
  int short_ = 0;
};

pugi::xml_node MzMlReader::ArrayWith(pugi::xml_node chromatogram,
                                     std::initializer_list<const char*> accessions) const {
  for (const pugi::xml_node array :
       chromatogram.child("binaryDataArrayList").children("binaryDataArray")) {
    for (const char* accession : accessions) {
      if (Param(array, accession)) return array;
    }
  }
  return {};
}

std::vector<double> MzMlReader::Values(pugi::xml_node chromatogram, pugi::xml_node array) const {
  std::size_t count = chromatogram.attribute("defaultArrayLength").as_ullong();
  if (array.attribute("arrayLength")) count = array.attribute("arrayLength").as_ullong();
  if (count > kMaxPoints) Fail(chromatogram, "more than 100000000 points");
  const bool is64 = static_cast<bool>(Param(array, kFloat64));
  if (!is64 && !Param(array, kFloat32)) Fail(chromatogram, "an array of a type that is not read");
  bool good = false;
  std::string bytes = Base64(array.child("binary").text().get(), good);
  if (!good) Fail(chromatogram, "an array is not base64");
  const std::size_t size = count * (is64 ? 8 : 4);
  if (Param(array, kZlib)) {
    bytes = Inflate(bytes, size);
  } else if (!Param(array, kUncompressed)) {
    Fail(chromatogram, "an array of a compression that is not read");
  }
  if (bytes.size() != size) {
    Fail(chromatogram, "an array does not hold its " + std::to_string(count) + " points");
  }
  std::vector<double> values;
  values.reserve(count);
  is64 ? DecodeFloats<double, std::uint64_t>(bytes, values)
       : DecodeFloats<float, std::uint32_t>(bytes, values);
  return values;
}

double MzMlReader::UnitS(pugi::xml_node chromatogram, pugi::xml_node timeArray,
                         const std::vector<double>& times) {
  if (options_.timeUnit != TimeUnit::kUnknown) return SecondsIn(options_.timeUnit);
  TimeUnit unit = TimeUnitOf(Param(timeArray, kTimeArray).attribute("unitName").value());
  if (unit == TimeUnit::kUnknown) {
    unit = AssumedTimeUnit(times.front(), times.back());
    run_.Note(AssumedUnitNote(unit));
  }
  const double rate =
      static_cast<double>(times.size() - 1) / ((times.back() - times.front()) * SecondsIn(unit));
  if (rate > kMaxPlausibleRate) {
    run_.Note(std::string("chromatogram '") + chromatogram.attribute("id").value() + "' has " +
              std::to_string(std::lround(std::min(rate, 1e9))) +
              " samples per second as the file states its times, in " + TimeUnitText(unit) +
              "; --time-unit overrides that");
  }
  return SecondsIn(unit);
}

void MzMlReader::Add(pugi::xml_node chromatogram) {
  const pugi::xml_node timeArray = ArrayWith(chromatogram, {kTimeArray});
  const pugi::xml_node valueArray =
      ArrayWith(chromatogram, {kIntensityArray, kPressureArray, kFlowArray, kTemperatureArray});
  if (!timeArray || !valueArray) Fail(chromatogram, "no array of times or none of values");
  Trace trace;
  trace.timesS = Values(chromatogram, timeArray);
  trace.values = Values(chromatogram, valueArray);
  if (trace.timesS.size() != trace.values.size()) {
    Fail(chromatogram, std::to_string(trace.values.size()) + " values, but " +
                           std::to_string(trace.timesS.size()) + " times");
  }
  if (trace.values.size() < 2) {
    ++short_;
    return;
  }
  const auto isFinite = [](double value) { return std::isfinite(value); };
  if (!std::all_of(trace.values.begin(), trace.values.end(), isFinite) ||
      !std::all_of(trace.timesS.begin(), trace.timesS.end(), isFinite)) {
    Fail(chromatogram, "a value or time is not a number");
  }
  if (!std::is_sorted(trace.timesS.begin(), trace.timesS.end()) ||
      trace.timesS.front() == trace.timesS.back()) {
    Fail(chromatogram, "the times do not increase");
  }
  const double unitS = UnitS(chromatogram, timeArray, trace.timesS);
  for (double& time : trace.timesS) time *= unitS;
  if (std::max(std::abs(trace.timesS.front()), std::abs(trace.timesS.back())) > kMaxTimeS) {
    Fail(chromatogram, "times beyond " + NumberText(kMaxTimeS) + " s");
  }

  trace.name = chromatogram.attribute("id").value();
  std::string kind;
  for (const pugi::xml_node param : chromatogram.children("cvParam")) {
    if (std::string_view(param.attribute("name").value()).ends_with("chromatogram")) {
      kind = param.attribute("name").value();
    }
  }
  trace.description = kind;
  for (const pugi::xml_node param : valueArray.children("cvParam")) {
    for (const UnitTerm& term : kUnits) {
      if (std::string_view(param.attribute("unitAccession").value()) == term.accession) {
        trace.unit = term.unit;
      }
    }
  }
  const bool auxiliary =
      std::any_of(kAuxiliaryKinds.begin(), kAuxiliaryKinds.end(),
                  [&kind](const char* word) { return kind.find(word) != std::string::npos; });
  (auxiliary ? run_.auxiliary : run_.channels).push_back(std::move(trace));
}

}  // namespace

bool IsMzMl(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  bytes.remove_prefix(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
  if (!bytes.starts_with('<')) return false;
  const std::string_view head = bytes.substr(0, 4096);
  return head.find("<mzML") != head.npos || head.find("<indexedmzML") != head.npos;
}

RunData ReadMzMl(const std::string& name, std::string_view bytes, const ReadOptions& options) {
  return MzMlReader(name, bytes, options).Read();
}

}  // namespace app
