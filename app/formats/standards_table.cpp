#include "app/formats/standards_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <optional>

#include "app/formats/table.h"
#include "app/formats/text.h"

namespace app {
namespace {

struct Roles {
  std::size_t amount;
  std::size_t response;
};

Roles ChooseColumns(const Table& table, const StandardsColumns& wanted) {
  const auto named = [&table](const std::string& name,
                              std::initializer_list<std::string_view> usual) {
    return name.empty() ? table.FindUsual(usual) : table.Require(name);
  };
  auto amount = named(wanted.amount, {"amount", "concentration", "x"});
  auto response = wanted.preferHeights
                      ? named(wanted.response, {"height", "response", "area", "y"})
                      : named(wanted.response, {"response", "area", "height", "y"});
  const auto firstFree = [&]() -> std::optional<std::size_t> {
    for (std::size_t column = 0; column < table.ColumnCount(); ++column) {
      const bool taken = column == amount || column == response ||
                         column == table.Find("component") || column == table.Find("excluded");
      if (!taken && table.IsNumeric(column)) return column;
    }
    return std::nullopt;
  };
  if (!amount) amount = firstFree();
  if (!amount) amount = table.Require("amount");
  if (!response) response = firstFree();
  if (!response) response = table.Require("response");
  return {*amount, *response};
}

bool IsExcluded(const Table& table, std::size_t row, std::size_t column) {
  static constexpr std::array kYes = {"1", "yes", "y", "true", "x", "excluded"};
  static constexpr std::array kNo = {"0", "no", "n", "false"};
  const std::string cell = Lower(table.Cell(row, column));
  if (std::find(kYes.begin(), kYes.end(), cell) != kYes.end()) return true;
  if (!IsMissing(cell) && std::find(kNo.begin(), kNo.end(), cell) == kNo.end()) {
    table.Fail(row, table.ColumnName(column) + ": '" + cell + "' is neither yes nor no");
  }
  return false;
}

}  // namespace

StandardsTable ReadStandards(const std::string& path, const StandardsColumns& columns) {
  const std::string text = DecodeText(ReadBytes(path));
  const Table table(path, text);
  const Roles roles = ChooseColumns(table, columns);
  if (roles.amount == roles.response) {
    throw FileError(path + ": amounts and responses cannot both be in column '" +
                    table.ColumnName(roles.amount) + "'");
  }
  const std::string stem = std::filesystem::path(path).stem().string();
  const auto name = table.Find("component");
  const auto excluded = table.Find("excluded");
  StandardsTable read{{}, table.ColumnName(roles.response)};
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const std::string of = name ? std::string(table.Cell(row, *name)) : stem;
    auto found = std::find_if(read.components.begin(), read.components.end(),
                              [&](const ComponentStandards& each) { return each.name == of; });
    if (found == read.components.end()) found = read.components.insert(found, {of, {}});
    const embedded::Standard standard{table.Number(row, roles.amount),
                                      table.Number(row, roles.response),
                                      excluded && IsExcluded(table, row, *excluded)};
    // A level that was not measured is no standard.
    if (std::isnan(standard.amount) || std::isnan(standard.response)) continue;
    found->standards.push_back(standard);
  }
  if (read.components.empty()) throw FileError(path + ": has no standards");
  return read;
}

}  // namespace app
