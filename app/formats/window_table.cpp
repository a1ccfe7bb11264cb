#include "app/formats/window_table.h"

#include <cmath>

#include "app/formats/header_words.h"
#include "app/formats/table.h"
#include "app/formats/text.h"

namespace app {
namespace {

std::size_t Column(const Table& table, std::initializer_list<std::string_view> usual) {
  const auto found = table.FindUsual(usual);
  return found ? *found : table.Require(*usual.begin());
}

double UnitS(const Table& table, std::size_t column, double otherwiseS) {
  const TimeUnit unit = ParseHeaderCell(table.ColumnName(column)).timeUnit;
  return unit == TimeUnit::kUnknown ? otherwiseS : SecondsIn(unit);
}

}  // namespace

std::vector<embedded::ComponentData> ReadWindows(const std::string& path) {
  const std::string text = DecodeText(ReadBytes(path));
  const Table table(path, text);
  const std::size_t name = Column(table, {"name", "component", "compound", "substance"});
  const std::size_t time = Column(table, {"time", "rt", "r.t.", "r.time", "retention time"});
  const std::size_t window = Column(table, {"window", "tolerance"});
  const double timeUnitS = UnitS(table, time, 60);
  const double windowUnitS = UnitS(table, window, timeUnitS);
  std::vector<embedded::ComponentData> components;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const embedded::ComponentData component{std::string(table.Cell(row, name)),
                                            table.Number(row, time) * timeUnitS,
                                            table.Number(row, window) * windowUnitS};
    if (component.name.empty()) table.Fail(row, "a component without a name");
    if (!(std::abs(component.retentionSec) <= kMaxTimeS)) {
      table.Fail(row, component.name + ": no retention time");
    }
    if (!(component.halfWindowSec > 0 && component.halfWindowSec <= kMaxTimeS)) {
      table.Fail(row, component.name + ": the window is not above 0");
    }
    components.push_back(component);
  }
  return components;
}

}  // namespace app
