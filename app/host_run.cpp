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

}  // namespace

embedded::RunRef HostRun(const RunData& run, std::string& error) {
  embedded::RunData host;
  for (const Trace& trace : run.channels) host.channels.push_back(HostChannel(trace));
  return embedded::MakeRun(host, error);
}

}  // namespace app
