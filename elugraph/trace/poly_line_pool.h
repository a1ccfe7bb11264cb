// Collects the points of a trace and hands them to the device in runs.
#pragma once

#include "elugraph/host/export.h"
#include "platform/gfx/gdi.h"

#pragma pack(push, 1)

// Device coordinates throughout. The pool drops points equal to their predecessor, cuts the path at
// the band (clip->top ≤ y ≤ clip->bottom, both edges inside; x is never cut) with the exact
// crossing points, and draws a run whenever it is full or the path leaves the band. The next run
// starts where the last one ended.
//
// `clip` and `hdc` are borrowed. Feed points, call Draw once more for the remainder, then Reset or
// destroy. The virtual operations may be overridden; the pool draws through Draw only.
class ELUGRAPH_API PolyLinePool {
 public:
  // `requested` points per run, at most 1000; a negative number gives 1. Below 2 every segment is a
  // run of its own. A null `clip` never cuts. Without memory the pool swallows its points.
  PolyLinePool(int requested, const RECT* clip, HDC hdc);
  PolyLinePool(const PolyLinePool&) = delete;
  PolyLinePool& operator=(const PolyLinePool&) = delete;

  // Forgets the points held; inside the band again.
  virtual void Reset();
  virtual void operator()(int x, int y);
  // Outputs the points held and keeps them. False with fewer than two, or where the device refuses.
  virtual bool Draw();
  virtual ~PolyLinePool();

  // In the shapes of MoveToEx and LineTo: both just add the point, a move starts no new run.
  BOOL AddMoveTo(HDC, int x, int y, POINT*) {
    (*this)(x, y);
    return TRUE;
  }
  BOOL AddLineTo(HDC, int x, int y) {
    (*this)(x, y);
    return TRUE;
  }

  POINT* points;  // owned, room for max(capacity, 2); null where memory ran out
  LONG count;
  LONG capacity;
  bool clipped;  // the last point received lies outside the band
  const RECT* clip;
  HDC hdc;

 private:
  // Replaces the last point by the path's crossing of `limit`, draws, and goes on with that point.
  ELUGRAPH_INTERNAL void EndRunAt(LONG limit);
  // Takes up the second of the two points held, the first of which lies outside the band.
  ELUGRAPH_INTERNAL void GoOnOutside();
  // Draws the points held and begins the next run.
  ELUGRAPH_INTERNAL void StartRunWith(POINT first);
};

#pragma pack(pop)

static_assert(sizeof(PolyLinePool) == 4 * sizeof(void*) + 9);
