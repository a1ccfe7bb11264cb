// Calibrated components: standards and the curve through them.
//
// Amounts and responses are in the units of the standards. A curve gives the response of an amount;
// the views read either direction, as their axis swap asks.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "elugraph/host/records.h"

namespace embedded {

struct ComponentData {
  std::string name;  // cut to 29 bytes
  // Window of the retention time in which a peak is taken for this component; a window of 0 or
  // less identifies nothing.
  double retentionSec = 0.0;
  double halfWindowSec = 0.0;
};

struct Standard {
  double amount;
  double response;
  bool excluded = false;
};

// Weight of a standard in the fit, by its amount. Amounts of 0 and below weigh as the smallest
// amount above 0 among the standards.
enum class Weighting { kNone, kInverseAmount, kInverseAmountSquared };

// Confidence band of a fitted curve.
class ConfidenceBand {
 public:
  virtual ~ConfidenceBand() = default;
  // Half the width of the band about the curve at `amount`, in response units. 0 for a `level`
  // (probability) that does not lie between 0 and 1.
  virtual double HalfWidth(double level, double amount) const = 0;
};

// response = c0 + c1 × amount + c2 × amount², valid over the amounts of its standards.
struct CalibrationCurve {
  std::vector<double> coefficients;  // ascending; empty: there is no curve
  Weighting weighting = Weighting::kNone;
  // Range of the standards' amounts, and the smallest one above 0 (0: there is none).
  double lowestAmount = 0.0;
  double highestAmount = 0.0;
  double lowestPositive = 0.0;
  std::shared_ptr<const ConfidenceBand> band;  // may be empty

  // 0 without a curve.
  double ResponseAt(double amount) const;
  // Slope of the curve, response per amount.
  double SlopeAt(double amount) const;
  // The amount of a response. Of two solutions the one on the side of the vertex where the middle
  // of the standards' range lies, so that amounts change in one direction with the response; where
  // a quadratic curve does not reach the response, the amount at its vertex. Outside the standards
  // the curve is continued, below zero too: a response below a positive constant term has a
  // negative amount. 0 without a curve, and for a constant one.
  double AmountAt(double response) const;
  // Weight of a single response at `amount`: 1, 1/amount or 1/amount².
  double WeightAt(double amount) const;
};

struct CalibratedComponent;

// What the record of a component shows of its curve's band. The band is the curve's own, not that
// of single measurements: the weight of one does not enter. With the axes swapped, x is a response,
// and the width that of the amount, by the slope of the curve.
class ComponentStatistics final : public CurveStatistics {
 public:
  ComponentStatistics(const CalibPool& pool, const CalibratedComponent& of)
      : pool_(pool), component_(of) {}
  short Available() override;
  void BandHalfWidth(double level, double x, double statWeight, double& halfWidth) override;

 private:
  // The engine's own; nothing here calls them.
  void Host1() override {}
  void Host2() override {}
  void Host3() override {}
  void Host5() override {}
  void Host6() override {}
  void Host7() override {}

  const CalibPool& pool_;
  const CalibratedComponent& component_;
};

// A component's record with its standards.
struct CalibratedComponent : component {
  ComponentData data;
  std::vector<Standard> standards;
  CalibrationCurve curve;
  std::unique_ptr<ComponentStatistics> statisticsStore;
};

}  // namespace embedded
