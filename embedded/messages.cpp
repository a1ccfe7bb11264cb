// Texts of the embedded host, in English.
#include "elugraph/host/engine.h"
#include "elugraph/host/kernel.h"

// Quantity types: 0 amount, 1 concentration, 2 mass, 3 volume.
const char* CompTypeTxt(int quantityType) {
  static constexpr const char* kTexts[] = {"Amount", "Concentration", "Mass", "Volume"};
  return kTexts[quantityType & 3];
}

const char* muiGetString(unsigned number) {
  switch (number) {
    case 324030:
      return "Response";
    case 1050000:
      return "%.2f %s";  // a time and its unit
    case 1050005:
      return "%s";  // a channel's name
    default:
      return "";
  }
}
