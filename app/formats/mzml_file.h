// Chromatograms of mzML files (HUPO PSI, mzML 1.1).
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where the text's first element is <mzML> or <indexedmzML>.
bool IsMzMl(std::string_view bytes);

// Reads every <chromatogram>; `name` is what messages call the file. Spectra are not read. Arrays:
// 32- and 64-bit floats, plain or zlib-compressed. Units: those of the arrays' terms; times without
// one are read as ReadColumnFile reads them. Pressure, flow and temperature chromatograms are
// auxiliary channels. Chromatograms of fewer than two points are left out, with a note.
RunData ReadMzMl(const std::string& name, std::string_view bytes, const ReadOptions& options);

}  // namespace app
