// Runs as one line of text, for tables of expected results.
#pragma once

#include <sstream>
#include <string>

#include "app/formats/read_run.h"
#include "embedded/run.h"

namespace app {

// "name|unit start+period: values" for times on a grid, "name|unit t=times: values" for others.
inline void DescribeTrace(const Trace& trace, std::ostream& text) {
  text << trace.name << '|' << trace.unit << ' ';
  if (trace.timesS.empty()) {
    text << trace.startS << '+' << trace.periodS << ':';
  } else if (const auto grid = embedded::FindRegular(trace.timesS)) {
    text << grid->startSec << '+' << grid->periodSec << ':';
  } else {
    text << "t=";
    for (const double time : trace.timesS) text << time << ',';
    text << ':';
  }
  for (const double value : trace.values) text << ' ' << value;
}

// Traces in sequence, then "aux" and the auxiliary ones, then "peak CHANNEL name start<apex<end"
// with "base a b" and "=amount unit" where the peak has them.
inline std::string Describe(const RunData& run) {
  std::ostringstream text;
  const char* between = "";
  for (const Trace& trace : run.channels) {
    text << between;
    DescribeTrace(trace, text);
    between = "; ";
  }
  for (const Trace& trace : run.auxiliary) {
    text << "; aux ";
    DescribeTrace(trace, text);
  }
  const auto put = [&text](const std::optional<double>& value) {
    value ? text << *value : text << '?';
  };
  for (const Peak& peak : run.peaks) {
    text << "; peak " << peak.channel << ' ' << peak.name << ' ';
    put(peak.startS);
    text << '<' << peak.apexS << '<';
    put(peak.endS);
    if (peak.baselineStart) text << " base " << *peak.baselineStart << ' ' << *peak.baselineEnd;
    if (peak.amount) text << " =" << *peak.amount << ' ' << peak.amountUnit;
  }
  return text.str();
}

// What the contents are read as, or the error.
inline std::string ReadText(std::string_view bytes, const ReadOptions& options = {}) {
  RunData run;
  std::string error;
  return ReadRunBytes("run", bytes, options, run, error) ? Describe(run) : error;
}

}  // namespace app
