#include "mesh/FaceMesh.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "mesh/MeshMaker.h"
#include "mesh/QuadSplit.h"
#include "prims/EarClipper.h"

namespace Vesk {
namespace {

// Of the square of the largest extent, or of the whole area: what lies below comes
// from rounding.
constexpr double kFlat = 1e-12;
constexpr double kNothing = 1e-9;

GeVector areaOf(const std::vector<GePoint>& points, const EarTriangle& t) {
  return cross(points[t[1]] - points[t[0]], points[t[2]] - points[t[0]]);
}

// Twice the area vector of any closed line.
GeVector wholeArea(const std::vector<GePoint>& points) {
  GeVector area;
  for (std::size_t i = 2; i < points.size(); ++i) {
    area += cross(points[i - 1] - points[0], points[i] - points[0]);
  }
  return area;
}

std::vector<EarTriangle> quadTriangles(const std::vector<GePoint>& p) {
  if (splitQuad(p[0], p[1], p[2], p[3]).fromFirst) return {{0, 1, 2}, {0, 2, 3}};
  return {{1, 2, 3}, {1, 3, 0}};
}

// Whether they look the way of the whole and cover as much as it encloses.
bool areWhole(const std::vector<GePoint>& points, const std::vector<EarTriangle>& triangles,
              const GeVector& whole) {
  GeVector sum;
  for (const EarTriangle& t : triangles) {
    const GeVector area = areaOf(points, t);
    if (dot(area, whole) < -kNothing * dot(whole, whole)) return false;
    sum += area;
  }
  return (sum - whole).length() <= kNothing * whole.length();
}

std::uint32_t normalOf(const PgonVertex& vertex, std::uint32_t ofFace, MeshMaker& maker) {
  const double length = vertex.hasNormal ? vertex.normal.length() : 0.0;
  const bool usable = std::isfinite(length) && length > 0.0;
  return usable ? maker.addNormal(vertex.normal) : ofFace;
}

}  // namespace

std::string makeFace(const Pgon& pgon, Mesh& mesh) {
  if (pgon.vertices.size() < 3) return "polygon of less than three points";
  std::vector<GePoint> points;
  double extent = 0.0;
  for (const PgonVertex& vertex : pgon.vertices) {
    points.emplace_back(vertex.point - pgon.point(0));
    extent = std::max(extent, distance(points.back(), GePoint()));
  }
  const GeVector whole = wholeArea(points);
  if (!(whole.length() > kFlat * extent * extent)) return "face without area";
  std::vector<EarTriangle> triangles =
      points.size() == 4 ? quadTriangles(points) : clipEars(points);
  if (triangles.empty() || !areWhole(points, triangles, whole)) return "face that crosses itself";
  std::erase_if(triangles, [&](const EarTriangle& t) {
    return areaOf(points, t).length() <= kFlat * extent * extent;
  });

  // Repeated vertices and spikes are in no triangle.
  std::vector<bool> used(points.size());
  for (const EarTriangle& t : triangles) {
    for (const std::uint32_t i : t) used[i] = true;
  }
  MeshMaker maker;
  const std::uint32_t ofFace = maker.addNormal(whole);
  std::vector<MeshCorner> corners(points.size());
  std::vector<std::uint32_t> boundary;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!used[i]) continue;
    corners[i] = {maker.addPosition(points[i]), normalOf(pgon.vertices[i], ofFace, maker)};
    boundary.push_back(corners[i].position);
  }
  for (const EarTriangle& t : triangles) {
    maker.addTriangle(corners[t[0]], corners[t[1]], corners[t[2]]);
  }
  maker.addRingEdges(boundary);
  mesh = maker.take(false);
  return {};
}

}  // namespace Vesk
