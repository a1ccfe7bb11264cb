#include "embedded/settings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>

#include "elugraph/host/kernel.h"

namespace embedded {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kLockPatience{10};
constexpr std::chrono::milliseconds kLockPause{2};

std::string Fault(const std::string& path, const char* action, int error) {
  return path + ": " + action + ": " + std::strerror(error);
}

class File {
 public:
  explicit File(int descriptor) : descriptor_(descriptor) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  bool IsOpen() const { return descriptor_ >= 0; }
  int Get() const { return descriptor_; }

 private:
  int descriptor_;
};

// Where a link points: replacing the link itself would cut it. A link to nothing is replaced.
std::string Target(const std::string& path) {
  std::error_code error;
  const fs::path target = fs::canonical(path, error);
  return error ? path : target.string();
}

// Removes a temporary file that was not renamed.
class Temporary {
 public:
  explicit Temporary(std::string path) : path_(std::move(path)) {}
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  void Keep() { path_.clear(); }

 private:
  std::string path_;
};

bool WriteAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

std::string Replace(const std::string& path, std::string_view content) {
  std::string name = path + ".XXXXXX";
  const File file(::mkostemp(name.data(), O_CLOEXEC));
  if (!file.IsOpen()) return Fault(path, "cannot be written", errno);
  Temporary temporary(name);
  struct stat old;
  const bool exists = ::stat(path.c_str(), &old) == 0;
  // Root leaves the file to its owner where it can; others may not give files away.
  [[maybe_unused]] const int given = exists ? ::fchown(file.Get(), old.st_uid, old.st_gid) : 0;
  if (!WriteAll(file.Get(), content) ||
      ::fchmod(file.Get(), exists ? old.st_mode & 07777 : 0644) != 0 || ::fsync(file.Get()) != 0 ||
      ::rename(name.c_str(), path.c_str()) != 0) {
    return Fault(path, "cannot be written", errno);
  }
  temporary.Keep();
  // The rename itself reaches the disk with the folder; a file system that cannot do that has
  // replaced the file all the same.
  const File folder(::open(fs::path(path).parent_path().c_str(), O_RDONLY | O_CLOEXEC));
  if (folder.IsOpen()) ::fsync(folder.Get());
  return {};
}

std::string Lock(const File& file, const std::string& path) {
  if (!file.IsOpen()) return Fault(path, "cannot be locked", errno);
  const auto end = std::chrono::steady_clock::now() + kLockPatience;
  while (::flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return Fault(path, "cannot be locked", errno);
    if (std::chrono::steady_clock::now() > end) return path + ": locked by another process";
    std::this_thread::sleep_for(kLockPause);
  }
  return {};
}

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// Says a fault that goes on with every entry only once; the empty text ends it.
void Report(const std::string& fault) {
  // Never destroyed: the library writes its settings until the process ends.
  static auto* const last = new std::string;
  if (fault == *last) return;
  *last = fault;
  if (!fault.empty()) exceptout("%s", fault.c_str());
}

constinit bool keepSettings = true;

std::string PathOrSettings(const char* file) {
  return file != nullptr && *file != '\0' ? file : SettingsPath();
}

}  // namespace

void KeepSettings(bool on) { keepSettings = on; }

std::string SettingsPath() {
  if (std::string named = Environment("ELUGRAPH_SETTINGS"); !named.empty()) return named;
  std::string folder = Environment("XDG_CONFIG_HOME");
  if (folder.empty() || folder[0] != '/') {
    folder = Environment("HOME");
    if (folder.empty()) return {};
    folder += "/.config";
  }
  return folder + "/elugraph/settings.ini";
}

std::optional<std::string> ReadSettings(const std::string& path, std::string& fault) {
  // O_NONBLOCK: opening a pipe must not wait for its other end.
  const File file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.IsOpen()) {
    if (errno == ENOENT || errno == ENOTDIR) return std::string();
    fault = Fault(path, "cannot be read", errno);
    return std::nullopt;
  }
  struct stat about;
  if (::fstat(file.Get(), &about) != 0 || !S_ISREG(about.st_mode)) {
    fault = path + ": not a regular file";
    return std::nullopt;
  }
  std::string content;
  char part[4096];
  for (;;) {
    const ssize_t got = ::read(file.Get(), part, sizeof part);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      fault = Fault(path, "cannot be read", errno);
      return std::nullopt;
    }
    if (got == 0) break;
    content.append(part, static_cast<std::size_t>(got));
  }
  if (content.find('\0') != std::string::npos) {
    fault = path + ": not an 8-bit text file";
    return std::nullopt;
  }
  return content;
}

std::string WriteSetting(const std::string& path, std::string_view section, std::string_view key,
                         std::optional<std::string_view> value) {
  if (const std::string fault = EntryFault(section, key, value.value_or("")); !fault.empty()) {
    return path + ": [" + std::string(section) + "] " + std::string(key) + ": " + fault;
  }
  const std::string target = Target(path);
  std::string fault;
  if (const auto now = ReadSettings(target, fault); now && FindEntry(*now, section, key) == value) {
    return {};
  }
  std::error_code error;
  if (const fs::path folder = fs::path(target).parent_path(); !folder.empty()) {
    fs::create_directories(folder, error);
    if (error) return folder.string() + ": cannot be made: " + error.message();
  }
  const std::string lockPath = target + ".lock";
  const File lock(::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
  fault = Lock(lock, lockPath);
  if (!fault.empty()) return fault;
  // Read again: now nobody else changes it.
  const std::optional<std::string> content = ReadSettings(target, fault);
  if (!content) return fault;
  // Renaming over the file would get around its write protection.
  if (::access(target.c_str(), W_OK) != 0 && errno != ENOENT) {
    return Fault(target, "cannot be written", errno);
  }
  const std::string changed = ChangeEntry(*content, section, key, value);
  return changed == *content ? std::string() : Replace(target, changed);
}

}  // namespace embedded

str& GetIniFileEntry(str& value, const char* section, const char* key, const char* fallback,
                     const char* file) {
  value = str(fallback);
  const std::string path = embedded::PathOrSettings(file);
  if (path.empty() || section == nullptr || key == nullptr) return value;
  std::string fault;
  const std::optional<std::string> content = embedded::ReadSettings(path, fault);
  embedded::Report(fault);
  if (!content) return value;
  if (const auto found = embedded::FindEntry(*content, section, key)) {
    value = str(found->c_str());
  }
  return value;
}

bool vsetinifile(const char* section, const char* key, const char* value, const char* file) {
  if (section == nullptr || key == nullptr) return false;
  if (!embedded::keepSettings) return true;
  const std::string path = embedded::PathOrSettings(file);
  std::optional<std::string_view> entry;
  if (value != nullptr) entry = value;
  const std::string fault = path.empty() ? "no place for a settings file: HOME is not set"
                                         : embedded::WriteSetting(path, section, key, entry);
  embedded::Report(fault);
  return fault.empty();
}
