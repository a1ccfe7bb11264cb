// INI texts: finding and changing entries without touching anything else.
#include <vector>

#include "embedded/settings.h"

namespace embedded {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

enum class Kind { kBlank, kOther, kSection, kEntry };

struct Line {
  std::size_t begin, end;  // the bytes of the line with its line end
  Kind kind;
  std::string_view name;  // section or key
  std::string_view value;
};

void Classify(std::string_view content, Line& line) {
  content = Trim(content);
  line.kind = content.empty() ? Kind::kBlank : Kind::kOther;
  if (content.empty() || content[0] == ';' || content[0] == '#') return;
  if (content[0] == '[') {
    const std::size_t close = content.find(']');
    if (close == std::string_view::npos) return;
    line.kind = Kind::kSection;
    line.name = Trim(content.substr(1, close - 1));
    return;
  }
  const std::size_t equals = content.find('=');
  if (equals == std::string_view::npos) return;
  line.kind = Kind::kEntry;
  line.name = Trim(content.substr(0, equals));
  line.value = Trim(content.substr(equals + 1));
}

// A carriage return belongs to the line end only in front of a line feed or at the text's end.
std::vector<Line> Lines(std::string_view text) {
  std::vector<Line> lines;
  std::size_t begin = text.substr(0, kMark.size()) == kMark ? kMark.size() : 0;
  while (begin < text.size()) {
    const std::size_t feed = text.find('\n', begin);
    Line line{begin, feed == std::string_view::npos ? text.size() : feed + 1, Kind::kBlank, {}, {}};
    std::size_t stop = feed == std::string_view::npos ? text.size() : feed;
    if (stop > begin && text[stop - 1] == '\r') --stop;
    Classify(text.substr(begin, stop - begin), line);
    lines.push_back(line);
    begin = line.end;
  }
  return lines;
}

struct Place {
  const Line* entry = nullptr;
  // Where a new entry goes: behind the last line with content of the first section of that name.
  std::optional<std::size_t> insertAt;
};

Place Find(const std::vector<Line>& lines, std::string_view section, std::string_view key) {
  Place place;
  bool inside = false;
  bool first = false;
  for (const Line& line : lines) {
    if (line.kind == Kind::kSection) {
      inside = SameName(line.name, section);
      first = inside && !place.insertAt;
    }
    if (!inside) continue;
    if (first && line.kind != Kind::kBlank) place.insertAt = line.end;
    if (line.kind == Kind::kEntry && SameName(line.name, key)) {
      place.entry = &line;
      break;
    }
  }
  return place;
}

bool Quoted(std::string_view value) {
  return value.size() >= 2 && value.front() == '"' && value.back() == '"';
}

std::string EntryLine(std::string_view key, std::string_view value) {
  // Quotes keep blanks at the ends, and a pair of quotes that belongs to the value.
  const bool quotes = Trim(value).size() != value.size() || Quoted(value);
  std::string line(key);
  line += '=';
  if (quotes) line += '"';
  line += value;
  if (quotes) line += '"';
  return line;
}

}  // namespace

std::optional<std::string> FindEntry(std::string_view text, std::string_view section,
                                     std::string_view key) {
  const std::vector<Line> lines = Lines(text);
  const Line* entry = Find(lines, section, key).entry;
  if (entry == nullptr) return std::nullopt;
  std::string_view value = entry->value;
  if (Quoted(value)) value = value.substr(1, value.size() - 2);
  return std::string(value);
}

std::string ChangeEntry(std::string_view text, std::string_view section, std::string_view key,
                        std::optional<std::string_view> value) {
  const std::size_t feed = text.find('\n');
  const bool carriage = feed != std::string_view::npos && feed > 0 && text[feed - 1] == '\r';
  const std::string_view lineEnd = carriage ? "\r\n" : "\n";
  const std::vector<Line> lines = Lines(text);
  const Place place = Find(lines, section, key);
  std::string result(text);
  if (place.entry != nullptr) {
    const Line& old = *place.entry;
    const std::string_view bytes = text.substr(old.begin, old.end - old.begin);
    std::string line;
    if (value) {
      // The key keeps the spelling, and the line the end, that they have.
      const std::size_t content = bytes.find_last_not_of("\r\n");
      line = EntryLine(old.name, *value) + std::string(bytes.substr(content + 1));
    }
    return result.replace(old.begin, bytes.size(), line);
  }
  if (!value) return result;
  std::string added = EntryLine(key, *value) + std::string(lineEnd);
  std::size_t at = place.insertAt.value_or(text.size());
  if (!place.insertAt) added = "[" + std::string(section) + "]" + std::string(lineEnd) + added;
  const bool openLine = !lines.empty() && at > 0 && text[at - 1] != '\n';
  if (openLine) added.insert(0, lineEnd);
  return result.insert(at, added);
}

std::string EntryFault(std::string_view section, std::string_view key, std::string_view value) {
  const std::string_view breaks("\r\n\0", 3);
  const auto broken = [&](std::string_view text) {
    return text.find_first_of(breaks) != std::string_view::npos;
  };
  const auto badName = [&](std::string_view name) {
    return name.empty() || Trim(name).size() != name.size() || broken(name);
  };
  if (badName(section) || section.find(']') != std::string_view::npos) {
    return "bad section name";
  }
  if (badName(key) || key.find('=') != std::string_view::npos ||
      std::string_view(";#[").find(key[0]) != std::string_view::npos) {
    return "bad key";
  }
  if (broken(value)) return "the value has more than one line";
  return {};
}

}  // namespace embedded
