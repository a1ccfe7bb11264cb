#include "app/axis_options.h"

#include <vector>

#include "app/formats/header_words.h"
#include "app/formats/text.h"
#include "app/render_options.h"

namespace app {
namespace {

std::vector<std::string> SplitAtColons(const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ':') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// The start takes the end's unit where it has none of its own.
std::optional<StatedAxis> ParseTimes(const std::string& text) {
  const std::vector<std::string> parts = SplitAtColons(text);
  if (parts.size() != 2) return std::nullopt;
  const std::size_t digits = parts[1].find_last_of("0123456789.") + 1;
  const TimeUnit unit = TimeUnitOf(std::string_view(parts[1]).substr(digits));
  const auto from = ParseTimeS(parts[0], unit != TimeUnit::kUnknown ? unit : TimeUnit::kMinute);
  const auto to = ParseTimeS(parts[1], TimeUnit::kMinute);
  if (!from || !to || !(*from < *to)) return std::nullopt;
  return StatedAxis{*from, *to, std::nullopt};
}

std::optional<StatedAxis> ParseAxis(const std::string& text) {
  const std::vector<std::string> parts = SplitAtColons(text);
  if (parts.size() != 3) return ParseWavelengths(text);
  std::optional<StatedAxis> axis = ParseWavelengths(parts[0] + ":" + parts[1]);
  const std::optional<double> step = ParseNumber(Trim(parts[2]), '.');
  if (!axis || !step || *step == 0) return std::nullopt;
  axis->step = step;
  return axis;
}

}  // namespace

void AddAxisOptions(CLI::App& command, AxisTexts& texts) {
  command
      .add_option("--axis-wavelengths", texts.wavelengths,
                  "The file is a matrix without its wavelengths, in nm; without STEP they are "
                  "spread evenly over its values")
      ->type_name("FROM:TO[:STEP]");
  command
      .add_option("--axis-times", texts.times,
                  "The file is a matrix without its times, such as 0:10min; they are spread evenly "
                  "over its values")
      ->type_name("FROM:TO[UNIT]");
  command
      .add_option("--times-in", texts.timesIn,
                  "Where a matrix has its times: rows (each row of values is one time) or columns; "
                  "otherwise its axes tell")
      ->type_name("rows|columns");
}

std::optional<StatedAxis> ParseWavelengths(const std::string& text) {
  const std::vector<std::string> parts = SplitAtColons(text);
  if (parts.size() != 2) return std::nullopt;
  const std::optional<double> from = ParseNumber(Trim(parts[0]), '.');
  const std::optional<double> to = ParseNumber(Trim(parts[1]), '.');
  if (!from || !to || *from == *to || !(*from > 0) || !(*to > 0)) return std::nullopt;
  return StatedAxis{*from, *to, std::nullopt};
}

bool UnderstandAxisOptions(const AxisTexts& texts, ReadOptions& read, std::string& error) {
  if (!texts.wavelengths.empty() && !(read.wavelengthsNm = ParseAxis(texts.wavelengths))) {
    error = "--axis-wavelengths: '" + texts.wavelengths + "' is not FROM:TO or FROM:TO:STEP";
  } else if (!texts.times.empty() && !(read.timesS = ParseTimes(texts.times))) {
    error = "--axis-times: '" + texts.times + "' is not FROM:TO such as 0:10min";
  } else if (texts.timesIn == "rows") {
    read.timesIn = TimesIn::kRows;
  } else if (texts.timesIn == "columns") {
    read.timesIn = TimesIn::kColumns;
  } else if (!texts.timesIn.empty()) {
    error = "--times-in: '" + texts.timesIn + "' is not one of rows, columns";
  }
  return error.empty();
}

}  // namespace app
