// SPDX-License-Identifier: MIT
#include "text/Table.h"

#include <algorithm>

#include "text/Words.h"

namespace VeskTool {
namespace {

std::size_t columnsOf(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return !isContinuationByte(c); }));
}

}  // namespace

std::string padded(std::string_view text, std::size_t width, Table::Side side) {
  const std::size_t columns = columnsOf(text);
  const std::string blanks(width > columns ? width - columns : 0, ' ');
  return side == Table::Side::kLeft ? std::string(text) + blanks : blanks + std::string(text);
}

std::string Table::text() const {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    std::size_t width = columnsOf(columns_[i].heading);
    for (const auto& row : rows_) width = std::max(width, columnsOf(row[i]));
    widths.push_back(width);
  }
  std::string result;
  const auto addLine = [&](const auto& cellOf) {
    std::string line;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (i > 0) line += "  ";
      line += padded(cellOf(i), widths[i], columns_[i].side);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    result += line + '\n';
  };
  addLine([&](std::size_t i) { return columns_[i].heading; });
  for (const auto& row : rows_) addLine([&](std::size_t i) { return row[i]; });
  return result;
}

void appendCsv(std::string& to, std::string_view cell) {
  if (cell.find_first_of(",\"\r\n") == cell.npos) {
    to += cell;
    return;
  }
  to += '"';
  for (const char c : cell) {
    if (c == '"') to += '"';
    to += c;
  }
  to += '"';
}

}  // namespace VeskTool
