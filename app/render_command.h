// elugraph render: files of measured data as a chromatogram; elugraph demo: a generated run.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "app/render_options.h"
#include "app/run_data.h"

namespace app {

class RenderCommand {
 public:
  // Adds both subcommands with their options.
  explicit RenderCommand(CLI::App& program);
  RenderCommand(const RenderCommand&) = delete;
  RenderCommand& operator=(const RenderCommand&) = delete;

  bool Chosen() const { return render_.parsed() || demo_.parsed(); }
  // Draws the picture. Returns an exit status.
  int Run() const;

 private:
  bool ReadAll(const ReadOptions& read, RunData& all, std::string& error) const;
  bool ReadFile(const std::string& file, const ReadOptions& read, RunData& run,
                std::string& error) const;

  CLI::App& render_;
  CLI::App& demo_;
  std::vector<std::string> files_;
  RenderTexts texts_;
};

}  // namespace app
