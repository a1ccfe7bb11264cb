// A host whose calibration answers what the test says, counts its references, and fails on demand.
#pragma once

#include <functional>
#include <vector>

#include "elugraph/host/records.h"

struct ScriptedPoint {
  double x;
  double y;
  bool excluded = false;
};

struct ScriptedHost {
  std::vector<ScriptedPoint> points;
  std::function<double(double)> curve = [](double) { return 0.0; };
  int references = 0;
  int calls = 0;        // of calibration operations
  int failingCall = 0;  // this call raises a failure; 0: none

  void Call() {
    if (++calls == failingCall) throw calls;
  }
};

// The one host of the process; the operations of CalibPool and chromatogram reach it.
ScriptedHost& TheHost();
