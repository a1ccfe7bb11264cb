// Reading of texts in host records.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

// A copy of a text field that ends with a null even where the field is full to its last byte.
template <std::size_t kSize>
class FixedText {
 public:
  explicit FixedText(const char (&field)[kSize]) : characters_{} {
    std::copy_n(field, kSize, characters_.begin());
  }
  const char* c_str() const { return characters_.data(); }

 private:
  std::array<char, kSize + 1> characters_;
};

// The length of a text that may not be readable. The C library's functions count as unable to
// throw, so a fault in one of them could not be unwound; one here can.
inline std::size_t HostTextLength(const char* text) {
  const volatile char* end = text;
  while (*end != '\0') end = end + 1;
  return static_cast<std::size_t>(end - text);
}

// A copy of such a text; the empty text for null.
inline std::string HostText(const char* text) {
  return text != nullptr ? std::string(text, HostTextLength(text)) : std::string();
}
