// Resources in modules, cursors and metrics.
#include "tests/support/probe.h"

namespace {

using ui::ImageFromRows;

const std::vector<std::string_view> kSmall = {"#o", "9 "};
const std::vector<std::string_view> kLarge = {"####", "#oo", "#..#", "####"};

TEST(Resources, AreFoundByNameOrNumberInTheirModuleOnly) {
  const HMODULE module = ui::RegisterModule("resources test"), other = ui::RegisterModule("other");
  EXPECT_EQ(ui::RegisterModule("resources test"), module);
  ASSERT_TRUE(ui::AddString(module, 324030, "Relative response"));
  ASSERT_TRUE(ui::AddCursor(module, "Split", {ImageFromRows(kSmall, {1, 1})}));
  ASSERT_TRUE(ui::AddIcon(module, MAKEINTRESOURCEA(7), {ImageFromRows(kLarge, {0, 0})}));
  ASSERT_TRUE(ui::AddDialog(module, MAKEINTRESOURCEA(14114), {}));
  struct Case {
    const char* name;
    const char* type;
    bool found;
  };
  for (const Case& c :
       {Case{"SPLIT", RT_CURSOR, true}, Case{"split", RT_GROUP_CURSOR, true},
        Case{"split", RT_ICON, false}, Case{"#7", RT_GROUP_ICON, true},
        Case{MAKEINTRESOURCEA(8), RT_ICON, false}, Case{MAKEINTRESOURCEA(14114), RT_DIALOG, true},
        Case{"#14114", "#5", true}, Case{nullptr, RT_DIALOG, false}, Case{"", "", false}}) {
    EXPECT_EQ(FindResourceA(module, c.name, c.type) != nullptr, c.found);
    EXPECT_EQ(FindResourceA(other, c.name, c.type), nullptr);
    EXPECT_EQ(FindResourceA(nullptr, c.name, c.type), nullptr);
  }
  char text[9];
  EXPECT_EQ(LoadStringA(module, 324030, text, sizeof text), 8);
  EXPECT_STREQ(text, "Relative");
  EXPECT_EQ(LoadStringA(module, 324031, text, sizeof text), 0);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(LoadCursorA(module, "sPLIT"), LoadCursorA(module, "Split"));
  EXPECT_NE(LoadCursorA(module, "Split"), nullptr);
  EXPECT_NE(LoadIconA(module, MAKEINTRESOURCEA(7)), nullptr);
  EXPECT_EQ(LoadCursorA(nullptr, "Split"), nullptr);
  EXPECT_EQ(LoadCursorA(nullptr, MAKEINTRESOURCEA(1)), nullptr);
}

TEST(Cursors, OfferTheSizeThatFitsAndKeepTheirHotSpot) {
  const HCURSOR cursor =
      ui::CreateCursor({ImageFromRows(kLarge, {3, 2}), ImageFromRows(kSmall, {9, -1})});
  struct Case {
    int extent, width;
    POINT hotSpot;
  };
  for (const Case& c : {Case{1, 2, {1, 0}}, Case{2, 2, {1, 0}}, Case{3, 2, {1, 0}},
                        Case{4, 4, {3, 2}}, Case{7, 4, {3, 2}}, Case{8, 8, {7, 5}}}) {
    const ui::Image image = ui::ImageOf(cursor, c.extent);
    EXPECT_EQ(image.width, c.width) << c.extent;
    EXPECT_EQ(image.hotSpot.x, c.hotSpot.x) << c.extent;
    EXPECT_EQ(image.hotSpot.y, c.hotSpot.y) << c.extent;
  }
  const ui::Image large = ui::ImageOf(cursor, 8);
  EXPECT_EQ(large.argb[2 * 8 + 3], 0xFFFFFFFFu);  // the 'o' at (1, 1) of the large one
  EXPECT_EQ(ui::ImageOf(nullptr, 32).width, 0);
}

}  // namespace
