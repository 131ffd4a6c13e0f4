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
// of their own.
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
inline constexpr std::size_t kKinds = 13;

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
