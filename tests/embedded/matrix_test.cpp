// Matrix division as the height map uses it: the inverse of a normal matrix of powers.
#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "elugraph/host/engine.h"

namespace {

// Σ z^(r + c) over wavelengths z about a centre: elements from 60 to 1e13 and more.
void FillNormal(TDoubleMatrix& matrix, double spread) {
  matrix.Zer();
  for (double z = -spread; z <= spread; z += spread / 30.0) {
    for (int r = 0; r < matrix.rowCount; ++r) {
      for (int c = 0; c < matrix.rowCount; ++c) matrix[r][c] += std::pow(z + 0.3, r + c);
    }
  }
}

TEST(Matrix, DividingTheIdentityInverts) {
  for (const double spread : {1.0, 40.0, 300.0}) {
    TDoubleMatrix normal(4, 4), copy(4, 4), inverse(4, 4);
    FillNormal(normal, spread);
    FillNormal(copy, spread);
    for (int i = 0; i < 4; ++i) inverse[i][i] = 1.0;
    EXPECT_NE(inverse /= normal, 0);
    for (int r = 0; r < 4; ++r) {
      for (int c = 0; c < 4; ++c) {
        double product = 0.0, size = 0.0;
        for (int k = 0; k < 4; ++k) {
          product += copy[r][k] * inverse[k][c];
          size += std::fabs(copy[r][k] * inverse[k][c]);
        }
        EXPECT_NEAR(product, r == c ? 1.0 : 0.0, 1e-12 * (1.0 + size)) << spread << r << c;
      }
    }
  }
}

TEST(Matrix, RaisesWhatCannotBeDivided) {
  TDoubleMatrix left(2, 2), singular(2, 2), wide(2, 3);
  singular[0][0] = 1.0, singular[0][1] = 2.0, singular[1][0] = 2.0, singular[1][1] = 4.0;
  EXPECT_THROW(left /= singular, std::domain_error);
  EXPECT_THROW(left /= wide, std::invalid_argument);
}

}  // namespace
