#include "app/output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "app/display_options.h"
#include "app/program.h"
#include "platform/gfx/context.h"
#include "platform/gfx/text_engine.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOutputFolder = "out";
constexpr const char* kFontFace = "Arial";

// 11 pixels in the smallest pictures, 22 at the default size.
int FontHeight(int widthPx, int heightPx) {
  return std::clamp(std::min(widthPx / 60, heightPx / 40), 11, 96);
}

}  // namespace

int Fail(const std::string& message) {
  std::fprintf(stderr, "elugraph: %s\n", message.c_str());
  return kBadInput;
}

void AddOutputOptions(CLI::App& command, OutputOptions& options) {
  command.add_option("-o,--output", options.path,
                     "Picture to write (PNG); default: out/NAME-OF-THE-FIRST-FILE.png");
  command.add_option("--size", options.size, "Width and height in pixels")->capture_default_str();
}

bool ParseSize(const std::string& text, int& widthPx, int& heightPx, std::string& error) {
  const auto extent = [](const std::string& digits) {
    const bool plain = !digits.empty() && digits.size() <= 6 &&
                       digits.find_first_not_of("0123456789") == std::string::npos;
    return plain ? std::stoi(digits) : 0;
  };
  const auto isGood = [](int px) { return px >= kMinExtentPx && px <= kMaxExtentPx; };
  const std::size_t cross = std::min(text.find('x'), text.size());
  widthPx = extent(text.substr(0, cross));
  heightPx = cross < text.size() ? extent(text.substr(cross + 1)) : 0;
  if (isGood(widthPx) && isGood(heightPx)) return true;
  error = "--size: '" + text + "' is not WIDTHxHEIGHT with both from " +
          std::to_string(kMinExtentPx) + " to " + std::to_string(kMaxExtentPx);
  return false;
}

std::string OutputPath(const std::string& path, const std::vector<std::string>& inputs,
                       const std::string& stem, std::string& error) {
  std::error_code failure;
  if (path.empty()) {
    fs::create_directories(kOutputFolder, failure);
    if (failure) {
      error = std::string(kOutputFolder) + ": " + failure.message();
      return {};
    }
    return (fs::path(kOutputFolder) / (stem + ".png")).string();
  }
  for (const std::string& input : inputs) {
    if (fs::equivalent(input, path, failure)) {
      error = path + ": is an input file; it is not replaced";
      return {};
    }
  }
  return path;
}

int SavePicture(const gfx::Surface& surface, const OutputOptions& options,
                const std::vector<std::string>& inputs, const std::string& stem,
                const std::vector<std::string>& notes, double dpi) {
  std::string error;
  const std::string path = OutputPath(options.path, inputs, stem, error);
  if (path.empty()) return Fail(error);
  if (!gfx::SavePng(surface, path, error, dpi)) return Fail(error);
  PrintNotes(notes);
  std::printf("%s\n", path.c_str());
  return kDone;
}

bool WriteText(const std::string& path, const std::string& text, std::string& error) {
  std::string name = fs::path(path).parent_path() / ".text-XXXXXX";
  const int descriptor = mkstemp(name.data());
  const mode_t mask = umask(0);
  umask(mask);
  std::FILE* const file = descriptor >= 0 ? fdopen(descriptor, "wb") : nullptr;
  bool written = file != nullptr && fchmod(descriptor, 0666 & ~mask) == 0 &&
                 std::fwrite(text.data(), 1, text.size(), file) == text.size();
  if (file != nullptr) written = std::fclose(file) == 0 && written;
  if (written && std::rename(name.c_str(), path.c_str()) == 0) return true;
  error = path + ": " + std::generic_category().message(errno);
  if (descriptor >= 0) unlink(name.c_str());
  return false;
}

void PrintNotes(const std::vector<std::string>& notes) {
  for (const std::string& note : notes) std::printf("note: %s\n", note.c_str());
}

Canvas::Canvas(int widthPx, int heightPx)
    : surface_(widthPx, heightPx), hdc_(gfx::CreateRasterContext(surface_, gfx::SystemText())) {
  LOGFONTA logical{};
  logical.lfHeight = -FontHeight(widthPx, heightPx);
  std::strncpy(logical.lfFaceName, kFontFace, LF_FACESIZE - 1);
  font_ = CreateFontIndirectA(&logical);
  SelectObject(hdc_, font_);
}

Canvas::~Canvas() {
  DeleteDC(hdc_);
  DeleteObject(font_);
}

}  // namespace app
