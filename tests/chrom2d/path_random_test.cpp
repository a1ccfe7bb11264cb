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
  using Band = std::pair<int, int>;
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
    const Band band = to > from ? bands[static_cast<std::size_t>(from) - 1]
                                : bands[static_cast<std::size_t>(from)];
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
    std::string text;
    const auto add = [&](int lastStep) {
      const Band& band = bands[static_cast<std::size_t>(lastStep)];
      text += std::to_string(band.first) + "-" + std::to_string(band.second);
    };
    for (const int boundary : boundaries) {
      add(boundary - 1);
      char end[32];
      std::snprintf(end, sizeof end, " until %.10g, ", boundary * kStepSec);
      text += end;
    }
    add(kSteps);
    return text;
  }
};

class RandomPaths : public PathEditors {
 protected:
  // Without painting in between.
  void Send(UINT message, POINT at) { SendMessageA(window, message, 0, MAKELPARAM(at.x, at.y)); }
  void SendDrag(POINT from, POINT to) {
    Send(WM_LBUTTONDOWN, from);
    Send(WM_MOUSEMOVE, to);
    Send(WM_LBUTTONUP, to);
  }
};

TEST_F(RandomPaths, DoWhatTheModelDoes) {
  std::mt19937 random(7);
  const auto pick = [&](int first, int last) {
    return std::uniform_int_distribution<int>(first, last)(random);
  };
  StepModel model;
  model.bands.fill({4, 9});
  OpenPath("4-9");
  int drags = 0, additions = 0, bandMoves = 0;
  for (int gesture = 0; gesture < 4000; ++gesture) {
    const int step = pick(0, kSteps);
    const int kind = pick(0, 9);
    if (kind < 4 || model.boundaries.empty()) {
      if (step == 0 || model.boundaries.count(step) != 0 || model.boundaries.size() > 12) continue;
      Send(WM_RBUTTONDOWN, At(step * kStepSec, pick(0, kChannels - 1)));
      model.boundaries.insert(step);
      ++additions;
    } else if (kind < 7) {
      auto chosen = model.boundaries.begin();
      std::advance(chosen, pick(0, static_cast<int>(model.boundaries.size()) - 1));
      const int from = *chosen;
      SendDrag(At(from * kStepSec, 11), At(step * kStepSec, pick(0, kChannels - 1)));
      model.Move(from, step);
      ++drags;
    } else {
      const int start = model.SegmentStart(step);
      const int end = std::min(model.SegmentEnd(step), kSteps);
      if (end - start < 2) continue;
      StepModel::Band band = model.bands[static_cast<std::size_t>(start)];
      const bool high = pick(0, 1) == 1 && band.first != band.second;
      const double middle = (start + end) / 2.0 * kStepSec;
      const int to = pick(0, kChannels - 1);
      SendDrag(At(middle, high ? band.second : band.first), {pick(0, 880), Y(to)});
      (high ? band.second : band.first) = to;
      model.SetBand(start, band);
      ++bandMoves;
    }
    ASSERT_EQ(Edited(), model.Text()) << "gesture " << gesture;
  }
  // Not all went into few kinds.
  EXPECT_GT(std::min({drags, additions, bandMoves}), 200);
}

TEST_F(RandomPaths, StayInOrderWhateverTheyHeldAndTheMouseDoes) {
  std::mt19937 random(11);
  const auto pick = [&](int first, int last) {
    return std::uniform_int_distribution<int>(first, last)(random);
  };
  for (int round = 0; round < 12; ++round) {
    run = MakeSpectralRun(spectra);
    // Steps of 0.1 s on a run that ends between two of them.
    if (round % 3 == 2) run->sampleInterval = 1.013F;
    SetPath(path, "4-9");
    for (int i = pick(0, 5); i > 0; --i) {
      *path.Insert(0) = {static_cast<std::int16_t>(pick(-40'000, 40'000)),
                         static_cast<std::int16_t>(pick(-5, 30)), 7.3 * i};
    }
    editor = new EditorWindow(nullptr, run.get(), path);
    window = editor->Create(-1);
    PostExecute(window, nullptr, nullptr, false);
    desk.RunUntilIdle();
    for (int i = 0; i < 400; ++i) {
      constexpr UINT kMessages[] = {WM_RBUTTONDOWN, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_MOUSEMOVE,
                                    WM_LBUTTONUP};
      const bool wild = pick(0, 19) == 0;
      const int reach = wild ? 32'767 : 900;
      Send(kMessages[pick(0, 4)],
           {pick(wild ? -32'768 : 0, reach), pick(wild ? -32'768 : 0, reach)});
      if (pick(0, 30) == 0) desk.Resize(window, pick(1, 900), pick(1, 700));
      if (pick(0, 60) == 0) desk.RunFor(250);
      if (pick(0, 9) == 0) desk.RunUntilIdle();
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
