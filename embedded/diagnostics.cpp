#include "embedded/diagnostics.h"

#include <signal.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <utility>

#include "elugraph/host/kernel.h"

namespace embedded {
namespace {

LogSink& Sink() {
  // Never destroyed: destructors of other static objects may still report.
  static LogSink* sink = new LogSink;
  return *sink;
}

unsigned int3Calls = 0;

void WriteLine(const char* format, va_list arguments) {
  char room[512];
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(room, sizeof room, format, arguments);
  std::string line(room);
  if (length < 0) {
    line = format;
  } else if (length >= static_cast<int>(sizeof room)) {
    line.resize(static_cast<std::size_t>(length) + 1);
    std::vsnprintf(line.data(), line.size(), format, again);
    line.pop_back();
  }
  va_end(again);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  if (Sink()) {
    Sink()(line);
  } else {
    std::fprintf(stderr, "%s\n", line.c_str());
  }
}

}  // namespace

LogSink SetLogSink(LogSink sink) { return std::exchange(Sink(), std::move(sink)); }

unsigned Int3Count() { return int3Calls; }

}  // namespace embedded

void exceptout(const char* format, ...) {
  if (format == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  try {
    embedded::WriteLine(format, arguments);
  } catch (...) {
    // Called from handlers of other failures: there is nowhere left to report to.
  }
  va_end(arguments);
}

// An ignored signal still stops a process under a debugger, and goes unnoticed without one.
void int3call() {
  ++embedded::int3Calls;
  struct sigaction ignore = {}, old = {};
  ignore.sa_handler = SIG_IGN;
  if (sigaction(SIGTRAP, &ignore, &old) != 0) return;
  raise(SIGTRAP);
  sigaction(SIGTRAP, &old, nullptr);
}
