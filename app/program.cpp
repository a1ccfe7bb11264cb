#include "app/program.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/calibration_command.h"
#include "app/demo_run.h"
#include "app/formats/header_words.h"
#include "app/formats/read_run.h"
#include "app/formats/text.h"
#include "app/output.h"
#include "app/picture.h"
#include "app/version.h"
#include "app/xy_command.h"

namespace app {
namespace {

namespace fs = std::filesystem;

struct Request {
  std::vector<std::string> files;
  OutputOptions output;
  std::string from;
  std::string to;
  std::string timeUnit;
  bool average = false;
};

// "2.5", "2.5min", "90 s"; minutes where no unit is given.
std::optional<double> ParseTimeS(const std::string& text) {
  const std::size_t end = text.find_last_of("0123456789.");
  if (end == std::string::npos) return std::nullopt;
  const std::string_view unit = Trim(std::string_view(text).substr(end + 1));
  const TimeUnit timeUnit = unit.empty() ? TimeUnit::kMinute : TimeUnitOf(unit);
  const std::optional<double> number = ParseNumber(std::string_view(text).substr(0, end + 1), '.');
  if (!number || timeUnit == TimeUnit::kUnknown) return std::nullopt;
  const double timeS = *number * SecondsIn(timeUnit);
  return std::abs(timeS) <= 1e6 ? std::optional(timeS) : std::nullopt;
}

// What is wrong with the request's texts; empty where they are good.
std::string Understand(const Request& request, PictureOptions& picture, ReadOptions& read) {
  std::string error;
  if (!ParseSize(request.output.size, picture.widthPx, picture.heightPx, error)) return error;
  for (const auto& [name, text, time] : {std::tuple{"--from", &request.from, &picture.fromS},
                                         std::tuple{"--to", &request.to, &picture.toS}}) {
    if (text->empty()) continue;
    *time = ParseTimeS(*text);
    if (!*time) return std::string(name) + ": '" + *text + "' is not a time such as 2.5min or 90s";
  }
  if (!request.timeUnit.empty()) {
    read.timeUnit = TimeUnitOf(request.timeUnit);
    if (read.timeUnit == TimeUnit::kUnknown) {
      return "--time-unit: '" + request.timeUnit + "' is not one of ms, s, min, h";
    }
  }
  picture.average = request.average;
  return {};
}

int Draw(const RunData& run, const Request& request, const PictureOptions& options,
         const std::string& stem) {
  gfx::Surface surface;
  std::string error;
  if (!DrawPicture(run, options, surface, error)) return Fail(error);
  return SavePicture(surface, request.output, request.files, stem, run.notes);
}

int Render(const Request& request) {
  PictureOptions picture;
  ReadOptions read;
  std::string error = Understand(request, picture, read);
  if (!error.empty()) return Fail(error);
  RunData all;
  for (const std::string& file : request.files) {
    RunData run;
    if (!ReadRun(file, read, run, error)) return Fail(error);
    const bool several = request.files.size() > 1;
    for (std::string& note : run.notes) {
      all.notes.push_back(several ? file + ": " + note : std::move(note));
    }
    for (Trace& trace : run.channels) {
      trace.source = file;
      all.channels.push_back(std::move(trace));
    }
  }
  return Draw(all, request, picture, fs::path(request.files[0]).stem().string());
}

int Demonstrate() { return Draw(DemoRun(), Request(), PictureOptions(), "demonstration"); }

void AddRender(CLI::App& program, Request& request) {
  CLI::App& render = *program.add_subcommand("render", "Draw the runs of files into one picture");
  render.add_option("FILE", request.files, "Files of times and signals")->required();
  AddOutputOptions(render, request.output);
  render.add_option("--from", request.from, "Left edge, a time such as 2.5min or 90s")
      ->type_name("TIME");
  render.add_option("--to", request.to, "Right edge")->type_name("TIME");
  render.add_flag("--average", request.average,
                  "Draw the mean of each pixel column instead of all it holds");
  render
      .add_option("--time-unit", request.timeUnit,
                  "Unit of times whose file states none: ms, s, min, h")
      ->type_name("UNIT");
}

int Run(int argc, const char* const* argv) {
  std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  if (arguments.empty()) return Demonstrate();
  CLI::App program(
      "elugraph draws chromatograms.\n"
      "  elugraph              draws a generated run to out/\n"
      "  elugraph FILE...      the same as elugraph render FILE...",
      "elugraph");
  program.set_version_flag("--version", std::string("elugraph ") + kVersion);
  program.require_subcommand(1);
  Request request;
  AddRender(program, request);
  const CalibrationCommand calibration(program);
  const XYCommand xy(program);
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
    return Fail(std::string(error.what()) + " (see elugraph --help)");
  }
  if (calibration.Chosen()) return calibration.Run();
  if (xy.Chosen()) return xy.Run();
  return Render(request);
}

}  // namespace

int RunProgram(int argc, const char* const* argv) {
  try {
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    return Fail("out of memory");
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
}

}  // namespace app
