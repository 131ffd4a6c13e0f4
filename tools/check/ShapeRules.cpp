#include "check/ShapeRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "Numbers.h"
#include "check/NumberPlaces.h"
#include "input/ParseDouble.h"
#include "output/RecordLayout.h"
#include "prims/Box.h"
#include "prims/Cone.h"
#include "prims/Cyl.h"
#include "prims/Pgon.h"
#include "prims/Pline.h"
#include "prims/Red.h"
#include "prims/Relb.h"
#include "prims/Torus.h"
#include "prims/Txt.h"

namespace VeskTool {
namespace {

using namespace Vesk;

// Angles and ratios below this come from rounding.
constexpr double kFlatness = 1e-6;

// Ends of a bend that are nearer to one line than this have no plane.
constexpr double kNoPlane = 1e-9;

struct Span {
  int first;
  int last;
};

// Finds the largest number of an element; NaN counts as larger than all.
class Largest {
 public:
  void add(double v) {
    const double size = std::fabs(v);
    if (size > value_ || std::isnan(size)) value_ = size;
  }
  void add(const GePoint& p) { add(p.x), add(p.y), add(p.z); }
  void add(const GeVector& v) { add(v.x), add(v.y), add(v.z); }
  double value() const { return value_; }

 private:
  double value_ = 0.0;
};

double largestOf(const Geo& geo) {
  Largest largest;
  switch (geo.typeCode()) {
    case Cyl::kTypeCode: {
      const auto& cyl = static_cast<const Cyl&>(geo);
      largest.add(cyl.origin), largest.add(cyl.axis), largest.add(cyl.diameter);
      break;
    }
    case Cone::kTypeCode: {
      const auto& cone = static_cast<const Cone&>(geo);
      largest.add(cone.origin), largest.add(cone.axis);
      largest.add(cone.diameter1), largest.add(cone.diameter2);
      break;
    }
    case Box::kTypeCode: {
      const auto& box = static_cast<const Box&>(geo);
      largest.add(box.origin);
      largest.add(box.edge1), largest.add(box.edge2), largest.add(box.edge3);
      break;
    }
    case Torus::kTypeCode: {
      const auto& torus = static_cast<const Torus&>(geo);
      largest.add(torus.centre), largest.add(torus.startVector), largest.add(torus.endVector);
      largest.add(torus.diameter), largest.add(torus.bendRadius);
      break;
    }
    case Relb::kTypeCode: {
      const auto& relb = static_cast<const Relb&>(geo);
      largest.add(relb.centre), largest.add(relb.startVector), largest.add(relb.endVector);
      largest.add(relb.depth), largest.add(relb.width);
      break;
    }
    case Red::kTypeCode: {
      const auto& red = static_cast<const Red&>(geo);
      largest.add(red.origin);
      for (const GeVector& v : red.cornerVectors) largest.add(v);
      break;
    }
    case Pline::kTypeCode: {
      const auto& pline = static_cast<const Pline&>(geo);
      for (const GePoint& p : pline.vertices) largest.add(p);
      for (const ArcEntry& arc : pline.arcs) largest.add(arc.radius);
      break;
    }
    case Pgon::kTypeCode: {
      const auto& pgon = static_cast<const Pgon&>(geo);
      for (const PgonVertex& v : pgon.vertices) {
        largest.add(v.point);
        if (v.hasNormal) largest.add(v.normal);
      }
      for (const ArcEntry& arc : pgon.arcs) largest.add(arc.radius);
      break;
    }
    case Txt::kTypeCode: {
      const auto& txt = static_cast<const Txt&>(geo);
      largest.add(txt.position), largest.add(txt.direction), largest.add(txt.upDirection);
      largest.add(txt.height), largest.add(txt.charWidth);
      break;
    }
    default:
      break;
  }
  return largest.value();
}

// The rules of one kind each. `step` is the distance of two neighbouring values
// that the style can write for this element's coordinates.
class ShapeCheck {
 public:
  ShapeCheck(std::int32_t mode, double step, std::vector<Trouble>& troubles)
      : columns_(mode == kFixedColumns), step_(step), troubles_(troubles) {}

  void check(const Cyl& cyl) {
    if (cyl.diameter < 0.0) return negative("diameter", cyl.diameter, {6, 6});
    if (cyl.diameter < kLeastSize) return small("diameter", cyl.diameter, {6, 6});
    const double length = cyl.axis.length();
    if (length < kLeastSize) small("length", length, {3, 5});
  }

  void check(const Cone& cone) {
    if (cone.diameter1 < 0.0) return negative("diameter", cone.diameter1, {6, 6});
    if (cone.diameter2 < 0.0) return negative("diameter", cone.diameter2, {7, 7});
    if (cone.diameter1 < kLeastSize && cone.diameter2 < kLeastSize) {
      return small("both diameters", std::max(cone.diameter1, cone.diameter2), {6, 7});
    }
    if (cone.checkSize() != 0) small("length", cone.axis.length(), {3, 5});
  }

  void check(const Box& box) {
    const std::array<GeVector, 3> edges{box.edge1, box.edge2, box.edge3};
    double product = 1.0;
    for (std::size_t i = 0; i < edges.size(); ++i) {
      const double length = edges[i].length();
      if (length < kLeastSize) return small("edge", length, edgeSpan(i));
      product *= length;
    }
    if (std::fabs(triple(edges[0], edges[1], edges[2])) > kFlatness * product) return;
    add("V103", Severity::kWarning, "box is flat: its edges lie in a plane", "", {0, 11});
  }

  void check(const Torus& torus) {
    const Span diameter = columns_ ? Span{10, 10} : Span{9, 9};
    if (torus.diameter < 0.0) return negative("diameter", torus.diameter, diameter);
    if (torus.diameter < kLeastSize) return small("diameter", torus.diameter, diameter);
    const Bend bend{torus.startVector, torus.endVector, 3};
    if (!checkBend(bend, torus.checkSize(), "tube", torus.diameter, diameter)) return;
    const double radius = (torus.startVector.length() + torus.endVector.length()) / 2.0;
    if (torus.bendRadius > 0.0 && std::fabs(torus.bendRadius - radius) > slack()) {
      add("V111", Severity::kWarning,
          "bend radius is " + text(torus.bendRadius) + ", the ends are " + text(radius) +
              " from the centre",
          text(radius), {9, 9});
    }
  }

  void check(const Relb& relb) {
    const Span depth = columns_ ? Span{12, 12} : Span{9, 9};
    const Span width = columns_ ? Span{0, 5} : Span{10, 10};
    if (relb.depth < 0.0) return negative("depth", relb.depth, depth);
    if (relb.width < 0.0) return negative("width", relb.width, width);
    if (relb.depth < kLeastSize) return small("depth", relb.depth, depth);
    if (relb.width < kLeastSize) return small("width", relb.width, width);
    // In mode 2 the outer points stand behind the two of the bend axis.
    const Bend bend{relb.startVector, relb.endVector, columns_ ? 6 : 3};
    checkBend(bend, relb.checkSize(), "section", relb.depth, depth);
  }

  void check(const Red& red) {
    std::array<GePoint, 8> corners;
    for (int k = 0; k < 8; ++k) corners[static_cast<std::size_t>(k)] = red.corner(k);
    double extent = 0.0;
    for (const GePoint& corner : corners) {
      extent = std::max(extent, distance(corner, corners[0]));
    }
    if (extent < kLeastSize) return small("extent", extent, {0, 23});
    const double volume = red.volume();
    if (isTwisted(corners)) {
      add("V106", Severity::kError, "reducer is twisted: its corners are in the wrong order",
          "0 1 3 2 round the first end, and corner k + 4 opposite corner k", {0, 23});
    } else if (std::fabs(volume) <= step_ * extent * extent) {
      add("V103", Severity::kWarning, "reducer is flat", "", {0, 23});
    } else if (volume < 0.0) {
      add("V107", Severity::kWarning, "reducer is inside out: its volume is negative",
          "the two ends, or 1 and 2 and 5 and 6, the other way round", {0, 23});
    }
  }

  void check(const Pline& pline) {
    if (pline.vertices.size() < 2) return;
    double extent = 0.0;
    for (const GePoint& vertex : pline.vertices) {
      extent = std::max(extent, distance(vertex, pline.vertices.front()));
    }
    if (extent == 0.0) small("length", extent, {0, lastOf(pline.vertices.size())});
  }

  void check(const Pgon& pgon) {
    const std::size_t count = pgon.vertices.size();
    GeVector area;
    double extent = 0.0;
    for (std::size_t i = 1; i < count; ++i) {
      const GeVector v = pgon.point(i) - pgon.point(0);
      if (i + 1 < count) area += cross(v, pgon.point(i + 1) - pgon.point(0));
      extent = std::max(extent, v.length());
    }
    const Span all{0, lastOf(count)};
    if (count == 4 && isCrossed({pgon.point(0), pgon.point(1), pgon.point(2), pgon.point(3)})) {
      add("V108", Severity::kError, "quadrangle crosses itself", "four points round the face", all);
    } else if (area.length() <= kFlatness * extent * extent) {
      add("V103", Severity::kWarning, "face has no area: its points lie in a line", "", all);
    }
  }

  void check(const Txt& txt) {
    if (txt.height < 0.0) return negative("height", txt.height, {9, 9});
    if (txt.charWidth < 0.0) return negative("character width", txt.charWidth, {10, 10});
    if (txt.direction.isNull(0.0)) return small("direction", 0.0, {3, 5});
    if (txt.upDirection.isNull(0.0)) return small("up direction", 0.0, {6, 8});
    if (txt.height == 0.0) return small("height", txt.height, {9, 9});
    if (txt.charWidth == 0.0) small("character width", txt.charWidth, {10, 10});
  }

 private:
  static std::string text(double value) { return rounded(value, 3); }

  static int lastOf(std::size_t points) { return static_cast<int>(3 * points) - 1; }

  double slack() const { return std::max(kRadiusSlack, 4.0 * step_); }

  void add(std::string_view code, Severity severity, std::string message, std::string expected,
           Span span) {
    troubles_.push_back(
        {code, severity, std::move(message), std::move(expected), span.first, span.last});
  }

  void negative(const std::string& what, double value, Span span) {
    add("V101", Severity::kError, what + " is below zero: " + shortest(value), "a positive number",
        span);
  }

  void small(const std::string& what, double value, Span span) {
    add("V103", Severity::kWarning, "nothing to be seen: " + what + " is " + shortest(value), "",
        span);
  }

  // Mode 3 writes the first edge before the corner.
  Span edgeSpan(std::size_t edge) const {
    if (!columns_ && edge == 0) return {0, 2};
    const int first = 3 * static_cast<int>(edge) + 3;
    return {first, first + 2};
  }

  struct Bend {
    GeVector start;
    GeVector end;
    int firstNumber;  // of the start; the end follows
  };

  // False if there is something wrong that makes further rules idle.
  bool checkBend(const Bend& bend, int size, const std::string& what, double radialSize,
                 Span sizeSpan) {
    const double a = bend.start.length();
    const double b = bend.end.length();
    const int first = bend.firstNumber;
    const Span both{first, first + 5};
    if (std::min(a, b) < kLeastSize) {
      small("bend radius", std::min(a, b),
            a <= b ? Span{first, first + 2} : Span{first + 3, first + 5});
      return false;
    }
    if (size == 2) {
      add("V102", Severity::kError,
          what + " of " + text(radialSize) + " is wider than its bend of radius " +
              text((a + b) / 2.0),
          "at most twice the radius", sizeSpan);
    }
    if (cross(bend.start, bend.end).length() <= kNoPlane * a * b) {
      add("V112", Severity::kError, "bend without a plane: its start and end lie in a line", "",
          both);
      return false;
    }
    if (std::fabs(a - b) > slack()) {
      add("V110", Severity::kWarning, "bend has two radii: " + text(a) + " and " + text(b),
          "start and end at the same distance from the centre", both);
      return false;
    }
    return true;
  }

  // Whether each way to cut the quadrangle gives two triangles that face opposite
  // ways.
  bool isCrossed(const std::array<GePoint, 4>& p) const {
    for (std::size_t i = 0; i < 2; ++i) {
      const GeVector diagonal = p[i + 2] - p[i];
      const GeVector n1 = cross(p[i + 1] - p[i], diagonal);
      const GeVector n2 = cross(diagonal, p[(i + 3) % 4] - p[i]);
      // A triangle no higher than the last decimal has no side.
      const double least = 2.0 * step_ * diagonal.length();
      if (n1.length() <= least || n2.length() <= least || dot(n1, n2) >= 0.0) return false;
    }
    return true;
  }

  bool isTwisted(const std::array<GePoint, 8>& c) const {
    constexpr std::array<std::array<std::size_t, 4>, 6> kFaces = {
        {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}}};
    for (const auto& face : kFaces) {
      if (isCrossed({c[face[0]], c[face[1]], c[face[2]], c[face[3]]})) return true;
    }
    return isTurned(c);
  }

  // Whether the second end would fit the first much better if it were turned by
  // one or two corners. Fit is the sum of the products of opposite corners, each
  // seen from the middle of its end.
  static bool isTurned(const std::array<GePoint, 8>& c) {
    constexpr std::array<std::size_t, 4> kRound = {0, 1, 3, 2};
    std::array<GeVector, 4> first;
    std::array<GeVector, 4> second;
    GeVector sums[2];
    for (std::size_t i = 0; i < 4; ++i) {
      first[i] = c[kRound[i]] - c[0];
      second[i] = c[kRound[i] + 4] - c[4];
      sums[0] += first[i];
      sums[1] += second[i];
    }
    double fits[4] = {};
    for (std::size_t turn = 0; turn < 4; ++turn) {
      for (std::size_t i = 0; i < 4; ++i) {
        fits[turn] += dot(first[i] - sums[0] / 4.0, second[(i + turn) % 4] - sums[1] / 4.0);
      }
    }
    const double best = std::max({fits[1], fits[2], fits[3]});
    return best > 0.0 && fits[0] < best / 4.0;
  }

  bool columns_;
  double step_;
  std::vector<Trouble>& troubles_;
};

// Of a number of this size in mode 2.
double stepOfField(double size) {
  double step = 0.001;
  for (double limit = 9999.999; size > limit && step < 1e300; limit *= 10.0) step *= 10.0;
  return step;
}

void checkLargest(double largest, std::int32_t mode, std::vector<Trouble>& troubles) {
  if (!std::isfinite(largest)) {
    troubles.push_back({"V105", Severity::kError, "number is not finite", "a finite number",
                        Trouble::kLargest, Trouble::kLargest});
  } else if (mode == kTokens && largest > kLastExact) {
    troubles.push_back({"V121", Severity::kWarning,
                        "number of " + shortest(largest) + " has no decimals left",
                        "at most " + rounded(kLastExact, 0), Trouble::kLargest, Trouble::kLargest});
  }
}

}  // namespace

void checkShape(const Geo& geo, std::int32_t mode, std::vector<Trouble>& troubles) {
  const double largest = largestOf(geo);
  if (!(largest <= kLastExact)) checkLargest(largest, mode, troubles);
  if (!std::isfinite(largest)) return;
  const double step = mode == kTokens ? 1e-4 : stepOfField(largest);
  ShapeCheck check(mode, step, troubles);
  switch (geo.typeCode()) {
    case Cyl::kTypeCode:
      return check.check(static_cast<const Cyl&>(geo));
    case Cone::kTypeCode:
      return check.check(static_cast<const Cone&>(geo));
    case Box::kTypeCode:
      return check.check(static_cast<const Box&>(geo));
    case Torus::kTypeCode:
      return check.check(static_cast<const Torus&>(geo));
    case Relb::kTypeCode:
      return check.check(static_cast<const Relb&>(geo));
    case Red::kTypeCode:
      return check.check(static_cast<const Red&>(geo));
    case Pline::kTypeCode:
      return check.check(static_cast<const Pline&>(geo));
    case Pgon::kTypeCode:
      return check.check(static_cast<const Pgon&>(geo));
    case Txt::kTypeCode:
      return check.check(static_cast<const Txt&>(geo));
    default:
      return;
  }
}

void checkFields(const Recs& lines, std::vector<Trouble>& troubles) {
  constexpr std::size_t kPointOfThree = 5;  // "    1.500"
  int number = -1;
  forEachField9(lines, [&](std::size_t, std::size_t, std::string_view field) {
    ++number;
    if (field[kPointOfThree] == '.') return;
    const auto value = parseDouble(field);
    if (!value || !std::isfinite(*value)) return;
    // Short numbers that were typed by hand lose nothing.
    if (*value > -9999.999 && *value <= 99999.999) return;
    const std::size_t point = field.find('.');
    const bool exponent = field.find_first_of("eE") != field.npos;
    const std::size_t decimals = point == field.npos || exponent ? 0 : field.size() - 1 - point;
    if (decimals >= 3) return;
    const std::string text(field.substr(field.find_first_not_of(' ')));
    if (decimals == 0) {
      troubles.push_back({"V121", Severity::kWarning, "number " + text + " has no decimals left",
                          "three decimals", number, number});
    } else {
      troubles.push_back({"V120", Severity::kNote,
                          "number " + text + " has " + std::to_string(decimals) +
                              (decimals == 1 ? " decimal" : " decimals") + " left",
                          "three decimals", number, number});
    }
  });
}

}  // namespace VeskTool
