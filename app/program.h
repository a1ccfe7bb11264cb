// The command line.
#pragma once

namespace app {

// Exit statuses. Everything that is not kDone leaves one line on standard error, and no new or
// changed output file.
enum ExitStatus {
  kDone = 0,
  kCancelled = 1,  // by the user, in a window
  kBadInput = 2,   // bad input, bad usage, or an unwritable output
};

// Runs the program. Never throws.
int RunProgram(int argc, const char* const* argv);

}  // namespace app
