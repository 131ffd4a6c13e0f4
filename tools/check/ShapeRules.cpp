// SPDX-License-Identifier: MIT
#include "check/ShapeRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "check/NumberPlaces.h"
#include "input/ParseDouble.h"
#include "output/RecordFields.h"
#include "output/RecordLayout.h"
#include "prims/Visit.h"
#include "shape/Shape.h"
#include "text/Numbers.h"
#include "vesk/GeConstants.h"

namespace VeskTool {
namespace {

using namespace Vesk;

// Angles and ratios below this come from rounding.
constexpr double kFlatness = 1e-6;

// Of a bend that is nearer to half a turn the last decimals say on which side it
// lies: 0.01 degrees.
constexpr double kHalfTurn = 0.01 * kPi / 180.0;

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

// The numbers of an element, one function for each class.
struct AddNumbers {
  Largest& to;

  void operator()(const Cyl& cyl) const {
    to.add(cyl.origin), to.add(cyl.axis), to.add(cyl.diameter);
  }
  void operator()(const Cone& cone) const {
    to.add(cone.origin), to.add(cone.axis);
    to.add(cone.diameter1), to.add(cone.diameter2);
  }
  void operator()(const Box& box) const {
    to.add(box.origin);
    to.add(box.edge1), to.add(box.edge2), to.add(box.edge3);
  }
  void operator()(const Torus& torus) const {
    to.add(torus.centre), to.add(torus.startVector), to.add(torus.endVector);
    to.add(torus.diameter), to.add(torus.bendRadius);
  }
  void operator()(const Relb& relb) const {
    to.add(relb.centre), to.add(relb.startVector), to.add(relb.endVector);
    to.add(relb.depth), to.add(relb.width);
  }
  void operator()(const Red& red) const {
    to.add(red.origin);
    for (const GeVector& v : red.cornerVectors) to.add(v);
  }
  void operator()(const Pline& pline) const {
    for (const GePoint& p : pline.vertices) to.add(p);
    for (const ArcEntry& arc : pline.arcs) to.add(arc.radius);
  }
  void operator()(const Pgon& pgon) const {
    for (const PgonVertex& v : pgon.vertices) {
      to.add(v.point);
      if (v.hasNormal) to.add(v.normal);
    }
    for (const ArcEntry& arc : pgon.arcs) to.add(arc.radius);
  }
  void operator()(const Txt& txt) const {
    to.add(txt.position), to.add(txt.direction), to.add(txt.upDirection);
    to.add(txt.height), to.add(txt.charWidth);
  }
};

double largestOf(const Geo& geo) {
  Largest largest;
  visit(geo, AddNumbers{largest}, [] {});
  return largest.value();
}

// The rules of one kind each. `step` is the distance of two neighbouring values
// that the style can write for this element's coordinates.
class ShapeCheck {
 public:
  ShapeCheck(ShapeFault fault, std::int32_t mode, double step, std::vector<ElementFault>& faults)
      : fault_(fault), mode_(mode), step_(step), faults_(faults) {}

  void check(const Cyl& cyl) {
    if (cyl.diameter < 0.0)
      return negative("diameter", cyl.diameter, at(Records::kCyl, Value::kDiameter));
    if (cyl.diameter < kLeastSize)
      return small("diameter", cyl.diameter, at(Records::kCyl, Value::kDiameter));
    const double length = cyl.axis.length();
    if (length < kLeastSize) small("length", length, at(Records::kCyl, Value::kAxis));
  }

  void check(const Cone& cone) {
    const NumberRange first = at(Records::kCone, Value::kDiameter1);
    const NumberRange second = at(Records::kCone, Value::kDiameter2);
    if (cone.diameter1 < 0.0) return negative("diameter", cone.diameter1, first);
    if (cone.diameter2 < 0.0) return negative("diameter", cone.diameter2, second);
    if (cone.diameter1 < kLeastSize && cone.diameter2 < kLeastSize) {
      return small("both diameters", std::max(cone.diameter1, cone.diameter2),
                   {first.first, second.last});
    }
    if (cone.checkSize() != 0)
      small("length", cone.axis.length(), at(Records::kCone, Value::kAxis));
  }

  void check(const Box& box) {
    const std::array<GeVector, 3> edges{box.edge1, box.edge2, box.edge3};
    constexpr std::array kEdges{Value::kEdge1, Value::kEdge2, Value::kEdge3};
    double product = 1.0;
    for (std::size_t i = 0; i < edges.size(); ++i) {
      const double length = edges[i].length();
      if (length < kLeastSize) return small("edge", length, at(Records::kBox, kEdges[i]));
      product *= length;
    }
    if (std::fabs(triple(edges[0], edges[1], edges[2])) > kFlatness * product) return;
    add("V103", Severity::kWarning, "box is flat: its edges lie in a plane", "",
        Records::kBox.all(mode_));
  }

  void check(const Torus& torus) {
    const NumberRange diameter = at(Records::kTorus, Value::kDiameter);
    if (torus.diameter < 0.0) return negative("diameter", torus.diameter, diameter);
    if (torus.diameter < kLeastSize) return small("diameter", torus.diameter, diameter);
    const Bend bend = bendOf(torus.startVector, torus.endVector, Records::kTorus);
    if (!checkBend(bend, "tube", torus.diameter, diameter)) return;
    const double radius = (torus.startVector.length() + torus.endVector.length()) / 2.0;
    if (torus.bendRadius > 0.0 && std::fabs(torus.bendRadius - radius) > slack()) {
      add("V111", Severity::kWarning,
          "bend radius is " + text(torus.bendRadius) + ", the ends are " + text(radius) +
              " from the centre",
          text(radius), at(Records::kTorus, Value::kBendRadius));
    }
  }

  void check(const Relb& relb) {
    const NumberRange depth = depthOfElbow();
    const NumberRange width = widthOfElbow();
    if (relb.depth < 0.0) return negative("depth", relb.depth, depth);
    if (relb.width < 0.0) return negative("width", relb.width, width);
    if (relb.depth < kLeastSize) return small("depth", relb.depth, depth);
    if (relb.width < kLeastSize) return small("width", relb.width, width);
    const Bend bend = bendOf(relb.startVector, relb.endVector, Records::kRelb);
    checkBend(bend, "section", relb.depth, depth);
  }

  void check(const Red& red) {
    std::array<GePoint, 8> corners;
    for (int k = 0; k < 8; ++k) corners[static_cast<std::size_t>(k)] = red.corner(k);
    double extent = 0.0;
    for (const GePoint& corner : corners) {
      extent = std::max(extent, distance(corner, corners[0]));
    }
    if (extent < kLeastSize) return small("extent", extent, Records::kRed.all(mode_));
    const double volume = red.volume();
    constexpr const char* kOrder =
        "0 1 3 2 round the first end, and corner k + 4 opposite corner k";
    if (fault_ == ShapeFault::kFaceCrosses || fault_ == ShapeFault::kTurnedInside) {
      add("V106", Severity::kError, "reducer is twisted: its corners are in the wrong order",
          kOrder, Records::kRed.all(mode_));
    } else if (isTurned(corners)) {
      add("V106", Severity::kWarning,
          "reducer is twisted: its second end fits the first better turned", kOrder,
          Records::kRed.all(mode_));
    } else if (std::fabs(volume) <= step_ * extent * extent) {
      add("V103", Severity::kWarning, "reducer is flat", "", Records::kRed.all(mode_));
    } else if (volume < 0.0) {
      add("V107", Severity::kWarning, "reducer is inside out: its volume is negative",
          "the two ends, or 1 and 2 and 5 and 6, the other way round", Records::kRed.all(mode_));
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
    const NumberRange all{0, lastOf(count)};
    if (fault_ == ShapeFault::kCrossed) {
      const bool isQuad = count == 4;
      add("V108", Severity::kError, isQuad ? "quadrangle crosses itself" : "polygon crosses itself",
          isQuad ? "four points round the face" : "points round the face", all);
    } else if (area.length() <= kFlatness * extent * extent) {
      add("V103", Severity::kWarning, "face has no area: its points lie in a line", "", all);
    }
  }

  void check(const Txt& txt) {
    if (fault_ == ShapeFault::kNegativeHeight)
      return negative("height", txt.height, at(Records::kTxt, Value::kHeight));
    if (fault_ == ShapeFault::kNegativeCharWidth)
      return negative("character width", txt.charWidth, at(Records::kTxt, Value::kCharWidth));
    if (txt.direction.isNull(0.0))
      return small("direction", 0.0, at(Records::kTxt, Value::kDirection));
    if (txt.upDirection.isNull(0.0))
      return small("up direction", 0.0, at(Records::kTxt, Value::kUp));
    if (txt.height <= 0.0) return small("height", txt.height, at(Records::kTxt, Value::kHeight));
    if (txt.charWidth <= 0.0)
      small("character width", txt.charWidth, at(Records::kTxt, Value::kCharWidth));
  }

 private:
  static std::string text(double value) { return rounded(value, 3); }

  static int lastOf(std::size_t points) { return static_cast<int>(3 * points) - 1; }

  NumberRange at(const RecordShape& shape, Value value) const {
    return shape.rangeOf(value, mode_);
  }

  // In columns the inner radius tells the depth, the ends of the bend axis the width.
  NumberRange depthOfElbow() const {
    return at(Records::kRelb, mode_ == kFixedColumns ? Value::kInnerRadius : Value::kDepth);
  }

  NumberRange widthOfElbow() const {
    if (mode_ != kFixedColumns) return at(Records::kRelb, Value::kWidth);
    return {at(Records::kRelb, Value::kAxisEndA).first, at(Records::kRelb, Value::kAxisEndB).last};
  }

  double slack() const { return std::max(kRadiusSlack, 4.0 * step_); }

  void add(std::string_view code, Severity severity, std::string message, std::string expected,
           NumberRange span) {
    faults_.push_back(
        {code, severity, std::move(message), std::move(expected), span.first, span.last});
  }

  void negative(const std::string& what, double value, NumberRange span) {
    add("V101", Severity::kError, what + " is below zero: " + shortest(value), "a positive number",
        span);
  }

  void small(const std::string& what, double value, NumberRange span) {
    add("V103", Severity::kWarning, "nothing to be seen: " + what + " is " + shortest(value), "",
        span);
  }

  struct Bend {
    GeVector start;
    GeVector end;
    NumberRange startAt;
    NumberRange endAt;
  };

  Bend bendOf(const GeVector& start, const GeVector& end, const RecordShape& shape) const {
    return {start, end, at(shape, Value::kStart), at(shape, Value::kEnd)};
  }

  // False if there is something wrong that makes further rules idle.
  bool checkBend(const Bend& bend, const std::string& what, double radialSize,
                 NumberRange sizeSpan) {
    const double a = bend.start.length();
    const double b = bend.end.length();
    const NumberRange both{bend.startAt.first, bend.endAt.last};
    if (std::min(a, b) < kLeastSize) {
      small("bend radius", std::min(a, b), a <= b ? bend.startAt : bend.endAt);
      return false;
    }
    if (fault_ == ShapeFault::kTubeTooWide || fault_ == ShapeFault::kSectionTooWide) {
      add("V102", Severity::kError,
          what + " of " + text(radialSize) + " is wider than its bend of radius " +
              text((a + b) / 2.0),
          "at most twice the radius", sizeSpan);
    }
    if (fault_ == ShapeFault::kNoPlane) {
      add("V112", Severity::kError, "bend without a plane: its start and end lie in a line", "",
          both);
      return false;
    }
    if (bend.start.angleTo(bend.end) > kPi - kHalfTurn) {
      add("V113", Severity::kWarning, "bend of half a turn: rounding decides on which side it lies",
          "two bends of a quarter", both);
    }
    if (std::fabs(a - b) > slack()) {
      add("V110", Severity::kWarning, "bend has two radii: " + text(a) + " and " + text(b),
          "start and end at the same distance from the centre", both);
      return false;
    }
    return true;
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

  ShapeFault fault_;
  std::int32_t mode_;
  double step_;
  std::vector<ElementFault>& faults_;
};

// Of a number of this size in mode 2.
double stepOfField(double size) {
  double step = 0.001;
  for (double limit = 9999.999; size > limit && step < 1e300; limit *= 10.0) step *= 10.0;
  return step;
}

// For what the rules of the kinds have not told.
std::string_view codeOf(ShapeFault fault) {
  switch (fault) {
    case ShapeFault::kNotFinite:
      return "V105";
    case ShapeFault::kTooLarge:
      return "V121";
    case ShapeFault::kNegativeDiameter:
    case ShapeFault::kNegativeWidth:
    case ShapeFault::kNegativeDepth:
    case ShapeFault::kNegativeHeight:
    case ShapeFault::kNegativeCharWidth:
      return "V101";
    case ShapeFault::kTubeTooWide:
    case ShapeFault::kSectionTooWide:
      return "V102";
    case ShapeFault::kFaceCrosses:
    case ShapeFault::kTurnedInside:
      return "V106";
    case ShapeFault::kCrossed:
      return "V108";
    case ShapeFault::kNoPlane:
      return "V112";
    case ShapeFault::kNone:
    case ShapeFault::kNoDiameter:
    case ShapeFault::kNoWidth:
    case ShapeFault::kNoDepth:
    case ShapeFault::kNoLength:
    case ShapeFault::kNoEdge:
    case ShapeFault::kNoBendRadius:
    case ShapeFault::kNoExtent:
    case ShapeFault::kFlatBox:
    case ShapeFault::kNoVolume:
    case ShapeFault::kNoPoints:
    case ShapeFault::kTooFewPoints:
    case ShapeFault::kNoArea:
    case ShapeFault::kNoShape:
      break;
  }
  return "V103";
}

void checkLargest(double largest, std::int32_t mode, std::vector<ElementFault>& faults) {
  if (!std::isfinite(largest)) {
    faults.push_back({"V105", Severity::kError, "number is not finite", "a finite number",
                      ElementFault::kLargest, ElementFault::kLargest});
  } else if (mode == kTokens && largest > kLastExact) {
    faults.push_back(
        {"V121", Severity::kWarning, "number of " + shortest(largest) + " has no decimals left",
         "at most " + rounded(kLastExact, 0), ElementFault::kLargest, ElementFault::kLargest});
  }
}

}  // namespace

void checkShape(const Geo& geo, std::int32_t mode, std::vector<ElementFault>& faults) {
  const double largest = largestOf(geo);
  if (!(largest <= kLastExact)) checkLargest(largest, mode, faults);
  if (!std::isfinite(largest)) return;
  const double step = mode == kTokens ? 1e-4 : stepOfField(largest);
  const ShapeFault fault = shapeFaultOf(geo);
  ShapeCheck check(fault, mode, step, faults);
  const std::size_t before = faults.size();
  visit(
      geo, [&](const auto& primitive) { check.check(primitive); }, [] {});
  if (fault == ShapeFault::kNone || fault == ShapeFault::kTooLarge || faults.size() > before)
    return;
  faults.push_back({codeOf(fault), Severity::kWarning, textOf(fault), "",
                    ElementFault::kWholeElement, ElementFault::kWholeElement});
}

void checkFields(const Recs& lines, std::vector<ElementFault>& faults) {
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
      faults.push_back({"V121", Severity::kWarning, "number " + text + " has no decimals left",
                        "three decimals", number, number});
    } else {
      faults.push_back({"V120", Severity::kNote,
                        "number " + text + " has " + std::to_string(decimals) +
                            (decimals == 1 ? " decimal" : " decimals") + " left",
                        "three decimals", number, number});
    }
  });
}

}  // namespace VeskTool
