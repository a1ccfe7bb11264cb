// Every instruction set's loops against one entry after the other.
#include "elugraph/trace/reduce_kernels.h"
#include "tests/support/case_name.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

class KernelSet : public testing::TestWithParam<ReduceKernels> {};
INSTANTIATE_TEST_SUITE_P(Runnable, KernelSet, testing::ValuesIn(RunnableKernels()), CaseName());

// Lengths around those of vectors and blocks, at starts that no vector is aligned to.
template <typename Check>
void ForEachStretch(std::size_t most, Check check) {
  for (std::size_t n = 0; n <= most; n += n < 140 ? 1 : 37) {
    for (const std::size_t at : {0, 1, 5}) check(at, n);
  }
}

TEST_P(KernelSet, RangeAndSums) {
  std::mt19937 random(7);
  std::vector<LONG> data(1000);
  for (LONG& value : data) value = static_cast<LONG>(random());
  ForEachStretch(990, [&](std::size_t at, std::size_t n) {
    LONG min = data[at], max = data[at];
    std::int64_t sum = 0;
    std::uint64_t unsignedSum = 0;
    for (std::size_t i = at; i < at + n; ++i) {
      if (data[i] < min) min = data[i];
      if (data[i] > max) max = data[i];
      sum += data[i];
      unsignedSum += static_cast<ULONG>(data[i]);
    }
    if (n > 0) {
      const SampleRange range = GetParam().range(&data[at], n);
      EXPECT_EQ(range.min, min) << n;
      EXPECT_EQ(range.max, max) << n;
    }
    EXPECT_EQ(GetParam().signedSum(&data[at], n), sum) << n;
    EXPECT_EQ(GetParam().unsignedSum(&data[at], n), unsignedSum) << n;
  });
}

TEST_P(KernelSet, LeadingNegatives) {
  constexpr ULONG kBias = 0x90000000U;
  ForEachStretch(400, [&](std::size_t at, std::size_t n) {
    // One entry, or none, is not negative; the ends of the range lie before and behind it.
    for (const std::size_t stop : {std::size_t{0}, n / 3, n - n / 5, n}) {
      std::vector<ULONG> entries(at + n + 1, 0xFFFFFFFFU - kBias);
      for (std::size_t i = at; i < at + n; i += 2) entries[i] = 0x80000000U - kBias;
      entries[at + stop] = (n % 2 != 0 ? 0x7FFFFFFFU : 0) - kBias;
      EXPECT_EQ(GetParam().leadingNegatives(&entries[at], n, kBias), stop) << n;
    }
  });
}

TEST_P(KernelSet, LeadingBelow) {
  std::mt19937 random(11);
  for (const unsigned largest : {1U, 300U, 65535U}) {
    std::vector<WORD> entries(1000);
    for (WORD& entry : entries) entry = static_cast<WORD>(largest - random() % (largest / 4 + 1));
    ForEachStretch(600, [&](std::size_t at, std::size_t n) {
      std::uint32_t all = 0;
      for (std::size_t i = at; i < at + n; ++i) all += entries[i];
      // Reached by the last entry exactly, missed by one, reached within, and by the first.
      for (const std::uint32_t limit : {all, all + 1, all / 2, all - all / 7, 1U, 1U << 31}) {
        if (limit == 0) continue;
        std::size_t below = 0;
        std::uint32_t sum = 0, got = 4711;
        while (below < n && sum + entries[at + below] < limit) sum += entries[at + below++];
        EXPECT_EQ(GetParam().leadingBelow(&entries[at], n, limit, got), below) << n;
        EXPECT_EQ(got, sum) << n << " below " << limit;
      }
    });
  }
}

}  // namespace
