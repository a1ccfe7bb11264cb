// Switches of the embedded engine.
#pragma once

namespace embedded {

// Whether every trace is drawn a second time by the per-pixel path; off at start.
void SetDeveloperAccess(bool on);

}  // namespace embedded
