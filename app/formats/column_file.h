// Plain column files: a table of times and one or more signals, with or without text before it.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// Reads `text` (UTF-8); `name` is what messages call the file.
//
// The table is the rows of numbers with the same number of cells; separators and decimal mark are
// those that give the most rows within the first kMaxProbedLines lines. Text lines before the table
// are metadata and header. Blank lines are skipped everywhere, lines of words after the last row
// are ignored and noted. Any other line that does not fit is an error: "FILE:LINE: cause".
//
// Times: the column whose header says so, else the first one. A column that counts the samples
// gives way to one that holds times. A column of steps (named so, or holding the time differences
// in another unit) is no signal. Unit: the option's, else the header's, else that of the step
// column, else the one that AssumedTimeUnit guesses. Samples that are only counted lie one second
// (or one `options.timeUnit`) apart.
//
// Signals: a cell without a value is allowed before the first and after the last value of a column;
// the trace is then shorter. Columns without any value are dropped.
RunData ReadColumnFile(const std::string& name, std::string_view text, const ReadOptions& options);

inline constexpr int kMaxProbedLines = 4096;

}  // namespace app
