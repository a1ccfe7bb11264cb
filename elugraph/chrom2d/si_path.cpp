#include "elugraph/chrom2d/si_path.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

// Twice as many items still have a count and a size in bytes.
constexpr int kMaxItems = static_cast<int>(
    std::min<std::uint64_t>(std::numeric_limits<int>::max(), PTRDIFF_MAX / sizeof(SIPathItem)) / 2);

void* Reallocated(SIPathItem* items, int n) {
  return std::realloc(items, static_cast<std::size_t>(n) * sizeof(SIPathItem));
}

}  // namespace

bool SIPath::Resize(int n) {
  n = std::max(n, 0);
  if (n == 0) {
    // The host gives its arrays back with operator delete; here that is the runtime's free.
    std::free(items);
    items = nullptr;
    capacity = 0;
  } else if (n > capacity || items == nullptr) {
    void* const grown = n <= kMaxItems ? Reallocated(items, 2 * n) : nullptr;
    if (grown == nullptr) return false;
    items = static_cast<SIPathItem*>(grown);
    capacity = 2 * n;
  } else if (n < count) {
    if (void* const shrunk = Reallocated(items, n)) {
      items = static_cast<SIPathItem*>(shrunk);
      capacity = n;
    }
  }
  for (int i = std::max(count, 0); i < n; ++i) items[i] = SIPathItem{};
  count = n;
  return true;
}

SIPathItem* SIPath::Insert(int i) {
  const int before = count;
  const int last = std::max(before, i);
  if (i < 0 || last == std::numeric_limits<int>::max() || !Resize(last + 1)) return nullptr;
  if (i < before) std::copy_backward(items + i, items + before, items + before + 1);
  items[i] = SIPathItem{};
  return items + i;
}

void SIPath::Erase(int i) {
  if (Item(i) == nullptr) return;
  std::copy(items + i + 1, items + count, items + i);
  --count;
}

SIPathItem* SIPath::Item(int i) {
  return items != nullptr && i >= 0 && i < count ? items + i : nullptr;
}

const SIPathItem* SIPath::Item(int i) const {
  return items != nullptr && i >= 0 && i < count ? items + i : nullptr;
}

void SIPath::Swap(SIPath& other) { std::swap(*this, other); }
