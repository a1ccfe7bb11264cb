#include "tests/screen/x_screen.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <thread>

namespace screen {
namespace {

// For slow and busy machines.
constexpr std::chrono::seconds kPatience{60};
constexpr std::chrono::milliseconds kPause{20};

std::string Contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

bool Until(const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

void Process::Start(const std::vector<std::string>& command,
                    const std::vector<std::string>& environment, const std::filesystem::path& log) {
  pid_ = fork();
  if (pid_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // whatever ends the test
  for (const std::string& entry : environment) putenv(strdup(entry.c_str()));
  const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(file, STDOUT_FILENO);
  dup2(file, STDERR_FILENO);
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(strdup(word.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

int Process::Wait() {
  int status = 0;
  if (pid_ <= 0 || !Until([&] { return waitpid(pid_, &status, WNOHANG) == pid_; })) return -1;
  pid_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Process::~Process() {
  if (pid_ <= 0) return;
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

bool XScreen::IsThere() {
  return std::system("command -v Xvfb >/dev/null && command -v xdotool >/dev/null") == 0;
}

XScreen::XScreen(std::filesystem::path folder) : folder_(std::move(folder)) {
  const std::string extent = std::to_string(kWidth) + "x" + std::to_string(kHeight) + "x24";
  const std::filesystem::path number = folder_ / "display";
  // The server takes a free number and tells it. Its framebuffer is a file. Without -noreset it
  // would begin anew, and refuse a program just then, each time xdotool leaves it without clients.
  const std::string command = "exec Xvfb -displayfd 3 -screen 0 " + extent + " -fbdir '" +
                              folder_.string() + "' -nolisten tcp -noreset 3>'" + number.string() +
                              "'";
  server_.Start({"sh", "-c", command}, {}, folder_ / "server.log");
  if (Until([&] { return Contents(number).ends_with('\n'); })) {
    display_ = ":" + Contents(number);
    display_.pop_back();
  }
}

std::string XScreen::Tool(const std::string& commands) const {
  const std::filesystem::path out = folder_ / "xdotool.log";
  const std::string line =
      "DISPLAY=" + display_ + " timeout 60 xdotool " + commands + " >'" + out.string() + "' 2>&1";
  return std::system(line.c_str()) == 0 ? Contents(out) + "\n" : std::string();
}

bool XScreen::FindWindow(const std::string& title, RECT& place) const {
  return Until([&] {
    const std::string text =
        Tool("search --onlyvisible --name '" + title + "' getwindowgeometry --shell");
    LONG width = 0, height = 0;
    const auto number = [&text](const char* name, LONG& value) {
      const std::size_t at = text.find(name);
      if (at != text.npos) value = std::atoi(text.c_str() + at + std::strlen(name));
      return at != text.npos;
    };
    const bool found = number("\nX=", place.left) && number("\nY=", place.top) &&
                       number("\nWIDTH=", width) && number("\nHEIGHT=", height);
    place.right = place.left + width;
    place.bottom = place.top + height;
    return found;
  });
}

bool XScreen::Drag(const std::vector<POINT>& points) const {
  const auto move = [](POINT to) {
    return "mousemove " + std::to_string(to.x) + " " + std::to_string(to.y) + " ";
  };
  std::string commands = move(points.front()) + "mousedown 1 ";
  for (std::size_t i = 1; i < points.size(); ++i) commands += move(points[i]);
  return Do(commands + "mouseup 1 " + move({kWidth - 1, kHeight - 1}));
}

// The framebuffer's file: a header of big-endian 32-bit numbers, colours, rows of 4 bytes a pixel.
gfx::Surface XScreen::Picture() const {
  const std::string file = Contents(folder_ / "Xvfb_screen0");
  const auto number = [&file](std::size_t index) {
    std::size_t value = 0;
    for (std::size_t i = 4 * index; i < 4 * index + 4; ++i) {
      value = value * 256 + static_cast<unsigned char>(file.at(i));
    }
    return value;
  };
  const std::size_t rowBytes = number(12);
  const std::size_t first = number(0) + number(19) * 12;
  gfx::Surface picture(kWidth, kHeight);
  for (int y = 0; y < kHeight; ++y) {
    const std::size_t at = first + rowBytes * static_cast<std::size_t>(y);
    std::memcpy(picture.Row(y), &file.at(at), kWidth * 4);
    for (int x = 0; x < kWidth; ++x) picture.Row(y)[x] &= 0xFFFFFF;
  }
  return picture;
}

}  // namespace screen
