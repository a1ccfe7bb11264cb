// What all path editors of the process share, set once by the library's load.
#pragma once

#include "elugraph/host/controls.h"

struct EditorResources {
  HCURSOR splitH;  // over a boundary, which moves sideways
  HCURSOR splitV;  // over a band line, which moves up and down
  HCURSOR cross;   // elsewhere on the map
  int dragX;       // a handle is hit up to this many pixels beside it
  int dragY;
};

// All null and 0 before the load.
const EditorResources& Editor();
// The editor's dialog template.
const ResIdCheck& EditorTemplate();

// Steps of the load.
void LoadEditorCursors();
// Looks the template up; a missing one is reported, and no editor opens.
void CheckEditorTemplate();
// For the layout scale at that time.
void ReadDragThresholds();
