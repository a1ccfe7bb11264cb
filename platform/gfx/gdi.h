// Drawing on device contexts: the functions, constants and structures that plotting code calls.
//
// Coordinates are logical units of the context's map mode; with MM_TEXT (the default) they are
// device pixels, y growing downward. The right and bottom edges of rectangles are excluded, and the
// last point of a line is not drawn. A handle that is null, deleted, or of the wrong kind is
// refused: the call answers null, 0 or FALSE (or what its comment says) and changes nothing; so is
// a null pointer to something that the call needs. Only rectangular regions exist. 8-bit texts are
// UTF-8; a byte that does not belong to a well-formed sequence is taken as Latin-1. The layer is
// used by one thread at a time.
#pragma once

#include "platform/gfx/types.h"

// ---- constants ----------------------------------------------------------------------------------

inline constexpr int MM_TEXT = 1;   // one unit is one device pixel, y down
inline constexpr int MM_TWIPS = 6;  // one unit is 1/1440 inch, y up

inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

inline constexpr UINT TA_NOUPDATECP = 0;
inline constexpr UINT TA_UPDATECP = 1;
inline constexpr UINT TA_LEFT = 0;
inline constexpr UINT TA_RIGHT = 2;
inline constexpr UINT TA_CENTER = 6;
inline constexpr UINT TA_TOP = 0;
inline constexpr UINT TA_BOTTOM = 8;
inline constexpr UINT TA_BASELINE = 24;
inline constexpr UINT GDI_ERROR = 0xFFFFFFFFU;
inline constexpr COLORREF CLR_INVALID = 0xFFFFFFFFU;

inline constexpr int PS_SOLID = 0;
inline constexpr int PS_DASH = 1;
inline constexpr int PS_DOT = 2;
inline constexpr int PS_DASHDOT = 3;
inline constexpr int PS_DASHDOTDOT = 4;
inline constexpr int PS_NULL = 5;
inline constexpr int PS_INSIDEFRAME = 6;

inline constexpr UINT BS_SOLID = 0;
inline constexpr UINT BS_NULL = 1;
inline constexpr UINT BS_HOLLOW = BS_NULL;

inline constexpr UINT OBJ_PEN = 1;
inline constexpr UINT OBJ_BRUSH = 2;
inline constexpr UINT OBJ_DC = 3;
inline constexpr UINT OBJ_FONT = 6;
inline constexpr UINT OBJ_BITMAP = 7;
inline constexpr UINT OBJ_REGION = 8;
inline constexpr UINT OBJ_MEMDC = 10;

inline constexpr int WHITE_BRUSH = 0;
inline constexpr int BLACK_BRUSH = 4;
inline constexpr int NULL_BRUSH = 5;
inline constexpr int HOLLOW_BRUSH = NULL_BRUSH;
inline constexpr int WHITE_PEN = 6;
inline constexpr int BLACK_PEN = 7;
inline constexpr int NULL_PEN = 8;
inline constexpr int SYSTEM_FONT = 13;

// Results of region and clip calls.
inline constexpr int ERROR = 0;
inline constexpr int NULLREGION = 1;
inline constexpr int SIMPLEREGION = 2;
inline constexpr int COMPLEXREGION = 3;

inline constexpr UINT DIB_RGB_COLORS = 0;
inline constexpr DWORD BI_RGB = 0;
inline constexpr DWORD SRCCOPY = 0x00CC0020;

inline constexpr int LOGPIXELSX = 88;
inline constexpr int LOGPIXELSY = 90;
inline constexpr int HORZRES = 8;
inline constexpr int VERTRES = 10;

inline constexpr LONG FW_NORMAL = 400;
inline constexpr LONG FW_BOLD = 700;
inline constexpr BYTE ANSI_CHARSET = 0;
inline constexpr BYTE DEFAULT_CHARSET = 1;
inline constexpr BYTE OUT_TT_ONLY_PRECIS = 7;
inline constexpr BYTE CLIP_DEFAULT_PRECIS = 0;
inline constexpr BYTE ANTIALIASED_QUALITY = 4;
inline constexpr int LF_FACESIZE = 32;

inline constexpr int COLOR_BACKGROUND = 1;
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWFRAME = 6;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_3DFACE = COLOR_BTNFACE;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_3DSHADOW = COLOR_BTNSHADOW;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
inline constexpr int COLOR_BTNHIGHLIGHT = 20;
inline constexpr int COLOR_3DHIGHLIGHT = COLOR_BTNHIGHLIGHT;
inline constexpr int COLOR_3DDKSHADOW = 21;
inline constexpr int COLOR_3DLIGHT = 22;

// ---- structures ---------------------------------------------------------------------------------

// lfHeight > 0 is a cell height, < 0 a character (em) height, 0 a default of 12 units at 96 dpi.
// lfEscapement is the angle of the text line against the x axis, counter-clockwise, in 1/10 degree.
struct LOGFONTA {
  LONG lfHeight;
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  char lfFaceName[LF_FACESIZE];
};
using LOGFONT = LOGFONTA;
static_assert(sizeof(LOGFONTA) == 60);

struct LOGPEN {
  UINT lopnStyle;
  POINT lopnWidth;  // x is the width, y is not used
  COLORREF lopnColor;
};

struct LOGBRUSH {
  UINT lbStyle;
  COLORREF lbColor;
  UINT_PTR lbHatch;
};

struct TEXTMETRICA {
  LONG tmHeight;
  LONG tmAscent;
  LONG tmDescent;
  LONG tmInternalLeading;
  LONG tmExternalLeading;
  LONG tmAveCharWidth;
  LONG tmMaxCharWidth;
  LONG tmWeight;
  LONG tmOverhang;
  LONG tmDigitizedAspectX;
  LONG tmDigitizedAspectY;
  BYTE tmFirstChar;
  BYTE tmLastChar;
  BYTE tmDefaultChar;
  BYTE tmBreakChar;
  BYTE tmItalic;
  BYTE tmUnderlined;
  BYTE tmStruckOut;
  BYTE tmPitchAndFamily;
  BYTE tmCharSet;
};
using TEXTMETRIC = TEXTMETRICA;

struct BITMAP {
  LONG bmType;
  LONG bmWidth;
  LONG bmHeight;
  LONG bmWidthBytes;
  WORD bmPlanes;
  WORD bmBitsPixel;
  void* bmBits;
};

// biHeight > 0: rows stored bottom row first; < 0: top row first. Rows are padded to 4 bytes.
struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth;
  LONG biHeight;
  WORD biPlanes;
  WORD biBitCount;
  DWORD biCompression;
  DWORD biSizeImage;
  LONG biXPelsPerMeter;
  LONG biYPelsPerMeter;
  DWORD biClrUsed;
  DWORD biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

struct RGBQUAD {
  BYTE rgbBlue;
  BYTE rgbGreen;
  BYTE rgbRed;
  BYTE rgbReserved;
};

struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};

// ---- device contexts ----------------------------------------------------------------------------

// Pushes the whole state (objects, colours, modes, alignment, mapping, clip, current position).
// Returns the level of the saved state, from 1; 0 on failure. A selected object stays alive while
// any saved state has it.
int SaveDC(HDC hdc);
// level < 0 counts from the newest (−1), level > 0 names a SaveDC result; that level and newer ones
// are dropped. FALSE, with nothing changed, for a level that does not exist and for 0.
BOOL RestoreDC(HDC hdc, int level);

// Returns the previous mode, 0 on failure. Modes other than MM_TEXT and MM_TWIPS are refused. The
// origin, the clip (device pixels) and the current position (logical units) keep their numbers.
// In MM_TWIPS an offset of n units is n × dpi / 1440 pixels, rounded to the nearest, halves away
// from zero; likewise back. Pen widths and font sizes are scaled the same way (a font never below
// one pixel), and text is measured in pixels first: extents and metrics are rounded twice.
int SetMapMode(HDC hdc, int mode);
int GetMapMode(HDC hdc);
// Device position of the logical origin; `previous` may be null.
BOOL SetViewportOrgEx(HDC hdc, int x, int y, POINT* previous);
BOOL GetViewportOrgEx(HDC hdc, POINT* origin);
// In place. Results beyond 32 bits are limited to the 32-bit range. FALSE for null points or a
// negative count.
BOOL LPtoDP(HDC hdc, POINT* points, int count);
BOOL DPtoLP(HDC hdc, POINT* points, int count);

// Each Set… returns the previous value. For a bad handle the mode is 0, colours are CLR_INVALID and
// the alignment is GDI_ERROR. Modes other than TRANSPARENT and OPAQUE are refused (0). Of colours
// the lower 24 bits count; of alignments the TA_ bits. With OPAQUE, texts get a ground of the
// background colour, and the gaps of dashed lines one pixel wide too.
int SetBkMode(HDC hdc, int mode);
COLORREF SetBkColor(HDC hdc, COLORREF color);
COLORREF GetBkColor(HDC hdc);
COLORREF SetTextColor(HDC hdc, COLORREF color);
COLORREF GetTextColor(HDC hdc);
UINT SetTextAlign(HDC hdc, UINT align);
UINT GetTextAlign(HDC hdc);

// LOGPIXELSX/Y: dots per inch; HORZRES/VERTRES: pixels. Other indices give 0.
int GetDeviceCaps(HDC hdc, int index);

// A reference context of the display ("DISPLAY" in any case; other names give null): measures,
// draws nothing. The other arguments are ignored.
HDC CreateDCA(const char* driver, const char* device, const char* output, const void* initData);
// A memory context with a 1 × 1 bitmap of its own, to be replaced with SelectObject; that bitmap is
// a stock object and ends with the context. Text is measured and resolutions are as in `hdc`. Null:
// like the display.
HDC CreateCompatibleDC(HDC hdc);
// Lets go of everything selected, in saved states too.
BOOL DeleteDC(HDC hdc);

// ---- objects ------------------------------------------------------------------------------------

// Widths are logical units; 0, and negative widths, mean one device pixel. A style other than
// PS_SOLID … PS_INSIDEFRAME counts as PS_SOLID.
HPEN CreatePen(int style, int width, COLORREF color);
HPEN CreatePenIndirect(const LOGPEN* pen);
HBRUSH CreateSolidBrush(COLORREF color);
// BS_SOLID and BS_NULL; other styles give null.
HBRUSH CreateBrushIndirect(const LOGBRUSH* brush);
// Sizes are logical units. A face name without a terminator is cut to 31 characters.
HFONT CreateFontIndirectA(const LOGFONTA* font);
// 32-bit pixels, all black. Null for extents below 1, more than 2^30 pixels, or too little memory.
HBITMAP CreateCompatibleBitmap(HDC hdc, int width, int height);
// Device units; edges may come in any order, equal ones make an empty region.
HRGN CreateRectRgn(int left, int top, int right, int bottom);
HRGN CreateRectRgnIndirect(const RECT* rect);
// Null for an index without a constant above.
HGDIOBJ GetStockObject(int index);

// Returns the object of the same kind selected before (a handle that is dead by now where that
// object was deleted meanwhile). A bitmap goes into memory contexts only and into one at a time,
// saved states included. A region is copied into the clip; the result is then its complexity.
HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object);
// A selected object lives on, unreachable by new calls, until the last context lets go of it.
// Stock objects are left alone (TRUE). Contexts are refused: they end with DeleteDC.
BOOL DeleteObject(HGDIOBJ object);
// `type` is OBJ_PEN, OBJ_BRUSH, OBJ_FONT or, in memory contexts, OBJ_BITMAP; null for others.
HGDIOBJ GetCurrentObject(HDC hdc, UINT type);
// An OBJ_ value; 0 for a bad handle.
UINT GetObjectType(HGDIOBJ object);
// Copies LOGPEN, LOGBRUSH, LOGFONTA or BITMAP; returns the bytes written. A null buffer asks for
// the size; a buffer that is too small gets as many bytes as fit for fonts, and nothing otherwise.
int GetObjectA(HGDIOBJ object, int size, void* buffer);

// ---- text ---------------------------------------------------------------------------------------

// `length` counts bytes; a negative one is refused, 0 draws nothing (TRUE). The point is what the
// alignment speaks about; with TA_UPDATECP it is the current position instead, which then moves to
// the run's other end along the line (rounded to the nearest unit; centred text moves nothing).
BOOL TextOutA(HDC hdc, int x, int y, const char* text, int length);
// Extent along and across the text line, whatever its escapement. Logical units, ends limited to 32
// bits.
BOOL GetTextExtentPoint32A(HDC hdc, const char* text, int length, SIZE* size);
// Logical units; ascent and descent make up the height exactly.
BOOL GetTextMetricsA(HDC hdc, TEXTMETRICA* metrics);

// ---- lines and shapes ---------------------------------------------------------------------------

// `previous` may be null. Results of the drawing calls are TRUE where the device took the call.
BOOL MoveToEx(HDC hdc, int x, int y, POINT* previous);
BOOL LineTo(HDC hdc, int x, int y);
// FALSE with fewer than two points. The current position is neither used nor changed.
BOOL Polyline(HDC hdc, const POINT* points, int count);
// Closed, even-odd filled with the brush, outlined with the pen. FALSE with fewer than two points.
BOOL Polygon(HDC hdc, const POINT* points, int count);
BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom);
BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom);
// Uses no pen. `brush` is a handle or a COLOR_ index + 1 cast to one. In these three the edges may
// come in any order.
int FillRect(HDC hdc, const RECT* rect, HBRUSH brush);

// ---- clipping -----------------------------------------------------------------------------------

// Logical units. Without a clip so far, the rectangle becomes the clip. An empty clip is the
// rectangle 0,0,0,0 (NULLREGION): nothing shows. Answers are complexities, ERROR for a bad handle.
int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom);
// Device units. A null region removes the clip. The region is copied.
int SelectClipRgn(HDC hdc, HRGN region);
// The clip within the device's extent, in logical units; all zero where it is empty.
int GetClipBox(HDC hdc, RECT* rect);

// ---- bitmaps ------------------------------------------------------------------------------------

// 24- and 32-bit BI_RGB only. Scan lines are counted from the stored first row's end of the image:
// for bottom-up images the source origin is the lower left corner. `bits` holds the scan lines
// firstScan … firstScan + scanCount − 1. (x, y) is the place, in logical units, of the upper left
// corner of the asked-for source part, whose extents are pixels; what of it the image or `bits`
// lacks stays as it was. Returns the number of rows handed to the device; 0 for a malformed header
// (size other than 40, planes other than 1, no extent, rows beyond the address space).
int SetDIBitsToDevice(HDC hdc, int x, int y, DWORD width, DWORD height, int sourceX, int sourceY,
                      UINT firstScan, UINT scanCount, const void* bits, const BITMAPINFO* info,
                      UINT usage);
// Nearest neighbour, exact in integers: pixel c of a width W shows column
// floor((2c + 1) × w / (2W)) of a source width w. Extents below 1 are refused. Where the source
// part reaches beyond the image, what exists of it is stretched over just the pixels that show it.
// Source origin, headers and result as above; `bits` holds the whole image.
int StretchDIBits(HDC hdc, int x, int y, int width, int height, int sourceX, int sourceY,
                  int sourceWidth, int sourceHeight, const void* bits, const BITMAPINFO* info,
                  UINT usage, DWORD operation);
// SRCCOPY only. Negative extents are refused. A source context without pixels, and what lies
// outside them, leave the destination as it was.
BOOL BitBlt(HDC hdc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
            DWORD operation);
// Copies `count` rows from row `first` (in the order of `info`) and returns the number of rows.
// Where the header asks for more columns or rows than the bitmap has, the columns become 0 and the
// rows are left out. A null `bits` fills in the header (32 bits, bottom-up) and returns the height.
int GetDIBits(HDC hdc, HBITMAP bitmap, UINT first, UINT count, void* bits, BITMAPINFO* info,
              UINT usage);

// ---- system colours ----------------------------------------------------------------------------

// 0 for an index without a COLOR_ constant.
COLORREF GetSysColor(int index);
// A stock brush: never deleted. Null for an index without a COLOR_ constant.
HBRUSH GetSysColorBrush(int index);
