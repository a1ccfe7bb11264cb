// The fourteen loops, by table and against a plain reduction that looks at one sample at a time.
#include <algorithm>
#include <functional>
#include <limits>
#include <random>

#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/yval.h"
#include "tests/support/case_name.h"
#include "tests/trace/trace_journal.h"

namespace {

constexpr std::int64_t kOne = std::int64_t{1} << 32;

struct Input {
  std::vector<LONG> data = {};
  std::vector<ULONG> times = {};
  std::vector<WORD> deltas = {};
  std::int64_t phase = 0, step = kOne;
  FixedPoint64 period = FixedPoint64::OfValue(kOne);
  int index = 0, xStep = 1, xEnd = 1000;

  int Count() const { return static_cast<int>(data.size()); }
};

enum class Output { kRange, kRangeOfAll, kRangeBySign, kSignedMean, kUnsignedMean };
enum class Source { kFraction, kWhole, kTimes, kDeltas };

struct Loop {
  const char* name;
  Source source;
  bool counted;
  Output output;
  bool startsAtPhase;
  std::function<void(EachPoint&, const Input&)> run;
};
void PrintTo(const Loop& loop, std::ostream* to) { *to << loop.name; }

#define LOOP_ARGUMENTS in.index, in.data.data(), in.Count(), in.xEnd
// clang-format off
#define FRACTION_LOOP(name, counted, output)                             \
  Loop{#name, Source::kFraction, counted, Output::output, false,         \
       [](EachPoint& e, const Input& in) { e.name(LOOP_ARGUMENTS, in.phase, in.step, in.period); }}
#define WHOLE_LOOP(name, counted, output, phase)                         \
  Loop{#name, Source::kWhole, counted, Output::output, false,            \
       [](EachPoint& e, const Input& in) { e.name(LOOP_ARGUMENTS, phase, in.step, in.period.whole); }}
#define TABLE_LOOP(name, source, output, atPhase, table, ...)            \
  Loop{#name, Source::source, false, Output::output, atPhase,            \
       [](EachPoint& e, const Input& in) {                               \
         e.name(LOOP_ARGUMENTS, FixedPoint64::OfValue(in.phase), FixedPoint64::OfValue(in.step), \
                in.table.data() __VA_OPT__(, ) __VA_ARGS__); }}
// clang-format on

const Loop kLoops[] = {
    FRACTION_LOOP(DrawExact, false, kRange),
    WHOLE_LOOP(DrawMS, false, kRange, FixedPoint64::OfValue(in.phase)),
    WHOLE_LOOP(DrawMSAsm, false, kRangeBySign, FixedPoint64::OfValue(in.phase)),
    FRACTION_LOOP(DrawExactDiv, true, kRangeOfAll),
    TABLE_LOOP(DrawXYAbs, kTimes, kRange, false, times),
    TABLE_LOOP(DrawXYDelta, kDeltas, kRange, false, deltas),
    FRACTION_LOOP(DrawMiddleExact, true, kSignedMean),
    WHOLE_LOOP(DrawMiddleMSAsmSigned, true, kSignedMean, in.phase),
    FRACTION_LOOP(DrawMiddleExactAsmUnSigned, false, kUnsignedMean),
    FRACTION_LOOP(DrawMiddleExactDivAsmUnSigned, true, kUnsignedMean),
    TABLE_LOOP(DrawMiddleXYAbs, kTimes, kSignedMean, true, times, FixedPoint64{}),
    TABLE_LOOP(DrawMiddleXYDelta, kDeltas, kSignedMean, true, deltas, FixedPoint64{}),
    TABLE_LOOP(DrawMiddleXYAsmUnSignedAbs, kTimes, kUnsignedMean, false, times),
    TABLE_LOOP(DrawMiddleXYAsmUnSignedDelta, kDeltas, kUnsignedMean, false, deltas),
};

// x:first,min,max,last of each column, x:value of each point.
std::string Column(int x, LONG first, LONG min, LONG max, LONG last) {
  std::ostringstream text;
  text << x << ':' << first << ',' << min << ',' << max << ',' << last;
  return text.str();
}
std::string Point(int x, LONG value) { return std::to_string(x) + ':' + std::to_string(value); }

struct Reduced {
  std::vector<std::string> emitted;
  int lastIndex = -1;
  int x = 0;
  bool operator==(const Reduced&) const = default;
};
void PrintTo(const Reduced& r, std::ostream* to) {
  for (const std::string& text : r.emitted) *to << text << ' ';
  *to << "last=" << r.lastIndex << " x=" << r.x;
}

// The pool that the callbacks get as their first pointer, as a place to write to.
struct Sink : PolyLinePool {
  Sink() : PolyLinePool(0, nullptr, nullptr) {}
  std::vector<std::string> emitted;
};

Reduced RunLoop(const Loop& loop, const Input& in) {
  Sink sink;
  YVAL yval(nullptr, 0, 1, false, 0, 0);
  GetTime time(nullptr, 0, 1, 1, 1, 1);
  EachPoint each(
      sink, yval, time, -1, 0, in.xEnd,
      [](int x, LONG value, void* to, void*) {
        static_cast<Sink*>(to)->emitted.push_back(Point(x, value));
      },
      [](int x, LONG first, LONG min, LONG max, LONG last, void* to, void*) {
        static_cast<Sink*>(to)->emitted.push_back(Column(x, first, min, max, last));
      });
  each.xStep = in.xStep;
  loop.run(each, in);
  return {sink.emitted, each.lastIndex, each.x};
}

LONG Low32(std::int64_t value) { return static_cast<LONG>(static_cast<ULONG>(value)); }

std::string PlainColumn(Output output, int x, const std::vector<LONG>& column, bool ended) {
  std::int64_t sum = 0, unsignedSum = 0;
  LONG min = column[0], max = column[0];
  for (std::size_t i = 0; i < column.size(); ++i) {
    sum += column[i];
    unsignedSum += static_cast<ULONG>(column[i]);
    if (ended && i + 1 == column.size() && output != Output::kRangeOfAll) break;
    const bool bySign = output == Output::kRangeBySign;
    if (bySign ? Low32(std::int64_t{column[i]} - min) < 0 : column[i] < min) min = column[i];
    if (bySign ? Low32(std::int64_t{max} - column[i]) < 0 : column[i] > max) max = column[i];
  }
  const auto n = static_cast<std::int64_t>(column.size());
  if (output == Output::kSignedMean) return Point(x, Low32(sum / n));
  if (output == Output::kUnsignedMean) return Point(x, Low32(unsignedSum / n));
  return Column(x, column[0], min, max, column.back());
}

// For periods above 0 and accumulators that stay within 64 (whole: 32) bits.
Reduced PlainReduction(const Loop& loop, const Input& in) {
  Reduced out;
  const bool table = loop.source == Source::kTimes || loop.source == Source::kDeltas;
  const bool whole = loop.source != Source::kFraction;
  std::int64_t acc = loop.startsAtPhase ? in.phase : in.phase - in.step;
  const auto timeStep = [&](int i) -> std::int64_t {
    if (loop.source == Source::kTimes)
      return std::int64_t{Low32(in.times[i + 1] - in.times[i])} * kOne;
    if (loop.source == Source::kDeltas) return in.deltas[i + 1] * kOne;
    return whole ? in.period.whole * kOne : in.period.value;
  };
  int index = in.index;
  const int lastIndex = in.Count() - 1;
  const auto emit = [&](const std::string& text, int sample) {
    out.emitted.push_back(text);
    out.lastIndex = sample;
  };
  for (;;) {
    std::vector<LONG> column;
    bool ended = false;
    if (loop.counted) {
      // Whole loops divide the whole part alone.
      const std::int64_t divided = whole ? acc >> 32 : acc;
      const std::int64_t unit = whole ? in.period.whole : in.period.value;
      for (std::int64_t k = 1 - divided / unit; k > 0; --k, ++index) {
        if (index <= lastIndex) column.push_back(in.data[index]);
        acc += timeStep(0);
      }
      ended = index <= lastIndex + 1;
      index = std::min(index, lastIndex + 1);
    } else {
      while (!ended && index <= lastIndex) {
        column.push_back(in.data[index]);
        if (!table || index < lastIndex) {
          acc += timeStep(index);
          ended = acc >= 0;
        }
        ++index;
      }
    }
    if (!column.empty()) emit(PlainColumn(loop.output, out.x, column, ended), index - 1);
    if (index > lastIndex) return out;
    for (acc -= in.step; acc >= 0; acc -= in.step) out.x += in.xStep;
    out.x += in.xStep;
    if (out.x > in.xEnd) {
      emit(Point(out.x, in.data[index]), index);
      return out;
    }
  }
}

class Loops : public testing::TestWithParam<Loop> {};
INSTANTIATE_TEST_SUITE_P(All, Loops, testing::ValuesIn(kLoops), CaseName());

TEST_P(Loops, EqualThePlainReduction) {
  std::mt19937 random(4711);
  const auto upTo = [&](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n + 1));
  };
  for (int round = 0; round < 3000; ++round) {
    Input in;
    const bool small = round % 2 == 0, extremes = round % 3 == 0;
    const int count = 1 + upTo(small ? 40 : 700);
    const int maxDelta = std::vector<int>{1, 3, 40, 65535}[static_cast<std::size_t>(upTo(3))];
    ULONG time = random();
    for (int i = 0; i < count; ++i) {
      in.data.push_back(extremes ? static_cast<LONG>(random()) : upTo(2000) - 1000);
      in.deltas.push_back(static_cast<WORD>(upTo(maxDelta)));
      in.times.push_back(time += in.deltas.back());
    }
    if (round % 5 == 0) in.times[static_cast<std::size_t>(upTo(count - 1))] -= 50;  // not sorted
    const std::int64_t fraction = upTo(1) != 0 ? static_cast<std::int64_t>(random()) : 0;
    // Whole multiples put samples exactly on column ends.
    in.period.value = (1 + upTo(9)) * kOne + (upTo(1) != 0 ? fraction : 0);
    in.step = upTo(1) != 0 ? in.period.value * (1 + upTo(small ? 9 : 300))
                           : (1 + upTo(small ? 30 : 3000)) * kOne + fraction;
    in.phase = static_cast<std::int64_t>(random()) * (in.step >> 32) % in.step;
    if (round % 7 == 0) in.phase = -in.phase;
    if (round % 11 == 0)
      in.phase = in.step + upTo(3) * in.period.value;  // starts behind its column
    in.index = upTo(count - 1);
    in.xStep = 1 + upTo(2);
    in.xEnd = upTo(1) != 0 ? upTo(60) : 1000000000;
    ASSERT_EQ(RunLoop(GetParam(), in), PlainReduction(GetParam(), in)) << "round " << round;
  }
}

TEST_P(Loops, StayWithinTheDataWhateverTheArguments) {  // sanitizers and the time limit judge
  constexpr std::int64_t kMin64 = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t kMax64 = std::numeric_limits<std::int64_t>::max();
  const std::int64_t values[] = {kMin64, -kOne, -1, 0, 1, kOne, kMax64};
  Input in;
  in.data = {5, -2147483647 - 1, 2147483647, 5, 6};
  in.times = {0, 0x80000000u, 0, 0xFFFFFFFFu, 3};
  in.deltas = {1, 65535, 0, 65535, 65535};
  for (const int index : {-1, 0, 4, 5, 2147483647}) {
    for (const std::int64_t phase : values) {
      for (const std::int64_t step : values) {
        for (const std::int64_t period : values) {
          for (const int xStep : {-2147483647 - 1, 0, 1, 2147483647}) {
            in.index = index, in.phase = phase, in.step = step;
            in.period.value = period, in.xStep = xStep;
            const Reduced got = RunLoop(GetParam(), in);
            EXPECT_EQ(got.emitted.empty(), index < 0 || index > 4);
            EXPECT_LE(got.emitted.size(), 5u);
          }
        }
      }
    }
  }
}

TEST_P(Loops, LookAtManyEmptyColumnsOnce) {
  Input in;
  in.data = {1, 2, 3};
  in.times = {0, 1000000, 2000000};
  in.deltas = {0, 60000, 60000};
  in.step = 1;  // 2^-32 ms
  in.period = FixedPoint64::OfWhole(2000000000);
  in.xEnd = 2147483646;
  EXPECT_EQ(RunLoop(GetParam(), in).x, 2147483647);
}

const Loop& LoopNamed(const std::string& name) {
  return *std::find_if(std::begin(kLoops), std::end(kLoops) - 1,
                       [&](const Loop& loop) { return loop.name == name; });
}

struct EmissionCase {
  const char* loop;
  Input in;
  Reduced expected;
};
TEST(LoopTable, Columns) {
  const std::vector<LONG> samples = {5, 9, 2, 7, 7, 7, 1};
  const std::vector<ULONG> pairs = {100, 101, 103, 104, 106, 107};
  const LONG low = std::numeric_limits<LONG>::min();
  // clang-format off
  for (const EmissionCase& c : {
           EmissionCase{"DrawExact", {.data = samples, .step = 3 * kOne}, {{"0:5,5,9,2", "1:7,7,7,7", "2:1,1,1,1"}, 6, 2}},
           {"DrawExactDiv", {.data = samples, .step = 3 * kOne}, {{"0:5,2,9,7", "1:7,1,7,1"}, 6, 1}},
           {"DrawExactDiv", {.data = samples, .step = 5 * kOne / 2}, {{"0:5,2,9,2", "1:7,7,7,7", "2:1,1,1,1"}, 6, 2}},
           {"DrawMiddleMSAsmSigned", {.data = {-5, -6, -6, -1, 1}, .step = 2 * kOne}, {{"0:-5", "1:0"}, 4, 1}},
           {"DrawMiddleExactAsmUnSigned", {.data = {-2, -1, 3}, .step = 2 * kOne}, {{"0:-2", "1:3"}, 2, 1}},
           // Sample − minimum and maximum − sample wrap to the same sign: the later sample wins.
           {"DrawMSAsm", {.data = {0, low, 5, 0}, .step = 9 * kOne}, {{"0:0,0,0,0"}, 3, 0}},
           {"DrawMS", {.data = {0, low, 5, 0}, .step = 9 * kOne}, {{"0:0,-2147483648,5,0"}, 3, 0}},
           {"DrawMiddleXYAbs", {.data = {10, 20, 30, 40, 50, 60}, .times = pairs, .step = 3 * kOne},
            {{"0:10", "1:20", "2:35", "3:55"}, 5, 3}},
           {"DrawXYAbs", {.data = samples, .times = {0, 1, 2, 3, 4, 5, 6}, .step = 3 * kOne, .xEnd = 0},
            {{"0:5,5,9,2", "1:7"}, 3, 1}},
           {"DrawMS", {.data = {1, 2, 3}, .period = FixedPoint64::OfWhole(4), .xStep = 2},
            {{"0:1,1,1,1", "8:2,2,2,2", "16:3,3,3,3"}, 2, 16}},
           {"DrawExact", {.data = {1, 2, 3, 4}, .step = 2 * kOne, .period = {}}, {{"0:1,1,4,4"}, 3, 0}},
       }) {
    // clang-format on
    EXPECT_EQ(RunLoop(LoopNamed(c.loop), c.in), c.expected) << c.loop;
  }
}

TEST(LoopTable, MeanOfManySamples) {
  Input in{.data = std::vector<LONG>(70000, 2147483647), .step = 70000 * kOne};
  in.data[0] = -2147483647;
  for (const Loop& loop : kLoops) {
    if (loop.output != Output::kSignedMean || loop.startsAtPhase) continue;
    EXPECT_EQ(RunLoop(loop, in).emitted, std::vector<std::string>{"0:2147422290"}) << loop.name;
  }
}

}  // namespace
