#include "app/formats/text.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace app {
namespace {

using namespace std::string_literals;

TEST(Decode, GivesUtf8) {
  const struct {
    const char* name;
    std::string bytes, text;
  } cases[] = {{"Utf8WithMark", "\xEF\xBB\xBFt \xC2\xB5V", "t \xC2\xB5V"},
               {"Latin1", "\xB5V \xB0", "\xC2\xB5V \xC2\xB0"},
               {"OverlongFormIsLatin1", "\xC0\x80", "\xC3\x80\xC2\x80"},
               {"CutUtf8IsLatin1", "a\xC2", "a\xC3\x82"},
               {"Utf16Little",
                "\xFF\xFE"
                "1\0,\0\xB5\0\xAC\x20"s,
                "1,\xC2\xB5\xE2\x82\xAC"},
               {"Utf16Big",
                "\xFE\xFF\0"
                "1\0\n\x20\xAC"s,
                "1\n\xE2\x82\xAC"},
               {"Utf16Pair", "\xFE\xFF\xD8\x3D\xDE\x00"s, "\xF0\x9F\x98\x80"},
               {"Utf16OddByte",
                "\xFF\xFE"
                "1\0"
                "2"s,
                "1\xEF\xBF\xBD"}};
  for (const auto& c : cases) EXPECT_EQ(DecodeText(c.bytes), c.text) << c.name;
}

TEST(Numbers, AreParsedWholeOrNotAtAll) {
  const struct {
    const char* text;
    char mark;
    double value;
  } good[] = {
      {"1.5", '.', 1.5},
      {"-.5e-3", '.', -0.0005},
      {"+2", '.', 2},
      {"1,5", ',', 1.5},
      {"-1,5E+2", ',', -150},
      {"\xE2\x88\x92"
       "3,25",
       ',', -3.25},
      {"-0", '.', 0},
      {"1e-999", '.', 0},
  };
  for (const auto& c : good) EXPECT_EQ(ParseNumber(c.text, c.mark), c.value) << c.text;
  for (const char* bad : {"1e999", "1,5", "1.2.3", "", "-", "+-1", "inf", "-nan", "0x10", "12 ",
                          "1e", "--1", "e5", "\xE2\x88\x92-1"}) {
    EXPECT_EQ(ParseNumber(bad, '.'), std::nullopt) << bad;
  }
  EXPECT_EQ(ParseNumber("1.5", ','), std::nullopt);
  // Binary fractions written in full are longer than any fixed buffer.
  EXPECT_EQ(ParseNumber("0.5" + std::string(500, '0'), '.'), 0.5);
}

TEST(Bytes, OnlyRegularFilesAreRead) {
  const std::string folder = std::filesystem::temp_directory_path().string();
  for (const std::string& path : {folder, folder + "/there/is/no/such/file", "/dev/zero"s}) {
    EXPECT_THROW(ReadBytes(path), FileError) << path;
  }
}

}  // namespace
}  // namespace app
