// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TABLE_H
#define VESK_TOOLS_TABLE_H

#include <string>
#include <string_view>
#include <vector>

namespace VeskTool {

// A small table for people: columns as wide as their longest cell, two blanks
// between. Cells are UTF-8.
class Table {
 public:
  enum class Side { kLeft, kRight };

  struct Column {
    std::string heading;
    Side side;
  };

  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  bool isEmpty() const { return rows_.empty(); }

  std::string text() const;

 private:
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

// Pads to so many columns.
std::string padded(std::string_view text, std::size_t width, Table::Side side);

// A cell of a CSV line, in quotes if it needs them (RFC 4180).
void appendCsv(std::string& to, std::string_view cell);

}  // namespace VeskTool

#endif
