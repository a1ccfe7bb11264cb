// Chromatograms of JCAMP-DX files (McDonald and Wilks, Appl. Spectrosc. 42 (1988) 151; scans:
// Lampen et al., Appl. Spectrosc. 48 (1994) 1545).
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where the first line that is not blank begins with "##".
bool IsJcamp(std::string_view text);

// Reads `text` (UTF-8); `name` is what messages call the file. Either one table of points, or scans
// each of which states its retention time and total ion current (their spectra are not read).
//
// Tables: (XY..XY) pairs in XYPOINTS, XYDATA or PEAK TABLE, and (X++(Y..Y)) lines in XYDATA, whose
// steps follow from FIRSTX, LASTX and NPOINTS (or DELTAX). Numbers are AFFN: plain, with signs and
// exponents; the compressed forms are refused. XFACTOR and YFACTOR multiply. NPOINTS must be right.
// Times: the unit that XUNITS names; without a time unit there, as ReadColumnFile reads them.
RunData ReadJcamp(const std::string& name, std::string_view text, const ReadOptions& options);

}  // namespace app
