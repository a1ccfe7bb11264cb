// Time × wavelength grid of heights from the spectral channels of a run.
#pragma once

#include <cstddef>
#include <vector>

#include "elugraph/heightmap/wave_fit.h"
#include "elugraph/host/export.h"
#include "elugraph/host/records.h"

// A channel is spectral where its name starts with a number other than 0: its wavelength. A grid
// has one row per wavelength step, row 0 at the lowest wavelength and the last one a step below the
// highest, and one column per time step over all samples. Heights are counts above the channels'
// reference levels, truncated toward zero and limited to 32 bits: along wavelength the value of a
// local polynomial fit, along time linear between the means of equal bins of samples, of which
// there are at most as many as columns. Samples after the last whole bin do not count. A channel
// that states fewer samples than the run has height 0 in the rest; one that states none must hold
// as many as the run.
//
// The chromatogram is borrowed, must outlive the map's use of it and not change meanwhile. No
// operation raises a failure; the floating-point rounding mode is as before after each.
class ELUGRAPH_API HeightMap {
 public:
  explicit HeightMap(chromatogram* run);
  ~HeightMap();

  // Drops grid and bins and lists the spectral channels of `run`. False, with an empty list, where
  // it is null, has none, or memory runs out.
  bool Set(chromatogram* run);
  // Computes a grid of columns × rows by fits of order + 2 coefficients (`order` at most 2; fewer
  // where there are not more channels than that). The grid of the same arguments is kept. True
  // where there is a grid: all 0 for a run without samples. False for fewer than two coefficients,
  // wavelengths less than 1e-9 apart, or an order above 2, the grid being as before; and, with no
  // grid left, for extents below 1, where memory runs out, and where the host's matrices fail.
  bool DoMap(LONG columns, LONG rows, LONG order);
  // Drops grid and bins; the list of channels stays.
  void Reset();

  // Lowest and highest wavelength; either pointer may be null. False without spectral channels.
  bool GetWaves(double* low, double* high);
  WORD WaveCount() const;
  // Entries ascend by wavelength; null at and beyond WaveCount.
  const WaveEntry* Wave(WORD index) const;
  // The first of the row's cells; null outside the grid.
  LONG* Row(int row);
  int Rows() const { return rows_; }
  int Columns() const { return columns_; }
  // Smallest and largest height; either pointer may be null. False without a grid.
  bool GetValueRange(LONG* minimum, LONG* maximum);

 private:
  // Where a column lies between its bin and the next, 0 … 1.
  struct ColumnPlace {
    std::size_t bin;
    double fraction;
  };

  ELUGRAPH_INTERNAL void Downsample();
  ELUGRAPH_INTERNAL void DownsampleChannel(std::size_t wave, LONG first, LONG end, LONG perBin);
  ELUGRAPH_INTERNAL void FillGrid();
  ELUGRAPH_INTERNAL std::vector<ColumnPlace> PlaceColumns() const;
  ELUGRAPH_INTERNAL void FitBins(WaveWindow window, const double* weights,
                                 std::vector<double>& heights) const;

  chromatogram* run_ = nullptr;
  int rows_ = 0;
  int columns_ = 0;
  int terms_ = 0;  // coefficients of the grid's fits; 0: no grid
  LONG minimum_ = 0;
  LONG maximum_ = 0;
  double lowest_ = 0;
  double highest_ = 0;
  std::vector<LONG> grid_;  // row after row
  std::vector<WaveEntry> waves_;
  int binCount_ = 0;
  std::vector<LONG> bins_;  // bin after bin, a value per entry of waves_
};
