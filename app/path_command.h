// elugraph path: the editor for integration paths.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "app/map_colours.h"
#include "app/map_input.h"

namespace app {

class PathCommand {
 public:
  explicit PathCommand(CLI::App& program);
  PathCommand(const PathCommand&) = delete;
  PathCommand& operator=(const PathCommand&) = delete;

  bool Chosen() const { return path_.parsed(); }
  // Shows the editor until it is closed. Returns an exit status.
  int Run() const;

 private:
  bool CanSave(std::string& error) const;

  CLI::App& path_;
  MapInput input_;
  MapColourTexts colours_;
  std::string load_;
  std::string save_;
};

}  // namespace app
