// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_SURFACES_H
#define VESK_DRAW_SURFACES_H

#include <array>
#include <cstdint>
#include <vector>

#include "draw/Projection.h"
#include "mesh/Scene.h"

namespace Vesk {

using ScreenTriangle = std::array<ScreenPoint, 3>;

// Twice the area of a triangle in the drawing, above zero if its corners run
// counter-clockwise for the eye.
inline double doubleArea(const ScreenTriangle& t) {
  return (t[2].x - t[0].x) * (t[1].y - t[0].y) - (t[1].x - t[0].x) * (t[2].y - t[0].y);
}

// Where something may be in the drawing, and how near to the eye it comes.
struct ScreenBox {
  double left;
  double right;
  double top;
  double bottom;
  double nearest;
};

// Whether a triangle is seen, and not from its edge.
bool facesEye(const ScreenTriangle& t);

// The surfaces of a scene as they are projected.
class Surfaces {
 public:
  // Both outlive it.
  Surfaces(const Scene& scene, const Projection& projection);

  const Scene& scene() const { return scene_; }
  const Projection& projection() const { return projection_; }
  std::uint32_t count() const { return static_cast<std::uint32_t>(scene_.instances.size()); }

  const Mesh& meshOf(std::uint32_t instance) const {
    return scene_.meshes[scene_.instances[instance].mesh];
  }

  // Whether an instance has a part between these heights. Of instances that are the
  // same, at the same place, the first alone has any.
  bool isBetween(std::uint32_t instance, double top, double bottom) const {
    return boxes_[instance].top <= bottom && boxes_[instance].bottom >= top;
  }

  // Of what isBetween some heights.
  const ScreenBox& boxOf(std::uint32_t instance) const { return boxes_[instance]; }

  // All instances, the one that comes nearest to the eye first.
  const std::vector<std::uint32_t>& nearestFirst() const { return nearestFirst_; }

  // The vertices of its mesh in place of what `points` held.
  void project(std::uint32_t instance, std::vector<ScreenPoint>& points) const;

  ScreenTriangle triangle(std::uint32_t instance, std::uint32_t triangle) const;

  // How thick half of the solids are at least, in pixels: of each the side of a
  // square bar that is as long as its box is across and has its volume. Without
  // solids infinite.
  double thickness() const { return thickness_; }

 private:
  const Scene& scene_;
  const Projection& projection_;
  std::vector<ScreenBox> boxes_;
  std::vector<std::uint32_t> nearestFirst_;
  double thickness_;
};

}  // namespace Vesk

#endif
