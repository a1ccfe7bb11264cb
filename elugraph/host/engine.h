// Operations of the host's chromatogram engine that do not belong to a record, and its matrices.
#pragma once

#include "elugraph/host/records.h"

// Title of a quantity axis; `quantityType` 0 … 3.
ELUGRAPH_HOST const char* CompTypeTxt(int quantityType);
// True: every trace is drawn a second time, per pixel and in red.
ELUGRAPH_HOST bool developer_access();
// Index of the smallest and of the largest sample from `first` to `last`, both included.
ELUGRAPH_HOST LONG minimum(const LONG* samples, LONG first, LONG last);
ELUGRAPH_HOST LONG maximum(const LONG* samples, LONG first, LONG last);

class TVectorT {
 public:
  enum VTYPE { kDouble = 0x508 };
};

// rows × columns elements, reached as rows[r][c]. The array of row pointers is the first member.
class TMatrix {
 public:
  ELUGRAPH_HOST TMatrix(int rows, int columns, TVectorT::VTYPE type);
  TMatrix(const TMatrix&) = delete;
  TMatrix& operator=(const TMatrix&) = delete;
  ELUGRAPH_HOST ~TMatrix();
  // All elements 0.
  ELUGRAPH_HOST void Zer();

  void** rowPointers;
  LONG rowCount;
  LONG columnCount;
  TVectorT::VTYPE elementType;
};

class TDoubleMatrix : public TMatrix {
 public:
  TDoubleMatrix(int rows, int columns) : TMatrix(rows, columns, TVectorT::kDouble) {}
  double* operator[](int row) { return static_cast<double*>(rowPointers[row]); }
  // Solves divisor × X = this; this becomes X. With the identity on the left, X is the inverse.
  // May raise a failure; non-zero on success.
  ELUGRAPH_HOST int operator/=(TDoubleMatrix& divisor);
};
