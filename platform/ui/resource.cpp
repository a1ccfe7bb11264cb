// Modules, what they hold, and cursors.
#include <algorithm>
#include <cstring>

#include "platform/ui/desk.h"

namespace ui {
namespace {

struct Icon final : gfx::Object {
  static bool Is(UINT kind) { return kind == kIconKind; }
  Icon() : Object(kIconKind, true) {}
  std::vector<Image> sizes;
  unsigned systemNumber = 0;
};

struct Resource final : gfx::Object {
  static bool Is(UINT kind) { return kind == kResourceKind; }
  Resource() : Object(kResourceKind, true) {}
  std::string text;
  HICON icon = nullptr;
  std::shared_ptr<const DialogTemplate> dialog;
};

struct Module final : gfx::Object {
  static bool Is(UINT kind) { return kind == kModuleKind; }
  Module() : Object(kModuleKind, true) {}
  // By type and name, as KeyOf gives them.
  std::map<std::pair<std::string, std::string>, std::shared_ptr<Resource>> resources;
};

// Apart from the windows: static objects load resources before there are any.
struct Store {
  std::map<std::string, HMODULE> modules;
  std::map<unsigned, HCURSOR> systemCursors;
};

Store& TheStore() {
  static Store* const store = new Store;
  return *store;
}

// Numbers become "#number", as they may also be written in a text.
std::string KeyOf(const char* name) {
  if (IS_INTRESOURCE(name)) return "#" + std::to_string(reinterpret_cast<UINT_PTR>(name));
  return LowerCase(name);
}

std::string StringKey(UINT number) { return "#" + std::to_string(number); }

// A cursor and its group are one resource here, and so are an icon and its group.
std::string TypeKey(const char* type) {
  if (type == RT_GROUP_CURSOR) type = RT_CURSOR;
  if (type == RT_GROUP_ICON) type = RT_ICON;
  return KeyOf(type);
}

std::shared_ptr<Resource> Find(HMODULE module, const std::string& type, const std::string& name) {
  const auto found = gfx::Share<Module>(module);
  if (!found) return nullptr;
  const auto at = found->resources.find({type, name});
  return at == found->resources.end() ? nullptr : at->second;
}

Resource* Add(HMODULE module, const std::string& type, const std::string& name) {
  const auto found = gfx::Share<Module>(module);
  if (!found || name.empty()) return nullptr;
  std::shared_ptr<Resource>& slot = found->resources[{type, name}];
  if (!slot) {
    slot = std::make_shared<Resource>();
    gfx::HandleTable::Instance().Add(slot);
  }
  return slot.get();
}

HICON AddHandle(std::vector<Image> sizes, unsigned systemNumber) {
  auto icon = std::make_shared<Icon>();
  icon->sizes = std::move(sizes);
  icon->systemNumber = systemNumber;
  return static_cast<HICON>(gfx::HandleTable::Instance().Add(icon));
}

HCURSOR SystemCursor(unsigned number) {
  static constexpr unsigned kNumbers[] = {32512, 32513, 32514, 32515, 32644, 32645, 32649};
  if (std::find(std::begin(kNumbers), std::end(kNumbers), number) == std::end(kNumbers)) {
    return nullptr;
  }
  HCURSOR& cursor = TheStore().systemCursors[number];
  if (cursor == nullptr) cursor = AddHandle({}, number);
  return cursor;
}

bool AddImages(HMODULE module, const char* type, const char* name, std::vector<Image> sizes) {
  if (!IsModule(module)) return false;
  const HICON icon = CreateCursor(std::move(sizes));
  Resource* resource = icon != nullptr ? Add(module, KeyOf(type), KeyOf(name)) : nullptr;
  if (resource != nullptr) resource->icon = icon;
  return resource != nullptr;
}

std::uint32_t PixelOfMark(char mark) {
  static constexpr std::uint32_t kPalette[] = {0xFF000000, 0xFF800000, 0xFF008000, 0xFF808000,
                                               0xFF000080, 0xFF800080, 0xFF008080, 0xFFC0C0C0,
                                               0xFF808080, 0xFFFF0000, 0xFF00FF00, 0xFFFFFF00,
                                               0xFF0000FF, 0xFFFF00FF, 0xFF00FFFF, 0xFFFFFFFF};
  if (mark == '#') return kPalette[0];
  if (mark == 'o') return kPalette[15];
  if (mark >= '0' && mark <= '9') return kPalette[mark - '0'];
  if (mark >= 'a' && mark <= 'f') return kPalette[mark - 'a' + 10];
  return 0;
}

bool Usable(const Image& image) {
  return image.width >= 1 && image.width <= 256 && image.height >= 1 && image.height <= 256 &&
         image.argb.size() == static_cast<std::size_t>(image.width) * image.height;
}

Image Magnified(const Image& image, int times) {
  if (times <= 1) return image;
  Image large;
  large.width = image.width * times;
  large.height = image.height * times;
  large.hotSpot = {image.hotSpot.x * times + times / 2, image.hotSpot.y * times + times / 2};
  large.argb.reserve(image.argb.size() * times * times);
  for (int y = 0; y < large.height; ++y) {
    for (int x = 0; x < large.width; ++x) {
      large.argb.push_back(image.argb[(y / times) * image.width + x / times]);
    }
  }
  return large;
}

}  // namespace

Image ImageFromRows(const std::vector<std::string_view>& rows, POINT hotSpot) {
  Image image;
  for (std::string_view row : rows) {
    image.width = std::max(image.width, static_cast<int>(std::min<std::size_t>(row.size(), 256)));
  }
  image.height = static_cast<int>(std::min<std::size_t>(rows.size(), 256));
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const auto column = static_cast<std::size_t>(x);
      image.argb.push_back(column < rows[y].size() ? PixelOfMark(rows[y][column]) : 0);
    }
  }
  image.hotSpot = {std::clamp<LONG>(hotSpot.x, 0, std::max(0, image.width - 1)),
                   std::clamp<LONG>(hotSpot.y, 0, std::max(0, image.height - 1))};
  return image;
}

HMODULE RegisterModule(std::string_view name) {
  HMODULE& module = TheStore().modules[std::string(name)];
  if (module == nullptr) {
    module = static_cast<HMODULE>(gfx::HandleTable::Instance().Add(std::make_shared<Module>()));
  }
  return module;
}

bool IsModule(HMODULE module) { return gfx::Find<Module>(module) != nullptr; }

bool AddString(HMODULE module, UINT number, std::string text) {
  Resource* resource = Add(module, KeyOf(RT_STRING), StringKey(number));
  if (resource != nullptr) resource->text = std::move(text);
  return resource != nullptr;
}

bool AddCursor(HMODULE module, const char* name, std::vector<Image> sizes) {
  return AddImages(module, RT_CURSOR, name, std::move(sizes));
}

bool AddIcon(HMODULE module, const char* name, std::vector<Image> sizes) {
  return AddImages(module, RT_ICON, name, std::move(sizes));
}

bool AddDialog(HMODULE module, const char* name, DialogTemplate dialog) {
  Resource* resource = Add(module, KeyOf(RT_DIALOG), KeyOf(name));
  if (resource == nullptr) return false;
  resource->dialog = std::make_shared<const DialogTemplate>(std::move(dialog));
  return true;
}

std::shared_ptr<const DialogTemplate> ShareDialog(HMODULE module, const char* name) {
  const auto resource = Find(module, KeyOf(RT_DIALOG), KeyOf(name));
  return resource ? resource->dialog : nullptr;
}

const DialogTemplate* FindDialog(HMODULE module, const char* name) {
  return ShareDialog(module, name).get();
}

HCURSOR CreateCursor(std::vector<Image> sizes) {
  sizes.erase(
      std::remove_if(sizes.begin(), sizes.end(), [](const Image& image) { return !Usable(image); }),
      sizes.end());
  if (sizes.empty()) return nullptr;
  for (Image& image : sizes) {
    image.hotSpot = {std::clamp<LONG>(image.hotSpot.x, 0, image.width - 1),
                     std::clamp<LONG>(image.hotSpot.y, 0, image.height - 1)};
  }
  std::sort(sizes.begin(), sizes.end(),
            [](const Image& a, const Image& b) { return a.width < b.width; });
  return AddHandle(std::move(sizes), 0);
}

Image ImageOf(HICON icon, int extent) {
  const Icon* found = gfx::Find<Icon>(icon);
  if (found == nullptr || found->sizes.empty()) return {};
  const Image* best = &found->sizes.front();
  for (const Image& image : found->sizes) {
    if (image.width <= extent) best = &image;
  }
  return Magnified(*best, extent / std::max(best->width, best->height));
}

unsigned SystemCursorNumber(HCURSOR cursor) {
  const Icon* found = gfx::Find<Icon>(cursor);
  return found != nullptr ? found->systemNumber : 0;
}

}  // namespace ui

HCURSOR LoadCursorA(HINSTANCE module, const char* name) {
  if (module == nullptr) {
    return IS_INTRESOURCE(name)
               ? ui::SystemCursor(static_cast<unsigned>(reinterpret_cast<UINT_PTR>(name)))
               : nullptr;
  }
  const auto resource = ui::Find(module, ui::KeyOf(RT_CURSOR), ui::KeyOf(name));
  return resource ? resource->icon : nullptr;
}

HICON LoadIconA(HINSTANCE module, const char* name) {
  const auto resource = ui::Find(module, ui::KeyOf(RT_ICON), ui::KeyOf(name));
  return resource ? resource->icon : nullptr;
}

HCURSOR SetCursor(HCURSOR cursor) {
  ui::Desk& desk = ui::TheDesk();
  if (cursor != nullptr && gfx::Find<ui::Icon>(cursor) == nullptr) return desk.cursor;
  const HCURSOR before = std::exchange(desk.cursor, cursor);
  if (before != cursor && desk.front != nullptr) desk.front->CursorChanged(cursor);
  return before;
}

HCURSOR GetCursor() { return ui::TheDesk().cursor; }

int LoadStringA(HINSTANCE module, UINT number, char* text, int size) {
  if (text == nullptr || size <= 0) return 0;
  const auto resource = ui::Find(module, ui::KeyOf(RT_STRING), ui::StringKey(number));
  const std::size_t length = resource ? std::min<std::size_t>(resource->text.size(), size - 1) : 0;
  if (resource) std::memcpy(text, resource->text.data(), length);
  text[length] = '\0';
  return static_cast<int>(length);
}

HRSRC FindResourceA(HMODULE module, const char* name, const char* type) {
  const auto resource = ui::Find(module, ui::TypeKey(type), ui::KeyOf(name));
  return resource ? static_cast<HRSRC>(resource->Handle()) : nullptr;
}
