#include "elugraph/chromview/peak_label.h"

#include "elugraph/chromview/host_text.h"

namespace {

// Label modes.
constexpr int kTime = 2;
constexpr int kName = 3;
constexpr int kNameAndAmount = 4;

// Null for a peak without a component.
const component* ComponentOf(const chromatogram& chrom, const PeakRecord* peak) {
  if (peak == nullptr || peak->component == 0) return nullptr;
  return chrom.calibration.ComponentAt(peak->component - 1);
}

}  // namespace

PeakLabel::PeakLabel(chromatogram* chrom, int number) {
  if (chrom == nullptr) return;
  const PeakRecord* peak = chrom->peaks.At(number - 1);
  const component* known = ComponentOf(*chrom, peak);
  int mode = chrom->window != nullptr ? chrom->window->flags & THoldWindow::kLabelMode : 0;
  if (mode > kTime && known == nullptr) mode = 0;
  vertical_ = mode >= kTime && mode <= kNameAndAmount;
  switch (mode) {
    case kTime:
      sprintf(text_, "%.2f", chrom->units(chrom->rtime(number)));
      break;
    case kName:
      sprintf(text_, "%s", FixedText(known->name).c_str());
      break;
    case kNameAndAmount:
      sprintf(text_, "%s %.3f", FixedText(known->name).c_str(), static_cast<double>(peak->amount));
      break;
    default:
      sprintf(text_, "%d", number);
      break;
  }
}
