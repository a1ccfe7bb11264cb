// Random gestures against a plain model of the run.
#include <algorithm>
#include <array>
#include <random>
#include <set>

#include "tests/chrom2d/path_fixture.h"

namespace {

constexpr int kSteps = 100;
constexpr double kStepSec = 0.5;
constexpr int kChannels = 21;

// The run as steps, each with a band; boundaries lie between steps.
struct StepModel {
  using Band = std::pair<std::int16_t, std::int16_t>;
  std::array<Band, kSteps + 1> bands;  // the last one: beyond the run
  std::set<int> boundaries;

  int SegmentEnd(int step) const {
    const auto next = boundaries.upper_bound(step);
    return next != boundaries.end() ? *next : kSteps + 1;
  }
  int SegmentStart(int step) const {
    const auto next = boundaries.upper_bound(step);
    return next != boundaries.begin() ? *std::prev(next) : 0;
  }
  // What the boundary passes takes the band of the side that it comes from.
  void Move(int from, int to) {
    const Band band = bands[static_cast<std::size_t>(to > from ? from - 1 : from)];
    for (int step = std::min(from, to); step < std::max(from, to); ++step) {
      bands[static_cast<std::size_t>(step)] = band;
    }
    boundaries.erase(boundaries.lower_bound(std::min(from, to)),
                     boundaries.upper_bound(std::max(from, to)));
    if (to > 0) boundaries.insert(to);
  }
  void SetBand(int step, Band band) {
    if (band.first > band.second) std::swap(band.first, band.second);
    for (int i = SegmentStart(step); i < SegmentEnd(step); ++i) {
      bands[static_cast<std::size_t>(i)] = band;
    }
  }
  std::string Text() const {
    SIPathHolder path;
    const auto add = [&](int lastStep, double end) {
      const Band& band = bands[static_cast<std::size_t>(lastStep)];
      *path.Insert(path.count) = {band.first, band.second, end};
    };
    for (const int boundary : boundaries) add(boundary - 1, boundary * kStepSec);
    add(kSteps, kOpenEnd);
    return TextOf(path);
  }
};

class RandomPaths : public PathEditors {
 protected:
  int Pick(int first, int last) { return std::uniform_int_distribution<int>(first, last)(random_); }
  // Without painting in between.
  void Send(UINT message, POINT at) { SendMessageA(window, message, 0, MAKELPARAM(at.x, at.y)); }
  void SendDrag(POINT from, POINT to) {
    Send(WM_LBUTTONDOWN, from);
    Send(WM_MOUSEMOVE, to);
    Send(WM_LBUTTONUP, to);
  }

 private:
  std::mt19937 random_{7};
};

TEST_F(RandomPaths, DoWhatTheModelDoes) {
  StepModel model;
  model.bands.fill({4, 9});
  OpenPath("4-9");
  for (int gesture = 0; gesture < 4000; ++gesture) {
    const int step = Pick(0, kSteps);
    const int kind = Pick(0, 9);
    if (kind < 4 || model.boundaries.empty()) {
      if (step == 0 || model.boundaries.count(step) != 0 || model.boundaries.size() > 12) continue;
      Send(WM_RBUTTONDOWN, At(step * kStepSec, Pick(0, kChannels - 1)));
      model.boundaries.insert(step);
    } else if (kind < 7) {
      const int last = static_cast<int>(model.boundaries.size()) - 1;
      const int from = *std::next(model.boundaries.begin(), Pick(0, last));
      SendDrag(At(from * kStepSec, 11), At(step * kStepSec, Pick(0, kChannels - 1)));
      model.Move(from, step);
    } else {
      const int start = model.SegmentStart(step);
      const int end = std::min(model.SegmentEnd(step), kSteps);
      if (end - start < 2) continue;
      StepModel::Band band = model.bands[static_cast<std::size_t>(start)];
      const bool high = Pick(0, 1) == 1 && band.first != band.second;
      const double middle = (start + end) / 2.0 * kStepSec;
      const auto to = static_cast<std::int16_t>(Pick(0, kChannels - 1));
      SendDrag(At(middle, high ? band.second : band.first), {Pick(0, 880), Y(to)});
      (high ? band.second : band.first) = to;
      model.SetBand(start, band);
    }
    ASSERT_EQ(Edited(), model.Text()) << "gesture " << gesture;
  }
}

TEST_F(RandomPaths, StayInOrderWhateverTheyHeldAndTheMouseDoes) {
  for (int round = 0; round < 12; ++round) {
    run = MakeSpectralRun(spectra);
    // Steps of 0.1 s on a run that ends between two of them.
    if (round % 3 == 2) run->sampleInterval = 1.013F;
    OpenOnRun(round % 2 == 0 ? "4-9" : "-32768-30 until 7.3, 32767--5 until 14.6, 25--32768");
    for (int i = 0; i < 400; ++i) {
      constexpr UINT kMessages[] = {WM_RBUTTONDOWN, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP};
      const int reach = Pick(0, 19) == 0 ? 32'767 : 900;
      Send(kMessages[Pick(0, 3)], {Pick(900 - reach, reach), Pick(900 - reach, reach)});
      if (Pick(0, 30) == 0) desk.Resize(window, Pick(1, 900), Pick(1, 700));
      if (Pick(0, 60) == 0) desk.RunFor(250);
      if (Pick(0, 9) == 0) desk.RunUntilIdle();
      ASSERT_TRUE(editor->CanClose());
      for (int k = 1; k < path.count; ++k) {
        // + copies the packed field; the check takes a reference.
        ASSERT_LE(+path.items[k - 1].endTime, +path.items[k].endTime) << round << " " << i;
      }
      ASSERT_EQ(+path.items[path.count - 1].endTime, kOpenEnd);
      ASSERT_TRUE(editor->CanClose());
    }
    DestroyWindow(window);
    run.reset();
  }
}

}  // namespace
