// Making device contexts on drivers, and looking into the layer from tests and hosts.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/gfx/driver.h"

namespace gfx {

// The context owns the driver; DeleteDC ends both. A null driver gives a null handle. The driver's
// text engine must outlive every memory context made compatible with this one.
HDC CreateContext(std::unique_ptr<Driver> driver);
// Null for a handle that is not a live context. A memory context's driver changes with its bitmap.
Driver* DriverOf(HDC hdc);

// Pens, brushes, fonts, bitmaps, regions and contexts that exist now, stock objects not counted.
// An object deleted while selected counts until it is let go.
std::size_t LiveObjects();

// A context that draws on `surface`, which must outlive it.
HDC CreateRasterContext(Surface& surface, TextEngine& text);
// A context that appends one line per drawing effect to `journal`, which must outlive it. Its
// extent is 32767 × 32767.
HDC CreateJournalContext(std::string& journal);
// A context that draws nothing, for timing what is in front of a driver. Measures as a journal.
HDC CreateNullContext();

// Writes a 24-bit PNG (ISO/IEC 15948) with the given resolution in dots per inch (0: not stated).
// The file appears whole or not at all. On failure returns false and puts the cause into `error`.
bool SavePng(const Surface& surface, const std::string& path, std::string& error, double dpi = 0);

// What contexts made from "DISPLAY", and memory contexts without a partner, measure with. The
// default is SystemText(), which null stands for in both directions. Returns the previous engine.
TextEngine* SetDisplayText(TextEngine* text);

}  // namespace gfx
