// A generated diode-array run, for showing maps without a file.
#pragma once

#include "app/run_data.h"

namespace app {

// 12 minutes at 2 samples per second on 101 wavelengths from 200 to 400 nm (mAU): peaks with
// spectra of their own, two of them overlapping, a gradient's drift at short wavelengths, noise.
// The same values on every call.
RunData DemoSpectra();

}  // namespace app
