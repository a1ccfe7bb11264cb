// The library's own module.
#pragma once

#include "platform/ui/user.h"

// The module of the library's resources, registered at the first call: the cursors "IPATH_SPLITH",
// "IPATH_SPLITV" and "IPATH_CROSS".
HMODULE LibraryModule();
