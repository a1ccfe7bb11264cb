// Path records: what the gestures do not reach, and the room that the host sees.
#include "elugraph/chrom2d/si_path.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(SiPath, RoomDoublesWhenGrowingAndFitsWhenShrinking) {
  struct {
    int resize, capacity;
  } const steps[] = {{3, 6}, {6, 6}, {7, 14}, {3, 3}, {4, 8}, {-5, 0}, {4, 8}};
  SIPathHolder path;
  for (const auto& step : steps) {
    ASSERT_TRUE(path.Resize(step.resize));
    EXPECT_EQ(path.capacity, step.capacity) << "at " << step.resize;
    EXPECT_EQ(path.items == nullptr, step.capacity == 0);
  }
}

TEST(SiPath, WhatCannotBeDoneChangesNothing) {
  SIPathHolder path;
  path.Insert(0)->lowChannel = 5;
  for (const int n : {INT_MAX, INT_MAX / 2 + 1}) EXPECT_FALSE(path.Resize(n)) << n;
  for (const int i : {INT_MAX, INT_MAX - 1, -1}) EXPECT_EQ(path.Insert(i), nullptr) << i;
  for (const int i : {INT_MAX, 1, -1}) {
    EXPECT_EQ(path.Item(i), nullptr) << i;
    path.Erase(i);
  }
  EXPECT_EQ(path.capacity, 2);
  ASSERT_EQ(path.count, 1);
  EXPECT_EQ(path.items[0].lowChannel, 5);
}

}  // namespace
