// elugraph calibration: standards from a table, fitted and drawn.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "app/curve_options.h"
#include "app/output.h"

namespace app {

class CalibrationCommand {
 public:
  // Adds the subcommand with its options.
  explicit CalibrationCommand(CLI::App& program);

  bool Chosen() const { return command_.parsed(); }
  // Fits, prints the curve and draws the picture. Returns an exit status; may throw FileError.
  int Run() const;

 private:
  CLI::App& command_;
  std::string file_;
  std::string amount_;
  std::string response_;
  std::string component_;
  CurveOptions curve_;
  std::string axes_ = "origin";
  double band_ = 0;
  bool swap_ = false;
  OutputOptions output_;
};

}  // namespace app
