#include "app/xy_command.h"

#include <cmath>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/formats/table.h"
#include "elugraph/plots/xy_graph.h"

namespace app {
namespace {

struct Series {
  std::string name;
  std::vector<double> x;
  std::vector<double> y;
};

class SeriesData final : public IXYGraphData {
 public:
  bool XTitle(ITextSink& sink) override { return sink.Put(xTitle.c_str()); }
  bool YTitle(ITextSink& sink) override { return sink.Put(yTitle.c_str()); }
  int Count() override { return static_cast<int>(series.size()); }
  int Points(int index) override { return static_cast<int>(At(index).x.size()); }
  bool Name(int index, ITextSink& sink) override { return sink.Put(At(index).name.c_str()); }
  double X(int index, int point) override { return At(index).x[static_cast<std::size_t>(point)]; }
  double Y(int index, int point) override { return At(index).y[static_cast<std::size_t>(point)]; }

  std::string xTitle;
  std::string yTitle;
  std::vector<Series> series;

 private:
  const Series& At(int index) const { return series[static_cast<std::size_t>(index)]; }
};

struct ColumnPair {
  std::size_t x;
  std::size_t y;
};

// All columns of numbers against the one before them that bears the first one's name: tables of
// several signals often repeat the x column.
std::vector<ColumnPair> DefaultPairs(const Table& table, std::size_t x, bool repeated) {
  const std::string& name = table.ColumnName(x);
  std::vector<ColumnPair> pairs;
  for (std::size_t column = 0; column < table.ColumnCount(); ++column) {
    if (column == x || !table.IsNumeric(column)) continue;
    if (repeated && table.ColumnName(column) == name) {
      x = column;
    } else {
      pairs.push_back({x, column});
    }
  }
  return pairs;
}

// Throws FileError for a column that is not there; no pairs where the options do not fit together.
std::vector<ColumnPair> ChoosePairs(const Table& table, const std::vector<std::string>& x,
                                    const std::vector<std::string>& y) {
  std::size_t first = 0;
  while (first < table.ColumnCount() && !table.IsNumeric(first)) ++first;
  if (!x.empty()) first = table.Require(x.front());
  if (y.empty())
    return x.size() > 1 ? std::vector<ColumnPair>() : DefaultPairs(table, first, x.empty());
  if (x.size() > 1 && x.size() != y.size()) return {};
  std::vector<ColumnPair> pairs;
  for (std::size_t i = 0; i < y.size(); ++i) {
    pairs.push_back({x.size() > 1 ? table.Require(x[i]) : first, table.Require(y[i])});
  }
  return pairs;
}

std::vector<double> Values(const Table& table, std::size_t column) {
  std::vector<double> values(table.RowCount());
  for (std::size_t row = 0; row < values.size(); ++row) values[row] = table.Number(row, column);
  return values;
}

// "0.5:2".
std::optional<std::pair<double, double>> ParseRange(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) return std::nullopt;
  const auto low = ParseNumber(std::string_view(text).substr(0, colon), '.');
  const auto high = ParseNumber(std::string_view(text).substr(colon + 1), '.');
  if (!low || !high || !(*low < *high)) return std::nullopt;
  return std::pair(*low, *high);
}

// Moves one axis of the view to the range. False where the graph's limits forbid it.
template <typename Span, typename Scroll, typename Scale>
bool Zoom(std::pair<double, double> range, Span span, Scroll scroll, Scale scale) {
  const auto [low, high] = span();
  const double wanted = range.second - range.first;
  scale(wanted / (high - low));  // keeps the low edge
  scroll((range.first - low) / wanted);
  const auto [newLow, newHigh] = span();
  const double tolerance = 1e-6 * wanted;
  return std::abs(newLow - range.first) <= tolerance &&
         std::abs(newHigh - range.second) <= tolerance;
}

// Returns what is wrong; empty where it could be done.
std::string ZoomTo(TXYGraph& graph, const std::string& option, const std::string& text, bool onX) {
  if (text.empty()) return {};
  const auto range = ParseRange(text);
  if (!range) return option + ": '" + text + "' is not a range such as 0.5:2";
  const TXYGraph::Range& view = graph.ViewRange();
  const bool done =
      onX ? Zoom(
                *range, [&] { return std::pair(view.xLow, view.xHigh); },
                [&](double f) { graph.ScrollX(f); }, [&](double f) { graph.ScaleX(f); })
          : Zoom(
                *range, [&] { return std::pair(view.yLow, view.yHigh); },
                [&](double f) { graph.ScrollY(f); }, [&](double f) { graph.ScaleY(f); });
  if (done) return {};
  return option + ": " + text + " lies outside the data, or is less than 1/10000 or more than " +
         "twice of their range";
}

}  // namespace

XYCommand::XYCommand(CLI::App& program)
    : command_(*program.add_subcommand("xy", "Draw a table as an XY graph")) {
  command_.add_option("FILE", file_, "Table of numbers with a header")->required();
  command_
      .add_option("--x", x_,
                  "Column of x values, by name or number from 1; default: the first column of "
                  "numbers, and from its name's next appearance on that one. Several: one for "
                  "each --y")
      ->type_name("COLUMN");
  command_.add_option("--y", y_, "Columns of y values; default: all other columns of numbers")
      ->type_name("COLUMN");
  command_.add_option("--zoom", zoom_, "Part of the x range to show, such as 0.5:2")
      ->type_name("FROM:TO");
  command_.add_option("--zoom-y", zoomY_, "Part of the y range to show")->type_name("FROM:TO");
  AddOutputOptions(command_, output_);
}

int XYCommand::Run() const {
  int widthPx = 0;
  int heightPx = 0;
  std::string error;
  if (!ParseSize(output_.size, widthPx, heightPx, error)) return Fail(error);

  const std::string text = DecodeText(ReadBytes(file_));
  const Table table(file_, text);
  const std::vector<ColumnPair> pairs = ChoosePairs(table, x_, y_);
  if (pairs.empty()) {
    return Fail(x_.size() > 1 ? "--x: one column, or as many as --y names"
                              : file_ + ": has no column of numbers beside the x values");
  }
  SeriesData data;
  data.xTitle = table.ColumnName(pairs.front().x);
  if (pairs.size() == 1) data.yTitle = table.ColumnName(pairs.front().y);
  for (const ColumnPair& pair : pairs) {
    data.series.push_back({table.ColumnName(pair.y), Values(table, pair.x), Values(table, pair.y)});
  }
  TXYGraph graph;
  graph.SetXYData(&data);
  graph.ViewAll();
  error = ZoomTo(graph, "--zoom", zoom_, true);
  if (error.empty()) error = ZoomTo(graph, "--zoom-y", zoomY_, false);
  if (!error.empty()) return Fail(error);

  const Canvas canvas(widthPx, heightPx);
  graph.Render(canvas.Context(), canvas.Area());
  return SavePicture(canvas.Picture(), output_, {file_},
                     std::filesystem::path(file_).stem().string(), {});
}

}  // namespace app
