#include "app/formats/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <system_error>

#include <sys/stat.h>

namespace app {
namespace {

constexpr std::string_view kNoBreakSpace = "\xC2\xA0";
constexpr std::string_view kMinusSign = "\xE2\x88\x92";
constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& text, char32_t code) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

// Length of the valid UTF-8 sequence at the start of `text`, 0 for an invalid one.
std::size_t Utf8Sequence(std::string_view text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates and codes beyond U+10FFFF.
  if (lead == 0xE0 && byte(1) < 0xA0) return 0;
  if (lead == 0xED && byte(1) >= 0xA0) return 0;
  if (lead == 0xF0 && byte(1) < 0x90) return 0;
  if (lead == 0xF4 && byte(1) >= 0x90) return 0;
  return length;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = Utf8Sequence(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  std::string text;
  text.reserve(bytes.size() / 2);
  const auto unit = [&](std::size_t i) -> char32_t {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    return bigEndian ? char32_t{first} << 8 | second : char32_t{second} << 8 | first;
  };
  std::size_t i = 0;
  for (; i + 1 < bytes.size(); i += 2) {
    const char32_t code = unit(i);
    if (code < 0xD800 || code > 0xDFFF) {
      AppendUtf8(text, code);
      continue;
    }
    const char32_t low = code < 0xDC00 && i + 3 < bytes.size() ? unit(i + 2) : 0;
    if (low >= 0xDC00 && low <= 0xDFFF) {
      AppendUtf8(text, 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00));
      i += 2;
    } else {
      AppendUtf8(text, kReplacement);
    }
  }
  if (i < bytes.size()) AppendUtf8(text, kReplacement);
  return text;
}

// The cell at the start of `rest`, which begins with a quotation mark. Leaves `rest` behind it.
std::string_view QuotedCell(std::string_view& rest, CellStorage& storage) {
  std::size_t end = 1;
  bool doubled = false;
  for (; end < rest.size(); ++end) {
    if (rest[end] != '"') continue;
    if (end + 1 < rest.size() && rest[end + 1] == '"') {
      doubled = true;
      ++end;
    } else {
      break;
    }
  }
  std::string_view cell = rest.substr(1, end - 1);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  if (!doubled) return cell;
  std::string plain;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    plain.push_back(cell[i]);
    if (cell[i] == '"') ++i;
  }
  return storage.emplace_back(std::move(plain));
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

void SplitBlanks(std::string_view line, std::vector<std::string_view>& cells,
                 CellStorage& storage) {
  while (true) {
    while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
    if (line.empty()) return;
    if (cells.size() + 1 == kMaxCells) {
      cells.push_back(line);
      return;
    }
    if (line.front() == '"') {
      cells.push_back(Trim(QuotedCell(line, storage)));
      continue;
    }
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    cells.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

char MarkOf(Separator separator) {
  switch (separator) {
    case Separator::kTab:
      return '\t';
    case Separator::kSemicolon:
      return ';';
    case Separator::kComma:
      return ',';
    case Separator::kBlanks:
      break;
  }
  return ' ';
}

}  // namespace

std::string ReadBytes(const std::string& path) {
  const auto fail = [&path](const std::string& cause) { throw FileError(path + ": " + cause); };
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) fail(std::strerror(errno));
  if (S_ISDIR(status.st_mode)) fail("is a folder, not a file");
  if (!S_ISREG(status.st_mode)) fail("is not a regular file");
  if (static_cast<unsigned long long>(status.st_size) > kMaxFileBytes) fail("is larger than 2 GiB");
  std::ifstream file(path, std::ios::binary);
  if (!file) fail(std::strerror(errno));
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.bad()) fail("could not be read");
  // The file may have been cut since its size was asked for.
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

std::string DecodeText(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16(bytes.substr(2), false);
  if (bytes.starts_with("\xFE\xFF")) return FromUtf16(bytes.substr(2), true);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) AppendUtf8(text, static_cast<unsigned char>(c));
  return text;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
  }
  return lines;
}

void TextFile::Fail(std::size_t line, const std::string& cause) const {
  throw FileError(name_ + ":" + std::to_string(line + 1) + ": " + cause);
}

void TextFile::Fail(const std::string& cause) const { throw FileError(name_ + ": " + cause); }

std::string_view Trim(std::string_view text) {
  const auto drop = [&text](bool front) {
    if (text.empty()) return false;
    if (IsBlank(front ? text.front() : text.back())) {
      front ? text.remove_prefix(1) : text.remove_suffix(1);
    } else if (front ? text.starts_with(kNoBreakSpace) : text.ends_with(kNoBreakSpace)) {
      front ? text.remove_prefix(2) : text.remove_suffix(2);
    } else {
      return false;
    }
    return true;
  };
  while (drop(true)) {
  }
  while (drop(false)) {
  }
  return text;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

void SplitCells(std::string_view line, Separator separator, std::vector<std::string_view>& cells,
                CellStorage& storage) {
  cells.clear();
  storage.clear();
  if (separator == Separator::kBlanks) {
    SplitBlanks(line, cells, storage);
    return;
  }
  const char mark = MarkOf(separator);
  while (true) {
    std::size_t start = 0;
    while (start < line.size() && IsBlank(line[start]) && line[start] != mark) ++start;
    std::string_view quoted;
    const bool isQuoted = start < line.size() && line[start] == '"';
    if (isQuoted) {
      line.remove_prefix(start);
      quoted = QuotedCell(line, storage);
    }
    const std::size_t end = cells.size() + 1 < kMaxCells ? line.find(mark) : line.npos;
    cells.push_back(Trim(isQuoted ? quoted : line.substr(0, end)));
    if (end == std::string_view::npos) return;
    line.remove_prefix(end + 1);
  }
}

std::optional<double> ParseNumber(std::string_view text, char decimalMark) {
  std::array<char, 256> plain;
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  const bool unicodeMinus = text.starts_with(kMinusSign);
  if (unicodeMinus) text.remove_prefix(kMinusSign.size());
  if (text.empty()) return std::nullopt;
  // "inf" and "nan" are numbers for from_chars.
  const std::size_t sign = !unicodeMinus && text.front() == '-' ? 1 : 0;
  if (sign == text.size()) return std::nullopt;
  const char first = text[sign];
  if ((first < '0' || first > '9') && first != decimalMark) return std::nullopt;
  if (decimalMark != '.') {
    if (text.size() > plain.size() || text.find('.') != text.npos) return std::nullopt;
    std::replace_copy(text.begin(), text.end(), plain.begin(), decimalMark, '.');
    text = std::string_view(plain.data(), text.size());
  }
  double value = 0;
  const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size()) return std::nullopt;
  if (status == std::errc::result_out_of_range) {
    // Too small and too large are told apart by the exponent's sign.
    if (text.find_first_of("eE") == std::string_view::npos || text.find('-', 1) == text.npos) {
      return std::nullopt;
    }
    value = 0;
  } else if (status != std::errc()) {
    return std::nullopt;
  }
  return unicodeMinus ? -value : value;
}

std::string NumberText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", value);
  return text;
}

bool IsMissing(std::string_view cell) {
  if (cell.empty()) return true;
  if (cell.size() > 5) return false;
  static constexpr std::array kWords = {"n.a.", "n.a", "na",   "n/a", "nan",
                                        "-",    "--",  "#n/a", "null"};
  const std::string lower = Lower(cell);
  return std::find(kWords.begin(), kWords.end(), lower) != kWords.end();
}

}  // namespace app
