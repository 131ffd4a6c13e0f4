// SPDX-License-Identifier: MIT
#include "takeoff/Units.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr double kInch = 25.4;         // mm
constexpr double kFoot = 0.3048;       // m
constexpr double kPound = 0.45359237;  // kg

constexpr double kLongestInFeet = 1e12;  // sixteenths of it are whole numbers

}  // namespace

std::string_view Units::of(Quantity quantity) const {
  switch (quantity) {
    case Quantity::kSize:
      return isImperial_ ? "in" : "mm";
    case Quantity::kAngle:
      return "deg";
    case Quantity::kLength:
      return isImperial_ ? "ft" : "m";
    case Quantity::kArea:
      return isImperial_ ? "ft2" : "m2";
    case Quantity::kVolume:
      return isImperial_ ? "ft3" : "m3";
    case Quantity::kWeight:
      return isImperial_ ? "lb" : "kg";
    case Quantity::kCount:
      break;
  }
  return "";
}

double Units::value(Quantity quantity, double metric) const {
  if (!isImperial_) return metric;
  switch (quantity) {
    case Quantity::kSize:
      return std::round(metric / kInch * 1e4) / 1e4;
    case Quantity::kLength:
      return metric / kFoot;
    case Quantity::kArea:
      return metric / kFoot / kFoot;
    case Quantity::kVolume:
      return metric / kFoot / kFoot / kFoot;
    case Quantity::kWeight:
      return metric / kPound;
    case Quantity::kAngle:
    case Quantity::kCount:
      break;
  }
  return metric;
}

std::string Units::text(Quantity quantity, double metric) const {
  const double shown = value(quantity, metric);
  switch (quantity) {
    case Quantity::kSize:
    case Quantity::kAngle:
      return shortest(shown);
    case Quantity::kLength:
      return isImperial_ ? feetAndInches(metric) : rounded(shown, 3);
    case Quantity::kArea:
      return rounded(shown, isImperial_ ? 2 : 3);
    case Quantity::kVolume:
      return rounded(shown, isImperial_ ? 4 : 6);
    case Quantity::kWeight:
      return rounded(shown, 1);
    case Quantity::kCount:
      break;
  }
  return grouped(static_cast<std::uint64_t>(shown));
}

std::string Units::sizeText(const Size& size) const {
  const auto pair = [this](double one, double other) {
    return text(Quantity::kSize, one) + " x " + text(Quantity::kSize, other);
  };
  if (size.kind == Kind::kCone) return pair(size.diameter1, size.diameter2);
  if (size.diameter1 > 0.0) return text(Quantity::kSize, size.diameter1);
  if (size.width == 0.0) return {};
  return pair(std::max(size.width, size.depth), std::min(size.width, size.depth));
}

std::string feetAndInches(double metres) {
  if (!(metres < kLongestInFeet)) return rounded(metres / kFoot, 0) + '\'';
  const auto sixteenths = static_cast<std::uint64_t>(std::round(metres / kFoot * 192.0));
  const std::uint64_t parts = sixteenths % 16;
  std::string text = std::to_string(sixteenths / 192) + "'-" + std::to_string(sixteenths / 16 % 12);
  if (parts > 0) {
    const std::uint64_t common = std::gcd(parts, std::uint64_t{16});
    text += ' ' + std::to_string(parts / common) + '/' + std::to_string(16 / common);
  }
  return text + '"';
}

}  // namespace VeskTool
