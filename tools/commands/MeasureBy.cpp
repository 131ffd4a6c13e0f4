// SPDX-License-Identifier: MIT
#include "commands/MeasureBy.h"

#include "elements/Kinds.h"
#include "vesk/Pline.h"

namespace VeskTool {
namespace {

double lengthOf(const Vesk::Geo& geo) {
  if (kindOf(geo) != Kind::kSegment && kindOf(geo) != Kind::kPolyline) return 0.0;
  const auto& line = static_cast<const Vesk::Pline&>(geo);
  double length = 0.0;
  for (std::size_t i = 1; i < line.vertices.size(); ++i)
    length += distance(line.vertices[i - 1], line.vertices[i]);
  return length;
}

}  // namespace

bool Bill::isNew(const Vesk::SidecarRow& row) {
  if (row.first == first_ && row.f1 == f1_ && row.f2 == f2_) return false;
  f1_ = row.f1;
  f2_ = row.f2;
  first_ = row.first;
  return true;
}

void Bill::add(const Vesk::Geo& geo, const Vesk::SidecarRow* row) {
  BillRow& sum = rows_[row == nullptr ? std::string() : row->values[column_]];
  ++sum.elements;
  sum.length += lengthOf(geo);
  if (geo.isSolid()) sum.volume += geo.volume();
  if (row == nullptr || !isNew(*row)) return;
  ++sum.components;
  if (description_ >= 0 && sum.description.empty())
    sum.description = row->values[static_cast<std::size_t>(description_)];
}

void merge(std::map<std::string, BillRow>& to, const std::map<std::string, BillRow>& from) {
  for (const auto& [value, row] : from) {
    BillRow& sum = to[value];
    if (sum.description.empty()) sum.description = row.description;
    sum.components += row.components;
    sum.elements += row.elements;
    sum.length += row.length;
    sum.volume += row.volume;
  }
}

}  // namespace VeskTool
