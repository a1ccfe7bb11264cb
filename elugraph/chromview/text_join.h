// Joining of texts that may come from a host's broken record.
#pragma once

#include <string>

// The texts of a list, which a null pointer ends, in one. The list also ends at the first text that
// is not readable; a fault while a text is measured is reported to exceptout and ends it, too.
std::string JoinTexts(const char* const* texts);
