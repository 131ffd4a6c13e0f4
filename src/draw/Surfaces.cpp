// SPDX-License-Identifier: MIT
#include "draw/Surfaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

namespace Vesk {
namespace {

// Of the square of the longest side. What is thinner is seen from its edge.
constexpr double kThin = 1e-9;

double squareOf(const ScreenPoint& a, const ScreenPoint& b) {
  return (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
}

constexpr double kNowhere = std::numeric_limits<double>::infinity();

// The corners of the box around some points.
struct Bounds {
  ScreenPoint low{kNowhere, kNowhere, kNowhere};
  ScreenPoint high{-kNowhere, -kNowhere, -kNowhere};

  double across() const { return std::hypot(high.x - low.x, high.y - low.y, high.z - low.z); }
};

Bounds boundsOf(const std::vector<ScreenPoint>& points) {
  Bounds b;
  for (const ScreenPoint& p : points) {
    b.low = {std::min(b.low.x, p.x), std::min(b.low.y, p.y), std::min(b.low.z, p.z)};
    b.high = {std::max(b.high.x, p.x), std::max(b.high.y, p.y), std::max(b.high.z, p.z)};
  }
  return b;
}

double medianOf(std::vector<double>& numbers) {
  if (numbers.empty()) return std::numeric_limits<double>::infinity();
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

// A mesh and where it is.
using Solid = std::pair<std::uint32_t, std::array<double, 12>>;

Solid solidOf(const SceneInstance& instance) {
  const Placement& p = instance.placement;
  return {instance.mesh,
          {p.x.x, p.x.y, p.x.z, p.y.x, p.y.y, p.y.z, p.z.x, p.z.y, p.z.z, p.origin.x, p.origin.y,
           p.origin.z}};
}

}  // namespace

bool facesEye(const ScreenTriangle& t) {
  const double longest =
      std::max({squareOf(t[0], t[1]), squareOf(t[1], t[2]), squareOf(t[2], t[0])});
  return doubleArea(t) > kThin * longest;
}

Surfaces::Surfaces(const Scene& scene, const Projection& projection)
    : scene_(scene), projection_(projection) {
  std::vector<ScreenPoint> points;
  std::vector<double> thicknesses;
  const double pixel = 1.0 / projection.scale();
  std::set<Solid> solids;
  for (std::uint32_t i = 0; i < count(); ++i) {
    project(i, points);
    const Bounds bounds = boundsOf(points);
    const double volume = scene.instances[i].volume;
    if (volume > 0.0) {
      thicknesses.push_back(std::sqrt(volume / (bounds.across() * pixel)) / pixel);
    }
    // What is drawn at one place again would be painted over and over, and not be seen.
    const bool isNew = solids.insert(solidOf(scene.instances[i])).second;
    ScreenBox box{bounds.low.x, bounds.high.x, bounds.low.y, bounds.high.y, bounds.high.z};
    if (!isNew) {
      box.top = kNowhere;
      box.bottom = -kNowhere;
    }
    boxes_.push_back(box);
  }
  thickness_ = medianOf(thicknesses);
  nearestFirst_.resize(boxes_.size());
  std::iota(nearestFirst_.begin(), nearestFirst_.end(), 0U);
  std::stable_sort(
      nearestFirst_.begin(), nearestFirst_.end(),
      [&](std::uint32_t a, std::uint32_t b) { return boxes_[a].nearest > boxes_[b].nearest; });
}

void Surfaces::project(std::uint32_t instance, std::vector<ScreenPoint>& points) const {
  const PlacedProjection placed(projection_, scene_.instances[instance].placement);
  points.clear();
  for (const GePoint& p : meshOf(instance).positions) points.push_back(placed.point(p));
}

ScreenTriangle Surfaces::triangle(std::uint32_t instance, std::uint32_t triangle) const {
  const PlacedProjection placed(projection_, scene_.instances[instance].placement);
  const Mesh& mesh = meshOf(instance);
  const MeshTriangle& t = mesh.triangles[triangle];
  return {placed.point(mesh.positions[t[0]]), placed.point(mesh.positions[t[1]]),
          placed.point(mesh.positions[t[2]])};
}

}  // namespace Vesk
