#include "elugraph/chrom2d/editor_resources.h"

#include <optional>

#include "elugraph/resources/library_module.h"

namespace {

constexpr unsigned kTemplate = 14150;

// Constant before any code runs: the load may come before other static objects are made.
constinit EditorResources editor{};
constinit std::optional<ResIdCheck> editorTemplate;

}  // namespace

const EditorResources& Editor() { return editor; }

const ResIdCheck& EditorTemplate() {
  if (!editorTemplate) CheckEditorTemplate();
  return *editorTemplate;
}

void LoadEditorCursors() {
  const HMODULE module = LibraryModule();
  editor.splitH = LoadCursorA(module, "IPATH_SPLITH");
  editor.splitV = LoadCursorA(module, "IPATH_SPLITV");
  editor.cross = LoadCursorA(module, "IPATH_CROSS");
}

void CheckEditorTemplate() { editorTemplate.emplace(kTemplate, LibraryModule(), RT_DIALOG); }

void ReadDragThresholds() {
  editor.dragX = GetSystemMetrics(SM_CXDRAG);
  editor.dragY = GetSystemMetrics(SM_CYDRAG);
}
