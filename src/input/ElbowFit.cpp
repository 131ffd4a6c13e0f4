// SPDX-License-Identifier: MIT
#include "input/ElbowFit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <random>
#include <string>

#include "output/NumberText.h"
#include "vesk/GeConstants.h"
#include "vesk/GeDirect.h"
#include "vesk/TovException.h"

namespace Vesk {
namespace {

constexpr std::size_t kCoordinates = 12;
constexpr int kMostRounds = 40;

// Steps stay this far inside the last decimal, for exact halves.
constexpr double kInside = 0.4999999;

// Next to half a turn the plane is taken from the axis.
constexpr double kNearLine = 1e-4;

// The hairs by which an end is turned out of a line: the first is below what counts
// as a plane where shapes are judged; a duct of many metres needs more, or the
// rounding of doubles would show in its axis.
constexpr double kHairs[] = {5e-10, 1e-8, 2e-7};

// How often points inside the last decimals are tried by chance.
constexpr int kMostTries = 100;

using Coordinates = std::array<double, kCoordinates>;

Coordinates coordinatesOf(const ElbowCorners& p) {
  return {p.a.x, p.a.y, p.a.z, p.b.x, p.b.y, p.b.z, p.c.x, p.c.y, p.c.z, p.e.x, p.e.y, p.e.z};
}

ElbowCorners cornersAt(const Coordinates& x, double innerRadius) {
  return {{x[0], x[1], x[2]},
          {x[3], x[4], x[5]},
          {x[6], x[7], x[8]},
          {x[9], x[10], x[11]},
          innerRadius};
}

bool isSameText(double a, double b) {
  char first[kField9Room];
  char second[kField9Room];
  const char* const end = writeField9(first, a);
  return std::equal(static_cast<const char*>(first), end, second, writeField9(second, b));
}

// The unit of the last digit of a number in nine characters.
double lastDigitOf(double value) {
  std::string text;
  appendField9(text, value);
  const std::size_t e = std::min(text.find('e'), text.size());
  const std::size_t point = std::min(text.find('.'), e);
  int exponent = 0;
  if (e < text.size()) {
    std::from_chars(text.data() + e + 1, text.data() + text.size(), exponent);
  }
  return std::pow(10.0, exponent - static_cast<int>(e - point) + (point < e ? 1 : 0));
}

// The numbers that are written as one text, seen from their middle.
struct Cell {
  double middle;
  double half;
};

Cell cellOf(double value) {
  const double step = kInside * lastDigitOf(value);
  const double low = isSameText(value - step, value) ? value - step : value;
  const double high = isSameText(value + step, value) ? value + step : value;
  return {low + (high - low) / 2.0, (high - low) / 2.0};
}

// The middle of two numbers: exactly this number if they are one, with its sign.
double middleOf(double a, double b) { return a == b ? a : a + (b - a) / 2.0; }

// The end vector with the plane of the bend across the axis: next to half a turn,
// or none, the rounding of the vectors would give another one. One without any
// plane is turned by a hair.
GeVector inPlaneOf(const GeVector& axis, const GeVector& start, const GeVector& end, double hair) {
  const GeVector along = start.normalised(kDirectionTolerance);
  const GeVector normal =
      axis.isNull(kDirectionTolerance) ? along.perpendicular() : axis.normalised(0.0);
  const GeVector across = cross(normal, along);
  const double length = end.length();
  if (along == kNullVector || std::fabs(dot(across, end)) > kNearLine * length) return end;
  const double side = dot(across, end) < 0.0 ? -1.0 : 1.0;
  const double least = hair * length;
  return along * dot(along, end) + across * (side * std::max(std::fabs(dot(across, end)), least));
}

// The elbow of points in square.
Relb elbowOf(const ElbowCorners& p) {
  const GeVector toStart = p.c - p.a;
  const GeVector toEnd = p.e - p.a;
  const GeVector axis = p.a - p.b;
  Relb relb;
  relb.width = axis.length();
  relb.depth = toStart.length() - p.innerRadius;
  relb.startVector = toStart - GeDirect(toStart) * relb.depth / 2.0;
  relb.endVector = toEnd - GeDirect(toEnd) * relb.depth / 2.0;
  relb.centre = {middleOf(p.a.x, p.b.x), middleOf(p.a.y, p.b.y), middleOf(p.a.z, p.b.z)};
  relb.flipped = dot(cross(relb.startVector, relb.endVector), axis) < 0.0;
  return relb;
}

// The same for points next to a line.
Relb elbowNearLine(const ElbowCorners& p, double hair = kHairs[0]) {
  Relb relb = elbowOf(p);
  relb.endVector = inPlaneOf(p.a - p.b, relb.startVector, relb.endVector, hair);
  relb.flipped = dot(cross(relb.startVector, relb.endVector), p.a - p.b) < 0.0;
  return relb;
}

// How far the axis is from a right angle with the directions to the outer points,
// and how that changes with each coordinate.
struct Skew {
  std::array<double, 2> value;
  std::array<Coordinates, 2> slope;
};

Skew skewOf(const Coordinates& x) {
  Skew skew{};
  for (std::size_t k = 0; k < 2; ++k) {
    const std::size_t outer = 6 + 3 * k;
    for (std::size_t i = 0; i < 3; ++i) {
      const double axis = x[3 + i] - x[i];
      const double reach = x[outer + i] - x[i];
      skew.value[k] += axis * reach;
      skew.slope[k][3 + i] += reach;
      skew.slope[k][outer + i] += axis;
      skew.slope[k][i] -= axis + reach;
    }
  }
  return skew;
}

// Two equations of twelve unknowns: row[0] u = value[0], row[1] u = value[1].
struct Equations {
  std::array<Coordinates, 2> row;
  std::array<double, 2> value;
};

// The solution of least squares.
Coordinates leastSquares(const Equations& eq) {
  double m[3] = {};
  for (std::size_t i = 0; i < kCoordinates; ++i) {
    m[0] += eq.row[0][i] * eq.row[0][i];
    m[1] += eq.row[0][i] * eq.row[1][i];
    m[2] += eq.row[1][i] * eq.row[1][i];
  }
  const double determinant = m[0] * m[2] - m[1] * m[1];
  Coordinates u{};
  if (!(determinant > 1e-14 * m[0] * m[2])) {
    for (std::size_t i = 0; i < kCoordinates && m[0] > 0.0; ++i) {
      u[i] = eq.row[0][i] * eq.value[0] / m[0];
    }
    return u;
  }
  const double s = (eq.value[0] * m[2] - eq.value[1] * m[1]) / determinant;
  const double t = (eq.value[1] * m[0] - eq.value[0] * m[1]) / determinant;
  for (std::size_t i = 0; i < kCoordinates; ++i) u[i] = s * eq.row[0][i] + t * eq.row[1][i];
  return u;
}

// The solution whose greatest coordinate is least. It is bounded from below by
// (s, t) value / |(s, t) rows|, summed up, for every pair s, t; the greatest of
// these bounds is reached, and at a pair that leaves one unknown out.
Coordinates leastMaximum(const Equations& eq) {
  double best = 0.0;
  double bestS = 0.0;
  double bestT = 0.0;
  for (std::size_t k = 0; k < kCoordinates; ++k) {
    double s = eq.row[1][k];
    double t = -eq.row[0][k];
    const double size = std::hypot(s, t);
    if (!(size > 0.0)) continue;
    s /= size, t /= size;
    const double gain = s * eq.value[0] + t * eq.value[1];
    double sum = 0.0;
    for (std::size_t i = 0; i < kCoordinates; ++i) {
      sum += std::fabs(s * eq.row[0][i] + t * eq.row[1][i]);
    }
    if (!(sum > 0.0) || std::fabs(gain) / sum <= best) continue;
    best = std::fabs(gain) / sum;
    bestS = gain < 0.0 ? -s : s;
    bestT = gain < 0.0 ? -t : t;
  }
  // All but the unknowns that are left out are as great as the bound. Those have
  // parallel columns, and share the rest.
  Coordinates u{};
  std::array<double, 2> rest = eq.value;
  const auto projection = [&](std::size_t i) {
    const double p = bestS * eq.row[0][i] + bestT * eq.row[1][i];
    return std::fabs(p) <= 1e-9 * std::hypot(eq.row[0][i], eq.row[1][i]) ? 0.0 : p;
  };
  double leftOut = 0.0;
  for (std::size_t i = 0; i < kCoordinates; ++i) {
    const double p = projection(i);
    if (p == 0.0) leftOut += std::hypot(eq.row[0][i], eq.row[1][i]);
    if (p == 0.0) continue;
    u[i] = p < 0.0 ? -best : best;
    rest[0] -= u[i] * eq.row[0][i];
    rest[1] -= u[i] * eq.row[1][i];
  }
  const double share = std::hypot(rest[0], rest[1]) / leftOut;
  for (std::size_t i = 0; i < kCoordinates && leftOut > 0.0; ++i) {
    if (projection(i) != 0.0) continue;
    const double along = rest[0] * eq.row[0][i] + rest[1] * eq.row[1][i];
    u[i] = along == 0.0 ? 0.0 : std::copysign(share, along);
  }
  return u;
}

// The points in square whose steps from `base`, counted in `unit`, are least in
// the sense of `solve`.
template <class Solve>
Coordinates inSquare(const Coordinates& base, const Coordinates& unit, Solve solve) {
  Coordinates x = base;
  for (int round = 0; round < kMostRounds; ++round) {
    const Skew skew = skewOf(x);
    Equations eq{};
    for (std::size_t k = 0; k < 2; ++k) {
      eq.value[k] = -skew.value[k];
      for (std::size_t i = 0; i < kCoordinates; ++i) {
        eq.row[k][i] = skew.slope[k][i] * unit[i];
        eq.value[k] -= skew.slope[k][i] * (base[i] - x[i]);
      }
    }
    const Coordinates u = solve(eq);
    double change = 0.0;
    for (std::size_t i = 0; i < kCoordinates; ++i) {
      const double next = base[i] + unit[i] * u[i];
      if (!std::isfinite(next)) return x;
      if (unit[i] > 0.0) change = std::max(change, std::fabs(next - x[i]) / unit[i]);
      x[i] = next;
    }
    if (change < 1e-9) break;
  }
  return x;
}

// Whether rounding may turn the axis or an outer point by more than a little.
bool isShort(const ElbowCorners& p, const Coordinates& half) {
  const double step = *std::max_element(half.begin(), half.end());
  return std::min({distance(p.a, p.b), distance(p.a, p.c), distance(p.a, p.e)}) < 200.0 * step;
}

}  // namespace

bool writesCorners(const Relb& relb, const ElbowCorners& record) {
  try {
    const ElbowCorners own = cornersOf(relb);
    const Coordinates x = coordinatesOf(own);
    const Coordinates y = coordinatesOf(record);
    return std::equal(x.begin(), x.end(), y.begin(), isSameText) &&
           isSameText(own.innerRadius, record.innerRadius);
  } catch (const TovException&) {
    return false;  // no plane
  }
}

double stepOf(const Relb& relb, const ElbowCorners& record) {
  const ElbowCorners own = cornersOf(relb);
  return std::max({distance(own.a, record.a), distance(own.b, record.b), distance(own.c, record.c),
                   distance(own.e, record.e)});
}

Relb fitElbow(const ElbowCorners& record) {
  Relb plain = elbowOf(record);
  if (writesCorners(plain, record)) return plain;
  const Coordinates given = coordinatesOf(record);
  for (const double x : given) {
    if (!std::isfinite(x)) return plain;
  }
  if (!std::isfinite(record.innerRadius)) return plain;

  Coordinates middle{};
  Coordinates half{};
  for (std::size_t i = 0; i < kCoordinates; ++i) {
    const Cell cell = cellOf(given[i]);
    middle[i] = cell.middle;
    half[i] = cell.half;
  }
  const Coordinates near = inSquare(given, half, leastSquares);
  const Coordinates inside = inSquare(middle, half, leastMaximum);
  const double radii[] = {record.innerRadius, cellOf(record.innerRadius).middle};
  for (const double radius : radii) {
    for (const Coordinates& x : {given, near, inside}) {
      const ElbowCorners corners = cornersAt(x, radius);
      Relb relb = elbowOf(corners);
      if (writesCorners(relb, record)) return relb;
      for (const double hair : kHairs) {
        relb = elbowNearLine(corners, hair);
        if (writesCorners(relb, record)) return relb;
      }
    }
  }
  // Next to a width of nothing the steps are no small ones, and there may be other
  // places.
  if (!isShort(record, half)) return elbowNearLine(cornersAt(inside, record.innerRadius));
  std::minstd_rand random;
  const auto chance = [](std::minstd_rand& r) {
    return static_cast<double>(r()) / static_cast<double>(std::minstd_rand::max());
  };
  for (int i = 0; i < kMostTries; ++i) {
    Coordinates base = middle;
    for (std::size_t k = 0; k < kCoordinates; ++k) {
      base[k] += half[k] * (2.0 * chance(random) - 1.0);
    }
    Relb relb = elbowNearLine(cornersAt(inSquare(base, half, leastSquares), radii[i % 2]));
    if (writesCorners(relb, record)) return relb;
  }
  return elbowNearLine(cornersAt(inside, record.innerRadius));
}

}  // namespace Vesk
