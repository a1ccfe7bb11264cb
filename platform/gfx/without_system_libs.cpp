// What takes the place of system/ in builds without the machine's libraries.
#ifndef ELUGRAPH_SYSTEM_LIBS

#include "platform/gfx/context.h"
#include "platform/gfx/text_engine.h"

namespace gfx {

TextEngine& SystemText() { return BuiltinText(); }

bool SavePng(const Surface&, const std::string& path, std::string& error, double) {
  error = path + ": this build has no PNG";
  return false;
}

}  // namespace gfx

#endif
