// A host of its own for the shared library: plain records without owner, references or files. Every
// operation that the library may call writes a line into a list, so that tests see who called.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "elugraph/host/engine.h"
#include "elugraph/host/kernel.h"

namespace other_host {

// What the library called, in order.
std::vector<std::string>& Calls();
// Settings in memory: "section/key" to value.
std::map<std::string, std::string>& Settings();

}  // namespace other_host
