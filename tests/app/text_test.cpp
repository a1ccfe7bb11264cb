#include "app/formats/text.h"
#include "tests/support/case_name.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace app {
namespace {

using namespace std::string_literals;

struct DecodeCase {
  const char* name;
  std::string bytes;
  std::string text;
};
class Decode : public testing::TestWithParam<DecodeCase> {};
TEST_P(Decode, GivesUtf8) { EXPECT_EQ(DecodeText(GetParam().bytes), GetParam().text); }
const DecodeCase kEncodingsDecode[] = {
    {"Plain", "t,mAU\r\n", "t,mAU\r\n"},
    {"Utf8WithMark", "\xEF\xBB\xBFt \xC2\xB5V", "t \xC2\xB5V"},
    {"Latin1", "\xB5V \xB0", "\xC2\xB5V \xC2\xB0"},
    {"OverlongFormIsLatin1", "\xC0\x80", "\xC3\x80\xC2\x80"},
    {"SurrogateInUtf8IsLatin1", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"},
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
    {"Utf16LoneSurrogates", "\xFE\xFF\xDC\x00\xD8\x00\0A\xD8\x00"s,
     "\xEF\xBF\xBD\xEF\xBF\xBD"
     "A\xEF\xBF\xBD"},
    {"Utf16OddByte",
     "\xFF\xFE"
     "1\0"
     "2"s,
     "1\xEF\xBF\xBD"},
    {"Utf16MarkAlone", "\xFF\xFE", ""}};
INSTANTIATE_TEST_SUITE_P(Encodings, Decode, testing::ValuesIn(kEncodingsDecode), CaseName());

TEST(Lines, EveryKindOfEndInOneText) {
  EXPECT_EQ(SplitLines("a\r\nb\rc\nd\n\r\ne\n"),
            (std::vector<std::string_view>{"a", "b", "c", "d", "", "e"}));
  EXPECT_TRUE(SplitLines("").empty());
}

struct CellsCase {
  const char* name;
  const char* line;
  Separator separator;
  std::vector<std::string> cells;
};
class Cells : public testing::TestWithParam<CellsCase> {};
TEST_P(Cells, AreSplit) {
  std::vector<std::string_view> cells;
  CellStorage storage;
  SplitCells(GetParam().line, GetParam().separator, cells, storage);
  EXPECT_EQ(std::vector<std::string>(cells.begin(), cells.end()), GetParam().cells);
}
const CellsCase kLinesCells[] = {
    {"Trimmed", " 1 ,\t2\xC2\xA0,3", Separator::kComma, {"1", "2", "3"}},
    {"EmptyOnes", ",1,,", Separator::kComma, {"", "1", "", ""}},
    {"TabsStay", "1\t\t2", Separator::kTab, {"1", "", "2"}},
    {"RunsOfBlanks", "  1 \t 2  ", Separator::kBlanks, {"1", "2"}},
    {"OnlyBlanks", "   ", Separator::kBlanks, {}},
    {"Quoted", R"("0,5"; "a;b" ;c)", Separator::kSemicolon, {"0,5", "a;b", "c"}},
    {"DoubledMarks", R"("say ""x""","""")", Separator::kComma, {"say \"x\"", "\""}},
    {"OpenQuote", R"(1,"2,3)", Separator::kComma, {"1", "2,3"}},
    {"QuotedBlanks", R"("Peak Time" min)", Separator::kBlanks, {"Peak Time", "min"}}};
INSTANTIATE_TEST_SUITE_P(Lines, Cells, testing::ValuesIn(kLinesCells), CaseName());

TEST(Cells, ManyCellsEndInOne) {
  std::vector<std::string_view> cells;
  CellStorage storage;
  SplitCells(std::string(kMaxCells + 5, ','), Separator::kComma, cells, storage);
  EXPECT_EQ(cells.size(), kMaxCells);
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
