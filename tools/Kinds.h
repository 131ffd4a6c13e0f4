#ifndef VESK_TOOLS_KINDS_H
#define VESK_TOOLS_KINDS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "prims/Geo.h"

namespace VeskTool {

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

Kind kindOf(const Vesk::Geo& geo);

std::string_view nameOf(Kind kind);    // "cylinder"
std::string_view pluralOf(Kind kind);  // "cylinders"

// By either name.
std::optional<Kind> kindNamed(std::string_view name);

// All names, "point, segment, ...".
std::string kindNames();

// "fixed", "token", and "none" for 0.
std::string_view styleName(int mode);

}  // namespace VeskTool

#endif
