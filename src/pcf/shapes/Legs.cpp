// SPDX-License-Identifier: MIT
#include <algorithm>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

// A centre this near to the straight line between two ends lies on it.
constexpr double kBeside = 0.5;

void addLegs(const std::vector<End>& ends, const GePoint& centre, std::vector<Leg>& legs) {
  for (const End& end : ends) {
    const double length = distance(end.at, centre);
    if (length < kShortest) continue;
    legs.push_back({end.at, centre, unit(centre - end.at), length, end.outside,
                    end.kind == EndKind::kFlanged});
  }
}

}  // namespace

GePoint centreOf(const Part& part) {
  if (part.centre) return *part.centre;
  if (part.ends.empty()) return part.branches.front().at;
  const GePoint& first = part.ends.front().at;
  return first + (part.ends.back().at - first) * 0.5;
}

bool isStraight(const Part& part) {
  if (part.ends.size() < 2 || !part.centre) return true;
  const GePoint& from = part.ends[0].at;
  const GeVector chord = part.ends[1].at - from;
  const GeVector direction = unit(chord);
  const GeVector way = *part.centre - from;
  const double along = dot(way, direction);
  if (along < -kBeside || along > chord.length() + kBeside) return false;
  return (way - direction * along).length() <= kBeside;
}

std::vector<Leg> legsOf(const Part& part) {
  std::vector<Leg> legs;
  const GePoint centre = centreOf(part);
  addLegs(part.ends, centre, legs);
  addLegs(part.branches, centre, legs);
  return legs;
}

double widest(const Part& part) {
  double result = 0;
  for (const End& end : part.ends) result = std::max(result, end.outside);
  for (const End& end : part.branches) result = std::max(result, end.outside);
  return result;
}

GeVector onward(Builder& out, const Part& part) {
  if (part.ends.size() == 2) {
    const GeVector way = part.ends[1 - part.face].at - part.ends[part.face].at;
    return way;
  }
  const End& end = part.ends.front();
  const GeVector away = part.centre ? *part.centre - end.at : GeVector();
  if (away.length() >= kShortest) return unit(away);
  const GeVector direction = -unit(end.line);
  if (direction == GeVector()) out.miss("nothing shows in which direction it lies");
  return direction;
}

}  // namespace Vesk::Pcf
