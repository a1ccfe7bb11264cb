// Between device positions and times, wavelengths and channels.
#include <cmath>
#include <limits>

#include "elugraph/chrom2d/chrom2d_base.h"

namespace {

constexpr double kMinSpan = 1e-27;
// Half the largest double; times above it have no end.
constexpr double kUnbounded = 8.988465674311579e+307;
constexpr int kFarthest = 32767;
constexpr int kNearest = -32768;

// From column to column or row to row: doubles hold differences of 32-bit numbers exactly.
double Steps(LONG first, LONG end) { return static_cast<double>(end) - 1.0 - first; }

int Limited(double position, int notANumber) {
  if (std::isnan(position)) return notANumber;
  if (position >= kFarthest) return kFarthest;
  if (position <= kNearest) return kNearest;
  return static_cast<int>(position);
}

}  // namespace

int TChrom2DBase::Time2X(double time) {
  if (time > kUnbounded) return kFarthest;
  const double span = timeTo - timeFrom;
  if (span < kMinSpan) return mapRect.left;
  const double steps = Steps(mapRect.left, mapRect.right);
  return Limited(mapRect.left + std::floor((time - timeFrom) * steps / span + 0.5), mapRect.left);
}

int TChrom2DBase::ChanV2Y(double wavelength) {
  const double span = waveTo - waveFrom;
  if (!(span > kMinSpan)) return mapRect.bottom;
  const double steps = Steps(mapRect.top, mapRect.bottom);
  const double lowest = mapRect.bottom - 1.0;
  return Limited(lowest - std::floor((wavelength - waveFrom) * steps / span + 0.5), mapRect.bottom);
}

double TChrom2DBase::X2Time(int x) {
  const double steps = Steps(mapRect.left, mapRect.right);
  if (steps < 1) return 0.0;
  return timeFrom + (static_cast<double>(x) - mapRect.left) * (timeTo - timeFrom) / steps;
}

double TChrom2DBase::Y2ChanV(int y) {
  const double steps = Steps(mapRect.top, mapRect.bottom);
  if (steps < 1) return 0.0;
  return waveFrom + (mapRect.bottom - 1.0 - y) * (waveTo - waveFrom) / steps;
}

short TChrom2DBase::GetMapChannel(double wavelength) {
  const int count = heightMap.WaveCount();
  if (count == 0) return 0;
  const auto wave = [this](int i) { return heightMap.Wave(static_cast<WORD>(i))->wavelength; };
  int i = 0;
  while (i < count - 1 && !(wave(i) + kMinSpan > wavelength)) ++i;
  if (i > 0 && std::fabs(wavelength - wave(i - 1)) < std::fabs(wavelength - wave(i))) --i;
  return static_cast<short>(heightMap.Wave(static_cast<WORD>(i))->channel);
}

short TChrom2DBase::GetMapChannel(int y) { return GetMapChannel(Y2ChanV(y)); }
