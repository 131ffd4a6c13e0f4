// SPDX-License-Identifier: MIT
#include "Attributes.h"

#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

#include "Plant.h"

namespace VeskPython {
namespace {

std::vector<std::string> textsOf(const py::handle& texts) {
  std::vector<std::string> result;
  for (const py::handle& each : texts) result.push_back(toBytes(each));
  return result;
}

std::ifstream opened(const std::string& name) {
  errno = 0;
  std::ifstream in(name, std::ios::binary);
  if (!in) throw std::system_error(errno, std::generic_category(), name);
  return in;
}

}  // namespace

Attributes::Attributes(const py::dict& table, std::size_t elements)
    : columns_(textsOf(table["columns"])) {
  Column<std::int64_t> first;
  Column<std::int64_t> last;
  first.take(table["first"], "attributes.first");
  last.take(table["last"], "attributes.last");
  of_.take(table["of"], "component");
  const std::vector<std::string> f1 = textsOf(table["f1"]);
  const std::vector<std::string> f2 = textsOf(table["f2"]);
  std::vector<std::vector<std::string>> values;
  for (const py::handle& each : table["values"]) values.push_back(textsOf(each));
  const std::size_t rows = f1.size();
  bool fits = values.size() == columns_.size() && f2.size() == rows && first.rows() == rows &&
              last.rows() == rows && of_.rows() == elements;
  for (const auto& each : values) fits = fits && each.size() == rows;
  for (const std::int64_t row : of_.view()) {
    fits = fits && row >= kNone && row < static_cast<std::int64_t>(rows);
  }
  if (!fits) throw py::value_error("attributes and component do not fit each other or the model");
  for (std::size_t i = 0; i < rows; ++i) {
    Vesk::SidecarRow row{
        f1[i], f2[i], static_cast<int>(first.at(i)), static_cast<int>(last.at(i)), {}};
    for (const auto& each : values) row.values.push_back(each[i]);
    rows_.push_back(std::move(row));
  }
}

std::size_t Attributes::columnOf(const std::string& name) {
  const auto [place, isNew] = places_.try_emplace(name, columns_.size());
  if (isNew) columns_.push_back(name);
  return place->second;
}

void Attributes::addRow(const Vesk::SidecarRow& row, const std::vector<std::size_t>& places) {
  Vesk::SidecarRow kept{row.f1, row.f2, row.first, row.last, {}};
  kept.values.resize(columns_.size());
  for (std::size_t i = 0; i < places.size(); ++i) kept.values[places[i]] = row.values[i];
  rows_.push_back(std::move(kept));
}

const Vesk::SidecarRow* Attributes::of(std::size_t element) const {
  const std::int64_t row = isEmpty() ? kNone : of_.at(element);
  return row == kNone ? nullptr : &rows_[static_cast<std::size_t>(row)];
}

py::dict Attributes::toPython() {
  Column<std::int64_t> first;
  Column<std::int64_t> last;
  py::list names;
  py::list f1;
  py::list f2;
  std::vector<py::list> values(columns_.size());
  for (const std::string& each : columns_) names.append(toText(each));
  for (const Vesk::SidecarRow& row : rows_) {
    f1.append(toText(row.f1));
    f2.append(toText(row.f2));
    first.add(row.first);
    last.add(row.last);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      values[i].append(toText(i < row.values.size() ? row.values[i] : std::string()));
    }
  }
  rows_.clear();
  py::list lists;
  for (const py::list& each : values) lists.append(each);
  py::dict table;
  table["columns"] = names;
  table["f1"] = f1;
  table["f2"] = f2;
  table["first"] = first.toArray();
  table["last"] = last.toArray();
  table["values"] = lists;
  table["of"] = of_.toArray();
  return table;
}

SidecarBeside::SidecarBeside(const std::string& name, const std::string& shown)
    : in_(opened(name)), reader_(in_, shown), join_(reader_) {}

void SidecarBeside::give(const Vesk::RecordElement& element, Attributes& to) {
  if (places_.empty()) {
    for (const std::string& each : reader_.columns()) places_.push_back(to.columnOf(each));
  }
  const Vesk::HeaderFields& header = element.header;
  const Vesk::SidecarRow* row = join_.find(header.f1.view(), header.f2.view(), element.counter());
  if (row == nullptr) return to.addNone();
  const bool isLast = to.rows() > 0 && to.rows() == rows_ && row->first == first_ &&
                      row->f1 == f1_ && row->f2 == f2_;
  if (!isLast) {
    to.addRow(*row, places_);
    rows_ = to.rows();
    first_ = row->first;
    f1_ = row->f1;
    f2_ = row->f2;
  }
  to.addLast();
}

std::string SidecarBeside::finish() {
  join_.finish();
  if (!reader_.fault().empty()) return reader_.fault();
  if (join_.outOfOrder() == 0) return {};
  return reader_.name() + ": has another order than its record file; attributes of " +
         std::to_string(join_.outOfOrder()) + " components are missing";
}

}  // namespace VeskPython
