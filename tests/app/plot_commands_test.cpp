// The subcommands that draw tables, run inside the test's process.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "app/program.h"
#include "tests/support/folder_fixture.h"

namespace {

namespace fs = std::filesystem;

class PlotCommands : public FolderFixture {
 protected:
  void SetUp() override {
    FolderFixture::SetUp();
    Write("xy.csv", "t,a,b,note\n0,1,2,x\n1,3,,y\n2,2,5,z\n");
    Write("standards.csv",
          "component,amount,response,excluded\n"
          "A,1,12,\nA,2,22,no\nA,3,320,yes\nA,4,42,0\nB,1,5,\nB,2,n.a.,\nB,3,9,\n");
    Write("turned.csv", "excluded,area,dose\n0,10,1\n0,20,2\n0,30,3\n");
    Write("odd.csv", "amount,response,excluded\n1,2,maybe\n2,3,\n3,4,\n");
  }

  // Runs the program on a file, with output to out.png. Its messages go into `said`.
  int Run(const std::string& command, const std::string& file, const std::string& options) {
    fs::remove(File("out.png"));
    std::vector<std::string> words{"elugraph",      command,  file,     "-o",
                                   File("out.png"), "--size", "300x200"};
    std::istringstream more(options);
    for (std::string word; more >> word;) words.push_back(word);
    std::vector<const char*> argv;
    for (const std::string& word : words) argv.push_back(word.c_str());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = app::RunProgram(static_cast<int>(argv.size()), argv.data());
    said = testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
    // A picture appears exactly when the command succeeds.
    EXPECT_EQ(fs::exists(File("out.png")), status == app::kDone) << said;
    return status;
  }

  std::string said;
};

struct CommandCase {
  const char* command;
  const char* file;
  const char* options;  // parted by blanks
  int status;
  const char* said;  // a part of it
};

TEST_F(PlotCommands, DrawOrSayWhyNot) {
  const CommandCase cases[] = {
      {"xy", "xy.csv", "", 0, "out.png"},
      {"xy", "xy.csv", "--x a --y B --y 1", 0, "out.png"},
      {"xy", "xy.csv", "--zoom 0.5:1.5 --zoom-y -1:9", 0, "out.png"},
      {"xy", "xy.csv", "--zoom 5:6", 2, "5:6 lies outside the data"},
      {"xy", "xy.csv", "--x t --x a --y a", 2, "--x: one column"},
      {"xy", "xy.csv", "--y note", 2, "xy.csv:2: note: 'x' is not a number"},
      {"xy", "xy.csv", "--y 0", 2, "xy.csv: has no column '0'"},
      {"xy", "xy.csv", "--y c", 2, "xy.csv: has no column 'c'; its columns are: t, a, b, note"},
      {"calibration", "standards.csv", "--band 0.95", 0,
       "A: response = 2 + 10 x amount, r2 1.000000"},
      {"calibration", "standards.csv", "--component B --swap", 0, "B: response = 3 + 2 x amount"},
      {"calibration", "standards.csv", "--through-origin --weights 1/x2 --axes zero", 0,
       "A: response = 0 + 11.16666667 x amount"},
      {"calibration", "standards.csv", "--component B --fit quadratic", 2, "standards.csv: B: "},
      {"calibration", "standards.csv", "--band 1", 2, "--band: must be below 1"},
      {"calibration", "standards.csv", "--component B --band 0.9", 2, "B: no band"},
      {"calibration", "turned.csv", "", 0, " + 10 x amount"},
      {"calibration", "odd.csv", "", 2, "odd.csv:2: excluded: 'maybe' is neither yes nor no"},
  };
  for (const CommandCase& c : cases) {
    EXPECT_EQ(Run(c.command, File(c.file), c.options), c.status) << c.said;
    EXPECT_NE(said.find(c.said), std::string::npos) << "wanted: " << c.said << "\ngot: " << said;
  }
}

TEST_F(PlotCommands, EveryOptionChangesThePicture) {
  std::ostringstream table;
  table << "Run_UV1\t\tRun_UV2\t\tRun_Cond\t\tRun_Temp\t\n"
           "min\tmAU\tmin\tmAU\tmin\tmS/cm\tmin\tC\n";
  for (int i = 0; i < 1500; ++i) {
    const double minutes = i / 100.0;
    const double peaks = 50 * std::exp(-std::pow((minutes - 4) / 0.1, 2)) +
                         90 * std::exp(-std::pow((minutes - 9) / 0.1, 2));
    for (const double value : {peaks + minutes, 0.5 * peaks, 3 * minutes, 30.0}) {
      table << minutes << '\t' << value << '\t';
    }
    table << '\n';
  }
  const std::string file = Write("run.txt", table.str());
  const auto picture = [&](const char* options) {
    EXPECT_EQ(Run("render", file, options), 0) << said;
    std::ostringstream bytes;
    bytes << std::ifstream(File("out.png")).rdbuf();
    return bytes.str();
  };
  const std::string plain = picture("");
  EXPECT_EQ(picture(""), plain);
  for (const char* options : {"--scale 1.5",
                              "--font-size 9",
                              "--from 1",
                              "--to 12",
                              "--signal-range 0:50",
                              "--channels 2",
                              "--current 2",
                              "--aux-channels all",
                              "--aux front",
                              "--aux off",
                              "--channel-step 0",
                              "--peaks none",
                              "--peak-labels none",
                              "--peak-labels number",
                              "--no-baselines",
                              "--peak-ticks",
                              "--fill none",
                              "--fill 2",
                              "--markers all",
                              "--markers selected --select 2",
                              "--grid",
                              "--no-signal-axis",
                              "--relative-axis",
                              "--names list",
                              "--frame",
                              "--drift",
                              "--average",
                              "--colours classic-dark",
                              "--axis-unit s"}) {
    EXPECT_NE(picture(options), plain) << options;
  }
}

// Least squares of measured standards, from the folder's own description.
TEST_F(PlotCommands, MeasuredStandards) {
  const char* data = std::getenv("ELUGRAPH_DATA");
  if (data == nullptr) GTEST_SKIP() << "ELUGRAPH_DATA names no folder of measured runs";
  struct {
    double intercept, slope, rSquared;
    int freedom;
    bool found = false;
  } fits[] = {{-1.614413, 1.545989, 0.992115, 22},
              {2.92381, 1.981714, 0.992647, 28},
              {2480.867, 9661.939, 0.984869, 8}};
  for (const auto& file : fs::recursive_directory_iterator(data)) {
    if (file.path().extension() != ".csv" || file.file_size() > 4096) continue;
    if (Run("calibration", file.path().string(), "--band 0.95") != app::kDone) continue;
    double intercept = 0, slope = 0, rSquared = 0, deviation = 0;
    int freedom = 0;
    const std::size_t minus = said.find("= - ");  // as a number
    if (minus != std::string::npos) said.replace(minus, 4, "= -");
    std::sscanf(said.c_str() + said.find("response = "),
                "response = %lf + %lf x amount, r2 %lf, residual deviation %lf, %d", &intercept,
                &slope, &rSquared, &deviation, &freedom);
    for (auto& fit : fits) {
      const auto same = [](double a, double b) { return std::abs(a - b) <= 1e-6 * std::abs(b); };
      fit.found = fit.found || (same(intercept, fit.intercept) && same(slope, fit.slope) &&
                                same(rSquared, fit.rSquared) && freedom == fit.freedom);
    }
  }
  for (const auto& fit : fits) EXPECT_TRUE(fit.found) << fit.slope;
}

}  // namespace
