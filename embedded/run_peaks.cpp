// The peak tables of a run, and the one that its record shows.
#include <algorithm>

#include "embedded/run_parts.h"

namespace embedded {

std::string Run::SetPeaks(int channel, std::vector<PeakRecord> table, bool keepBaselines) {
  Channel* target = At(channel);
  if (target == nullptr) return "no channel " + std::to_string(channel);
  if (table.size() > 0xFFFF) return "more than 65535 peaks";
  for (std::size_t i = 0; i < table.size(); ++i) {
    const PeakRecord& peak = table[i];
    if (peak.start < 0 || peak.apex < peak.start || peak.end < peak.apex ||
        peak.end >= target->sampleCount) {
      return "peak " + std::to_string(i + 1) +
             ": start, apex and end are not in order within the " +
             std::to_string(target->sampleCount) + " samples";
    }
  }
  std::stable_sort(table.begin(), table.end(),
                   [](const PeakRecord& a, const PeakRecord& b) { return a.start < b.start; });
  target->peakStore = std::move(table);
  target->ownPeaks = true;
  target->keepBaselines = keepBaselines;
  ShowPeaks(currentChannel_);
  return {};
}

bool Run::DetectPeaks(int channel, const DetectionOptions& options) {
  const Channel* from = At(channel);
  return from != nullptr &&
         SetPeaks(channel, embedded::DetectPeaks(from->sampleStore, options), true).empty();
}

// A channel without peaks of its own shows the current channel's where the samples correspond.
const std::vector<PeakRecord>& Run::TableFor(const Channel& channel) const {
  static const std::vector<PeakRecord> kNone;
  const Channel* current = Current();
  if (channel.ownPeaks || current == nullptr || &channel == current) return channel.peakStore;
  return channel.SameGridAs(*current) ? current->peakStore : kNone;
}

void Run::ShowPeaks(int channel) {
  Channel* shown = At(channel);
  shownPeaks_.clear();
  if (shown != nullptr) {
    shownPeaks_ = TableFor(*shown);
    if (!shown->ownPeaks || !shown->keepBaselines) DrawBaselines(shown->sampleStore, shownPeaks_);
    sampleInterval = shown->samplePeriod;
    shownChannel_ = channel;
  }
  peaks = {0, static_cast<LONG>(shownPeaks_.size()), shownPeaks_.data()};
  peakCount = static_cast<WORD>(shownPeaks_.size());
}

}  // namespace embedded
