#include "elugraph/chromview/text_join.h"

#include <cstdint>

#include "elugraph/chromview/guard.h"
#include "elugraph/chromview/host_text.h"
#include "elugraph/host/kernel.h"
#include "platform/kernel/kernel.h"

namespace {

// Readability is asked for the first page; what lies behind shows when the text is measured.
constexpr UINT_PTR kReadableProbe = 4096;

struct Measured {
  std::size_t length;
  int texts;
};

Measured CalcLen(const char* const* texts) {
  Measured sum{0, 0};
  const char* current = nullptr;
  const bool measured = Guarded([&] {
    for (; texts[sum.texts] != nullptr; ++sum.texts) {
      current = texts[sum.texts];
      if (IsBadStringPtrA(current, kReadableProbe)) return;
      sum.length += HostTextLength(current);
    }
  });
  if (!measured) {
    // The format has room for 32 bits: the low half of a longer address.
    exceptout("CalcLen( 0x%X, %d ) catched",
              static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(current)), sum.texts);
  }
  return sum;
}

}  // namespace

std::string JoinTexts(const char* const* texts) {
  const Measured sum = CalcLen(texts);
  std::string joined;
  joined.reserve(sum.length);
  for (int i = 0; i < sum.texts; ++i) joined += HostText(texts[i]);
  return joined;
}
