// The editor for integration paths on the map.
#pragma once

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/si_path.h"

// Opens the editor on a copy of `path` and returns its window at once; null where it could not be
// made. `path` must stay valid until the window has closed, and gets the edited items where it
// closes with OK. A run that is null or has no spectral channels shows no map to edit on.
ELUGRAPH_API HWND CallChromatogramIntegrationPathEdit(HWND parent, chromatogram* chrom,
                                                      SIPath& path);
