// SPDX-License-Identifier: MIT
#include "pcf/shapes/Shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

struct EndRow {
  std::string_view code;
  EndKind kind;
};

struct ActuatorRow {
  std::string_view word;
  Actuator actuator;
};

// clang-format off
constexpr EndRow kEnds[] = {
    {"BW", EndKind::kButt},  {"SW", EndKind::kSocket},      {"SC", EndKind::kScrewed},
    {"FL", EndKind::kFlanged}, {"PL", EndKind::kPlain},     {"CP", EndKind::kCompression},
    {"PF", EndKind::kPushFit},
};

constexpr ActuatorRow kActuators[] = {
    {"HANDWHEEL", Actuator::kHandwheel}, {"WHEEL", Actuator::kHandwheel},
    {"LEVER", Actuator::kLever},         {"WRENCH", Actuator::kLever},
    {"DIAPHRAGM", Actuator::kDiaphragm}, {"PNEUMATIC", Actuator::kDiaphragm},
    {"PISTON", Actuator::kPiston},       {"HYDRAULIC", Actuator::kPiston},
    {"CYLINDER", Actuator::kPiston},     {"MOTOR", Actuator::kMotor},
    {"ELECTRIC", Actuator::kMotor},      {"SOLENOID", Actuator::kSolenoid},
    {"SPRING", Actuator::kSpring},       {"NONE", Actuator::kNone},
};
// clang-format on

std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return result;
}

// Beyond this nothing is a plant, and squares of lengths stay finite.
constexpr double kFarthest = 1e12;

bool isSound(double number) { return std::abs(number) <= kFarthest; }
bool isSound(const GeVector& v) { return isSound(v.x) && isSound(v.y) && isSound(v.z); }
bool isSound(const GePoint& p) { return isSound(p - GePoint()); }

// On a pipe at one point; those may go without a diameter.
bool standsAtPoint(const Part& part) {
  if (isSupport(part.family) || part.family == Family::kInstrumentDial) return true;
  return part.family == Family::kInstrument && part.ends.size() < 2;
}

bool isSound(const End& end, bool needsDiameter) {
  const bool wide = end.outside > 0.0111 || (!needsDiameter && end.outside >= 0);
  return isSound(end.at) && isSound(end.line) && isSound(end.outside) && wide;
}

bool isSound(const Part& part) {
  const bool diameters = !standsAtPoint(part);
  const auto sound = [&](const End& end) { return isSound(end, diameters); };
  return std::all_of(part.ends.begin(), part.ends.end(), sound) &&
         std::all_of(part.branches.begin(), part.branches.end(), sound) &&
         (!part.centre || isSound(*part.centre)) && isSound(part.halfTurn) &&
         isSound(part.spindle) && isSound(part.along) && part.tolerance > 0;
}

// How many ends a family needs, and whether branches stand in for them.
std::string_view lacks(const Part& part) {
  const std::size_t ends = part.ends.size();
  const std::size_t points = ends + part.branches.size();
  const Family family = part.family;
  if (family == Family::kTee || family == Family::kYPiece || family == Family::kOlet) {
    if (ends >= 2 || (ends == 1 && family == Family::kOlet && !part.branches.empty())) return {};
    return points >= 1 && part.centre ? "" : "expected two ends, or a centre and a branch";
  }
  if (standsAtPoint(part)) return ends >= 1 ? "" : "expected a place";
  if (closesLine(family) || family == Family::kGasket) return ends >= 1 ? "" : "expected an end";
  if (isValve(family))
    return points >= 2 || (points == 1 && part.centre) ? "" : "expected two ends";
  return ends >= 2 ? "" : "expected two ends";
}

bool hasLength(const Part& part) {
  if (part.ends.size() < 2 || standsAtPoint(part)) return true;
  return distance(part.ends[0].at, part.ends[1].at) >= kShortest;
}

// A flange with the SKEY of a blind one, but with neighbours at both ends.
Family inTheLine(const Part& part) {
  if (part.family != Family::kFlangeBlind || part.ends.size() < 2) return part.family;
  const bool between = std::all_of(part.ends.begin(), part.ends.end(),
                                   [](const End& end) { return !(unit(end.line) == GeVector()); });
  return between ? Family::kFlangeWeldNeck : part.family;
}

// Discs and ends of lines, which know nothing of branches.
bool isOfJoint(Family family) {
  switch (family) {
    case Family::kStubEnd:
    case Family::kLapRing:
    case Family::kGasket:
    case Family::kSpectacleBlind:
    case Family::kOrificePlate:
      return true;
    default:
      return isFlange(family) || closesLine(family);
  }
}

void drawFamily(Builder& out, const Part& part) {
  if (isValve(part.family)) return drawValve(out, part);
  if (isSupport(part.family)) return drawSupport(out, part);
  switch (part.family) {
    case Family::kBend:
      return drawBend(out, part);
    case Family::kTee:
      return drawTee(out, part);
    case Family::kYPiece:
      return drawYPiece(out, part);
    case Family::kOlet:
      return drawOlet(out, part);
    case Family::kReducer:
      return drawReducer(out, part);
    case Family::kFlangeWeldNeck:
    case Family::kFlangeSlipOn:
    case Family::kFlangeSocket:
    case Family::kFlangeScrewed:
    case Family::kFlangeLapJoint:
    case Family::kFlangeReducing:
    case Family::kFlangeOrifice:
    case Family::kStubEnd:
      return drawFlange(out, part);
    case Family::kFlangeBlind:
    case Family::kLapRing:
      return drawBlind(out, part);
    case Family::kGasket:
    case Family::kSpectacleBlind:
    case Family::kOrificePlate:
      return drawGasket(out, part);
    case Family::kInstrument:
      return drawInstrument(out, part);
    case Family::kInstrumentDial:
      return drawDial(out, part);
    case Family::kFilter:
    case Family::kFilterY:
    case Family::kFilterBasket:
    case Family::kFilterCone:
      return drawFilter(out, part);
    case Family::kTrap:
      return drawTrap(out, part);
    case Family::kCoupling:
      return drawPipe(out, part, 1.25);
    case Family::kUnion:
      return drawUnion(out, part);
    case Family::kBellows:
      return drawBellows(out, part);
    case Family::kCap:
      return drawCap(out, part);
    case Family::kPlug:
      return drawPlug(out, part);
    default:
      return drawPipe(out, part, 1);
  }
}

}  // namespace

EndKind endKindOf(std::string_view code) {
  const std::string word = upper(code);
  for (const EndRow& row : kEnds)
    if (row.code == word) return row.kind;
  return EndKind::kNotTold;
}

EndKind endKindOfSkey(std::string_view skey) {
  return skey.size() < 4 ? EndKind::kNotTold : endKindOf(skey.substr(2, 2));
}

Actuator actuatorOf(std::string_view word) {
  const std::string text = upper(word);
  for (const ActuatorRow& row : kActuators)
    if (text.find(row.word) != std::string::npos) return row.actuator;
  return Actuator::kNotTold;
}

Drawn draw(const Part& part) {
  Drawn drawn;
  if (part.family == Family::kNothing) return drawn;
  Builder out(drawn, part.tolerance);
  if (!isSound(part)) {
    out.miss("a number is not finite, or a diameter is not above 0");
    return drawn;
  }
  if (const std::string_view lack = lacks(part); !lack.empty()) {
    out.miss(lack);
    return drawn;
  }
  if (!hasLength(part)) {
    out.miss("has no length");
    return drawn;
  }
  Part resolved = part;
  resolved.family = inTheLine(part);
  if (part.ends.size() > 2) {
    resolved.branches.insert(resolved.branches.begin(), part.ends.begin() + 2, part.ends.end());
    resolved.ends.resize(2);
  }
  resolved.face = std::min<std::size_t>(part.face, part.ends.size() == 2 ? 1 : 0);
  drawFamily(out, resolved);
  if (isOfJoint(resolved.family)) drawBranches(out, resolved);
  return drawn;
}

}  // namespace Vesk::Pcf
