// SPDX-License-Identifier: MIT
#include "Plant.h"

#include <algorithm>
#include <array>
#include <limits>

#include "output/Base36.h"

namespace VeskPython {
namespace {

constexpr std::size_t kHeaderWords = 9;

void append(std::string& key, const std::optional<std::int32_t>& value) {
  if (value) key += std::to_string(*value);
  key += ',';
}

// Whether these digits are what the number is written with.
bool isNumber(const Vesk::FixStr<3>& digits, std::int32_t number) {
  std::array<char, 3> written{};
  return number >= 0 && Vesk::encodeBase36(number, written) &&
         digits.view() == std::string_view(written.data(), written.size());
}

std::string_view trimmed(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

py::object toPython(const std::optional<std::int32_t>& value) {
  return value ? py::object(py::int_(*value)) : py::object(py::none());
}

py::tuple toPython(const Header& header) {
  const Vesk::HeaderFields& f = header.fields;
  const bool isOdd = !f.f3.isBlank();
  return py::make_tuple(toText(trimmed(f.f1.view())), toText(trimmed(f.f2.view())),
                        toText(trimmed(f.f4.view())), toText(trimmed(f.f5.view())),
                        toText(trimmed(f.f6.view())), toText(trimmed(f.f7.view())),
                        toPython(header.ft), toPython(header.tk),
                        isOdd ? py::object(toText(f.f3.view())) : py::object(py::none()));
}

std::optional<std::int32_t> numberOf(const py::handle& word) {
  if (word.is_none()) return std::nullopt;
  return py::cast<std::int32_t>(word);
}

template <std::size_t width>
void assign(Vesk::FixStr<width>& field, const char* name, const py::handle& word) {
  const std::string text = toBytes(word);
  if (text.size() > width) {
    throw py::value_error(std::string("header ") + name + ": '" + text + "' has more than " +
                          std::to_string(width) + " bytes");
  }
  if (text.find_first_of(std::string_view("\0\n", 2)) != std::string::npos) {
    throw py::value_error(std::string("header ") + name + ": a zero byte or a line feed");
  }
  field.assign(text.c_str(), false);
}

// Reads the columns of a kind and sees that they fit each other.
struct Taker {
  Taker(const char* name, py::dict columns) : kind(name), from(std::move(columns)) {}

  const char* kind;
  py::dict from;
  std::size_t elements = std::numeric_limits<std::size_t>::max();
  std::size_t needed = 0;  // items, by the last offsets

  template <class T>
  void operator()(const char* name, Column<T>& column, Rows rows) {
    const std::string place = std::string(kind) + '.' + name;
    if (!from.contains(name)) throw py::value_error(place + " is missing");
    column.take(from[name], place);
    if (rows == Rows::kItems) return checkItems(place, column);
    if (rows == Rows::kOffsets) return checkOffsets(place, column, elements + 1);
    if (elements == std::numeric_limits<std::size_t>::max()) elements = column.rows();
    if (column.rows() != elements) {
      throw py::value_error(place + ": " + std::to_string(column.rows()) + " rows, not " +
                            std::to_string(elements));
    }
  }

  template <class T>
  void checkOffsets(const std::string& place, const Column<T>& column, std::size_t rows) {
    const auto offsets = column.view();
    const bool fits = offsets.size() == rows && offsets.front() >= 0 &&
                      std::is_sorted(offsets.begin(), offsets.end());
    if (!fits) {
      throw py::value_error(place + ": " + std::to_string(rows) +
                            " offsets that do not fall are wanted");
    }
    needed = static_cast<std::size_t>(offsets.back());
  }

  template <class T>
  void checkItems(const std::string& place, const Column<T>& column) {
    const std::string_view name(place);
    // Offsets behind offsets begin items of their own.
    if (name.ends_with("_offsets")) {
      if (name.ends_with("name_offsets")) tags_ = needed;
      return checkOffsets(place, column, tags_ + 1);
    }
    if (column.rows() < needed) {
      throw py::value_error(place + ": " + std::to_string(column.rows()) + " rows, and " +
                            std::to_string(needed) + " are wanted");
    }
  }

 private:
  std::size_t tags_ = 0;
};

}  // namespace

py::str toText(std::string_view bytes) {
  PyObject* text =
      PyUnicode_DecodeUTF8(bytes.data(), static_cast<py::ssize_t>(bytes.size()), "surrogateescape");
  if (text == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(text);
}

std::string toBytes(const py::handle& text) {
  if (py::isinstance<py::bytes>(text)) return py::cast<std::string>(text);
  if (!py::isinstance<py::str>(text)) throw py::type_error("a text is wanted");
  PyObject* bytes = PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape");
  if (bytes == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::bytes>(bytes);
}

void setCounter(Vesk::HeaderFields& fields, std::int32_t counter) {
  std::array<char, 4> digits{};
  if (counter >= 0) Vesk::encodeBase36(counter, std::span(digits.data(), 3));
  fields.f3.assign(counter >= 0 ? digits.data() : nullptr, false);
}

Header headerOf(const py::handle& words) {
  const auto fields = py::reinterpret_borrow<py::object>(words);
  if (py::len(fields) != kHeaderWords) throw py::value_error("a header has nine fields");
  const auto word = [&](int i) { return py::object(fields[py::int_(i)]); };
  Header header;
  assign(header.fields.f1, "f1", word(0));
  assign(header.fields.f2, "f2", word(1));
  assign(header.fields.f4, "f4", word(2));
  assign(header.fields.f5, "f5", word(3));
  assign(header.fields.f6, "f6", word(4));
  assign(header.fields.f7, "f7", word(5));
  header.ft = numberOf(word(6));
  header.tk = numberOf(word(7));
  if (!word(8).is_none()) assign(header.fields.f3, "f3", word(8));
  return header;
}

Plant::Plant(const py::dict& table) {
  order_.take(table["order"], "order");
  for (const py::handle& each : table["headers"]) {
    headers_.push_back(VeskPython::headerOf(each));
  }
  std::apply(
      [&](auto&... columns) {
        (columns.each(Taker{columns.kName, py::dict(table[columns.kName])}), ...);
      },
      columns_);
  checkOrder();
}

void Plant::checkOrder() {
  std::vector<std::size_t> wanted(Vesk::kLastTypeCode + 1, 0);
  for (const std::uint8_t code : order_.view()) {
    if (!Vesk::isTypeCode(code)) {
      throw py::value_error("order: " + std::to_string(code) + " is no kind");
    }
    ++wanted[code];
  }
  const auto check = [&](const auto& columns) {
    using Primitive = typename std::remove_cvref_t<decltype(columns)>::Primitive;
    const std::size_t rows = columns.element.header.rows();
    if (rows == wanted[Primitive::kTypeCode]) return;
    throw py::value_error("order: it has " + std::to_string(wanted[Primitive::kTypeCode]) + ' ' +
                          columns.kName + ", and there are " + std::to_string(rows));
  };
  std::apply([&](const auto&... columns) { (check(columns), ...); }, columns_);
}

std::int32_t Plant::headerOf(const Vesk::RecordElement& element, std::int32_t& counter) {
  const Vesk::HeaderFields& f = element.header;
  counter = element.counter();
  const bool isBlank = f.f3.isBlank();
  if (isBlank) counter = -1;
  const bool isOdd = !isBlank && !isNumber(f.f3, counter);
  std::string key;
  key.reserve(64);
  for (const std::string_view each :
       {f.f1.view(), f.f2.view(), f.f4.view(), f.f5.view(), f.f6.view(), f.f7.view()}) {
    key += each;
  }
  append(key, element.ft);
  append(key, element.tk);
  if (isOdd) key += f.f3.view();
  if (lastId_ >= 0 && key == lastKey_) return lastId_;
  const auto [place, isNew] =
      headerIds_.try_emplace(key, static_cast<std::int32_t>(headers_.size()));
  if (isNew) {
    headers_.push_back({f, element.ft, element.tk});
    if (!isOdd) headers_.back().fields.f3.assign(nullptr, false);
  }
  lastKey_ = std::move(key);
  lastId_ = place->second;
  return lastId_;
}

void Plant::add(const Vesk::RecordElement& element, std::uint32_t file) {
  Vesk::visitKind(
      element.geo->typeCode(),
      [&](auto kind) {
        using Primitive = typename decltype(kind)::Class;
        auto& columns = std::get<Primitive::kTypeCode - 1>(columns_);
        columns.add(static_cast<const Primitive&>(*element.geo));
        std::int32_t counter = 0;
        columns.element.header.add(headerOf(element, counter));
        columns.element.counter.add(counter);
        columns.element.file.add(file);
        columns.element.line.add(static_cast<std::int64_t>(element.firstLine));
        order_.add(static_cast<std::uint8_t>(Primitive::kTypeCode));
        return true;
      },
      [] { return false; });
}

void Plant::fill(const ElementColumns& columns, std::size_t row, const char* kind,
                 Vesk::RecordElement& element) const {
  const std::int32_t header = columns.header.at(row);
  const std::int32_t counter = columns.counter.at(row);
  const auto fail = [&](const std::string& what) {
    throw std::out_of_range(std::string(kind) + ": row " + std::to_string(row) + ": " + what);
  };
  if (header < 0 || static_cast<std::size_t>(header) >= headers_.size()) {
    fail("there is no header " + std::to_string(header));
  }
  if (counter > Vesk::kMaxCounter) {
    fail("the counter is " + std::to_string(counter) + ", and 46655 is the last one");
  }
  const Header& all = headers_[static_cast<std::size_t>(header)];
  element.header = all.fields;
  if (all.fields.f3.isBlank()) setCounter(element.header, counter);
  element.ft = all.ft;
  element.tk = all.tk;
  const std::int64_t line = columns.line.at(row);
  element.firstLine = line < 0 ? 0 : static_cast<std::uint64_t>(line);
  element.lastLine = element.firstLine;
}

py::dict Plant::toPython() {
  py::dict table;
  py::list headers;
  for (const Header& each : headers_) headers.append(VeskPython::toPython(each));
  table["headers"] = headers;
  const auto give = [&](auto& columns) {
    py::dict kind;
    columns.each([&](const char* name, auto& column, Rows) { kind[name] = column.toArray(); });
    table[columns.kName] = kind;
  };
  std::apply([&](auto&... columns) { (give(columns), ...); }, columns_);
  table["order"] = order_.toArray();
  return table;
}

}  // namespace VeskPython
