// SPDX-License-Identifier: MIT
#include <cmath>
#include <string>
#include <vector>

#include "Module.h"
#include "Plant.h"
#include "Poll.h"
#include "select/Selection.h"
#include "vesk/Extents.h"
#include "vesk/GeEx.h"
#include "vesk/GeMatrix.h"

namespace VeskPython {
namespace {

// The corners of the box of all elements, least first; nan without a point.
py::array extentsOf(const py::dict& table) {
  Plant plant(table);
  Vesk::Extents box;
  {
    const py::gil_scoped_release free;
    Poll poll;
    plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
      poll();
      element.geo->addExtents(box);
    });
  }
  const bool isEmpty = !(box.min.x <= box.max.x);
  const GePoint none(std::nan(""), std::nan(""), std::nan(""));
  Column<double> corners{{3}};
  corners.add(isEmpty ? none : box.min);
  corners.add(isEmpty ? none : box.max);
  return corners.toArray();
}

// Of each element, 0 for what is not solid.
py::array volumesOf(const py::dict& table) {
  Plant plant(table);
  Column<double> volumes;
  {
    const py::gil_scoped_release free;
    Poll poll;
    plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
      poll();
      volumes.add(element.geo->volume());
    });
  }
  return volumes.toArray();
}

Vesk::Criterion criterionOf(const std::string& name) {
  for (const Vesk::CriterionText& each : Vesk::criteria()) {
    if (each.option == "--" + name) return each.criterion;
  }
  throw py::value_error("there is no criterion " + name);
}

Vesk::SelectionElement seen(const Vesk::RecordElement& element) {
  return {*element.geo, element.header.f1.view(), element.header.f2.view(), element.firstLine,
          element.lastLine};
}

// Whether each element is meant by texts of (criterion, text, whether it is negated).
py::array selectedOf(const py::dict& table, const py::list& texts, double tolerance) {
  Vesk::Selection selection;
  selection.setTolerance(tolerance);
  for (const py::handle& each : texts) {
    const auto words = py::cast<py::tuple>(each);
    const auto name = py::cast<std::string>(words[0]);
    try {
      selection.add(criterionOf(name), toBytes(words[1]), py::cast<bool>(words[2]));
    } catch (const Vesk::SelectionError& error) {
      const std::string hint = error.hint.empty() ? "" : "; " + error.hint;
      throw py::value_error(name + ": " + error.what() + hint);
    }
  }
  Plant plant(table);
  Column<std::uint8_t> chosen;
  {
    const py::gil_scoped_release free;
    Poll poll;
    if (selection.needsModel()) {
      plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
        poll();
        selection.gather(seen(element));
      });
      selection.finish();
    }
    plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
      poll();
      chosen.add(selection.takes(seen(element)) ? std::uint8_t{1} : std::uint8_t{0});
    });
  }
  return chosen.toArray();
}

// The elements whose mark is not 0.
py::dict taken(const py::dict& table, const py::object& marks) {
  Plant plant(table);
  Column<std::uint8_t> chosen;
  chosen.take(marks, "mask");
  if (chosen.rows() != plant.size()) {
    throw py::value_error("the mask has " + std::to_string(chosen.rows()) + " rows, not " +
                          std::to_string(plant.size()));
  }
  Plant part;
  {
    const py::gil_scoped_release free;
    Poll poll;
    std::size_t i = 0;
    plant.each([&](Vesk::RecordElement& element, std::uint32_t file) {
      poll();
      if (chosen.at(i++) != 0) part.add(element, file);
    });
  }
  return part.toPython();
}

// Scales about the origin, then turns by the columns of a matrix, then moves. As in the
// tool's conversions texts are moved too, which belong to what they stand beside.
py::dict moved(const py::dict& table, double factor, const py::object& rows,
               const py::object& shift) {
  Column<double> turn{{3}};
  Column<double> by;
  turn.take(rows, "matrix");
  by.take(shift, "move");
  if (turn.rows() != 3 || by.rows() != 3) throw py::value_error("a matrix is 3 x 3, a shift 3");
  const auto column = [&](std::size_t i) {
    return GeVector(turn.at(i), turn.at(3 + i), turn.at(6 + i));
  };
  const GeMatrix matrix(column(0), column(1), column(2), {});
  const GeVector move = by.vector(0);
  const GeMatrix shifted({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, move);
  const bool turns = matrix.columns != GeMatrix().columns;
  const bool moves = move.x != 0.0 || move.y != 0.0 || move.z != 0.0;
  Plant plant(table);
  Plant result;
  {
    const py::gil_scoped_release free;
    Poll poll;
    plant.each([&](Vesk::RecordElement& element, std::uint32_t file) {
      poll();
      Vesk::Geo& geo = *element.geo;
      if (factor != 1.0) geo.scale(factor);
      if (turns) geo.rot(matrix);
      const bool isText = geo.typeCode() == Vesk::Txt::kTypeCode;
      if (moves && isText) geo.rot(shifted);
      if (moves && !isText) geo.move(move);
      result.add(element, file);
    });
  }
  return result.toPython();
}

}  // namespace

void defineQuerying(py::module_& module) {
  module.def("extents", &extentsOf);
  module.def("volumes", &volumesOf);
  module.def("select", &selectedOf);
  module.def("take", &taken);
  module.def("move", &moved);
}

}  // namespace VeskPython
