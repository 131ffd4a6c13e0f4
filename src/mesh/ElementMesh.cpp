// SPDX-License-Identifier: MIT
#include "vesk/mesh/ElementMesh.h"

#include <utility>

#include "mesh/SceneBuilder.h"

namespace Vesk {

ElementMesh meshOf(const Geo& geo, const Fineness& fineness) {
  SceneBuilder builder(fineness);
  builder.add(geo, {});
  Scene scene = builder.finish();
  ElementMesh made;
  if (!scene.failures.empty()) {
    made.reason = std::move(scene.failures.front().reason);
    return made;
  }
  if (scene.instances.empty()) {
    made.reason = scene.texts.empty() ? "a polyline has no surface" : "a text has no surface";
    return made;
  }
  const SceneInstance& instance = scene.instances.front();
  made.mesh = std::move(scene.meshes.front());
  for (GePoint& p : made.mesh.positions) p = instance.placement.point(p) + scene.offset;
  for (GeVector& n : made.mesh.normals) n = instance.placement.normal(n);
  made.volume = instance.volume;
  made.deviation = instance.deviation;
  made.tolerance = instance.tolerance;
  return made;
}

}  // namespace Vesk
