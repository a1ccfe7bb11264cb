#include "embedded/calibration.h"

#include <algorithm>
#include <cmath>

#include "embedded/run.h"

namespace embedded {
namespace {

double Coefficient(const std::vector<double>& coefficients, std::size_t power) {
  return power < coefficients.size() ? coefficients[power] : 0.0;
}

bool SwapsAxes(const CalibPool& pool, const component& of) {
  return ((of.flags & component::kOwnDisplay) != 0 ? of.swapAxes : pool.swapAxes) != 0;
}

const CalibratedComponent* Find(const CalibPool* pool, const component* of) {
  const Run* run = Run::Of(pool);
  return run != nullptr && of != nullptr ? run->ComponentOf(of) : nullptr;
}

const Standard* FindStandard(const CalibPool* pool, const component* of, int point) {
  const CalibratedComponent* found = Find(pool, of);
  return found != nullptr && point >= 0 && point < static_cast<int>(found->standards.size())
             ? &found->standards[static_cast<std::size_t>(point)]
             : nullptr;
}

}  // namespace

double CalibrationCurve::ResponseAt(double amount) const {
  double response = 0.0;
  for (std::size_t i = coefficients.size(); i-- > 0;)
    response = response * amount + coefficients[i];
  return response;
}

double CalibrationCurve::SlopeAt(double amount) const {
  return Coefficient(coefficients, 1) + 2.0 * Coefficient(coefficients, 2) * amount;
}

double CalibrationCurve::AmountAt(double response) const {
  const double a = Coefficient(coefficients, 2);
  const double b = Coefficient(coefficients, 1);
  const double c = Coefficient(coefficients, 0) - response;
  if (a == 0.0) return b != 0.0 ? -c / b : 0.0;
  const double discriminant = b * b - 4.0 * a * c;
  if (!(discriminant > 0.0)) return -b / (2.0 * a);
  // Without cancellation: Press et al., Numerical Recipes, 3rd ed., section 5.6.
  const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  const double first = q / a;
  const double second = q != 0.0 ? c / q : first;
  // The solutions lie as far to the one side of the vertex as to the other.
  const double middle = 0.5 * (lowestAmount + highestAmount);
  return std::fabs(first - middle) < std::fabs(second - middle) ? first : second;
}

double CalibrationCurve::WeightAt(double amount) const {
  if (weighting == Weighting::kNone) return 1.0;
  const double weighed = amount > 0.0 ? amount : lowestPositive;
  if (!(weighed > 0.0)) return 1.0;
  return weighting == Weighting::kInverseAmount ? 1.0 / weighed : 1.0 / (weighed * weighed);
}

short ComponentStatistics::Available() { return component_.curve.band != nullptr ? 1 : 0; }

void ComponentStatistics::BandHalfWidth(double level, double x, double, double& halfWidth) {
  const CalibrationCurve& curve = component_.curve;
  const bool swapped = SwapsAxes(pool_, component_);
  const double amount = swapped ? curve.AmountAt(x) : x;
  halfWidth = curve.band != nullptr ? curve.band->HalfWidth(level, amount) : 0.0;
  if (!swapped) return;
  const double slope = std::fabs(curve.SlopeAt(amount));
  halfWidth = slope > 0.0 ? halfWidth / slope : 0.0;
}

}  // namespace embedded

// A point that the component has no standard for counts as excluded.
bool CalibPool::PointIsExcluded(component* of, int point) {
  const embedded::Standard* standard = embedded::FindStandard(this, of, point);
  return standard == nullptr || standard->excluded;
}

double CalibPool::PointToX(component* of, int point) {
  const embedded::Standard* standard = embedded::FindStandard(this, of, point);
  if (standard == nullptr) return 0.0;
  return embedded::SwapsAxes(*this, *of) ? standard->response : standard->amount;
}

double CalibPool::PointToY(component* of, int point) {
  const embedded::Standard* standard = embedded::FindStandard(this, of, point);
  if (standard == nullptr) return 0.0;
  return embedded::SwapsAxes(*this, *of) ? standard->amount : standard->response;
}

double CalibPool::XtoYtab(component* of, double x) {
  const embedded::CalibratedComponent* found = embedded::Find(this, of);
  if (found == nullptr) return 0.0;
  return embedded::SwapsAxes(*this, *of) ? found->curve.AmountAt(x) : found->curve.ResponseAt(x);
}

double CalibPool::XtoStatWeight(component* of, double x) {
  const embedded::CalibratedComponent* found = embedded::Find(this, of);
  if (found == nullptr) return 1.0;
  return found->curve.WeightAt(embedded::SwapsAxes(*this, *of) ? found->curve.AmountAt(x) : x);
}
