// Random numbers that are the same on every machine.
#pragma once

#include <cstdint>

namespace app {

// SplitMix64 (Steele, Lea, Flood: OOPSLA 2014).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  double Uniform() {  // 0 ≤ u < 1
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return static_cast<double>((z ^ z >> 31) >> 11) * 0x1p-53;
  }
  // Twelve uniforms are close enough to a normal variable of unit variance.
  double Normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += Uniform();
    return sum;
  }

 private:
  std::uint64_t state_;
};

}  // namespace app
