#include <png.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "platform/gfx/context.h"
#include "tests/gfx/raster_fixture.h"
#include "tests/support/folder_fixture.h"

namespace {

namespace fs = std::filesystem;

class PngFile : public FolderFixture {
 protected:
  std::ptrdiff_t FilesInFolder() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }

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

gfx::Surface Read(const std::string& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  png_image_begin_read_from_file(&image, path.c_str());
  EXPECT_EQ(image.format, static_cast<png_uint_32>(PNG_FORMAT_RGB)) << image.message;
  std::vector<BYTE> bytes(PNG_IMAGE_SIZE(image));
  EXPECT_TRUE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr)) << image.message;
  gfx::Surface surface(static_cast<int>(image.width), static_cast<int>(image.height));
  const BYTE* byte = bytes.data();
  for (int y = 0; y < surface.Height(); ++y) {
    for (int x = 0; x < surface.Width(); ++x, byte += 3) {
      surface.Row(y)[x] = gfx::PixelOf(RGB(byte[0], byte[1], byte[2]));
    }
  }
  return surface;
}

// The file's resolution chunk: two big-endian numbers and the unit, 1 for metres.
std::string Resolution(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const std::size_t at = bytes.find("pHYs");
  return at == std::string::npos ? "" : bytes.substr(at + 4, 9);
}

TEST_F(PngFile, ComesBackAsItWas) {
  const struct {
    int width, height;
    double dpi;
    std::string resolution;
  } pictures[] = {
      {61, 33, 0, ""},
      {1, 1, 96, {"\0\0\x0E\xC4\0\0\x0E\xC4\1", 9}},  // 3780 per metre
      {2, 2, std::numeric_limits<double>::quiet_NaN(), ""},
      {2, 2, std::numeric_limits<double>::infinity(), "\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF\1"}};
  for (const auto& [width, height, dpi, resolution] : pictures) {
    const gfx::Surface surface = Noise(width, height);
    ASSERT_TRUE(gfx::SavePng(surface, File("picture.png"), error_, dpi)) << error_;
    EXPECT_TRUE(SamePixels(Read(File("picture.png")), surface));
    EXPECT_EQ(Resolution(File("picture.png")), resolution);
  }
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(PngFile, FailureNamesFileAndCauseAndLeavesNothing) {
  fs::create_directory(folder_ / "folder.png");
  std::ofstream(folder_ / "file") << "not a folder";
  const struct {
    std::string path;
    const char* cause;
  } places[] = {{File("missing/picture.png"), "No such file or directory"},
                {File("file/picture.png"), "Not a directory"},
                {File("folder.png"), "Is a directory"},
                {"/dev/null", "not a regular file"}};
  for (const auto& [path, cause] : places) {
    EXPECT_FALSE(gfx::SavePng(Noise(3, 3), path, error_));
    EXPECT_EQ(error_, path + ": " + cause);
  }
  EXPECT_FALSE(gfx::SavePng(gfx::Surface(), File("empty.png"), error_));
  EXPECT_EQ(error_, File("empty.png") + ": the picture has no pixels");
  EXPECT_EQ(FilesInFolder(), 2);
}

TEST_F(PngFile, AFailedWriteKeepsTheOldPicture) {
  const gfx::Surface old = Noise(4, 4);
  ASSERT_TRUE(gfx::SavePng(old, File("picture.png"), error_));
  const gfx::Surface large = Noise(200, 200);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{10000, before.rlim_max};  // as on a disk that fills up
  setrlimit(RLIMIT_FSIZE, &small);
  const bool saved = gfx::SavePng(large, File("picture.png"), error_);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(saved);
  EXPECT_EQ(error_, File("picture.png") + ": File too large");
  EXPECT_TRUE(SamePixels(Read(File("picture.png")), old));
  EXPECT_EQ(FilesInFolder(), 1);
}

}  // namespace
