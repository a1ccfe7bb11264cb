// A generated run, for showing what the program draws without a file.
#pragma once

#include "app/run_data.h"

namespace app {

// 20 minutes at 10 samples per second on three wavelengths (mAU): peaks of exponentially modified
// Gaussian shape, baseline drift and noise. The same values on every call.
RunData DemoRun();

// An exponentially modified Gaussian of unit area (Grushka, Anal. Chem. 44 (1972) 1733), in the
// form that stays finite (Kalambet et al., J. Chemometrics 25 (2011) 352). `mean` and `sigma` are
// those of the Gaussian part, `tau` is the time constant; sigma and tau are positive.
double ModifiedGaussian(double t, double mean, double sigma, double tau);

}  // namespace app
