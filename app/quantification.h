// How the peaks of a run get names and amounts: retention windows and calibrations of components.
#pragma once

#include <string>
#include <vector>

#include "embedded/calibration.h"

namespace app {

struct ComponentCalibration {
  std::string name;
  std::string file;  // of its standards
  std::vector<embedded::Standard> standards;
  embedded::CalibrationCurve curve;
};

struct Quantification {
  // Which peaks are those of these components the windows decide, not the names in files.
  std::vector<embedded::ComponentData> windows;
  std::vector<ComponentCalibration> calibrations;
  double areaUnitS = 1;  // seconds in the time unit of the responses, which are areas; 0: heights

  bool HasWindow(const std::string& name) const;
};

// Names are the same whatever the case of their ASCII letters.
bool IsSameComponent(const std::string& a, const std::string& b);

}  // namespace app
