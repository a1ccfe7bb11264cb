#include "app/selection.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "app/formats/text.h"

namespace app {
namespace {

std::optional<std::size_t> Number(std::string_view text) {
  std::size_t number = 0;
  const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (status != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool IsWavelength(const Trace& trace) {
  return trace.name.ends_with(" nm") &&
         ParseNumber(trace.name.substr(0, trace.name.size() - 3), '.');
}

// Marks what one wish names; false where that is nothing.
bool Mark(const std::vector<Trace>& traces, const std::string& wish, std::vector<bool>& marked) {
  const std::size_t dash = wish.find('-');
  const auto first = Number(wish.substr(0, dash));
  const auto last = dash == wish.npos ? first : Number(wish.substr(dash + 1));
  if (first && last && 1 <= *first && *first <= *last && *last <= traces.size()) {
    std::fill(marked.begin() + static_cast<std::ptrdiff_t>(*first) - 1,
              marked.begin() + static_cast<std::ptrdiff_t>(*last), true);
    return true;
  }
  bool found = false;
  for (std::size_t i = 0; i < traces.size(); ++i) {
    if (wish.empty() || !Lower(traces[i].name).starts_with(Lower(wish))) continue;
    marked[i] = true;
    found = true;
  }
  return found;
}

template <typename Items>
Items Picked(Items& items, const std::vector<std::size_t>& indices) {
  Items picked;
  for (const std::size_t index : indices) picked.push_back(std::move(items[index]));
  return picked;
}

}  // namespace

bool FindTraces(const std::vector<Trace>& traces, const std::vector<std::string>& wanted,
                std::vector<std::size_t>& indices, std::string& error) {
  std::vector<bool> marked(traces.size());
  for (const std::string& wish : wanted) {
    if (Mark(traces, wish, marked)) continue;
    error = "'" + wish + "' names none of the " + std::to_string(traces.size()) + " channels";
    return false;
  }
  indices.clear();
  for (std::size_t i = 0; i < marked.size(); ++i) {
    if (marked[i]) indices.push_back(i);
  }
  return true;
}

std::vector<std::size_t> ChooseChannels(const std::vector<Trace>& traces) {
  std::vector<std::size_t> indices;
  const bool many = traces.size() > kMaxShownChannels;
  const bool spectral = many && std::all_of(traces.begin(), traces.end(), IsWavelength);
  const std::size_t count =
      spectral ? kShownWavelengths : std::min(traces.size(), kMaxShownChannels);
  for (std::size_t i = 0; i < count; ++i) {
    indices.push_back(spectral ? i * (traces.size() - 1) / (count - 1) : i);
  }
  return indices;
}

RunData Selected(RunData run, const std::vector<std::size_t>& channels,
                 const std::vector<std::size_t>& auxiliary) {
  std::vector<Peak> peaks;
  for (Peak& peak : run.peaks) {
    const auto found = std::find(channels.begin(), channels.end(), peak.channel);
    if (found == channels.end()) continue;
    peak.channel = static_cast<std::size_t>(found - channels.begin());
    peaks.push_back(std::move(peak));
  }
  run.peaks = std::move(peaks);
  run.channels = Picked(run.channels, channels);
  run.auxiliary = Picked(run.auxiliary, auxiliary);
  return run;
}

}  // namespace app
