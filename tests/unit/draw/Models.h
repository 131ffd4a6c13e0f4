// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_DRAW_MODELS_H
#define VESK_TESTS_DRAW_MODELS_H

#include <memory>
#include <string>
#include <vector>

#include "draw/Drawing.h"
#include "draw/StandardView.h"
#include "mesh/SceneBuilder.h"
#include "vesk/Box.h"
#include "vesk/Cyl.h"
#include "vesk/Geo.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Txt.h"

namespace VeskTest {

using Vesk::Geo;
using Model = std::vector<std::shared_ptr<Geo>>;

// A box with edges along the axes.
inline std::shared_ptr<Geo> box(const GePoint& from, const GePoint& to) {
  auto made = std::make_shared<Vesk::Box>();
  made->origin = from;
  made->edge1 = {to.x - from.x, 0, 0};
  made->edge2 = {0, to.y - from.y, 0};
  made->edge3 = {0, 0, to.z - from.z};
  return made;
}

inline std::shared_ptr<Geo> cyl(const GePoint& from, const GePoint& to, double diameter) {
  auto made = std::make_shared<Vesk::Cyl>();
  made->origin = from;
  made->axis = to - from;
  made->diameter = diameter;
  return made;
}

// One point or a polyline.
inline std::shared_ptr<Geo> line(const std::vector<GePoint>& points) {
  auto made = std::make_shared<Vesk::Pline>();
  made->vertices = points;
  return made;
}

inline std::shared_ptr<Geo> face(const std::vector<GePoint>& points) {
  auto made = std::make_shared<Vesk::Pgon>();
  for (const GePoint& p : points) made->vertices.emplace_back().point = p;
  return made;
}

// In the plane of x and z, each character 100 wide and 100 high.
inline std::shared_ptr<Geo> text(const GePoint& at, const std::string& characters) {
  auto made = std::make_shared<Vesk::Txt>();
  made->position = at;
  made->direction = {1, 0, 0};
  made->upDirection = {0, 0, 1};
  made->charWidth = 100;
  made->height = 100;
  made->alignment = 1;
  made->text = characters;
  return made;
}

// Circles of 32 pieces. The kind of each element is its place in the model.
inline Vesk::Scene sceneOf(const Model& model) {
  Vesk::SceneBuilder builder(Vesk::Fineness::ofSegments(32));
  const std::uint32_t file = builder.addFile("model.dat");
  std::uint8_t kind = 0;
  for (const auto& geo : model) {
    Vesk::SceneElement element;
    element.kind = kind++;
    element.file = file;
    element.line = kind;
    builder.add(*geo, element);
  }
  return builder.finish();
}

// Without scale bar and axes. Its margins are an eighth of 100 pixels.
inline Vesk::DrawingStyle plainStyle(std::string_view view, int width = 100, int height = 100) {
  Vesk::DrawingStyle style;
  style.view = *Vesk::standardView(view);
  style.width = width;
  style.height = height;
  style.isPlain = true;
  return style;
}

inline std::size_t segmentsOf(const Vesk::Drawing& drawing) {
  std::size_t count = 0;
  for (const Vesk::Stroke& stroke : drawing.strokes()) count += stroke.points.size() - 1;
  return count;
}

}  // namespace VeskTest

#endif
