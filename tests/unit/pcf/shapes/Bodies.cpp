// SPDX-License-Identifier: MIT
#include "Bodies.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <vesk/Box.h>
#include <vesk/Cone.h>
#include <vesk/Cyl.h>
#include <vesk/Red.h>
#include <vesk/Torus.h>

namespace Vesk::Pcf {
namespace {

std::string text(double number) {
  std::array<char, 400> buffer{};
  const auto end =
      std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::fixed, 3).ptr;
  std::string result(buffer.begin(), end);
  result.erase(result.find_last_not_of('0') + 1);
  if (result.back() == '.') result.pop_back();
  return result == "-0" ? "0" : result;
}

std::string text(const GePoint& p) { return text(p.x) + " " + text(p.y) + " " + text(p.z); }

// A round body about a line, its radius growing evenly.
bool inRound(const GePoint& origin, const GeVector& axis, double d1, double d2, const GePoint& p,
             double tolerance) {
  const double length = axis.length();
  const double along = dot(p - origin, axis) / length;
  if (along < -tolerance || along > length + tolerance) return false;
  const double part = std::clamp(along / length, 0.0, 1.0);
  const double aside = cross(p - origin, axis).length() / length;
  return aside <= (d1 + (d2 - d1) * part) / 2 + tolerance;
}

bool inTorus(const Torus& torus, const GePoint& p, double tolerance) {
  const GeVector normal = cross(torus.startVector, torus.endVector).normalised(1e-12);
  const double radius = torus.startVector.length();
  const GeVector way = p - torus.centre;
  const GeVector level = way - normal * dot(way, normal);
  const GeVector nearest = level.normalised(1e-12) * radius;
  if ((way - nearest).length() > torus.diameter / 2 + tolerance) return false;
  const double sweep = torus.startVector.angleTo(torus.endVector);
  const double slack = tolerance / radius;
  return level.angleTo(torus.startVector) <= sweep + slack &&
         level.angleTo(torus.endVector) <= sweep + slack;
}

bool inBox(const Box& box, const GePoint& p, double tolerance) {
  const GeVector way = p - box.origin;
  for (const GeVector& edge : {box.edge1, box.edge2, box.edge3}) {
    const double along = dot(way, edge) / edge.length();
    if (along < -tolerance || along > edge.length() + tolerance) return false;
  }
  return true;
}

// Behind all faces, each taken as plane.
bool inRed(const Red& red, const GePoint& p, double tolerance) {
  static constexpr int kFaces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                       {1, 3, 7, 5}, {3, 2, 6, 7}, {2, 0, 4, 6}};
  return std::all_of(std::begin(kFaces), std::end(kFaces), [&](const auto& face) {
    const GeVector normal =
        cross(red.corner(face[2]) - red.corner(face[0]), red.corner(face[3]) - red.corner(face[1]))
            .normalised(1e-12);
    return dot(p - red.corner(face[0]), normal) <= tolerance;
  });
}

}  // namespace

std::string textOf(const Geo& body) {
  if (const auto* cyl = dynamic_cast<const Cyl*>(&body))
    return "cylinder " + text(cyl->origin) + " > " + text(cyl->origin + cyl->axis) + " d " +
           text(cyl->diameter);
  if (const auto* cone = dynamic_cast<const Cone*>(&body))
    return "cone " + text(cone->origin) + " > " + text(cone->origin + cone->axis) + " d " +
           text(cone->diameter1) + " " + text(cone->diameter2);
  if (const auto* torus = dynamic_cast<const Torus*>(&body))
    return "torus " + text(torus->centre) + " from " + text(torus->centre + torus->startVector) +
           " to " + text(torus->centre + torus->endVector) + " d " + text(torus->diameter);
  if (const auto* box = dynamic_cast<const Box*>(&body)) {
    GePoint middle;
    box->centroid(middle);
    return "box " + text(middle) + " edges " + text(box->edge1.length()) + " " +
           text(box->edge2.length()) + " " + text(box->edge3.length());
  }
  if (const auto* red = dynamic_cast<const Red*>(&body))
    return "reducer " + text(red->corner(0)) + " > " + text(red->corner(4));
  return "?";
}

bool contains(const Geo& body, const GePoint& p, double tolerance) {
  if (const auto* cyl = dynamic_cast<const Cyl*>(&body))
    return inRound(cyl->origin, cyl->axis, cyl->diameter, cyl->diameter, p, tolerance);
  if (const auto* cone = dynamic_cast<const Cone*>(&body))
    return inRound(cone->origin, cone->axis, cone->diameter1, cone->diameter2, p, tolerance);
  if (const auto* torus = dynamic_cast<const Torus*>(&body)) return inTorus(*torus, p, tolerance);
  if (const auto* box = dynamic_cast<const Box*>(&body)) return inBox(*box, p, tolerance);
  if (const auto* red = dynamic_cast<const Red*>(&body)) return inRed(*red, p, tolerance);
  return false;
}

bool contains(const Drawn& drawn, const GePoint& p, double tolerance) {
  return std::any_of(drawn.bodies.begin(), drawn.bodies.end(),
                     [&](const auto& body) { return contains(*body, p, tolerance); });
}

}  // namespace Vesk::Pcf
