#include "app/host_amounts.h"

#include <algorithm>

namespace app {
namespace {

// Null for a peak without a component.
embedded::CalibratedComponent* ComponentOf(const embedded::Run& host, const PeakRecord& peak) {
  return host.ComponentOf(host.calibration.components.At(peak.component - 1));
}

bool HasCurve(const embedded::CalibratedComponent& component) {
  return !component.curve.coefficients.empty();
}

// Counts the components of the name.
int SetCurve(const ComponentCalibration& calibration, embedded::Run& host) {
  int count = 0;
  for (LONG i = 0; i < host.calibration.components.count; ++i) {
    const auto& component = *host.ComponentOf(host.calibration.components.At(i));
    if (!IsSameComponent(component.data.name, calibration.name)) continue;
    host.SetCalibration(i, calibration.standards, calibration.curve);
    ++count;
  }
  return count;
}

}  // namespace

bool Calibrate(RunData& run, embedded::Run& host, std::string& error) {
  const Quantification& how = run.quantification;
  if (how.areaUnitS > 0) {
    host.RespondByArea(how.areaUnitS);
  } else {
    host.RespondByHeight();
  }
  std::string unused;
  bool any = how.calibrations.empty();
  for (const ComponentCalibration& calibration : how.calibrations) {
    if (SetCurve(calibration, host) > 0) {
      any = true;
    } else {
      unused += (unused.empty() ? "" : ", ") + calibration.name;
    }
  }
  if (!any) {
    error = how.calibrations.front().file + ": no peak has the name of a component: " + unused;
  } else if (!unused.empty()) {
    run.Note("no peak is named as these calibrated components: " + unused);
  }
  return any;
}

PeakLabels BestLabels(const embedded::Run& host) {
  PeakLabels best = PeakLabels::kTime;
  for (LONG i = 0; i < host.peaks.count; ++i) {
    const embedded::CalibratedComponent* component = ComponentOf(host, *host.peaks.At(i));
    if (component == nullptr || component->name[0] == '\0') continue;
    if (HasCurve(*component)) return PeakLabels::kNameAndAmount;
    best = PeakLabels::kName;
  }
  return best;
}

bool IsAmountKnown(const RunData& run, const embedded::Run& host, const PeakRecord& peak) {
  const embedded::CalibratedComponent* component = ComponentOf(host, peak);
  if (component == nullptr || HasCurve(*component) || peak.amount != 0) return true;
  // A file may give an amount of 0.
  return std::any_of(run.peaks.begin(), run.peaks.end(), [component](const Peak& each) {
    return each.amount && IsSameComponent(each.name, component->data.name);
  });
}

bool NoteUnknownAmounts(RunData& run, const embedded::Run& host) {
  std::string names;
  for (LONG i = 0; i < host.peaks.count; ++i) {
    const PeakRecord& peak = *host.peaks.At(i);
    if (IsAmountKnown(run, host, peak)) continue;
    names += (names.empty() ? "" : ", ") + ComponentOf(host, peak)->data.name;
  }
  if (!names.empty()) run.Note("no amounts are known of these peaks: " + names);
  return !names.empty();
}

void EndIdentification(embedded::Run& host) {
  for (LONG i = 0; i < host.calibration.components.count; ++i) {
    host.ComponentOf(host.calibration.components.At(i))->data.halfWindowSec = 0;
  }
}

}  // namespace app
