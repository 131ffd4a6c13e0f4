// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_PLANT_H
#define VESK_PYTHON_PLANT_H

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Columns.h"
#include "prims/Visit.h"
#include "vesk/HeaderFields.h"
#include "vesk/RecordFile.h"

namespace VeskPython {

// What elements of a plant have in common: all of their header but the counter.
struct Header {
  Vesk::HeaderFields fields;  // f3 blank, but for a counter that no number has
  std::optional<std::int32_t> ft;
  std::optional<std::int32_t> tk;
};

// The elements of record files as columns, a set for each kind.
class Plant {
 public:
  Plant() = default;

  // From what toPython has made. The arrays live as long as this. Throws ValueError for
  // columns that do not fit each other.
  explicit Plant(const py::dict& table);

  void add(const Vesk::RecordElement& element, std::uint32_t file);

  std::size_t size() const { return order_.view().size(); }
  std::size_t headers() const { return headers_.size(); }
  const Header& header(std::size_t i) const { return headers_[i]; }

  // {"order": type codes, "headers": [...], "cylinders": {...}, ...}; nothing stays here.
  py::dict toPython();

  // Calls act(element, file) for each element in order. It may change the element, whose
  // counter is as it was read. Throws ValueError for a header or counter that is none.
  template <class Do>
  void each(Do&& act);

 private:
  std::int32_t headerOf(const Vesk::RecordElement& element, std::int32_t& counter);
  void fill(const ElementColumns& columns, std::size_t row, const char* kind,
            Vesk::RecordElement& element) const;
  void checkOrder();

  Column<std::uint8_t> order_;  // type codes
  AllColumns columns_;
  std::vector<Header> headers_;
  std::unordered_map<std::string, std::int32_t> headerIds_;
  std::string lastKey_;
  std::int32_t lastId_ = -1;
};

// A counter as three digits; -1: blank.
void setCounter(Vesk::HeaderFields& fields, std::int32_t counter);

// From a tuple f1, f2, f4, f5, f6, f7, ft, tk, f3.
Header headerOf(const py::handle& words);

// Text of any bytes, as Python has them: what is no UTF-8 comes back as it was.
py::str toText(std::string_view bytes);
std::string toBytes(const py::handle& text);

template <class Do>
void Plant::each(Do&& act) {
  std::vector<std::size_t> rows(Vesk::kLastTypeCode, 0);
  Vesk::RecordElement element;
  for (const std::uint8_t code : order_.view()) {
    Vesk::visitKind(
        code,
        [&](auto kind) {
          using Primitive = typename decltype(kind)::Class;
          const auto& columns = std::get<Primitive::kTypeCode - 1>(columns_);
          const std::size_t row = rows[Primitive::kTypeCode - 1]++;
          Primitive geo;
          columns.get(row, geo);
          element.geo = &geo;
          fill(columns.element, row, columns.kName, element);
          act(element, columns.element.file.at(row));
          return true;
        },
        [] { return false; });
  }
}

}  // namespace VeskPython

#endif
