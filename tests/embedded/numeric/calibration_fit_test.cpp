// Calibration curves against reference results.
#include "embedded/numeric/calibration_fit.h"

#include <gtest/gtest.h>

#include <cmath>

#include "embedded/run.h"
#include "tests/support/case_name.h"

namespace embedded {
namespace {

struct Reference {
  const char* name;
  FitOptions options;
  std::vector<Standard> data;  // x, y
  std::vector<double> coefficients, standardErrors;
  double residualDeviation, rSquared;
  // Half widths of the band at kProbes.
  std::vector<double> band{};
};
class Fitted : public testing::TestWithParam<Reference> {};

const struct { double level, amount; } kProbes[] = {{0.95, 0.0}, {0.99, 3.0}, {0.9, 20.0}};

void ExpectDigits(double got, double wanted, const char* what) {
  EXPECT_NEAR(got, wanted, 2e-11 * std::fabs(wanted)) << what;
}

TEST_P(Fitted, AsTheReference) {
  const Reference& c = GetParam();
  CalibrationCurve curve;
  FitReport report;
  ASSERT_EQ(FitCurve(c.data, c.options, curve, &report), "");
  ASSERT_EQ(curve.coefficients.size(), c.coefficients.size());
  for (std::size_t k = 0; k < c.coefficients.size(); ++k) {
    ExpectDigits(curve.coefficients[k], c.coefficients[k], "coefficient");
    ExpectDigits(report.standardErrors[k], c.standardErrors[k], "standard error");
  }
  ExpectDigits(report.residualDeviation, c.residualDeviation, "residual deviation");
  ExpectDigits(report.rSquared, c.rSquared, "R squared");
  for (std::size_t i = 0; i < c.band.size(); ++i) {
    ExpectDigits(curve.band->HalfWidth(kProbes[i].level, kProbes[i].amount), c.band[i], "band");
  }
}

constexpr FitOptions kPlainLine{};
constexpr FitOptions kPlainOriginLine{CurveShape::kLinear, true, Weighting::kNone};
constexpr FitOptions kPlainQuadratic{CurveShape::kQuadratic, false, Weighting::kNone};

std::vector<Standard> Pontius() {
  const double deflections[] = {
      .11019,  .21956,  .32949,  .43899,  .54803,  .65694,  .76562,  .87487,  .98292,  1.09146,
      1.20001, 1.30822, 1.41599, 1.52399, 1.63194, 1.73947, 1.84646, 1.95392, 2.06128, 2.16844,
      .11052,  .22018,  .32939,  .43886,  .54798,  .65739,  .76596,  .87474,  .98300,  1.09150,
      1.20004, 1.30818, 1.41613, 1.52408, 1.63159, 1.73965, 1.84696, 1.95445, 2.06177, 2.16829};
  std::vector<Standard> data;
  for (std::size_t i = 0; i < 40; ++i) {
    data.push_back({150000.0 * static_cast<double>(i % 20 + 1), deflections[i]});
  }
  return data;
}

// Statistical Reference Datasets of the National Institute of Standards and Technology, linear
// regression: https://www.itl.nist.gov/div898/strd/lls/lls.shtml, certified to 15 digits.
const Reference kNist[] = {{"Pontius",
                            kPlainQuadratic,
                            Pontius(),
                            {0.673565789473684e-03, 0.732059160401003e-06, -0.316081871345029e-14},
                            {0.107938612033077e-03, 0.157817399981659e-09, 0.486652849992036e-16},
                            0.205177424076185e-03,
                            0.999999900178537},
                           {"NoInt2",
                            kPlainOriginLine,
                            {{4, 3}, {5, 4}, {6, 4}},
                            {0, 0.727272727272727},
                            {0, 0.420827318078432e-01},
                            0.369274472937998,
                            0.993348115299335}};

// Numbers of a computation apart: the normal equations in exact fractions, Student's t from its
// finite series (M. Abramowitz, I. A. Stegun, Handbook of Mathematical Functions, 26.7.3
// and 26.7.4) in decimal arithmetic of 40 digits. The standard of amount 0 weighs as that of 0.5.
const std::vector<Standard> kDilutions{{0, 0.4}, {0.5, 1.3}, {1, 2.1},  {2, 4.4},
                                       {4, 7.6}, {8, 15.9},  {16, 29.5}};
const Reference kExact[] = {{"Line",
                             kPlainLine,
                             kDilutions,
                             {0.4928571428571429, 1.8333333333333333},
                             {0.2020681645969, 0.02894080364754},
                             0.4087728441265,
                             0.9987555784415,
                             {0.5194327534732, 0.647096530033, 0.9560273120223}},
                            {"LineByAmount",
                             {CurveShape::kLinear, false, Weighting::kInverseAmount},
                             kDilutions,
                             {0.3859093730602, 1.856652182909},
                             {0.08019488684497, 0.03481714958484},
                             0.1756001208472,
                             0.998244776712,
                             {0.2061475194346, 0.4030400610512, 1.340158684485}},
                            {"Quadratic",
                             {CurveShape::kQuadratic, false, Weighting::kNone},
                             kDilutions,
                             {0.2570565386275, 2.000795484572, -0.01062110925833},
                             {0.1995911745325, 0.0874549443877, 0.005352023804633},
                             0.3244177097778,
                             0.9993729494575,
                             {0.5541539395715, 0.7079948974795, 1.459787893234}},
                            {"LineThroughOriginByAmount",
                             {CurveShape::kLinear, true, Weighting::kInverseAmount},
                             kDilutions,
                             {0.0, 1.930158730159},
                             {0.0, 0.06777742153234},
                             0.3803998348995,
                             0.9926559766849,
                             {0, 0.7538397354064, 2.634074979716}},
                            {"QuadraticThroughOriginByAmountSquared",
                             {CurveShape::kQuadratic, true, Weighting::kInverseAmountSquared},
                             kDilutions,
                             {0.0, 2.26980721393, -0.03135216773276},
                             {0.0, 0.2338158119345, 0.0310036747657},
                             0.4111641374669,
                             0.9693845384,
                             {0, 2.198830258544, 19.63212003919}}};

const auto kName = CaseName();
INSTANTIATE_TEST_SUITE_P(Nist, Fitted, testing::ValuesIn(kNist), kName);
INSTANTIATE_TEST_SUITE_P(Exact, Fitted, testing::ValuesIn(kExact), kName);

TEST(CalibrationFit, RefusesWhatDeterminesNoCurve) {
  const double nan = std::nan("");
  struct Case {
    std::vector<Standard> data;
    FitOptions options;
    const char* cause;
  };
  for (const Case& c : {Case{{{1, 2}, {3, 4, true}}, {}, "1 standards"},
                        Case{{{1, 2}, {1, 4}}, {}, "do not determine"},
                        Case{{{1, 2}, {2, 4}, {1, 3}, {2, 5}}, kPlainQuadratic, "do not determine"},
                        Case{{{1, nan}, {2, 4}}, {}, "standard 1"},
                        Case{{{-1, 2}, {0, 4}},
                             {CurveShape::kLinear, false, Weighting::kInverseAmount},
                             "above 0"}}) {
    CalibrationCurve curve;
    const std::string fault = FitCurve(c.data, c.options, curve);
    EXPECT_NE(fault.find(c.cause), std::string::npos) << fault;
    EXPECT_TRUE(curve.coefficients.empty());
  }
  CalibrationCurve exact;
  ASSERT_EQ(FitCurve(std::vector<Standard>{{1, 2}, {3, 8}, {5, nan, true}}, {}, exact), "");
  EXPECT_EQ(exact.band, nullptr);
  EXPECT_NEAR(exact.ResponseAt(2.0), 5.0, 1e-12);
}

// Amounts below zero (logarithms, say) belong to the range: the vertex lies right of its middle.
TEST(CalibrationFit, AmountsAreReadOnTheSideOfTheStandards) {
  std::vector<Standard> standards;
  for (const double x : {-10.0, -5.0, 0.0, 6.0}) standards.push_back({x, 100 - (x - 2) * (x - 2)});
  CalibrationCurve curve;
  ASSERT_EQ(FitCurve(standards, {CurveShape::kQuadratic, false, Weighting::kNone}, curve), "");
  EXPECT_NEAR(curve.AmountAt(curve.ResponseAt(-10)), -10, 1e-6);
}

}  // namespace
}  // namespace embedded
