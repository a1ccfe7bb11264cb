// Field offsets that the record interface fixes. They hold where pointers have four bytes.
#pragma once

#include <cstddef>

#include "elugraph/host/records.h"

namespace layout_check {

inline constexpr bool k32Bit = sizeof(void*) == 4;

#define ELUGRAPH_AT(record, field, offset) \
  static_assert(!k32Bit || offsetof(record, field) == (offset), #record "." #field)

ELUGRAPH_AT(TChannel, name, 0x00);
ELUGRAPH_AT(TChannel, unit, 0x09);
ELUGRAPH_AT(TChannel, unitsPerCount, 0x12);
ELUGRAPH_AT(TChannel, defaultFullScale, 0x1a);
ELUGRAPH_AT(TChannel, referenceLevel, 0x22);
ELUGRAPH_AT(TChannel, zero, 0x26);
ELUGRAPH_AT(TChannel, sampleCount, 0x2e);
ELUGRAPH_AT(TChannel, penStyle, 0x37);
ELUGRAPH_AT(TChannel, samplePeriod, 0x44);
ELUGRAPH_AT(TChannel, visible, 0x48);
ELUGRAPH_AT(TChannel, lastDrawnIndex, 0x55);
ELUGRAPH_AT(TChannel, lastDrawnX, 0x59);
ELUGRAPH_AT(TChannel, apexLimit, 0x5d);
ELUGRAPH_AT(TChannel, timeBase, 0x69);
ELUGRAPH_AT(TChannel, samples, 0x6d);
ELUGRAPH_AT(TChannel, times, 0x71);
ELUGRAPH_AT(TChannel, description, 0x85);
ELUGRAPH_AT(TChannel, rangeLow, 0x89);
ELUGRAPH_AT(TChannel, rangeHigh, 0x8d);

static_assert(sizeof(PeakRecord) == 32);
ELUGRAPH_AT(PeakRecord, start, 0x00);
ELUGRAPH_AT(PeakRecord, apex, 0x04);
ELUGRAPH_AT(PeakRecord, end, 0x08);
ELUGRAPH_AT(PeakRecord, component, 0x0e);
ELUGRAPH_AT(PeakRecord, amount, 0x10);
ELUGRAPH_AT(PeakRecord, baselineStart, 0x14);
ELUGRAPH_AT(PeakRecord, baselineEnd, 0x18);

ELUGRAPH_AT(CalibPool, quantityType, 0x09);
ELUGRAPH_AT(CalibPool, mode, 0x10);
ELUGRAPH_AT(CalibPool, flags, 0x11);
ELUGRAPH_AT(CalibPool, referenceComponent, 0x12);
ELUGRAPH_AT(CalibPool, originMode, 0x15);
ELUGRAPH_AT(CalibPool, suppressZeroX, 0x2a);
ELUGRAPH_AT(CalibPool, suppressZeroY, 0x2b);
ELUGRAPH_AT(CalibPool, swapAxes, 0x2c);
ELUGRAPH_AT(CalibPool, bandLevel, 0x30);
ELUGRAPH_AT(CalibPool, points, 0x42);
ELUGRAPH_AT(CalibPool, components, 0x53);

ELUGRAPH_AT(component, name, 0x08);
ELUGRAPH_AT(component, flags, 0x26);
ELUGRAPH_AT(component, originMode, 0x27);
ELUGRAPH_AT(component, suppressZeroX, 0x49);
ELUGRAPH_AT(component, suppressZeroY, 0x4a);
ELUGRAPH_AT(component, swapAxes, 0x4b);
ELUGRAPH_AT(component, statistics, 0x62);

ELUGRAPH_AT(chromatogram, sampleCount, 0xab);
ELUGRAPH_AT(chromatogram, channelCount, 0xaf);
ELUGRAPH_AT(chromatogram, peakCount, 0xb1);
ELUGRAPH_AT(chromatogram, useBackColor, 0xd0);
ELUGRAPH_AT(chromatogram, state, 0xe1);
ELUGRAPH_AT(chromatogram, sampleInterval, 0xf5);
ELUGRAPH_AT(chromatogram, timeOffsetMs, 0x103);
ELUGRAPH_AT(chromatogram, scalingStartMin, 0x2ea);
ELUGRAPH_AT(chromatogram, channels, 0x4d5);
ELUGRAPH_AT(chromatogram, auxChannels, 0x4e2);
ELUGRAPH_AT(chromatogram, peaks, 0x50b);
ELUGRAPH_AT(chromatogram, calibration, 0x517);
ELUGRAPH_AT(chromatogram, runDurationMs, 0x58d);
ELUGRAPH_AT(chromatogram, driftZeroIndex, 0x1963);
ELUGRAPH_AT(chromatogram, currentComponent, 0x198e);
ELUGRAPH_AT(chromatogram, window, 0x19aa);

ELUGRAPH_AT(THoldWindow, t0, 0x00);
ELUGRAPH_AT(THoldWindow, t1, 0x08);
ELUGRAPH_AT(THoldWindow, fullScale, 0x18);
ELUGRAPH_AT(THoldWindow, x0, 0x20);
ELUGRAPH_AT(THoldWindow, plotBottom, 0x24);
ELUGRAPH_AT(THoldWindow, channelStep, 0x28);
ELUGRAPH_AT(THoldWindow, zeroFraction, 0x30);
ELUGRAPH_AT(THoldWindow, flags, 0x3b);
ELUGRAPH_AT(THoldWindow, colours, 0x45);
ELUGRAPH_AT(THoldWindow, thickness, 0x79);
ELUGRAPH_AT(THoldWindow, zeroLift, 0x89);
ELUGRAPH_AT(THoldWindow, plotWidth, 0x8d);
ELUGRAPH_AT(THoldWindow, plotHeight, 0x91);
ELUGRAPH_AT(THoldWindow, unitsPerPixel, 0x95);
ELUGRAPH_AT(THoldWindow, timePerPixel, 0x9d);
ELUGRAPH_AT(THoldWindow, auxMin, 0xa5);
ELUGRAPH_AT(THoldWindow, auxMax, 0xad);
ELUGRAPH_AT(THoldWindow, auxColours, 0xc5);
ELUGRAPH_AT(THoldWindow, auxThickness, 0xf9);
// No pointers inside: the same offsets everywhere.
static_assert(offsetof(THoldWindow, auxThickness) == 0xf9 && sizeof(THoldWindow) == 0x103);

#undef ELUGRAPH_AT

}  // namespace layout_check
