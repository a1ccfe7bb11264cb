// Tables of calibration standards.
#pragma once

#include <string>
#include <vector>

#include "embedded/calibration.h"

namespace app {

struct ComponentStandards {
  std::string name;
  std::vector<embedded::Standard> standards;
};

struct StandardsTable {
  std::vector<ComponentStandards>
      components;              // in the order of their first standards; at least one
  std::string responseHeader;  // of the column of responses
};

// Columns by name or number from 1. An empty one is the first with a usual name (amount,
// concentration, x; response, area, height, y; with a unit or without), else the first column of
// numbers that is nothing else.
struct StandardsColumns {
  std::string amount;
  std::string response;
  bool preferHeights = false;  // of the usual names of responses, height comes first
};

// Reads a table of standards. Columns "component" and "excluded" (yes or no) are used where they
// are there; without the first, all standards are those of the component that the file is named
// after. Standards without an amount or a response are left out. Throws FileError.
StandardsTable ReadStandards(const std::string& path, const StandardsColumns& columns);

}  // namespace app
