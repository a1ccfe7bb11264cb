// Random calls with random handles and coordinates. What is checked: no call faults (the sanitizer
// builds run this too), a dead handle never answers, and nothing is left behind.
#include <functional>
#include <random>
#include <set>

#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

class Misuse : public testing::TestWithParam<unsigned> {
 protected:
  using Call = std::function<void(HDC)>;

  Misuse() : random_(GetParam()), surface_(64, 48) {
    handles_ = {GetStockObject(BLACK_PEN), GetSysColorBrush(COLOR_WINDOW), nullptr,
                reinterpret_cast<HGDIOBJ>(~UINT_PTR{0}), reinterpret_cast<HGDIOBJ>(UINT_PTR{7})};
    targets_ = {gfx::CreateJournalContext(journal_),
                gfx::CreateRasterContext(surface_, gfx::BuiltinText()),
                CreateDCA("DISPLAY", nullptr, nullptr, nullptr)};
  }

  int Below(std::size_t count) { return static_cast<int>(random_() % count); }
  // Mostly around the picture, sometimes at the ends of the range.
  int N() {
    constexpr int kEnds[] = {kMin, -kMax, kMax, kMax - 1, 0, 1, -1};
    if (Below(6) == 0) return kEnds[Below(7)];
    return Below(6) == 0 ? static_cast<int>(random_()) : Below(120) - 30;
  }
  DWORD U() { return static_cast<DWORD>(N()); }
  template <class T>
  const T& One(const std::vector<T>& of) {
    return of[random_() % of.size()];
  }
  HGDIOBJ Any() { return One(handles_); }
  // Mostly live ones, so that calls get past the first check.
  HDC Context() { return Below(8) == 0 ? static_cast<HDC>(Any()) : One(targets_); }

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
  void Images(HDC hdc);

  std::mt19937 random_;
  std::string journal_;
  gfx::Surface surface_;
  std::vector<HGDIOBJ> handles_;  // what calls are made with, dead ones among them
  std::vector<HGDIOBJ> made_;
  std::vector<HDC> targets_;
  std::set<HGDIOBJ> dead_;
  POINT points_[12]{};
  RECT box_{};
  SIZE size_{};
  TEXTMETRICA metrics_{};

  const std::vector<Call> calls_ = {
      [this](HDC) { Keep(CreatePen(N() % 9, N(), U())); },
      [this](HDC) { Keep(CreateSolidBrush(U())); },
      [this](HDC) { Keep(NewFont(N(), Below(3) * 4, Below(2) == 0 ? 900 : N())); },
      [this](HDC dc) { Keep(CreateCompatibleBitmap(dc, Below(40) - 2, Below(40) - 2)); },
      [this](HDC) { Keep(CreateRectRgn(N(), N(), N(), N())); },
      [this](HDC dc) { Keep(CreateCompatibleDC(dc)); },
      [this](HDC) { Delete(Any()); },
      [](HDC dc) { SaveDC(dc); },
      [this](HDC dc) { RestoreDC(dc, Below(2) == 0 ? -1 : N()); },
      [this](HDC dc) { SetMapMode(dc, Below(2) == 0 ? MM_TEXT : MM_TWIPS); },
      [this](HDC dc) { SetViewportOrgEx(dc, N(), N(), points_); },
      [this](HDC dc) { LPtoDP(dc, points_, 12); },
      [this](HDC dc) { DPtoLP(dc, points_, 12); },
      [this](HDC dc) { SetBkMode(dc, N()); },
      [this](HDC dc) { SetTextAlign(dc, static_cast<UINT>(Below(64))); },
      [this](HDC dc) { IntersectClipRect(dc, N(), N(), N(), N()); },
      [this](HDC dc) { SelectClipRgn(dc, static_cast<HRGN>(Any())); },
      [this](HDC dc) { GetClipBox(dc, &box_); },
      [this](HDC) { GetObjectA(Any(), Below(sizeof points_), points_); },
      [this](HDC dc) { SelectObject(dc, Any()); },
      [this](HDC dc) { MoveToEx(dc, N(), N(), points_); },
      [this](HDC dc) { LineTo(dc, N(), N()); },
      [this](HDC dc) { Polyline(dc, points_, Below(14) - 1); },
      [this](HDC dc) { Polygon(dc, points_, Below(14) - 1); },
      [this](HDC dc) { Rectangle(dc, N(), N(), N(), N()); },
      [this](HDC dc) { Ellipse(dc, N(), N(), N(), N()); },
      [this](HDC dc) { FillRect(dc, &box_, static_cast<HBRUSH>(Any())); },
      [this](HDC dc) { TextOutA(dc, N(), N(), "Ab\xC3\xA9\xFF", Below(7) - 1); },
      [this](HDC dc) { GetTextExtentPoint32A(dc, "1.5 mV", Below(7), &size_); },
      [this](HDC dc) { GetTextMetricsA(dc, &metrics_); },
      [this](HDC dc) { BitBlt(dc, N(), N(), N(), N(), Context(), N(), N(), SRCCOPY); },
      [this](HDC dc) { Images(dc); },
  };
};

// Buffers have exactly the rows that are promised, so a read outside of them is caught.
void Misuse::Images(HDC hdc) {
  const LONG width = 1 + Below(40);
  const int rows = 1 + Below(40);
  const WORD depth = Below(2) == 0 ? 24 : 32;
  BITMAPINFO info = DibInfo(width, Below(2) == 0 ? rows : -rows, depth);
  const auto stride = static_cast<std::size_t>((width * depth / 8 + 3) / 4 * 4);
  const auto first = static_cast<UINT>(Below(static_cast<std::size_t>(rows)));
  const UINT given = static_cast<UINT>(Below(static_cast<std::size_t>(rows) - first)) + 1;
  std::vector<BYTE> part(stride * given, 0x5A);
  std::vector<BYTE> bits(stride * static_cast<std::size_t>(rows), 0xA5);
  SetDIBitsToDevice(hdc, N(), N(), U(), U(), N(), N(), first, given, part.data(), &info, 0);
  StretchDIBits(hdc, N(), N(), N(), N(), N(), N(), N(), N(), bits.data(), &info, 0, SRCCOPY);
  GetDIBits(hdc, static_cast<HBITMAP>(Any()), first, given, part.data(), &info, DIB_RGB_COLORS);
}

TEST_P(Misuse, NeitherFaultsNorLeaks) {
  const std::size_t before = gfx::LiveObjects() - targets_.size();
  std::set<std::uint64_t> pictures;
  for (int i = 0; i < 20'000; ++i) {
    if (i % 10 == 0) {  // brings the picture back into view, so that most calls draw something
      SelectClipRgn(targets_[1], nullptr);
      SetViewportOrgEx(targets_[1], 0, 0, nullptr);
      SetMapMode(targets_[1], MM_TEXT);
    }
    for (POINT& point : points_) point = {N(), N()};
    box_ = {N(), N(), N(), N()};
    One(calls_)(Context());
    if (i % 4 == 0) SelectObject(Context(), Any());
    if (handles_.size() > 200) handles_.erase(handles_.begin() + 5, handles_.begin() + 30);
    ASSERT_FALSE(HasFatalFailure());
    if (i % 100 == 0) pictures.insert(surface_.Hash());
  }
  EXPECT_GT(pictures.size(), 100u) << "hardly anything is drawn";
  EXPECT_FALSE(journal_.empty());
  EXPECT_GT(dead_.size(), 300u);
  for (HGDIOBJ object : made_) Delete(object);
  for (HDC target : targets_) EXPECT_TRUE(DeleteDC(target));
  EXPECT_EQ(gfx::LiveObjects(), before);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Misuse, testing::Values(1u, 2u, 3u));

}  // namespace
