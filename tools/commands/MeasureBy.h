// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_MEASUREBY_H
#define VESK_TOOLS_MEASUREBY_H

#include <cstdint>
#include <map>
#include <string>

#include "sidecar/Sidecar.h"
#include "vesk/Geo.h"

namespace VeskTool {

// What the components with one value of a column come to.
struct BillRow {
  std::string description;       // of the first that has one
  std::uint64_t components = 0;  // rows of the sidecar that have elements
  std::uint64_t elements = 0;
  double length = 0.0;  // of the centre lines, in the unit of the file
  double volume = 0.0;  // of the solids
};

// Takes off by a column of the sidecar: what was drawn for one component counts as one.
class Bill {
 public:
  // The places of the column and, if there is one, of the descriptions.
  Bill(std::size_t column, int description) : column_(column), description_(description) {}

  // The elements of a component come one after the other. Without a row the value is
  // empty, and the element no component.
  void add(const Vesk::Geo& geo, const Vesk::SidecarRow* row);

  // By value.
  const std::map<std::string, BillRow>& rows() const { return rows_; }

 private:
  bool isNew(const Vesk::SidecarRow& row);

  std::size_t column_;
  int description_;
  std::map<std::string, BillRow> rows_;
  std::string f1_;
  std::string f2_;
  int first_ = -1;
};

// Adds what another file has come to.
void merge(std::map<std::string, BillRow>& to, const std::map<std::string, BillRow>& from);

}  // namespace VeskTool

#endif
