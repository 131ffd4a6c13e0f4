// SPDX-License-Identifier: MIT
#include "rvm/ShapeMapper.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "prims/EarClipper.h"
#include "rvm/Axes.h"
#include "rvm/FacetHoles.h"
#include "rvm/ShapeBox.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"

namespace Vesk {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kMillimetres = 1000.0;  // in a metre
constexpr double kSmallest = 1e-6;       // what the records' digits still show
constexpr double kLargest = 1e12;        // what a coordinate may be
constexpr double kAngleRounding = 1e-5;  // of an angle, as a part of it
constexpr double kBinaryAngle = 3e-7;    // radians that 32 bits may be off a whole degree
constexpr double kTextAngle = 5.1e-6;    // and five decimals
constexpr double kPlane = 0.01;          // mm that a face may be off its plane
constexpr std::size_t kMostPieces = 4096;
constexpr std::size_t kMostBodies = 16384;  // of one shape

// Ends the work on a shape.
struct Refusal {
  const char* reason;
};

// The sine and cosine of a whole number of quarters have no rounding.
struct Turn {
  explicit Turn(double angle) : c(std::cos(angle)), s(std::sin(angle)) {
    if (std::fabs(c) < 1e-15) c = 0.0;
    if (std::fabs(s) < 1e-15) s = 0.0;
  }
  double c;
  double s;
};

// An angle that is a whole number of degrees but for its rounding is that number.
double cleanAngle(double angle, double rounding) {
  const double degrees = std::round(angle * 180.0 / kPi);
  const double whole = degrees * kPi / 180.0;
  const double clean = std::fabs(whole - angle) <= rounding ? whole : angle;
  return std::min(clean, 2.0 * kPi);
}

// The frame of a shape in millimetres.
struct Frame {
  explicit Frame(const ReviewShape& shape) : origin(GePoint(shape.origin * kMillimetres)) {
    for (std::size_t i = 0; i < 3; ++i) axes[i] = shape.axes[i] * kMillimetres;
  }

  GePoint point(double x, double y, double z) const {
    return origin + (axes[0] * x + axes[1] * y + axes[2] * z);
  }
  GePoint point(const GePoint& p) const { return point(p.x, p.y, p.z); }

  // For the primitives that take position vectors.
  GeVector place(double x, double y, double z) const { return point(x, y, z) - GePoint(); }

  double determinant() const { return triple(axes[0], axes[1], axes[2]); }
  double length(std::size_t i) const { return axes[i].length(); }
  double scale() const { return (length(0) + length(1)) / 2.0; }

  bool isSame(std::size_t i, std::size_t k) const {
    return std::fabs(length(i) - length(k)) <= kAxesTolerance * length(i);
  }
  bool isRound() const { return isPerpendicular(axes) && isSame(0, 1); }
  bool isEven() const { return isRound() && isSame(0, 2); }

  // No local length becomes longer than by this factor.
  double largestScale() const {
    if (isPerpendicular(axes)) return std::max({length(0), length(1), length(2)});
    return std::sqrt(dot(axes[0], axes[0]) + dot(axes[1], axes[1]) + dot(axes[2], axes[2]));
  }

  Axes axes;
  GePoint origin;
};

// How many equal parts of `angle` keep the chords of a circle within a tolerance
// of it: a chord of the angle a is r (1 - cos(a / 2)) off.
std::size_t partsOf(double angle, double radius, double tolerance) {
  constexpr double kWidest = kPi / 4.0;
  double widest = kWidest;
  if (tolerance < radius) {
    widest = std::min(widest, 4.0 * std::asin(std::sqrt(tolerance / (2.0 * radius))));
  }
  const double parts = std::ceil(angle / widest - 1e-9);
  if (!(parts <= static_cast<double>(kMostPieces))) {
    throw Refusal{"the tolerance asks for more than 4096 pieces of a circle"};
  }
  return static_cast<std::size_t>(std::max(parts, 1.0));
}

double chordDeviation(double angle, double radius) {
  const double half = std::sin(angle / 4.0);
  return 2.0 * radius * half * half;
}

// A ring of corners about a centre, in the model's frame.
struct Section {
  GePoint centre;
  std::vector<GePoint> rim;
};

class Mapping {
 public:
  Mapping(const ReviewShape& shape, double tolerance, const PutElement& put)
      : shape_(shape), p_(shape.parameters), frame_(shape), tolerance_(tolerance), put_(put) {}

  ShapeOutcome run() {
    try {
      requireFinite();
      outcome_.boxDisagrees = !boxAgrees(shape_);
      map();
    } catch (const Refusal& refusal) {
      outcome_.fate = ShapeFate::kRefused;
      outcome_.reason = refusal.reason;
    }
    return outcome_;
  }

 private:
  static void require(bool holds, const char* reason) {
    if (!holds) throw Refusal{reason};
  }

  void requireFinite() const {
    const auto finite = [](const GeVector& v) {
      return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
    };
    bool all = finite(shape_.origin);
    for (const GeVector& axis : shape_.axes) all = all && finite(axis);
    for (std::size_t i = 0; i < parameterCount(shape_.kind); ++i) {
      all = all && std::isfinite(p_[i]);
    }
    for (const GePoint& point : shape_.facets.points) all = all && finite(point - GePoint());
    require(all, "a number is not finite");
  }

  void map() {
    switch (shape_.kind) {
      case ReviewKind::kPyramid:
        return mapPyramid();
      case ReviewKind::kBox:
        return mapBox();
      case ReviewKind::kRectangularTorus:
        return mapRectangularTorus();
      case ReviewKind::kCircularTorus:
        return mapCircularTorus();
      case ReviewKind::kEllipticalDish:
        return mapEllipticalDish();
      case ReviewKind::kSphericalDish:
        return mapSphericalDish();
      case ReviewKind::kSnout:
        return mapSnout();
      case ReviewKind::kCylinder:
        return mapCylinder();
      case ReviewKind::kSphere:
        return mapSphere();
      case ReviewKind::kLine:
        return mapLine();
      case ReviewKind::kFacets:
        return mapFacets();
      default:
        throw Refusal{"there is no such kind of shape"};
    }
  }

  void put(const Geo& geo) {
    put_(geo);
    ++outcome_.elements;
  }

  // Solids need a frame with a volume, and to be where records can tell.
  void requireSolid(double reach) const {
    const double volume = std::fabs(frame_.determinant());
    require(volume > 1e-9 * frame_.length(0) * frame_.length(1) * frame_.length(2),
            "its axes span no space");
    requireReach(reach);
  }

  void requireReach(double reach) const {
    const double far = std::max(
        {std::fabs(frame_.origin.x), std::fabs(frame_.origin.y), std::fabs(frame_.origin.z)});
    require(far + reach * frame_.largestScale() < kLargest, "it is too large or too far away");
  }

  void requireSize(double size, std::size_t axis) const {
    require(size > 0.0, "a size is zero or below");
    require(size * frame_.length(axis) >= kSmallest, "a size is too small for the records");
  }

  bool isMirrored() const { return frame_.determinant() < 0.0; }

  void putBody(const std::array<GePoint, 8>& corners) {
    Red red;
    red.origin = corners[0];
    for (std::size_t k = 1; k < 8; ++k) red.cornerVectors[k - 1] = corners[k] - corners[0];
    volume_ += std::fabs(red.volume());
    put(red);
  }

  void finish(ShapeFate fate, double exactVolume) {
    outcome_.fate = fate;
    outcome_.volumeLost = std::fabs(exactVolume - volume_);
  }

  double worldVolume(double local) const { return local * std::fabs(frame_.determinant()); }

  void mapPyramid() {
    const double h = p_[6];
    require(p_[0] >= 0.0 && p_[1] >= 0.0 && p_[2] >= 0.0 && p_[3] >= 0.0, "a size is below zero");
    requireSize(p_[0] + p_[2], 0);
    requireSize(p_[1] + p_[3], 1);
    requireSize(h, 2);
    requireSolid(p_[0] + p_[1] + p_[2] + p_[3] + std::fabs(p_[4]) + std::fabs(p_[5]) + h);
    std::array<GePoint, 8> corners;
    for (std::size_t k = 0; k < 8; ++k) {
      const bool top = k >= 4;
      const double side = top ? 0.5 : -0.5;
      const double x = top ? p_[2] : p_[0];
      const double y = top ? p_[3] : p_[1];
      corners[k] = frame_.point(side * p_[4] + (k % 2 == 0 ? -x : x) / 2.0,
                                side * p_[5] + (k % 4 < 2 ? -y : y) / 2.0, side * h);
    }
    putBody(corners);
    outcome_.fate = ShapeFate::kExact;
  }

  void mapBox() {
    for (std::size_t i = 0; i < 3; ++i) requireSize(p_[i], i);
    requireSolid(p_[0] + p_[1] + p_[2]);
    Box box;
    box.origin = frame_.point(-p_[0] / 2.0, -p_[1] / 2.0, -p_[2] / 2.0);
    box.edge1 = frame_.axes[0] * p_[0];
    box.edge2 = frame_.axes[1] * p_[1];
    box.edge3 = frame_.axes[2] * p_[2];
    put(box);
    outcome_.fate = ShapeFate::kExact;
  }

  double sweep(double angle) const {
    require(angle > 0.0, "an angle is zero or below");
    require(angle <= 2.0 * kPi * (1.0 + kAngleRounding), "an angle is more than a full turn");
    return cleanAngle(angle, shape_.isLine ? kTextAngle : kBinaryAngle);
  }

  // Bends of 120 degrees at most: a record's two vectors span the bend's plane.
  static std::size_t bendsOf(double angle) {
    return static_cast<std::size_t>(std::ceil(angle / (2.0 * kPi / 3.0) - kAngleRounding));
  }

  void finishBends(std::size_t bends) {
    outcome_.fate = bends == 1 ? ShapeFate::kExact : ShapeFate::kInPieces;
  }

  void mapRectangularTorus() {
    const double inner = p_[0];
    const double outer = p_[1];
    const double h = p_[2];
    const double angle = sweep(p_[3]);
    require(inner >= 0.0, "a radius is below zero");
    requireSize(outer - inner, 0);
    requireSize(h, 2);
    requireSolid(2.0 * outer + h);
    if (!frame_.isRound()) return facetRectangularTorus(inner, outer, h, angle);
    const std::size_t bends = bendsOf(angle);
    const GeVector low = frame_.place(0.0, 0.0, -h / 2.0);
    const GeVector high = frame_.place(0.0, 0.0, h / 2.0);
    const auto outerPoint = [&](std::size_t i) {
      const Turn turn(angle * static_cast<double>(i) / static_cast<double>(bends));
      return frame_.place(outer * turn.c, outer * turn.s, -h / 2.0);
    };
    for (std::size_t i = 0; i < bends; ++i) {
      put(Relb(low, high, outerPoint(i), outerPoint(i + 1), inner * frame_.scale()));
    }
    finishBends(bends);
  }

  void facetRectangularTorus(double inner, double outer, double h, double angle) {
    const double scale = frame_.largestScale();
    const std::size_t steps = partsOf(angle, outer * scale, tolerance_);
    const double step = angle / static_cast<double>(steps);
    std::array<GePoint, 8> corners;
    for (std::size_t i = 0; i < steps; ++i) {
      for (std::size_t k = 0; k < 8; ++k) {
        const Turn turn(step * static_cast<double>(k < 4 ? i : i + 1));
        const double r = k % 2 == 0 ? inner : outer;
        const double z = k % 4 < 2 ? -h / 2.0 : h / 2.0;
        // From one end to the other along the sweep, x outwards, y up, is left-handed.
        corners[k] = frame_.point(r * turn.c, r * turn.s, isMirrored() ? z : -z);
      }
      putBody(corners);
    }
    outcome_.deviation = chordDeviation(step, outer * scale);
    finish(ShapeFate::kFaceted, worldVolume((outer * outer - inner * inner) / 2.0 * angle * h));
  }

  void mapCircularTorus() {
    const double bend = p_[0];
    const double tube = p_[1];
    const double angle = sweep(p_[2]);
    requireSize(tube, 0);
    require(bend >= tube, "the tube is wider than its bend");
    requireSolid(2.0 * (bend + tube));
    if (!frame_.isEven()) return facetCircularTorus(bend, tube, angle);
    const std::size_t bends = bendsOf(angle);
    const auto end = [&](std::size_t i) {
      const Turn turn(angle * static_cast<double>(i) / static_cast<double>(bends));
      return frame_.place(bend * turn.c, bend * turn.s, 0.0);
    };
    const GeVector centre = frame_.place(0.0, 0.0, 0.0);
    for (std::size_t i = 0; i < bends; ++i) {
      put(Torus(centre, end(i), end(i + 1), 2.0 * tube * frame_.scale()));
    }
    finishBends(bends);
  }

  // Half of the tolerance for each of the two curvatures.
  void facetCircularTorus(double bend, double tube, double angle) {
    const double scale = frame_.largestScale();
    const std::size_t steps = partsOf(angle, (bend + tube) * scale, tolerance_ / 2.0);
    const std::size_t pieces = rimPieces(tube * scale, tolerance_ / 2.0);
    requireBodies(steps, pieces);
    const double step = angle / static_cast<double>(steps);
    const auto section = [&](std::size_t i) {
      const Turn turn(step * static_cast<double>(i));
      return sectionAbout(frame_.point(bend * turn.c, bend * turn.s, 0.0), pieces,
                          [&](const Turn& rim) {
                            const double r = bend + tube * rim.c;
                            return frame_.point(r * turn.c, r * turn.s, -tube * rim.s);
                          });
    };
    putSections(steps, section);
    outcome_.deviation = chordDeviation(step, (bend + tube) * scale) +
                         chordDeviation(2.0 * kPi / static_cast<double>(pieces), tube * scale);
    finish(ShapeFate::kFaceted, worldVolume(kPi * tube * tube * bend * angle));
  }

  // Even, 8 or more.
  static std::size_t rimPieces(double radius, double tolerance) {
    const std::size_t parts = partsOf(2.0 * kPi, radius, tolerance);
    return std::max<std::size_t>(8, parts + parts % 2);
  }

  static void requireBodies(std::size_t steps, std::size_t pieces) {
    require(steps * pieces / 2 <= kMostBodies, "the tolerance asks for more than 16384 bodies");
  }

  Turn rimTurn(std::size_t k, std::size_t pieces) const {
    const double angle = 2.0 * kPi * static_cast<double>(k) / static_cast<double>(pieces);
    // In a mirrored frame the other way round, so that the bodies are not inside out.
    return Turn(isMirrored() ? -angle : angle);
  }

  template <class PointAt>
  Section sectionAbout(const GePoint& centre, std::size_t pieces, PointAt pointAt) const {
    Section made{centre, {}};
    made.rim.reserve(pieces);
    for (std::size_t k = 0; k < pieces; ++k) made.rim.push_back(pointAt(rimTurn(k, pieces)));
    return made;
  }

  // The bodies between sections 0 to `steps`: wedges about the centres.
  template <class MakeSection>
  void putSections(std::size_t steps, MakeSection makeSection) {
    Section before = makeSection(0);
    for (std::size_t i = 1; i <= steps; ++i) {
      Section after = makeSection(i);
      const std::size_t n = before.rim.size();
      for (std::size_t k = 0; k < n; k += 2) {
        const auto& a = before.rim;
        const auto& b = after.rim;
        putBody({before.centre, a[k], a[(k + 2) % n], a[k + 1], after.centre, b[k], b[(k + 2) % n],
                 b[k + 1]});
      }
      before = std::move(after);
    }
  }

  // A body of revolution about z, of which radius(i) and height(i) tell the
  // meridian for i = 0 to steps.
  template <class Radius, class Height>
  void putTurned(std::size_t steps, std::size_t pieces, Radius radius, Height height) {
    requireBodies(steps, pieces);
    putSections(steps, [&](std::size_t i) {
      return sectionAbout(frame_.point(0.0, 0.0, height(i)), pieces, [&](const Turn& rim) {
        return frame_.point(radius(i) * rim.c, radius(i) * rim.s, height(i));
      });
    });
  }

  void mapCylinder() {
    const double r = p_[0];
    const double h = p_[1];
    requireSize(r, 0);
    requireSize(h, 2);
    requireSolid(2.0 * r + h);
    if (frame_.isRound()) return putCylinder(r, h);
    facetRound({r, r, h, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0});
  }

  void putCylinder(double r, double h) {
    put(Cyl(frame_.place(0.0, 0.0, -h / 2.0), frame_.place(0.0, 0.0, h / 2.0),
            2.0 * r * frame_.scale()));
    outcome_.fate = ShapeFate::kExact;
  }

  void mapSnout() {
    const double r1 = p_[0];
    const double r2 = p_[1];
    const double h = p_[2];
    require(r1 >= 0.0 && r2 >= 0.0, "a radius is below zero");
    requireSize(std::max(r1, r2), 0);
    requireSize(h, 2);
    for (std::size_t i = 5; i < 9; ++i) {
      require(std::fabs(p_[i]) < kPi / 2.0, "an end is sheared by a right angle or more");
    }
    const bool isSheared = p_[5] != 0.0 || p_[6] != 0.0 || p_[7] != 0.0 || p_[8] != 0.0;
    const bool isOffset = p_[3] != 0.0 || p_[4] != 0.0;
    double reach = 2.0 * (r1 + r2) + h + std::fabs(p_[3]) + std::fabs(p_[4]);
    for (std::size_t i = 5; i < 9; ++i) reach += (r1 + r2) * std::fabs(std::tan(p_[i]));
    requireSolid(reach);
    outcome_.isOddSnout = isSheared && r1 != r2;
    if (isSheared || isOffset || !frame_.isRound()) return facetRound(p_);
    if (r1 == r2) return putCylinder(r1, h);
    put(Cone(frame_.place(0.0, 0.0, -h / 2.0), frame_.place(0.0, 0.0, h / 2.0),
             2.0 * r1 * frame_.scale(), 2.0 * r2 * frame_.scale()));
    outcome_.fate = ShapeFate::kExact;
  }

  // A snout of these parameters, or a cylinder as one.
  void facetRound(const std::array<double, 9>& p) {
    const double scale = frame_.largestScale();
    double widest = std::max(p[0], p[1]);
    // A sheared rim is longer than its circle.
    for (const std::size_t i : {std::size_t{5}, std::size_t{7}}) {
      widest =
          std::max(widest, std::max(p[0], p[1]) *
                               std::hypot(1.0, std::hypot(std::tan(p[i]), std::tan(p[i + 1]))));
    }
    const std::size_t pieces = rimPieces(widest * scale, tolerance_);
    putSections(1, [&](std::size_t end) {
      const double side = end == 0 ? -0.5 : 0.5;
      const double r = p[end];
      const double slopeX = std::tan(p[5 + 2 * end]);
      const double slopeY = std::tan(p[6 + 2 * end]);
      const GePoint centre = frame_.point(side * p[3], side * p[4], side * p[2]);
      return sectionAbout(centre, pieces, [&](const Turn& rim) {
        const double u = r * rim.c;
        const double v = r * rim.s;
        return frame_.point(side * p[3] + u, side * p[4] + v,
                            side * p[2] + u * slopeX + v * slopeY);
      });
    });
    outcome_.deviation = chordDeviation(2.0 * kPi / static_cast<double>(pieces), widest * scale);
    finish(ShapeFate::kFaceted, worldVolume(snoutVolume(p)));
  }

  // Between the rims, every point of one joined with that of the other; what the
  // offset adds to sheared ends is the second term.
  static double snoutVolume(const std::array<double, 9>& p) {
    const double r1 = p[0];
    const double r2 = p[1];
    const auto moment = [&](std::size_t i, double radius) {
      return (std::tan(p[i]) * p[3] + std::tan(p[i + 1]) * p[4]) *
             (radius * radius / 3.0 + r1 * r2 / 6.0);
    };
    return kPi * (p[2] * (r1 * r1 + r1 * r2 + r2 * r2) / 3.0 - moment(5, r1) - moment(7, r2));
  }

  // A meridian of equal angles: radius and height at i of `steps`.
  template <class Radius, class Height>
  void mapTurned(double angle, double widest, double exactVolume, Radius radius, Height height) {
    const double scale = frame_.largestScale();
    const bool isEven = frame_.isEven();
    const double tolerance = isEven ? tolerance_ : tolerance_ / 2.0;
    const std::size_t steps = partsOf(angle, widest * scale, tolerance);
    const double step = angle / static_cast<double>(steps);
    const auto at = [&](auto function) {
      return [step, function](std::size_t i) { return function(step * static_cast<double>(i)); };
    };
    outcome_.deviation = chordDeviation(step, widest * scale);
    if (isEven) {
      putCones(steps, at(radius), at(height));
      finish(ShapeFate::kSliced, worldVolume(exactVolume));
      return;
    }
    const std::size_t pieces = rimPieces(widest * scale, tolerance);
    putTurned(steps, pieces, at(radius), at(height));
    outcome_.deviation += chordDeviation(2.0 * kPi / static_cast<double>(pieces), widest * scale);
    finish(ShapeFate::kFaceted, worldVolume(exactVolume));
  }

  template <class Radius, class Height>
  void putCones(std::size_t steps, Radius radius, Height height) {
    for (std::size_t i = 0; i < steps; ++i) {
      const Cone cone(frame_.place(0.0, 0.0, height(i)), frame_.place(0.0, 0.0, height(i + 1)),
                      2.0 * radius(i) * frame_.scale(), 2.0 * radius(i + 1) * frame_.scale());
      volume_ += cone.volume();
      put(cone);
    }
  }

  void mapEllipticalDish() {
    const double r = p_[0];
    const double h = p_[1];
    requireSize(r, 0);
    requireSize(h, 2);
    requireSolid(2.0 * r + h);
    mapTurned(
        kPi / 2.0, std::max(r, h), 2.0 / 3.0 * kPi * r * r * h,
        [r](double a) { return r * Turn(a).c; }, [h](double a) { return h * Turn(a).s; });
  }

  void mapSphericalDish() {
    const double r = p_[0];
    const double h = p_[1];
    requireSize(r, 0);
    requireSize(h, 2);
    const double sphere = (r * r + h * h) / (2.0 * h);
    requireSolid(2.0 * (sphere + r + h));
    const double angle = std::atan2(r, sphere - h);
    mapTurned(
        angle, sphere, kPi * h * (3.0 * r * r + h * h) / 6.0,
        [=](double a) { return std::max(0.0, sphere * Turn(angle - a).s); },
        [=](double a) { return h - sphere + sphere * Turn(angle - a).c; });
  }

  void mapSphere() {
    requireSize(p_[0], 0);
    const double height = shape_.box.max.z - shape_.box.min.z;
    const bool isRadius = sameLength(height, 2.0 * p_[0]) &&
                          std::fabs(height - 2.0 * p_[0]) < std::fabs(height - p_[0]);
    const bool isDiameter = !isRadius && sameLength(height, p_[0]);
    const double r = isRadius ? p_[0] : p_[0] / 2.0;
    requireSolid(2.0 * r);
    mapTurned(
        kPi, r, 4.0 / 3.0 * kPi * r * r * r, [r](double a) { return r * Turn(a).s; },
        [r](double a) { return -r * Turn(a).c; });
    if (isRadius || isDiameter) return;
    outcome_.fate = ShapeFate::kDoubtful;
    outcome_.reason = "its box fits neither the diameter nor the radius; drawn as the diameter";
  }

  void mapLine() {
    const double low = std::min(p_[0], p_[1]);
    const double high = std::max(p_[0], p_[1]);
    requireReach(std::fabs(low) + std::fabs(high));
    const Extents& box = shape_.box;
    const bool agrees = sameLength(box.min.x, low) && sameLength(box.max.x, high) &&
                        sameLength(box.min.y, 0.0) && sameLength(box.max.y, 0.0) &&
                        sameLength(box.min.z, 0.0) && sameLength(box.max.z, 0.0);
    if (!agrees) {
      outcome_.fate = ShapeFate::kDoubtful;
      outcome_.reason = "its box is not that of a line; left out";
      return;
    }
    requireSize(high - low, 0);
    put(Pline{frame_.point(p_[0], 0.0, 0.0), frame_.point(p_[1], 0.0, 0.0)});
    outcome_.fate = ShapeFate::kExact;
  }

  void mapFacets() {
    const ReviewFacets& facets = shape_.facets;
    double reach = 0.0;
    for (const GePoint& point : facets.points) {
      reach = std::max({reach, std::fabs(point.x), std::fabs(point.y), std::fabs(point.z)});
    }
    requireReach(3.0 * reach);
    outcome_.normals = facets.points.size();
    outcome_.fate = ShapeFate::kExact;
    std::size_t contour = 0;
    for (const std::size_t end : facets.polygonEnds) {
      if (!mapPolygon(contour, end)) ++outcome_.facetsRefused;
      contour = end;
    }
    require(outcome_.elements > 0, "none of its facets has an area");
  }

  // The corners of a contour, in the model's frame, without those that repeat the
  // one before.
  void addContour(std::size_t contour) {
    const ReviewFacets& facets = shape_.facets;
    const std::size_t from = contour == 0 ? 0 : facets.contourEnds[contour - 1];
    const std::size_t first = corners_.size();
    for (std::size_t i = from; i < facets.contourEnds[contour]; ++i) {
      const GePoint point = frame_.point(facets.points[i]);
      if (corners_.size() == first || !(corners_.back() == point)) corners_.push_back(point);
    }
    while (corners_.size() > first + 1 && corners_.back() == corners_[first]) corners_.pop_back();
    if (isMirrored()) {
      std::reverse(corners_.begin() + static_cast<std::ptrdiff_t>(first), corners_.end());
    }
    ends_.push_back(corners_.size());
  }

  bool mapPolygon(std::size_t from, std::size_t to) {
    corners_.clear();
    ends_.clear();
    for (std::size_t c = from; c < to; ++c) addContour(c);
    if (ends_.empty() || ends_[0] < 3) return false;
    const GeVector outline = areaOf(0, ends_[0]);
    double girth = 0.0;
    for (std::size_t i = 1; i < ends_[0]; ++i) girth += distance(corners_[i - 1], corners_[i]);
    if (!(outline.length() > 1e-12 * girth * girth) ||
        !(outline.length() > kSmallest * kSmallest)) {
      return false;
    }
    const GeVector normal = outline * (1.0 / outline.length());
    const double off = offPlane(normal, girth);
    const bool hasHoles = ends_.size() > 1;
    if (!hasHoles && corners_.size() == 3) {
      put(Pgon{corners_[0], corners_[1], corners_[2]});
    } else if (!hasHoles && corners_.size() == 4 && off == 0.0 && isConvex(normal)) {
      put(Pgon{corners_[0], corners_[1], corners_[2], corners_[3]});
    } else if (!putTriangles(normal, hasHoles)) {
      return false;
    }
    if (off > 0.0) {
      outcome_.fate = ShapeFate::kFaceted;
      outcome_.deviation = std::max(outcome_.deviation, off);
    }
    return true;
  }

  // Twice the area vector of the corners from..to.
  GeVector areaOf(std::size_t from, std::size_t to) const {
    GeVector sum;
    for (std::size_t i = from + 2; i < to; ++i) {
      sum += cross(corners_[i - 1] - corners_[from], corners_[i] - corners_[from]);
    }
    return sum;
  }

  // How far the corners are from their mean plane; 0.0 within the rounding.
  double offPlane(const GeVector& normal, double girth) const {
    GeVector sum;
    for (const GePoint& corner : corners_) sum += corner - corners_[0];
    const GePoint middle = corners_[0] + sum * (1.0 / static_cast<double>(corners_.size()));
    double off = 0.0;
    for (const GePoint& corner : corners_) {
      off = std::max(off, std::fabs(dot(corner - middle, normal)));
    }
    return off <= kPlane + 1e-6 * girth ? 0.0 : off;
  }

  bool isConvex(const GeVector& normal) const {
    for (std::size_t i = 0; i < 4; ++i) {
      const GePoint& a = corners_[i];
      const GePoint& b = corners_[(i + 1) % 4];
      const GePoint& c = corners_[(i + 2) % 4];
      if (!(dot(cross(b - a, c - b), normal) > 0.0)) return false;
    }
    return true;
  }

  bool putTriangles(const GeVector& normal, bool hasHoles) {
    std::vector<GePoint> way;
    if (hasHoles) {
      std::vector<PlanePoint> plane;
      // In the plane of the two coordinates that the face fills most, seen from
      // the side that keeps its sense.
      const GeVector size(std::fabs(normal.x), std::fabs(normal.y), std::fabs(normal.z));
      for (const GePoint& c : corners_) {
        if (size.z >= size.x && size.z >= size.y) {
          plane.push_back({normal.z > 0.0 ? c.x : -c.x, c.y});
        } else if (size.x >= size.y) {
          plane.push_back({normal.x > 0.0 ? c.y : -c.y, c.z});
        } else {
          plane.push_back({normal.y > 0.0 ? c.z : -c.z, c.x});
        }
      }
      for (const std::size_t i : joinHoles(plane, ends_)) way.push_back(corners_[i]);
    } else {
      way = corners_;
    }
    const std::vector<EarTriangle> ears = clipEars(way);
    double covered = 0.0;
    for (const EarTriangle& ear : ears) {
      covered += cross(way[ear[1]] - way[ear[0]], way[ear[2]] - way[ear[0]]).length();
    }
    double wanted = areaOf(0, ends_[0]).length();
    for (std::size_t c = 1; c < ends_.size(); ++c) {
      wanted -= areaOf(ends_[c - 1], ends_[c]).length();
    }
    // What crosses itself is not covered, or covered twice.
    if (ears.empty() || !(std::fabs(covered - wanted) <= 0.01 * wanted)) return false;
    for (const EarTriangle& ear : ears) put(Pgon{way[ear[0]], way[ear[1]], way[ear[2]]});
    return true;
  }

  const ReviewShape& shape_;
  const std::array<double, 9>& p_;
  Frame frame_;
  double tolerance_;
  const PutElement& put_;
  ShapeOutcome outcome_;
  double volume_ = 0.0;  // of what was put, of shapes that are not exact
  std::vector<GePoint> corners_;
  std::vector<std::size_t> ends_;
};

}  // namespace

const char* nameOf(ShapeFate fate) {
  constexpr const char* kNames[kShapeFates] = {"exact",   "in pieces", "sliced",
                                               "faceted", "doubtful",  "refused"};
  return kNames[static_cast<std::size_t>(fate)];
}

ShapeOutcome ShapeMapper::map(const ReviewShape& shape, const PutElement& put) const {
  return Mapping(shape, tolerance_, put).run();
}

}  // namespace Vesk
