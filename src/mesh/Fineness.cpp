// SPDX-License-Identifier: MIT
#include "vesk/mesh/Fineness.h"

#include <algorithm>
#include <cmath>

#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

constexpr double kWidestAngle = kPi / 6.0;
constexpr std::uint32_t kFewestSegments = 8;

// An angle that rounding put just above a whole number of pieces needs no more.
constexpr double kSlack = 1e-9;

}  // namespace

double sagitta(double radius, double angle) {
  // 1 - cos(x) loses its digits for small angles; 2 sin(x / 2)^2 does not.
  const double sine = std::sin(angle / 4.0);
  return 2.0 * radius * sine * sine;
}

Fineness Fineness::ofSegments(std::uint32_t perCircle) {
  Fineness fineness;
  fineness.perCircle_ = std::max(kFewestSegments, (perCircle + 3U) / 4U * 4U);
  return fineness;
}

Fineness Fineness::ofTolerance(double tolerance) {
  Fineness fineness;
  fineness.tolerance_ = tolerance;
  return fineness;
}

double Fineness::tolerance(double radius) const {
  return isAbsolute() ? tolerance_ : sagitta(radius, 2.0 * kPi / perCircle_);
}

double Fineness::angle(double radius, double within) const {
  if (!isAbsolute()) return 2.0 * kPi / perCircle_;
  const double sine = std::sqrt(std::min(1.0, within / radius / 2.0));
  return std::min(kWidestAngle, 4.0 * std::asin(sine));
}

std::uint32_t Fineness::circle(double radius, double within) const {
  const std::uint32_t pieces = arc(radius, 2.0 * kPi, within);
  return pieces == 0 ? 0 : std::max(kFewestSegments, (pieces + 3U) / 4U * 4U);
}

std::uint32_t Fineness::arc(double radius, double sweep, double within) const {
  const double pieces = std::ceil(sweep / angle(radius, within) * (1.0 - kSlack));
  if (!(pieces <= kMostSegments)) return 0;
  return std::max(1U, static_cast<std::uint32_t>(pieces));
}

}  // namespace Vesk
