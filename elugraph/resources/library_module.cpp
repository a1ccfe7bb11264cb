#include "elugraph/resources/library_module.h"

#include <vector>

#include "elugraph/resources/cursor_pictures.h"
#include "platform/ui/resources.h"

namespace {

constexpr POINT kCentreOf32{15, 15};
constexpr POINT kCentreOf16{8, 8};

ui::Image Picture(std::string_view lines, POINT hotSpot) {
  std::vector<std::string_view> rows;
  lines.remove_prefix(1);  // the literal begins with a line end
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    rows.push_back(lines.substr(0, end));
    lines.remove_prefix(end + 1);
  }
  return ui::ImageFromRows(rows, hotSpot);
}

}  // namespace

HMODULE LibraryModule() {
  static const HMODULE module = [] {
    const HMODULE made = ui::RegisterModule("elugraph");
    ui::AddCursor(made, "IPATH_SPLITH",
                  {Picture(kSplitH32, kCentreOf32), Picture(kSplitH16, kCentreOf16)});
    ui::AddCursor(made, "IPATH_SPLITV",
                  {Picture(kSplitV32, kCentreOf32), Picture(kSplitV16, kCentreOf16)});
    ui::AddCursor(made, "IPATH_CROSS", {Picture(kCross32, kCentreOf32)});
    return made;
  }();
  return module;
}
