#include "elugraph/trace/thickness_pool.h"

namespace {
constinit ThicknessPool mainThickness;
constinit ThicknessPool auxThickness;
}  // namespace

void BuildDefaultLineThickness() {
  mainThickness = ThicknessPool();
  auxThickness = ThicknessPool();
}

ThicknessPool& GetDefaultLineThickness() { return mainThickness; }
ThicknessPool& GetDefaultLineThicknessAux() { return auxThickness; }
