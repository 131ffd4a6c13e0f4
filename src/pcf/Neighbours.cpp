// SPDX-License-Identifier: MIT
#include "pcf/Neighbours.h"

#include <algorithm>
#include <cmath>

namespace Vesk::Pcf {
namespace {

// A gasket that is not listed leaves a gap.
constexpr double kGap = 10;

constexpr double kTiny = 1e-9;

GeVector unit(const GeVector& v) {
  const double length = v.length();
  return length > kTiny ? v / length : GeVector();
}

// A face, a pipe's end, or not told.
int signOf(EndKind kind) {
  return kind == EndKind::kNotTold ? 0 : kind == EndKind::kFlanged ? 1 : -1;
}

bool isPipeLike(Family family) {
  switch (family) {
    case Family::kPipe:
    case Family::kBend:
    case Family::kTee:
    case Family::kYPiece:
    case Family::kOlet:
    case Family::kReducer:
    case Family::kCap:
    case Family::kPlug:
    case Family::kStubEnd:
    case Family::kCoupling:
    case Family::kUnion:
      return true;
    default:
      return false;
  }
}

bool isJointPart(Family family) {
  return isFlange(family) || family == Family::kFlangeBlind || family == Family::kGasket ||
         family == Family::kSpectacleBlind || family == Family::kOrificePlate ||
         family == Family::kLapRing;
}

}  // namespace

// The direction in which a component goes on from its point, with the right to say so:
// a straight piece by its other end, what has a centre towards it.
GeVector Neighbours::directionInto(const Point& other, bool takesReducers) const {
  const Component& component = plan_.components[other.component];
  const Point* centre = nullptr;
  const Point* far = nullptr;
  for (const Point& point : plan_.pointsOf(component)) {
    if (point.role == Role::kCentre) centre = &point;
    const bool isEnd = point.role == Role::kEnd || point.role == Role::kBranch;
    if (isEnd && distance(point.at, other.at) > kSamePlace && far == nullptr) far = &point;
  }
  if (centre != nullptr && distance(centre->at, other.at) > kShortest)
    return unit(centre->at - other.at);
  if (far == nullptr) return {};
  if (plan_.kindOf(component).family == Family::kReducer && !takesReducers) return {};
  return unit(far->at - other.at);
}

GeVector Neighbours::lineAt(const Point& point, bool takesReducers) const {
  for (const double radius : {kSamePlace, kGap}) {
    GeVector line;
    double nearest = radius;
    joints_.visit(point.at, radius, [&](const Point& other) {
      if (other.component == point.component || other.role == Role::kPlace) return;
      const Component& component = plan_.components[other.component];
      const Kind& kind = plan_.kindOf(component);
      if (component.isRepeated) return;
      if (kind.meaning != Word::kBody && kind.meaning != Word::kUnknown) return;
      if (isSupport(kind.family)) return;
      const GeVector direction = directionInto(other, takesReducers);
      const double away = distance(point.at, other.at);
      if (direction == GeVector() || away > nearest) return;
      line = direction;
      nearest = away;
    });
    if (!(line == GeVector())) return line;
  }
  return {};
}

// What a component that touches an end makes of it; nothing for what only stands there.
std::optional<Neighbours::Meets> Neighbours::meetsOf(const Point& other) const {
  const Kind& kind = plan_.kindOf(plan_.components[other.component]);
  if (kind.meaning == Word::kWeld) return Meets::kPipe;
  if (kind.meaning == Word::kMark && kind.word.ends_with("-EQUIPMENT")) return Meets::kFace;
  if (kind.meaning == Word::kNothing && kind.word == "BOLT") return Meets::kFace;
  const bool isBody = kind.meaning == Word::kBody || kind.meaning == Word::kUnknown;
  if (!isBody || isSupport(kind.family)) return std::nullopt;
  if (isJointPart(kind.family)) return Meets::kFace;
  if (isPipeLike(kind.family)) return Meets::kPipe;
  if (kind.family == Family::kInstrumentDial) return std::nullopt;
  const EndKind end = other.kind == EndKind::kNotTold ? endKindOfSkey(kind.skey) : other.kind;
  return signOf(end) < 0 ? Meets::kWeldedMate : Meets::kMate;
}

Neighbours::Meets Neighbours::meetsAt(const Point& end, const Point& opposite) const {
  std::optional<Meets> found;
  const auto take = [&](const Point& other) {
    // What stands in the file before is drawn once: it is no neighbour of itself.
    if (other.component == end.component || plan_.components[other.component].isRepeated) return;
    const std::optional<Meets> meets = meetsOf(other);
    // Joint parts tell more than pipes, pipes more than valves.
    const auto rank = [](Meets which) {
      return which == Meets::kFace ? 3 : which == Meets::kPipe ? 2 : 1;
    };
    if (meets && (!found || rank(*meets) > rank(*found))) found = meets;
  };
  joints_.visit(end.at, kSamePlace, take);
  if (found) return *found;
  const GeVector outwards = unit(end.at - opposite.at);
  joints_.visit(end.at, kGap + kSamePlace, [&](const Point& other) {
    const GeVector way = other.at - end.at;
    const double along = dot(way, outwards);
    if (along > 0 && along <= kGap + 0.01 && (way - outwards * along).length() <= kSamePlace)
      take(other);
  });
  return found.value_or(Meets::kOpen);
}

Side Neighbours::faceOf(const Point& first, const Point& second) const {
  const int sign1 = signOf(first.kind);
  const int sign2 = signOf(second.kind);
  if (sign1 != sign2) return {sign1 > sign2 ? 0U : 1U, false};
  const Meets meets1 = meetsAt(first, second);
  const Meets meets2 = meetsAt(second, first);
  if (meets1 == meets2) return {0, true};
  // A welded valve is a mate only where the other end is a pipe.
  return {meets1 < meets2 ? 0U : 1U, false};
}

Side Neighbours::arrivalOf(const Point& first, const Point& second, Family family) const {
  const Meets meets1 = meetsAt(first, second);
  const Meets meets2 = meetsAt(second, first);
  if ((meets1 == Meets::kOpen) != (meets2 == Meets::kOpen))
    return {meets1 == Meets::kOpen ? 1U : 0U, false};
  if (meets1 == Meets::kOpen) {
    const int sign1 = signOf(first.kind);
    const int sign2 = signOf(second.kind);
    if (sign1 == sign2) return {0, true};
    const bool isFirst = family == Family::kFlangeBlind ? sign1 > sign2 : sign1 < sign2;
    return {isFirst ? 0U : 1U, false};
  }
  if (meets1 == meets2) return {0, true};
  const bool isFirst = family == Family::kFlangeBlind ? meets1 < meets2 : meets1 > meets2;
  return {isFirst ? 0U : 1U, false};
}

}  // namespace Vesk::Pcf
