#include "tests/gfx/gdi_fixture.h"

namespace {

class Clipping : public GdiTest {
 protected:
  // The clip as the next effect carries it.
  std::string Clip() {
    journal.clear();
    LineTo(hdc, 0, 0);
    const std::size_t start = journal.find("clip=") + 5;
    return journal.substr(start, journal.size() - 1 - start);
  }
  Numbers Box() {
    RECT box{1, 1, 1, 1};
    GetClipBox(hdc, &box);
    return Of(box);
  }
};

TEST_F(Clipping, IntersectsInDevicePixels) {
  EXPECT_EQ(Box(), (Numbers{0, 0, 32767, 32767}));
  SetViewportOrgEx(hdc, 100, 200, nullptr);
  EXPECT_EQ(IntersectClipRect(hdc, 30, 40, 10, 20), SIMPLEREGION);  // any order of edges
  EXPECT_EQ(Clip(), "110,220,130,240");
  EXPECT_EQ(Box(), (Numbers{10, 20, 30, 40}));
  SetViewportOrgEx(hdc, 0, 0, nullptr);
  EXPECT_EQ(Clip(), "110,220,130,240") << "does not move with the origin";
  SetMapMode(hdc, MM_TWIPS);
  EXPECT_EQ(Box(), (Numbers{1650, -3300, 1950, -3600}));
  SetMapMode(hdc, MM_TEXT);
  EXPECT_EQ(IntersectClipRect(hdc, 120, kMin, kMax, kMax), SIMPLEREGION);
  EXPECT_EQ(Clip(), "120,220,130,240");
  EXPECT_EQ(IntersectClipRect(hdc, 0, 0, 120, 500), NULLREGION);  // touching is nothing
  EXPECT_EQ(Clip(), "0,0,0,0");
  EXPECT_EQ(IntersectClipRect(hdc, -50, -50, 50, 50), NULLREGION) << "empty stays empty";
  EXPECT_EQ(SelectClipRgn(hdc, nullptr), SIMPLEREGION);
  EXPECT_EQ(Clip(), "none");
}

}  // namespace
