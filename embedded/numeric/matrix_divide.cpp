// Matrix division by a rank-revealing QR decomposition.
#include <Eigen/Dense>
#include <stdexcept>

#include "elugraph/host/engine.h"

namespace {
using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

Eigen::Map<RowMajor> View(TDoubleMatrix& matrix) {
  return {static_cast<double*>(matrix.rowPointers[0]), matrix.rowCount, matrix.columnCount};
}
}  // namespace

// Normal matrices of high powers have elements of very different size: rows and columns are scaled
// first, so that the rank is judged on comparable numbers. Householder QR with column pivoting
// (Golub, Van Loan: Matrix Computations, 4th ed., section 5.4.2). Throws std::invalid_argument
// where the sizes do not fit and std::domain_error for a singular divisor; this is then unchanged.
int TDoubleMatrix::operator/=(TDoubleMatrix& divisor) {
  if (divisor.rowCount != divisor.columnCount || rowCount != divisor.rowCount) {
    throw std::invalid_argument("matrix division: sizes do not fit");
  }
  if (rowCount == 0) return 1;
  const RowMajor original = View(divisor);
  const Eigen::VectorXd rowSize = original.cwiseAbs().rowwise().maxCoeff();
  if (!original.allFinite() || rowSize.minCoeff() <= 0.0) {
    throw std::domain_error("matrix division: singular");
  }
  const Eigen::VectorXd rowScale = rowSize.cwiseInverse();
  const RowMajor byRows = rowScale.asDiagonal() * original;
  const Eigen::VectorXd columnSize = byRows.cwiseAbs().colwise().maxCoeff();
  if (columnSize.minCoeff() <= 0.0) throw std::domain_error("matrix division: singular");
  const Eigen::VectorXd columnScale = columnSize.cwiseInverse();
  const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> decomposition(byRows *
                                                                  columnScale.asDiagonal());
  if (!decomposition.isInvertible()) throw std::domain_error("matrix division: singular");
  const Eigen::MatrixXd right = rowScale.asDiagonal() * View(*this);
  View(*this) = columnScale.asDiagonal() * decomposition.solve(right);
  return 1;
}
