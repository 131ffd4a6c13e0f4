// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_TABLES_H
#define VESK_TOOLS_TAKEOFF_TABLES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "takeoff/TakeOff.h"

namespace VeskTool {

// Whether a line stands for elements of one kind and size, for a group or for all.
enum class Level { kRow, kSubtotal, kTotal };

std::string_view nameOf(Level level);  // "row", "subtotal", "total"

struct TakeOffLine {
  Level level = Level::kTotal;
  std::string_view by;
  std::string_view group;
  std::string_view description;
  Size size;  // of a row
  Amount amount;
  std::uint64_t components = 0;
};

// The lines of one grouping in their order: of each group its rows and then its sum, with
// `sumsOnly` and for a bill of materials the sum alone. The total is not among them. They
// look into the take-off and its options.
std::vector<TakeOffLine> linesOf(const TakeOff& takeOff, const TakeOffOptions& options,
                                 std::size_t grouping, bool sumsOnly);
TakeOffLine totalOf(const TakeOff& takeOff);

// A column for programs and spreadsheets: one plain number or one text.
struct TakeOffColumn {
  std::string_view name;  // "length"
  Quantity quantity = Quantity::kCount;
  bool isText = false;
  bool isOfRows = false;  // of rows alone: kind and sizes
};

// All of them, always the same ones in the same order.
std::vector<TakeOffColumn> takeOffColumns();

// "length_m": name and unit.
std::string titleOf(const TakeOffColumn& column, const Units& units);

using TakeOffCell = std::variant<std::string, double>;
TakeOffCell cellOf(const TakeOffLine& line, std::size_t column, const TakeOffOptions& options);

// For people; a table for each grouping, columns that hold something.
std::string tableText(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly);

std::string tableCsv(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly);
std::string tableJson(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly);

}  // namespace VeskTool

#endif
