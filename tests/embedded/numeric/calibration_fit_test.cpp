// Calibration curves against published reference results.
#include "embedded/numeric/calibration_fit.h"

#include <gtest/gtest.h>

#include <cmath>

#include "embedded/run.h"

namespace embedded {
namespace {

// Statistical Reference Datasets of the National Institute of Standards and Technology, linear
// regression: https://www.itl.nist.gov/div898/strd/lls/lls.shtml, certified to 15 digits.
struct Reference {
  const char* name;
  CurveShape shape;
  bool throughOrigin;
  std::vector<Standard> data;  // x, y
  std::vector<double> coefficients, standardErrors;
  double residualDeviation, rSquared;
};
class StatisticalReference : public testing::TestWithParam<Reference> {};

void ExpectDigits(double got, double certified, const char* what) {
  EXPECT_NEAR(got, certified, 2e-11 * std::fabs(certified)) << what;
}

TEST_P(StatisticalReference, Matches) {
  const Reference& c = GetParam();
  CalibrationCurve curve;
  FitReport report;
  ASSERT_EQ(FitCurve(c.data, {c.shape, c.throughOrigin, Weighting::kNone}, curve, &report), "");
  ASSERT_EQ(curve.coefficients.size(), c.coefficients.size());
  for (std::size_t k = 0; k < c.coefficients.size(); ++k) {
    ExpectDigits(curve.coefficients[k], c.coefficients[k], "coefficient");
    ExpectDigits(report.standardErrors[k], c.standardErrors[k], "standard error");
  }
  ExpectDigits(report.residualDeviation, c.residualDeviation, "residual deviation");
  ExpectDigits(report.rSquared, c.rSquared, "R squared");
}

const std::vector<Standard> kNorris{
    {0.2, 0.1},     {337.4, 338.8}, {118.2, 118.1}, {884.6, 888.0}, {10.1, 9.2},    {226.5, 228.1},
    {666.3, 668.5}, {996.3, 998.5}, {448.6, 449.1}, {777.0, 778.9}, {558.2, 559.2}, {0.4, 0.3},
    {0.6, 0.1},     {775.5, 778.1}, {666.9, 668.8}, {338.0, 339.3}, {447.5, 448.9}, {11.6, 10.8},
    {556.0, 557.7}, {228.1, 228.3}, {995.8, 998.0}, {887.6, 888.8}, {120.2, 119.6}, {0.3, 0.3},
    {0.3, 0.6},     {556.8, 557.6}, {339.1, 339.3}, {887.2, 888.0}, {999.0, 998.5}, {779.0, 778.9},
    {11.1, 10.2},   {118.3, 117.6}, {229.2, 228.9}, {669.1, 668.4}, {448.9, 449.2}, {0.5, 0.2}};

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

std::vector<Standard> NoIntercept1() {
  std::vector<Standard> data;
  for (int x = 60; x <= 70; ++x) data.push_back({x + 0.0, x + 70.0});
  return data;
}

INSTANTIATE_TEST_SUITE_P(Nist, StatisticalReference,
                         testing::Values(Reference{"Norris",
                                                   CurveShape::kLinear,
                                                   false,
                                                   kNorris,
                                                   {-0.262323073774029, 1.00211681802045},
                                                   {0.232818234301152, 0.429796848199937e-03},
                                                   0.884796396144373,
                                                   0.999993745883712},
                                         Reference{"Pontius",
                                                   CurveShape::kQuadratic,
                                                   false,
                                                   Pontius(),
                                                   {0.673565789473684e-03, 0.732059160401003e-06,
                                                    -0.316081871345029e-14},
                                                   {0.107938612033077e-03, 0.157817399981659e-09,
                                                    0.486652849992036e-16},
                                                   0.205177424076185e-03,
                                                   0.999999900178537},
                                         Reference{"NoInt1",
                                                   CurveShape::kLinear,
                                                   true,
                                                   NoIntercept1(),
                                                   {0, 2.07438016528926},
                                                   {0, 0.165289256198347e-01},
                                                   3.56753034006338,
                                                   0.999365492298663},
                                         Reference{"NoInt2",
                                                   CurveShape::kLinear,
                                                   true,
                                                   {{4, 3}, {5, 4}, {6, 4}},
                                                   {0, 0.727272727272727},
                                                   {0, 0.420827318078432e-01},
                                                   0.369274472937998,
                                                   0.993348115299335}),
                         [](const auto& tested) { return tested.param.name; });

// A weight is worth as many equal standards: weights 1/x with x = 1, 1/2 and 1/4.
TEST(CalibrationFit, WeightsCountAsRepetitions) {
  const std::vector<Standard> once{{1.0, 2.1}, {0.5, 0.8}, {0.25, 0.7}};
  for (const auto& [weighting, power] :
       {std::pair{Weighting::kInverseAmount, 1}, std::pair{Weighting::kInverseAmountSquared, 2}}) {
    std::vector<Standard> repeated;
    for (const Standard& each : once) {
      const int times = static_cast<int>(std::lround(std::pow(each.amount, -power)));
      repeated.insert(repeated.end(), static_cast<std::size_t>(times), each);
    }
    for (const bool origin : {false, true}) {
      CalibrationCurve weighted, plain;
      FitReport weightedReport, plainReport;
      ASSERT_EQ(FitCurve(once, {CurveShape::kLinear, origin, weighting}, weighted, &weightedReport),
                "");
      ASSERT_EQ(
          FitCurve(repeated, {CurveShape::kLinear, origin, Weighting::kNone}, plain, &plainReport),
          "");
      EXPECT_NEAR(weighted.coefficients[0], plain.coefficients[0], 1e-13);
      EXPECT_NEAR(weighted.coefficients[1], plain.coefficients[1], 1e-13);
      EXPECT_NEAR(weightedReport.rSquared, plainReport.rSquared, 1e-13);
      EXPECT_DOUBLE_EQ(weighted.WeightAt(0.25), power == 1 ? 4.0 : 16.0);
    }
  }
}

// The textbook's form for a straight line, with tabulated quantiles of Student's t.
TEST(CalibrationFit, BandOfAStraightLine) {
  CalibrationCurve curve;
  FitReport report;
  ASSERT_EQ(FitCurve(kNorris, {}, curve, &report), "");
  double mean = 0.0, spread = 0.0;
  for (const Standard& each : kNorris) mean += each.amount / 36.0;
  for (const Standard& each : kNorris) spread += (each.amount - mean) * (each.amount - mean);
  for (const auto& [level, t] : {std::pair{0.95, 2.032244509}, std::pair{0.99, 2.728394367}}) {
    for (double x : {-50.0, 0.0, mean, 1200.0}) {
      const double expected =
          t * report.residualDeviation * std::sqrt(1.0 / 36.0 + (x - mean) * (x - mean) / spread);
      EXPECT_NEAR(curve.band->HalfWidth(level, x), expected, 1e-8 * expected) << level << " " << x;
    }
  }
  for (double level : {0.0, 1.0, -0.5, 95.0, std::nan("")}) {
    EXPECT_EQ(curve.band->HalfWidth(level, 1.0), 0.0) << level;
  }
}

TEST(CalibrationFit, RefusesWhatDeterminesNoCurve) {
  const double nan = std::nan("");
  struct Case {
    std::vector<Standard> data;
    FitOptions options;
    const char* cause;
  };
  const FitOptions quadratic{CurveShape::kQuadratic, false, Weighting::kNone};
  for (const Case& c :
       {Case{{{1, 2}}, {}, "1 standards"}, Case{{{1, 2}, {3, 4, true}}, {}, "1 standards"},
        Case{{{1, 2}, {1, 4}}, {}, "do not determine"},
        Case{{{0, 2}, {0, 4}}, {CurveShape::kLinear, true, {}}, "do not determine"},
        Case{{{1, 2}, {2, 4}, {1, 3}, {2, 5}}, quadratic, "do not determine"},
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
  for (const double amount : {-12.0, -10.0, -3.0, 1.0}) {
    EXPECT_NEAR(curve.AmountAt(curve.ResponseAt(amount)), amount, 1e-6);
  }
}

}  // namespace
}  // namespace embedded
