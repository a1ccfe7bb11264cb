#include "elugraph/trace/reduce_kernels.h"

namespace {

// Entries that are looked at together before deciding whether the column goes on.
constexpr std::size_t kBlock = 64;

// The bodies are plain loops, compiled once per instruction set below.
#define ELUGRAPH_BODY [[gnu::always_inline]] inline

ELUGRAPH_BODY SampleRange RangeBody(const LONG* samples, std::size_t count) {
  LONG min = samples[0];
  LONG max = samples[0];
  for (std::size_t i = 0; i < count; ++i) {
    const LONG sample = samples[i];
    min = sample < min ? sample : min;
    max = sample > max ? sample : max;
  }
  return {min, max};
}

ELUGRAPH_BODY std::int64_t SignedSumBody(const LONG* samples, std::size_t count) {
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < count; ++i) sum += samples[i];
  return sum;
}

ELUGRAPH_BODY std::uint64_t UnsignedSumBody(const LONG* samples, std::size_t count) {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < count; ++i) sum += static_cast<ULONG>(samples[i]);
  return sum;
}

ELUGRAPH_BODY std::size_t LeadingNegativesBody(const ULONG* entries, std::size_t count,
                                               ULONG bias) {
  std::size_t i = 0;
  for (; i + kBlock <= count; i += kBlock) {
    ULONG signs = 0x80000000U;
    for (std::size_t k = 0; k < kBlock; ++k) signs &= entries[i + k] + bias;
    if (signs == 0) break;
  }
  while (i < count && (entries[i] + bias) >> 31 != 0) ++i;
  return i;
}

ELUGRAPH_BODY std::size_t LeadingBelowBody(const WORD* entries, std::size_t count,
                                           std::uint32_t limit, std::uint32_t& sum) {
  sum = 0;
  std::size_t i = 0;
  for (; i + kBlock <= count; i += kBlock) {
    std::uint32_t block = 0;
    for (std::size_t k = 0; k < kBlock; ++k) block += entries[i + k];
    if (block >= limit - sum) break;
    sum += block;
  }
  for (; i < count && entries[i] < limit - sum; ++i) sum += entries[i];
  return i;
}

#define ELUGRAPH_KERNELS(set, attributes)                                                         \
  struct set {                                                                                    \
    attributes static SampleRange Range(const LONG* s, std::size_t n) { return RangeBody(s, n); } \
    attributes static std::int64_t SignedSum(const LONG* s, std::size_t n) {                      \
      return SignedSumBody(s, n);                                                                 \
    }                                                                                             \
    attributes static std::uint64_t UnsignedSum(const LONG* s, std::size_t n) {                   \
      return UnsignedSumBody(s, n);                                                               \
    }                                                                                             \
    attributes static std::size_t LeadingNegatives(const ULONG* e, std::size_t n, ULONG bias) {   \
      return LeadingNegativesBody(e, n, bias);                                                    \
    }                                                                                             \
    attributes static std::size_t LeadingBelow(const WORD* e, std::size_t n, std::uint32_t limit, \
                                               std::uint32_t& sum) {                              \
      return LeadingBelowBody(e, n, limit, sum);                                                  \
    }                                                                                             \
    static constexpr ReduceKernels Named(const char* name) {                                      \
      return {name, Range, SignedSum, UnsignedSum, LeadingNegatives, LeadingBelow};               \
    }                                                                                             \
  }

ELUGRAPH_KERNELS(PlainSet, );

#if defined(__x86_64__) || defined(__i386__)
ELUGRAPH_KERNELS(Avx2Set, [[gnu::target("avx2")]]);
ELUGRAPH_KERNELS(Avx512Set, [[gnu::target("avx512f,avx512bw,avx512vl")]]);

// A machine that runs one of these sets runs those behind it.
constexpr ReduceKernels kSets[] = {Avx512Set::Named("avx512"), Avx2Set::Named("avx2"),
                                   PlainSet::Named("plain")};

std::size_t FirstRunnable() {
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
      __builtin_cpu_supports("avx512vl")) {
    return 0;
  }
  return __builtin_cpu_supports("avx2") ? 1 : 2;
}
#else
constexpr ReduceKernels kSets[] = {PlainSet::Named("plain")};

std::size_t FirstRunnable() { return 0; }
#endif

}  // namespace

std::span<const ReduceKernels> RunnableKernels() {
  static const std::size_t first = FirstRunnable();
  return std::span(kSets).subspan(first);
}

const ReduceKernels& Kernels() {
  static const ReduceKernels& fastest = RunnableKernels().front();
  return fastest;
}
