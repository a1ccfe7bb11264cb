// A host of its own for the shared library: plain records without owner, references or files. Every
// operation that the library may call writes a line into a list, so that tests see who called.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "elugraph/host/engine.h"
#include "elugraph/host/kernel.h"

namespace other_host {

// What the library called, in order, with the argument where there is one.
std::vector<std::string>& Calls();
void Called(const std::string& what);
// What the host answers.
struct Answers {
  bool rawData = true;
  bool developer = false;
  short currentChannel = 0;
  int splitIndex = 1000;
  double unitsPerSecond = 1.0;
  bool unitsFail = false;
  bool bitmaps = true;                                  // false: no memory for them
  std::function<void(const std::string&)> onCall = {};  // sees each call; may throw or fault
};
Answers& Answer();

}  // namespace other_host
