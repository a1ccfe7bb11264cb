// What dragging and splitting do to a path.
#pragma once

#include "elugraph/chrom2d/si_path.h"

// Every handle of a path has a code, which is an int.
inline constexpr int kMaxSegments = 0x7FFFFFFF / 3;

// Gives an empty path its one segment, or leaves it empty without memory.
void AddWholeRun(SIPath& path, int channelCount);

// Ends the path at the first segment that ends after `end`, which becomes the open one.
void CutPath(SIPath& path, double end);

// Lets a new segment, with the band of the one that goes on behind it, end at t. Returns its index,
// −1 without memory. A segment behind all others (the path has no open end) gets the default band.
int SplitPath(SIPath& path, double t, int channelCount);

// Moves the end of segment k, which must exist, to t. Boundaries that it passes, or comes closer to
// than one step, merge with it: to the right its own segment covers theirs, to the left the
// outermost of them takes its place. No boundary stays within the first step of the run. Returns
// the segment that ends at t now, −1 where there is none any more.
//
// Distances are those of doubles: of boundaries one step apart, some are a last bit closer.
int MoveBoundary(SIPath& path, int k, double t, double timeStep);
