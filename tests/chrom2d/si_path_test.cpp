// Path records: contents against a plain list, and the room they keep.
#include "elugraph/chrom2d/si_path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

namespace {

bool Same(const SIPathItem& a, const SIPathItem& b) {
  return a.lowChannel == b.lowChannel && a.highChannel == b.highChannel && a.endTime == b.endTime;
}

TEST(SiPath, HoldsWhatAListWouldHold) {
  std::mt19937 random(1);
  const auto pick = [&](int first, int last) {
    return std::uniform_int_distribution<int>(first, last)(random);
  };
  SIPathHolder path;
  SIPathHolder other;
  std::vector<SIPathItem> list, otherList;
  for (int step = 0; step < 20'000; ++step) {
    const int count = static_cast<int>(list.size());
    const int i = pick(-2, count + 3);
    const SIPathItem item{static_cast<std::int16_t>(pick(-9, 9)), 7, 0.5 * step};
    switch (pick(0, 5)) {
      case 0:
        ASSERT_TRUE(path.Resize(i));
        list.resize(static_cast<std::size_t>(std::max(i, 0)));
        break;
      case 1:
      case 2: {
        SIPathItem* const made = path.Insert(i);
        ASSERT_EQ(made, path.Item(i));
        ASSERT_EQ(made != nullptr, i >= 0);
        if (made == nullptr) break;
        ASSERT_TRUE(Same(*made, SIPathItem{}));
        *made = item;
        list.resize(static_cast<std::size_t>(std::max(i, count)));
        list.insert(list.begin() + i, item);
        break;
      }
      case 3:
        path.Erase(i);
        if (i >= 0 && i < count) list.erase(list.begin() + i);
        break;
      case 4:
        if (SIPathItem* const found = path.Item(i)) {
          *found = item;
          list.at(static_cast<std::size_t>(i)) = item;
        }
        break;
      default:
        path.Swap(other);
        list.swap(otherList);
    }
    ASSERT_EQ(path.count, static_cast<int>(list.size()));
    ASSERT_LE(path.count, path.capacity);
    ASSERT_TRUE(std::equal(list.begin(), list.end(), path.items, Same)) << step;
  }
}

TEST(SiPath, RoomDoublesWhenGrowingAndFitsWhenShrinking) {
  struct {
    int resize, capacity;
  } const steps[] = {{3, 6}, {6, 6}, {7, 14}, {14, 14}, {9, 9}, {9, 9}, {10, 20}, {1, 1}, {-5, 0}};
  SIPathHolder path;
  for (const auto& step : steps) {
    ASSERT_TRUE(path.Resize(step.resize));
    EXPECT_EQ(path.capacity, step.capacity) << "at " << step.resize;
    EXPECT_EQ(path.items == nullptr, step.capacity == 0);
  }
  path.Resize(4);
  path.Insert(1);  // within the room
  path.Erase(0);   // keeps it
  EXPECT_EQ(path.capacity, 8);
  EXPECT_EQ(path.count, 4);
}

TEST(SiPath, WhatCannotBeAllocatedChangesNothing) {
  SIPathHolder path;
  path.Insert(0)->endTime = 5;
  const SIPathItem* const items = path.items;
  for (const int n : {INT_MAX, INT_MAX / 2 + 1}) EXPECT_FALSE(path.Resize(n)) << n;
  EXPECT_EQ(path.Insert(INT_MAX), nullptr);
  EXPECT_EQ(path.Insert(INT_MAX - 1), nullptr);
  EXPECT_EQ(path.Insert(INT_MIN), nullptr);
  path.Erase(INT_MAX);
  path.Erase(INT_MIN);
  EXPECT_EQ(path.items, items);
  EXPECT_EQ(path.capacity, 2);
  EXPECT_EQ(path.count, 1);
  // + copies the packed field; the check takes a reference.
  EXPECT_EQ(+path.Item(0)->endTime, 5);
}

}  // namespace
