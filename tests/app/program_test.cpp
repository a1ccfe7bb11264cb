// The program as a process: exit statuses, messages, and what it leaves on the disk.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "tests/support/folder_fixture.h"

namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Outcome {
  int status;
  std::string out;
  std::string error;
};

// A folder of its own with some files of data, in which the program runs.
class Program : public FolderFixture {
 protected:
  void SetUp() override {
    FolderFixture::SetUp();
    fs::create_directory(folder_ / "work");
    std::ofstream(Work("good.csv")) << "Time (min),UV (mAU)\n0,1\n1,5\n2,2\n3,2.5\n";
    std::ofstream(Work("bad.csv")) << "Time (min),UV (mAU)\n0,1\n1\n2,2\n";
    std::ofstream(Work("huge.csv")) << "0,1e60\n1,2\n";
    std::ofstream(Work("empty.csv"));
    before_ = Listing();
  }

  fs::path Work(const std::string& name) const { return folder_ / "work" / name; }
  std::set<std::string> Listing() const {
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder_ / "work")) {
      names.insert(fs::relative(entry.path(), folder_ / "work").string());
    }
    return names;
  }
  // What the program left behind.
  std::set<std::string> NewFiles() const {
    const std::set<std::string> now = Listing();
    std::set<std::string> added;
    std::set_difference(now.begin(), now.end(), before_.begin(), before_.end(),
                        std::inserter(added, added.end()));
    return added;
  }
  Outcome Run(const std::string& arguments, const std::string& before = {}) const {
    const std::string command = "cd '" + (folder_ / "work").string() + "' && " + before +
                                "'" ELUGRAPH_PROGRAM "' " + arguments + " >../stdout 2>../stderr";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Contents(folder_ / "stdout"),
            Contents(folder_ / "stderr")};
  }

  std::set<std::string> before_;
};

bool IsPng(const fs::path& path) { return Contents(path).starts_with("\x89PNG\r\n\x1A\n"); }

// Width and height as the picture's header has them.
std::pair<int, int> SizeOfPng(const fs::path& path) {
  const std::string bytes = Contents(path);
  const auto number = [&bytes](std::size_t at) {
    int value = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
      value = value * 256 + static_cast<unsigned char>(bytes.at(i));
    }
    return value;
  };
  return {number(16), number(20)};
}

TEST_F(Program, RefusesInOneLineAndLeavesNothing) {
  const struct {
    const char* arguments;
    const char* error;  // the line, or how it begins where it ends in "…"
  } cases[] = {
      {"bad.csv", "bad.csv:3: expected 2 columns, found 1"},
      {"render good.csv bad.csv -o x.png", "bad.csv:3: expected 2 columns, found 1"},
      {"empty.csv", "empty.csv: is empty"},
      {"none.csv", "none.csv: No such file or directory"},
      {".", ".: is a folder, not a file"},
      {"render good.csv huge.csv -o x.png", "huge.csv: channel 1: …"},
      {"render good.csv -o none/x.png", "none/x.png: No such file or directory"},
      {"render good.csv -o .", ".: Is a directory"},
      {"render good.csv -o ./good.csv", "./good.csv: is an input file; it is not replaced"},
      {"render good.csv --size 600x9999999999", "--size: '600x9999999999' is not …"},
      {"render good.csv --from soon", "--from: 'soon' is not a time such as 2.5min or 90s"},
      {"render good.csv --from 2 --to 60s", "nothing lies between …"},
      {"render good.csv --scale 20", "--scale: makes the picture smaller than 64 or larger …"},
      {"render good.csv --fill 5-2", "--fill: '5-2' is not all, none, a peak's number or …"},
      {"render good.csv --signal-range 5:1", "--signal-range: '5:1' is not LOW:HIGH"},
      {"render good.csv --channels 7", "'7' names none of the 1 channels"},
      {"render good.csv --current x", "'x' names none of the 1 channels"},
      {"render good.csv --aux-channels 1", "'1' names none of the 0 channels"},
      {"render good.csv --peak-table bad.csv", "bad.csv:3: expected 2 columns, found 1"},
      {"render good.csv --axis-wavelengths 200", "--axis-wavelengths: '200' is not FROM:TO or …"},
      {"map good.csv -o x.png", "good.csv: a map needs 3 wavelengths or more; 0 of 1 channels …"},
      {"map -o x.png --wavelengths 200", "--wavelengths: '200' is not LOW:HIGH"},
      {"map -o x.png --size 16000x16000", "--size: a map has at most 67108864 pixels"},
      {"map -o good.csv good.csv", "good.csv: a map needs …"},
      {"path --save x.csv --path bad.csv", "bad.csv:1: the header has no column 'end_s'"},
      {"path --save none/x.csv", "none/x.csv: cannot be written"},
      {"render good.csv --shiny", "The following argument was not expected: --shiny …"},
  };
  const std::string data = Contents(Work("good.csv"));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.arguments);
    const Outcome outcome = Run(c.arguments);
    EXPECT_EQ(outcome.status, 2);
    std::string expected = std::string("elugraph: ") + c.error;
    if (expected.ends_with("…")) {
      expected.resize(expected.size() - 3);
      EXPECT_EQ(outcome.error.substr(0, expected.size()), expected);
    } else {
      EXPECT_EQ(outcome.error, expected + "\n");
    }
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(NewFiles(), std::set<std::string>());
  }
  EXPECT_EQ(Contents(Work("good.csv")), data);
}

TEST_F(Program, RendersToTheNamedFileOrTheOutputFolder) {
  const Outcome outcome = Run("render good.csv -o picture.png --size 300x200 --from 30s --average");
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.out, "picture.png\n");
  EXPECT_EQ(NewFiles(), std::set<std::string>{"picture.png"});
  ASSERT_TRUE(IsPng(Work("picture.png")));
  EXPECT_EQ(SizeOfPng(Work("picture.png")), std::pair(300, 200));
  EXPECT_EQ(Run("good.csv").out, "out/good.png\n");
  EXPECT_TRUE(IsPng(Work("out/good.png")));
  EXPECT_EQ(NewFiles(), (std::set<std::string>{"out", "out/good.png", "picture.png"}));
}

TEST_F(Program, WithoutArgumentsDrawsTheSameDemonstrationEachTime) {
  const Outcome outcome = Run("");
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  const fs::path picture = Work(outcome.out.substr(0, outcome.out.find('\n')));
  ASSERT_TRUE(IsPng(picture)) << outcome.out;
  const std::string first = Contents(picture);
  Run("");
  EXPECT_EQ(Contents(picture), first);
}

TEST_F(Program, PeaksComeFromATable) {
  std::ofstream(Work("good.peaks.csv"))
      << "RT (min);Start;End;Name;Amount (mg/l)\n1,0;0,5;1,6;Caffeine;2,5\n";
  EXPECT_EQ(Run("good.csv --peak-labels amount").out,
            "note: peaks are those of good.peaks.csv\nout/good.png\n");
  const std::string picture = Contents(Work("out/good.png"));
  std::ofstream(Work("other.csv")) << "1=,bla\nHeader=,\"R.T.\",\"Name\"\n1=,1.0,Other\n";
  EXPECT_EQ(Run("good.csv --peak-table other.csv").out, "out/good.png\n");
  EXPECT_NE(Contents(Work("out/good.png")), picture);
  std::ofstream(Work("good.peaks.csv")) << "RT;Start\n1;2\n";
  EXPECT_EQ(Run("good.csv").error,
            "elugraph: good.peaks.csv:2: the peak's start, time and end are not in this order\n");
}

TEST_F(Program, AssumptionsAreSaid) {
  std::ofstream(Work("plain.txt")) << "0 1\n1 2\nEND\n";
  EXPECT_EQ(Run("plain.txt").out,
            "note: text after the table, from line 3, is not used\n"
            "note: the file does not state its time unit; min is assumed\n"
            "out/plain.png\n");
  EXPECT_EQ(Run("plain.txt --time-unit s").out,
            "note: text after the table, from line 3, is not used\nout/plain.png\n");
}

TEST_F(Program, MapsArePictures) {
  const Outcome outcome = Run("map -o map.png --size 320x240 --from 2 --wavelengths 220:300");
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.out, "map.png\n");
  EXPECT_EQ(SizeOfPng(Work("map.png")), std::pair(320, 240));
  std::ofstream(Work("plain.txt")) << "1 2 3\n4 5 6\n7 8 9\n";
  EXPECT_EQ(Run("map plain.txt -o m.png --axis-wavelengths 200:220 --axis-times 0:1min").out,
            "m.png\n");
}

TEST_F(Program, WindowsNeedADisplay) {
  for (const char* arguments : {"map", "path --save x.csv"}) {
    const Outcome outcome = Run(arguments, "env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER ");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.error.find("-o draws"), std::string::npos) << outcome.error;
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    EXPECT_EQ(NewFiles(), std::set<std::string>());
  }
}

// Pictures are no reason to write settings: what the library does at the end of a process is held
// back. Nor do settings that cannot be read or written keep anyone from drawing.
TEST_F(Program, SettingsStayAsTheyAre) {
  const std::string mine = "; mine\n[CHROM_2D_COLORS]\nFORMULA=log\nCOLOR00=255\nCOLOR02=9\n";
  std::ofstream(Work("mine.ini")) << mine;
  before_.insert("mine.ini");
  for (const char* file : {"mine.ini", "new.ini", "good.csv/new.ini"}) {
    for (const char* arguments : {"good.csv -o x.png", "map -o x.png --colours ember"}) {
      SCOPED_TRACE(file);
      const Outcome outcome = Run(arguments, std::string("ELUGRAPH_SETTINGS='") + file + "' ");
      EXPECT_EQ(outcome.status, 0);
      EXPECT_EQ(outcome.error, "");
      EXPECT_EQ(NewFiles(), std::set<std::string>{"x.png"});
      EXPECT_EQ(Contents(Work("mine.ini")), mine);
    }
  }
}

TEST_F(Program, HelpAndVersionAreAnswers) {
  for (const char* arguments :
       {"--help", "render --help", "map --help", "path --help", "--version"}) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("elugraph"), std::string::npos) << arguments;
    EXPECT_EQ(outcome.error, "");
  }
}

// Every command of the readme that draws one of its pictures, drawing elsewhere.
TEST_F(Program, ReadmeCommandsDraw) {
  std::ifstream readme(ELUGRAPH_SOURCE_DIR "/README.md");
  for (const char* folder : {"docs", "examples"}) {
    fs::copy(fs::path(ELUGRAPH_SOURCE_DIR) / folder, Work(folder), fs::copy_options::recursive);
  }
  fs::remove_all(Work("docs/pictures"));
  fs::create_directory(Work("docs/pictures"));
  std::size_t pictures = 0;
  for (std::string line; std::getline(readme, line);) {
    if (!line.starts_with("`./run ") || line.find(" -o ") == std::string::npos) continue;
    const Outcome outcome = Run(line.substr(7, line.size() - 8));
    EXPECT_EQ(outcome.status, 0) << line << "\n" << outcome.error;
    EXPECT_TRUE(IsPng(Work(line.substr(line.rfind(' ') + 1, line.size() - line.rfind(' ') - 2))));
    ++pictures;
  }
  EXPECT_GE(pictures, 3U);
}

#ifdef ELUGRAPH_EXAMPLE
TEST_F(Program, ExampleDrawsItsRun) {
  const std::string picture = Work("example.png").string();
  ASSERT_EQ(std::system((ELUGRAPH_EXAMPLE " '" + picture + "'").c_str()), 0);
  ASSERT_TRUE(IsPng(picture));
  EXPECT_EQ(SizeOfPng(picture), std::pair(1000, 560));
  EXPECT_GT(Contents(picture).size(), 10000U) << "one without the run is smaller";
}
#endif

}  // namespace
