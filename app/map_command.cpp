#include "app/map_command.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "app/display_options.h"
#include "app/formats/header_words.h"
#include "app/map_picture.h"
#include "app/program.h"
#include "app/render_options.h"
#include "app/screen.h"
#include "elugraph/chrom2d/chrom2d_base.h"
#include "embedded/controls/host_module.h"

namespace app {
namespace {

// Windows have no larger pictures.
constexpr long long kMaxPixels = 1LL << 26;

}  // namespace

MapCommand::MapCommand(CLI::App& program)
    : map_(*program.add_subcommand("map", "Show the spectra of a run over time as a colour map")) {
  AddMapInput(map_, input_);
  map_.add_option("-o,--output", output_.path,
                  "Picture to write (PNG); without it the map opens in a window, where the button "
                  "Colours… changes its scale");
  map_.add_option("--size", output_.size,
                  "Width and height in pixels (default: 1600x900; the window's own)");
  map_.add_option(
          "--formula", colours_.formula,
          "How values become colours: linear or log (default: as set in the window, else log)")
      ->type_name("linear|log");
  map_.add_option("--colours,--colors", colours_.colours,
                  "2 to 10 colours from the lowest to the highest value, such as "
                  "#00204c,#ffea46, or one of " +
                      BuiltinScaleNames() + " (default: as set in the window, else tide)")
      ->type_name("LIST");
  map_.add_option("--from", from_, "First time: such as 2.5min or 90s")->type_name("TIME");
  map_.add_option("--to", to_, "Last time: likewise")->type_name("TIME");
  map_.add_option("--wavelengths", wavelengths_, "Lowest and highest wavelength in nm")
      ->type_name("LOW:HIGH");
  map_.footer(
      "Texts are 15 pixels high in pictures of every size. Colours given here are not saved; those "
      "chosen in the window are.");
}

bool MapCommand::Understand(MapPart& part, int& widthPx, int& heightPx, std::string& error) const {
  for (const auto& [option, text, time] :
       {std::tuple{"--from", &from_, &part.fromS}, std::tuple{"--to", &to_, &part.toS}}) {
    if (text->empty()) continue;
    *time = ParseTimeS(*text, TimeUnitOf(input_.axisUnit));
    if (!*time) {
      error = std::string(option) + ": '" + *text + "' is not a time such as 2.5min or 90s";
      return false;
    }
  }
  if (!wavelengths_.empty()) {
    const std::optional<StatedAxis> range = ParseWavelengths(wavelengths_);
    if (!range) {
      error = "--wavelengths: '" + wavelengths_ + "' is not LOW:HIGH";
      return false;
    }
    part.lowNm = std::min(range->from, range->to);
    part.highNm = std::max(range->from, range->to);
  }
  if (!ParseSize(output_.size, widthPx, heightPx, error)) return false;
  if (static_cast<long long>(widthPx) * heightPx > kMaxPixels) {
    error = "--size: a map has at most " + std::to_string(kMaxPixels) + " pixels";
  }
  return error.empty();
}

int MapCommand::Run() const {
  MapPart part;
  MapRun map;
  int widthPx = 0, heightPx = 0;
  std::vector<std::string> notes;
  std::string error;
  if (!Understand(part, widthPx, heightPx, error) || !SetMapColours(colours_, error) ||
      !ReadMap(input_, part, map, notes, error)) {
    return Fail(error);
  }
  return output_.path.empty() ? Show(*map.run, widthPx, heightPx, notes)
                              : Draw(*map.run, widthPx, heightPx, notes);
}

int MapCommand::Draw(chromatogram& run, int widthPx, int heightPx,
                     const std::vector<std::string>& notes) const {
  gfx::Surface surface;
  std::string error;
  if (!DrawMap(run, widthPx, heightPx, surface, error)) return Fail(error);
  std::vector<std::string> inputs;
  if (!input_.file.empty()) inputs.push_back(input_.file);
  return SavePicture(surface, output_, inputs, StemOf(input_), notes);
}

int MapCommand::Show(chromatogram& run, int widthPx, int heightPx,
                     const std::vector<std::string>& notes) const {
  std::string error;
  const std::unique_ptr<ui::Front> screen = OpenScreen(error);
  if (screen == nullptr) return Fail(error + "; -o draws the map to a file");
  PrintNotes(notes);
  const ColorScale before = TheColorScale();
  // Ends with its window.
  auto* window = new TChrom2DBase(
      nullptr, ResIdCheck(embedded::kMapDialog, embedded::HostModule(), RT_DIALOG), &run, nullptr);
  const HWND shown = window->Create(-1);
  if (shown == nullptr) return Fail("the window cannot be made");
  SetWindowTextA(shown, (StemOf(input_) + " – spectral map").c_str());
  if (map_.count("--size") > 0) {
    SetWindowPos(shown, nullptr, 0, 0, widthPx, heightPx, SWP_NOMOVE | SWP_NOZORDER);
  }
  PostExecute(shown, nullptr, nullptr, false);
  RunWindow(shown);
  SaveMapColours(before);
  return kDone;
}

}  // namespace app
