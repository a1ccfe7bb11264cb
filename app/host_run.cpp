#include "app/host_run.h"

namespace app {
namespace {

embedded::ChannelData HostChannel(const Trace& trace) {
  embedded::ChannelData channel;
  channel.name = trace.name;
  channel.unit = trace.unit;
  channel.description = trace.description;
  channel.values = trace.values;
  channel.timesSec = trace.timesS;
  channel.startSec = trace.startS;
  channel.periodSec = trace.periodS;
  return channel;
}

// Empty where a run of this channel alone can be made.
std::string Fault(const embedded::ChannelData& channel) {
  std::string fault;
  embedded::RunData alone;
  alone.channels.push_back(channel);
  embedded::MakeRun(alone, fault);
  return fault;
}

}  // namespace

embedded::RunRef HostRun(const RunData& run, std::string& error) {
  embedded::RunData host;
  for (const Trace& trace : run.channels) host.channels.push_back(HostChannel(trace));
  embedded::RunRef made = embedded::MakeRun(host, error);
  // Channels count within their own file.
  for (std::size_t i = 0, first = 0; made == nullptr && i < run.channels.size(); ++i) {
    const std::string& source = run.channels[i].source;
    if (source != run.channels[first].source) first = i;
    std::string fault = Fault(host.channels[i]);
    if (fault.empty() || source.empty()) continue;
    fault.replace(0, fault.find(':'), "channel " + std::to_string(i - first + 1));
    error = source + ": " + fault;
    break;
  }
  return made;
}

}  // namespace app
