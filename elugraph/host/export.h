// Visibility of symbols at the library's two borders. The library is compiled with hidden symbols.
#pragma once

// Part of the library's public interface.
#define ELUGRAPH_API __attribute__((visibility("default")))
// Supplied by the host: undefined in the library, bound when the program is linked.
#define ELUGRAPH_HOST __attribute__((visibility("default")))
// Private operations of exported classes: not part of the interface after all.
#define ELUGRAPH_INTERNAL __attribute__((visibility("hidden")))
