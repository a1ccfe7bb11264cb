#include "elugraph/trace/gdi_object_holders.h"

#include <memory>

#include "tests/trace/trace_journal.h"

namespace {

struct Holders : testing::Test {
  HPEN NewPen() const { return CreatePen(PS_SOLID, 1, RGB(1, 2, 3)); }
  HGDIOBJ Current(UINT type) const { return GetCurrentObject(journal.hdc(), type); }

  TraceJournal journal;
  const HGDIOBJ stockPen = Current(OBJ_PEN);
  const HGDIOBJ stockBrush = Current(OBJ_BRUSH);
};

TEST_F(Holders, SelectorPutsThePreviousObjectBack) {
  const HPEN pen = NewPen();
  {
    GdiObjectSelector selector(journal.hdc(), pen);
    GdiObjectSelector none(journal.hdc(), nullptr);
    GdiObjectSelector withoutContext(nullptr, NewPen());
    EXPECT_EQ(Current(OBJ_PEN), pen);
  }
  EXPECT_EQ(Current(OBJ_PEN), stockPen);
  EXPECT_EQ(GetObjectType(pen), 0u);
  const HGDIOBJ white = GetStockObject(WHITE_PEN);
  {
    GdiObjectSelector selector(journal.hdc(), NewPen());
    SelectObject(journal.hdc(), white);
  }
  EXPECT_EQ(Current(OBJ_PEN), white) << "a later selection stays";
}

TEST_F(Holders, SlotTakesTheFirstReplacement) {
  const HPEN first = NewPen();
  const HPEN second = NewPen();
  {
    GdiObjectSlot slot(journal.hdc(), OBJ_PEN);
    slot.Set(nullptr);
    EXPECT_EQ(Current(OBJ_PEN), stockPen);
    slot.Set(first);
    slot.Set(second);
    EXPECT_EQ(Current(OBJ_PEN), first);
    EXPECT_EQ(GetObjectType(second), 0u);
  }
  EXPECT_EQ(Current(OBJ_PEN), stockPen);
  EXPECT_EQ(GetObjectType(first), 0u);
}

TEST_F(Holders, SlotOwnsButNeverSelectsAnotherType) {
  const HBRUSH brush = CreateSolidBrush(RGB(9, 9, 9));
  {
    GdiObjectSlot slot(journal.hdc(), OBJ_PEN);
    slot.Set(brush);
    GdiObjectSlot withoutContext(nullptr, OBJ_PEN);
    withoutContext.Set(NewPen());
    EXPECT_EQ(Current(OBJ_BRUSH), stockBrush);
    EXPECT_EQ(Current(OBJ_PEN), stockPen);
  }
  EXPECT_EQ(GetObjectType(brush), 0u);
}

}  // namespace
