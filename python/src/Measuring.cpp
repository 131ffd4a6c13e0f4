// SPDX-License-Identifier: MIT
#include "Measuring.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Attributes.h"
#include "Plant.h"
#include "Poll.h"
#include "files/SidecarFile.h"
#include "takeoff/Measures.h"
#include "takeoff/Tables.h"
#include "takeoff/TakeOff.h"
#include "text/Json.h"

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

VeskTool::TakeOffOptions optionsOf(const py::dict& words) {
  const auto number = [&](const char* name) { return py::cast<double>(words[name]); };
  VeskTool::TakeOffOptions options;
  options.unit = number("unit");
  options.units = VeskTool::Units(py::cast<bool>(words["imperial"]));
  options.insulation = number("insulation");
  options.content = words["content"].is_none() ? VeskTool::kWater : number("content");
  for (const py::handle& each : words["by"]) options.groupings.emplace_back(toBytes(each));
  const std::string schedule = toBytes(words["schedule"]);
  const std::string walls = toBytes(words["walls"]);
  if (!schedule.empty() && VeskTool::wallsOfSchedule(schedule).empty()) {
    std::string all;
    for (const std::string& each : VeskTool::scheduleNames()) all += ' ' + each;
    throw py::value_error("schedule '" + schedule + "': one of" + all);
  }
  if (!schedule.empty()) options.walls = VeskTool::Walls::ofSchedule(schedule);
  if (!walls.empty()) options.walls = VeskTool::Walls::ofFile(walls);
  const double density = options.walls.isEmpty() ? 0.0 : VeskTool::kSteel;
  options.density = words["density"].is_none() ? density : number("density");
  options.isVerbose = true;
  return options;
}

void requireAttributes(const VeskTool::TakeOffOptions& options, const Attributes& attributes) {
  for (const VeskTool::Grouping& grouping : options.groupings) {
    if (!grouping.needsSidecar() || !attributes.isEmpty()) continue;
    throw py::value_error("by '" + grouping.by() + "': the model has no attributes to measure by");
  }
}

// File by file, and joined in their order, as the tool does.
VeskTool::TakeOff takenOff(Plant& plant, const std::vector<std::string>& files,
                           const Attributes& attributes, const VeskTool::TakeOffOptions& options) {
  const VeskTool::SidecarColumns columns("the model", attributes.columns());
  VeskTool::TakeOff all(options);
  std::optional<VeskTool::TakeOff> part;
  std::optional<std::uint32_t> last;
  std::size_t index = 0;
  Poll poll;
  plant.each([&](Vesk::RecordElement& element, std::uint32_t file) {
    poll();
    if (last != file) {
      if (part) all.merge(*part);
      part.emplace(options);
      part->begin(file < files.size() ? files[file] : "model",
                  attributes.isEmpty() ? nullptr : &columns);
    }
    last = file;
    part->add(element, attributes.of(index++));
  });
  if (part) all.merge(*part);
  all.finish();
  return all;
}

std::vector<VeskTool::TakeOffLine> linesOf(const VeskTool::TakeOff& all,
                                           const VeskTool::TakeOffOptions& options, bool sums) {
  std::vector<VeskTool::TakeOffLine> lines;
  for (std::size_t i = 0; i < all.groups().size(); ++i) {
    for (const auto& line : VeskTool::linesOf(all, options, i, sums)) lines.push_back(line);
  }
  lines.push_back(VeskTool::totalOf(all));
  return lines;
}

// {"columns": {title: list of texts or (n,)}, "remarks": JSON, "faults": how many}.
py::dict measured(const py::dict& table, const py::list& names, const py::object& attributes,
                  const py::dict& words) {
  const VeskTool::TakeOffOptions options = optionsOf(words);
  const bool sums = py::cast<bool>(words["sums"]);
  std::vector<std::string> files;
  for (const py::handle& each : names) files.push_back(toBytes(each));
  Plant plant(table);
  const Attributes known =
      attributes.is_none() ? Attributes() : Attributes(py::dict(attributes), plant.size());
  requireAttributes(options, known);
  std::optional<VeskTool::TakeOff> all;
  {
    const py::gil_scoped_release free;
    all.emplace(takenOff(plant, files, known, options));
  }
  py::dict columns;
  const std::vector<VeskTool::TakeOffLine> lines = linesOf(*all, options, sums);
  const std::vector<VeskTool::TakeOffColumn> titles = VeskTool::takeOffColumns();
  for (std::size_t i = 0; i < titles.size(); ++i) {
    py::list texts;
    Column<double> numbers;
    for (const VeskTool::TakeOffLine& line : lines) {
      const VeskTool::TakeOffCell cell = VeskTool::cellOf(line, i, options);
      if (titles[i].isText) texts.append(toText(std::get<std::string>(cell)));
      if (!titles[i].isText) numbers.add(std::get<double>(cell));
    }
    columns[py::str(VeskTool::titleOf(titles[i], options.units))] =
        titles[i].isText ? py::object(texts) : py::object(numbers.toArray());
  }
  std::string remarks;
  VeskTool::JsonWriter json(remarks);
  all->remarks().appendJson(json);
  py::dict result;
  result["columns"] = columns;
  result["remarks"] = toText(remarks);
  result["faults"] = all->faults();
  return result;
}

}  // namespace

void defineMeasuring(py::module_& module) {
  module.def("measures", &measuresOf);
  module.def("measure", &measured);
}

}  // namespace VeskPython
