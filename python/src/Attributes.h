// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_ATTRIBUTES_H
#define VESK_PYTHON_ATTRIBUTES_H

#include <cstdint>
#include <fstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "Column.h"
#include "sidecar/Sidecar.h"
#include "vesk/RecordFile.h"

namespace VeskPython {

// What sidecars tell of the components of a plant: all of their columns, and of each element
// its row.
class Attributes {
 public:
  static constexpr std::int64_t kNone = -1;

  Attributes() = default;

  // From what toPython has made. Throws ValueError for columns that do not fit each other
  // or these elements.
  Attributes(const py::dict& table, std::size_t elements);

  // The place of a column, a new one if there is none of this name.
  std::size_t columnOf(const std::string& name);

  // Adds an element without a row, or with the last one that was added.
  void addNone() { of_.add(kNone); }
  void addLast() { of_.add(static_cast<std::int64_t>(rows_.size()) - 1); }

  // `places` are the columns of its values.
  void addRow(const Vesk::SidecarRow& row, const std::vector<std::size_t>& places);

  bool isEmpty() const { return columns_.empty(); }
  std::size_t rows() const { return rows_.size(); }
  const std::vector<std::string>& columns() const { return columns_; }

  // The row of an element; null if it has none.
  const Vesk::SidecarRow* of(std::size_t element) const;

  // {"columns": [...], "f1": [...], "f2", "first": (n,), "last", "values": [[...], ...],
  // "of": (elements,)}. Only the columns stay.
  py::dict toPython();

 private:
  std::vector<std::string> columns_;
  std::unordered_map<std::string, std::size_t> places_;
  std::vector<Vesk::SidecarRow> rows_;  // with as many values as there were columns
  Column<std::int64_t> of_;
};

// The sidecar of a file, read beside it.
class SidecarBeside {
 public:
  // `shown` names it in messages. Throws std::system_error for a file that can't be opened.
  SidecarBeside(const std::string& name, const std::string& shown);

  // Whether it has no column behind the key.
  bool isEmpty() const { return reader_.columns().empty(); }

  // To be called for each element of the file, in their order. A row that was added to
  // others than these before is added again.
  void give(const Vesk::RecordElement& element, Attributes& to);

  // Behind the last element: what is to be said of the file, or nothing.
  std::string finish();

 private:
  std::ifstream in_;
  Vesk::SidecarReader reader_;
  Vesk::SidecarJoin join_;
  std::vector<std::size_t> places_;
  std::size_t rows_ = 0;  // of the attributes, behind the last row from here
  std::string f1_;
  std::string f2_;
  int first_ = -1;
};

}  // namespace VeskPython

#endif
