#include "app/quantification.h"

#include <algorithm>

#include "app/formats/text.h"

namespace app {

bool Quantification::HasWindow(const std::string& name) const {
  return std::any_of(windows.begin(), windows.end(),
                     [&name](const auto& window) { return IsSameComponent(window.name, name); });
}

bool IsSameComponent(const std::string& a, const std::string& b) { return Lower(a) == Lower(b); }

}  // namespace app
