// Integration paths as CSV files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "elugraph/chrom2d/si_path.h"

namespace app {

// One line per segment under the header
//   end_s,low_nm,low_channel,high_nm,high_channel
// with the segment's end in seconds from the run's first sample ("open" for the last one), and the
// limits of its band by wavelength and by channel, counted from 1. Numbers have as many digits as
// reading them back exactly takes. `wavesNm` are the channels' wavelengths in ascending order.
std::string PathText(const SIPath& path, const std::vector<double>& wavesNm);

// Reads such a text. The wavelengths decide: each stands for the channel nearest to it, so that a
// path fits runs with other wavelengths too. Channel numbers are not looked at, and their columns
// may be missing. Blank lines do not count. `name` is what errors call the file: "NAME:LINE:
// cause". False on errors; `path` is then unchanged.
bool ParsePath(const std::string& name, std::string_view text, const std::vector<double>& wavesNm,
               SIPath& path, std::string& error);

}  // namespace app
