// SPDX-License-Identifier: MIT
#include "mesh/FlatMesh.h"

#include <limits>

namespace Vesk {
namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

template <class Vector>
void append(std::vector<float>& to, const Vector& v) {
  for (const double d : {v.x, v.y, v.z}) to.push_back(static_cast<float>(d));
}

// The vertices of one position are a list: few, so that searching it is quick.
class Vertices {
 public:
  Vertices(const Mesh& mesh, FlatMesh& flat)
      : mesh_(mesh), flat_(flat), first_(mesh.positions.size(), kNone) {}

  std::uint32_t at(std::uint32_t position, std::uint32_t normal) {
    std::uint32_t vertex = first_[position];
    while (vertex != kNone && normal_[vertex] != normal) vertex = next_[vertex];
    if (vertex != kNone) return vertex;
    vertex = static_cast<std::uint32_t>(normal_.size());
    normal_.push_back(normal);
    next_.push_back(first_[position]);
    first_[position] = vertex;
    append(flat_.positions, mesh_.positions[position]);
    append(flat_.normals, mesh_.normals[normal]);
    return vertex;
  }

 private:
  const Mesh& mesh_;
  FlatMesh& flat_;
  std::vector<std::uint32_t> first_;
  std::vector<std::uint32_t> next_;
  std::vector<std::uint32_t> normal_;
};

}  // namespace

FlatMesh flattened(const Mesh& mesh) {
  FlatMesh flat;
  Vertices vertices(mesh, flat);
  flat.indices.reserve(3 * mesh.triangles.size());
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      flat.indices.push_back(vertices.at(mesh.triangles[i][k], mesh.triangleNormals[i][k]));
    }
  }
  return flat;
}

}  // namespace Vesk
