#include "tests/gfx/gdi_fixture.h"

namespace {

std::uintptr_t AsValue(const void* handle) { return reinterpret_cast<std::uintptr_t>(handle); }

class Handles : public GdiTest {};

TEST_F(Handles, AStaleHandleStaysRefusedWhileItsPlaceIsReused) {
  HPEN stale = CreatePen(PS_SOLID, 1, 0);
  DeleteObject(stale);
  bool placeReused = false;
  for (int i = 0; i < 20'000; ++i) {
    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    placeReused |= (AsValue(pen) & 0xFFFF) == (AsValue(stale) & 0xFFFF);
    ASSERT_NE(pen, stale);
    ASSERT_EQ(GetObjectType(stale), 0u);
    DeleteObject(pen);
  }
  EXPECT_TRUE(placeReused);
}

TEST_F(Handles, AFullTableRefusesAndRecovers) {
  std::vector<HGDIOBJ> pens;
  while (HGDIOBJ pen = CreatePen(PS_SOLID, 1, 0)) {
    pens.push_back(pen);
    ASSERT_LE(pens.size(), 65536u);
    ASSERT_LE(AsValue(pen), 0xFFFFFFFFu);
    ASSERT_GE(AsValue(pen), 0x10000u) << "would pass for a colour index";
  }
  EXPECT_GT(pens.size(), 60'000u);
  EXPECT_EQ(CreateCompatibleDC(hdc), nullptr);
  DeleteObject(pens.back());
  pens.back() = CreateSolidBrush(0);
  EXPECT_EQ(GetObjectType(pens.back()), OBJ_BRUSH);
  for (HGDIOBJ pen : pens) EXPECT_TRUE(DeleteObject(pen));
}

TEST_F(Handles, GetObjectCopiesWhatFits) {
  LOGFONTA font{};
  for (char& character : font.lfFaceName) character = 'x';  // no terminator
  HFONT handle = CreateFontIndirectA(&font);
  LOGFONTA got{};
  EXPECT_EQ(GetObjectA(handle, 1000, &got), 60);
  EXPECT_EQ(std::string(got.lfFaceName).size(), 31u);
  DeleteObject(handle);
}

}  // namespace
