// Holds the floating-point unit's rounding at truncation.
#pragma once

#include <cfenv>

// Rounding is toward zero from construction to destruction; then the setting found is back. What is
// computed under it must stand in a function of its own that is not inlined: the compiler knows
// nothing of the setting and may move arithmetic past this object.
class TruncationScope {
 public:
  TruncationScope() : previous_(std::fegetround()) { std::fesetround(FE_TOWARDZERO); }
  TruncationScope(const TruncationScope&) = delete;
  TruncationScope& operator=(const TruncationScope&) = delete;
  ~TruncationScope() { std::fesetround(previous_); }

 private:
  int previous_;
};
