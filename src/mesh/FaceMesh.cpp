// SPDX-License-Identifier: MIT
#include "mesh/FaceMesh.h"

#include <cmath>
#include <vector>

#include "mesh/MeshMaker.h"

namespace Vesk {
namespace {

std::uint32_t normalOf(const PgonVertex& vertex, std::uint32_t ofFace, MeshMaker& maker) {
  const double length = vertex.hasNormal ? vertex.normal.length() : 0.0;
  const bool usable = std::isfinite(length) && length > 0.0;
  return usable ? maker.addNormal(vertex.normal) : ofFace;
}

}  // namespace

Mesh makeFace(const Pgon& pgon, const FaceShape& shape) {
  // Repeated vertices and spikes are in no triangle.
  std::vector<bool> used(shape.points.size());
  for (const EarTriangle& t : shape.triangles) {
    for (const std::uint32_t i : t) used[i] = true;
  }
  MeshMaker maker;
  const std::uint32_t ofFace = maker.addNormal(shape.area);
  std::vector<MeshCorner> corners(shape.points.size());
  std::vector<std::uint32_t> boundary;
  for (std::size_t i = 0; i < shape.points.size(); ++i) {
    if (!used[i]) continue;
    corners[i] = {maker.addPosition(shape.points[i]), normalOf(pgon.vertices[i], ofFace, maker)};
    boundary.push_back(corners[i].position);
  }
  for (const EarTriangle& t : shape.triangles) {
    maker.addTriangle(corners[t[0]], corners[t[1]], corners[t[2]]);
  }
  maker.addRingEdges(boundary);
  return maker.take(false);
}

}  // namespace Vesk
