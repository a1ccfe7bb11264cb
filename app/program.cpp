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

#include "app/demo_run.h"
#include "app/formats/header_words.h"
#include "app/formats/read_run.h"
#include "app/formats/text.h"
#include "app/picture.h"
#include "app/version.h"
#include "platform/gfx/context.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOutputFolder = "out";

struct Request {
  std::vector<std::string> files;
  std::string output;  // empty: named after the first file, in kOutputFolder
  std::string size = "1600x900";
  std::string from;
  std::string to;
  std::string timeUnit;
  bool average = false;
};

int Fail(const std::string& message) {
  std::fprintf(stderr, "elugraph: %s\n", message.c_str());
  return kBadInput;
}

// "1600x900".
bool ParseSize(const std::string& text, PictureOptions& options) {
  const std::size_t cross = text.find('x');
  if (cross == std::string::npos) return false;
  const auto extent = [](const std::string& digits) {
    const bool plain = !digits.empty() && digits.size() <= 6 &&
                       digits.find_first_not_of("0123456789") == std::string::npos;
    return plain ? std::stoi(digits) : 0;
  };
  options.widthPx = extent(text.substr(0, cross));
  options.heightPx = extent(text.substr(cross + 1));
  const auto isGood = [](int px) { return px >= kMinExtentPx && px <= kMaxExtentPx; };
  return isGood(options.widthPx) && isGood(options.heightPx);
}

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
  if (!ParseSize(request.size, picture)) {
    return "--size: '" + request.size + "' is not WIDTHxHEIGHT with both from " +
           std::to_string(kMinExtentPx) + " to " + std::to_string(kMaxExtentPx);
  }
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

// The picture's file; empty, and the cause in `error`, where it would replace an input file or its
// folder cannot be made.
std::string OutputPath(const Request& request, const std::string& stem, std::string& error) {
  if (request.output.empty()) {
    std::error_code failure;
    fs::create_directories(kOutputFolder, failure);
    if (failure) {
      error = std::string(kOutputFolder) + ": " + failure.message();
      return {};
    }
    return (fs::path(kOutputFolder) / (stem + ".png")).string();
  }
  for (const std::string& file : request.files) {
    std::error_code failure;
    if (fs::equivalent(file, request.output, failure)) {
      error = request.output + ": is an input file; it is not replaced";
      return {};
    }
  }
  return request.output;
}

int Draw(const RunData& run, const Request& request, const PictureOptions& options,
         const std::string& stem) {
  gfx::Surface surface;
  std::string error;
  if (!DrawPicture(run, options, surface, error)) return Fail(error);
  const std::string path = OutputPath(request, stem, error);
  if (path.empty()) return Fail(error);
  if (!gfx::SavePng(surface, path, error)) return Fail(path + ": " + error);
  for (const std::string& note : run.notes) std::printf("note: %s\n", note.c_str());
  std::printf("%s\n", path.c_str());
  return kDone;
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
  render.add_option("-o,--output", request.output,
                    "Picture to write (PNG); default: out/NAME-OF-THE-FIRST-FILE.png");
  render.add_option("--size", request.size, "Width and height in pixels")->capture_default_str();
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
  const std::string& first = arguments[0];
  // A bare file name means render.
  if (first != "render" && first != "-h" && first != "--help" && first != "--version") {
    arguments.insert(arguments.begin(), "render");
  }
  CLI::App program(
      "elugraph draws chromatograms.\n"
      "  elugraph              draws a generated run to out/\n"
      "  elugraph FILE...      the same as elugraph render FILE...",
      "elugraph");
  program.set_version_flag("--version", std::string("elugraph ") + kVersion);
  program.require_subcommand(1);
  Request request;
  AddRender(program, request);
  try {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    program.parse(std::move(reversed));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return program.exit(error);
    return Fail(std::string(error.what()) + " (see elugraph --help)");
  }
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
