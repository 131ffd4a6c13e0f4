// SPDX-License-Identifier: MIT
#include "Judging.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Attributes.h"
#include "Lines.h"
#include "Plant.h"
#include "Poll.h"
#include "check/FileCheck.h"
#include "clash/ClashModel.h"
#include "clash/ClashReports.h"
#include "clash/ClashSearch.h"
#include "elements/Describe.h"
#include "elements/Match.h"
#include "vesk/ByteSource.h"

namespace VeskPython {
namespace {

// A plant as the text of a record file.
struct Records {
  std::string text;
  std::vector<std::uint64_t> lines;  // the first one of each element, from 1
};

Records recordsOf(Plant& plant, int style) {
  Records records;
  Lines lines(style);
  std::uint64_t line = 1;
  Poll poll;
  plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
    poll();
    const Vesk::Recs& recs = lines.of(element);
    records.lines.push_back(line);
    for (const std::string& each : recs) records.text.append(each).append("\n");
    line += recs.size();
  });
  return records;
}

struct Told {
  std::int64_t element;
  std::uint64_t behind;  // lines behind the element's first
  VeskTool::Finding finding;
};

py::list toPython(const std::vector<Told>& findings) {
  py::list rows;
  for (const Told& each : findings) {
    rows.append(py::make_tuple(each.element, each.behind, each.finding.column,
                               std::string(each.finding.code),
                               std::string(VeskTool::nameOf(each.finding.severity)),
                               toText(each.finding.message), toText(each.finding.expected)));
  }
  return rows;
}

// What is wrong with a plant as one record file of this style: (element, lines behind its
// first, column, code, severity, message, expected).
py::list checked(const py::dict& table, int style, bool joints, double tolerance, double reach) {
  Plant plant(table);
  std::vector<Told> findings;
  {
    const py::gil_scoped_release free;
    const Records records = recordsOf(plant, style);
    VeskTool::CheckOptions options;
    options.joints = joints;
    options.joint = {tolerance, reach};
    VeskTool::FileCheck check(options, [&](VeskTool::Finding&& finding) {
      const auto next = std::upper_bound(records.lines.begin(), records.lines.end(), finding.line);
      const auto element = next - records.lines.begin() - 1;
      const std::uint64_t first = element < 0 ? 0 : *std::prev(next);
      findings.push_back({element, finding.line - first, std::move(finding)});
    });
    Vesk::RecordFile file(std::make_unique<Vesk::TextSource>(records.text), "model",
                          Vesk::RecordOptions{style, false});
    check.run(file);
  }
  return toPython(findings);
}

VeskTool::ClashScope scopeOf(const std::string& between) {
  using enum VeskTool::ClashScope;
  if (between == "elements") return kElements;
  if (between == "headers") return kHeaders;
  if (between == "lines") return kLines;
  if (between == "files") return kFiles;
  throw py::value_error("between '" + between + "': elements, headers, lines or files");
}

struct Clashes {
  std::vector<std::string> codes;
  std::vector<std::string> messages;
  Column<std::int64_t> pairs{{2}};
  Column<double> distance;
  Column<double> depth;
  Column<double> place{{3}};

  py::dict toPython() {
    py::list codeList;
    py::list messageList;
    for (const std::string& each : codes) codeList.append(each);
    for (const std::string& each : messages) messageList.append(toText(each));
    py::dict table;
    table["code"] = codeList;
    table["message"] = messageList;
    table["pairs"] = pairs.toArray();
    table["distance"] = distance.toArray();
    table["depth"] = depth.toArray();
    table["place"] = place.toArray();
    return table;
  }
};

std::string componentOf(const Vesk::SidecarRow& row) {
  return row.f1 + '\n' + row.f2 + '\n' + std::to_string(row.first);
}

// The elements for a search, and which of the plant each of them is.
std::vector<std::int64_t> fillModel(VeskTool::ClashModel& model, Plant& plant,
                                    const std::vector<std::string>& files,
                                    const Attributes& attributes) {
  std::vector<std::int64_t> places;
  std::optional<std::uint32_t> last;
  std::int64_t index = 0;
  Poll poll;
  plant.each([&](Vesk::RecordElement& element, std::uint32_t file) {
    poll();
    if (last != file) model.beginFile(file < files.size() ? files[file] : "model");
    last = file;
    const std::size_t before = model.elements().size();
    const Vesk::SidecarRow* row = attributes.of(static_cast<std::size_t>(index));
    model.add(element, row == nullptr ? std::string() : componentOf(*row));
    if (model.elements().size() > before) places.push_back(index);
    ++index;
  });
  return places;
}

py::dict clashed(const py::dict& table, const py::list& names, const std::string& between,
                 double clearance, double tolerance, bool isStrict, const py::list& ignored,
                 const py::object& attributes) {
  VeskTool::ClashOptions options;
  options.between = scopeOf(between);
  options.clearance = clearance;
  options.tolerance = tolerance;
  options.isStrict = isStrict;
  for (const py::handle& each : ignored) {
    const auto pair = py::cast<py::tuple>(each);
    options.ignored.emplace_back(toBytes(pair[0]), toBytes(pair[1]));
  }
  std::vector<std::string> files;
  for (const py::handle& each : names) files.push_back(toBytes(each));
  Plant plant(table);
  const Attributes known =
      attributes.is_none() ? Attributes() : Attributes(py::dict(attributes), plant.size());
  Clashes clashes;
  {
    const py::gil_scoped_release free;
    VeskTool::ClashModel model;
    const std::vector<std::int64_t> places = fillModel(model, plant, files, known);
    VeskTool::ClashSearch search(model, options);
    for (const VeskTool::Clash& each : search.find()) {
      clashes.codes.emplace_back(VeskTool::codeOf(each.kind));
      clashes.messages.push_back(VeskTool::findingOf(each, model, search).message);
      clashes.pairs.add(places[each.a]);
      clashes.pairs.add(places[each.b]);
      clashes.distance.add(each.distance);
      const bool isDeep =
          each.kind == VeskTool::Clash::Kind::kHard || each.kind == VeskTool::Clash::Kind::kInside;
      clashes.depth.add(isDeep ? search.depthOf(each).depth : 0.0);
      clashes.place.add(each.place);
    }
  }
  return clashes.toPython();
}

VeskTool::Model modelOf(Plant& plant) {
  VeskTool::Model model;
  Poll poll;
  plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
    poll();
    VeskTool::ModelElement made;
    made.geo = VeskTool::copyOf(*element.geo);
    made.kind = VeskTool::kindOf(*element.geo);
    made.header = VeskTool::headerText(element.header);
    made.counter = element.counter();
    made.line = element.firstLine;
    Vesk::Extents box;
    element.geo->addExtents(box);
    made.middle = box.min.x <= box.max.x ? box.min + (box.max - box.min) * 0.5
                                         : VeskTool::placeOf(*element.geo);
    model.push_back(std::move(made));
  });
  return model;
}

py::dict differing(const py::dict& one, const py::dict& other, double tolerance) {
  Plant plantA(one);
  Plant plantB(other);
  Column<std::int64_t> same{{2}};
  Column<std::int64_t> changed{{2}};
  Column<std::int64_t> removed;
  Column<std::int64_t> added;
  {
    const py::gil_scoped_release free;
    const VeskTool::Model a = modelOf(plantA);
    const VeskTool::Model b = modelOf(plantB);
    const VeskTool::Matching matching = VeskTool::matchModels(a, b, tolerance);
    const auto give = [](Column<std::int64_t>& to, std::size_t index) {
      to.add(static_cast<std::int64_t>(index));
    };
    for (const auto& [i, k] : matching.same) give(same, i), give(same, k);
    for (const auto& [i, k] : matching.changed) give(changed, i), give(changed, k);
    for (const std::size_t i : matching.removed) give(removed, i);
    for (const std::size_t k : matching.added) give(added, k);
  }
  py::dict table;
  table["same"] = same.toArray();
  table["changed"] = changed.toArray();
  table["removed"] = removed.toArray();
  table["added"] = added.toArray();
  return table;
}

}  // namespace

void defineJudging(py::module_& module) {
  module.def("check", &checked);
  module.def("clash", &clashed);
  module.def("diff", &differing);
}

}  // namespace VeskPython
