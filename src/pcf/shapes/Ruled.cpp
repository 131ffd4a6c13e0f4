// SPDX-License-Identifier: MIT
#include "pcf/shapes/Ruled.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "pcf/shapes/Builder.h"
#include <vesk/GeConstants.h>

namespace Vesk::Pcf {
namespace {

constexpr int kFewest = 8;
constexpr int kMost = 1000;

// The rim of a circle, `count` corners from `start` on, right hand about `normal`.
std::vector<GeVector> rim(const GePoint& centre, const GeVector& normal, const GeVector& start,
                          double radius, int count) {
  const GeVector x = unit(start - normal * dot(start, normal));
  const GeVector y = cross(normal, x);
  std::vector<GeVector> corners;
  corners.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const double angle = 2.0 * kPi * i / count;
    corners.push_back(centre - GePoint() + (x * std::cos(angle) + y * std::sin(angle)) * radius);
  }
  return corners;
}

// Both rims begin where the body leans to, so that it is as even as its plane.
GeVector startOf(const RuledBody& body) {
  const GeVector chord = body.centre2 - body.centre1;
  const GeVector aside = chord - body.normal1 * dot(chord, body.normal1);
  if (aside.length() > 1e-6 * chord.length()) return aside;
  return Frame(body.normal1).up;
}

}  // namespace

int facets(double radius, double tolerance) {
  const double cosine = 1.0 - tolerance / radius;
  if (cosine <= std::cos(kPi / kFewest)) return kFewest;
  const double exact = kPi / std::acos(std::min(cosine, 1.0));
  if (!(exact < kMost)) return kMost;
  const int count = static_cast<int>(std::ceil(exact * (1.0 - 1e-12)));
  return count + count % 2;
}

std::vector<Red> wedges(const RuledBody& body, double tolerance) {
  const int count = facets(std::max(body.radius1, body.radius2), tolerance);
  const GeVector start = startOf(body);
  const auto rim1 = rim(body.centre1, body.normal1, start, body.radius1, count);
  const auto rim2 = rim(body.centre2, body.normal2, start, body.radius2, count);
  const GeVector centre1 = body.centre1 - GePoint();
  const GeVector centre2 = body.centre2 - GePoint();

  std::vector<Red> result;
  const auto total = static_cast<std::size_t>(count);
  for (std::size_t i = 0; i < total; i += 2) {
    const std::size_t last = (i + 2) % total;
    result.emplace_back(std::array<GeVector, 8>{centre1, rim1[i], rim1[last], rim1[i + 1],  //
                                                centre2, rim2[i], rim2[last], rim2[i + 1]});
  }
  return result;
}

}  // namespace Vesk::Pcf
