// From tables of components and standards to the names and amounts of peaks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "app/amount_options.h"
#include "app/demo_run.h"
#include "app/formats/read_run.h"
#include "app/formats/text.h"
#include "app/formats/window_table.h"
#include "app/host_amounts.h"
#include "app/host_run.h"
#include "app/picture.h"
#include "tests/support/folder_fixture.h"

namespace app {
namespace {

namespace fs = std::filesystem;

class Amounts : public FolderFixture {
 protected:
  // "" or the message, without the folder.
  template <typename Action>
  std::string Complaint(Action action) const {
    try {
      action();
      return {};
    } catch (const FileError& error) {
      const std::string text = error.what();
      const std::string prefix = folder_.string() + "/";
      return text.starts_with(prefix) ? text.substr(prefix.size()) : text;
    }
  }
};

// A host run of the current channel's detected or given peaks, quantified.
embedded::RunRef Quantified(RunData& run, std::string& error) {
  embedded::RunRef host = HostRun(run, error);
  if (host == nullptr || !Calibrate(run, *host, error)) return nullptr;
  SetPeaks(run, *host, PeakSource::kAuto, 1);
  host->update_quant();
  return host;
}

// By name, of the peaks that have one.
std::map<std::string, double> ByName(const embedded::Run& host) {
  std::map<std::string, double> amounts;
  for (LONG i = 0; i < host.peaks.count; ++i) {
    const PeakRecord& peak = *host.peaks.At(i);
    if (peak.component == 0) continue;
    amounts[host.calibration.components.At(peak.component - 1)->name] =
        static_cast<double>(peak.amount);
  }
  return amounts;
}

TEST_F(Amounts, WindowsInTheirUnits) {
  const auto read = ReadWindows(Write("w.csv", "Component;RT [s];Tolerance\nA;90;3\nB;1200;6,5\n"));
  ASSERT_EQ(read.size(), 2U);
  EXPECT_EQ(read[0].name, "A");
  EXPECT_EQ(read[0].retentionSec, 90);
  EXPECT_EQ(read[1].halfWindowSec, 6.5);
}

TEST_F(Amounts, BadTablesAreNamedWithPlaceAndCause) {
  const struct {
    const char* text;
    const char* message;
  } windows[] = {
      {"name,time,window\nA,1,0.1\n,2,0.1\n", "t.csv:3: a component without a name"},
      {"name,time,window\nA,1,0\n", "t.csv:2: A: the window is not above 0"},
      {"name,time\nA,1\nB,2\n", "t.csv: has no column 'window'; its columns are: name, time"},
  };
  for (const auto& c : windows) {
    EXPECT_EQ(Complaint([&] { ReadWindows(Write("t.csv", c.text)); }), c.message);
  }
  AmountTexts texts;
  texts.standards = {Write("a.csv", "amount,area\n1,10\n2,20\n"),
                     Write("h.csv", "amount,height\n1,10\n2,20\n")};
  EXPECT_EQ(Complaint([&] { ReadQuantification(texts); }),
            "h.csv: responses of another kind than in " + texts.standards[0] +
                " (--response says which they are)");
  texts.standards = {Write("one.csv", "component,amount,area\nA,1,10\nB,1,10\nB,2,20\n")};
  EXPECT_EQ(Complaint([&] { ReadQuantification(texts); }),
            "one.csv: A: 1 standards for a curve of 2 coefficients");
}

// What the responses are comes from the option or else from the column; a table of one component
// may leave it to the file's name.
TEST_F(Amounts, ResponsesAreAreasOrHeights) {
  const struct {
    const char* header;
    const char* option;
    double unitS;
    double slope;
  } cases[] = {
      {"amount,area (mAU*min),height", "auto", 60, 10},
      {"amount,height,area", "auto", 1, 3},
      {"dose,Height (mAU),other", "auto", 0, 10},
      {"amount,area,height", "height", 0, 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.header) + " " + c.option);
    AmountTexts texts;
    texts.response = c.option;
    texts.standards = {Write("Caffeine.csv", std::string(c.header) + "\n1,10,3\n2,20,6\n")};
    const Quantification read = ReadQuantification(texts);
    EXPECT_EQ(read.areaUnitS, c.unitS);
    ASSERT_EQ(read.calibrations.size(), 1U);
    EXPECT_EQ(read.calibrations[0].name, "Caffeine");
    EXPECT_NEAR(read.calibrations[0].curve.coefficients.at(1), c.slope, 1e-9);
  }
}

// The generated peaks have areas of 640, 1450 and 980 mAU × s.
TEST_F(Amounts, GeneratedPeaksHaveTheAmountsOfTheirAreas) {
  AmountTexts texts;
  texts.windows = Write("w.csv", "name,time,window\nX,3.4,0.2\nY,6.3,0.3\nZ,9.7,0.3\nnone,1,0.1\n");
  texts.standards = {Write("s.csv",
                           "component,amount,area\nx,0,40\nx,10,640\n"
                           "y,0,0\ny,29,2900\nmissing,0,0\nmissing,1,1\n")};
  RunData run = DemoRun();
  run.quantification = ReadQuantification(texts);
  std::string error;
  const embedded::RunRef host = Quantified(run, error);
  ASSERT_NE(host, nullptr) << error;
  const auto amounts = ByName(*host);
  ASSERT_EQ(amounts.size(), 3U);
  EXPECT_NEAR(amounts.at("X"), 10, 0.1);
  EXPECT_NEAR(amounts.at("Y"), 14.5, 0.15);
  EXPECT_EQ(BestLabels(*host), PeakLabels::kNameAndAmount);
  EXPECT_TRUE(NoteUnknownAmounts(run, *host));
  EXPECT_EQ(run.notes,
            (std::vector<std::string>{"no peak is named as these calibrated components: missing",
                                      "no amounts are known of these peaks: Z"}));
}

// A window overrules the names of a file, for its own component only.
TEST_F(Amounts, WindowsAndNamesOfAFile) {
  RunData run = DemoRun();
  const struct {
    const char* name;
    double apexS;
  } peaks[] = {{"caffeine", 203}, {"other", 248}, {"", 378}};
  for (const auto& p : peaks) {
    Peak peak;
    peak.name = p.name;
    peak.apexS = p.apexS;
    peak.amount = p.apexS;
    run.peaks.push_back(peak);
  }
  run.quantification.windows = {{"Caffeine", 380, 10}};
  std::string error;
  const embedded::RunRef host = Quantified(run, error);
  ASSERT_NE(host, nullptr) << error;
  EXPECT_EQ(ByName(*host), (std::map<std::string, double>{{"Caffeine", 378}, {"other", 248}}));
  EXPECT_EQ(BestLabels(*host), PeakLabels::kName);

  run.quantification.calibrations = {{"nobody", "s.csv", {}, {}}};
  EXPECT_EQ(Quantified(run, error), nullptr);
  EXPECT_EQ(error, "s.csv: no peak has the name of a component: nobody");
}

// Two peaks lie in the window; the labels are rewritten, for there are no amounts. The second peak
// must not get the name when the view identifies again.
TEST_F(Amounts, RewrittenLabelsStay) {
  RunData run = DemoRun();
  run.quantification.windows = {{"A", 4.13 * 60, 30}};
  DisplayOptions options;
  options.widthPx = 500;
  options.heightPx = 300;
  std::uint64_t hashes[2];
  for (const PeakLabels labels : {PeakLabels::kName, PeakLabels::kNameAndAmount}) {
    options.labels = labels;
    RunData copy = run;
    gfx::Surface surface;
    std::string error;
    ASSERT_TRUE(DrawPicture(copy, options, surface, error)) << error;
    hashes[labels == PeakLabels::kNameAndAmount] = surface.Hash();
  }
  EXPECT_EQ(hashes[0], hashes[1]);
}

// Solutions of known strength, measured and found again within 5 % through standards of the same
// series, which are known by their largest values.
TEST_F(Amounts, MeasuredSolutions) {
  const char* data = std::getenv("ELUGRAPH_DATA");
  if (data == nullptr) GTEST_SKIP() << "ELUGRAPH_DATA names no folder of measured data";
  const std::map<double, double> strengths{{1909, 0.5},  {3755, 1},  {8429, 3}, {16551, 6},
                                           {4977, -1.5}, {11245, -4}};  // -: to be found
  std::map<double, double> areas;
  for (const auto& file : fs::recursive_directory_iterator(data)) {
    RunData run;
    std::string error;
    if (file.path().extension() != ".csv" || file.file_size() > 20'000 ||
        !ReadRun(file.path().string(), {}, run, error) || run.channels.size() != 1) {
      continue;
    }
    const std::vector<double>& values = run.channels[0].values;
    const auto strength = strengths.find(*std::max_element(values.begin(), values.end()));
    if (values.size() != 601 || strength == strengths.end()) continue;
    run.quantification.windows = {{"lactose", 13.56 * 60, 20}};
    const embedded::RunRef host = Quantified(run, error);
    ASSERT_NE(host, nullptr) << error;
    for (int k = 1; k <= host->peakCount; ++k) {
      if (host->peaks.At(k - 1)->component != 0) areas[strength->second] = host->PeakArea(k);
    }
  }
  ASSERT_EQ(areas.size(), strengths.size());
  std::string table = "component,amount,area\n";
  for (const auto& [amount, area] : areas) {
    if (amount > 0)
      table += "lactose," + std::to_string(amount) + "," + std::to_string(area) + "\n";
  }
  AmountTexts texts;
  texts.standards = {Write("s.csv", table)};
  const auto curve = ReadQuantification(texts).calibrations.at(0).curve;
  EXPECT_NEAR(curve.AmountAt(areas[-1.5]), 1.5, 0.075);
  EXPECT_NEAR(curve.AmountAt(areas[-4]), 4, 0.2);
}

}  // namespace
}  // namespace app
