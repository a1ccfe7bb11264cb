#include "embedded/numeric/calibration_fit.h"

#include <Eigen/Dense>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <limits>

namespace embedded {
namespace {

// A curve has at most three coefficients: no memory is asked for where a band is drawn.
constexpr int kMostTerms = 3;
using Terms = Eigen::Matrix<double, Eigen::Dynamic, 1, 0, kMostTerms, 1>;
using TermMatrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, 0, kMostTerms, kMostTerms>;

class StudentBand final : public ConfidenceBand {
 public:
  // `covariance` of the coefficients of the powers from `lowest` on.
  StudentBand(const TermMatrix& covariance, int lowest, int degreesOfFreedom)
      : covariance_(covariance), lowest_(lowest), student_(degreesOfFreedom) {}

  double HalfWidth(double level, double amount) const override {
    if (!(level > 0.0 && level < 1.0) || !std::isfinite(amount)) return 0.0;
    Terms powers(covariance_.rows());
    for (Eigen::Index i = 0; i < powers.size(); ++i) {
      powers[i] = std::pow(amount, static_cast<double>(i + lowest_));
    }
    const Terms turned = covariance_.lazyProduct(powers);
    const double variance = powers.dot(turned);
    // The upper tail keeps its digits where the level is close to 1.
    const double t = boost::math::quantile(boost::math::complement(student_, 0.5 * (1.0 - level)));
    return t * std::sqrt(std::max(variance, 0.0));
  }

 private:
  TermMatrix covariance_;
  int lowest_;
  boost::math::students_t student_;
};

std::string FindUsed(std::span<const Standard> standards, std::vector<Standard>& used) {
  for (std::size_t i = 0; i < standards.size(); ++i) {
    if (standards[i].excluded) continue;
    if (!std::isfinite(standards[i].amount) || !std::isfinite(standards[i].response)) {
      return "standard " + std::to_string(i + 1) + " is not a finite number";
    }
    used.push_back(standards[i]);
  }
  return {};
}

void FindRange(const std::vector<Standard>& used, CalibrationCurve& curve) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double positive = kInfinity;
  curve.lowestAmount = kInfinity;
  curve.highestAmount = -kInfinity;
  for (const Standard& each : used) {
    curve.lowestAmount = std::min(curve.lowestAmount, each.amount);
    curve.highestAmount = std::max(curve.highestAmount, each.amount);
    if (each.amount > 0.0) positive = std::min(positive, each.amount);
  }
  curve.lowestPositive = std::isfinite(positive) ? positive : 0.0;
}

double RSquared(const Eigen::VectorXd& weights, const Eigen::VectorXd& responses, double residual,
                bool throughOrigin) {
  const double mean = throughOrigin ? 0.0 : weights.dot(responses) / weights.sum();
  const double total = weights.dot((responses.array() - mean).square().matrix());
  return total > 0.0 ? 1.0 - residual / total : 1.0;
}

}  // namespace

std::string FitCurve(std::span<const Standard> standards, const FitOptions& options,
                     CalibrationCurve& curve, FitReport* report) {
  std::vector<Standard> used;
  if (std::string fault = FindUsed(standards, used); !fault.empty()) return fault;
  const int lowest = options.throughOrigin ? 1 : 0;
  const int highest = options.shape == CurveShape::kQuadratic ? 2 : 1;
  const Eigen::Index terms = highest - lowest + 1;
  const auto count = static_cast<Eigen::Index>(used.size());
  if (count < terms) {
    return std::to_string(count) + " standards for a curve of " + std::to_string(terms) +
           " coefficients";
  }
  CalibrationCurve fitted;
  fitted.weighting = options.weighting;
  FindRange(used, fitted);
  if (options.weighting != Weighting::kNone && !(fitted.lowestPositive > 0.0)) {
    return "no amount above 0 to weigh by";
  }

  Eigen::MatrixXd design(count, terms);
  Eigen::VectorXd responses(count), weights(count);
  for (Eigen::Index i = 0; i < count; ++i) {
    const Standard& standard = used[static_cast<std::size_t>(i)];
    weights[i] = fitted.WeightAt(standard.amount);
    responses[i] = standard.response;
    for (Eigen::Index k = 0; k < terms; ++k) {
      design(i, k) = std::pow(standard.amount, static_cast<double>(k + lowest));
    }
  }
  const Eigen::VectorXd rootWeights = weights.cwiseSqrt();
  const Eigen::MatrixXd weighted = rootWeights.asDiagonal() * design;
  const Eigen::VectorXd norms = weighted.colwise().norm();
  if (!norms.allFinite() || norms.minCoeff() <= 0.0)
    return "the amounts do not determine the curve";
  const Eigen::VectorXd scale = norms.cwiseInverse();
  const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> qr(weighted * scale.asDiagonal());
  if (qr.rank() < terms) return "the amounts do not determine the curve";
  const Eigen::VectorXd coefficients =
      scale.asDiagonal() * qr.solve(rootWeights.asDiagonal() * responses);
  const double residual =
      (rootWeights.asDiagonal() * (responses - design * coefficients)).squaredNorm();

  // (X' W X)^-1 = S P R^-1 R^-T P' S with the scaling S and the column permutation P.
  const Eigen::MatrixXd inverseR = qr.matrixR()
                                       .topLeftCorner(terms, terms)
                                       .triangularView<Eigen::Upper>()
                                       .solve(Eigen::MatrixXd::Identity(terms, terms));
  const Eigen::MatrixXd half = scale.asDiagonal() * (qr.colsPermutation() * inverseR);
  const int freedom = static_cast<int>(count - terms);
  const double variance = freedom > 0 ? residual / freedom : 0.0;
  const Eigen::MatrixXd covariance = variance * half * half.transpose();

  fitted.coefficients.assign(static_cast<std::size_t>(lowest), 0.0);
  fitted.coefficients.insert(fitted.coefficients.end(), coefficients.begin(), coefficients.end());
  if (freedom > 0) fitted.band = std::make_shared<StudentBand>(covariance, lowest, freedom);
  if (report != nullptr) {
    report->standardErrors.assign(static_cast<std::size_t>(lowest), 0.0);
    for (Eigen::Index k = 0; k < terms; ++k) {
      report->standardErrors.push_back(std::sqrt(covariance(k, k)));
    }
    report->residualDeviation = std::sqrt(variance);
    report->degreesOfFreedom = freedom;
    report->rSquared = RSquared(weights, responses, residual, options.throughOrigin);
  }
  curve = std::move(fitted);
  return {};
}

}  // namespace embedded
