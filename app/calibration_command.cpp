#include "app/calibration_command.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <utility>
#include <vector>

#include "app/formats/standards_table.h"
#include "app/program.h"
#include "elugraph/plots/calib_render.h"
#include "embedded/numeric/calibration_fit.h"
#include "embedded/run.h"

namespace app {
namespace {

using embedded::CalibrationCurve;

std::string CurveText(const CalibrationCurve& curve, const embedded::FitReport& report) {
  static constexpr std::array kPowers = {"", " x amount", " x amount^2"};
  std::string text = "response =";
  for (std::size_t power = 0; power < curve.coefficients.size(); ++power) {
    const double coefficient = curve.coefficients[power];
    const char* sign = coefficient < 0 ? "- " : power > 0 ? "+ " : "";
    char term[64];
    std::snprintf(term, sizeof term, " %s%.10g%s", sign, std::abs(coefficient), kPowers.at(power));
    text += term;
  }
  char quality[96];
  std::snprintf(quality, sizeof quality,
                ", r2 %.6f, residual deviation %.6g, %d degrees of freedom", report.rSquared,
                report.residualDeviation, report.degreesOfFreedom);
  return text + quality;
}

// A run with nothing but the component's calibration.
embedded::RunRef CalibratedRun(const ComponentStandards& component, const CalibrationCurve& curve,
                               std::string& error) {
  embedded::ChannelData channel;
  channel.name = "none";
  channel.counts = {0, 0};
  channel.periodSec = 1;
  embedded::RunData data;
  data.channels.push_back(std::move(channel));
  data.components.push_back({component.name, 0, 0});
  embedded::RunRef run = embedded::MakeRun(data, error);
  if (run != nullptr) run->SetCalibration(0, component.standards, curve);
  return run;
}

}  // namespace

CalibrationCommand::CalibrationCommand(CLI::App& program)
    : command_(*program.add_subcommand("calibration", "Fit and draw a component's calibration")) {
  command_
      .add_option("FILE", file_,
                  "Table of standards: columns amount and response (or the first two of numbers); "
                  "component and excluded (yes or no) where there are such columns")
      ->required();
  command_.add_option("--amount", amount_, "Column of amounts, by name or number from 1")
      ->type_name("COLUMN");
  command_.add_option("--response", response_, "Column of responses")->type_name("COLUMN");
  command_.add_option("--component", component_, "Component to draw; default: the first one")
      ->type_name("NAME");
  AddCurveOptions(command_, curve_);
  command_
      .add_option("--band", band_, "Confidence band of the curve at this probability, such as 0.95")
      ->check(CLI::Range(0.0, 1.0));
  command_.add_flag("--swap", swap_, "Responses on the x axis");
  command_
      .add_option("--axes", axes_,
                  "Ranges: with the origin; with the curve's value at 0 (curve); from zero, the "
                  "curve from the standards on (zero); around the standards (standards)")
      ->check(CLI::IsMember({"origin", "curve", "zero", "standards"}))
      ->capture_default_str();
  AddOutputOptions(command_, output_);
}

int CalibrationCommand::Run() const {
  int widthPx = 0;
  int heightPx = 0;
  std::string error;
  if (!ParseSize(output_.size, widthPx, heightPx, error)) return Fail(error);

  const std::string stem = std::filesystem::path(file_).stem().string();
  const std::vector<ComponentStandards> components =
      ReadStandards(file_, {amount_, response_}).components;
  const auto shown =
      component_.empty()
          ? components.begin()
          : std::find_if(components.begin(), components.end(),
                         [this](const ComponentStandards& c) { return c.name == component_; });
  if (shown == components.end()) return Fail(file_ + ": has no component '" + component_ + "'");

  embedded::FitReport report;
  const CalibrationCurve curve = FitStandards(file_, *shown, curve_, &report);
  const embedded::RunRef run = CalibratedRun(*shown, curve, error);
  if (run == nullptr) return Fail(file_ + ": " + shown->name + ": " + error);

  CalibPool& pool = run->calibration;
  pool.swapAxes = swap_ ? 1 : 0;
  pool.originMode = axes_ == "curve" ? 1 : axes_ == "zero" ? 3 : 0;
  pool.suppressZeroX = axes_ == "standards" ? 1 : 0;
  if (band_ > 0) {
    if (!(static_cast<float>(band_) < 1.0F)) return Fail("--band: must be below 1");
    if (curve.band == nullptr) {
      return Fail(file_ + ": " + shown->name + ": no band: as many coefficients as standards");
    }
    pool.flags |= CalibPool::kShowBand;
    pool.bandLevel = static_cast<float>(band_);
  }
  const Canvas canvas(widthPx, heightPx);
  TCalibRender render(run.get());
  render.SetFont(canvas.Font());
  RECT area = canvas.Area();
  render.Render(canvas.Context(), area);
  return SavePicture(canvas.Picture(), output_, {file_}, stem,
                     {shown->name + ": " + CurveText(curve, report)});
}

}  // namespace app
