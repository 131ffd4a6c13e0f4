// SPDX-License-Identifier: MIT
#include "Measuring.h"

#include "Plant.h"
#include "Poll.h"
#include "takeoff/Measures.h"

namespace VeskPython {
namespace {

// Length, lines, surface and volume of each element in the unit of the file, as the tool's
// take-off has them; 0 for what a kind does not have or can't be measured.
py::dict measuresOf(const py::dict& table) {
  Plant plant(table);
  Column<double> length;
  Column<double> lines;
  Column<double> surface;
  Column<double> volume;
  {
    const py::gil_scoped_release free;
    Poll poll;
    plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
      poll();
      const VeskTool::Measures measures = VeskTool::measure(*element.geo, 1.0);
      length.add(measures.length);
      lines.add(measures.lines);
      surface.add(measures.surface);
      volume.add(measures.volume);
    });
  }
  py::dict columns;
  columns["length"] = length.toArray();
  columns["lines"] = lines.toArray();
  columns["surface"] = surface.toArray();
  columns["volume"] = volume.toArray();
  return columns;
}

}  // namespace

void defineMeasuring(py::module_& module) { module.def("measures", &measuresOf); }

}  // namespace VeskPython
