// What the subcommands share: messages, sizes and names of pictures.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "platform/gfx/gdi.h"
#include "platform/gfx/surface.h"

namespace app {

// One line on standard error. Returns kBadInput.
int Fail(const std::string& message);

struct OutputOptions {
  std::string path;  // empty: named after the input, in out/
  std::string size = "1600x900";
};
// -o and --size.
void AddOutputOptions(CLI::App& command, OutputOptions& options);

// "1600x900". False, and the cause in `error`, where it is no size from kMinExtentPx to
// kMaxExtentPx.
bool ParseSize(const std::string& text, int& widthPx, int& heightPx, std::string& error);

// The picture's file. Makes out/ where it is needed. Empty, and the cause in `error`, where the
// picture would replace one of `inputs` or its folder cannot be made.
std::string OutputPath(const std::string& path, const std::vector<std::string>& inputs,
                       const std::string& stem, std::string& error);

// Writes the picture, with its resolution (dots per inch; 0: not stated), and prints its path,
// after `notes`. Returns an exit status.
int SavePicture(const gfx::Surface& surface, const OutputOptions& options,
                const std::vector<std::string>& inputs, const std::string& stem,
                const std::vector<std::string>& notes, double dpi = 0);

// Replaces the file's contents at once; a new file is readable as any other. False, and the cause
// in `error`, where it cannot be written; it is then unchanged.
bool WriteText(const std::string& path, const std::string& text, std::string& error);

// One line each on standard output.
void PrintNotes(const std::vector<std::string>& notes);

// A white picture with a context to draw on and a font that suits its size, selected.
class Canvas {
 public:
  Canvas(int widthPx, int heightPx);
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas();

  const gfx::Surface& Picture() const { return surface_; }
  RECT Area() const { return {0, 0, surface_.Width(), surface_.Height()}; }
  HDC Context() const { return hdc_; }
  HFONT Font() const { return font_; }

 private:
  gfx::Surface surface_;
  HDC hdc_;
  HFONT font_;
};

}  // namespace app
