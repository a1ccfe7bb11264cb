// Print buffers.
#include <gtest/gtest.h>

#include <string>

#include "elugraph/host/kernel.h"

namespace {

// A buffer with more room than its draft read beyond the draft.
TEST(PrintBuffer, GrowsAndTakesItsOwnText) {
  PrintBuffer<2000> buffer;
  for (const std::size_t letters : {599U, 600U, 1999U, 2000U, 5000U, 3U}) {
    const std::string text(letters, 'x');
    EXPECT_EQ(sprintf(buffer, "%s", text.c_str()), static_cast<int>(letters));
    EXPECT_EQ(buffer.text, text);
    const bool inside = static_cast<const void*>(buffer.text) == &buffer.length + 1;
    EXPECT_EQ(inside, letters < 2000) << "in its own room";
  }
  for (int i = 0; i < 10; ++i) sprintf(buffer, "%s+%s", buffer.text, buffer.text);
  EXPECT_EQ(buffer.length, 3 * 1024 + 1023);
  EXPECT_EQ(std::string(buffer.text).substr(0, 8), "xxx+xxx+");
}

}  // namespace
