// SPDX-License-Identifier: MIT
#include "Meshing.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Fine.h"
#include "Plant.h"
#include "Poll.h"
#include "draw/Drawing.h"
#include "draw/Painter.h"
#include "elements/Shown.h"
#include "export/Gltf.h"
#include "mesh/SceneBuilder.h"
#include "terminal/Streams.h"
#include "terminal/Terminal.h"
#include "vesk/mesh/ElementMesh.h"
#include "view/Palette.h"
#include "view/Png.h"
#include "view/Svg.h"

namespace VeskPython {
namespace {

bool hasSurface(const Vesk::Geo& geo) {
  return geo.typeCode() != Vesk::Pline::kTypeCode && geo.typeCode() != Vesk::Txt::kTypeCode;
}

// The surfaces of all elements as one: corners, triangles, and of which element each
// triangle is.
py::dict meshed(const py::dict& table, double tolerance, const std::string& quality) {
  const Vesk::Fineness fineness = finenessOf(tolerance, quality);
  Plant plant(table);
  Column<double> vertices{{3}};
  Column<std::int64_t> triangles{{3}};
  Column<std::int64_t> elements;
  Missing missing;
  {
    const py::gil_scoped_release free;
    std::int64_t index = 0;
    Poll poll(kMeshesBetweenPolls);
    plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
      poll();
      const auto first = static_cast<std::int64_t>(vertices.rows());
      const Vesk::ElementMesh made = Vesk::meshOf(*element.geo, fineness);
      for (const GePoint& each : made.mesh.positions) vertices.add(each);
      for (const Vesk::MeshTriangle& each : made.mesh.triangles) {
        for (const std::uint32_t corner : each) triangles.add(first + corner);
        elements.add(index);
      }
      if (!made.reason.empty() && hasSurface(*element.geo))
        missing.emplace_back(index, made.reason);
      ++index;
    });
  }
  py::dict mesh;
  mesh["vertices"] = vertices.toArray();
  mesh["triangles"] = triangles.toArray();
  mesh["elements"] = elements.toArray();
  mesh["missing"] = toPython(missing);
  return mesh;
}

Vesk::Scene sceneOf(Plant& plant, const std::vector<std::string>& files,
                    const Vesk::Fineness& fineness) {
  Vesk::SceneBuilder builder(fineness);
  std::vector<std::uint32_t> ids;
  for (const std::string& file : files) ids.push_back(builder.addFile(file));
  Poll poll(kMeshesBetweenPolls);
  plant.each([&](Vesk::RecordElement& element, std::uint32_t file) {
    poll();
    const std::uint32_t id = file < ids.size() ? ids[file] : ids.front();
    builder.add(*element.geo, VeskTool::shownOf(element, id, builder));
  });
  return builder.finish();
}

VeskTool::GltfOptions gltfOf(const std::string& grouping) {
  using Grouping = VeskTool::GltfOptions::Grouping;
  VeskTool::GltfOptions options;
  if (grouping == "instances") options.grouping = Grouping::kInstances;
  if (grouping == "merged") options.grouping = Grouping::kMerged;
  return options;
}

// Writes a .glb; what is missing in it.
py::list toGlb(const py::dict& table, const py::list& files, const py::object& path,
               double tolerance, const std::string& quality, double unit,
               const std::string& grouping) {
  const Vesk::Fineness fineness = finenessOf(tolerance, quality);
  const std::vector<std::string> names = fileNames(files);
  const std::string name = outputName(path);
  Plant plant(table);
  Missing missing;
  {
    const py::gil_scoped_release free;
    VeskTool::OutputFile out(name, true);
    const Vesk::Scene scene = sceneOf(plant, names, fineness);
    VeskTool::writeGltf(scene, unit, gltfOf(grouping), out);
    out.commit();
    missing = missingOf(scene);
  }
  return toPython(missing);
}

struct Picture {
  bool isPng = false;
  bool hasFaces = true;
  std::string title;
};

void writeTo(VeskTool::TextSink& to, const Vesk::Drawing& drawing, const Picture& picture) {
  if (picture.isPng) {
    VeskTool::writePng(to, Vesk::paint(drawing, picture.hasFaces));
  } else {
    VeskTool::writeSvg(to, drawing, picture.title);
  }
}

Vesk::DrawingStyle styleOf(const py::dict& words) {
  const auto text = [&](const char* name) { return py::cast<std::string>(words[name]); };
  Vesk::DrawingStyle style;
  const std::optional<Vesk::StandardView> view = Vesk::standardView(text("view"));
  if (!view) {
    throw py::value_error("view '" + text("view") +
                          "': iso, top, bottom, front, back, left or right");
  }
  const std::optional<Vesk::Colour> background = VeskTool::readColour(text("background"));
  if (!background) {
    throw py::value_error("background '" + text("background") +
                          "': white, black, transparent, or red, green and blue as #1c2430");
  }
  style.view = *view;
  style.background = *background;
  style.width = py::cast<int>(words["width"]);
  style.height = py::cast<int>(words["height"]);
  style.unit = py::cast<double>(words["unit"]);
  style.isPlain = py::cast<bool>(words["plain"]);
  style.colours = VeskTool::kindColours();
  style.poll = VeskTool::checkInterrupt;
  return style;
}

// Draws to a file, or without a path to bytes: (bytes or None, what is missing).
py::tuple drawn(const py::dict& table, const py::list& files, const py::object& path,
                const py::dict& words) {
  const Vesk::DrawingStyle style = styleOf(words);
  const Picture picture{py::cast<bool>(words["png"]), py::cast<bool>(words["faces"]),
                        toBytes(words["title"])};
  const std::vector<std::string> names = fileNames(files);
  std::optional<std::string> file;
  if (!path.is_none()) file = outputName(path);
  Plant plant(table);
  VeskTool::TextBuffer buffer;
  Missing missing;
  {
    const py::gil_scoped_release free;
    std::optional<VeskTool::OutputFile> out;
    if (file) out.emplace(*file, true);
    // A rough scene tells how fine the pixels want it.
    const Vesk::Fineness fineness = Vesk::Drawing::finenessFor(
        sceneOf(plant, names, Vesk::Fineness::ofSegments(Vesk::Fineness::kDraft)), style);
    const Vesk::Scene scene = sceneOf(plant, names, fineness);
    const Vesk::Drawing drawing(scene, style);
    writeTo(out ? static_cast<VeskTool::TextSink&>(*out) : buffer, drawing, picture);
    if (out) out->commit();
    missing = missingOf(scene);
  }
  return py::make_tuple(file ? py::object(py::none()) : py::object(py::bytes(buffer.text())),
                        toPython(missing));
}

}  // namespace

void defineMeshing(py::module_& module) {
  module.def("mesh", &meshed);
  module.def("to_glb", &toGlb);
  module.def("draw", &drawn);
}

}  // namespace VeskPython
