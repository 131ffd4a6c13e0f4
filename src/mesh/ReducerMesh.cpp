// SPDX-License-Identifier: MIT
#include "mesh/ReducerMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <tuple>

#include "mesh/MeshMaker.h"
#include "shape/QuadSplit.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

using Corners = ReducerCorners;

// Of the tolerance: how far from a plane a face may be and still be called one.
constexpr double kPlane = 0.1;

// Each way on every face: then a reducer has some 300,000 triangles.
constexpr double kMostCells = 128.0;

double twist(const Corners& c, const std::array<std::size_t, 4>& f) {
  return ((c[f[0]] - c[f[1]]) + (c[f[2]] - c[f[3]])).length();
}

GeVector areaOf(const Corners& c, const std::array<std::size_t, 4>& f) {
  return quadArea(c[f[0]], c[f[1]], c[f[2]], c[f[3]]);
}

// How far the two diagonals pass each other.
double bulge(const Corners& c, const std::array<std::size_t, 4>& f) {
  const GeVector across = areaOf(c, f);
  const double length = across.length();
  return length > 0.0 ? std::fabs(dot(c[f[1]] - c[f[0]], across)) / length : 0.0;
}

using Steps = std::array<int, 3>;  // along the three directions, in halves of a cell

int bitOf(std::size_t corner, std::size_t axis) { return static_cast<int>((corner >> axis) & 1U); }

// Exact at both ends, and between two points that are the same.
GePoint between(const GePoint& a, const GePoint& b, double part) {
  return part == 1.0 ? b : a + (b - a) * part;
}

// The points between the corners, each made once, so that faces share them.
class Lattice {
 public:
  Lattice(const Corners& corners, int cells, MeshMaker& maker)
      : corners_(corners), steps_(2 * cells), maker_(maker) {}

  // On the face, u halves from its first to its second corner and v to its last.
  std::uint32_t onFace(const std::array<std::size_t, 4>& face, int u, int v) {
    Steps steps{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const int from = bitOf(face[0], axis);
      steps[axis] =
          from * steps_ + (bitOf(face[1], axis) - from) * u + (bitOf(face[3], axis) - from) * v;
    }
    return at(steps);
  }

  // The sharp edges, cell by cell.
  void addEdges() {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      for (std::size_t k = 0; k < 8; ++k) {
        if (bitOf(k, axis) == 0) addEdge(k, axis);
      }
    }
  }

 private:
  std::uint32_t at(const Steps& steps) {
    const auto [place, isNew] = made_.try_emplace(steps, 0);
    if (isNew) place->second = weld(pointAt(steps));
    return place->second;
  }

  GePoint pointAt(const Steps& steps) const {
    std::array<GePoint, 8> points = corners_;
    std::size_t count = 8;
    for (const int s : steps) {
      count /= 2;
      for (std::size_t i = 0; i < count; ++i) {
        points[i] = between(points[2 * i], points[2 * i + 1], static_cast<double>(s) / steps_);
      }
    }
    return points[0];
  }

  // Corners at the same place are one: a pyramid or a wedge is a reducer too.
  std::uint32_t weld(const GePoint& p) {
    const auto [place, isNew] = places_.try_emplace(std::tuple(p.x, p.y, p.z), 0);
    if (isNew) place->second = maker_.addPosition(p);
    return place->second;
  }

  void addEdge(std::size_t corner, std::size_t axis) {
    Steps steps{};
    for (std::size_t i = 0; i < 3; ++i) steps[i] = bitOf(corner, i) * steps_;
    for (int s = 0; s < steps_; s += 2) {
      steps[axis] = s;
      const std::uint32_t from = at(steps);
      steps[axis] = s + 2;
      const std::uint32_t to = at(steps);
      if (from != to) maker_.addEdge(from, to);
    }
  }

  const Corners& corners_;
  int steps_;
  MeshMaker& maker_;
  std::map<Steps, std::uint32_t> made_;
  std::map<std::tuple<double, double, double>, std::uint32_t> places_;
};

// The normal of the bilinear face at the parts u and v of its sides.
GeVector normalAt(const Corners& c, const std::array<std::size_t, 4>& f, double u, double v) {
  const GeVector alongU = (c[f[1]] - c[f[0]]) * (1.0 - v) + (c[f[2]] - c[f[3]]) * v;
  const GeVector alongV = (c[f[3]] - c[f[0]]) * (1.0 - u) + (c[f[2]] - c[f[1]]) * u;
  const GeVector across = cross(alongU, alongV);
  if (across.length() > 0.0) return across;
  // A corner where two sides meet in a point, or a face that is only a line.
  const GeVector whole = areaOf(c, f);
  return whole.length() > 0.0 ? whole : kUnitZ;
}

class FaceMaker {
 public:
  FaceMaker(const Corners& corners, const std::array<std::size_t, 4>& face, int cells,
            Lattice& lattice, MeshMaker& maker)
      : corners_(corners), face_(face), steps_(2 * cells), lattice_(lattice), maker_(maker) {}

  // Each cell in two.
  void addPlane() {
    const std::uint32_t normal = maker_.addNormal(normalAt(corners_, face_, 0.5, 0.5));
    const bool fromFirst =
        splitQuad(corners_[face_[0]], corners_[face_[1]], corners_[face_[2]], corners_[face_[3]])
            .fromFirst;
    for (int u = 0; u < steps_; u += 2) {
      for (int v = 0; v < steps_; v += 2) {
        const std::array<MeshCorner, 4> q{MeshCorner{lattice_.onFace(face_, u, v), normal},
                                          {lattice_.onFace(face_, u + 2, v), normal},
                                          {lattice_.onFace(face_, u + 2, v + 2), normal},
                                          {lattice_.onFace(face_, u, v + 2), normal}};
        if (fromFirst) {
          maker_.addQuad(q[0], q[1], q[2], q[3]);
        } else {
          maker_.addQuad(q[1], q[2], q[3], q[0]);
        }
      }
    }
  }

  // Each cell in four about its middle.
  void addBent() {
    for (int u = 0; u < steps_; u += 2) {
      for (int v = 0; v < steps_; v += 2) {
        const MeshCorner middle = cornerAt(u + 1, v + 1);
        const std::array<MeshCorner, 4> q{cornerAt(u, v), cornerAt(u + 2, v),
                                          cornerAt(u + 2, v + 2), cornerAt(u, v + 2)};
        for (std::size_t i = 0; i < 4; ++i) maker_.addTriangle(q[i], q[(i + 1) % 4], middle);
      }
    }
  }

 private:
  MeshCorner cornerAt(int u, int v) {
    const auto [place, isNew] = normals_.try_emplace(std::pair(u, v), 0);
    if (isNew) {
      const double n = steps_;
      place->second = maker_.addNormal(normalAt(corners_, face_, u / n, v / n));
    }
    return {lattice_.onFace(face_, u, v), place->second};
  }

  const Corners& corners_;
  const std::array<std::size_t, 4>& face_;
  int steps_;
  Lattice& lattice_;
  MeshMaker& maker_;
  std::map<std::pair<int, int>, std::uint32_t> normals_;
};

// The same solid with its ends exchanged is right side out.
void turnRound(Corners& c) {
  for (std::size_t k = 0; k < 4; ++k) std::swap(c[k], c[k + 4]);
}

}  // namespace

std::optional<ReducerMesh> makeReducer(const ReducerShape& shape, double tolerance) {
  ReducerMesh made;
  Corners corners = shape.corners;
  if (shape.volume < 0.0) turnRound(corners);
  made.volume = std::fabs(shape.volume);

  double cells = 1.0;
  std::array<bool, 6> plane{};
  for (std::size_t i = 0; i < 6; ++i) {
    const double apart = bulge(corners, kReducerFaces[i]);
    plane[i] = apart <= kPlane * tolerance;
    if (plane[i]) {
      made.deviation = std::max(made.deviation, apart);
    } else {
      cells = std::max(cells,
                       std::ceil(std::sqrt(twist(corners, kReducerFaces[i]) / 16.0 / tolerance)));
    }
  }
  if (!(cells <= kMostCells)) return {};
  MeshMaker maker;
  Lattice lattice(corners, static_cast<int>(cells), maker);
  for (std::size_t i = 0; i < 6; ++i) {
    const auto& f = kReducerFaces[i];
    FaceMaker face(corners, f, static_cast<int>(cells), lattice, maker);
    if (plane[i]) {
      face.addPlane();
    } else {
      face.addBent();
      made.deviation = std::max(made.deviation, twist(corners, f) / 16.0 / cells / cells);
    }
  }
  lattice.addEdges();
  made.mesh = maker.take(true);
  return made;
}

}  // namespace Vesk
