// Text of data files: bytes to UTF-8, lines, cells, numbers.
#pragma once

#include <deque>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace app {

// What a reader throws: one line, complete with file name and place.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Whole contents of a regular file. Throws FileError for a missing or unreadable file, a folder,
// and a file of more than kMaxFileBytes.
inline constexpr unsigned long long kMaxFileBytes = 2ULL << 30;
std::string ReadBytes(const std::string& path);

// Text as UTF-8 without a byte order mark. UTF-16 is known by its byte order mark (an unpaired
// surrogate or a lone last byte becomes U+FFFD); everything else is UTF-8 where it is valid UTF-8,
// and Latin-1 otherwise.
std::string DecodeText(std::string_view bytes);

// Lines of a text without their ends; CR, LF and CR LF each end a line, in any mixture. An empty
// last line counts for nothing. The views borrow `text`.
std::vector<std::string_view> SplitLines(std::string_view text);

// A text with its name, for readers to go through line by line. Lines count from 0 here and from 1
// in messages. Both are borrowed.
class TextFile {
 public:
  TextFile(const std::string& name, std::string_view text) : lines(SplitLines(text)), name_(name) {}
  // Throw FileError: "NAME:LINE: cause" and "NAME: cause".
  [[noreturn]] void Fail(std::size_t line, const std::string& cause) const;
  [[noreturn]] void Fail(const std::string& cause) const;

  const std::vector<std::string_view> lines;

 private:
  const std::string& name_;
};

// Without blanks (spaces, tabs, no-break spaces) at both ends.
std::string_view Trim(std::string_view text);
// ASCII letters in lower case, everything else unchanged.
std::string Lower(std::string_view text);

// Cell separators. kBlanks: any run of spaces and tabs.
enum class Separator { kTab, kSemicolon, kComma, kBlanks };

// Texts of cells that are not parts of the line as they stand; growing keeps them in place.
using CellStorage = std::deque<std::string>;

// A line has at most this many cells; the last one then holds the rest of the line.
inline constexpr std::size_t kMaxCells = 100'000;

// Cells of a line, trimmed, without their quotation marks (a doubled mark inside quotes stands for
// one). Empty cells are kept, the ones at the end too. A line of blanks has one empty cell, and no
// cell with kBlanks. Cells borrow `line` or `storage`.
void SplitCells(std::string_view line, Separator separator, std::vector<std::string_view>& cells,
                CellStorage& storage);

// A finite number: optional sign (also U+2212), digits with one decimal mark, optional exponent.
// Too small a number is 0. Nothing for anything else, a too large number among it.
std::optional<double> ParseNumber(std::string_view text, char decimalMark);

// "12.5" for messages: up to ten digits.
std::string NumberText(double value);

// An empty cell, or a word for "no value": "n.a.", "NA", "N/A", "NaN", "-", "--", "#N/A", "null".
bool IsMissing(std::string_view cell);

}  // namespace app
