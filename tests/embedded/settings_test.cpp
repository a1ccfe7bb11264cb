// The settings file: texts, files, and writers at the same time.
#include "embedded/settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "elugraph/host/kernel.h"
#include "embedded/diagnostics.h"

namespace embedded {
namespace {

namespace fs = std::filesystem;

TEST(IniText, Finds) {
  const std::string text =
      "\xEF\xBB\xBF[First]\r\n"
      " Key = a b;c # d \r\n"
      ";key=comment\r\n"
      "[ second ] trailing\n"
      "key=\"  kept  \"\n"
      "KEY=second of equal keys\n"
      "no equals sign\n"
      "[FIRST]\n"
      "last=no line end";
  const std::array<const char*, 3> cases[] = {{"first", "KEY", "a b;c # d"},
                                              {"Second", "key", "  kept  "},
                                              {"first", "last", "no line end"},
                                              {"second", "last", "(none)"},
                                              {"first", ";key", "(none)"}};
  for (const auto& [section, key, value] : cases) {
    EXPECT_EQ(FindEntry(text, section, key).value_or("(none)"), value) << section << "/" << key;
  }
}

struct ChangeCase {
  const char* name;
  std::string before;
  const char* section;
  const char* key;
  const char* value;  // null: remove
  std::string after;
};
const ChangeCase kChanges[] = {
    {"EmptyText", "", "S", "k", "v", "[S]\nk=v\n"},
    {"Replaced", "; c\n[s]\n\tK  =  old \n\n[t]\nk=1\n", "S", "k", "new",
     "; c\n[s]\nK=new\n\n[t]\nk=1\n"},
    {"AddedBehindTheSection", "[s]\na=1\n\n[t]\nb=2\n", "s", "c", "3",
     "[s]\na=1\nc=3\n\n[t]\nb=2\n"},
    {"NewSection", "[s]\na=1", "t", "b", "2", "[s]\na=1\n[t]\nb=2\n"},
    {"CarriageReturns", "[s]\r\na=1\r\n", "s", "b", "2", "[s]\r\na=1\r\nb=2\r\n"},
    {"ByteOrderMark", "\xEF\xBB\xBF[s]\na=1\n", "s", "a", "2", "\xEF\xBB\xBF[s]\na=2\n"},
    {"KeyInASecondSection", "[s]\na=1\n[S]\nb=2\n", "s", "b", "9", "[s]\na=1\n[S]\nb=9\n"},
    {"BlanksNeedQuotes", "", "s", "a", " x ", "[s]\na=\" x \"\n"},
    {"Removed", "[s]\na=1\nb=2\n", "s", "a", nullptr, "[s]\nb=2\n"},
    {"RemovedWhereAbsent", "[s]\nb=2", "s", "a", nullptr, "[s]\nb=2"}};

TEST(IniText, ChangesTouchNothingElse) {
  for (const ChangeCase& c : kChanges) {
    std::optional<std::string_view> value;
    if (c.value != nullptr) value = c.value;
    EXPECT_EQ(ChangeEntry(c.before, c.section, c.key, value), c.after) << c.name;
  }
}

// Whatever the text is: the changed entry reads back, and the other bytes are still there.
TEST(IniText, ChangesOneEntryOfAnyText) {
  std::mt19937 random(11);
  const std::string alphabet = "[]=;# \t\r\n\n\"aAbB\xEF\xBB\xBF";
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (unsigned length = random() % 60; length > 0; --length) {
      text += alphabet[random() % alphabet.size()];
    }
    const std::string section(1, "abAB"[random() % 4]), key(1, "abAB"[random() % 4]);
    const std::optional<std::string> before = FindEntry(text, section, key);
    const std::string value = random() % 2 != 0 ? " \"x " : "y=;z";
    const std::string changed = ChangeEntry(text, section, key, value);
    ASSERT_EQ(FindEntry(changed, section, key).value_or("lost"), value) << text;
    if (!before) {
      // An insertion: the old text without a gap in front and behind.
      std::size_t same = 0;
      while (same < text.size() && text[same] == changed[same]) ++same;
      ASSERT_EQ(changed.substr(changed.size() - (text.size() - same)), text.substr(same)) << text;
    }
  }
}

TEST(IniText, RefusesWhatALineCannotHold) {
  EXPECT_EQ(EntryFault("CHROM_2D_COLORS", "COLOR00", "1 2;3=4 [x]"), "");
  const std::string null("a\0b", 3);
  for (const std::string section : {"", "s]", "s\n", " s"}) {
    EXPECT_NE(EntryFault(section, "k", "v"), "") << section;
  }
  for (const std::string key : {"", "a=b", ";k", "#k", "[k", "k "}) {
    EXPECT_NE(EntryFault("s", key, "v"), "") << key;
  }
  for (const std::string& value : {std::string("two\nlines"), std::string("carriage\r"), null}) {
    EXPECT_NE(EntryFault("s", "k", value), "") << value;
  }
}

class SettingsFile : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/elugraph-settings-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    folder = name;
    path = folder + "/sub/settings.ini";
    setenv("ELUGRAPH_SETTINGS", path.c_str(), 1);
    old_ = SetLogSink([this](std::string_view line) { log.emplace_back(line); });
  }
  void TearDown() override {
    unsetenv("ELUGRAPH_SETTINGS");
    SetLogSink(old_);
    fs::remove_all(folder);
  }
  std::string Content() const {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
  }
  void Put(const std::string& content) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
  }
  std::string Get(const char* section, const char* key, const char* fallback = nullptr) {
    str value("stale");
    return GetIniFileEntry(value, section, key, fallback, nullptr).c_str();
  }
  std::string folder, path;
  std::vector<std::string> log;

 private:
  LogSink old_;
};

TEST_F(SettingsFile, PlaceFollowsTheEnvironment) {
  struct Case {
    const char* settings;
    const char* config;
    const char* home;
    const char* expected;
  };
  const std::string home = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
  for (const Case& c :
       {Case{"/a/b.ini", "/c", "/h", "/a/b.ini"}, Case{"", "/c", "/h", "/c/elugraph/settings.ini"},
        Case{"", "relative", "/h", "/h/.config/elugraph/settings.ini"},
        Case{"", "", "/h", "/h/.config/elugraph/settings.ini"}, Case{"", "", "", ""}}) {
    setenv("ELUGRAPH_SETTINGS", c.settings, 1);
    setenv("XDG_CONFIG_HOME", c.config, 1);
    setenv("HOME", c.home, 1);
    EXPECT_EQ(SettingsPath(), c.expected);
  }
  unsetenv("XDG_CONFIG_HOME");
  setenv("HOME", home.c_str(), 1);
}

TEST_F(SettingsFile, RefusalsNameTheFileAndChangeNothing) {
  const std::string before = "[s]\nk=1\n";
  Put(before);
  EXPECT_FALSE(vsetinifile("s", "k", "a\nb", nullptr));
  EXPECT_EQ(Content(), before);
  const std::string utf16("\xFF\xFE[\0s\0]\0", 8);
  Put(utf16);
  EXPECT_FALSE(vsetinifile("s", "k", "2", nullptr));
  EXPECT_EQ(Get("s", "k", "default"), "default");
  EXPECT_EQ(Content(), utf16);
  fs::remove(path);
  fs::create_directory(path);
  EXPECT_FALSE(vsetinifile("s", "k", "2", nullptr));
  EXPECT_EQ(Get("s", "k", "default"), "default");
  // Reading and writing meet the same fault, which is said once.
  ASSERT_EQ(log.size(), 3U);
  for (const std::string& line : log) EXPECT_EQ(line.find(path), 0U) << line;
}

TEST_F(SettingsFile, KeepsLinksOwnerAndPermissions) {
  const std::string target = folder + "/real.ini";
  std::ofstream(target) << "[s]\n";
  const uid_t owner = geteuid() == 0 ? 65534 : geteuid();  // root keeps another's file another's
  ASSERT_EQ(chown(target.c_str(), owner, static_cast<gid_t>(-1)), 0);
  ASSERT_EQ(chmod(target.c_str(), 0600), 0);
  fs::create_directories(fs::path(path).parent_path());
  fs::create_symlink(target, path);
  ASSERT_TRUE(vsetinifile("s", "k", "v", nullptr));
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(Content(), "[s]\nk=v\n");
  EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  struct stat about {};
  ASSERT_EQ(stat(target.c_str(), &about), 0);
  EXPECT_EQ(about.st_uid, owner);
}

TEST_F(SettingsFile, EntriesThatAreAsWantedTouchNothing) {
  Put("[s]\nk = 1\n");
  EXPECT_TRUE(vsetinifile("s", "k", "1", nullptr));
  EXPECT_EQ(Content(), "[s]\nk = 1\n");
}

// Without the lock, or with a read outside it, one writer's entries get lost.
TEST_F(SettingsFile, ConcurrentWritersLoseNothing) {
  constexpr int kWriters = 6;
  constexpr int kEntries = 20;
  Put("; first line\n[shared]\nold=1\n");
  const auto entry = [](int writer, int i) {
    return std::pair(i % 2 == 0 ? "shared" : "own" + std::to_string(writer),
                     "w" + std::to_string(writer) + "_" + std::to_string(i));
  };
  std::vector<pid_t> writers;
  for (int w = 0; w < kWriters; ++w) {
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      bool ok = true;
      for (int i = 0; i < kEntries; ++i) {
        const auto [section, key] = entry(w, i);
        ok = ok && vsetinifile(section.c_str(), key.c_str(), "x", nullptr);
        // A reader never sees a half-written file.
        ok = ok && Get("shared", "old") == "1";
      }
      _exit(ok ? 0 : 1);
    }
    writers.push_back(pid);
  }
  for (const pid_t pid : writers) {
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  const std::string content = Content();
  EXPECT_EQ(content.find("; first line\n[shared]\nold=1\n"), 0U);
  for (int w = 0; w < kWriters; ++w) {
    for (int i = 0; i < kEntries; ++i) {
      const auto [section, key] = entry(w, i);
      EXPECT_EQ(FindEntry(content, section, key).value_or("lost"), "x") << key;
    }
  }
  // Only the file and its lock are left.
  EXPECT_EQ(std::distance(fs::directory_iterator(folder + "/sub"), fs::directory_iterator()), 2);
}

}  // namespace
}  // namespace embedded
