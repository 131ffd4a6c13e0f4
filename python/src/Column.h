// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_COLUMN_H
#define VESK_PYTHON_COLUMN_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace VeskPython {

namespace py = pybind11;

// How many rows a column has.
enum class Rows {
  kElements,  // one for each element
  kOffsets,   // one more: where the items of each element begin in the columns behind
  kItems,     // as the offsets before it say
};

// Numbers, `width` of them for each row: its own while a plant is read, or those of an
// array of numpy's, which this object keeps alive. Arrays leave and come without a copy.
template <class T>
class Column {
 public:
  explicit Column(std::vector<std::size_t> shape = {}) : shape_(std::move(shape)) {
    for (const std::size_t each : shape_) width_ *= each;
  }

  void add(T value) { own_.push_back(value); }
  void add(const GePoint& p) { own_.insert(own_.end(), {p.x, p.y, p.z}); }
  void add(const GeVector& v) { own_.insert(own_.end(), {v.x, v.y, v.z}); }

  std::size_t width() const { return width_; }
  std::size_t rows() const { return view().size() / width_; }
  std::span<const T> view() const { return array_ ? given_ : std::span<const T>(own_); }
  T at(std::size_t i) const { return view()[i]; }

  // Three numbers from the item on.
  GePoint point(std::size_t row) const {
    const T* p = view().data() + 3 * row;
    return {p[0], p[1], p[2]};
  }
  GeVector vector(std::size_t row) const {
    const T* p = view().data() + 3 * row;
    return {p[0], p[1], p[2]};
  }

  // Gives the numbers away.
  py::array toArray() {
    const std::vector<py::ssize_t> shape = shapeOf(rows());
    auto kept = std::make_unique<std::vector<T>>(std::move(own_));
    own_.clear();
    const T* data = kept->data();
    py::capsule owner(kept.get(), [](void* p) { delete static_cast<std::vector<T>*>(p); });
    static_cast<void>(kept.release());
    return py::array_t<T>(shape, data, owner);
  }

  // Takes an array, of another type or layout as a copy. Throws ValueError for a shape
  // that is none of this column; `name` is for its text.
  void take(const py::object& object, const std::string& name) {
    auto array = Array::ensure(object);
    if (!array) throw py::error_already_set();
    bool fits = static_cast<std::size_t>(array.ndim()) == shape_.size() + 1;
    for (std::size_t i = 0; fits && i < shape_.size(); ++i) {
      fits = static_cast<std::size_t>(array.shape(static_cast<py::ssize_t>(i + 1))) == shape_[i];
    }
    if (!fits) {
      throw py::value_error(name + ": the shape is " + shapeText(array) + ", not " + shapeText());
    }
    array_ = array;
    given_ = {array.data(), static_cast<std::size_t>(array.size())};
  }

 private:
  using Array = py::array_t<T, py::array::c_style | py::array::forcecast>;

  std::vector<py::ssize_t> shapeOf(std::size_t rows) const {
    std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(rows)};
    for (const std::size_t each : shape_) shape.push_back(static_cast<py::ssize_t>(each));
    return shape;
  }

  std::string shapeText() const {
    std::string text = "(n";
    for (const std::size_t each : shape_) text += ", " + std::to_string(each);
    return text + (shape_.empty() ? ",)" : ")");
  }

  static std::string shapeText(const py::array& array) {
    return py::str(py::object(array.attr("shape")));
  }

  std::vector<std::size_t> shape_;
  std::size_t width_ = 1;
  std::vector<T> own_;
  py::object array_;
  std::span<const T> given_;
};

}  // namespace VeskPython

#endif
