// SPDX-License-Identifier: MIT
#include "takeoff/Tables.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "sidecar/SidecarFormat.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Table.h"

namespace VeskTool {
namespace {

using Getter = double (*)(const TakeOffLine&, const TakeOffOptions&);
using TextGetter = std::string (*)(const TakeOffLine&);

struct Column {
  TakeOffColumn column;
  TextGetter text = nullptr;
  Getter number = nullptr;
};

double wallOf(double diameter, const TakeOffLine& line, const TakeOffOptions& options) {
  if (line.level != Level::kRow || options.walls.isEmpty()) return 0.0;
  // A row of flanges or valves may have the size of a pipe.
  if (line.amount.withoutWall == line.amount.elements) return 0.0;
  return diameter > 0.0 ? options.walls.ofDiameter(diameter)
                        : options.walls.ofSection(line.size.width, line.size.depth);
}

constexpr TakeOffColumn text(std::string_view name, bool isOfRows = false) {
  return {name, Quantity::kCount, true, isOfRows};
}
constexpr TakeOffColumn size(std::string_view name, Quantity quantity = Quantity::kSize) {
  return {name, quantity, false, true};
}
constexpr TakeOffColumn number(std::string_view name, Quantity quantity) {
  return {name, quantity, false, false};
}

using Line = TakeOffLine;
using Options = TakeOffOptions;

// clang-format off
constexpr Column kColumns[] = {
    {text("level"), [](const Line& l) { return std::string(nameOf(l.level)); }},
    {text("by"), [](const Line& l) { return std::string(l.by); }},
    {text("group"), [](const Line& l) { return std::string(l.group); }},
    {text("description"), [](const Line& l) { return std::string(l.description); }},
    {text("kind", true), [](const Line& l) {
       return l.level == Level::kRow ? std::string(nameOf(l.size.kind)) : std::string(); }},
    {size("diameter1"), nullptr, [](const Line& l, const Options&) { return l.size.diameter1; }},
    {size("diameter2"), nullptr, [](const Line& l, const Options&) { return l.size.diameter2; }},
    {size("width"), nullptr, [](const Line& l, const Options&) { return l.size.width; }},
    {size("depth"), nullptr, [](const Line& l, const Options&) { return l.size.depth; }},
    {size("radius"), nullptr, [](const Line& l, const Options&) { return l.size.radius; }},
    {size("angle", Quantity::kAngle), nullptr,
     [](const Line& l, const Options&) { return l.size.angle; }},
    {size("wall1"), nullptr,
     [](const Line& l, const Options& o) { return wallOf(l.size.diameter1, l, o); }},
    {size("wall2"), nullptr, [](const Line& l, const Options& o) {
       return l.size.diameter2 > 0.0 ? wallOf(l.size.diameter2, l, o) : 0.0; }},
    {number("components", Quantity::kCount), nullptr,
     [](const Line& l, const Options&) { return static_cast<double>(l.components); }},
    {number("count", Quantity::kCount), nullptr,
     [](const Line& l, const Options&) { return static_cast<double>(l.amount.elements); }},
    {number("length", Quantity::kLength), nullptr,
     [](const Line& l, const Options&) { return l.amount.length; }},
    {number("lines", Quantity::kLength), nullptr,
     [](const Line& l, const Options&) { return l.amount.lines; }},
    {number("surface", Quantity::kArea), nullptr,
     [](const Line& l, const Options&) { return l.amount.surface; }},
    {number("volume", Quantity::kVolume), nullptr,
     [](const Line& l, const Options&) { return l.amount.volume; }},
    {number("weight", Quantity::kWeight), nullptr,
     [](const Line& l, const Options& o) { return l.amount.steel * o.density; }},
    {number("content", Quantity::kVolume), nullptr,
     [](const Line& l, const Options&) { return l.amount.content; }},
    {number("content_weight", Quantity::kWeight), nullptr,
     [](const Line& l, const Options& o) { return l.amount.content * o.content; }},
    {number("insulation", Quantity::kVolume), nullptr,
     [](const Line& l, const Options&) { return l.amount.insulation; }},
    {number("insulation_surface", Quantity::kArea), nullptr,
     [](const Line& l, const Options&) { return l.amount.cladding; }},
    {number("without_wall", Quantity::kCount), nullptr,
     [](const Line& l, const Options&) { return static_cast<double>(l.amount.withoutWall); }},
};
// clang-format on

std::size_t columnNamed(std::string_view name) {
  return static_cast<std::size_t>(
      std::find_if(std::begin(kColumns), std::end(kColumns),
                   [name](const Column& each) { return each.column.name == name; }) -
      std::begin(kColumns));
}

double numberOf(const TakeOffLine& line, std::string_view column, const TakeOffOptions& options) {
  return std::get<double>(cellOf(line, columnNamed(column), options));
}

// A column of the table for people.
struct Shown {
  std::string_view column;   // what its numbers are
  std::string_view heading;  // without the unit
  bool isAlways = false;     // also where no line holds anything
  bool isEmptyForZero = true;
};

constexpr Shown kShown[] = {
    {"radius", "RADIUS"},
    {"angle", "ANGLE"},
    {"wall1", "WALL"},
    {"components", "COMPONENTS"},
    {"count", "COUNT", true, false},
    {"length", "LENGTH", true},
    {"lines", "LINES"},
    {"surface", "SURFACE", true, false},
    {"volume", "VOLUME", true, false},
    {"weight", "WEIGHT", false, false},
    {"content", "CONTENT", false, false},
    {"content_weight", "CONTENT", false, false},
    {"insulation", "INSULATION", false, false},
    {"insulation_surface", "INSULATION", false, false},
    {"without_wall", "NO WALL"},
};

class People {
 public:
  People(const TakeOffOptions& options, std::vector<TakeOffLine> lines)
      : options_(options), lines_(std::move(lines)) {
    hasRows_ = std::any_of(lines_.begin(), lines_.end(),
                           [](const Line& line) { return line.level == Level::kRow; });
    hasDescription_ = std::any_of(lines_.begin(), lines_.end(),
                                  [](const Line& line) { return !line.description.empty(); });
    for (const Shown& shown : kShown) {
      if (shown.isAlways || isUsed(shown.column)) shown_.push_back(shown);
    }
  }

  std::string text(std::string_view by) const {
    std::vector<Table::Column> columns;
    std::string heading(by);
    for (char& c : heading) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    if (!by.empty()) columns.push_back({heading, Table::Side::kLeft});
    if (hasDescription_) columns.push_back({"DESCRIPTION", Table::Side::kLeft});
    const std::string sizeUnit(options_.units.of(Quantity::kSize));
    if (hasRows_ || by.empty()) {
      columns.push_back({"KIND", Table::Side::kLeft});
      columns.push_back({"SIZE " + sizeUnit, Table::Side::kRight});
    }
    for (const Shown& shown : shown_) {
      const std::string_view unit = options_.units.of(quantityOf(shown));
      columns.push_back({std::string(shown.heading) + (unit.empty() ? "" : " ") + std::string(unit),
                         Table::Side::kRight});
    }
    Table table(columns);
    for (const Line& line : lines_) table.add(cells(line, by));
    return table.text();
  }

 private:
  static Quantity quantityOf(const Shown& shown) {
    return kColumns[columnNamed(shown.column)].column.quantity;
  }

  bool isUsed(std::string_view column) const {
    return std::any_of(lines_.begin(), lines_.end(),
                       [&](const Line& line) { return numberOf(line, column, options_) != 0.0; });
  }

  std::vector<std::string> cells(const Line& line, std::string_view by) const {
    std::vector<std::string> cells;
    const bool isTotal = line.level == Level::kTotal;
    if (!by.empty()) {
      cells.emplace_back(isTotal ? "all" : line.group.empty() ? "(none)" : line.group);
    }
    if (hasDescription_) cells.emplace_back(line.description);
    if (hasRows_ || by.empty()) {
      const bool isRow = line.level == Level::kRow;
      cells.emplace_back(isRow                    ? wordsOf(line.size.kind)
                         : isTotal && !by.empty() ? std::string_view()
                                                  : "all");
      cells.push_back(isRow ? options_.units.sizeText(line.size) : std::string());
    }
    for (const Shown& shown : shown_) cells.push_back(cell(line, shown));
    return cells;
  }

  std::string cell(const Line& line, const Shown& shown) const {
    const std::size_t column = columnNamed(shown.column);
    const double metric = kColumns[column].number(line, options_);
    if (metric == 0.0 && shown.isEmptyForZero) return {};
    std::string text = options_.units.text(quantityOf(shown), metric);
    if (shown.column == "wall1") {
      const double other = kColumns[columnNamed("wall2")].number(line, options_);
      if (other != 0.0) text += " x " + options_.units.text(Quantity::kSize, other);
    }
    return text;
  }

  const TakeOffOptions& options_;
  std::vector<TakeOffLine> lines_;
  std::vector<Shown> shown_;
  bool hasRows_ = false;
  bool hasDescription_ = false;
};

// A spreadsheet takes it for a text whatever it begins with.
void appendSafe(std::string& to, const std::string& text) {
  appendCsv(to, Vesk::isLikeFormula(text) ? '\'' + text : text);
}

void appendCsvLine(std::string& to, const TakeOffLine& line, const TakeOffOptions& options) {
  for (std::size_t i = 0; i < std::size(kColumns); ++i) {
    if (i > 0) to += ',';
    const TakeOffCell cell = cellOf(line, i, options);
    if (const auto* text = std::get_if<std::string>(&cell)) {
      appendSafe(to, *text);
    } else {
      appendShortest(to, std::get<double>(cell));
    }
  }
  to += '\n';
}

// Of a row what a row has, of a sum what it has.
void appendJsonLine(JsonWriter& json, const TakeOffLine& line, const TakeOffOptions& options) {
  json.beginObjectRow();
  for (std::size_t i = 0; i < std::size(kColumns); ++i) {
    const TakeOffColumn& column = kColumns[i].column;
    const bool isRow = line.level == Level::kRow;
    const bool isOfGroups = column.isText && !column.isOfRows;
    if (column.name == "level" || (column.isOfRows && !isRow) ||
        (isOfGroups && line.level == Level::kTotal) ||
        (isRow && (column.name == "components" || column.name == "description"))) {
      continue;
    }
    json.key(column.name);
    const TakeOffCell cell = cellOf(line, i, options);
    if (const auto* text = std::get_if<std::string>(&cell)) {
      json.value(*text);
    } else {
      json.value(std::get<double>(cell));
    }
  }
  json.endObject();
}

std::size_t groupingsOf(const TakeOff& takeOff) { return takeOff.groups().size(); }

}  // namespace

std::string_view nameOf(Level level) {
  switch (level) {
    case Level::kRow:
      return "row";
    case Level::kSubtotal:
      return "subtotal";
    case Level::kTotal:
      break;
  }
  return "total";
}

std::vector<TakeOffLine> linesOf(const TakeOff& takeOff, const TakeOffOptions& options,
                                 std::size_t grouping, bool sumsOnly) {
  const bool isGrouped = !options.groupings.empty();
  const bool hasRows = !isGrouped || !(sumsOnly || options.groupings[grouping].isBill());
  const std::string_view by = isGrouped ? std::string_view(options.groupings[grouping].by()) : "";
  std::vector<TakeOffLine> lines;
  for (const auto& [value, group] : takeOff.groups()[grouping]) {
    if (hasRows) {
      for (const auto& [size, amount] : group.rows) {
        lines.push_back({Level::kRow, by, value, {}, size, amount, 0});
      }
    }
    if (isGrouped) {
      lines.push_back(
          {Level::kSubtotal, by, value, group.description, {}, group.sum, group.components});
    }
  }
  return lines;
}

TakeOffLine totalOf(const TakeOff& takeOff) {
  return {Level::kTotal, {}, {}, {}, {}, takeOff.all().sum, takeOff.all().components};
}

std::vector<TakeOffColumn> takeOffColumns() {
  std::vector<TakeOffColumn> columns;
  for (const Column& each : kColumns) columns.push_back(each.column);
  return columns;
}

std::string titleOf(const TakeOffColumn& column, const Units& units) {
  const std::string_view unit = column.isText ? "" : units.of(column.quantity);
  return std::string(column.name) + (unit.empty() ? "" : "_") + std::string(unit);
}

TakeOffCell cellOf(const TakeOffLine& line, std::size_t column, const TakeOffOptions& options) {
  const Column& each = kColumns[column];
  if (each.text != nullptr) return each.text(line);
  return options.units.value(each.column.quantity, each.number(line, options));
}

std::string tableText(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly) {
  std::string text;
  for (std::size_t i = 0; i < groupingsOf(takeOff); ++i) {
    std::vector<TakeOffLine> lines = linesOf(takeOff, options, i, sumsOnly);
    lines.push_back(totalOf(takeOff));
    if (i > 0) text += '\n';
    text += People(options, std::move(lines))
                .text(options.groupings.empty() ? "" : options.groupings[i].by());
  }
  return text;
}

std::string tableCsv(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly) {
  std::string text;
  for (const Column& each : kColumns) {
    text += (text.empty() ? "" : ",") + titleOf(each.column, options.units);
  }
  text += '\n';
  for (std::size_t i = 0; i < groupingsOf(takeOff); ++i) {
    for (const TakeOffLine& line : linesOf(takeOff, options, i, sumsOnly)) {
      appendCsvLine(text, line, options);
    }
  }
  appendCsvLine(text, totalOf(takeOff), options);
  return text;
}

std::string tableJson(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk.measure/2");
  json.key("unit").value(options.unit).key("units").value(options.units.name());
  json.key("density").value(options.density).key("content_density").value(options.content);
  json.key("insulation").value(options.insulation);
  for (const Level level : {Level::kRow, Level::kSubtotal}) {
    json.key(level == Level::kRow ? "rows" : "groups").beginArray();
    for (std::size_t i = 0; i < groupingsOf(takeOff); ++i) {
      for (const TakeOffLine& line : linesOf(takeOff, options, i, sumsOnly)) {
        if (line.level == level) appendJsonLine(json, line, options);
      }
    }
    json.endArray();
  }
  json.key("all");
  appendJsonLine(json, totalOf(takeOff), options);
  json.key("remarks");
  takeOff.remarks().appendJson(json);
  json.endObject();
  return text;
}

}  // namespace VeskTool
