// Matrices of the embedded engine: one block, rows behind each other.
#include <cstdlib>
#include <cstring>
#include <new>

#include "elugraph/host/engine.h"

namespace {

void* Block(std::size_t bytes) {
  void* block = std::calloc(bytes > 0 ? bytes : 1, 1);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

std::size_t Bytes(const TMatrix& matrix) {
  return static_cast<std::size_t>(matrix.rowCount) * static_cast<std::size_t>(matrix.columnCount) *
         sizeof(double);
}

}  // namespace

// Negative sizes count as 0. The elements start as 0.
TMatrix::TMatrix(int rows, int columns, TVectorT::VTYPE type)
    : rowPointers(nullptr),
      rowCount(rows > 0 ? rows : 0),
      columnCount(columns > 0 ? columns : 0),
      elementType(type) {
  // The array has a place more than rows: it always leads to the block.
  rowPointers =
      static_cast<void**>(Block((static_cast<std::size_t>(rowCount) + 1) * sizeof(void*)));
  char* elements = nullptr;
  try {
    elements = static_cast<char*>(Block(Bytes(*this)));
  } catch (...) {
    std::free(rowPointers);
    throw;
  }
  const std::size_t rowBytes = static_cast<std::size_t>(columnCount) * sizeof(double);
  for (LONG row = 0; row <= rowCount; ++row) {
    rowPointers[row] = elements + static_cast<std::size_t>(row) * rowBytes;
  }
}

TMatrix::~TMatrix() {
  std::free(rowPointers[0]);
  std::free(rowPointers);
}

void TMatrix::Zer() { std::memset(rowPointers[0], 0, Bytes(*this)); }
