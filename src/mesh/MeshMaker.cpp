// SPDX-License-Identifier: MIT
#include "mesh/MeshMaker.h"

#include <algorithm>
#include <utility>

namespace Vesk {

std::uint32_t MeshMaker::addPosition(const GePoint& p) {
  mesh_.positions.push_back(p);
  return static_cast<std::uint32_t>(mesh_.positions.size() - 1);
}

std::uint32_t MeshMaker::addNormal(const GeVector& direction) {
  mesh_.normals.push_back(direction / direction.length());
  return static_cast<std::uint32_t>(mesh_.normals.size() - 1);
}

void MeshMaker::addEdge(std::uint32_t from, std::uint32_t to) {
  const bool isNew = edges_.insert({std::min(from, to), std::max(from, to)}).second;
  if (isNew) mesh_.edges.push_back({from, to});
}

void MeshMaker::addTriangle(const MeshCorner& a, const MeshCorner& b, const MeshCorner& c) {
  if (a.position == b.position || b.position == c.position || c.position == a.position) return;
  mesh_.triangles.push_back({a.position, b.position, c.position});
  mesh_.triangleNormals.push_back({a.normal, b.normal, c.normal});
}

void MeshMaker::addQuad(const MeshCorner& a, const MeshCorner& b, const MeshCorner& c,
                        const MeshCorner& d) {
  addTriangle(a, b, c);
  addTriangle(a, c, d);
}

void MeshMaker::addFace(const std::vector<std::uint32_t>& ring, const GeVector& normal) {
  const std::uint32_t n = addNormal(normal);
  std::size_t low = 0;
  std::size_t high = ring.size() - 1;
  while (high - low >= 2) {
    addTriangle({ring[low], n}, {ring[low + 1], n}, {ring[high], n});
    ++low;
    if (high - low < 2) break;
    addTriangle({ring[low], n}, {ring[high - 1], n}, {ring[high], n});
    --high;
  }
}

void MeshMaker::addRingEdges(const std::vector<std::uint32_t>& ring) {
  for (std::size_t i = 0; i < ring.size(); ++i) addEdge(ring[i], ring[(i + 1) % ring.size()]);
}

Mesh MeshMaker::take(bool closed) {
  mesh_.closed = closed;
  edges_.clear();
  return std::exchange(mesh_, Mesh());
}

}  // namespace Vesk
