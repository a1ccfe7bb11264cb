// What happens when the library comes into a process and when it leaves it.
//
// The host's operations are called here before the program's own static objects exist, and again
// after they are gone.
#include <cstdlib>

#include "elugraph/chrom2d/color_dlg.h"
#include "elugraph/chrom2d/color_scale.h"
#include "elugraph/chrom2d/editor_resources.h"
#include "elugraph/host/kernel.h"
#include "elugraph/resources/library_module.h"
#include "elugraph/trace/thickness_pool.h"
#include "platform/kernel/kernel.h"

namespace {

// Nothing may leave the load, not even what a host's own report raises.
void Report(const char* step) {
  try {
    exceptout("%s catched", step);
  } catch (...) {
  }
}

// A failure costs its step.
void Step(const char* what, void (*step)()) {
  try {
    step();
  } catch (...) {
    Report(what);
  }
}

void TakeModule() { DisableThreadLibraryCalls(LibraryModule()); }

void Unload() { Step("SaveColorSettings", SaveColorSettings); }

bool Load() {
  Step("LibraryModule", TakeModule);
  Step("BuildColorTable", BuildColorTable);
  Step("LoadColorSettings", LoadColorSettings);
  // Runs behind everything that is registered later.
  std::atexit(Unload);
  Step("CheckColorDialogTemplate", CheckColorDialogTemplate);
  Step("LoadEditorCursors", LoadEditorCursors);
  Step("CheckEditorTemplate", CheckEditorTemplate);
  Step("ReadDragThresholds", ReadDragThresholds);
  Step("BuildDefaultLineThickness", BuildDefaultLineThickness);
  return true;
}

[[maybe_unused]] const bool loaded = Load();

}  // namespace
