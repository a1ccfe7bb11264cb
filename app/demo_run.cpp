#include "app/demo_run.h"

#include <array>
#include <cmath>
#include <numbers>

#include "app/random.h"

namespace app {
namespace {

constexpr double kPeriodS = 0.1;
constexpr std::size_t kSamples = 12'001;

struct Wavelength {
  const char* name;
  double driftPerMin;  // mAU
  double noise;        // mAU, standard deviation
};
constexpr std::array kWavelengths = {
    Wavelength{"220 nm", 0.35, 0.10},
    Wavelength{"254 nm", 0.10, 0.06},
    Wavelength{"280 nm", -0.05, 0.05},
};

struct Substance {
  double meanMin;
  double sigmaS;
  double tauS;
  std::array<double, kWavelengths.size()> area;  // mAU × s
};
constexpr std::array kSubstances = {
    Substance{1.62, 1.6, 0.8, {160, 60, 20}},    Substance{3.35, 2.6, 1.2, {640, 320, 110}},
    Substance{4.10, 2.9, 1.6, {410, 60, 190}},   Substance{4.42, 3.0, 1.5, {260, 180, 60}},
    Substance{6.25, 3.6, 4.5, {1450, 610, 720}}, Substance{8.05, 4.1, 2.4, {230, 320, 90}},
    Substance{9.70, 4.4, 3.0, {980, 1240, 300}}, Substance{10.25, 4.6, 2.2, {390, 130, 350}},
    Substance{12.90, 5.2, 6.0, {720, 90, 810}},  Substance{15.60, 6.0, 3.5, {150, 420, 130}},
    Substance{17.45, 6.4, 5.0, {540, 380, 260}},
};

}  // namespace

double ModifiedGaussian(double t, double mean, double sigma, double tau) {
  const double d = (t - mean) / sigma;
  const double z = (sigma / tau - d) / std::numbers::sqrt2;
  if (z < 0) {
    const double ratio = sigma / tau;
    return std::exp(ratio * (ratio / 2 - d)) * std::erfc(z) / (2 * tau);
  }
  // exp(z²) × erfc(z); its asymptotic form where exp(z²) leaves the range.
  const double scaled =
      z < 25 ? std::exp(z * z) * std::erfc(z) : 1 / (z * std::sqrt(std::numbers::pi));
  return std::exp(-d * d / 2) * scaled / (2 * tau);
}

RunData DemoRun() {
  RunData run;
  Random random(0x65C1);
  for (std::size_t w = 0; w < kWavelengths.size(); ++w) {
    Trace trace;
    trace.name = kWavelengths[w].name;
    trace.unit = "mAU";
    trace.periodS = kPeriodS;
    trace.values.resize(kSamples);
    for (std::size_t i = 0; i < kSamples; ++i) {
      const double t = trace.TimeAt(i);
      double value = kWavelengths[w].driftPerMin * t / 60 + kWavelengths[w].noise * random.Normal();
      for (const Substance& s : kSubstances) {
        value += s.area[w] * ModifiedGaussian(t, s.meanMin * 60, s.sigmaS, s.tauS);
      }
      trace.values[i] = value;
    }
    run.channels.push_back(std::move(trace));
  }
  return run;
}

}  // namespace app
