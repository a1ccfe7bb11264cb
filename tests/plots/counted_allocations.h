// Counts what the test program allocates with operator new.
#pragma once

#include <cstddef>

std::size_t Allocations();
