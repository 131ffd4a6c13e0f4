// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_PLAN_H
#define VESK_PCF_PLAN_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pcf/Words.h"
#include "pcf/shapes/Shapes.h"
#include <vesk/GePoint.h>

namespace Vesk::Pcf {

// One place of a component.
struct Point {
  GePoint at;          // millimetres
  double bore = 0;     // as given: in inches or in millimetres; 0: none
  double outside = 0;  // diameter of the pipe that fits, millimetres; 0: not known
  std::uint32_t component = 0;
  Role role = Role::kEnd;
  bool isInches = false;  // the bore
  EndKind kind = EndKind::kNotTold;
};

// A component word with a SKEY; most components of a file share a few.
struct Kind {
  std::string word;  // in capitals
  std::string skey;  // in capitals
  Word meaning = Word::kUnknown;
  Family family = Family::kUnknown;
};

inline constexpr std::uint32_t kNoPipeline = std::numeric_limits<std::uint32_t>::max();

// A component as the file gives it. What is not needed for the geometry of the whole
// file stays in the text: see attributesOf.
struct Component {
  std::size_t begin = 0;  // of its text, from its first line on
  std::uint32_t size = 0;
  std::uint32_t line = 0;  // of its word
  std::uint32_t firstPoint = 0;
  std::uint32_t points = 0;
  std::uint32_t kind = 0;
  std::uint32_t pipeline = kNoPipeline;
  float angle = 0;               // degrees, 0: not given
  bool isDamaged = false;        // a point could not be read; that was said
  bool isRepeated = false;       // the same stands before it
  bool isInAFileBefore = false;  // where that is to be known
};

// The BEND-RADIUS of a component.
struct BendRadius {
  std::uint32_t component = 0;
  float radius = 0;  // millimetres, > 0
};

struct Pipeline {
  std::string reference;
  std::string spec;
};

// A piping component file, read as a whole.
struct Plan {
  std::string text;
  std::vector<Kind> kinds;
  std::vector<Component> components;
  std::vector<Point> points;
  std::vector<BendRadius> bendRadii;  // in the order of the components
  std::vector<Pipeline> pipelines;    // in the order in which they first occur
  std::unordered_map<std::string, std::string> descriptions;  // by item code

  const Kind& kindOf(const Component& component) const { return kinds[component.kind]; }

  std::span<const Point> pointsOf(const Component& component) const {
    return std::span(points).subspan(component.firstPoint, component.points);
  }
  std::span<Point> pointsOf(const Component& component) {
    return std::span(points).subspan(component.firstPoint, component.points);
  }

  // In millimetres; 0 if the file gives none.
  double bendRadiusOf(const Component& component) const {
    const auto index = static_cast<std::uint32_t>(&component - components.data());
    const auto row = std::lower_bound(
        bendRadii.begin(), bendRadii.end(), index,
        [](const BendRadius& radius, std::uint32_t wanted) { return radius.component < wanted; });
    return row == bendRadii.end() || row->component != index ? 0 : row->radius;
  }

  std::string_view textOf(const Component& component) const {
    return std::string_view(text).substr(component.begin, component.size);
  }
};

}  // namespace Vesk::Pcf

#endif
