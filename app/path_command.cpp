#include "app/path_command.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include "app/formats/text.h"
#include "app/output.h"
#include "app/path_file.h"
#include "app/program.h"
#include "app/screen.h"
#include "elugraph/chrom2d/integration_path_dlg.h"

namespace app {
namespace {

bool ReadPath(const std::string& file, const std::vector<double>& wavesNm, SIPath& path,
              std::string& error) {
  if (file.empty()) return true;
  try {
    return ParsePath(file, DecodeText(ReadBytes(file)), wavesNm, path, error);
  } catch (const FileError& failure) {
    error = failure.what();
    return false;
  }
}

}  // namespace

PathCommand::PathCommand(CLI::App& program)
    : path_(*program.add_subcommand("path", "Edit an integration path on the map of a run")) {
  AddMapInput(path_, input_);
  path_.add_option("--path", load_, "Path to begin with (default: one segment)")
      ->type_name("IN.csv");
  path_.add_option("--save", save_, "File for the path when the editor is closed with OK")
      ->type_name("OUT.csv")
      ->required();
  path_.add_option("--formula", colours_.formula, "How values become colours: linear or log")
      ->type_name("linear|log");
  path_
      .add_option("--colours,--colors", colours_.colours,
                  "Colours of the map; see elugraph map --help")
      ->type_name("LIST");
  path_.footer(
      "In the editor: drag boundaries and band lines; a right click adds a boundary.\n"
      "Paths are CSV: a header, then one segment per line with its end in seconds from the run's "
      "first sample (open for the last one) and the band's limits as wavelength and as channel "
      "number. On reading, the wavelengths decide, each for the channel nearest to it; channel "
      "numbers are there to be read by people.\n"
      "Exit status: 0 the path was saved, 1 cancelled and nothing written, 2 an error.");
}

// Before the user has done the work.
bool PathCommand::CanSave(std::string& error) const {
  std::vector<std::string> inputs;
  if (!input_.file.empty()) inputs.push_back(input_.file);
  if (OutputPath(save_, inputs, {}, error).empty()) return false;
  const std::filesystem::path folder = std::filesystem::absolute(save_).parent_path();
  if (access(folder.c_str(), W_OK) == 0 && !std::filesystem::is_directory(save_)) return true;
  error = save_ + ": cannot be written";
  return false;
}

int PathCommand::Run() const {
  MapRun map;
  SIPathHolder path;
  std::vector<std::string> notes;
  std::string error;
  if (!SetMapColours(colours_, error) || !ReadMap(input_, {}, map, notes, error) ||
      !ReadPath(load_, map.wavesNm, path, error)) {
    return Fail(error);
  }
  if (!CanSave(error)) return Fail(error);
  const std::unique_ptr<ui::Front> screen = OpenScreen(error);
  if (screen == nullptr)
    return Fail(error + "; the editor needs one (elugraph map -o draws a map)");
  PrintNotes(notes);
  const SIPathItem* const before = path.items;
  const HWND editor = CallChromatogramIntegrationPathEdit(nullptr, map.run.get(), path);
  if (editor == nullptr) return Fail("the editor cannot be opened");
  SetWindowTextA(editor, (StemOf(input_) + " – integration path").c_str());
  RunWindow(editor);
  // An accepted path is the editor's own copy.
  if (path.items == before) {
    std::fprintf(stderr, "elugraph: cancelled; %s is not written\n", save_.c_str());
    return kCancelled;
  }
  if (!WriteText(save_, PathText(path, map.wavesNm), error)) return Fail(error);
  std::printf("%s\n", save_.c_str());
  return kDone;
}

}  // namespace app
