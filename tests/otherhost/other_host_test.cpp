// The shared library bound to another host than the embedded one.
#include "tests/otherhost/other_host.h"

#include <gtest/gtest.h>

#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/thickness_pool.h"
#include "elugraph/trace/yval.h"
#include "platform/gfx/context.h"

namespace {

// Ten columns of 1 s over a saw of two samples per second.
struct Trace {
  Trace() {
    for (LONG i = 0; i < 20; ++i) samples.push_back(i % 4 * 10);
    channel.samples = samples.data();
    channel.sampleCount = static_cast<LONG>(samples.size());
    channel.samplePeriod = 0.5F;
    channel.unitsPerCount = 1.0F;
  }
  std::vector<LONG> samples;
  TChannel channel{};
};

TEST(OtherHost, DrawsATraceThroughTheSharedLibrary) {
  Trace trace;
  std::string journal;
  const HDC hdc = gfx::CreateJournalContext(journal);
  {
    PolyLinePool pool(1000, nullptr, hdc);
    YVAL yval(&trace.channel, 100, 1.0, false, 0.0, 0.0);
    GetTime time(&trace.channel, 0.0, 10.0, 10, 0.5, 1.0);
    EachPoint each(pool, yval, time, 0, 5, 100, nullptr, nullptr);
    each.Draw(0, 1, trace.samples.data(), 20, true, 0, nullptr);
  }
  DeleteDC(hdc);
  std::string points;
  for (int x = 5; x < 15; ++x) {
    const int low = x % 2 == 1 ? 100 : 80;
    for (const int y : {low, low - 10}) points += " " + std::to_string(x) + "," + std::to_string(y);
  }
  EXPECT_NE(journal.find(points), std::string::npos) << journal;
}

// The host's own services answer the library's calls.
TEST(OtherHost, ImpossibleStatesReachThisHost) {
  other_host::Calls().clear();
  GetTime time(nullptr, 0.0, 10.0, 10, 0.5, 1.0);
  FixedPoint64 step, phase;
  step.value = 0;
  time.tfrom2Idx(1000, step, phase);
  EXPECT_EQ(other_host::Calls(), std::vector<std::string>{"int3call"});
}

TEST(OtherHost, SharesTheLibrarysTables) {
  GetDefaultLineThickness()[3] = 40;
  EXPECT_EQ(GetDefaultLineThickness()[3], 40);
  EXPECT_EQ(GetDefaultLineThicknessAux()[3], 0);
  GetDefaultLineThickness()[3] = 0;
}

}  // namespace
