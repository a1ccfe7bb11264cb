// Fitting calibration curves.
//
// Weighted least squares of the response on the amount, by Householder QR of the design matrix with
// scaled columns (G. H. Golub, C. F. Van Loan, Matrix Computations, 4th ed., 2013, section 5.3).
// Confidence band of the mean response, point by point, from Student's t (N. R. Draper, H. Smith,
// Applied Regression Analysis, 3rd ed., Wiley 1998, sections 1.4, 3.1, 9.2):
// half width = t((1 + level) / 2, n − p) × s × sqrt(v' (X' W X)^-1 v), v = (1, x, x²).
#pragma once

#include <span>
#include <string>
#include <vector>

#include "embedded/calibration.h"

namespace embedded {

enum class CurveShape { kLinear, kQuadratic };

struct FitOptions {
  CurveShape shape = CurveShape::kLinear;
  bool throughOrigin = false;
  Weighting weighting = Weighting::kNone;
};

struct FitReport {
  // Of the curve's coefficients; 0 for one that is fixed.
  std::vector<double> standardErrors;
  double residualDeviation = 0.0;  // weighted; 0 without degrees of freedom
  int degreesOfFreedom = 0;
  // 1 − residual / total sum of squares, weighted; the total is taken about the mean, through the
  // origin about 0. 1 where the total is 0.
  double rSquared = 0.0;
};

// Fits a curve to the standards that are not excluded. The band needs a degree of freedom; without
// one the curve has none. Returns the empty text, or the cause: a value that is not finite, too few
// standards (fewer than coefficients), amounts that do not determine the curve, or weights without
// an amount above 0. `curve` and `report` (may be null) are then unchanged.
std::string FitCurve(std::span<const Standard> standards, const FitOptions& options,
                     CalibrationCurve& curve, FitReport* report = nullptr);

}  // namespace embedded
