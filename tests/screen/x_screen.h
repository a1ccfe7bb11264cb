// An X display of its own without a monitor, a mouse to move on it, and what it shows.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/gfx/surface.h"

namespace screen {

// A child process that ends with the object.
class Process {
 public:
  Process() = default;
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();
  // `environment` ("NAME=value") is added to the caller's. Both streams go to the file `log`.
  void Start(const std::vector<std::string>& command, const std::vector<std::string>& environment,
             const std::filesystem::path& log);
  // The exit status; −1 where it has not ended in time, or not by itself.
  int Wait();

 private:
  pid_t pid_ = 0;
};

// True as soon as `done` is, asked again and again; false after a long time.
bool Until(const std::function<bool()>& done);

class XScreen {
 public:
  static constexpr int kWidth = 1280;
  static constexpr int kHeight = 1024;

  // Xvfb and xdotool are installed.
  static bool IsThere();
  // Keeps its files in `folder`.
  explicit XScreen(std::filesystem::path folder);

  // ":7"; empty where the display did not start.
  const std::string& Display() const { return display_; }
  // A visible window whose title holds the text: its place on the screen, once it is there.
  bool FindWindow(const std::string& title, RECT& place) const;
  // Arguments of xdotool.
  bool Do(const std::string& commands) const { return !Tool(commands).empty(); }
  // Presses the left button at the first point and releases it at the last; the mouse then leaves
  // for the corner.
  bool Drag(const std::vector<POINT>& points) const;
  gfx::Surface Picture() const;

 private:
  // What it writes, and a line behind it; empty where it fails.
  std::string Tool(const std::string& commands) const;

  std::filesystem::path folder_;
  std::string display_;
  Process server_;
};

}  // namespace screen
