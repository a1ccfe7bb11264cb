// The reduction loops against a plain read of the same memory.
//
// Each iteration times a read (the 64-bit sum of the samples, and of the table where there is one,
// in one vectorised pass with the best instruction set of the machine) and then the loop, so that
// both see the same disturbances. of_read is the median read's time over the median loop's: 1 means
// as fast as reading the memory. Times are the thread's CPU time, so that other work on the machine
// counts less. The column time is chosen for 1600 columns; points go to a pool on
// a context that draws nothing.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <random>

#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/reduce_kernels.h"
#include "elugraph/trace/yval.h"
#include "platform/gfx/context.h"

namespace {

constexpr int kColumns = 1600;
constexpr std::int64_t kOne = std::int64_t{1} << 32;

struct Channel {
  std::vector<LONG> samples;
  std::vector<ULONG> times;
  std::vector<WORD> deltas;
  std::int64_t step;    // of samples a millisecond apart
  FixedPoint64 period;  // with a fraction, 1 to 2 ms
  int Count() const { return static_cast<int>(samples.size()); }
  std::int64_t FractionStep() const { return Count() / kColumns * period.value; }
};

// A noisy baseline with a slow drift.
Channel MakeChannel(std::int64_t count) {
  Channel channel;
  std::minstd_rand random(99);
  channel.samples.resize(static_cast<std::size_t>(count));
  for (LONG i = 0; i < channel.Count(); ++i) {
    channel.samples[static_cast<std::size_t>(i)] = i / 256 + static_cast<LONG>(random() % 65536);
  }
  channel.step = count / kColumns * kOne;
  channel.period.value = kOne + kOne / 3;
  return channel;
}

using Loop = void (*)(EachPoint&, const Channel&);
enum class Table { kNone, kTimes, kDeltas };

std::int64_t Read(const Channel& channel) {
  std::int64_t sum = Kernels().signedSum(channel.samples.data(), channel.samples.size());
  const auto asSamples = [](const auto& table) {
    return reinterpret_cast<const LONG*>(table.data());
  };
  sum += Kernels().signedSum(asSamples(channel.times), channel.times.size());
  return sum + Kernels().signedSum(asSamples(channel.deltas), channel.deltas.size() / 2);
}

// One sample after the other: what the loops are to be compared with.
void DrawExactBySample(EachPoint& to, const Channel& channel) {
  std::int64_t acc = -channel.step;
  for (int index = 0; index < channel.Count(); ++index) {
    const LONG first = channel.samples[static_cast<std::size_t>(index)];
    LONG min = first, max = first, last = first;
    for (;; ++index) {
      last = channel.samples[static_cast<std::size_t>(index)];
      acc += kOne;
      if (acc >= 0) break;
      min = std::min(min, last);
      max = std::max(max, last);
      if (index + 1 == channel.Count()) break;
    }
    to.XStep(index, first, min, max, last);
    for (acc -= channel.step; acc >= 0; acc -= channel.step) ++to.x;
    ++to.x;
  }
}

double CpuSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double Median(std::vector<double>& seconds) {
  std::nth_element(seconds.begin(),
                   seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2),
                   seconds.end());
  return seconds[seconds.size() / 2];
}

void BM_Reduce(benchmark::State& state, Loop loop, Table table) {
  Channel channel = MakeChannel(state.range(0));
  if (table == Table::kTimes) {
    for (int i = 0; i < channel.Count(); ++i) channel.times.push_back(static_cast<ULONG>(i));
  } else if (table == Table::kDeltas) {
    channel.deltas.assign(channel.samples.size(), 1);
  }
  const HDC hdc = gfx::CreateNullContext();
  auto pool = std::make_unique<PolyLinePool>(4 * kColumns + 16, nullptr, hdc);
  TChannel record = {};
  record.unitsPerCount = 1;
  YVAL yval(&record, 1000, 500, true, 0, 1e-3);
  GetTime time(nullptr, 0, 1, kColumns, 1, 1);
  std::vector<double> reads, loops;
  for (auto _ : state) {
    const auto start = CpuSeconds();
    benchmark::DoNotOptimize(Read(channel));
    const auto between = CpuSeconds();
    EachPoint each(*pool, yval, time, 0, 0, 2 * kColumns, nullptr, nullptr);
    loop(each, channel);
    pool->Draw();
    pool->Reset();
    benchmark::DoNotOptimize(each.x);
    const auto end = CpuSeconds();
    reads.push_back(between - start);
    loops.push_back(end - between);
    state.SetIterationTime(loops.back());
  }
  const double read = Median(reads), reduce = Median(loops);
  const double bytes = static_cast<double>(channel.samples.size() * sizeof(LONG) +
                                           channel.times.size() * sizeof(ULONG) +
                                           channel.deltas.size() * sizeof(WORD));
  state.SetItemsProcessed(state.iterations() * channel.Count());
  state.counters["of_read"] = read / reduce;
  state.counters["read_GB/s"] = bytes / read / 1e9;
  pool.reset();
  DeleteDC(hdc);
}

#define FRACTION_LOOP(name)                                                        \
  +[](EachPoint& e, const Channel& c) {                                            \
    e.name(0, c.samples.data(), c.Count(), e.xEnd, 0, c.FractionStep(), c.period); \
  }
#define WHOLE_LOOP(name, phase)                                       \
  +[](EachPoint& e, const Channel& c) {                               \
    e.name(0, c.samples.data(), c.Count(), e.xEnd, phase, c.step, 1); \
  }
#define TABLE_LOOP(name, table)                                                       \
  +[](EachPoint& e, const Channel& c) {                                               \
    e.name(0, c.samples.data(), c.Count(), e.xEnd, {}, FixedPoint64::OfValue(c.step), \
           c.table.data());                                                           \
  }

// Long runs take fewer iterations; all of one loop's take about the same time.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgName("samples")->UseManualTime()->Unit(benchmark::kMicrosecond);
}
void Small(benchmark::internal::Benchmark* b) {
  Sizes(b);
  b->Arg(1'000'000)->Iterations(500);
}
void Large(benchmark::internal::Benchmark* b) {
  Sizes(b);
  b->Arg(10'000'000)->Iterations(60);
}
void Huge(benchmark::internal::Benchmark* b) {
  Sizes(b);
  b->Arg(100'000'000)->Iterations(21);
}

#define REDUCE(name, loop, table)                                       \
  BENCHMARK_CAPTURE(BM_Reduce, name, loop, Table::table)->Apply(Small); \
  BENCHMARK_CAPTURE(BM_Reduce, name, loop, Table::table)->Apply(Large); \
  BENCHMARK_CAPTURE(BM_Reduce, name, loop, Table::table)->Apply(Huge)

REDUCE(BySampleBaseline, DrawExactBySample, kNone);
REDUCE(DrawMS, WHOLE_LOOP(DrawMS, {}), kNone);
REDUCE(DrawMSAsm, WHOLE_LOOP(DrawMSAsm, {}), kNone);
REDUCE(DrawMiddleMSAsmSigned, WHOLE_LOOP(DrawMiddleMSAsmSigned, 0), kNone);
REDUCE(DrawExact, FRACTION_LOOP(DrawExact), kNone);
REDUCE(DrawExactDiv, FRACTION_LOOP(DrawExactDiv), kNone);
REDUCE(DrawMiddleExact, FRACTION_LOOP(DrawMiddleExact), kNone);
REDUCE(DrawMiddleExactAsmUnSigned, FRACTION_LOOP(DrawMiddleExactAsmUnSigned), kNone);
REDUCE(DrawXYAbs, TABLE_LOOP(DrawXYAbs, times), kTimes);
REDUCE(DrawMiddleXYAsmUnSignedAbs, TABLE_LOOP(DrawMiddleXYAsmUnSignedAbs, times), kTimes);
REDUCE(DrawXYDelta, TABLE_LOOP(DrawXYDelta, deltas), kDeltas);
REDUCE(DrawMiddleXYAsmUnSignedDelta, TABLE_LOOP(DrawMiddleXYAsmUnSignedDelta, deltas), kDeltas);

}  // namespace
