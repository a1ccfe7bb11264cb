#include "app/demo_spectra.h"

#include <array>
#include <cmath>

#include "app/demo_run.h"
#include "app/formats/wavelength.h"
#include "app/random.h"

namespace app {
namespace {

constexpr double kPeriodS = 0.5;
constexpr std::size_t kSamples = 1441;
constexpr double kLowestNm = 200;
constexpr double kStepNm = 2;
constexpr std::size_t kWavelengths = 101;
constexpr double kNoise = 0.08;       // mAU, standard deviation
constexpr double kDriftPerMin = 0.9;  // mAU at kLowestNm

// An absorption band.
struct Absorption {
  double centreNm;
  double widthNm;
  double share;
};
struct Substance {
  double meanMin;
  double sigmaS;
  double tauS;
  double area;  // mAU × s at the spectrum's unit
  std::array<Absorption, 3> bands;
};
constexpr std::array kSubstances = {
    Substance{1.15, 2.4, 1.5, 900, {{{198, 12, 1}, {230, 10, 0.2}, {0, 1, 0}}}},
    Substance{2.60, 3.6, 2.5, 2600, {{{204, 11, 1}, {254, 9, 0.55}, {292, 14, 0.1}}}},
    Substance{3.75, 4.2, 2.0, 2100, {{{215, 12, 0.7}, {272, 13, 1}, {310, 16, 0.25}}}},
    Substance{4.05, 4.4, 3.0, 1700, {{{208, 12, 1}, {236, 11, 0.5}, {325, 18, 0.8}}}},
    Substance{5.60, 5.2, 6.0, 5200, {{{201, 14, 1}, {244, 12, 0.8}, {286, 12, 0.45}}}},
    Substance{7.10, 5.6, 3.0, 1500, {{{222, 13, 0.6}, {265, 10, 0.3}, {358, 19, 1}}}},
    Substance{8.35, 6.0, 4.0, 3400, {{{206, 10, 1}, {278, 12, 0.7}, {0, 1, 0}}}},
    Substance{9.05, 6.2, 5.0, 900, {{{212, 14, 1}, {300, 22, 0.9}, {345, 18, 0.7}}}},
    Substance{10.60, 7.0, 4.5, 2200, {{{200, 16, 0.8}, {228, 12, 0.9}, {312, 20, 0.6}}}},
};

double Absorbance(const Substance& substance, double nm) {
  double sum = 0;
  for (const Absorption& band : substance.bands) {
    const double d = (nm - band.centreNm) / band.widthNm;
    sum += band.share * std::exp(-d * d / 2);
  }
  return sum;
}

std::vector<double> Elution(const Substance& substance) {
  std::vector<double> values(kSamples);
  for (std::size_t i = 0; i < kSamples; ++i) {
    values[i] =
        substance.area * ModifiedGaussian(static_cast<double>(i) * kPeriodS, substance.meanMin * 60,
                                          substance.sigmaS, substance.tauS);
  }
  return values;
}

}  // namespace

RunData DemoSpectra() {
  std::array<std::vector<double>, kSubstances.size()> elutions;
  for (std::size_t s = 0; s < kSubstances.size(); ++s) elutions[s] = Elution(kSubstances[s]);
  RunData run;
  Random random(0x2D0C);
  for (std::size_t w = 0; w < kWavelengths; ++w) {
    const double nm = kLowestNm + static_cast<double>(w) * kStepNm;
    const double drift = kDriftPerMin * std::exp((kLowestNm - nm) / 25);
    Trace trace;
    trace.name = WavelengthName(nm);
    trace.unit = "mAU";
    trace.periodS = kPeriodS;
    trace.values.resize(kSamples);
    for (std::size_t i = 0; i < kSamples; ++i) {
      trace.values[i] = drift * trace.TimeAt(i) / 60 + kNoise * random.Normal();
    }
    for (std::size_t s = 0; s < kSubstances.size(); ++s) {
      const double absorbance = Absorbance(kSubstances[s], nm);
      for (std::size_t i = 0; i < kSamples; ++i) trace.values[i] += absorbance * elutions[s][i];
    }
    run.channels.push_back(std::move(trace));
  }
  return run;
}

}  // namespace app
