// SPDX-License-Identifier: MIT
#include "export/SqliteBoxes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "export/SqliteStatement.h"

namespace VeskTool {
namespace {

using Limits = std::numeric_limits<float>;

// The nearest 32-bit number that is not greater, or not less: a box never shrinks.
float notGreater(double value) {
  if (value < -double{Limits::max()}) return -Limits::infinity();
  if (value > double{Limits::max()}) return Limits::max();
  const auto near = static_cast<float>(value);
  return double{near} > value ? std::nextafter(near, -Limits::infinity()) : near;
}
float notLess(double value) { return -notGreater(-value); }

// A box in a leaf with its element, or the box of a node in the node above it. The numbers
// stand as min x, max x, min y ...
struct Cell {
  std::int64_t id = 0;
  std::array<float, 6> box{};
};

constexpr std::int64_t kRoot = 1;
constexpr std::size_t kHeadBytes = 4;
constexpr std::size_t kCellBytes = 8 + 6 * 4;

void appendBigEndian(std::string& out, std::uint64_t value, int bytes) {
  for (int i = bytes; i-- > 0;) out += static_cast<char>(value >> (8 * i) & 0xff);
}

// A node as SQLite keeps it: the depth of the tree (in the root, otherwise zero) and the number of
// cells, two bytes each, then the cells, all big-endian; zeroes up to the size of a node.
class Tree {
 public:
  Tree(sqlite3* database, std::int64_t cells, std::size_t nodeBytes)
      : nodeBytes_(nodeBytes),
        insertNode_(database, "REPLACE INTO boxes_node VALUES(?, ?)"),
        insertElement_(database, "INSERT INTO boxes_rowid VALUES(?, ?)"),
        insertParent_(database, "INSERT INTO boxes_parent VALUES(?, ?)") {
    const auto capacity = static_cast<std::int64_t>((nodeBytes - kHeadBytes) / kCellBytes);
    std::int64_t number = kRoot + 1;
    while (levels_.empty() || levels_.back().nodes > 1) {
      Level level;
      level.cells = levels_.empty() ? cells : levels_.back().nodes;
      level.nodes = (level.cells + capacity - 1) / capacity;
      level.first = level.nodes == 1 ? kRoot : number;
      number += level.nodes;
      levels_.push_back(level);
    }
  }

  // As many as were announced, in an order in which neighbours stand side by side.
  void add(const Cell& cell) { add(0, cell); }

 private:
  struct Level {
    std::int64_t cells = 0;  // of the whole level
    std::int64_t nodes = 0;
    std::int64_t first = 0;  // number of its first node
    std::int64_t added = 0;
    std::int64_t open = 0;  // cells of the node that is being filled
    std::string node;
    std::array<float, 6> box{};

    // Nodes of a level are equally full but for one cell.
    std::int64_t nodeOf(std::int64_t cell) const { return first + cell * nodes / cells; }
  };

  void add(std::size_t at, const Cell& cell) {
    Level& level = levels_[at];
    const std::int64_t node = level.nodeOf(level.added);
    if (level.open == 0) level.box = cell.box;
    appendBigEndian(level.node, static_cast<std::uint64_t>(cell.id), 8);
    for (std::size_t i = 0; i < cell.box.size(); ++i) {
      appendBigEndian(level.node, std::bit_cast<std::uint32_t>(cell.box[i]), 4);
      level.box[i] =
          i % 2 == 0 ? std::min(level.box[i], cell.box[i]) : std::max(level.box[i], cell.box[i]);
    }
    (at == 0 ? insertElement_ : insertParent_).add(cell.id).add(node).run();
    ++level.added;
    ++level.open;
    if (level.added == level.cells || level.nodeOf(level.added) != node) close(at, node);
  }

  void close(std::size_t at, std::int64_t node) {
    Level& level = levels_[at];
    const std::size_t depth = node == kRoot ? levels_.size() - 1 : 0;
    std::string bytes;
    appendBigEndian(bytes, depth, 2);
    appendBigEndian(bytes, static_cast<std::uint64_t>(level.open), 2);
    bytes += level.node;
    bytes.resize(nodeBytes_);
    insertNode_.add(node).addBytes(bytes).run();
    level.node.clear();
    level.open = 0;
    if (node != kRoot) add(at + 1, {node, level.box});
  }

  std::size_t nodeBytes_;
  std::vector<Level> levels_;
  SqliteStatement insertNode_;
  SqliteStatement insertElement_;
  SqliteStatement insertParent_;
};

// The region that holds the middles of all boxes, in halves of their coordinates, so that no
// difference overflows.
struct Region {
  std::array<double, 3> low{};
  std::array<double, 3> high{};
};

// The bits of a number of 21 bits, two zeroes between each.
std::uint64_t spread(std::uint64_t bits) {
  bits = (bits | bits << 32) & 0x001f00000000ffff;
  bits = (bits | bits << 16) & 0x001f0000ff0000ff;
  bits = (bits | bits << 8) & 0x100f00f00f00f00f;
  bits = (bits | bits << 4) & 0x10c30c30c30c30c3;
  return (bits | bits << 2) & 0x1249249249249249;
}

double middle(sqlite3_value** box, std::size_t axis) {
  return 0.25 * sqlite3_value_double(box[axis]) + 0.25 * sqlite3_value_double(box[axis + 3]);
}

// The SQL function `place`: where the middle of a box (min_x, min_y, min_z, max_x ...) stands on
// the Z-order curve through the region.
void place(sqlite3_context* context, int, sqlite3_value** box) {
  const auto& region = *static_cast<const Region*>(sqlite3_user_data(context));
  constexpr double kSteps = 0x1fffff;
  std::uint64_t code = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double length = region.high[axis] - region.low[axis];
    const double part = length > 0 ? (middle(box, axis) - region.low[axis]) / length : 0.0;
    code |= spread(static_cast<std::uint64_t>(std::clamp(part, 0.0, 1.0) * kSteps)) << axis;
  }
  sqlite3_result_int64(context, static_cast<std::int64_t>(code));
}

// The boxes in the order of the curve.
void addBoxes(sqlite3* database, Tree& tree) {
  SqliteStatement boxes(database,
                        "SELECT id, min_x, max_x, min_y, max_y, min_z, max_z FROM elements "
                        "WHERE min_x IS NOT NULL "
                        "ORDER BY place(min_x, min_y, min_z, max_x, max_y, max_z), id");
  while (boxes.next()) {
    Cell cell{boxes.integer(0), {}};
    for (std::size_t i = 0; i < cell.box.size(); ++i) {
      const double value = boxes.number(1 + static_cast<int>(i));
      cell.box[i] = i % 2 == 0 ? notGreater(value) : notLess(value);
    }
    tree.add(cell);
  }
}

// Gives the function `place` to the database, or takes it back.
using Place = void (*)(sqlite3_context*, int, sqlite3_value**);
void setPlace(sqlite3* database, Place function, Region* region) {
  if (sqlite3_create_function(database, "place", 6, SQLITE_UTF8 | SQLITE_DETERMINISTIC, region,
                              function, nullptr, nullptr) != SQLITE_OK) {
    failSqlite(database);
  }
}

// How many elements have a box; `region` is set if any has.
std::int64_t countBoxes(sqlite3* database, Region& region) {
  SqliteStatement all(database,
                      "SELECT count(*), min(0.25 * min_x + 0.25 * max_x), "
                      "min(0.25 * min_y + 0.25 * max_y), min(0.25 * min_z + 0.25 * max_z), "
                      "max(0.25 * min_x + 0.25 * max_x), max(0.25 * min_y + 0.25 * max_y), "
                      "max(0.25 * min_z + 0.25 * max_z) FROM elements WHERE min_x IS NOT NULL");
  if (!all.next()) return 0;
  for (int axis = 0; axis < 3; ++axis) {
    region.low[static_cast<std::size_t>(axis)] = all.number(1 + axis);
    region.high[static_cast<std::size_t>(axis)] = all.number(4 + axis);
  }
  return all.integer(0);
}

std::size_t nodeBytes(sqlite3* database) {
  SqliteStatement root(database, "SELECT length(data) FROM boxes_node WHERE nodeno = 1");
  if (!root.next()) failSqlite(database);
  return static_cast<std::size_t>(root.integer(0));
}

}  // namespace

void fillBoxes(sqlite3* database) {
  Region region;
  const std::int64_t count = countBoxes(database, region);
  if (count == 0) return;
  Tree tree(database, count, nodeBytes(database));
  setPlace(database, place, &region);
  addBoxes(database, tree);
  setPlace(database, nullptr, nullptr);
}

}  // namespace VeskTool
