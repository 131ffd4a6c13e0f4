// SPDX-License-Identifier: MIT
#ifndef VESK_SELECT_KINDS_H
#define VESK_SELECT_KINDS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vesk/Geo.h"

namespace Vesk {

// What people call the elements; polylines and polygons of few points have names
// of their own. A switch over them has a case for each, as over PrimitiveKind.
#pragma GCC diagnostic error "-Wswitch-enum"

enum class Kind {
  kPoint,
  kSegment,
  kPolyline,
  kTriangle,
  kQuadrangle,
  kPolygon,
  kText,
  kBox,
  kReducer,
  kCylinder,
  kCone,
  kTorus,
  kElbow,
};

constexpr bool isKind(std::size_t number) {
  switch (static_cast<Kind>(number)) {
    case Kind::kPoint:
    case Kind::kSegment:
    case Kind::kPolyline:
    case Kind::kTriangle:
    case Kind::kQuadrangle:
    case Kind::kPolygon:
    case Kind::kText:
    case Kind::kBox:
    case Kind::kReducer:
    case Kind::kCylinder:
    case Kind::kCone:
    case Kind::kTorus:
    case Kind::kElbow:
      return true;
  }
  return false;
}

inline constexpr std::size_t kKinds = [] {
  std::size_t count = 0;
  while (isKind(count)) ++count;
  return count;
}();

Kind kindOf(const Geo& geo);

// The names of the classes, for programs: JSON, CSV, files of other formats.
std::string_view nameOf(Kind kind);    // "cylinder", "torus", "elbow"
std::string_view pluralOf(Kind kind);  // "cylinders"

// What people read: the same but for "bend", a pipe along an arc, and "duct elbow".
std::string_view wordOf(Kind kind);
std::string_view wordsOf(Kind kind);  // "bends"

// By any of these, or by what a pipe fitter calls it: pipe, bend, duct.
std::optional<Kind> kindNamed(std::string_view name);

// All words that people read, "point, segment, ..., bend, duct elbow".
std::string kindNames();

// All words that kindNamed takes.
std::vector<std::string> kindWords();

}  // namespace Vesk

#endif
