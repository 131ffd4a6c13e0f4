// SPDX-License-Identifier: MIT
#include "pcf/Resolver.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "pcf/Attributes.h"
#include "pcf/Numbers.h"
#include <vesk/GeConstants.h>

namespace Vesk::Pcf {
namespace {

// A component that leaves another by less than this cosine leaves across it.
constexpr double kAcross = 0.1;
constexpr double kAlong = 0.9;

GeVector unit(const GeVector& v) {
  const double length = v.length();
  return length > kShortest ? v / length : GeVector();
}

GePoint middleOf(const GePoint& a, const GePoint& b) { return a + (b - a) * 0.5; }

// The foot of a place on the line through two others.
GePoint footOn(const GePoint& from, const GePoint& to, const GePoint& at) {
  const GeVector axis = to - from;
  const double square = dot(axis, axis);
  return square > 0 ? from + axis * (dot(at - from, axis) / square) : from;
}

bool isBetween(const GePoint& at, const GePoint& from, const GePoint& to) {
  return dot(at - from, to - from) > 0 && dot(at - to, from - to) > 0;
}

bool isNull(const GeVector& v) { return v == GeVector(); }

// Whether a pipe that goes on along `line` arrives across a chord; both unit vectors.
bool isAcross(const GeVector& line, const GeVector& chord) {
  return !isNull(line) && std::fabs(dot(line, chord)) < kAcross;
}

bool isHalfTurn(const Component& component) { return std::fabs(component.angle - 180) < 1; }

// By how many degrees a bend turns by its points.
double turnOf(const Part& part) {
  if (!isNull(part.halfTurn)) return 180;
  const GeVector leg1 = part.ends[0].at - *part.centre;
  const GeVector leg2 = part.ends[1].at - *part.centre;
  return 180 - leg1.angleTo(leg2) * 180 / kPi;
}

// The radius of a bend by its points; 0 if they make no arc.
double radiusOf(const Part& part) {
  const GePoint& from = part.ends[0].at;
  const GePoint& to = part.ends[1].at;
  if (!isNull(part.halfTurn)) return distance(from, to) / 2;
  const GeVector leg1 = from - *part.centre;
  const GeVector leg2 = to - *part.centre;
  if (isNull(unit(leg1)) || isNull(unit(leg2))) return 0;
  const double angle = leg1.angleTo(leg2);
  constexpr double kStraight = 1e-4;
  if (angle < kStraight || angle > kPi - kStraight) return 0;
  return std::min(leg1.length(), leg2.length()) * std::tan(angle / 2);
}

bool hasTwoEnds(Family family) {
  return family == Family::kBend || family == Family::kReducer || family == Family::kStubEnd ||
         family == Family::kGasket || isFlange(family) || closesLine(family);
}

// Pieces of the line that may turn, with ends of any number.
bool isInLine(Family family) {
  return family == Family::kInstrument || family == Family::kTrap || family == Family::kMisc ||
         family == Family::kFilter || family == Family::kFilterY ||
         family == Family::kFilterBasket || family == Family::kFilterCone;
}

// Whether its run and its legs are to be told apart.
bool hasBranches(const Part& part) {
  if (part.family == Family::kYPiece || hasTwoEnds(part.family)) return false;
  return part.ends.size() > 2 || part.family == Family::kTee || part.family == Family::kValve3Way ||
         part.family == Family::kValve4Way;
}

}  // namespace

// The points of a component by their roles.
struct Resolver::Points {
  std::vector<const Point*> ends;
  std::vector<const Point*> branches;
  const Point* centre = nullptr;
  const Point* place = nullptr;
  const Point* first = nullptr;

  explicit Points(std::span<const Point> points) {
    for (const Point& point : points) {
      if (first == nullptr) first = &point;
      if (point.role == Role::kEnd) ends.push_back(&point);
      if (point.role == Role::kBranch) branches.push_back(&point);
      if (point.role == Role::kCentre && centre == nullptr) centre = &point;
      if (point.role == Role::kPlace && place == nullptr) place = &point;
    }
  }
};

Resolver::Resolver(const Plan& plan, const Joints& joints, double tolerance, Messages& messages)
    : plan_(plan), tolerance_(tolerance), messages_(messages), neighbours_(plan, joints) {}

void Resolver::warn(const Component& component, std::string_view text) {
  messages_.add(Severity::kWarning, component.line,
                plan_.kindOf(component).word + ": " + std::string(text));
}

void Resolver::note(const Component& component, std::string_view text, std::string_view detail) {
  messages_.add(Severity::kNote, component.line,
                plan_.kindOf(component).word + ": " + std::string(text), detail);
}

const Runs& Resolver::runs() {
  if (!runs_) runs_ = std::make_unique<Runs>(plan_);
  return *runs_;
}

// Of valves that say nothing behind the bore the SKEY tells how they end; a butterfly is
// held between the flanges of others.
End Resolver::endOf(const Point& point) const {
  const Kind& kind = plan_.kindOf(plan_.components[point.component]);
  const bool mayHaveFlanges = isValve(kind.family) && kind.family != Family::kValveButterfly;
  const bool bySkey = point.kind == EndKind::kNotTold && mayHaveFlanges;
  return {point.at, point.outside, bySkey ? endKindOfSkey(kind.skey) : point.kind, {}};
}

void Resolver::addEnds(Resolved& resolved, const Points& points) const {
  for (const Point* end : points.ends) resolved.part.ends.push_back(endOf(*end));
  for (const Point* branch : points.branches) resolved.part.branches.push_back(endOf(*branch));
  if (points.centre != nullptr) resolved.part.centre = points.centre->at;
}

void Resolver::requireBores(Resolved& resolved) const {
  const Part& part = resolved.part;
  const bool mayHaveOne = closesLine(part.family) || part.family == Family::kGasket ||
                          (part.centre && !isValve(part.family));
  if (!mayHaveOne && part.ends.size() + part.branches.size() < 2) {
    resolved.failure = "expected two ends";
    return;
  }
  const auto hasNone = [](const End& end) { return !(end.outside > 0); };
  if (std::any_of(resolved.part.ends.begin(), resolved.part.ends.end(), hasNone) ||
      std::any_of(resolved.part.branches.begin(), resolved.part.branches.end(), hasNone))
    resolved.failure = "expected a bore after a point, found none";
}

// What branches and lacks an end would be drawn without it.
void Resolver::askForAllEnds(const Part& part, const Component& component) {
  const std::string& word = plan_.kindOf(component).word;
  const std::size_t found = part.ends.size() + part.branches.size();
  std::size_t expected = 2;
  if (part.family == Family::kYPiece || word.ends_with("-3WAY")) expected = 3;
  if (word.ends_with("-4WAY") || word.starts_with("CROSS")) expected = 4;
  if (part.family == Family::kTee && part.ends.size() == 1) expected = 3;
  if (found < 2 || found >= expected) return;
  warn(component, "has fewer ends than its name says; drawn without the others");
}

Resolved Resolver::resolve(const Component& component) {
  const Points points(plan_.pointsOf(component));
  Resolved resolved;
  Part& part = resolved.part;
  part.family = plan_.kindOf(component).family;
  part.tolerance = tolerance_;
  if (part.family == Family::kUnknown) {
    part.family = Family::kMisc;
    if (points.ends.size() >= 2) warn(component, "unknown component; drawn like a piece of pipe");
  }
  // A dial with two ends is a piece of the line.
  if (part.family == Family::kInstrumentDial && points.ends.size() >= 2)
    part.family = Family::kInstrument;
  const bool isSpot =
      part.family == Family::kInstrument && points.ends.size() + points.branches.size() < 2;
  if (isSpot || isSupport(part.family) || part.family == Family::kInstrumentDial) {
    resolveSpot(resolved, points);
    return resolved;
  }
  if (part.family == Family::kOlet) {
    resolveOlet(resolved, points, component);
    if (resolved.failure.empty()) requireBores(resolved);
    return resolved;
  }
  addEnds(resolved, points);
  // The way goes on at a branch.
  while (isInLine(part.family) && part.ends.size() < 2 && !part.branches.empty()) {
    part.ends.push_back(part.branches.front());
    part.branches.erase(part.branches.begin());
  }
  if (part.family == Family::kGasket) resolveGasket(resolved, points);
  if (hasBranches(part)) resolveTee(resolved, component);
  if (part.family == Family::kBend) resolveBend(resolved, points, component);
  if (isFlange(part.family) || part.family == Family::kStubEnd || closesLine(part.family))
    resolveFace(resolved, points, component);
  if (part.family == Family::kReducer) resolveReducer(resolved, points, component);
  resolveWay(resolved, points, component);
  if (isValve(part.family)) {
    const SpindleData spindle = spindleOf(plan_, component);
    part.spindle = spindle.direction;
    part.actuator = spindle.actuator;
  }
  askForAllEnds(part, component);
  resolveStraight(resolved, points, component);
  requireBores(resolved);
  return resolved;
}

// ---- what runs through -----------------------------------------------------------

void Resolver::resolveStraight(Resolved& resolved, const Points& points,
                               const Component& component) {
  const Family family = resolved.part.family;
  if ((hasTwoEnds(family) || family == Family::kPipe) && points.ends.size() > 2)
    warn(component, "expected two END-POINTs, found more; those are drawn from its middle");
  const bool isPiece = family == Family::kPipe || family == Family::kMisc;
  const bool isPipe = isPiece && points.ends.size() == 2 && points.branches.empty();
  if (isPipe && std::fabs(points.ends[0]->outside - points.ends[1]->outside) > 0.05)
    warn(component, "its ends have different bores; drawn as a cone");
}

// A reducer is square to the pipes that it joins. Where it meets none, an eccentric one
// is square to the axis from which its ends are as far apart as its bores say.
void Resolver::resolveReducer(Resolved& resolved, const Points& points,
                              const Component& component) {
  Part& part = resolved.part;
  for (std::size_t i = 0; i < part.ends.size(); ++i)
    part.ends[i].line = neighbours_.lineAt(*points.ends[i]);
  const std::string& word = plan_.kindOf(component).word;
  const bool isAside =
      word.find("ECC") != std::string::npos || word.find("-OFFSET") != std::string::npos;
  const bool isEccentric = isAside && part.ends.size() == 2;
  if (!isEccentric || std::fabs(part.ends[0].outside - part.ends[1].outside) < kShortest) return;
  const GeVector chord = part.ends[1].at - part.ends[0].at;
  const bool isFree = isNull(part.ends[0].line) && isNull(part.ends[1].line);
  const GeVector line = isNull(part.ends[1].line) ? part.ends[0].line : part.ends[1].line;
  const GeVector axis = isFree ? reducerAxisOf(part, component) : unit(line);
  if (isNull(axis)) {
    warn(component, "nothing shows to which pipes it is square; drawn along its ends");
    return;
  }
  if (isFree) {
    part.ends[0].line = -axis;
    part.ends[1].line = axis;
  }
  if (cross(chord, axis).length() < kSamePlace)
    note(component, "its ends lie on one line; drawn concentric");
}

// Null if nothing fits.
GeVector Resolver::reducerAxisOf(const Part& part, const Component& component) const {
  const GeVector chord = part.ends[1].at - part.ends[0].at;
  const double offset = std::fabs(part.ends[0].outside - part.ends[1].outside) / 2;
  const GeVector aside[] = {
      unit(flatDirectionOf(plan_, component)), {0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
  for (const GeVector& direction : aside) {
    const double part1 = dot(chord, direction);
    const GeVector axis = chord - direction * part1;
    const bool fits = std::fabs(std::fabs(part1) - offset) < kSamePlace;
    if (!isNull(direction) && fits && axis.length() > kSamePlace) return unit(axis);
  }
  for (const GeVector& direction : aside) {
    if (isNull(direction)) continue;
    if (cross(chord, direction).length() < kSamePlace) return unit(chord);
  }
  return {};
}

// What goes by way of its centre, by its word, and has none.
void Resolver::resolveWay(Resolved& resolved, const Points& points, const Component& component) {
  Part& part = resolved.part;
  const std::string& word = plan_.kindOf(component).word;
  const bool hasWay = word.find("-ANGLE") != std::string::npos ||
                      word.find("-OFFSET") != std::string::npos ||
                      word.find("-RETURN") != std::string::npos;
  if (!hasWay || part.family == Family::kReducer || part.centre || part.ends.size() != 2 ||
      !part.branches.empty())
    return;
  if (points.ends.size() == 2) part.centre = cornerOf(points);
  warn(component, part.centre
                      ? "expected a CENTRE-POINT; it lies where the pipes that meet it would"
                      : "expected a CENTRE-POINT, found none; drawn straight");
}

// More END-POINTs than two: the run is the pair that lies opposite across the centre.
void Resolver::resolveTee(Resolved& resolved, const Component& component) {
  Part& part = resolved.part;
  if (part.ends.size() > 2) {
    std::array<std::size_t, 2> run = {0, 1};
    double best = 2;
    for (std::size_t i = 0; i < part.ends.size(); ++i) {
      for (std::size_t k = i + 1; k < part.ends.size(); ++k) {
        const GePoint middle =
            part.centre ? *part.centre : middleOf(part.ends[i].at, part.ends[k].at);
        const double cosine = dot(unit(part.ends[i].at - middle), unit(part.ends[k].at - middle));
        const double far = distance(part.ends[i].at, part.ends[k].at);
        const double score = part.centre ? cosine : -far;
        if (score >= best) continue;
        best = score;
        run = {i, k};
      }
    }
    std::vector<End> ends = {part.ends[run[0]], part.ends[run[1]]};
    for (std::size_t i = 0; i < part.ends.size(); ++i) {
      if (i != run[0] && i != run[1]) part.branches.push_back(part.ends[i]);
    }
    part.ends = std::move(ends);
  }
  if (part.centre || part.ends.size() < 2 || part.branches.empty()) return;
  const GePoint& from = part.ends[0].at;
  const GePoint& to = part.ends[1].at;
  const GePoint foot = footOn(from, to, part.branches[0].at);
  part.centre = isBetween(foot, from, to) ? foot : middleOf(from, to);
  warn(component, "expected a CENTRE-POINT; the branch leaves the run at its foot");
}

// A leg from the header. With two ends there is a run too, unless a pipe lies there.
void Resolver::resolveOlet(Resolved& resolved, const Points& points, const Component& component) {
  Part& part = resolved.part;
  const std::size_t ends = points.ends.size();
  const bool hasBranch = !points.branches.empty();
  if (points.centre != nullptr) part.centre = points.centre->at;
  for (const Point* branch : points.branches) part.branches.push_back(endOf(*branch));
  if (hasBranch && ends >= 2) {
    const Point& from = *points.ends[0];
    const Point& to = *points.ends[1];
    const bool hasRun = distance(from.at, to.at) >= kShortest;
    if (!part.centre) part.centre = footOn(from.at, to.at, part.branches[0].at);
    if (hasRun && !runs().isCovered(from.at, to.at)) part.ends = {endOf(from), endOf(to)};
    return;
  }
  if (hasBranch && ends == 1) {
    if (!part.centre) part.centre = points.ends[0]->at;
    return;
  }
  if (hasBranch) {
    if (!part.centre) resolved.failure = "expected a CENTRE-POINT and a BRANCH1-POINT";
    return;
  }
  // Without a branch the end that is farther from the header is it.
  if (part.centre && ends >= 1) {
    const auto farthest = std::max_element(
        points.ends.begin(), points.ends.end(), [&](const Point* a, const Point* b) {
          return distance(a->at, *part.centre) < distance(b->at, *part.centre);
        });
    part.branches = {endOf(**farthest)};
    return;
  }
  if (ends < 2) {
    resolved.failure = "expected a CENTRE-POINT and a BRANCH1-POINT";
    return;
  }
  const bool isFirstOnHeader = runs().runAt(points.ends[0]->at).has_value();
  part.centre = points.ends[isFirstOnHeader ? 0 : 1]->at;
  part.branches = {endOf(*points.ends[isFirstOnHeader ? 1 : 0])};
  warn(component, "expected a CENTRE-POINT and a BRANCH1-POINT; drawn from end to end");
}

// ---- bends -----------------------------------------------------------------------

void Resolver::resolveBend(Resolved& resolved, const Points& points, const Component& component) {
  Part& part = resolved.part;
  if (part.ends.size() < 2) return;
  if (part.centre) {
    part.halfTurn = halfTurnOf(points, component);
  } else {
    const std::string_view how = completeBend(part, points, component);
    if (how.empty()) {
      resolved.failure = "expected a CENTRE-POINT, found none";
      return;
    }
    warn(component, how);
  }
  checkBend(part, component);
}

// What stands for a CENTRE-POINT that is missing; empty if nothing does.
std::string_view Resolver::completeBend(Part& part, const Points& points,
                                        const Component& component) const {
  part.centre = cornerOf(points);
  if (part.centre) return "expected a CENTRE-POINT; it lies where the pipes that meet it would";
  part.halfTurn = halfTurnByLines(points, component);
  if (!isNull(part.halfTurn)) return "expected a CENTRE-POINT; half a turn fits what meets it";
  part.centre = cornerByOneLine(points, component);
  if (!part.centre) return {};
  return std::fabs(plan_.bendRadiusOf(component) - radiusOf(part)) < kSamePlace
             ? "expected a CENTRE-POINT; it follows from the pipe that meets it and BEND-RADIUS"
             : "expected a CENTRE-POINT; it follows from the pipe that meets it, for equal legs";
}

// BEND-RADIUS and ANGLE are checks where the points make an arc. ANGLE is the turn or, in
// the files of some programs, what the legs enclose.
void Resolver::checkBend(const Part& part, const Component& component) {
  const double drawn = radiusOf(part);
  if (!(drawn > 0)) return;
  const double radius = plan_.bendRadiusOf(component);
  if (radius > 0 && std::fabs(radius - drawn) > std::max(kSamePlace, 0.01 * drawn))
    note(component, "its BEND-RADIUS is not that of its points, which are drawn",
         ": " + textOf(radius) + " and " + textOf(drawn));
  const double angle = component.angle;
  const double turn = turnOf(part);
  if (angle > 0 && std::fabs(angle - turn) > 1 && std::fabs(180 - angle - turn) > 1)
    note(component, "its ANGLE is not that of its points, which are drawn",
         ": " + textOf(angle) + " and " + textOf(turn));
}

// Half a turn has no tangents that meet. Its CENTRE-POINT is the middle of its ends,
// or the farthest point of the arc, which ANGLE must say; the pipes that arrive across
// prove either.
GeVector Resolver::halfTurnOf(const Points& points, const Component& component) const {
  const Point& from = *points.ends[0];
  const Point& to = *points.ends[1];
  const GePoint centre = points.centre->at;
  const GePoint middle = middleOf(from.at, to.at);
  const GeVector chord = unit(to.at - from.at);
  const bool isMarked = isHalfTurn(component);
  if (isNull(chord) || (component.angle > 0 && !isMarked)) return {};
  const GeVector line1 = neighbours_.lineAt(from);
  const GeVector line2 = neighbours_.lineAt(to);
  if (distance(centre, middle) < kSamePlace) {
    const bool both = !isNull(line1) && !isNull(line2);
    const bool isProven =
        isAcross(line1, chord) && isAcross(line2, chord) && dot(line1, line2) > kAlong;
    if (both && !isProven) return {};
    if (isAcross(line1, chord)) return -line1;
    return isAcross(line2, chord) ? -line2 : GeVector();
  }
  const GeVector outwards = centre - middle;
  const double radius = distance(from.at, to.at) / 2;
  const bool isFarthest = std::fabs(outwards.length() - radius) < kSamePlace &&
                          std::fabs(dot(unit(outwards), chord)) < 0.01;
  const bool isProven = isAcross(line1, chord) || isAcross(line2, chord);
  return isMarked && isFarthest && isProven ? outwards : GeVector();
}

// Without a CENTRE-POINT: both pipes arrive across, or the one that there is does and
// ANGLE or BEND-RADIUS says half a turn.
GeVector Resolver::halfTurnByLines(const Points& points, const Component& component) const {
  const GePoint& from = points.ends[0]->at;
  const GePoint& to = points.ends[1]->at;
  const GeVector chord = unit(to - from);
  const bool isMarked = isHalfTurn(component);
  if (isNull(chord) || (component.angle > 0 && !isMarked)) return {};
  const GeVector line1 = neighbours_.lineAt(*points.ends[0]);
  const GeVector line2 = neighbours_.lineAt(*points.ends[1]);
  if (isAcross(line1, chord) && isAcross(line2, chord))
    return dot(line1, line2) > kAlong ? -line1 : GeVector();
  const double half = distance(from, to) / 2;
  const bool isSaid = isMarked || std::fabs(plan_.bendRadiusOf(component) - half) < kSamePlace;
  const GeVector& line = isNull(line1) ? line2 : line1;
  const bool isOne = isNull(line1) != isNull(line2);
  return isSaid && isOne && isAcross(line, chord) ? -line : GeVector();
}

// Where one pipe alone is met: the arc begins there. With BEND-RADIUS a straight piece may
// follow it, else its legs are equal.
std::optional<GePoint> Resolver::cornerByOneLine(const Points& points,
                                                 const Component& component) const {
  const GeVector line1 = neighbours_.lineAt(*points.ends[0]);
  const GeVector line2 = neighbours_.lineAt(*points.ends[1]);
  if (isNull(line1) == isNull(line2)) return std::nullopt;
  const bool isFirst = !isNull(line1);
  const GePoint& from = points.ends[isFirst ? 0 : 1]->at;
  const GeVector chord = points.ends[isFirst ? 1 : 0]->at - from;
  const GeVector inward = isFirst ? -line1 : -line2;
  const double along = dot(chord, inward);
  const double aside = cross(chord, inward).length();
  if (along < kAcross * chord.length() || aside < kSamePlace) return std::nullopt;
  // The tangent from the far end to the circle is the straight piece.
  const double square = dot(chord, chord);
  const double radius = plan_.bendRadiusOf(component);
  const double rest = radius > 0 ? square - 2 * aside * radius : 0;
  const double leg = rest > 0 ? radius * aside / (along + std::sqrt(rest)) : square / (2 * along);
  return from + inward * leg;
}

// Where the lines of the two neighbours meet.
std::optional<GePoint> Resolver::cornerOf(const Points& points) const {
  const GeVector inward1 = -neighbours_.lineAt(*points.ends[0]);
  const GeVector inward2 = -neighbours_.lineAt(*points.ends[1]);
  if (isNull(inward1) || isNull(inward2)) return std::nullopt;
  const GeVector across = cross(inward1, inward2);
  const double square = dot(across, across);
  if (square < 1e-4) return std::nullopt;
  const GeVector between = points.ends[1]->at - points.ends[0]->at;
  const double along1 = triple(between, inward2, across) / square;
  const double along2 = triple(between, inward1, across) / square;
  const GePoint one = points.ends[0]->at + inward1 * along1;
  const GePoint two = points.ends[1]->at + inward2 * along2;
  if (along1 <= kShortest || along2 <= kShortest || distance(one, two) > kSamePlace)
    return std::nullopt;
  return middleOf(one, two);
}

// ---- flanges, ends, supports -----------------------------------------------------

void Resolver::resolveFace(Resolved& resolved, const Points& points, const Component& component) {
  Part& part = resolved.part;
  for (std::size_t i = 0; i < part.ends.size(); ++i)
    part.ends[i].line = neighbours_.roughLineAt(*points.ends[i]);
  if (part.ends.size() < 2) return;
  const bool isFree = isNull(part.ends[0].line) && isNull(part.ends[1].line);
  if (part.family == Family::kFlangeReducing && isFree) {
    const GeVector axis = reducerAxisOf(part, component);
    part.ends[0].line = -axis;
    part.ends[1].line = axis;
  }
  const Point& first = *points.ends[0];
  const Point& second = *points.ends[1];
  // A SKEY of a blind flange stands in running lines too.
  const bool isBlindByKey = part.family == Family::kFlangeBlind &&
                            familyOf(plan_.kindOf(component).word, {}) != Family::kFlangeBlind;
  if (isBlindByKey && neighbours_.isMet(first, second) && neighbours_.isMet(second, first))
    part.family = Family::kFlangeWeldNeck;
  const bool isBetween = !isNull(part.ends[0].line) && !isNull(part.ends[1].line);
  const bool closes =
      closesLine(part.family) && !(part.family == Family::kFlangeBlind && isBetween);
  const Side side = closes ? neighbours_.arrivalOf(first, second, part.family)
                           : neighbours_.faceOf(first, second);
  part.face = side.index;
  if (!side.isGuess || distance(first.at, second.at) < kShortest) return;
  warn(component, closes ? "nothing shows where the line arrives; its first END-POINT is assumed"
                         : "nothing shows which end is the face; its first END-POINT is assumed");
}

// At one place it lies about it, across the line.
void Resolver::resolveGasket(Resolved& resolved, const Points& points) {
  Part& part = resolved.part;
  const bool isFlat =
      part.ends.size() == 2 && distance(part.ends[0].at, part.ends[1].at) < kShortest;
  const Point* place = points.ends.empty() ? points.place : points.ends[0];
  if (place == nullptr || (part.ends.size() >= 2 && !isFlat)) return;
  part.ends = {endOf(*place)};
  part.ends[0].line = neighbours_.roughLineAt(*place);
}

void Resolver::resolveSpot(Resolved& resolved, const Points& points) {
  Part& part = resolved.part;
  part.ends.push_back(endOf(points.place != nullptr ? *points.place : *points.first));
  if (points.place == nullptr && points.ends.size() >= 2) {
    part.ends[0].at = middleOf(points.ends[0]->at, points.ends[1]->at);
  }
  const std::optional<Run> run = runs().runAt(part.ends[0].at);
  if (!run) return;
  part.along = unit(run->to - run->from);
  part.ends[0].outside = run->outside;
}

}  // namespace Vesk::Pcf
