// Timers on the clock of the front.
#include <algorithm>

#include "platform/ui/desk.h"

namespace ui {
namespace {

constexpr std::int64_t kShortestPeriodMs = 10;

auto FindTimer(HWND window, UINT_PTR id) {
  std::vector<Timer>& timers = TheDesk().timers;
  return std::find_if(timers.begin(), timers.end(),
                      [&](const Timer& timer) { return timer.window == window && timer.id == id; });
}

// The earliest due; of equals the one set first.
auto Earliest() {
  std::vector<Timer>& timers = TheDesk().timers;
  return std::min_element(timers.begin(), timers.end(),
                          [](const Timer& a, const Timer& b) { return a.due < b.due; });
}

}  // namespace

std::int64_t NextTimerDue() { return TheDesk().timers.empty() ? kNever : Earliest()->due; }

bool FireTimer() {
  const std::int64_t now = Now();
  if (NextTimerDue() > now) return false;
  Timer& due = *Earliest();
  due.due = now + due.period;
  const Timer timer = due;
  if (timer.callback != nullptr) {
    timer.callback(timer.window, WM_TIMER, timer.id, static_cast<DWORD>(now));
  } else {
    DispatchQueued({timer.window, WM_TIMER, timer.id, 0, GetTickCount(), TheDesk().mouse});
  }
  return true;
}

}  // namespace ui

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
  ui::Desk& desk = ui::TheDesk();
  if (window != nullptr && !IsWindow(window)) return 0;
  if (window == nullptr) id = ++desk.lastTimerId;
  const std::int64_t period = std::max<std::int64_t>(periodMs, ui::kShortestPeriodMs);
  KillTimer(window, id);
  desk.timers.push_back({window, id, period, ui::Now() + period, callback});
  return id != 0 ? id : 1;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
  const auto found = ui::FindTimer(window, id);
  if (found == ui::TheDesk().timers.end()) return FALSE;
  ui::TheDesk().timers.erase(found);
  return TRUE;
}
