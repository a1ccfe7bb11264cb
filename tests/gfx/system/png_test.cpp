#include <png.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>

#include "platform/gfx/context.h"
#include "tests/gfx/raster_fixture.h"

namespace {

namespace fs = std::filesystem;

class PngFile : public testing::Test {
 protected:
  PngFile() : folder_(fs::path(testing::TempDir()) / "elugraph-png") {
    fs::remove_all(folder_);
    fs::create_directory(folder_);
  }
  ~PngFile() override { fs::remove_all(folder_); }
  std::string Path(const char* name) const { return (folder_ / name).string(); }
  std::ptrdiff_t FilesInFolder() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }

  fs::path folder_;
  std::string error_;
};

gfx::Surface Noise(int width, int height) {
  gfx::Surface surface(width, height);
  Seeded random(71);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      surface.Row(y)[x] = static_cast<std::uint32_t>(random(0, 0xFFFFFF));
  }
  return surface;
}

struct Decoded {
  gfx::Surface surface;
  png_uint_32 perMetre = 0;
  int unit = PNG_RESOLUTION_UNKNOWN;
};
Decoded Read(const std::string& path) {
  Decoded decoded;
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return decoded;
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file);
  png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  EXPECT_EQ(png_get_color_type(png, info), PNG_COLOR_TYPE_RGB);
  EXPECT_EQ(png_get_bit_depth(png, info), 8);
  png_uint_32 vertical = 0;
  png_get_pHYs(png, info, &decoded.perMetre, &vertical, &decoded.unit);
  EXPECT_EQ(decoded.perMetre, vertical);
  decoded.surface = gfx::Surface(static_cast<int>(png_get_image_width(png, info)),
                                 static_cast<int>(png_get_image_height(png, info)));
  png_bytepp rows = png_get_rows(png, info);
  for (int y = 0; y < decoded.surface.Height(); ++y) {
    for (int x = 0; x < decoded.surface.Width(); ++x) {
      const png_bytep pixel = rows[y] + 3 * x;
      decoded.surface.Row(y)[x] = gfx::PixelOf(RGB(pixel[0], pixel[1], pixel[2]));
    }
  }
  png_destroy_read_struct(&png, &info, nullptr);
  std::fclose(file);
  return decoded;
}

TEST_F(PngFile, ComesBackAsItWas) {
  const struct {
    int width, height;
    double dpi;
    png_uint_32 perMetre;
  } pictures[] = {{61, 33, 0, 0},
                  {1, 1, 96, 3780},
                  {300, 2, 300, 11811},
                  {2, 2, -5, 0},
                  {2, 2, std::numeric_limits<double>::quiet_NaN(), 0},
                  {2, 2, std::numeric_limits<double>::infinity(), 2147483647}};
  for (const auto& [width, height, dpi, perMetre] : pictures) {
    const gfx::Surface surface = Noise(width, height);
    ASSERT_TRUE(gfx::SavePng(surface, Path("picture.png"), error_, dpi)) << error_;
    const Decoded decoded = Read(Path("picture.png"));
    EXPECT_TRUE(SamePixels(decoded.surface, surface));
    EXPECT_EQ(decoded.perMetre, perMetre);
  }
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(PngFile, FailureNamesFileAndCauseAndLeavesNothing) {
  fs::create_directory(folder_ / "folder.png");
  std::ofstream(folder_ / "file") << "not a folder";
  const struct {
    std::string path;
    const char* cause;
  } places[] = {{Path("missing/picture.png"), "No such file or directory"},
                {Path("file/picture.png"), "Not a directory"},
                {Path("folder.png"), "Is a directory"},
                {"/dev/null", "not a regular file"}};
  for (const auto& [path, cause] : places) {
    EXPECT_FALSE(gfx::SavePng(Noise(3, 3), path, error_));
    EXPECT_EQ(error_, path + ": " + cause);
  }
  EXPECT_FALSE(gfx::SavePng(gfx::Surface(), Path("empty.png"), error_));
  EXPECT_EQ(error_, Path("empty.png") + ": the picture has no pixels");
  EXPECT_EQ(FilesInFolder(), 2);
}

TEST_F(PngFile, AFailedWriteKeepsTheOldPicture) {
  const gfx::Surface old = Noise(4, 4);
  ASSERT_TRUE(gfx::SavePng(old, Path("picture.png"), error_));
  const gfx::Surface large = Noise(200, 200);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{10000, before.rlim_max};  // as on a disk that fills up
  setrlimit(RLIMIT_FSIZE, &small);
  const bool saved = gfx::SavePng(large, Path("picture.png"), error_);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(saved);
  EXPECT_EQ(error_, Path("picture.png") + ": File too large");
  EXPECT_TRUE(SamePixels(Read(Path("picture.png")).surface, old));
  EXPECT_EQ(FilesInFolder(), 1);
}

}  // namespace
