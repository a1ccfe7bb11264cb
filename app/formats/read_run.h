// Reading a file of measured data, whatever its kind.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// Reads the file into `run`. The kind is recognised by the contents, never by the name. Returns
// false where the file cannot be read or its contents are not understood in full; `error` is then
// one line, "FILE: cause" or "FILE:LINE: cause", and `run` is unchanged.
bool ReadRun(const std::string& path, const ReadOptions& options, RunData& run, std::string& error);
// The same for contents already in memory; `name` stands for the file in `error`.
bool ReadRunBytes(const std::string& name, std::string_view bytes, const ReadOptions& options,
                  RunData& run, std::string& error);

}  // namespace app
