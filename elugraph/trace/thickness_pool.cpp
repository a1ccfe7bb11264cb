#include "elugraph/trace/thickness_pool.h"

namespace {
ThicknessPool mainThickness;
ThicknessPool auxThickness;
}  // namespace

ThicknessPool& GetDefaultLineThickness() { return mainThickness; }
ThicknessPool& GetDefaultLineThicknessAux() { return auxThickness; }
