#include "app/calibration_command.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "app/formats/table.h"
#include "app/program.h"
#include "elugraph/plots/calib_render.h"
#include "embedded/numeric/calibration_fit.h"
#include "embedded/run.h"

namespace app {
namespace {

using embedded::CalibrationCurve;
using embedded::Standard;

struct Component {
  std::string name;
  std::vector<Standard> standards;
};

using UsualNames = std::initializer_list<std::string_view>;

// The named column, else the first one with a usual name.
std::optional<std::size_t> NamedColumn(const Table& table, const std::string& wanted,
                                       UsualNames usual) {
  if (!wanted.empty()) return table.Require(wanted);
  for (const std::string_view name : usual) {
    if (const auto column = table.Find(name)) return column;
  }
  return std::nullopt;
}

struct Roles {
  std::size_t amount;
  std::size_t response;
};

// A role without a name takes the first column of numbers that has no other role.
Roles ChooseColumns(const Table& table, const std::string& amountName,
                    const std::string& responseName) {
  auto amount = NamedColumn(table, amountName, {"amount", "concentration", "x"});
  auto response = NamedColumn(table, responseName, {"response", "area", "height", "y"});
  const auto firstFree = [&]() -> std::optional<std::size_t> {
    for (std::size_t column = 0; column < table.ColumnCount(); ++column) {
      const bool taken = column == amount || column == response ||
                         column == table.Find("component") || column == table.Find("excluded");
      if (!taken && table.IsNumeric(column)) return column;
    }
    return std::nullopt;
  };
  if (!amount) amount = firstFree();
  if (!amount) amount = table.Require("amount");
  if (!response) response = firstFree();
  if (!response) response = table.Require("response");
  return {*amount, *response};
}

bool IsExcluded(const Table& table, std::size_t row, std::size_t column) {
  static constexpr std::array kYes = {"1", "yes", "y", "true", "x", "excluded"};
  static constexpr std::array kNo = {"0", "no", "n", "false"};
  const std::string cell = Lower(table.Cell(row, column));
  if (std::find(kYes.begin(), kYes.end(), cell) != kYes.end()) return true;
  if (!IsMissing(cell) && std::find(kNo.begin(), kNo.end(), cell) == kNo.end()) {
    table.Fail(row, table.ColumnName(column) + ": '" + cell + "' is neither yes nor no");
  }
  return false;
}

// Components in the order of their first standards.
std::vector<Component> ReadStandards(const Table& table, std::size_t amount, std::size_t response,
                                     const std::string& onlyName) {
  const auto name = table.Find("component");
  const auto excluded = table.Find("excluded");
  std::vector<Component> components;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const std::string of = name ? std::string(table.Cell(row, *name)) : onlyName;
    auto found = std::find_if(components.begin(), components.end(),
                              [&](const Component& component) { return component.name == of; });
    if (found == components.end()) found = components.insert(found, {of, {}});
    const Standard standard{table.Number(row, amount), table.Number(row, response),
                            excluded && IsExcluded(table, row, *excluded)};
    // A level that was not measured is no standard.
    if (std::isnan(standard.amount) || std::isnan(standard.response)) continue;
    found->standards.push_back(standard);
  }
  return components;
}

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
embedded::RunRef CalibratedRun(const Component& component, const CalibrationCurve& curve,
                               std::string& error) {
  embedded::ChannelData channel;
  channel.name = "none";
  channel.counts = {0, 0};
  channel.periodSec = 1;
  embedded::RunData data;
  data.channels.push_back(std::move(channel));
  data.components.push_back({component.name, 0, 0});
  embedded::RunRef run = embedded::MakeRun(data, error);
  if (run != nullptr && !run->SetCalibration(0, component.standards, curve)) {
    error = "too many standards";
    run.reset();
  }
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
  command_.add_option("--fit", fit_, "Shape of the curve")
      ->check(CLI::IsMember({"linear", "quadratic"}))
      ->capture_default_str();
  command_.add_flag("--through-origin", throughOrigin_, "No constant term");
  command_.add_option("--weights", weights_, "Weights of the standards, by amount x")
      ->check(CLI::IsMember({"1", "1/x", "1/x2"}))
      ->capture_default_str();
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
  const std::string text = DecodeText(ReadBytes(file_));
  const Table table(file_, text);
  const Roles columns = ChooseColumns(table, amount_, response_);
  if (columns.amount == columns.response) {
    return Fail(file_ + ": amounts and responses cannot both be in column '" +
                table.ColumnName(columns.amount) + "'");
  }
  const std::vector<Component> components =
      ReadStandards(table, columns.amount, columns.response, stem);
  if (components.empty()) return Fail(file_ + ": has no standards");
  const auto shown =
      component_.empty()
          ? components.begin()
          : std::find_if(components.begin(), components.end(),
                         [this](const Component& c) { return c.name == component_; });
  if (shown == components.end()) return Fail(file_ + ": has no component '" + component_ + "'");

  embedded::FitOptions options;
  if (fit_ == "quadratic") options.shape = embedded::CurveShape::kQuadratic;
  options.throughOrigin = throughOrigin_;
  if (weights_ == "1/x") options.weighting = embedded::Weighting::kInverseAmount;
  if (weights_ == "1/x2") options.weighting = embedded::Weighting::kInverseAmountSquared;
  CalibrationCurve curve;
  embedded::FitReport report;
  error = embedded::FitCurve(shown->standards, options, curve, &report);
  if (!error.empty()) return Fail(file_ + ": " + shown->name + ": " + error);
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
