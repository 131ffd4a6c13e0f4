// SPDX-License-Identifier: MIT
#include "mesh/SceneBounds.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Vesk {
namespace {

// A float keeps 24 bits: what is further away than so many tolerances is moved,
// and then a quarter of the tolerance is kept.
constexpr double kFarTolerances = 0x1p23 / 4.0;

// So many times nearer to the origin it must get, or it stays.
constexpr double kNearer = 4.0;

// Of the size of the numbers: far more than rounding may move a point.
constexpr double kRounding = 1e-9;

// Whether a box is so well between two points, once it is placed, that nothing in it can
// be beyond either of them.
bool isWithin(const Extents& box, const Placement& placement, const GePoint& low,
              const GePoint& high) {
  const GeVector half = (box.max - box.min) / 2.0;
  const GePoint middle = box.min + half;
  const GePoint at = placement.point(middle);
  const auto isBetween = [&](double GePoint::*coordinate, double GeVector::*part) {
    const double reach = std::fabs(placement.x.*part * half.x) +
                         std::fabs(placement.y.*part * half.y) +
                         std::fabs(placement.z.*part * half.z);
    const double place = at.*coordinate;
    const double all =
        reach + kRounding * (std::fabs(placement.origin.*coordinate) + std::fabs(place) + reach);
    return place - all >= low.*coordinate && place + all <= high.*coordinate;
  };
  return isBetween(&GePoint::x, &GeVector::x) && isBetween(&GePoint::y, &GeVector::y) &&
         isBetween(&GePoint::z, &GeVector::z);
}

}  // namespace

void findBounds(Scene& scene) {
  Extents& bounds = scene.bounds;
  // As Extents does it, for the many points of meshes without a call for each.
  GePoint low = bounds.min;
  GePoint high = bounds.max;
  std::vector<Extents> boxes(scene.meshes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    for (const GePoint& p : scene.meshes[i].positions) boxes[i].add(p);
  }
  for (const SceneInstance& instance : scene.instances) {
    if (isWithin(boxes[instance.mesh], instance.placement, low, high)) continue;
    for (const GePoint& position : scene.meshes[instance.mesh].positions) {
      const GePoint p = instance.placement.point(position);
      low = {p.x < low.x ? p.x : low.x, p.y < low.y ? p.y : low.y, p.z < low.z ? p.z : low.z};
      high = {p.x > high.x ? p.x : high.x, p.y > high.y ? p.y : high.y,
              p.z > high.z ? p.z : high.z};
    }
  }
  bounds = Extents(low, high);
  for (const ScenePoint& point : scene.points) bounds.add(point.position);
  for (const GePoint& p : scene.lineVertices) bounds.add(p);
  for (const SceneText& text : scene.texts) {
    const GeVector along = text.along * text.width;
    const GeVector up = text.up * text.height;
    const GePoint& p = text.position;
    bounds.add(p).add(p + along).add(p + up).add(p + along + up);
  }
}

void moveFromAfar(Scene& scene, const Fineness& fineness) {
  Extents& bounds = scene.bounds;
  if (!(bounds.min.x <= bounds.max.x)) return;
  const GeVector size = bounds.max - bounds.min;
  std::vector<double> tolerances;
  for (const SceneInstance& instance : scene.instances) {
    if (instance.deviation > 0.0) tolerances.push_back(instance.tolerance);
  }
  double tolerance = fineness.tolerance(size.length() / 2.0);
  if (!tolerances.empty()) {
    const auto middle = tolerances.begin() + static_cast<std::ptrdiff_t>(tolerances.size() / 2);
    std::nth_element(tolerances.begin(), middle, tolerances.end());
    tolerance = *middle;
  }
  double furthest = 0.0;
  for (const GePoint& p : {bounds.min, bounds.max}) {
    furthest = std::max({furthest, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
  }
  const double halfSize = std::max({size.x, size.y, size.z}) / 2.0;
  if (furthest <= kFarTolerances * tolerance || furthest < kNearer * halfSize) return;
  const GePoint middle = bounds.min + size / 2.0;
  const GeVector offset(std::round(middle.x), std::round(middle.y), std::round(middle.z));
  for (SceneInstance& instance : scene.instances) instance.placement.origin += -offset;
  for (ScenePoint& point : scene.points) point.position += -offset;
  for (GePoint& p : scene.lineVertices) p += -offset;
  for (SceneText& text : scene.texts) text.position += -offset;
  bounds = Extents(bounds.min - offset, bounds.max - offset);
  scene.offset = offset;
}

}  // namespace Vesk
