// How a text of columns may be written.
#pragma once

#include <array>
#include <cstddef>

#include "app/formats/text.h"

namespace app {

struct Dialect {
  Separator separator;
  char decimalMark;
};

// In the order of preference where they explain a text equally well.
inline constexpr std::array kDialects = {
    Dialect{Separator::kTab, '.'},       Dialect{Separator::kTab, ','},
    Dialect{Separator::kSemicolon, '.'}, Dialect{Separator::kSemicolon, ','},
    Dialect{Separator::kComma, '.'},     Dialect{Separator::kComma, ','},
    Dialect{Separator::kBlanks, '.'},    Dialect{Separator::kBlanks, ','},
};

// Rows above the data that may name its columns.
inline constexpr std::size_t kMaxHeaderRows = 3;

}  // namespace app
