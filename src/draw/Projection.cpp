// SPDX-License-Identifier: MIT
#include "draw/Projection.h"

#include <algorithm>

#include "vesk/Extents.h"

namespace Vesk {
namespace {

// Smaller than anything that a scene holds.
constexpr double kNoSize = 1e-15;

template <class Add>
void addBodies(const Scene& scene, Add add) {
  for (const SceneInstance& instance : scene.instances) {
    for (const GePoint& p : scene.meshes[instance.mesh].positions) {
      add(instance.placement.point(p));
    }
  }
  for (const ScenePoint& point : scene.points) add(point.position);
  for (const GePoint& p : scene.lineVertices) add(p);
}

template <class Add>
void addText(const SceneText& text, Add add) {
  const GeVector along = text.along * text.width;
  const GeVector up = text.up * text.height;
  for (const GeVector& v : {GeVector(), along, up, along + up}) add(text.position + v);
}

// The box of all that is drawn, in the axes of the view.
Extents seenBox(const Scene& scene, const StandardView& view, const GePoint& centre) {
  Extents box;
  const auto add = [&](const GePoint& p) {
    const GeVector v = p - centre;
    box.add({dot(view.right, v), dot(view.up, v), dot(view.toEye, v)});
  };
  addBodies(scene, add);
  const std::vector<bool> isFar = farTextsOf(scene);
  for (std::size_t i = 0; i < scene.texts.size(); ++i) {
    if (!isFar[i]) addText(scene.texts[i], add);
  }
  return box;
}

}  // namespace

std::vector<bool> farTextsOf(const Scene& scene) {
  std::vector<bool> isFar(scene.texts.size(), false);
  if (scene.texts.empty()) return isFar;
  Extents bodies;
  addBodies(scene, [&](const GePoint& p) { bodies.add(p); });
  if (!(bodies.min.x <= bodies.max.x)) return isFar;
  const GeVector size = bodies.max - bodies.min;
  const double reach = std::max({size.x, size.y, size.z});
  if (!(reach > kNoSize)) return isFar;
  const GeVector margin(reach, reach, reach);
  const Extents near(bodies.min + -margin, bodies.max + margin);
  for (std::size_t i = 0; i < scene.texts.size(); ++i) {
    const GePoint& p = scene.texts[i].position;
    isFar[i] = p.x < near.min.x || p.x > near.max.x || p.y < near.min.y || p.y > near.max.y ||
               p.z < near.min.z || p.z > near.max.z;
  }
  return isFar;
}

Projection Projection::fit(const Scene& scene, const StandardView& view, const ScreenArea& area) {
  Projection made;
  made.view_ = view;
  made.middle_ = {(area.left + area.right) / 2.0, (area.top + area.bottom) / 2.0, 0.0};
  if (!(scene.bounds.min.x <= scene.bounds.max.x)) return made;
  made.centre_ = scene.bounds.min + (scene.bounds.max - scene.bounds.min) / 2.0;
  const Extents box = seenBox(scene, view, made.centre_);
  const GeVector size = box.max - box.min;
  const GeVector middle = box.min + size / 2.0 - GePoint();
  made.centre_ += view.right * middle.x + view.up * middle.y + view.toEye * middle.z;
  const double width = std::max(size.x, kNoSize);
  const double height = std::max(size.y, kNoSize);
  const bool hasSize = width > kNoSize || height > kNoSize;
  if (hasSize) {
    made.scale_ = std::min((area.right - area.left) / width, (area.bottom - area.top) / height);
  }
  return made;
}

ScreenPoint Projection::point(const GePoint& p) const { return middle_ + vector(p - centre_); }

ScreenPoint Projection::vector(const GeVector& v) const {
  return {dot(view_.right, v) * scale_, -dot(view_.up, v) * scale_, dot(view_.toEye, v) * scale_};
}

PlacedProjection::PlacedProjection(const Projection& projection, const Placement& placement)
    : origin_(projection.point(placement.origin)),
      x_(projection.vector(placement.x)),
      y_(projection.vector(placement.y)),
      z_(projection.vector(placement.z)) {}

}  // namespace Vesk
