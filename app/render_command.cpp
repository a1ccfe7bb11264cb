#include "app/render_command.h"

#include <filesystem>
#include <utility>

#include "app/demo_run.h"
#include "app/formats/peak_table.h"
#include "app/formats/read_run.h"
#include "app/output.h"
#include "app/picture.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr double kDotsPerInch = 96;

// The file of the same stem with this ending; empty where there is none.
std::string Beside(const std::string& file, const char* ending) {
  const fs::path path = fs::path(file).replace_extension(ending);
  std::error_code ignored;
  return fs::exists(path, ignored) ? path.string() : "";
}

// The peaks of a table, in place of the run's own.
bool UsePeakTable(const std::string& path, RunData& run, std::string& error) {
  std::vector<Peak> peaks;
  if (!ReadPeakTable(path, run, peaks, error)) return false;
  run.peaks = std::move(peaks);
  return true;
}

// Adds a file's run to what was read before.
void Append(RunData&& run, const std::string& file, bool several, RunData& all) {
  for (Peak& peak : run.peaks) {
    peak.channel += all.channels.size();
    all.peaks.push_back(std::move(peak));
  }
  for (Trace& trace : run.channels) {
    trace.source = file;
    all.channels.push_back(std::move(trace));
  }
  for (Trace& trace : run.auxiliary) {
    trace.source = file;
    all.auxiliary.push_back(std::move(trace));
  }
  for (const std::string& note : run.notes) all.Note(several ? file + ": " + note : note);
}

}  // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : render_(*program.add_subcommand("render", "Draw the runs of files into one picture")),
      demo_(*program.add_subcommand("demo", "Draw a generated run")) {
  render_.add_option("FILE", files_, "Files of measured data")->required();
  AddRenderOptions(render_, texts_);
  AddRenderOptions(demo_, texts_);
}

bool RenderCommand::ReadFile(const std::string& file, const ReadOptions& read, RunData& run,
                             std::string& error) const {
  if (!ReadRun(file, read, run, error)) return false;
  const std::string beside = Beside(file, ".peaks.csv");
  if (!texts_.peakTable.empty() || beside.empty()) return true;
  run.Note("peaks are those of " + beside);
  return UsePeakTable(beside, run, error);
}

bool RenderCommand::ReadAll(const ReadOptions& read, RunData& all, std::string& error) const {
  if (demo_.parsed()) all = DemoRun();
  for (const std::string& file : files_) {
    RunData run;
    if (!ReadFile(file, read, run, error)) return false;
    Append(std::move(run), file, files_.size() > 1, all);
  }
  if (!texts_.peakTable.empty() && !UsePeakTable(texts_.peakTable, all, error)) return false;
  AmountTexts amounts = texts_.amounts;
  const std::string beside = files_.size() == 1 ? Beside(files_[0], ".components.csv") : "";
  if (amounts.windows.empty() && !beside.empty()) {
    amounts.windows = beside;
    all.Note("components are those of " + beside);
  }
  all.quantification = ReadQuantification(amounts);
  return true;
}

int RenderCommand::Run() const {
  DisplayOptions display;
  ReadOptions read;
  RunData run;
  gfx::Surface surface;
  std::string error;
  if (!UnderstandRenderOptions(texts_, display, read, error) || !ReadAll(read, run, error) ||
      !DrawPicture(run, display, surface, error)) {
    return Fail(error);
  }
  std::vector<std::string> inputs = files_;
  if (!texts_.peakTable.empty()) inputs.push_back(texts_.peakTable);
  if (!texts_.amounts.windows.empty()) inputs.push_back(texts_.amounts.windows);
  inputs.insert(inputs.end(), texts_.amounts.standards.begin(), texts_.amounts.standards.end());
  const std::string stem = files_.empty() ? "demonstration" : fs::path(files_[0]).stem().string();
  return SavePicture(surface, texts_.output, inputs, stem, run.notes, kDotsPerInch * display.scale);
}

}  // namespace app
