#include "app/program.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "app/calibration_command.h"
#include "app/map_command.h"
#include "app/output.h"
#include "app/path_command.h"
#include "app/render_command.h"
#include "app/xy_command.h"
#include "embedded/settings.h"

namespace app {
namespace {

int Run(int argc, const char* const* argv) {
  std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  if (arguments.empty()) arguments.push_back("demo");
  CLI::App program(
      "elugraph draws chromatograms.\n"
      "  elugraph              draws a generated run to out/\n"
      "  elugraph FILE...      the same as elugraph render FILE...",
      "elugraph");
  program.set_version_flag("--version", "elugraph " ELUGRAPH_VERSION);
  program.require_subcommand(1);
  const RenderCommand render(program);
  const CalibrationCommand calibration(program);
  const XYCommand xy(program);
  const MapCommand map(program);
  const PathCommand path(program);
  const std::string& first = arguments[0];
  const bool isCommand = !program
                              .get_subcommands([&first](const CLI::App* command) {
                                return command->check_name(first);
                              })
                              .empty();
  // A bare file name means render.
  if (!isCommand && first != "-h" && first != "--help" && first != "--version") {
    arguments.insert(arguments.begin(), "render");
  }
  try {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    program.parse(std::move(reversed));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return program.exit(error);
    std::string text = error.what();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return Fail(text + " (see elugraph --help)");
  }
  if (calibration.Chosen()) return calibration.Run();
  if (xy.Chosen()) return xy.Run();
  if (map.Chosen()) return map.Run();
  if (path.Chosen()) return path.Run();
  return render.Run();
}

}  // namespace

int RunProgram(int argc, const char* const* argv) {
  // Commands save what the user has changed themselves.
  embedded::KeepSettings(false);
  try {
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    return Fail("out of memory");
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
}

}  // namespace app
