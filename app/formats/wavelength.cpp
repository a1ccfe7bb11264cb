#include "app/formats/wavelength.h"

#include <cstdio>

#include "app/formats/text.h"
#include "elugraph/host/records.h"

namespace app {
namespace {

constexpr int kDigits = 10;

std::string Number(double value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  return text;
}

}  // namespace

std::string WavelengthName(double nm) { return Number(nm, kDigits) + " nm"; }

std::optional<double> WavelengthOf(std::string_view name) {
  name = Trim(name);
  if (name.ends_with("nm")) name = Trim(name.substr(0, name.size() - 2));
  std::optional<double> nm = ParseNumber(name, '.');
  if (!nm) nm = ParseNumber(name, ',');
  return nm && *nm > 0 ? nm : std::nullopt;
}

std::string ShortWavelength(double nm) {
  constexpr std::size_t kRoom = sizeof(TChannel::name) - 1;
  std::string name = WavelengthName(nm);
  for (int digits = kDigits; name.size() > kRoom && digits > 0; --digits) {
    name = Number(nm, digits);
  }
  return name;
}

}  // namespace app
