// elugraph map: a run's spectra over time as a picture or in a window.
#pragma once

#include <CLI/App.hpp>

#include "app/map_colours.h"
#include "app/map_input.h"
#include "app/output.h"

namespace app {

class MapCommand {
 public:
  explicit MapCommand(CLI::App& program);
  MapCommand(const MapCommand&) = delete;
  MapCommand& operator=(const MapCommand&) = delete;

  bool Chosen() const { return map_.parsed(); }
  // Draws the picture, or shows the window until it is closed. Returns an exit status.
  int Run() const;

 private:
  bool Understand(MapPart& part, int& widthPx, int& heightPx, std::string& error) const;
  int Draw(chromatogram& run, int widthPx, int heightPx,
           const std::vector<std::string>& notes) const;
  int Show(chromatogram& run, int widthPx, int heightPx,
           const std::vector<std::string>& notes) const;

  CLI::App& map_;
  MapInput input_;
  OutputOptions output_;
  MapColourTexts colours_;
  std::string from_, to_, wavelengths_;
};

}  // namespace app
