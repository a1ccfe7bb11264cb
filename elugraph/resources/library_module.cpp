#include "elugraph/resources/library_module.h"

#include "platform/ui/resources.h"

HMODULE LibraryModule() {
  static const HMODULE module = ui::RegisterModule("elugraph");
  return module;
}
