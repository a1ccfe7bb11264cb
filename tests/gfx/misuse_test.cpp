// Random calls with random handles and coordinates. What is checked: no call faults (the sanitizer
// builds run this too), a stale handle is never taken, and nothing is left behind.
#include <algorithm>
#include <random>
#include <set>
#include <vector>

#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

class Misuse : public testing::TestWithParam<unsigned> {
 protected:
  Misuse() : random_(GetParam()), surface_(64, 48) {
    handles_ = {GetStockObject(BLACK_PEN), GetSysColorBrush(COLOR_WINDOW), nullptr,
                reinterpret_cast<HGDIOBJ>(~UINT_PTR{0}), reinterpret_cast<HGDIOBJ>(UINT_PTR{7})};
    contexts_ = {gfx::CreateJournalContext(journal_),
                 gfx::CreateRasterContext(surface_, gfx::BuiltinText()),
                 CreateDCA("DISPLAY", nullptr, nullptr, nullptr)};
    for (HDC context : contexts_) Keep(context);
  }

  std::uint32_t Any(std::uint32_t below) { return static_cast<std::uint32_t>(random_() % below); }
  // Mostly around the picture, sometimes at the ends of the range.
  int Number() {
    constexpr int kEnds[] = {-2147483647 - 1, -2147483647, 2147483647, 2147483646, 0, 1, -1};
    if (Any(6) == 0) return kEnds[Any(7)];
    if (Any(6) == 0) return static_cast<int>(random_());
    return static_cast<int>(Any(120)) - 30;
  }
  int Small() { return static_cast<int>(Any(40)); }
  HGDIOBJ Handle() { return handles_[Any(static_cast<std::uint32_t>(handles_.size()))]; }
  // Mostly live ones, so that calls get past the first check.
  HDC Context() { return Any(8) == 0 ? static_cast<HDC>(Handle()) : contexts_[Any(3)]; }
  void Keep(HGDIOBJ made) {
    if (made == nullptr) return;
    ASSERT_EQ(dead_.count(made), 0u) << "a dead handle came back";
    handles_.push_back(made);
    made_.push_back(made);
  }
  void Delete(HGDIOBJ object) {
    const UINT type = GetObjectType(object);
    ASSERT_TRUE(type == 0 || dead_.count(object) == 0) << "a dead handle answers";
    const bool context = type == OBJ_DC || type == OBJ_MEMDC;
    EXPECT_EQ(context ? DeleteDC(static_cast<HDC>(object)) : DeleteObject(object), type != 0);
    if (type != 0 && GetObjectType(object) == 0) dead_.insert(object);
  }
  bool IsTarget(HGDIOBJ object) {
    return std::find(contexts_.begin(), contexts_.end(), object) != contexts_.end();
  }

  // Brings the picture back into view, so that most calls draw something.
  void Tidy(HDC hdc) {
    SelectClipRgn(hdc, nullptr);
    SetViewportOrgEx(hdc, 0, 0, nullptr);
    SetMapMode(hdc, MM_TEXT);
  }
  void Make();
  void ChangeState(HDC hdc);
  void Draw(HDC hdc);
  void Images(HDC hdc);

  std::mt19937 random_;
  std::string journal_;
  gfx::Surface surface_;
  std::vector<HGDIOBJ> handles_;  // what calls are made with, dead ones among them
  std::vector<HGDIOBJ> made_;
  std::vector<HDC> contexts_;
  std::set<HGDIOBJ> dead_;
};

void Misuse::Make() {
  LOGFONTA font{};
  font.lfHeight = Small() - 20;
  font.lfWidth = Any(3) == 0 ? Small() : 0;
  font.lfEscapement = Any(2) == 0 ? 900 : Number();
  switch (Any(9)) {
    case 0:
      Keep(CreatePen(Number() % 9, Number(), static_cast<COLORREF>(Number())));
      break;
    case 1:
      Keep(CreateSolidBrush(static_cast<COLORREF>(Number())));
      break;
    case 2:
      Keep(CreateFontIndirectA(&font));
      break;
    case 3:
      Keep(CreateCompatibleBitmap(Context(), Small() - 2, Small() - 2));
      break;
    case 4:
      Keep(CreateRectRgn(Number(), Number(), Number(), Number()));
      break;
    case 5:
      Keep(CreateCompatibleDC(Context()));
      break;
    default: {
      HGDIOBJ object = Handle();
      if (!IsTarget(object)) Delete(object);
    }
  }
}

void Misuse::ChangeState(HDC hdc) {
  POINT points[2] = {{Number(), Number()}, {Number(), Number()}};
  RECT box;
  BYTE buffer[64];
  switch (Any(16)) {
    case 0:
      SaveDC(hdc);
      break;
    case 1:
      RestoreDC(hdc, Any(2) == 0 ? -1 : Number());
      break;
    case 2:
      SetMapMode(hdc, Any(2) == 0 ? MM_TEXT : MM_TWIPS);
      break;
    case 3:
      SetViewportOrgEx(hdc, Number(), Number(), points);
      break;
    case 4:
      LPtoDP(hdc, points, 2);
      break;
    case 5:
      DPtoLP(hdc, points, 2);
      break;
    case 6:
      SetBkMode(hdc, Number());
      break;
    case 7:
      SetTextAlign(hdc, Any(64));
      break;
    case 8:
      IntersectClipRect(hdc, Number(), Number(), Number(), Number());
      break;
    case 9:
      SelectClipRgn(hdc, Any(3) == 0 ? static_cast<HRGN>(Handle()) : nullptr);
      break;
    case 10:
      GetClipBox(hdc, &box);
      break;
    case 11:
      GetObjectA(Handle(), static_cast<int>(Any(65)), buffer);
      break;
    default:
      SelectObject(hdc, Handle());
      break;
  }
}

void Misuse::Draw(HDC hdc) {
  POINT points[12];
  for (POINT& point : points) point = {Number(), Number()};
  const RECT box{Number(), Number(), Number(), Number()};
  const int count = static_cast<int>(Any(14)) - 1;
  SIZE size;
  TEXTMETRICA metrics;
  switch (Any(9)) {
    case 0:
      MoveToEx(hdc, Number(), Number(), points);
      break;
    case 1:
      LineTo(hdc, Number(), Number());
      break;
    case 2:
      Polyline(hdc, points, std::min(count, 12));
      break;
    case 3:
      Polygon(hdc, points, std::min(count, 12));
      break;
    case 4:
      Rectangle(hdc, box.left, box.top, box.right, box.bottom);
      break;
    case 5:
      Ellipse(hdc, box.left, box.top, box.right, box.bottom);
      break;
    case 6:
      FillRect(hdc, &box, static_cast<HBRUSH>(Handle()));
      break;
    case 7:
      TextOutA(hdc, Number(), Number(), "Ab\xC3\xA9\xFF", Small() % 7 - 1);
      break;
    default:
      GetTextExtentPoint32A(hdc, "1.5 mV", Small() % 7, &size);
      GetTextMetricsA(hdc, &metrics);
  }
}

void Misuse::Images(HDC hdc) {
  // `bits` has exactly the rows that are promised, so a read outside of them is caught.
  const LONG width = 1 + Small();
  const LONG rows = 1 + Small();
  const WORD depth = Any(2) == 0 ? 24 : 32;
  BITMAPINFO info = DibInfo(width, Any(2) == 0 ? rows : -rows, depth);
  const auto stride = static_cast<std::size_t>((width * depth / 8 + 3) / 4 * 4);
  const UINT first = Any(static_cast<std::uint32_t>(rows));
  const UINT given = Any(static_cast<std::uint32_t>(rows) - first) + 1;
  std::vector<BYTE> part(stride * given, 0x5A);
  std::vector<BYTE> bits(stride * static_cast<std::size_t>(rows), 0xA5);
  switch (Any(4)) {
    case 0:
      SetDIBitsToDevice(hdc, Number(), Number(), static_cast<DWORD>(Number()),
                        static_cast<DWORD>(Number()), Number(), Number(), first, given, part.data(),
                        &info, DIB_RGB_COLORS);
      break;
    case 1:
      StretchDIBits(hdc, Number(), Number(), Number(), Number(), Number(), Number(), Number(),
                    Number(), bits.data(), &info, DIB_RGB_COLORS, SRCCOPY);
      break;
    case 2:
      BitBlt(hdc, Number(), Number(), Number(), Number(), Context(), Number(), Number(), SRCCOPY);
      break;
    default:
      GetDIBits(hdc, static_cast<HBITMAP>(Handle()), first, given, part.data(), &info,
                DIB_RGB_COLORS);
  }
}

TEST_P(Misuse, NeitherFaultsNorLeaks) {
  const std::size_t before = gfx::LiveObjects() - contexts_.size();
  std::set<std::uint64_t> pictures;
  for (int i = 0; i < 20'000; ++i) {
    HDC hdc = Context();
    if (i % 10 == 0) Tidy(contexts_[1]);
    switch (Any(4)) {
      case 0:
        Make();
        break;
      case 1:
        ChangeState(hdc);
        break;
      case 2:
        Draw(hdc);
        break;
      default:
        Images(hdc);
        break;
    }
    if (handles_.size() > 200) handles_.erase(handles_.begin() + 5, handles_.begin() + 30);
    ASSERT_FALSE(HasFatalFailure());
    if (i % 100 == 0) pictures.insert(surface_.Hash());
  }
  EXPECT_GT(pictures.size(), 100u) << "hardly anything is drawn";
  EXPECT_FALSE(journal_.empty());
  EXPECT_GT(dead_.size(), 1000u);
  for (HGDIOBJ object : made_) Delete(object);
  EXPECT_EQ(gfx::LiveObjects(), before);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Misuse, testing::Values(1u, 2u, 3u));

}  // namespace
