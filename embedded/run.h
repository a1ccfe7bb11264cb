// A chromatogram record with its owner: channels, time tables, peaks, components and display
// settings of one run, built from arrays.
//
// Times: seconds as the instrument counts them, from the injection; they may start below zero. The
// records count from the run's first sample instead: timeOffsetMs is the start of the earliest
// detector channel, rounded to milliseconds, and the axes and labels add it. A channel that starts
// there (within half a millisecond) and is regular (see FindRegular) is equidistant in the records;
// every other one gets a time table, whose entries are rounded to milliseconds. Peak marks stand at
// sample index × sampling interval, counted from the run's first sample: PeakPlacementErrorSec()
// tells how far that is from the samples' own times, and MakeRegular helps where it is too far.
//
// Ownership: a Run owns everything its records point to, and is deleted with its last reference.
// One thread at a time uses a Run; different Runs may be used by different threads.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "elugraph/host/records.h"
#include "embedded/calibration.h"
#include "embedded/peak_detection.h"

namespace embedded {

enum class TimeUnit { kSeconds, kMinutes, kHours };

// One signal. Lengths that do not fit and values that no record can hold make MakeRun fail.
struct ChannelData {
  // At most 8 bytes of a name fit into a record. A longer one is split at its last fitting blank
  // and the rest becomes the description; without a blank it is abbreviated ("Conduct.") and stands
  // in the description in full. An own description is kept in both cases.
  std::string name;
  std::string unit;  // cut to 8 bytes
  std::string description;

  // The samples: counts with their scale, or else signal values (quantised: see quantise.h).
  std::vector<LONG> counts;
  float unitsPerCount = 1.0F;
  std::vector<double> values;

  // The times: one per sample, none smaller than the one before; or else start and period. A
  // channel without samples and without a period gets a time table when it is acquired.
  std::vector<double> timesSec;
  double startSec = 0.0;
  double periodSec = 0.0;  // above 0
  // What peak marks of a channel with `timesSec` count in; 0: the mean period.
  double markPeriodSec = 0.0;

  // Signal values; rounded to counts. Without them: the smallest sample (auxiliary channels: 0), 0,
  // and the range of the samples.
  std::optional<double> zero;
  std::optional<double> referenceLevel;
  std::optional<double> rangeLow, rangeHigh;

  signed char penStyle = 0;
  signed char visible = 1;
};

struct RunData {
  std::vector<ChannelData> channels;
  std::vector<ChannelData> auxChannels;
  std::vector<ComponentData> components;
  int currentChannel = 0;
  TimeUnit timeUnit = TimeUnit::kMinutes;
  // True: the run is being acquired, and AppendSamples may be called.
  bool acquiring = false;
  // Scaling of the signal axis begins here, in instrument time.
  double scalingStartSec = 0.0;
};

// Start and period of times that lie on a regular grid: each within half a millisecond, or within
// a twentieth of the period, of the grid through the first and the last one. Nothing for fewer than
// two times, or where the times do not advance.
struct Regular {
  double startSec;
  double periodSec;
};
std::optional<Regular> FindRegular(std::span<const double> timesSec);
// Replaces the samples of an irregular channel (`values` with `timesSec`) by linear interpolation
// at regular times from the first one to the last, one median step apart, so that peak marks stand
// where the samples lie. Returns the empty text or a fault, among them gaps that would make it more
// than ten times as long; `data` is then unchanged.
[[nodiscard]] std::string MakeRegular(ChannelData& data);

class Run;
struct ReleaseRun {
  void operator()(const Run* run) const;
};
// Holds one reference.
using RunRef = std::unique_ptr<Run, ReleaseRun>;

// Builds a run. On failure null, and `fault` names the channel and the cause; else it is empty.
RunRef MakeRun(const RunData& data, std::string& fault);

class Run final : public chromatogram {
 public:
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // The live run of a record: of a chromatogram, or of a channel, display settings or calibration
  // pool inside one. Null for any other pointer.
  static Run* Of(const void* record);

  THoldWindow& View() { return view_; }
  void SetTimeUnit(TimeUnit unit) { timeUnit_ = unit; }
  TimeUnit Unit() const { return timeUnit_; }
  double SecondsPerUnit() const;
  const char* UnitText() const;

  // Makes `channel` the current one and shows its peak table. False where there is none.
  bool SetCurrentChannel(int channel);

  // The peak table of a channel, in sample indices of that channel with
  // 0 ≤ start ≤ apex ≤ end < samples; sorted here by start. `keepBaselines` leaves the baseline
  // values as given; otherwise basecalc sets them. Returns the empty text, or which peak is wrong;
  // the table is then unchanged.
  [[nodiscard]] std::string SetPeaks(int channel, std::vector<PeakRecord> table,
                                     bool keepBaselines);
  // Detects the peaks of a channel, in place of its table. False where there is no such channel.
  bool DetectPeaks(int channel, const DetectionOptions& options = {});
  // Index of the sample nearest to an instrument time; 0 for an empty channel.
  LONG IndexAt(int channel, double seconds) const;
  // Instrument time of a sample; past the last sample, of the last one.
  double TimeAt(int channel, LONG index) const;
  // Largest distance between a sample of the channel and index × period, in seconds. Samples in
  // front that only repeat the first time do not count.
  double PeakPlacementErrorSec(int channel) const;

  // Adds samples to a channel that is being acquired. A channel with a time table wants one time
  // per sample; for an equidistant one `timesSec` is empty, or holds the last sample's time alone,
  // from which UpdateCyctimeRT measures the period. Returns the empty text or a fault; nothing is
  // then added.
  [[nodiscard]] std::string AppendSamples(int channel, std::span<const LONG> counts,
                                          std::span<const double> timesSec = {});
  [[nodiscard]] std::string AppendAuxSamples(int channel, std::span<const LONG> counts,
                                             std::span<const double> timesSec);
  // Ends the acquisition.
  void FinishAcquisition();

  // Size of a peak of the current channel, `number` from 1, over its straight baseline: the area
  // (trapezoidal rule, negative parts counted as such) in signal units × seconds, the height at
  // the apex in signal units. The area of peaks that stand wholly within its limits, skimmed off
  // its tail, is not its own. 0 where there is no such peak.
  double PeakArea(int number) const;
  double PeakHeight(int number) const;
  // What `update_quant` takes for the response of a peak: its area, divided by the seconds of the
  // standards' area unit (60 for areas in signal × minutes), or its height.
  void RespondByArea(double secondsOfUnit) { areaUnitSec_ = secondsOfUnit; }
  void RespondByHeight() { areaUnitSec_ = 0.0; }

  // Sets the standards and the curve of a component (index from 0; numeric/calibration_fit.h fits
  // one). The pool's point list grows to the longest list of standards; point i has number i + 1 in
  // it. False where there is no such component, or more than 65535 standards.
  bool SetCalibration(int index, std::vector<Standard> standards, CalibrationCurve curve);
  // The component of a record in this run, or null.
  CalibratedComponent* ComponentOf(const component* record) const;

 private:
  friend class ::chromatogram;
  friend struct ::TChannel;
  friend RunRef MakeRun(const RunData& data, std::string& fault);
  struct Channel;

  Run();
  ~Run();
  std::string AddChannel(const ChannelData& data, bool auxiliary);
  std::string Append(Channel* to, std::span<const LONG> counts, std::span<const double> timesSec);
  void Publish();
  void ShowPeaks(int channel);
  double AreaWithin(const Channel& channel, const PeakRecord& peak) const;
  void Identify();
  void Quantify();
  Channel* At(int channel) const;
  Channel* Current() const { return At(currentChannel_); }
  const std::vector<PeakRecord>& TableFor(const Channel& channel) const;

  mutable int references_ = 1;
  short currentChannel_ = 0;
  TimeUnit timeUnit_ = TimeUnit::kMinutes;
  double areaUnitSec_ = 1.0;  // 0: height
  THoldWindow view_{};
  std::vector<std::unique_ptr<Channel>> channels_;
  std::vector<std::unique_ptr<Channel>> auxChannels_;
  std::vector<std::unique_ptr<CalibratedComponent>> components_;
  std::vector<TChannel*> channelItems_;
  std::vector<TChannel*> auxItems_;
  std::vector<component*> componentItems_;
  std::vector<CalibPointRecord> pointStore_;
  std::vector<CalibPointRecord*> pointItems_;
  std::vector<PeakRecord> shownPeaks_;  // what the record's peak list points to
  int shownChannel_ = 0;
};

}  // namespace embedded
