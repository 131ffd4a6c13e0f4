// SPDX-License-Identifier: MIT
#include "records/Sizes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "prims/Visit.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

using namespace Vesk;

struct Section {
  double larger = 0.0;
  double smaller = 0.0;
};

struct SectionOf {
  Section operator()(const Cyl& cyl) const { return {cyl.diameter}; }
  Section operator()(const Torus& torus) const { return {torus.diameter}; }
  Section operator()(const Cone& cone) const { return {std::max(cone.diameter1, cone.diameter2)}; }
  Section operator()(const Relb& relb) const {
    return {std::max(relb.width, relb.depth), std::min(relb.width, relb.depth)};
  }
  Section operator()(const Box&) const { return {}; }
  Section operator()(const Red&) const { return {}; }
  Section operator()(const Pline&) const { return {}; }
  Section operator()(const Pgon&) const { return {}; }
  Section operator()(const Txt&) const { return {}; }
};

Section sectionOf(const Geo& geo) {
  return visit(geo, SectionOf(), [] { return Section(); });
}

// Beyond this a double does not tell neighbouring cells apart.
constexpr double kFarthestCell = 9e15;

}  // namespace

double sizeOf(const Geo& geo) { return sectionOf(geo).larger; }

std::string sizeName(const Geo& geo) {
  const Section section = sectionOf(geo);
  if (section.larger == 0.0 && section.smaller == 0.0) return "none";
  const std::string larger = trimmedNumber(section.larger, 1);
  if (geo.typeCode() != Relb::kTypeCode) return larger;
  return larger + 'x' + trimmedNumber(section.smaller, 1);
}

std::string cellName(const Geo& geo, const std::array<std::optional<double>, 3>& lengths) {
  Extents box;
  geo.addExtents(box);
  const double middle[3] = {box.min.x + (box.max.x - box.min.x) / 2.0,
                            box.min.y + (box.max.y - box.min.y) / 2.0,
                            box.min.z + (box.max.z - box.min.z) / 2.0};
  std::string name;
  for (std::size_t i = 0; i < 3; ++i) {
    if (!lengths[i]) continue;
    const double cell = std::floor(middle[i] / *lengths[i]);
    if (!(box.min.x <= box.max.x) || !(std::fabs(cell) <= kFarthestCell)) return "nowhere";
    name += name.empty() ? "" : "_";
    name += "xyz"[i] + std::to_string(static_cast<std::int64_t>(cell));
  }
  return name;
}

}  // namespace VeskTool
