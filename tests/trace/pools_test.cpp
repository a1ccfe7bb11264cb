#include <gmock/gmock.h>

#include "elugraph/trace/poly_gon_fill_pool.h"
#include "tests/support/case_name.h"
#include "tests/trace/trace_journal.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Points = std::vector<POINT>;
using Effects = std::vector<std::string>;

std::string Held(const PolyLinePool& pool) {
  std::string held = pool.clipped ? "outside" : "inside";
  for (int i = 0; i < pool.count; ++i) {
    held += ' ' + std::to_string(pool.points[i].x) + ',' + std::to_string(pool.points[i].y);
  }
  return held;
}

struct PoolCase {
  const char* name;
  int capacity;
  Points fed;
  Effects drawn;  // before the final Draw
  std::string held;
};
void PrintTo(const PoolCase& c, std::ostream* to) { *to << c.name; }

constexpr RECT kBand = {0, 10, 5, 20};  // x is never clipped
constexpr LONG kFar = 2000000000;

template <typename Pool>
void ExpectRun(const PoolCase& c) {
  TraceJournal journal;
  Pool pool(c.capacity, &kBand, journal.hdc());
  for (const POINT p : c.fed) pool(p.x, p.y);
  EXPECT_EQ(journal.Take(), c.drawn);
  EXPECT_EQ(Held(pool), c.held);
  pool.Reset();
  EXPECT_EQ(Held(pool), "inside");
}

class LinePool : public testing::TestWithParam<PoolCase> {};
TEST_P(LinePool, DrawsAndHolds) { ExpectRun<PolyLinePool>(GetParam()); }
// clang-format off
INSTANTIATE_TEST_SUITE_P(Band, LinePool, testing::Values(
    PoolCase{"RepeatedPoint", 9, {{1, 12}, {1, 12}, {1, 13}, {1, 12}}, {}, "inside 1,12 1,13 1,12"},
    PoolCase{"EdgesAreInside", 9, {{0, 10}, {1, 20}}, {}, "inside 0,10 1,20"},
    PoolCase{"LeavesAbove", 9, {{0, 14}, {4, 6}, {5, -90}, {6, 0}}, {"polyline 2 0,14 2,10"}, "outside 6,0"},
    PoolCase{"LeavesBelow", 9, {{0, 18}, {8, 26}}, {"polyline 2 0,18 2,20"}, "outside 8,26"},
    PoolCase{"ComesBack", 9, {{0, 0}, {4, 20}, {5, 15}}, {}, "inside 2,10 4,20 5,15"},
    PoolCase{"ComesBackFromBelow", 9, {{0, 30}, {4, 10}}, {}, "inside 2,20 4,10"},
    PoolCase{"CrossesDown", 9, {{0, 0}, {30, 30}}, {"polyline 2 10,10 20,20"}, "outside 30,30"},
    PoolCase{"CrossesUpTopFirst", 9, {{0, 30}, {30, 0}}, {"polyline 2 20,10 10,20"}, "outside 30,0"},
    PoolCase{"FirstPointOutside", 9, {{3, 9}}, {}, "outside 3,9"},
    PoolCase{"DividesTowardZero", 9, {{10, 12}, {3, 7}}, {"polyline 2 10,12 8,10"}, "outside 3,7"},
    // The product −kFar × −2 is taken modulo 2^32: −294967296, divided by −3.
    PoolCase{"ProductWraps", 9, {{kFar, 12}, {0, 9}}, {"polyline 2 2000000000,12 2098322432,10"}, "outside 0,9"},
    PoolCase{"FullRunKeepsItsEnd", 3, {{0, 11}, {1, 12}, {2, 13}, {3, 14}}, {"polyline 3 0,11 1,12 2,13"}, "inside 2,13 3,14"},
    PoolCase{"ReturnFillsTheRun", 2, {{0, 0}, {4, 20}}, {"polyline 2 2,10 4,20"}, "inside 4,20"},
    PoolCase{"NegativeCapacity", -7, {{0, 11}, {1, 12}, {1, 0}, {2, 0}, {2, 12}},
             {"polyline 2 0,11 1,12", "polyline 2 1,12 1,10", "polyline 2 2,10 2,12"}, "inside 2,12"},
    PoolCase{"NoCapacity", 0, {{0, 0}, {9, 90}}, {"polyline 2 1,10 2,20"}, "outside 9,90"}),
    CaseName());
// clang-format on
class OutlinePool : public testing::TestWithParam<PoolCase> {};
TEST_P(OutlinePool, Holds) { ExpectRun<PolyGonPool>(GetParam()); }
// clang-format off
INSTANTIATE_TEST_SUITE_P(Band, OutlinePool, testing::Values(
    PoolCase{"RepeatedPoint", 9, {{1, 12}, {1, 12}, {2, 12}}, {}, "inside 1,12 2,12"},
    PoolCase{"OutAboveAndAcross", 9, {{0, 15}, {6, 3}, {31, 28}}, {}, "outside 0,15 3,9 12,9 24,21 31,28"},
    PoolCase{"AcrossUpTopFirst", 9, {{0, 15}, {12, 27}, {39, 0}}, {}, "outside 0,15 6,21 30,9 18,21 39,0"},
    PoolCase{"PendingFollows", 9, {{0, 15}, {6, 3}, {9, -5}, {12, 5}}, {}, "outside 0,15 3,9 12,5"},
    PoolCase{"ComesBack", 9, {{0, 15}, {6, 3}, {15, 12}}, {}, "inside 0,15 3,9 12,9 15,12"},
    PoolCase{"ComesBackFromBelow", 9, {{0, 15}, {12, 27}, {24, 15}}, {}, "inside 0,15 6,21 18,21 24,15"},
    // The line from an outside first point is prolonged back to the limit.
    PoolCase{"FirstPointOutside", 9, {{3, 5}, {4, 1}}, {}, "outside 3,5 2,9 4,1"},
    PoolCase{"FullIgnores", 4, {{0, 11}, {1, 12}, {2, 13}, {3, 14}, {4, 15}, {5, 16}}, {}, "inside 0,11 1,12 2,13 3,14"},
    PoolCase{"NoRoomForPending", 2, {{0, 15}, {6, 3}, {7, 15}}, {}, "outside 0,15 3,9"},
    PoolCase{"NoRoomAfterAcross", 4, {{0, 15}, {6, 3}, {31, 28}, {32, 15}}, {}, "outside 0,15 3,9 12,9 24,21"},
    PoolCase{"NoCapacity", 0, {{0, 15}, {6, 3}}, {}, "inside"}),
    CaseName());
// clang-format on
TEST(LinePool, RunsShareTheirEndPoints) {  // a gap would show as a broken trace
  TraceJournal journal;
  PolyLinePool pool(10, nullptr, journal.hdc());
  for (int x = 0; x < 25; ++x) pool(x, x % 2 * 1000000);
  EXPECT_TRUE(pool.Draw());
  const Effects runs = journal.Take();
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[1].substr(0, 25), "polyline 10 9,1000000 10,");
  EXPECT_EQ(runs[2].substr(0, 24), "polyline 7 18,0 19,10000");
}

TEST(LinePool, AThousandPointsAtMost) {
  TraceJournal journal;
  PolyLinePool line(5000, nullptr, journal.hdc());
  PolyGonPool outline(5000, nullptr, journal.hdc());
  for (int x = 0; x < 1500; ++x) {
    line.AddMoveTo(nullptr, x, 0, nullptr);
    outline.AddLineTo(nullptr, x, 0);
  }
  EXPECT_EQ(line.count, 501);
  EXPECT_EQ(outline.count, 1000);
}

TEST(LinePool, AnOverridingDrawMayEmptyThePool) {
  struct Emptying : PolyLinePool {
    using PolyLinePool::PolyLinePool;
    bool Draw() override {
      Reset();
      return false;
    }
  } pool(2, &kBand, nullptr);
  for (const POINT p : Points{{0, 15}, {1, 16}, {2, 0}}) pool(p.x, p.y);
  EXPECT_EQ(Held(pool), "inside 2,0");
}

TEST(OutlinePool, DrawKeepsAndFillEmpties) {
  TraceJournal journal;
  PolyGonFillPool pool(8, &kBand, journal.hdc());
  for (const POINT p : Points{{0, 15}, {6, 3}, {15, 12}}) pool(p.x, p.y);
  EXPECT_TRUE(pool.Draw());
  pool.Reset();
  EXPECT_THAT(journal.Take(), IsEmpty());
  EXPECT_TRUE(pool.PolyGonPool::Draw());
  EXPECT_TRUE(pool.Fill());
  EXPECT_THAT(journal.Take(),
              ElementsAre("polygon 4 0,15 3,9 12,9 15,12", "polygon 4 0,15 3,9 12,9 15,12"));
  EXPECT_EQ(Held(pool), "inside");
  EXPECT_FALSE(pool.Fill());
  EXPECT_THAT(journal.Take(), IsEmpty());
}

}  // namespace
