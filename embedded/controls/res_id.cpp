// Names of resources, and the report of missing ones.
#include <string>

#include "elugraph/host/controls.h"

namespace {

const char* NumberName(unsigned number) { return MAKEINTRESOURCEA(number < 0x10000 ? number : 0); }

bool Exists(const ResId& resource, const char* type) {
  if (type == RT_STRING && IS_INTRESOURCE(resource.name)) {
    char first[2];
    const auto number = static_cast<UINT>(reinterpret_cast<UINT_PTR>(resource.name));
    return LoadStringA(resource.module, number, first, sizeof first) > 0;
  }
  if (type == RT_ICON || type == RT_GROUP_ICON) {
    return LoadIconA(resource.module, resource.name) != nullptr;
  }
  return FindResourceA(resource.module, resource.name, type) != nullptr;
}

HMODULE ModuleOf(const char* name, HMODULE module, const char* type) {
  return type == RT_DIALOG ? muiGetDlgTemplateModule(module, name) : module;
}

std::string Readable(const char* name) {
  return IS_INTRESOURCE(name) ? std::to_string(reinterpret_cast<UINT_PTR>(name)) : name;
}

std::string ReadableType(const char* type) {
  if (type == RT_DIALOG) return "dialog";
  if (type == RT_STRING) return "string";
  if (type == RT_ICON || type == RT_GROUP_ICON) return "icon";
  if (type == RT_CURSOR || type == RT_GROUP_CURSOR) return "cursor";
  return "resource " + Readable(type);
}

}  // namespace

ResId::ResId(const char* resourceName, HMODULE itsModule) : name(resourceName), module(itsModule) {}

ResId::ResId(unsigned number, HMODULE itsModule) : ResId(NumberName(number), itsModule) {}

ResIdCheck::ResIdCheck(const char* resourceName, HMODULE itsModule, const char* type)
    : ResId(resourceName, ModuleOf(resourceName, itsModule, type)) {
  if (!Exists(*this, type)) RCerr(type, "not found", *this);
}

ResIdCheck::ResIdCheck(unsigned number, HMODULE itsModule, const char* type)
    : ResIdCheck(NumberName(number), itsModule, type) {}

void RCerr(const char* type, const char* text, const ResId& resource) {
  exceptout("%s %s: %s", ReadableType(type).c_str(), Readable(resource.name).c_str(),
            text != nullptr ? text : "");
}
