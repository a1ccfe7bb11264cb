// The records of the host's chromatogram engine, as the library reads them.
//
// All records are byte-packed. In a 32-bit process every named field lies at the offset that the
// interface fixes (checked by layout_check.h); in a 64-bit process the same structures carry
// native pointers and the offsets behind a pointer shift. Fields named `hostN` belong to the host.
// Fields may lie at any address: copy them where a reference would be taken (std::min and the
// like).
//
// Units: counts are raw 32-bit detector counts; times in integers are milliseconds, in floating
// point seconds unless a name says otherwise.
#pragma once

#include "elugraph/host/export.h"
#include "elugraph/trace/thickness_pool.h"
#include "platform/gfx/types.h"

struct THoldWindow;

#pragma pack(push, 1)

// The engine's list of element pointers. The list owns nothing.
template <typename T>
struct PointerList {
  T** items;
  LONG host0;
  LONG count;

  // How many elements there are to ask for: 0 where the list has no array.
  LONG Size() const { return items != nullptr && count > 0 ? count : 0; }
  // null outside 0 … count − 1, and where the list has no array.
  T* At(LONG index) const { return index >= 0 && index < Size() ? items[index] : nullptr; }
};

// The engine's list of records in one array.
template <typename T>
struct RecordList {
  LONG host0;
  LONG count;
  T* items;

  T* At(LONG index) const {
    return items != nullptr && index >= 0 && index < count ? items + index : nullptr;
  }
};

// One detector or auxiliary channel.
struct TChannel {
  char name[9];         // 0x00 spectral channels: the wavelength in nm as the leading number
  char unit[9];         // 0x09
  float unitsPerCount;  // 0x12 signal units per raw count
  BYTE host16[4];
  LONG defaultFullScale;  // 0x1a counts
  BYTE host1e[4];
  LONG referenceLevel;  // 0x22 counts
  LONG zero;            // 0x26 baseline, counts
  BYTE host2a[4];
  LONG sampleCount;  // 0x2e
  BYTE host32[5];
  signed char penStyle;  // 0x37 PS_ value of the trace
  BYTE host38[12];
  float samplePeriod;   // 0x44 seconds per sample of this channel
  signed char visible;  // 0x48 0: not drawn. Auxiliary list: exactly 1 counts for the range too
  BYTE host49[12];
  LONG lastDrawnIndex;  // 0x55 written by drawing: last sample drawn
  LONG lastDrawnX;      // 0x59 written by drawing: last column drawn
  LONG apexLimit;       // 0x5d apex lines are drawn only below this sample
  BYTE host61[8];
  LONG timeBase;        // 0x69 ms, subtracted from the entries of `times`
  const LONG* samples;  // 0x6d sampleCount counts
  const LONG* times;    // 0x71 sampleCount absolute times in ms; null: equidistant
  BYTE host75[16];
  const char* description;  // 0x85
  LONG rangeLow;            // 0x89 counts
  LONG rangeHigh;           // 0x8d counts

  // Seconds per sample, ≤ 0 where the channel has none of its own.
  ELUGRAPH_HOST float GetCyctimeRT();
  // Brings the period up to date; asked for where the run's state is 5.
  ELUGRAPH_HOST void UpdateCyctimeRT();
};

// One peak of the peak table; sample indices refer to the channel's samples.
struct PeakRecord {
  LONG start;
  LONG apex;
  LONG end;
  WORD host0c;
  WORD component;  // number n is item n - 1 of the component list; 0: none
  float amount;
  LONG baselineStart;  // counts
  LONG baselineEnd;    // counts
  LONG host1c;
};

namespace ChromColor {
enum _default_color_ { none = 0 };
}

// A colour scheme. Its contents are the engine's.
class ORVWCOLORS {
 public:
  ELUGRAPH_HOST COLORREF back() const;
  ELUGRAPH_HOST COLORREF alterground() const;
  ELUGRAPH_HOST COLORREF axis() const;
  ELUGRAPH_HOST COLORREF baseline() const;
  // `index` 0 … 7.
  ELUGRAPH_HOST COLORREF chan(int index, ChromColor::_default_color_ variant) const;

  COLORREF entries[13];
};

// Confidence statistics of a calibration curve; made and owned by the engine. The library uses the
// fourth and the eighth operation.
class CurveStatistics {
 public:
  virtual void Host1() = 0;
  virtual void Host2() = 0;
  virtual void Host3() = 0;
  // Non-zero: the statistics are there.
  virtual short Available() = 0;
  virtual void Host5() = 0;
  virtual void Host6() = 0;
  virtual void Host7() = 0;
  // `halfWidth` gets half the width of the confidence band at x, in y units. `level` is a
  // probability between 0 and 1.
  virtual void BandHalfWidth(double level, double x, double statWeight, double& halfWidth) = 0;

 protected:
  ~CurveStatistics() = default;
};

struct component {
  BYTE host00[8];
  char name[30];    // 0x08
  BYTE flags;       // 0x26 see below
  BYTE originMode;  // 0x27
  BYTE host28[33];
  BYTE suppressZeroX;  // 0x49
  BYTE suppressZeroY;  // 0x4a
  BYTE swapAxes;       // 0x4b
  BYTE host4c[22];
  CurveStatistics* statistics;  // 0x62 may be null

  static constexpr BYTE kQuantityType = 0x03;
  static constexpr BYTE kOwnQuantityType = 0x04;
  static constexpr BYTE kOwnDisplay = 0x20;
};

// A calibration point; the rest of the record is the engine's.
struct CalibPointRecord {
  WORD number;
};

struct CalibPool {
  BYTE host00[9];
  BYTE quantityType;  // 0x09 low 2 bits
  BYTE host0a[6];
  BYTE mode;                // 0x10
  BYTE flags;               // 0x11 kShowReference, kShowBand
  WORD referenceComponent;  // 0x12
  BYTE host14;
  BYTE originMode;  // 0x15
  BYTE host16[20];
  BYTE suppressZeroX;  // 0x2a
  BYTE suppressZeroY;  // 0x2b
  BYTE swapAxes;       // 0x2c
  BYTE host2d[3];
  float bandLevel;  // 0x30 probability
  BYTE host34[14];
  PointerList<CalibPointRecord> points;  // 0x42
  BYTE host4e[5];
  PointerList<component> components;  // 0x53
  BYTE host5f[23];

  static constexpr BYTE kShowReference = 0x02;
  static constexpr BYTE kShowBand = 0x04;

  // The component at `index`; the first one for an index outside the list, null in an empty list.
  component* ComponentAt(LONG index) const {
    component* found = components.At(index);
    return found != nullptr ? found : components.At(0);
  }

  ELUGRAPH_HOST bool PointIsExcluded(component* of, int point);
  ELUGRAPH_HOST double PointToX(component* of, int point);
  ELUGRAPH_HOST double PointToY(component* of, int point);
  ELUGRAPH_HOST double XtoYtab(component* of, double x);
  ELUGRAPH_HOST double XtoStatWeight(component* of, double x);
};

// One run. Made and owned by the engine; the library holds counted references.
class chromatogram {
 public:
  BYTE host000[0xab];
  LONG sampleCount;   // 0x0ab per channel; 0: nothing to scale or map
  WORD channelCount;  // 0x0af
  WORD peakCount;     // 0x0b1 peaks are numbered from 1
  BYTE host0b3[29];
  BYTE useBackColor;  // 0x0d0 0: the scheme's alternate ground
  BYTE host0d1[16];
  BYTE state;  // 0x0e1 5: periods are asked to be brought up to date; 0: allows drift subtraction
  BYTE host0e2[19];
  float sampleInterval;  // 0x0f5 seconds
  BYTE host0f9[10];
  LONG timeOffsetMs;  // 0x103
  BYTE host107[483];
  float scalingStartMin;  // 0x2ea minutes
  BYTE host2ee[487];
  PointerList<TChannel> channels;  // 0x4d5
  BYTE host4e1;
  PointerList<TChannel> auxChannels;  // 0x4e2
  BYTE host4ee[29];
  RecordList<PeakRecord> peaks;  // 0x50b
  CalibPool calibration;         // 0x517
  ULONG runDurationMs;           // 0x58d
  BYTE host591[0x13d2];
  LONG driftZeroIndex;  // 0x1963 sample at which the drift line is zero
  BYTE host1967[39];
  LONG currentComponent;  // 0x198e index
  BYTE host1992[24];
  THoldWindow* window;  // 0x19aa

  ELUGRAPH_HOST void AddRef() const;
  ELUGRAPH_HOST void Release() const;
  // The record, or null where the pointer is not a live one.
  ELUGRAPH_HOST static chromatogram* pIs(const void* record);
  ELUGRAPH_HOST bool bHasRawData();
  // Seconds.
  ELUGRAPH_HOST double ActualDuration();
  // Index of the current channel.
  ELUGRAPH_HOST short& curchan();
  // Seconds to the display time unit.
  ELUGRAPH_HOST double units(double seconds);
  // Retention time in seconds of peak `number`, from 1.
  ELUGRAPH_HOST double rtime(int number);
  // Sets the zero of the current channel from the sample at `index`.
  ELUGRAPH_HOST void zero(LONG index);
  // Brings the baselines of the channel's peaks up to date.
  ELUGRAPH_HOST void basecalc(int channel);
  ELUGRAPH_HOST void recognize();
  ELUGRAPH_HOST void update_quant();
  ELUGRAPH_HOST void recalctime();
  // Which of the two stacks a channel's name beside its trace belongs to: channels below this index
  // fill the one that grows downward, the others the one that grows upward.
  ELUGRAPH_HOST int splitIndex();
};

// Display settings of the window that shows a run. Pixel fields are written by the view scaling.
struct THoldWindow {
  double t0;  // 0x00 seconds at the plot's left edge
  double t1;  // 0x08 seconds at its right edge
  BYTE host10[8];
  double fullScale;     // 0x18 signal units over the plot height
  LONG x0;              // 0x20 written: column of t0
  LONG plotBottom;      // 0x24 written
  double channelStep;   // 0x28 distance of zero lines, fraction of the plot height
  double zeroFraction;  // 0x30 lift of the lowest zero line, fraction of the plot height
  BYTE host38[3];
  WORD flags;  // 0x3b kLabelMode and the bits below
  BYTE host3d[8];
  ORVWCOLORS colours;       // 0x45
  ThicknessPool thickness;  // 0x79 percent of the main font height
  BYTE host83[6];
  LONG zeroLift;         // 0x89 written: pixels
  LONG plotWidth;        // 0x8d written: pixels
  LONG plotHeight;       // 0x91 written: pixels
  double unitsPerPixel;  // 0x95 written
  double timePerPixel;   // 0x9d written: seconds
  double auxMin;         // 0xa5
  double auxMax;         // 0xad
  BYTE hostb5[16];
  ORVWCOLORS auxColours;       // 0xc5
  ThicknessPool auxThickness;  // 0xf9

  static constexpr WORD kLabelMode = 0x0007;  // 0 none, 1 number, 2 time, 3 name, 4 name and amount
  static constexpr WORD kSubtractDrift = 0x0040;
  static constexpr WORD kPeakTicks = 0x0080;
  static constexpr WORD kLabelAll = 0x0100;
  static constexpr WORD kSignalStrip = 0x0200;
  static constexpr WORD kRelativeAxis = 0x0400;
  static constexpr WORD kGrid = 0x0800;
  static constexpr WORD kNameList = 0x1000;
  static constexpr WORD kExact = 0x2000;
  static constexpr WORD kBaselines = 0x4000;
  static constexpr WORD kPerPixel = 0x8000;

  // Name of the display time unit.
  ELUGRAPH_HOST const char* xunitsTxt() const;
};

#pragma pack(pop)
