// Wavelengths as names of channels.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace app {

// "254 nm", "190.25 nm": up to ten digits.
std::string WavelengthName(double nm);

// The wavelength that a name is: a number above 0 (decimal point or comma), alone or with "nm".
std::optional<double> WavelengthOf(std::string_view name);

// WavelengthName for the 8 bytes of a record: without the unit, and with fewer digits, where it
// must be. Records take the number at its beginning for the wavelength.
std::string ShortWavelength(double nm);

}  // namespace app
