#include <png.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/gfx/context.h"
#include "platform/gfx/surface.h"

namespace gfx {
namespace {

std::string Cause(int code) { return std::generic_category().message(code); }

// A new file in the folder of its later place; removed again unless it gets there.
class PendingFile {
 public:
  explicit PendingFile(const std::string& path)
      : path_(path), name_(path.substr(0, path.find_last_of('/') + 1) + ".picture-XXXXXX") {
    const int descriptor = mkstemp(name_.data());
    if (descriptor < 0) return;
    made_ = true;
    // mkstemp is private to the user; a picture is as readable as any other new file.
    const mode_t mask = umask(0);
    umask(mask);
    (void)fchmod(descriptor, 0666 & ~mask);
    file_ = fdopen(descriptor, "wb");
    if (!file_) close(descriptor);
  }
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  ~PendingFile() {
    if (file_) std::fclose(file_);
    if (made_) unlink(name_.c_str());
  }
  std::FILE* File() { return file_; }
  // False, with errno, where the rest cannot be written or the name not be taken.
  bool Finish() {
    std::FILE* const file = std::exchange(file_, nullptr);
    if (std::fclose(file) != 0 || std::rename(name_.c_str(), path_.c_str()) != 0) return false;
    made_ = false;
    return true;
  }

 private:
  const std::string& path_;
  std::string name_;
  bool made_ = false;
  std::FILE* file_ = nullptr;
};

// What the callbacks leave behind: the first failure.
struct Failure {
  int code = 0;
  char text[128] = "";
};

void OnError(png_structp png, png_const_charp text) {
  auto* failure = static_cast<Failure*>(png_get_error_ptr(png));
  std::snprintf(failure->text, sizeof failure->text, "%s", text);
  png_longjmp(png, 1);
}
void OnWarning(png_structp, png_const_charp) {}
void Write(png_structp png, png_bytep bytes, std::size_t count) {
  auto* file = static_cast<std::FILE*>(png_get_io_ptr(png));
  if (std::fwrite(bytes, 1, count, file) == count) return;
  static_cast<Failure*>(png_get_error_ptr(png))->code = errno;
  png_error(png, "write failed");
}
void Flush(png_structp) {}

png_uint_32 DotsPerMetre(double dpi) {
  // Not a number compares false.
  return dpi > 0 ? static_cast<png_uint_32>(std::min(std::floor(dpi / 0.0254 + 0.5), 2147483647.0))
                 : 0;
}

// Jumps back here on failure: nothing in this function needs a destructor.
bool Encode(const Surface& surface, std::FILE* file, double dpi, BYTE* row, Failure& failure) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure, OnError, OnWarning);
  if (!png) return false;
  png_infop info = png_create_info_struct(png);
  if (!info || setjmp(png_jmpbuf(png)) != 0) {
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_set_write_fn(png, file, Write, Flush);
  png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
  png_set_IHDR(png, info, static_cast<png_uint_32>(surface.Width()),
               static_cast<png_uint_32>(surface.Height()), 8, PNG_COLOR_TYPE_RGB,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  const png_uint_32 resolution = DotsPerMetre(dpi);
  if (resolution > 0) png_set_pHYs(png, info, resolution, resolution, PNG_RESOLUTION_METER);
  png_write_info(png, info);
  for (int y = 0; y < surface.Height(); ++y) {
    BYTE* byte = row;
    for (int x = 0; x < surface.Width(); ++x) {
      const std::uint32_t pixel = surface.Row(y)[x];
      *byte++ = static_cast<BYTE>(pixel >> 16);
      *byte++ = static_cast<BYTE>(pixel >> 8);
      *byte++ = static_cast<BYTE>(pixel);
    }
    png_write_row(png, row);
  }
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return true;
}

}  // namespace

bool SavePng(const Surface& surface, const std::string& path, std::string& error, double dpi) {
  const auto failed = [&](const std::string& cause) {
    error = path + ": " + cause;
    return false;
  };
  if (surface.Width() == 0 || surface.Height() == 0) return failed("the picture has no pixels");
  struct stat there;
  if (stat(path.c_str(), &there) == 0 && !S_ISREG(there.st_mode)) {
    return failed(S_ISDIR(there.st_mode) ? Cause(EISDIR) : "not a regular file");
  }
  PendingFile file(path);
  if (!file.File()) return failed(Cause(errno));
  std::vector<BYTE> row(static_cast<std::size_t>(surface.Width()) * 3);
  Failure failure;
  if (!Encode(surface, file.File(), dpi, row.data(), failure)) {
    return failed(failure.code ? Cause(failure.code)
                               : std::string("cannot be encoded: ") + failure.text);
  }
  return file.Finish() || failed(Cause(errno));
}

}  // namespace gfx
