// Line thicknesses by colour slot. A leaf header: host records embed the table.
#pragma once

#include "elugraph/host/export.h"
#include "platform/gfx/types.h"

#pragma pack(push, 1)

// Ten thicknesses in percent of the main font's height, all 0 at construction. Slots 0 to 7 belong
// to the channels (channel number modulo 8), slot 8 of a main table to the axis lines; slot 9 is
// the host's. A pen is thickness × font height / 100 device units wide (integers, truncating); 0
// gives the thinnest pen, one pixel.
class ThicknessPool {
 public:
  static constexpr int kSlots = 10;

  constexpr ThicknessPool() : slots_{} {}
  // `slot` is 0 … 9; anything else gives slot 9.
  BYTE& operator[](int slot) { return slots_[InRange(slot)]; }
  BYTE operator[](int slot) const { return slots_[InRange(slot)]; }

 private:
  static constexpr int InRange(int slot) { return slot >= 0 && slot < kSlots ? slot : kSlots - 1; }
  BYTE slots_[kSlots];
};

#pragma pack(pop)

static_assert(sizeof(ThicknessPool) == 10);

// The two process-wide default tables, zeroed at load, for the host to fill and read. The library
// itself reads the tables of the host's display settings instead.
ELUGRAPH_API ThicknessPool& GetDefaultLineThickness();
ELUGRAPH_API ThicknessPool& GetDefaultLineThicknessAux();
// Zeroes both; a step of the library's load.
void BuildDefaultLineThickness();
