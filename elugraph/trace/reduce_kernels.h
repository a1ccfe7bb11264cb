// The inner loops of the reduction, vectorised for the machine the process runs on.
//
// The results are exact and the same for every instruction set. Arrays are of the stated lengths
// and need no alignment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/gfx/types.h"

struct SampleRange {
  LONG min;
  LONG max;
};

// The loops for one instruction set.
struct ReduceKernels {
  const char* name;
  // `count` ≥ 1.
  SampleRange (*range)(const LONG* samples, std::size_t count);
  // No sum of fewer than 2^31 samples overflows.
  std::int64_t (*signedSum)(const LONG* samples, std::size_t count);
  // The samples taken as unsigned numbers.
  std::uint64_t (*unsignedSum)(const LONG* samples, std::size_t count);
  // The number of leading entries for which entry + bias, wrapped to 32 bits, is negative.
  std::size_t (*leadingNegatives)(const ULONG* entries, std::size_t count, ULONG bias);
  // The number of leading entries whose running sum stays below `limit` (1 … 2^31); `sum` gets the
  // sum of those.
  std::size_t (*leadingBelow)(const WORD* entries, std::size_t count, std::uint32_t limit,
                              std::uint32_t& sum);
};

// The sets that this machine runs, the fastest first; never empty.
std::span<const ReduceKernels> RunnableKernels();

// The fastest set.
const ReduceKernels& Kernels();
