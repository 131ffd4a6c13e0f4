// SPDX-License-Identifier: MIT
#include "mesh/UnitMeshes.h"

#include <cmath>
#include <vector>

#include "mesh/MeshMaker.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

using Ring = std::vector<std::uint32_t>;

struct Turn {
  double cosine;
  double sine;
};

// The corners of a regular polygon on the unit circle, a multiple of four of them.
// The first quarter is calculated and the others mirror it, so that the polygon is
// the same bit for bit seen from the other side.
std::vector<Turn> circleTurns(std::uint32_t segments) {
  std::vector<Turn> turns(segments);
  const std::uint32_t quarter = segments / 4;
  for (std::uint32_t i = 0; i < quarter; ++i) {
    const double angle = 2.0 * kPi * i / segments;
    const Turn turn = i == 0 ? Turn{1.0, 0.0} : Turn{std::cos(angle), std::sin(angle)};
    turns[i] = turn;
  }
  for (std::uint32_t i = 1; 2 * i <= quarter; ++i) {
    Turn& mirrored = turns[quarter - i];
    if (2 * i == quarter) {
      mirrored.sine = mirrored.cosine;
    } else {
      mirrored = {turns[i].sine, turns[i].cosine};
    }
  }
  for (std::uint32_t i = 0; i < quarter; ++i) {
    const Turn turn = turns[i];
    turns[i + quarter] = {-turn.sine, turn.cosine};
    turns[i + 2 * quarter] = {-turn.cosine, -turn.sine};
    turns[i + 3 * quarter] = {turn.sine, -turn.cosine};
  }
  return turns;
}

std::vector<Turn> arcTurns(std::uint32_t pieces, double sweep) {
  std::vector<Turn> turns;
  for (std::uint32_t i = 0; i <= pieces; ++i) {
    const double angle = sweep * i / pieces;
    turns.push_back({std::cos(angle), std::sin(angle)});
  }
  return turns;
}

Ring reversed(const Ring& ring) { return {ring.rbegin(), ring.rend()}; }

}  // namespace

Mesh unitCone(std::uint32_t segments, double ratio) {
  MeshMaker maker;
  const std::vector<Turn> turns = circleTurns(segments);
  Ring base;
  Ring top;
  for (const Turn& t : turns) base.push_back(maker.addPosition({t.cosine, t.sine, 0.0}));
  if (ratio == 0.0) {
    top.assign(segments, maker.addPosition({0.0, 0.0, 1.0}));
  } else {
    for (const Turn& t : turns) {
      top.push_back(maker.addPosition({ratio * t.cosine, ratio * t.sine, 1.0}));
    }
  }
  Ring normals;
  for (const Turn& t : turns) normals.push_back(maker.addNormal({t.cosine, t.sine, 1.0 - ratio}));
  for (std::uint32_t i = 0; i < segments; ++i) {
    const std::uint32_t k = (i + 1) % segments;
    if (ratio == 0.0) {
      // An apex has no normal of its own; each triangle takes that of its middle.
      const GeVector middle(turns[i].cosine + turns[k].cosine, turns[i].sine + turns[k].sine, 0.0);
      const GeVector across = middle / middle.length();
      const std::uint32_t atApex = maker.addNormal(across + kUnitZ);
      maker.addTriangle({base[i], normals[i]}, {base[k], normals[k]}, {top[i], atApex});
    } else {
      maker.addQuad({base[i], normals[i]}, {base[k], normals[k]}, {top[k], normals[k]},
                    {top[i], normals[i]});
    }
  }
  maker.addFace(reversed(base), -kUnitZ);
  maker.addRingEdges(base);
  if (ratio != 0.0) {
    maker.addFace(top, kUnitZ);
    maker.addRingEdges(top);
  }
  return maker.take(true);
}

Mesh unitTorus(std::uint32_t along, std::uint32_t around, double ratio, double sweep) {
  MeshMaker maker;
  const std::vector<Turn> bend = arcTurns(along, sweep);
  const std::vector<Turn> tube = circleTurns(around);
  std::vector<Ring> rings(bend.size(), Ring(around));
  std::vector<Ring> normals(bend.size(), Ring(around));
  for (std::size_t i = 0; i < bend.size(); ++i) {
    for (std::uint32_t j = 0; j < around; ++j) {
      const double radius = 1.0 + ratio * tube[j].cosine;
      rings[i][j] = radius == 0.0 && i > 0
                        ? rings[0][j]
                        : maker.addPosition({radius * bend[i].cosine, radius * bend[i].sine,
                                             ratio * tube[j].sine});
      normals[i][j] = maker.addNormal(
          {tube[j].cosine * bend[i].cosine, tube[j].cosine * bend[i].sine, tube[j].sine});
    }
  }
  // Round the tube the corners run from the outside to z, which is clockwise
  // looking along the bend.
  for (std::size_t i = 0; i + 1 < bend.size(); ++i) {
    for (std::uint32_t j = 0; j < around; ++j) {
      const std::uint32_t k = (j + 1) % around;
      maker.addQuad({rings[i][j], normals[i][j]}, {rings[i + 1][j], normals[i + 1][j]},
                    {rings[i + 1][k], normals[i + 1][k]}, {rings[i][k], normals[i][k]});
    }
  }
  maker.addFace(rings.front(), {0.0, -1.0, 0.0});
  maker.addFace(reversed(rings.back()), {-bend.back().sine, bend.back().cosine, 0.0});
  maker.addRingEdges(rings.front());
  maker.addRingEdges(rings.back());
  return maker.take(true);
}

Mesh unitElbow(std::uint32_t along, double depth, double sweep) {
  MeshMaker maker;
  const std::vector<Turn> bend = arcTurns(along, sweep);
  // Outer low, outer high, inner high, inner low.
  constexpr double kHeights[] = {-0.5, 0.5, 0.5, -0.5};
  const double inner = 1.0 - depth / 2.0;
  const double outer = 1.0 + depth / 2.0;
  const double radii[] = {outer, outer, inner, inner};
  std::vector<Ring> rings(bend.size(), Ring(4));
  Ring outward;
  Ring inward;
  for (std::size_t i = 0; i < bend.size(); ++i) {
    for (std::size_t j = 0; j < 4; ++j) {
      rings[i][j] = radii[j] == 0.0 && i > 0
                        ? rings[0][j]
                        : maker.addPosition(
                              {radii[j] * bend[i].cosine, radii[j] * bend[i].sine, kHeights[j]});
    }
    outward.push_back(maker.addNormal({bend[i].cosine, bend[i].sine, 0.0}));
    inward.push_back(maker.addNormal({-bend[i].cosine, -bend[i].sine, 0.0}));
  }
  const std::uint32_t up = maker.addNormal(kUnitZ);
  const std::uint32_t down = maker.addNormal(-kUnitZ);
  for (std::size_t i = 0; i + 1 < bend.size(); ++i) {
    const Ring& a = rings[i];
    const Ring& b = rings[i + 1];
    maker.addQuad({a[0], outward[i]}, {b[0], outward[i + 1]}, {b[1], outward[i + 1]},
                  {a[1], outward[i]});
    maker.addQuad({a[1], up}, {b[1], up}, {b[2], up}, {a[2], up});
    maker.addQuad({a[2], inward[i]}, {b[2], inward[i + 1]}, {b[3], inward[i + 1]},
                  {a[3], inward[i]});
    maker.addQuad({a[3], down}, {b[3], down}, {b[0], down}, {a[0], down});
    for (std::size_t j = 0; j < 4; ++j) {
      if (a[j] != b[j]) maker.addEdge(a[j], b[j]);
    }
  }
  maker.addFace(rings.front(), {0.0, -1.0, 0.0});
  maker.addFace(reversed(rings.back()), {-bend.back().sine, bend.back().cosine, 0.0});
  maker.addRingEdges(rings.front());
  maker.addRingEdges(rings.back());
  return maker.take(true);
}

Mesh unitCube() {
  MeshMaker maker;
  for (int k = 0; k < 8; ++k) {
    maker.addPosition({k % 2 == 0 ? 0.0 : 1.0, k / 2 % 2 == 0 ? 0.0 : 1.0, k / 4 == 0 ? 0.0 : 1.0});
  }
  maker.addFace({0, 2, 3, 1}, -kUnitZ);
  maker.addFace({4, 5, 7, 6}, kUnitZ);
  maker.addFace({0, 1, 5, 4}, -kUnitY);
  maker.addFace({2, 6, 7, 3}, kUnitY);
  maker.addFace({0, 4, 6, 2}, -kUnitX);
  maker.addFace({1, 3, 7, 5}, kUnitX);
  for (const std::uint32_t k : {0U, 3U, 5U, 6U}) {
    for (const std::uint32_t bit : {1U, 2U, 4U}) maker.addEdge(k, k ^ bit);
  }
  return maker.take(true);
}

}  // namespace Vesk
