// SPDX-License-Identifier: MIT
#include "tiles/TileContent.h"

#include <iterator>
#include <memory>
#include <utility>

#include "export/Gltf.h"
#include "tiles/GeoBytes.h"

namespace VeskTool {
namespace {

template <class Each>
void moveAll(std::vector<Each>& from, std::vector<Each>& to) {
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

// Both have the same origin.
void append(Vesk::Scene from, Vesk::Scene& to) {
  const auto header = static_cast<std::uint32_t>(to.headers.size());
  const auto element = static_cast<std::uint32_t>(to.elements.size());
  const auto mesh = static_cast<std::uint32_t>(to.meshes.size());
  const std::size_t vertex = to.lineVertices.size();
  for (Vesk::SceneElement& each : from.elements) each.header += header;
  for (Vesk::SceneInstance& each : from.instances) {
    each.element += element;
    each.mesh += mesh;
  }
  for (Vesk::ScenePoint& each : from.points) each.element += element;
  for (Vesk::SceneLine& each : from.lines) {
    each.element += element;
    each.first += vertex;
  }
  moveAll(from.headers, to.headers);
  moveAll(from.groups, to.groups);
  moveAll(from.elements, to.elements);
  moveAll(from.meshes, to.meshes);
  moveAll(from.instances, to.instances);
  moveAll(from.points, to.points);
  moveAll(from.lines, to.lines);
  moveAll(from.lineVertices, to.lineVertices);
}

}  // namespace

void moveOrigin(Vesk::Scene& scene, const GePoint& centre) {
  const GeVector offset = centre - GePoint();
  const GeVector by = scene.offset - offset;
  for (Vesk::SceneInstance& each : scene.instances) each.placement.origin += by;
  for (Vesk::ScenePoint& each : scene.points) each.position += by;
  for (GePoint& each : scene.lineVertices) each += by;
  for (Vesk::SceneText& each : scene.texts) each.position += by;
  scene.bounds = Vesk::Extents(scene.bounds.min + by, scene.bounds.max + by);
  scene.offset = offset;
}

TileContent::TileContent(const Vesk::Fineness& fineness)
    : fine_(fineness), coarse_(coarseFineness()) {}

void TileContent::add(const TileElement& element, bool isCoarse) {
  const std::unique_ptr<Vesk::Geo> geo = geoOf(element.geo);
  Vesk::SceneBuilder& builder = isCoarse ? coarse_ : fine_;
  Vesk::SceneElement shown;
  shown.kind = element.kind;
  shown.header = builder.headerId(element.header, element.group);
  shown.file = element.file;
  shown.line = element.line;
  builder.add(*geo, shown);
  ++count_;
}

void TileContent::write(const std::vector<std::string>& files, const GePoint& centre,
                        double millimetres, TextSink& out) {
  Vesk::Scene scene = fine_.finish();
  Vesk::Scene coarse = coarse_.finish();
  moveOrigin(scene, centre);
  moveOrigin(coarse, centre);
  append(std::move(coarse), scene);
  scene.files = files;
  GltfOptions options;
  options.grouping = GltfOptions::Grouping::kInstances;
  writeGltf(scene, millimetres, options, out);
  count_ = 0;
}

}  // namespace VeskTool
