// Matrix division for builds without third-party libraries.
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

#include "elugraph/host/engine.h"

// Gaussian elimination with partial pivoting after scaling the rows and columns of the divisor to
// comparable size (Golub, Van Loan: Matrix Computations, 4th ed., sections 3.4 and 3.5).
int TDoubleMatrix::operator/=(TDoubleMatrix& divisor) {
  const LONG n = divisor.rowCount;
  if (divisor.columnCount != n || rowCount != n) {
    throw std::invalid_argument("matrix division: sizes do not fit");
  }
  const auto at = [](LONG i) { return static_cast<std::size_t>(i); };
  std::vector<std::vector<double>> left(at(n)), right(at(n));
  std::vector<double> columnScale(at(n), 1.0);
  for (LONG r = 0; r < n; ++r) {
    left[at(r)].assign(divisor[r], divisor[r] + n);
    right[at(r)].assign((*this)[r], (*this)[r] + columnCount);
    double largest = 0.0;
    for (double v : left[at(r)]) largest = std::fmax(largest, std::fabs(v));
    if (!(largest > 0.0) || !std::isfinite(largest)) {
      throw std::domain_error("matrix division: singular");
    }
    for (double& v : left[at(r)]) v /= largest;
    for (double& v : right[at(r)]) v /= largest;
  }
  for (LONG c = 0; c < n; ++c) {
    double largest = 0.0;
    for (LONG r = 0; r < n; ++r) largest = std::fmax(largest, std::fabs(left[at(r)][at(c)]));
    if (!(largest > 0.0)) throw std::domain_error("matrix division: singular");
    columnScale[at(c)] = largest;
    for (LONG r = 0; r < n; ++r) left[at(r)][at(c)] /= largest;
  }
  for (LONG step = 0; step < n; ++step) {
    LONG pivot = step;
    for (LONG r = step + 1; r < n; ++r) {
      if (std::fabs(left[at(r)][at(step)]) > std::fabs(left[at(pivot)][at(step)])) pivot = r;
    }
    if (std::fabs(left[at(pivot)][at(step)]) < 1e-15) {
      throw std::domain_error("matrix division: singular");
    }
    std::swap(left[at(step)], left[at(pivot)]);
    std::swap(right[at(step)], right[at(pivot)]);
    for (LONG r = 0; r < n; ++r) {
      if (r == step) continue;
      const double factor = left[at(r)][at(step)] / left[at(step)][at(step)];
      if (factor == 0.0) continue;
      for (LONG c = step; c < n; ++c) left[at(r)][at(c)] -= factor * left[at(step)][at(c)];
      for (std::size_t c = 0; c < right[at(r)].size(); ++c) {
        right[at(r)][c] -= factor * right[at(step)][c];
      }
    }
  }
  for (LONG r = 0; r < n; ++r) {
    const double divide = left[at(r)][at(r)] * columnScale[at(r)];
    for (LONG c = 0; c < columnCount; ++c) (*this)[r][c] = right[at(r)][at(c)] / divide;
  }
  return 1;
}
