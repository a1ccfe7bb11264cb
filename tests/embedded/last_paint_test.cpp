// The paint cache and pictures.
#include "elugraph/host/controls.h"
#include "embedded/controls/host_module.h"
#include "tests/support/probe.h"

namespace {

// A window that paints its picture in a colour of its own and counts how often it is asked.
class CachedDialog : public TORVDlg, public LastPaint {
 public:
  CachedDialog()
      : TORVDlg(nullptr, ResIdCheck(embedded::kPathEditorDialog, nullptr, RT_DIALOG), nullptr,
                ResId(0u, nullptr)) {}

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    LRESULT result = 0;
    if (MsgFilter(result, hwnd, message, wParam, lParam)) return result;
    return message == WM_ERASEBKGND ? 1 : TORVDlg::WindowProc(message, wParam, lParam);
  }
  void PaintImage(HWND window, HDC hdc, RECT rect) override {
    EXPECT_EQ(window, hwnd);
    asked.push_back(rect);
    GetClipBox(hdc, &clip);
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(hdc, &rect, brush);
    DeleteObject(brush);
  }
  bool ExistCursor() override { return cursor; }
  void DrawCursor(HDC hdc) override { Rectangle(hdc, 100, 100, 110, 110); }

  COLORREF color = RGB(10, 20, 30);
  bool cursor = false;
  std::vector<RECT> asked;
  RECT clip{};
};

class Caches : public probe::Fixture {
 protected:
  CachedDialog* Open() {
    dialog = new CachedDialog;
    window = dialog->Create(-1);
    PostExecute(window, nullptr, nullptr, false);
    desk.RunUntilIdle();
    return dialog;
  }
  // Repaints the window and tells how often the picture was asked for.
  std::size_t Repaint() {
    dialog->asked.clear();
    InvalidateRect(window, nullptr, FALSE);
    desk.RunUntilIdle();
    return dialog->asked.size();
  }
  COLORREF Shown(int x, int y) { return desk.Picture(window).Pixel(x, y); }

  CachedDialog* dialog = nullptr;
  HWND window = nullptr;
};

TEST_F(Caches, APictureIsPaintedOncePerExtentAndThenCopied) {
  Open();
  EXPECT_EQ(dialog->asked.size(), 1u);
  EXPECT_EQ(dialog->asked[0].right, 900);
  dialog->color = RGB(200, 0, 0);
  EXPECT_EQ(Repaint(), 0u);
  EXPECT_EQ(Shown(400, 200), RGB(10, 20, 30));
  dialog->Invalidate(nullptr);
  EXPECT_EQ(Repaint(), 1u);
  EXPECT_EQ(Shown(400, 200), RGB(200, 0, 0));
  dialog->asked.clear();
  desk.Resize(window, 300, 200);
  ASSERT_EQ(dialog->asked.size(), 1u);
  EXPECT_EQ(dialog->asked[0].right * 1000 + dialog->asked[0].bottom, 300'200);
}

TEST_F(Caches, OnlyInvalidPartsArePaintedAnew) {
  Open();
  dialog->color = RGB(200, 0, 0);
  const RECT a{10, 10, 20, 20}, b{30, 15, 40, 25};
  dialog->Invalidate(&a);
  dialog->Invalidate(&b);
  EXPECT_EQ(Repaint(), 1u);
  EXPECT_EQ(dialog->clip.left + dialog->clip.bottom, 10 + 25);
  EXPECT_EQ(Shown(25, 12), RGB(200, 0, 0));
  EXPECT_EQ(Shown(9, 12), RGB(10, 20, 30));
  EXPECT_EQ(Repaint(), 0u);
}

TEST_F(Caches, TheCursorLiesOverTheCopyOnly) {
  Open();
  dialog->cursor = true;
  EXPECT_EQ(Repaint(), 0u);
  EXPECT_EQ(Shown(100, 100), RGB(0, 0, 0));
  dialog->cursor = false;
  EXPECT_EQ(Repaint(), 0u);
  EXPECT_EQ(Shown(100, 100), RGB(10, 20, 30));
}

TEST_F(Caches, PicturesOfBadExtentsAreRefused) {
  Bitmap bitmap;
  for (const auto& [width, height, bytes] :
       {std::array{0, 5, 3}, {5, -1, 3}, {5, 5, 1}, {100000, 100000, 3}, {INT32_MAX, 1, 4}}) {
    EXPECT_FALSE(bitmap.Create(width, height, bytes, 1));
    EXPECT_EQ(bitmap.Width() + bitmap.Height(), 0);
  }
  RandomAccess access;
  EXPECT_FALSE(access.Set(&bitmap, {0, 0, 1, 1}));
  ASSERT_TRUE(bitmap.Create(8, 9, 3, 1));
  EXPECT_FALSE(access.Set(&bitmap, {8, 0, 20, 9}));
  EXPECT_TRUE(access.Set(&bitmap, {-5, -5, 99, 99}));
  EXPECT_EQ(access.rowCount, 9);
}

}  // namespace
