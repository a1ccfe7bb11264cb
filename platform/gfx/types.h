// Fixed-width integer types, handles and small structures shared by the whole platform layer.
//
// LONG and ULONG are 32 bits on every platform: positions, sample values and records depend on it.
// Types that carry a pointer or a handle (WPARAM, LPARAM, LRESULT) are as wide as a pointer.
#pragma once

#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using BOOL = int;
using COLORREF = std::uint32_t;  // 0x00BBGGRR
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

// Handles are opaque: they carry an index, a kind and a generation, and are never dereferenced.
using HANDLE = void*;
using HGDIOBJ = void*;
using HDC = struct HDC__*;
using HPEN = struct HPEN__*;
using HBRUSH = struct HBRUSH__*;
using HFONT = struct HFONT__*;
using HBITMAP = struct HBITMAP__*;
using HRGN = struct HRGN__*;
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HICON = struct HICON__*;
using HCURSOR = HICON;
using HRSRC = struct HRSRC__*;

struct POINT {
  LONG x;
  LONG y;
};

struct SIZE {
  LONG cx;
  LONG cy;
};

// right and bottom are the first column and row outside.
struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

constexpr COLORREF RGB(BYTE red, BYTE green, BYTE blue) {
  return static_cast<COLORREF>(red) | static_cast<COLORREF>(green) << 8 |
         static_cast<COLORREF>(blue) << 16;
}
constexpr BYTE GetRValue(COLORREF color) { return static_cast<BYTE>(color); }
constexpr BYTE GetGValue(COLORREF color) { return static_cast<BYTE>(color >> 8); }
constexpr BYTE GetBValue(COLORREF color) { return static_cast<BYTE>(color >> 16); }
