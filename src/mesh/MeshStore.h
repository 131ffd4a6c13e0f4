// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_MESHSTORE_H
#define VESK_MESH_MESHSTORE_H

#include <cstdint>
#include <map>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "mesh/Scene.h"

namespace Vesk {

enum class UnitShape { kCone, kTorus, kElbow, kCube };

// Each mesh of a scene once, however many elements are instances of it.
class MeshStore {
 public:
  // Shape, pieces in two directions, proportions.
  using UnitKey = std::tuple<UnitShape, std::uint32_t, std::uint32_t, double, double>;

  // The index of the mesh of this key; `make` makes it where it is new.
  template <class Make>
  std::uint32_t unit(const UnitKey& key, Make make) {
    const auto [place, isNew] = units_.try_emplace(key, static_cast<std::uint32_t>(meshes_.size()));
    if (isNew) meshes_.push_back(make());
    return place->second;
  }

  // The index of this mesh; the one before where it is there already.
  std::uint32_t own(Mesh mesh);

  const std::vector<Mesh>& meshes() const { return meshes_; }

  // All of them; the store is empty then.
  std::vector<Mesh> take();

 private:
  std::vector<Mesh> meshes_;
  std::map<UnitKey, std::uint32_t> units_;
  std::unordered_multimap<std::uint64_t, std::uint32_t> own_;  // by what is in the mesh
};

}  // namespace Vesk

#endif
