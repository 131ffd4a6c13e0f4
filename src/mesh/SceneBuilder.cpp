#include "mesh/SceneBuilder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <initializer_list>
#include <span>
#include <utility>

#include "ge/GeConstants.h"
#include "mesh/FaceMesh.h"
#include "mesh/ReducerMesh.h"
#include "mesh/UnitMeshes.h"
#include "prims/BendArc.h"
#include "prims/Box.h"
#include "prims/Cone.h"
#include "prims/Cyl.h"
#include "prims/Pgon.h"
#include "prims/Pline.h"
#include "prims/Red.h"
#include "prims/Relb.h"
#include "prims/Torus.h"
#include "prims/Txt.h"

namespace Vesk {
namespace {

enum UnitShape { kUnitCone, kUnitTorus, kUnitElbow, kUnitCube };

// Squares and cubes of larger or smaller numbers would leave the range of floats.
constexpr double kLargest = 1e12;
constexpr double kSmallest = 1e-12;

// Sines of angles, and ratios of volumes, that come from rounding.
constexpr double kRightAngle = 1e-12;
constexpr double kFlat = 1e-12;

// Ends of a bend nearer to one line than this have no plane.
constexpr double kNoPlane = 1e-9;

// A float keeps 24 bits: what is further away than so many tolerances is moved,
// and then a quarter of the tolerance is kept.
constexpr double kFarTolerances = 0x1p23 / 4.0;

// So many times nearer to the origin it must get, or it stays.
constexpr double kNearer = 4.0;

constexpr std::string_view kTooFine = "more than 1048576 segments for a circle at this tolerance";

std::string numberTrouble(std::initializer_list<GePoint> points,
                          std::initializer_list<double> numbers = {}) {
  bool isFinite = true;
  bool isSmall = true;
  const auto look = [&](double v) {
    isFinite = isFinite && std::isfinite(v);
    isSmall = isSmall && std::fabs(v) <= kLargest;
  };
  for (const GePoint& p : points) look(p.x), look(p.y), look(p.z);
  for (const double v : numbers) look(v);
  if (!isFinite) return "a number is infinite or none";
  return isSmall ? "" : "a number is beyond 1e12";
}

std::string sizeTrouble(const char* name, double size) {
  if (size <= -kSmallest) return std::string(name) + " below zero";
  return size < kSmallest ? std::string(name) + " of zero" : std::string();
}

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

// Frame of a bend: x along its start, z along its axis.
struct BendFrame {
  std::string trouble;
  GeVector x;
  GeVector y;
  GeVector z;
  double radius = 0.0;
  double sweep = 0.0;
};

BendFrame bendFrame(const GePoint& centre, const GeVector& start, const GeVector& end) {
  BendFrame frame;
  const BendArc arc(centre, start, end);
  frame.trouble = sizeTrouble("bend radius", std::min(start.length(), end.length()));
  if (!frame.trouble.empty()) return frame;
  const GeVector& from = arc.startDirection();
  const GeVector& to = arc.endDirection();
  const GeVector across = cross(from, to);
  if (!arc.hasPlane() || across.length() < kNoPlane) {
    frame.trouble = "start and end of the bend lie in one line with its centre";
    return frame;
  }
  frame.x = from;
  frame.y = cross(arc.normal(), from);
  frame.y /= frame.y.length();
  frame.z = cross(frame.x, frame.y);
  frame.radius = arc.meanRadius();
  frame.sweep = std::atan2(across.length(), dot(from, to));
  return frame;
}

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

std::uint32_t SceneBuilder::headerId(std::string_view header) {
  const auto [place, isNew] =
      headers_.try_emplace(std::string(header), static_cast<std::uint32_t>(scene_.headers.size()));
  if (isNew) scene_.headers.emplace_back(header);
  return place->second;
}

std::uint32_t SceneBuilder::add(const Geo& geo, const SceneElement& element) {
  scene_.elements.push_back(element);
  std::string reason = addGeo(geo);
  if (!reason.empty()) scene_.failures.push_back({this->element(), std::move(reason)});
  return this->element();
}

Scene SceneBuilder::finish() {
  findBounds();
  moveFromAfar();
  headers_.clear();
  units_.clear();
  own_.clear();
  return std::exchange(scene_, Scene());
}

std::string SceneBuilder::addGeo(const Geo& geo) {
  switch (geo.typeCode()) {
    case Cyl::kTypeCode:
      return add(static_cast<const Cyl&>(geo));
    case Box::kTypeCode:
      return add(static_cast<const Box&>(geo));
    case Relb::kTypeCode:
      return add(static_cast<const Relb&>(geo));
    case Torus::kTypeCode:
      return add(static_cast<const Torus&>(geo));
    case Red::kTypeCode:
      return add(static_cast<const Red&>(geo));
    case Cone::kTypeCode:
      return add(static_cast<const Cone&>(geo));
    case Pline::kTypeCode:
      return add(static_cast<const Pline&>(geo));
    case Pgon::kTypeCode:
      return add(static_cast<const Pgon&>(geo));
    case Txt::kTypeCode:
      return add(static_cast<const Txt&>(geo));
    default:
      return "a kind without a shape";
  }
}

std::string SceneBuilder::add(const Cyl& cyl) {
  std::string trouble = numberTrouble({cyl.origin, GePoint(cyl.axis)}, {cyl.diameter});
  if (trouble.empty()) trouble = sizeTrouble("diameter", cyl.diameter);
  if (!trouble.empty()) return trouble;
  return addRound(cyl.origin, cyl.axis, cyl.diameter / 2.0, cyl.diameter / 2.0);
}

std::string SceneBuilder::add(const Cone& cone) {
  std::string trouble =
      numberTrouble({cone.origin, GePoint(cone.axis)}, {cone.diameter1, cone.diameter2});
  const auto [small, large] = std::minmax(cone.diameter1, cone.diameter2);
  if (trouble.empty() && small < 0.0) trouble = sizeTrouble("diameter", small);
  if (trouble.empty()) trouble = sizeTrouble("diameter", large);
  if (!trouble.empty()) return trouble;
  return addRound(cone.origin, cone.axis, cone.diameter1 / 2.0, cone.diameter2 / 2.0);
}

std::string SceneBuilder::addRound(const GePoint& origin, const GeVector& axis, double radius1,
                                   double radius2) {
  const double height = axis.length();
  std::string trouble = sizeTrouble("length", height);
  if (!trouble.empty()) return trouble;
  // The wider end first.
  const bool turned = radius2 > radius1;
  const double radius = std::max(radius1, radius2);
  const double ratio = std::min(radius1, radius2) / radius;
  const std::uint32_t segments = fineness_.circle(radius);
  if (segments == 0) return std::string(kTooFine);
  const GeVector along = (turned ? -axis : axis) / height;
  const GeVector across = acrossOf(along);
  Solid solid;
  solid.placement = {across * radius, cross(along, across) * radius, along * height,
                     turned ? origin + axis : origin};
  solid.volume = kPi / 3.0 * height * (radius1 * radius1 + radius1 * radius2 + radius2 * radius2);
  solid.deviation = sagitta(radius, 2.0 * kPi / segments);
  solid.tolerance = fineness_.tolerance(radius);
  addUnit({kUnitCone, segments, 0, settled(ratio), 0.0}, solid,
          [&] { return unitCone(segments, settled(ratio)); });
  return {};
}

std::string SceneBuilder::add(const Box& box) {
  std::string trouble =
      numberTrouble({box.origin, GePoint(box.edge1), GePoint(box.edge2), GePoint(box.edge3)});
  if (!trouble.empty()) return trouble;
  GeVector e1 = box.edge1;
  GeVector e2 = box.edge2;
  const GeVector& e3 = box.edge3;
  for (const GeVector& e : {e1, e2, e3}) {
    trouble = sizeTrouble("edge", e.length());
    if (!trouble.empty()) return trouble;
  }
  const double volume = triple(e1, e2, e3);
  if (std::fabs(volume) <= kFlat * e1.length() * e2.length() * e3.length()) {
    return "the three edges lie in one plane";
  }
  if (volume < 0.0) std::swap(e1, e2);
  Solid solid;
  solid.volume = std::fabs(volume);
  solid.tolerance = fineness_.tolerance((e1 + e2 + e3).length() / 2.0);
  solid.placement.origin = box.origin;
  if (isRight(e1, e2) && isRight(e2, e3) && isRight(e3, e1)) {
    solid.placement = {e1, e2, e3, box.origin};
    addUnit({kUnitCube, 0, 0, 0.0, 0.0}, solid, unitCube);
  } else {
    addOwn(skewCube(e1, e2, e3), solid);
  }
  return {};
}

std::string SceneBuilder::add(const Torus& torus) {
  std::string trouble = numberTrouble(
      {torus.centre, GePoint(torus.startVector), GePoint(torus.endVector)}, {torus.diameter});
  if (trouble.empty()) trouble = sizeTrouble("diameter", torus.diameter);
  if (!trouble.empty()) return trouble;
  const BendFrame frame = bendFrame(torus.centre, torus.startVector, torus.endVector);
  if (!frame.trouble.empty()) return frame.trouble;
  if (torus.checkSize() == 2) return "tube wider than its bend";
  const double radius = frame.radius;
  // Wider by rounding alone.
  const double tube = std::min(torus.diameter / 2.0, radius);
  const double outer = radius + tube;
  Solid solid;
  solid.tolerance = fineness_.isAbsolute() ? fineness_.tolerance(outer)
                                           : fineness_.tolerance(tube) + fineness_.tolerance(outer);
  const std::uint32_t along = fineness_.arc(outer, frame.sweep, solid.tolerance / 2.0);
  const std::uint32_t around = fineness_.circle(tube, solid.tolerance / 2.0);
  if (along == 0 || around == 0) return std::string(kTooFine);
  solid.placement = {frame.x * radius, frame.y * radius, frame.z * radius, torus.centre};
  solid.volume = frame.sweep * radius * kPi * tube * tube;
  solid.deviation = sagitta(tube, 2.0 * kPi / around) + sagitta(outer, frame.sweep / along);
  const double ratio = settled(tube / radius);
  const double sweep = settled(frame.sweep);
  addUnit({kUnitTorus, along, around, ratio, sweep}, solid,
          [&] { return unitTorus(along, around, ratio, sweep); });
  return {};
}

std::string SceneBuilder::add(const Relb& relb) {
  std::string trouble = numberTrouble(
      {relb.centre, GePoint(relb.startVector), GePoint(relb.endVector)}, {relb.width, relb.depth});
  if (trouble.empty()) trouble = sizeTrouble("width", relb.width);
  if (trouble.empty()) trouble = sizeTrouble("depth", relb.depth);
  if (!trouble.empty()) return trouble;
  const BendFrame frame = bendFrame(relb.centre, relb.startVector, relb.endVector);
  if (!frame.trouble.empty()) return frame.trouble;
  if (relb.checkSize() == 2) return "section wider than its bend";
  const double radius = frame.radius;
  // Deeper by rounding alone.
  const double depth = std::min(relb.depth, 2.0 * radius);
  const double outer = radius + depth / 2.0;
  Solid solid;
  solid.tolerance = fineness_.tolerance(outer);
  const std::uint32_t along = fineness_.arc(outer, frame.sweep, solid.tolerance);
  if (along == 0) return std::string(kTooFine);
  solid.placement = {frame.x * radius, frame.y * radius, frame.z * relb.width, relb.centre};
  solid.volume = frame.sweep * radius * depth * relb.width;
  solid.deviation = sagitta(outer, frame.sweep / along);
  const double ratio = settled(depth / radius);
  const double sweep = settled(frame.sweep);
  addUnit({kUnitElbow, along, 0, ratio, sweep}, solid,
          [&] { return unitElbow(along, ratio, sweep); });
  return {};
}

std::string SceneBuilder::add(const Red& red) {
  double extent = 0.0;
  for (const GeVector& v : red.cornerVectors) {
    std::string trouble = numberTrouble({red.origin, GePoint(v)});
    if (!trouble.empty()) return trouble;
    extent = std::max(extent, v.length());
  }
  std::string trouble = sizeTrouble("extent", extent);
  if (!trouble.empty()) return trouble;
  Solid solid;
  solid.tolerance = fineness_.tolerance(extent / 2.0);
  ReducerMesh made;
  trouble = makeReducer(red, solid.tolerance, made);
  if (!trouble.empty()) return trouble;
  solid.placement.origin = red.origin;
  solid.volume = made.volume;
  solid.deviation = made.deviation;
  addOwn(std::move(made.mesh), solid);
  return {};
}

std::string SceneBuilder::add(const Pline& pline) {
  if (pline.vertices.empty()) return "line without points";
  for (const GePoint& p : pline.vertices) {
    std::string trouble = numberTrouble({p});
    if (!trouble.empty()) return trouble;
  }
  if (pline.vertices.size() == 1) {
    scene_.points.push_back({element(), pline.vertices[0]});
    return {};
  }
  scene_.lines.push_back({element(), scene_.lineVertices.size(), pline.vertices.size()});
  scene_.lineVertices.insert(scene_.lineVertices.end(), pline.vertices.begin(),
                             pline.vertices.end());
  return {};
}

std::string SceneBuilder::add(const Pgon& pgon) {
  double extent = 0.0;
  for (const PgonVertex& vertex : pgon.vertices) {
    std::string trouble = numberTrouble({vertex.point});
    if (!trouble.empty()) return trouble;
    extent = std::max(extent, distance(vertex.point, pgon.point(0)));
  }
  Mesh mesh;
  std::string trouble = makeFace(pgon, mesh);
  if (!trouble.empty()) return trouble;
  Solid solid;
  solid.placement.origin = pgon.point(0);
  solid.tolerance = fineness_.tolerance(extent / 2.0);
  addOwn(std::move(mesh), solid);
  return {};
}

std::string SceneBuilder::add(const Txt& txt) {
  std::string trouble =
      numberTrouble({txt.position, GePoint(txt.direction), GePoint(txt.upDirection)},
                    {txt.charWidth, txt.height});
  if (!trouble.empty()) return trouble;
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
  return {};
}

template <class Make>
void SceneBuilder::addUnit(const UnitKey& key, const Solid& solid, Make make) {
  const auto [place, isNew] =
      units_.try_emplace(key, static_cast<std::uint32_t>(scene_.meshes.size()));
  if (isNew) scene_.meshes.push_back(make());
  addInstance(place->second, solid);
}

void SceneBuilder::addOwn(Mesh mesh, const Solid& solid) {
  const std::uint64_t hash = hashOf(mesh);
  const auto [first, last] = own_.equal_range(hash);
  for (auto each = first; each != last; ++each) {
    if (isSame(scene_.meshes[each->second], mesh)) return addInstance(each->second, solid);
  }
  const auto index = static_cast<std::uint32_t>(scene_.meshes.size());
  scene_.meshes.push_back(std::move(mesh));
  own_.emplace(hash, index);
  addInstance(index, solid);
}

void SceneBuilder::addInstance(std::uint32_t mesh, const Solid& solid) {
  scene_.instances.push_back(
      {mesh, element(), solid.placement, solid.volume, solid.deviation, solid.tolerance});
}

void SceneBuilder::findBounds() {
  Extents& bounds = scene_.bounds;
  for (const SceneInstance& instance : scene_.instances) {
    for (const GePoint& p : scene_.meshes[instance.mesh].positions) {
      bounds.add(instance.placement.point(p));
    }
  }
  for (const ScenePoint& point : scene_.points) bounds.add(point.position);
  for (const GePoint& p : scene_.lineVertices) bounds.add(p);
  for (const SceneText& text : scene_.texts) {
    const GeVector along = text.along * text.width;
    const GeVector up = text.up * text.height;
    const GePoint& p = text.position;
    bounds.add(p).add(p + along).add(p + up).add(p + along + up);
  }
}

// The tolerance that counts is that of the round shapes; of many the middle one.
void SceneBuilder::moveFromAfar() {
  Extents& bounds = scene_.bounds;
  if (!(bounds.min.x <= bounds.max.x)) return;
  const GeVector size = bounds.max - bounds.min;
  std::vector<double> tolerances;
  for (const SceneInstance& instance : scene_.instances) {
    if (instance.deviation > 0.0) tolerances.push_back(instance.tolerance);
  }
  double tolerance = fineness_.tolerance(size.length() / 2.0);
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
  for (SceneInstance& instance : scene_.instances) instance.placement.origin += -offset;
  for (ScenePoint& point : scene_.points) point.position += -offset;
  for (GePoint& p : scene_.lineVertices) p += -offset;
  for (SceneText& text : scene_.texts) text.position += -offset;
  bounds = Extents(bounds.min - offset, bounds.max - offset);
  scene_.offset = offset;
}

}  // namespace Vesk
