// SPDX-License-Identifier: MIT
#include "mesh/SceneBuilder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <utility>

#include "mesh/BendFrame.h"
#include "mesh/FaceMesh.h"
#include "mesh/ReducerMesh.h"
#include "mesh/SceneBounds.h"
#include "mesh/UnitMeshes.h"
#include "prims/Visit.h"
#include "shape/ReducerShape.h"
#include "shape/Shape.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

// Sines of angles that come from rounding.
constexpr double kRightAngle = 1e-12;

// Of a bend, as many as of a cylinder with the most segments.
constexpr double kMostTriangles = 4194304.0;

// Rounds to 40 bits: it swallows the last digits, in which equal shapes at
// different places differ.
double settled(double ratio) {
  const auto bits = std::bit_cast<std::uint64_t>(ratio);
  return std::bit_cast<double>((bits + 0x800U) & ~std::uint64_t{0xFFF});
}

// A unit direction perpendicular to the unit direction d, opposite for -d.
GeVector acrossOf(const GeVector& d) {
  // Far from the limit for the directions that pipes have.
  const GeVector side = cross(std::fabs(d.z) < 0.9 ? kUnitZ : kUnitX, d);
  return side / side.length();
}

const char* textOf(SceneLimit limit) {
  if (limit == SceneLimit::kTooFine) {
    return "more than 1048576 segments for a circle at this tolerance";
  }
  return limit == SceneLimit::kBendTooFine
             ? "bend needs more than 4194304 triangles at this tolerance"
             : "reducer needs too many triangles at this tolerance";
}

// The cube with other edges, right-handed.
Mesh skewCube(const GeVector& e1, const GeVector& e2, const GeVector& e3) {
  Mesh mesh = unitCube();
  for (GePoint& p : mesh.positions) p = GePoint(e1 * p.x + e2 * p.y + e3 * p.z);
  const GeVector images[] = {cross(e2, e3), cross(e3, e1), cross(e1, e2)};
  for (GeVector& n : mesh.normals) {
    n = images[0] * n.x + images[1] * n.y + images[2] * n.z;
    n /= n.length();
  }
  return mesh;
}

bool isRight(const GeVector& a, const GeVector& b) {
  return std::fabs(dot(a, b)) <= kRightAngle * a.length() * b.length();
}

}  // namespace

std::uint32_t SceneBuilder::addFile(std::string name) {
  scene_.files.push_back(std::move(name));
  return static_cast<std::uint32_t>(scene_.files.size() - 1);
}

std::uint32_t SceneBuilder::headerId(std::string_view header, std::string_view group) {
  std::string key(header);
  key.append(1, '\0').append(group);
  const auto [place, isNew] =
      headers_.try_emplace(std::move(key), static_cast<std::uint32_t>(scene_.headers.size()));
  if (isNew) {
    scene_.headers.emplace_back(header);
    scene_.groups.emplace_back(group);
  }
  return place->second;
}

std::uint32_t SceneBuilder::add(const Geo& geo, const SceneElement& element) {
  scene_.elements.push_back(element);
  addGeo(geo);
  return this->element();
}

Scene SceneBuilder::finish() {
  scene_.meshes = meshes_.take();
  findBounds(scene_);
  moveFromAfar(scene_, fineness_);
  headers_.clear();
  return std::exchange(scene_, Scene());
}

void SceneBuilder::fail(const char* reason) { scene_.failures.push_back({element(), reason}); }

void SceneBuilder::addGeo(const Geo& geo) {
  visit(
      geo, [this](const auto& primitive) { addPrimitive(primitive); },
      [this] { fail(Vesk::textOf(ShapeFault::kNoShape)); });
}

template <class Primitive>
void SceneBuilder::addPrimitive(const Primitive& primitive) {
  const ShapeFault fault = shapeFaultOf(primitive);
  if (fault != ShapeFault::kNone) return fail(Vesk::textOf(fault));
  const SceneLimit limit = add(primitive);
  if (limit != SceneLimit::kNone) fail(textOf(limit));
}

// Their shape tells their fault, and is what the mesh is made of.
void SceneBuilder::addPrimitive(const Red& red) { addReducer(red); }

void SceneBuilder::addPrimitive(const Pgon& pgon) { addFace(pgon); }

SceneLimit SceneBuilder::add(const Cyl& cyl) {
  return addRound(cyl.origin, cyl.axis, cyl.diameter / 2.0, cyl.diameter / 2.0);
}

SceneLimit SceneBuilder::add(const Cone& cone) {
  return addRound(cone.origin, cone.axis, cone.diameter1 / 2.0, cone.diameter2 / 2.0);
}

SceneLimit SceneBuilder::addRound(const GePoint& origin, const GeVector& axis, double radius1,
                                  double radius2) {
  const double height = axis.length();
  // The wider end first.
  const bool turned = radius2 > radius1;
  const double radius = std::max(radius1, radius2);
  const double ratio = std::min(radius1, radius2) / radius;
  const std::uint32_t segments = fineness_.circle(radius);
  if (segments == 0) return SceneLimit::kTooFine;
  const GeVector along = (turned ? -axis : axis) / height;
  const GeVector across = acrossOf(along);
  Solid solid;
  solid.placement = {across * radius, cross(along, across) * radius, along * height,
                     turned ? origin + axis : origin};
  solid.volume = kPi / 3.0 * height * (radius1 * radius1 + radius1 * radius2 + radius2 * radius2);
  solid.deviation = sagitta(radius, 2.0 * kPi / segments);
  solid.tolerance = fineness_.tolerance(radius);
  addUnit({UnitShape::kCone, segments, 0, settled(ratio), 0.0}, solid,
          [&] { return unitCone(segments, settled(ratio)); });
  return SceneLimit::kNone;
}

SceneLimit SceneBuilder::add(const Box& box) {
  GeVector e1 = box.edge1;
  GeVector e2 = box.edge2;
  const GeVector& e3 = box.edge3;
  const double volume = triple(e1, e2, e3);
  if (volume < 0.0) std::swap(e1, e2);
  Solid solid;
  solid.volume = std::fabs(volume);
  solid.tolerance = fineness_.tolerance((e1 + e2 + e3).length() / 2.0);
  solid.placement.origin = box.origin;
  if (isRight(e1, e2) && isRight(e2, e3) && isRight(e3, e1)) {
    solid.placement = {e1, e2, e3, box.origin};
    addUnit({UnitShape::kCube, 0, 0, 0.0, 0.0}, solid, unitCube);
  } else {
    addOwn(skewCube(e1, e2, e3), solid);
  }
  return SceneLimit::kNone;
}

SceneLimit SceneBuilder::add(const Torus& torus) {
  const BendFrame frame = bendFrame(torus.centre, torus.startVector, torus.endVector);
  const double radius = frame.radius;
  // Wider by rounding alone.
  const double tube = std::min(torus.diameter / 2.0, radius);
  const double outer = radius + tube;
  Solid solid;
  solid.tolerance = fineness_.isAbsolute() ? fineness_.tolerance(outer)
                                           : fineness_.tolerance(tube) + fineness_.tolerance(outer);
  const std::uint32_t along = fineness_.arc(outer, frame.sweep, solid.tolerance / 2.0);
  const std::uint32_t around = fineness_.circle(tube, solid.tolerance / 2.0);
  if (along == 0 || around == 0) return SceneLimit::kTooFine;
  if (2.0 * along * around > kMostTriangles) return SceneLimit::kBendTooFine;
  solid.placement = {frame.x * radius, frame.y * radius, frame.z * radius, torus.centre};
  solid.volume = frame.sweep * radius * kPi * tube * tube;
  solid.deviation = sagitta(tube, 2.0 * kPi / around) + sagitta(outer, frame.sweep / along);
  const double ratio = settled(tube / radius);
  const double sweep = settled(frame.sweep);
  addUnit({UnitShape::kTorus, along, around, ratio, sweep}, solid,
          [&] { return unitTorus(along, around, ratio, sweep); });
  return SceneLimit::kNone;
}

SceneLimit SceneBuilder::add(const Relb& relb) {
  const BendFrame frame = bendFrame(relb.centre, relb.startVector, relb.endVector);
  const double radius = frame.radius;
  // Deeper by rounding alone.
  const double depth = std::min(relb.depth, 2.0 * radius);
  const double outer = radius + depth / 2.0;
  Solid solid;
  solid.tolerance = fineness_.tolerance(outer);
  const std::uint32_t along = fineness_.arc(outer, frame.sweep, solid.tolerance);
  if (along == 0) return SceneLimit::kTooFine;
  solid.placement = {frame.x * radius, frame.y * radius, frame.z * relb.width, relb.centre};
  solid.volume = frame.sweep * radius * depth * relb.width;
  solid.deviation = sagitta(outer, frame.sweep / along);
  const double ratio = settled(depth / radius);
  const double sweep = settled(frame.sweep);
  addUnit({UnitShape::kElbow, along, 0, ratio, sweep}, solid,
          [&] { return unitElbow(along, ratio, sweep); });
  return SceneLimit::kNone;
}

void SceneBuilder::addReducer(const Red& red) {
  const ReducerShape shape = reducerShapeOf(red);
  if (shape.fault != ShapeFault::kNone) return fail(Vesk::textOf(shape.fault));
  double extent = 0.0;
  for (const GePoint& corner : shape.corners) extent = std::max(extent, distance(corner, {}));
  Solid solid;
  solid.tolerance = fineness_.tolerance(extent / 2.0);
  std::optional<ReducerMesh> made = makeReducer(shape, solid.tolerance);
  if (!made) return fail(textOf(SceneLimit::kReducerTooFine));
  solid.placement.origin = red.origin;
  solid.volume = made->volume;
  solid.deviation = made->deviation;
  addOwn(std::move(made->mesh), solid);
}

SceneLimit SceneBuilder::add(const Pline& pline) {
  if (pline.vertices.size() == 1) {
    scene_.points.push_back({element(), pline.vertices[0]});
    return SceneLimit::kNone;
  }
  scene_.lines.push_back({element(), scene_.lineVertices.size(), pline.vertices.size()});
  scene_.lineVertices.insert(scene_.lineVertices.end(), pline.vertices.begin(),
                             pline.vertices.end());
  return SceneLimit::kNone;
}

void SceneBuilder::addFace(const Pgon& pgon) {
  const FaceShape shape = faceShapeOf(pgon);
  if (shape.fault != ShapeFault::kNone) return fail(Vesk::textOf(shape.fault));
  double extent = 0.0;
  for (const GePoint& p : shape.points) extent = std::max(extent, distance(p, {}));
  Solid solid;
  solid.placement.origin = pgon.point(0);
  solid.tolerance = fineness_.tolerance(extent / 2.0);
  addOwn(makeFace(pgon, shape), solid);
}

SceneLimit SceneBuilder::add(const Txt& txt) {
  SceneText text;
  text.element = element();
  text.text = txt.text;
  text.along = txt.direction;
  text.up = txt.upDirection;
  text.width = static_cast<double>(txt.text.size()) * txt.charWidth;
  text.height = txt.height;
  // The reference point lies on a grid of three by three over the text.
  const int place = txt.alignment >= 1 && txt.alignment <= 9 ? txt.alignment - 1 : 0;
  const double column = 0.5 * (place % 3);
  const double row = 0.5 * (place / 3);  // NOLINT(bugprone-integer-division)
  text.position = txt.position - text.along * (column * text.width) - text.up * (row * text.height);
  scene_.texts.push_back(std::move(text));
  return SceneLimit::kNone;
}

template <class Make>
void SceneBuilder::addUnit(const MeshStore::UnitKey& key, const Solid& solid, Make make) {
  addInstance(meshes_.unit(key, make), solid);
}

void SceneBuilder::addOwn(Mesh mesh, const Solid& solid) {
  addInstance(meshes_.own(std::move(mesh)), solid);
}

void SceneBuilder::addInstance(std::uint32_t mesh, const Solid& solid) {
  scene_.instances.push_back(
      {mesh, element(), solid.placement, solid.volume, solid.deviation, solid.tolerance});
}

}  // namespace Vesk
