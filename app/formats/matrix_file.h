// Matrices of times and wavelengths as plain text.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where the options say so, or where `text` is a table of numbers whose first row and first
// column are times and wavelengths, but not the plain table of one named column per wavelength that
// the reader of columns understands: wavelengths down and times across, or a number in the corner.
//
// Wavelengths are known by their size and order (see kLowestNm), or by the corner's first word.
// Without a word in the corner, axes must be evenly spaced too.
bool IsMatrixFile(const std::string& name, std::string_view text, const ReadOptions& options);

// Reads `text` (UTF-8); `name` is what messages call the file. Axes that the options do not state
// are the first row and the first column. Every wavelength is a channel, named by it, in the order
// of the file. Throws FileError.
RunData ReadMatrixFile(const std::string& name, std::string_view text, const ReadOptions& options);

inline constexpr double kLowestNm = 100;
inline constexpr double kHighestNm = 3000;

}  // namespace app
