#include "elugraph/plots/text_sinks.h"

#include <algorithm>
#include <cstring>

namespace plots {

bool TextMeasureSink::Put(const char* text) {
  if (text == nullptr) return true;
  SIZE extent{};
  if (!GetTextExtentPoint32A(hdc_, text, static_cast<int>(std::strlen(text)), &extent)) {
    return false;
  }
  width = std::max<int>(width, extent.cx);
  height = std::max<int>(height, extent.cy);
  return true;
}

bool TextOutSink::Put(const char* text) {
  if (text == nullptr) return true;
  return TextOutA(hdc_, x_, y_, text, static_cast<int>(std::strlen(text))) != 0;
}

bool TextCollector::Put(const char* text) { return text != nullptr && text_.Append(text); }

}  // namespace plots
