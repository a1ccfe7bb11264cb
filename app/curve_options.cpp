#include "app/curve_options.h"

#include "app/formats/text.h"

namespace app {

void AddCurveOptions(CLI::App& command, CurveOptions& options) {
  command.add_option("--fit", options.fit, "Shape of the calibration curve")
      ->check(CLI::IsMember({"linear", "quadratic"}))
      ->capture_default_str();
  command.add_flag("--through-origin", options.throughOrigin, "Curve without a constant term");
  command.add_option("--weights", options.weights, "Weights of the standards, by amount x")
      ->check(CLI::IsMember({"1", "1/x", "1/x2"}))
      ->capture_default_str();
}

embedded::CalibrationCurve FitStandards(const std::string& file, const ComponentStandards& of,
                                        const CurveOptions& options, embedded::FitReport* report) {
  constexpr std::size_t kMostStandards = 0xFFFF;
  embedded::FitOptions how;
  if (options.fit == "quadratic") how.shape = embedded::CurveShape::kQuadratic;
  how.throughOrigin = options.throughOrigin;
  if (options.weights == "1/x") how.weighting = embedded::Weighting::kInverseAmount;
  if (options.weights == "1/x2") how.weighting = embedded::Weighting::kInverseAmountSquared;
  embedded::CalibrationCurve curve;
  const std::string cause = of.standards.size() > kMostStandards
                                ? "too many standards"
                                : embedded::FitCurve(of.standards, how, curve, report);
  if (!cause.empty()) throw FileError(file + ": " + of.name + ": " + cause);
  return curve;
}

}  // namespace app
