#include "app/formats/netcdf_classic.h"

#include <bit>

#include "app/formats/text.h"

namespace app {
namespace {

constexpr std::uint32_t kDimensionTag = 10;
constexpr std::uint32_t kVariableTag = 11;
constexpr std::uint32_t kAttributeTag = 12;
constexpr std::uint64_t kStreaming = 0xFFFFFFFF;
// No list can have more entries than the file has bytes; this bounds what overflow could reach.
constexpr std::uint64_t kMaxValues = std::uint64_t{1} << 31;

constexpr std::uint64_t Padded(std::uint64_t bytes) { return (bytes + 3) / 4 * 4; }

std::string PlainText(std::string_view text) {
  return DecodeText(Trim(text.substr(0, text.find('\0'))));
}

std::uint64_t BigEndian(std::string_view bytes) {
  std::uint64_t value = 0;
  for (const char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
  return value;
}

}  // namespace

NetCdfClassic::NetCdfClassic(const std::string& name, std::string_view bytes)
    : name_(name), bytes_(bytes) {
  const std::uint32_t records = Word();
  ReadDimensions();
  attributes_ = ReadAttributes();
  records_ = records;
  ReadVariables();
  if (records == kStreaming && recordBytes_ > 0) Fail("holds records of an unknown number");
}

void NetCdfClassic::Fail(const std::string& cause) const { throw FileError(name_ + ": " + cause); }

std::uint64_t NetCdfClassic::Unsigned(int bytes) {
  const auto count = static_cast<std::size_t>(bytes);
  if (bytes_.size() - at_ < count) Fail("damaged netCDF header: the file is too short");
  at_ += count;
  return BigEndian(bytes_.substr(at_ - count, count));
}

std::string NetCdfClassic::Name() {
  const std::uint64_t length = Word();
  if (bytes_.size() - at_ < Padded(length)) Fail("damaged netCDF header: the file is too short");
  const std::string name(bytes_.substr(at_, length));
  at_ += Padded(length);
  return name;
}

// An empty list may have no tag.
std::uint32_t NetCdfClassic::ListLength(std::uint32_t tag) {
  const std::uint32_t found = Word();
  const std::uint32_t length = Word();
  if (found != tag && !(found == 0 && length == 0)) Fail("damaged netCDF header");
  return length;
}

void NetCdfClassic::ReadDimensions() {
  for (std::uint32_t i = ListLength(kDimensionTag); i > 0; --i) {
    std::string name = Name();
    const std::uint64_t length = Word();
    dimensions_.push_back({std::move(name), length});
  }
}

std::size_t NetCdfClassic::SizeOf(Type type) {
  switch (type) {
    case kByte:
    case kChar:
      return 1;
    case kShort:
      return 2;
    case kInt:
    case kFloat:
      return 4;
    case kDouble:
      return 8;
  }
  return 0;
}

NetCdfClassic::AttributeMap NetCdfClassic::ReadAttributes() {
  AttributeMap texts;
  for (std::uint32_t i = ListLength(kAttributeTag); i > 0; --i) {
    std::string name = Name();
    const auto type = static_cast<Type>(Word());
    const std::uint64_t length = std::uint64_t{Word()} * SizeOf(type);
    if (SizeOf(type) == 0) Fail("damaged netCDF header: an attribute of an unknown type");
    if (bytes_.size() - at_ < Padded(length)) Fail("damaged netCDF header: the file is too short");
    if (type == kChar) texts[std::move(name)] = PlainText(bytes_.substr(at_, length));
    at_ += Padded(length);
  }
  return texts;
}

void NetCdfClassic::Shape(Variable& variable) const {
  variable.perRecord = false;
  variable.rowValues = 1;
  for (std::size_t i = 0; i < variable.dimensions.size(); ++i) {
    if (variable.dimensions[i] >= dimensions_.size()) Fail("damaged netCDF header");
    const std::uint64_t length = dimensions_[variable.dimensions[i]].length;
    if (length == 0 && i == 0) {
      variable.perRecord = true;
    } else if ((variable.rowValues *= length) > kMaxValues) {
      Fail("damaged netCDF header: a variable of too many values");
    }
  }
}

void NetCdfClassic::ReadVariables() {
  const int offsetBytes = bytes_[3] == '\x02' ? 8 : 4;
  std::size_t perRecord = 0;
  std::uint64_t unpadded = 0;
  for (std::uint32_t i = ListLength(kVariableTag); i > 0; --i) {
    std::string name = Name();
    Variable variable{};
    for (std::uint32_t k = Word(); k > 0; --k) variable.dimensions.push_back(Word());
    variable.attributes = ReadAttributes();
    variable.type = static_cast<Type>(Word());
    if (SizeOf(variable.type) == 0) Fail("damaged netCDF header: a variable of an unknown type");
    Word();  // the stated size follows from the shape, and overflows for large variables
    variable.begin = Unsigned(offsetBytes);
    Shape(variable);
    if (variable.perRecord) {
      ++perRecord;
      unpadded = variable.rowValues * SizeOf(variable.type);
      recordBytes_ += Padded(unpadded);
    }
    variables_[std::move(name)] = std::move(variable);
  }
  // The records of a single variable are not padded.
  if (perRecord == 1) recordBytes_ = unpadded;
}

const NetCdfClassic::Variable* NetCdfClassic::Find(const std::string& variable) const {
  const auto found = variables_.find(variable);
  return found != variables_.end() ? &found->second : nullptr;
}

std::string NetCdfClassic::Values(const std::string& name, const Variable& variable) const {
  const std::uint64_t row = variable.rowValues * SizeOf(variable.type);
  const std::uint64_t rows = variable.perRecord ? records_ : 1;
  std::string all;
  std::uint64_t begin = variable.begin;
  for (std::uint64_t i = 0; i < rows && row > 0; ++i, begin += recordBytes_) {
    if (begin > bytes_.size() || bytes_.size() - begin < row) {
      Fail(name + ": the file is too short for its values");
    }
    all += bytes_.substr(begin, row);
  }
  return all;
}

std::string NetCdfClassic::Attribute(const std::string& attribute,
                                     const std::string& variable) const {
  const Variable* of = variable.empty() ? nullptr : Find(variable);
  if (!variable.empty() && of == nullptr) return {};
  const AttributeMap& texts = of != nullptr ? of->attributes : attributes_;
  const auto found = texts.find(attribute);
  return found != texts.end() ? found->second : std::string();
}

std::vector<double> NetCdfClassic::Numbers(const std::string& name) const {
  const Variable* variable = Find(name);
  if (variable == nullptr) return {};
  if (variable->type == kChar) Fail(name + ": is a text, not a list of numbers");
  const std::string all = Values(name, *variable);
  const std::size_t size = SizeOf(variable->type);
  std::vector<double> numbers;
  numbers.reserve(all.size() / size);
  for (std::size_t at = 0; at + size <= all.size(); at += size) {
    const std::uint64_t bits = BigEndian(std::string_view(all).substr(at, size));
    switch (variable->type) {
      case kShort:
        numbers.push_back(static_cast<std::int16_t>(bits));
        break;
      case kInt:
        numbers.push_back(static_cast<std::int32_t>(bits));
        break;
      case kFloat:
        numbers.push_back(
            static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
        break;
      case kDouble:
        numbers.push_back(std::bit_cast<double>(bits));
        break;
      case kByte:
      case kChar:
        numbers.push_back(static_cast<std::int8_t>(bits));
        break;
    }
  }
  return numbers;
}

std::vector<std::string> NetCdfClassic::Texts(const std::string& name) const {
  const Variable* variable = Find(name);
  if (variable == nullptr || variable->dimensions.empty()) return {};
  if (variable->type != kChar) Fail(name + ": is no list of texts");
  const std::string all = Values(name, *variable);
  // A single dimension holds one text.
  std::uint64_t width = dimensions_[variable->dimensions.back()].length;
  if (width == 0) width = all.size();
  std::vector<std::string> texts;
  for (std::size_t at = 0; width > 0 && at + width <= all.size(); at += width) {
    texts.push_back(PlainText(std::string_view(all).substr(at, width)));
  }
  return texts;
}

}  // namespace app
