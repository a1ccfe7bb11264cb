// Calibration as the views read it, identification and amounts.
#include "embedded/calibration.h"

#include <gtest/gtest.h>

#include <cmath>

#include "elugraph/host/engine.h"
#include "embedded/run.h"

namespace embedded {
namespace {

class FlatBand : public ConfidenceBand {
 public:
  double HalfWidth(double level, double amount) const override { return level * 10.0 + amount; }
};

CalibrationCurve Curve(std::vector<double> coefficients) {
  CalibrationCurve curve;
  curve.coefficients = std::move(coefficients);
  curve.lowestAmount = 1.0;
  curve.highestAmount = 9.0;
  return curve;
}

TEST(CalibrationCurve, AmountsInvertResponses) {
  for (const CalibrationCurve& curve :
       {Curve({3, 20}), Curve({0, -2}), Curve({1, 20, -0.4}), Curve({1, 20, 0.7}), Curve({5, 0, 2}),
        Curve({1e6, 1e-3, 1e-9})}) {
    for (double amount : {1.0, 4.5, 9.0}) {
      EXPECT_NEAR(curve.AmountAt(curve.ResponseAt(amount)), amount, 1e-6);
    }
  }
  EXPECT_EQ(Curve({1, 20, -0.4}).AmountAt(1e6), 25.0);  // out of reach: the vertex
  EXPECT_EQ(Curve({}).AmountAt(1.0), 0.0);
}

ChannelData Detector() {
  ChannelData data;
  // Two triangles of height 10 on a flat base; areas 20 and 40 signal × seconds.
  data.counts = {0, 0, 5, 10, 5, 0, 0, 0, 0, 5, 10, 10, 10, 5, 0, 0};
  data.periodSec = 1.0;
  data.startSec = 100.0;
  return data;
}

class Calibrated : public testing::Test {
 protected:
  void SetUp() override {
    RunData data;
    data.channels = {Detector()};
    data.components = {{"caffeine", 103.4, 1.0},
                       {"theobromine", 104.4, 3.0},
                       {"none", 0.0, 0.0},
                       {"later", 112.0, 2.0}};
    std::string fault;
    run = MakeRun(data, fault);
    ASSERT_NE(run, nullptr) << fault;
    PeakRecord first{}, second{};
    first.start = 1, first.apex = 3, first.end = 5;
    second.start = 8, second.apex = 11, second.end = 14;
    second.component = 3;
    second.amount = 7.5F;
    ASSERT_EQ(run->SetPeaks(0, {first, second}, false), "");
  }
  std::vector<int> Identified() const {
    std::vector<int> numbers;
    for (int i = 0; i < run->peakCount; ++i) numbers.push_back(run->peaks.At(i)->component);
    return numbers;
  }
  component* At(int index) { return run->calibration.components.At(index); }
  RunRef run;
};

TEST_F(Calibrated, ViewsReadEitherDirection) {
  CalibrationCurve curve = Curve({10, 2});
  curve.weighting = Weighting::kInverseAmount;
  curve.band = std::make_shared<FlatBand>();
  ASSERT_TRUE(run->SetCalibration(0, {{4, 18}, {8, 26, true}}, curve));
  ASSERT_TRUE(run->SetCalibration(1, {{1, 1}, {2, 2}, {3, 3}}, Curve({0, 1})));
  EXPECT_FALSE(run->SetCalibration(4, {}, curve));
  CalibPool& pool = run->calibration;
  ASSERT_EQ(+pool.points.count, 3);
  EXPECT_EQ(+pool.points.At(2)->number, 3);
  EXPECT_TRUE(pool.PointIsExcluded(At(0), 1));
  EXPECT_TRUE(pool.PointIsExcluded(At(0), 2));  // no such standard
  EXPECT_FALSE(pool.PointIsExcluded(At(1), 2));
  CurveStatistics& statistics = *At(0)->statistics;
  EXPECT_NE(statistics.Available(), 0);
  EXPECT_EQ(At(1)->statistics->Available(), 0);
  double half = 0.0;
  struct Case {
    BYTE poolSwap, flags, ownSwap;
    bool swapped;
  };
  for (const Case& c :
       {Case{0, 0, 1, false}, Case{1, 0, 0, true}, Case{0, component::kOwnDisplay, 1, true}}) {
    pool.swapAxes = c.poolSwap;
    At(0)->flags = c.flags;
    At(0)->swapAxes = c.ownSwap;
    EXPECT_EQ(pool.PointToX(At(0), 0), c.swapped ? 18.0 : 4.0);
    EXPECT_EQ(pool.PointToY(At(0), 0), c.swapped ? 4.0 : 18.0);
    EXPECT_DOUBLE_EQ(pool.XtoYtab(At(0), 20.0), c.swapped ? 5.0 : 50.0);
    EXPECT_DOUBLE_EQ(pool.XtoStatWeight(At(0), 20.0), c.swapped ? 1.0 / 5.0 : 1.0 / 20.0);
    statistics.BandHalfWidth(0.5, 20.0, 1.0, half);
    EXPECT_DOUBLE_EQ(half, c.swapped ? (5.0 + 5.0) / 2.0 : 5.0 + 20.0);
  }
}

// Both windows hold the first peak (at 103 s): the nearer component gets it.
TEST_F(Calibrated, TheNearestComponentTakesAPeak) {
  run->recognize();
  EXPECT_EQ(Identified(), (std::vector<int>{1, 3}));  // a component without a window keeps its peak
}

TEST_F(Calibrated, AmountsComeFromAreaOrHeight) {
  ASSERT_TRUE(run->SetCalibration(0, {}, Curve({2, 6})));
  run->update_quant();
  EXPECT_EQ(Identified(), (std::vector<int>{1, 3}));
  EXPECT_FLOAT_EQ(run->peaks.At(0)->amount, 3.0F);  // area 20
  EXPECT_FLOAT_EQ(run->peaks.At(1)->amount, 7.5F);  // no curve: as given
  run->RespondByHeight();
  run->update_quant();
  EXPECT_FLOAT_EQ(run->peaks.At(0)->amount, 4.0F / 3.0F);
  run->RespondByArea(60.0);
  run->update_quant();
  EXPECT_NEAR(run->peaks.At(0)->amount, (20.0 / 60.0 - 2.0) / 6.0, 1e-6);
}

}  // namespace
}  // namespace embedded
