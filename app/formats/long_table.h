// Tables in long form: one row per sample, with a column that names its signal.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where the first line is a header that names a column of times, one of signals ("Detector",
// "Channel", "Signal", "Trace") and one of values ("Intensity", "Value", "Signal value",
// "Response", "Absorbance").
bool IsLongTable(std::string_view text);

// Reads `text` (UTF-8, separated by tabs, semicolons or commas); `name` is what messages call the
// file. Rows of one signal may stand anywhere, in the order of their times. Other columns are not
// read. Unit of the times: as ReadColumnFile.
RunData ReadLongTable(const std::string& name, std::string_view text, const ReadOptions& options);

}  // namespace app
