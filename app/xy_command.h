// elugraph xy: any table as an XY graph.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "app/output.h"

namespace app {

class XYCommand {
 public:
  // Adds the subcommand with its options.
  explicit XYCommand(CLI::App& program);

  bool Chosen() const { return command_.parsed(); }
  // Draws the picture. Returns an exit status; may throw FileError.
  int Run() const;

 private:
  CLI::App& command_;
  std::string file_;
  std::vector<std::string> x_;
  std::vector<std::string> y_;
  std::string zoom_;
  std::string zoomY_;
  OutputOptions output_;
};

}  // namespace app
