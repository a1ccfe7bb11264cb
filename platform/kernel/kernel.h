// Services of the operating system's kernel: scaled division, checked pointers, load notifications.
#pragma once

#include "platform/gfx/types.h"

// number × numerator / denominator in 64 bits, halves away from zero. −1 where the denominator is 0
// or the result does not fit into 32 bits.
int MulDiv(int number, int numerator, int denominator);

// TRUE where `text` is null or cannot be read up to its terminator or for `max` bytes, whichever
// comes first. Never faults and changes no signal handler. A reachable text with `max` 0 is good.
// Where the machine offers no way to ask, TRUE.
BOOL IsBadStringPtrA(const char* text, UINT_PTR max);

// There are no thread notifications to turn off. FALSE for a null module.
BOOL DisableThreadLibraryCalls(HMODULE module);
