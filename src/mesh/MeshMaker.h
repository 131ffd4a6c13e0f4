// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_MESHMAKER_H
#define VESK_MESH_MESHMAKER_H

#include <cstdint>
#include <set>
#include <vector>

#include "vesk/mesh/Mesh.h"

namespace Vesk {

// A corner of a triangle: a position and a normal of the mesh.
struct MeshCorner {
  std::uint32_t position;
  std::uint32_t normal;
};

// Puts a mesh together.
class MeshMaker {
 public:
  std::uint32_t addPosition(const GePoint& p);

  // Makes the direction a unit one.
  std::uint32_t addNormal(const GeVector& direction);

  // Nothing when the edge is there already, either way: where corners are one, so
  // are edges.
  void addEdge(std::uint32_t from, std::uint32_t to);

  // Nothing when two of the three positions are the same one.
  void addTriangle(const MeshCorner& a, const MeshCorner& b, const MeshCorner& c);

  // Two triangles with the diagonal from a to c; one of them, or none, when
  // positions are the same one.
  void addQuad(const MeshCorner& a, const MeshCorner& b, const MeshCorner& c, const MeshCorner& d);

  // A plane convex face with one normal. The triangles zigzag between both ends
  // of the ring: those of a fan would be slivers.
  void addFace(const std::vector<std::uint32_t>& ring, const GeVector& normal);

  // Edges along the ring, from the last to the first too.
  void addRingEdges(const std::vector<std::uint32_t>& ring);

  Mesh take(bool closed);

 private:
  Mesh mesh_;
  std::set<MeshEdge> edges_;
};

}  // namespace Vesk

#endif
