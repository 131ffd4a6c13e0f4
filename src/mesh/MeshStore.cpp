// SPDX-License-Identifier: MIT
#include "mesh/MeshStore.h"

#include <bit>
#include <utility>

namespace Vesk {
namespace {

void mix(std::uint64_t& hash, std::uint64_t value) {
  hash = (hash ^ value) * 0x9E3779B97F4A7C15U;
  hash ^= hash >> 29U;
}

template <class Vector>
void mixAll(std::uint64_t& hash, const std::vector<Vector>& vectors) {
  for (const Vector& v : vectors) {
    for (const double d : {v.x, v.y, v.z}) mix(hash, std::bit_cast<std::uint64_t>(d));
  }
}

std::uint64_t hashOf(const Mesh& mesh) {
  std::uint64_t hash = mesh.closed ? 1U : 2U;
  mixAll(hash, mesh.positions);
  mixAll(hash, mesh.normals);
  return hash;
}

bool isSame(const Mesh& a, const Mesh& b) {
  return a.closed == b.closed && a.positions == b.positions && a.normals == b.normals &&
         a.triangles == b.triangles && a.triangleNormals == b.triangleNormals;
}

}  // namespace

std::uint32_t MeshStore::own(Mesh mesh) {
  const std::uint64_t hash = hashOf(mesh);
  const auto [first, last] = own_.equal_range(hash);
  for (auto each = first; each != last; ++each) {
    if (isSame(meshes_[each->second], mesh)) return each->second;
  }
  const auto index = static_cast<std::uint32_t>(meshes_.size());
  meshes_.push_back(std::move(mesh));
  own_.emplace(hash, index);
  return index;
}

std::vector<Mesh> MeshStore::take() {
  units_.clear();
  own_.clear();
  return std::exchange(meshes_, {});
}

}  // namespace Vesk
