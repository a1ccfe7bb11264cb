// Integration paths: the record that the host hands to the path editor.
#pragma once

#include "platform/gfx/types.h"

#pragma pack(push, 1)
// One segment of a run: it ends at endTime and integrates a band of channels.
struct SIPathItem {
  std::int16_t lowChannel;  // indices in the chromatogram, both included
  std::int16_t highChannel;
  double endTime;  // seconds; kOpenEnd for the last segment
};
#pragma pack(pop)
static_assert(sizeof(SIPathItem) == 12);

// Ends the last segment: the largest double.
inline constexpr double kOpenEnd = 1.7976931348623157e+308;

// Segments in ascending endTime; each begins where the one before ends. A plain record: `items` is
// memory of the C runtime (realloc, free), shared with the host, and nobody's but the record's
// holder's; see SIPathHolder for one that releases it.
struct SIPath {
  SIPathItem* items = nullptr;
  int capacity = 0;  // room in items
  int count = 0;

  // Below 0 counts as 0, which releases the array. New items are all zero. Growing beyond the room
  // makes room for 2 × n; false, and nothing changed, where there is no memory. Shrinking makes the
  // room exactly n where that succeeds.
  bool Resize(int n);
  // Item i, zeroed, with the items from i on moved up by one; where i is above the count the items
  // up to it are zero too. Null, and nothing changed, for i < 0 or without memory.
  SIPathItem* Insert(int i);
  // Other indices than 0 … count − 1 change nothing.
  void Erase(int i);
  // Null for other indices than 0 … count − 1.
  SIPathItem* Item(int i);
  const SIPathItem* Item(int i) const;
  void Swap(SIPath& other);
};

// A path that releases its items.
class SIPathHolder : public SIPath {
 public:
  SIPathHolder() = default;
  SIPathHolder(const SIPathHolder&) = delete;
  SIPathHolder& operator=(const SIPathHolder&) = delete;
  ~SIPathHolder() { Resize(0); }
};
