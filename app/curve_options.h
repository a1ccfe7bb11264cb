// The options that say how a calibration curve is fitted.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "app/formats/standards_table.h"
#include "embedded/numeric/calibration_fit.h"

namespace app {

struct CurveOptions {
  std::string fit = "linear";
  std::string weights = "1";
  bool throughOrigin = false;
};

// --fit, --through-origin and --weights. `options` must live as long as the command.
void AddCurveOptions(CLI::App& command, CurveOptions& options);

// The curve through a component's standards. Throws FileError, "FILE: COMPONENT: cause", where
// there is none, or more standards than a run can hold.
embedded::CalibrationCurve FitStandards(const std::string& file, const ComponentStandards& of,
                                        const CurveOptions& options,
                                        embedded::FitReport* report = nullptr);

}  // namespace app
