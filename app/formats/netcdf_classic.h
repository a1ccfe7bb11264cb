// netCDF files of the classic kinds CDF-1 and CDF-2 (format: the NetCDF User's Guide, "The NetCDF
// Classic Format"). An own reader, because files from outside may be damaged, and the usual library
// does not survive damaged headers.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace app {

// Borrows the bytes. The constructor checks the whole header; throws FileError ("NAME: cause").
class NetCdfClassic {
 public:
  static bool Is(std::string_view bytes) {
    return bytes.starts_with("CDF\x01") || bytes.starts_with("CDF\x02");
  }

  NetCdfClassic(const std::string& name, std::string_view bytes);

  // A text attribute of the file or (with a variable's name) of a variable, up to its first zero
  // byte and without blanks at the ends, as UTF-8; empty where there is none.
  std::string Attribute(const std::string& attribute, const std::string& variable = {}) const;
  // All texts of the file itself, by name.
  const std::map<std::string, std::string>& Attributes() const { return attributes_; }

  // The numbers of a variable, whatever its type; none where there is no such variable. Throws for
  // characters, and where the file is too short.
  std::vector<double> Numbers(const std::string& variable) const;
  // The rows of a variable of characters, each treated as an attribute's text; none where there is
  // no such variable. Throws as Numbers does.
  std::vector<std::string> Texts(const std::string& variable) const;

  [[noreturn]] void Fail(const std::string& cause) const;

 private:
  enum Type : std::uint32_t { kByte = 1, kChar = 2, kShort = 3, kInt = 4, kFloat = 5, kDouble = 6 };
  struct Dimension {
    std::string name;
    std::uint64_t length;  // 0: the number of records
  };
  using AttributeMap = std::map<std::string, std::string>;  // texts only
  struct Variable {
    std::vector<std::size_t> dimensions;
    AttributeMap attributes;
    Type type;
    std::uint64_t begin;
    bool perRecord;
    std::uint64_t rowValues;  // values of one record, or of all where there are no records
  };

  std::uint64_t Unsigned(int bytes);
  std::uint32_t Word() { return static_cast<std::uint32_t>(Unsigned(4)); }
  std::string Name();
  std::uint32_t ListLength(std::uint32_t tag);
  void ReadDimensions();
  AttributeMap ReadAttributes();
  void ReadVariables();
  void Shape(Variable& variable) const;
  const Variable* Find(const std::string& variable) const;
  // The bytes of all values in order.
  std::string Values(const std::string& name, const Variable& variable) const;
  static std::size_t SizeOf(Type type);

  const std::string& name_;
  std::string_view bytes_;
  std::size_t at_ = 4;
  std::uint64_t records_ = 0;
  std::uint64_t recordBytes_ = 0;
  std::vector<Dimension> dimensions_;
  AttributeMap attributes_;
  std::map<std::string, Variable> variables_;
};

}  // namespace app
