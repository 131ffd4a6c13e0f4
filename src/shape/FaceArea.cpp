// SPDX-License-Identifier: MIT
#include "shape/FaceArea.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "shape/QuadSplit.h"
#include "vesk/GeVector.h"

namespace Vesk {
namespace {

// Of the longest normal: what lies below comes from rounding.
constexpr double kPlane = 1e-13;

constexpr double kError = 1e-11;  // of the whole area
constexpr int kMostHalvings = 12;

// Gauss's rule of eight points between 0 and 1.
constexpr std::array<double, 8> kPlaces = {
    0.019855071751231856, 0.10166676129318664, 0.2372337950418355, 0.40828267875217505,
    0.591717321247825,    0.7627662049581645,  0.8983332387068134, 0.9801449282487681};
constexpr std::array<double, 8> kWeights = {
    0.05061426814518813, 0.11119051722668724, 0.15685332293894363, 0.18134189168918100,
    0.18134189168918100, 0.15685332293894363, 0.11119051722668724, 0.05061426814518813};

// The product of both sides' tangents at the parts u and v: the vector of the area
// there. It is linear in u and in v.
struct Normals {
  GeVector first;
  GeVector alongU;
  GeVector alongV;

  Normals(const GeVector& u, const GeVector& v, const GeVector& twist)
      : first(cross(u, v)), alongU(cross(u, twist)), alongV(cross(twist, v)) {}

  Normals(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d)
      : Normals(b - a, d - a, (c - d) - (b - a)) {}

  GeVector at(double u, double v) const { return first + alongU * u + alongV * v; }

  std::array<GeVector, 4> corners() const {
    return {at(0.0, 0.0), at(1.0, 0.0), at(1.0, 1.0), at(0.0, 1.0)};
  }
};

double byGauss(const Normals& normals, double u, double v, double size) {
  double sum = 0.0;
  for (std::size_t i = 0; i < kPlaces.size(); ++i) {
    double row = 0.0;
    for (std::size_t j = 0; j < kPlaces.size(); ++j) {
      row += kWeights[j] * normals.at(u + size * kPlaces[i], v + size * kPlaces[j]).length();
    }
    sum += kWeights[i] * row;
  }
  return sum * size * size;
}

// Halves the cell as long as its parts tell something else than the whole: where both
// sides of a face meet in one point the normal has a cusp.
double areaOfCell(const Normals& normals, double u, double v, double size, double whole,
                  double error, int halvings) {
  const double half = size / 2.0;
  const std::array<double, 4> parts = {
      byGauss(normals, u, v, half), byGauss(normals, u + half, v, half),
      byGauss(normals, u, v + half, half), byGauss(normals, u + half, v + half, half)};
  const double sum = parts[0] + parts[1] + parts[2] + parts[3];
  if (!(std::fabs(sum - whole) > error) || halvings == kMostHalvings) return sum;
  return areaOfCell(normals, u, v, half, parts[0], error, halvings + 1) +
         areaOfCell(normals, u + half, v, half, parts[1], error, halvings + 1) +
         areaOfCell(normals, u, v + half, half, parts[2], error, halvings + 1) +
         areaOfCell(normals, u + half, v + half, half, parts[3], error, halvings + 1);
}

double areaOfTriangles(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  const auto area = [](const GePoint& p, const GePoint& q, const GePoint& r) {
    return cross(q - p, r - p).length() / 2.0;
  };
  return splitQuad(a, b, c, d).fromFirst ? area(a, b, c) + area(a, c, d)
                                         : area(b, c, d) + area(b, d, a);
}

}  // namespace

double bilinearArea(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  const Normals normals(a, b, c, d);
  const std::array<GeVector, 4> corners = normals.corners();
  const GeVector longest = *std::max_element(
      corners.begin(), corners.end(),
      [](const auto& one, const auto& other) { return one.length() < other.length(); });
  const double square = dot(longest, longest);
  if (std::all_of(corners.begin(), corners.end(), [&](const GeVector& normal) {
        return cross(normal, longest).length() <= kPlane * square;
      })) {
    return areaOfTriangles(a, b, c, d);
  }
  const double whole = byGauss(normals, 0.0, 0.0, 1.0);
  return areaOfCell(normals, 0.0, 0.0, 1.0, whole, kError * whole, 0);
}

double quadrangleArea(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  const GeVector whole = quadArea(a, b, c, d);
  const std::array<GeVector, 4> corners = Normals(a, b, c, d).corners();
  const bool isDented = std::any_of(corners.begin(), corners.end(), [&](const GeVector& normal) {
    return dot(normal, whole) < 0.0;
  });
  return isDented ? areaOfTriangles(a, b, c, d) : bilinearArea(a, b, c, d);
}

}  // namespace Vesk
