// Layout of the records: what offsets alone do not show.
#include "elugraph/host/layout_check.h"

#include <gtest/gtest.h>

#include <cstring>

#include "elugraph/host/engine.h"
#include "elugraph/host/kernel.h"

namespace {

// Native pointers move the fields behind them by this much each.
constexpr std::size_t kWider = sizeof(void*) - 4;

template <typename T>
void ExpectPacked(std::size_t size32, std::size_t pointersInside) {
  EXPECT_EQ(sizeof(T), size32 + pointersInside * kWider);
  EXPECT_EQ(alignof(T), 1U);
}

TEST(Layout, RecordsArePackedAtEitherPointerSize) {
  ExpectPacked<PointerList<TChannel>>(12, 1);
  ExpectPacked<RecordList<PeakRecord>>(12, 1);
  ExpectPacked<TChannel>(0x91, 3);
  ExpectPacked<PeakRecord>(32, 0);
  ExpectPacked<component>(0x66, 1);
  ExpectPacked<CalibPool>(0x58d - 0x517, 2);
  ExpectPacked<chromatogram>(0x19ae, 3 + 2 + 1);
  ExpectPacked<THoldWindow>(0x103, 0);
  ExpectPacked<ThicknessPool>(10, 0);
}

// A field is as wide and as signed as the interface says: a record of 0xff bytes reads so.
TEST(Layout, WidthAndSignOfTheFields) {
  alignas(8) static BYTE bytes[sizeof(chromatogram)];
  std::memset(bytes, 0xff, sizeof bytes);
  const auto* run = reinterpret_cast<const chromatogram*>(bytes);
  EXPECT_EQ(+run->sampleCount, -1);
  EXPECT_EQ(+run->channelCount, 0xffff);
  EXPECT_EQ(+run->peakCount, 0xffff);
  EXPECT_EQ(+run->state, 0xff);
  EXPECT_EQ(+run->timeOffsetMs, -1);
  EXPECT_EQ(+run->runDurationMs, 0xffffffffU);
  EXPECT_EQ(+run->calibration.referenceComponent, 0xffff);
  EXPECT_EQ(+run->driftZeroIndex, -1);
  const auto* channel = reinterpret_cast<const TChannel*>(bytes);
  EXPECT_EQ(+channel->penStyle, -1);
  EXPECT_EQ(+channel->visible, -1);
  EXPECT_EQ(+channel->zero, -1);
  EXPECT_EQ(+reinterpret_cast<const PeakRecord*>(bytes)->component, 0xffff);
  EXPECT_EQ(+reinterpret_cast<const THoldWindow*>(bytes)->flags, 0xffff);
}

// Indices come from files and from other records.
TEST(Layout, ListsAnswerNothingOutside) {
  TChannel one{};
  TChannel* items[] = {&one};
  const PointerList<TChannel> list{items, 0, 1};
  EXPECT_EQ(list.At(0), &one);
  EXPECT_EQ(list.At(1), nullptr);
  EXPECT_EQ(list.At(-1), nullptr);
  EXPECT_EQ((PointerList<TChannel>{nullptr, 0, 1}).At(0), nullptr);
  component first{};
  component* components[] = {&first};
  CalibPool pool{};
  EXPECT_EQ(pool.ComponentAt(0), nullptr);
  pool.components = {components, 0, 1};
  EXPECT_EQ(pool.ComponentAt(7), &first);
}

TEST(Layout, RowPointersComeFirstInAMatrix) {
  TDoubleMatrix matrix(2, 3);
  void** rows;
  std::memcpy(&rows, static_cast<void*>(&matrix), sizeof rows);
  static_cast<double*>(rows[1])[2] = 4.5;
  EXPECT_EQ(matrix[1][2], 4.5);
  matrix.Zer();
  EXPECT_EQ(matrix[1][2], 0.0);
}

TEST(Layout, CharactersFollowAPrintBuffersHead) {
  const PrintBuffer<20> buffer("%d", 42);
  struct Head {
    char* text;
    int capacity;
    int length;
  };
  Head head;
  std::memcpy(&head, static_cast<const void*>(&buffer), sizeof head);
  EXPECT_EQ(head.capacity, 20);
  EXPECT_EQ(head.length, 2);
  EXPECT_EQ(static_cast<const void*>(head.text),
            reinterpret_cast<const char*>(&buffer) + sizeof head);
  EXPECT_STREQ(head.text, "42");
}

// The fourth and the eighth operation, called through the table as a compiled reader does.
class Statistics final : public CurveStatistics {
 public:
  void Host1() override {}
  void Host2() override {}
  void Host3() override {}
  short Available() override { return 7; }
  void Host5() override {}
  void Host6() override {}
  void Host7() override {}
  void BandHalfWidth(double level, double x, double weight, double& half) override {
    half = level + x + weight;
  }
};

TEST(Layout, SlotsOfTheCurveStatistics) {
  Statistics statistics;
  CurveStatistics* object = &statistics;
  void** table;
  std::memcpy(&table, static_cast<void*>(object), sizeof table);
  short (*available)(CurveStatistics*);
  void (*band)(CurveStatistics*, double, double, double, double&);
  std::memcpy(&available, &table[3], sizeof available);
  std::memcpy(&band, &table[7], sizeof band);
  EXPECT_EQ(available(object), 7);
  double half = 0.0;
  band(object, 1.0, 20.0, 300.0, half);
  EXPECT_EQ(half, 321.0);
}

}  // namespace
