// The paint cache and pictures.
#include "elugraph/host/controls.h"
#include "embedded/controls/host_module.h"
#include "tests/support/probe.h"

namespace {

// A window that paints its picture in a colour of its own and counts how often it is asked.
class CachedDialog : public TORVDlg, public LastPaint {
 public:
  explicit CachedDialog(unsigned form)
      : TORVDlg(nullptr, ResIdCheck(form, nullptr, RT_DIALOG), nullptr, ResId(0u, nullptr)) {}

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
    if (whilePainting) whilePainting();
  }
  bool ExistCursor() override { return cursor; }
  void DrawCursor(HDC hdc) override { Rectangle(hdc, 100, 100, 110, 110); }

  COLORREF color = RGB(10, 20, 30);
  bool cursor = false;
  std::vector<RECT> asked;
  RECT clip{};
  std::function<void()> whilePainting;
};

class Caches : public probe::Fixture {
 protected:
  CachedDialog* Open(unsigned form = embedded::kPathEditorDialog) {
    dialog = new CachedDialog(form);
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
  // The whole anew.
  dialog->Invalidate(nullptr);
  EXPECT_EQ(Shown(400, 200), RGB(10, 20, 30));  // the window was not told
  EXPECT_EQ(Repaint(), 1u);
  EXPECT_EQ(Shown(400, 200), RGB(200, 0, 0));
  dialog->EraseBMP();
  EXPECT_EQ(Repaint(), 1u);
  dialog->asked.clear();
  desk.Resize(window, 300, 200);
  ASSERT_EQ(dialog->asked.size(), 1u);
  EXPECT_EQ(dialog->asked[0].right * 1000 + dialog->asked[0].bottom, 300'200);
  desk.Resize(window, 0, 0);
  EXPECT_EQ(dialog->asked.size(), 1u);
}

TEST_F(Caches, OnlyInvalidPartsArePaintedAnew) {
  Open();
  dialog->color = RGB(200, 0, 0);
  const RECT a{10, 10, 20, 20}, b{30, 15, 40, 25};
  dialog->Invalidate(&a);
  dialog->Invalidate(&b);
  EXPECT_EQ(Repaint(), 1u);
  EXPECT_EQ(dialog->asked[0].right, 900);  // still told where the whole picture lies
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

TEST_F(Caches, TheCacheMayBeDroppedOrInvalidatedWhilePainting) {
  Open();
  int times = 0;
  dialog->whilePainting = [&] {
    if (++times % 2 != 0) return dialog->EraseBMP();
    dialog->Invalidate(nullptr);
  };
  dialog->Invalidate(nullptr);
  for (int i = 0; i < 4; ++i) EXPECT_GE(Repaint(), 1u);
  dialog->whilePainting = nullptr;
  dialog->color = RGB(1, 1, 1);
  EXPECT_EQ(Repaint(), 1u);
  EXPECT_EQ(Shown(5, 5), RGB(1, 1, 1));
}

TEST_F(Caches, TheStripOfTheMapStaysFree) {
  for (const int scale : {100, 200}) {
    ui::SetScale(scale);
    Open(embedded::kMapDialog);
    ASSERT_EQ(dialog->asked.size(), 1u);
    RECT button;
    GetWindowRect(GetDlgItem(window, 652), &button);
    POINT corner{button.right, button.bottom};
    ScreenToClient(window, &corner);
    EXPECT_GE(dialog->asked[0].top, corner.y);
    EXPECT_EQ(Shown(corner.x + 5, corner.y), GetSysColor(COLOR_3DFACE));
    EXPECT_EQ(Shown(5, dialog->asked[0].top), RGB(10, 20, 30));
    DestroyWindow(window);
  }
}

struct RowCase {
  const char* name;
  int width, height, bytesPerPixel;
  RECT part;
  int rows;  // 0: refused
};

class Rows : public Caches, public testing::WithParamInterface<RowCase> {};

// What is written through the rows appears upright where the picture is drawn.
TEST_P(Rows, StartAtTheTopOfTheScreen) {
  const RowCase& c = GetParam();
  Bitmap bitmap;
  ASSERT_TRUE(bitmap.Create(c.width, c.height, c.bytesPerPixel, 1));
  RandomAccess access;
  EXPECT_EQ(access.Set(&bitmap, c.part), c.rows > 0);
  ASSERT_EQ(access.rowCount, c.rows);
  const int left = std::max<int>(0, c.part.left), top = std::max<int>(0, c.part.top);
  for (int row = 0; row < c.rows; ++row) {
    access.rows[row][0] = 9;
    access.rows[row][1] = 8;
    access.rows[row][2] = static_cast<BYTE>(100 + row);
  }
  const HWND shown = Top("shown", 60, 50);
  desk.RunUntilIdle();
  const HDC hdc = GetDC(shown);
  SetDIBitsToDevice(hdc, 2, 3, static_cast<DWORD>(bitmap.Width()),
                    static_cast<DWORD>(bitmap.Height()), 0, 0, 0,
                    static_cast<UINT>(bitmap.Height()), bitmap.bits, bitmap.info, DIB_RGB_COLORS);
  ReleaseDC(shown, hdc);
  const gfx::Surface picture = ui::PictureOf(shown);
  for (int row = 0; row < c.rows; ++row) {
    EXPECT_EQ(picture.Pixel(2 + left, 3 + top + row), RGB(static_cast<BYTE>(100 + row), 8, 9));
  }
}

const RowCase kAllRows[] = {{"Whole", 5, 7, 3, {0, 0, 5, 7}, 7},
                            {"PaddedRows", 3, 4, 3, {0, 0, 3, 4}, 4},
                            {"FourBytes", 5, 3, 4, {1, 1, 5, 3}, 2},
                            {"Part", 8, 9, 3, {3, 4, 6, 8}, 4},
                            {"CutToThePicture", 8, 9, 3, {-5, -5, 99, 99}, 9},
                            {"Outside", 8, 9, 3, {8, 0, 20, 9}, 0}};
INSTANTIATE_TEST_SUITE_P(All, Rows, testing::ValuesIn(kAllRows), CaseName());

TEST_F(Caches, PicturesOfBadExtentsAreRefused) {
  Bitmap bitmap;
  for (const auto& [width, height, bytes] :
       {std::array{0, 5, 3}, {5, -1, 3}, {5, 5, 1}, {100000, 100000, 3}, {INT32_MAX, 1, 4}}) {
    EXPECT_FALSE(bitmap.Create(width, height, bytes, 1));
    EXPECT_EQ(bitmap.Width() + bitmap.Height(), 0);
  }
  RandomAccess access;
  EXPECT_FALSE(access.Set(&bitmap, {0, 0, 1, 1}) || access.Set(nullptr, {0, 0, 1, 1}));
}

}  // namespace
