// SPDX-License-Identifier: MIT
#include "mesh/MeshProof.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace Vesk {

std::string closureFault(const Mesh& mesh) {
  const std::size_t vertices = mesh.positions.size();
  std::vector<bool> used(vertices);
  std::vector<std::uint64_t> edges;  // from in the high half, to in the low one
  edges.reserve(3 * mesh.triangles.size());
  for (const MeshTriangle& t : mesh.triangles) {
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint64_t from = t[i];
      const std::uint64_t to = t[(i + 1) % 3];
      if (from >= vertices) return "a corner that is no vertex";
      if (from == to) return "a triangle with two equal corners";
      used[from] = true;
      edges.push_back(from << 32U | to);
    }
  }
  if (std::find(used.begin(), used.end(), false) != used.end()) return "an unused vertex";
  std::sort(edges.begin(), edges.end());
  if (std::adjacent_find(edges.begin(), edges.end()) != edges.end()) {
    return "an edge that two triangles run along the same way";
  }
  for (const std::uint64_t edge : edges) {
    const std::uint64_t reverse = edge << 32U | edge >> 32U;
    if (!std::binary_search(edges.begin(), edges.end(), reverse)) return "an open edge";
  }
  if (vertices + mesh.triangles.size() != edges.size() / 2 + 2) {
    return "not the surface of one solid";
  }
  return {};
}

Mesh roundedMesh(const Mesh& mesh, std::size_t& dropped) {
  Mesh rounded;
  rounded.closed = mesh.closed;
  std::map<std::array<float, 3>, std::uint32_t> places;
  std::vector<std::uint32_t> moved;
  for (const GePoint& p : mesh.positions) {
    const std::array<float, 3> q{static_cast<float>(p.x), static_cast<float>(p.y),
                                 static_cast<float>(p.z)};
    const auto [place, isNew] =
        places.try_emplace(q, static_cast<std::uint32_t>(rounded.positions.size()));
    if (isNew) rounded.positions.emplace_back(q[0], q[1], q[2]);
    moved.push_back(place->second);
  }
  dropped = 0;
  for (const MeshTriangle& t : mesh.triangles) {
    const MeshTriangle r{moved[t[0]], moved[t[1]], moved[t[2]]};
    if (r[0] == r[1] || r[1] == r[2] || r[2] == r[0]) {
      ++dropped;
    } else {
      rounded.triangles.push_back(r);
    }
  }
  return rounded;
}

double enclosedVolume(const Mesh& mesh) {
  if (mesh.positions.empty()) return 0.0;
  // From a point of its own: far away from the origin the sum would cancel.
  const GePoint& from = mesh.positions.front();
  double six = 0.0;
  for (const MeshTriangle& t : mesh.triangles) {
    six += triple(mesh.positions[t[0]] - from, mesh.positions[t[1]] - from,
                  mesh.positions[t[2]] - from);
  }
  return six / 6.0;
}

}  // namespace Vesk
