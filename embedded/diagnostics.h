// Diagnostics of the embedded host: where `exceptout` writes, and how often `int3call` was reached.
// One thread at a time.
#pragma once

#include <functional>
#include <string_view>

namespace embedded {

// Receives one line without its line end.
using LogSink = std::function<void(std::string_view line)>;

// Sends the lines of `exceptout` to `sink`; an empty one stands for standard error. What the sink
// throws is dropped. Returns the sink in place before.
LogSink SetLogSink(LogSink sink);

// Number of calls of `int3call` since the process began; wraps at 2^32.
unsigned Int3Count();

}  // namespace embedded
