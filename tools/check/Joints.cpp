// SPDX-License-Identifier: MIT
#include "check/Joints.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "check/EndTree.h"
#include "check/NumberPlaces.h"
#include "output/RecordFields.h"
#include "prims/Visit.h"
#include "terminal/Terminal.h"
#include "text/Words.h"
#include "vesk/GeConstants.h"

namespace VeskTool {
namespace {

using namespace Vesk;

constexpr double kFittingLength = 3.0;           // in diameters
constexpr double kFlatCone = 0.4;                // of its larger diameter
constexpr double kOneNominalSize = 0.015;        // of the larger diameter
constexpr std::size_t kEndsBetweenLooks = 4096;  // whether Ctrl-C was pressed

// Or so near to it as standards differ on one nominal size.
bool isSameDiameter(double a, double b, double tolerance) {
  return std::fabs(a - b) <= std::max(tolerance, kOneNominalSize * std::max(a, b));
}

bool isFinite(const GePoint& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// Of these numbers of the element, as far as they stand on the line of the first.
NumberSpan spanOf(const std::vector<NumberPlace>& places, const Recs& lines, std::size_t first,
                  std::size_t last) {
  if (last >= places.size()) return {};
  const NumberPlace& begin = places[first];
  while (places[last].line != begin.line) --last;
  const std::string_view before = std::string_view(lines[begin.line]).substr(0, begin.column);
  const auto inside = std::count_if(before.begin(), before.end(), isContinuationByte);
  const auto narrow = [](auto v) {
    constexpr std::size_t kMost = 0xffff;
    return static_cast<std::uint16_t>(std::min(static_cast<std::size_t>(v), kMost));
  };
  return {narrow(begin.line), narrow(begin.column + 1),
          narrow(places[last].column + places[last].text.size()), narrow(inside)};
}

// An end of an element: where it is, and which values of the record say so.
struct End {
  GePoint point;
  GeVector outward;
  double diameter = 0.0;
  Value place = Value::kOrigin;
  Value width = Value::kDiameter;
};

struct Ends {
  const RecordShape* shape = nullptr;  // null: the kind has none
  bool isFitting = false;
  std::array<End, 2> ends;
};

// One for each class. Only round ends are those of pipes.
struct EndsOf {
  Ends operator()(const Cyl& cyl) const {
    const double d = cyl.diameter;
    return {&Records::kCyl,
            cyl.axis.length() < kFittingLength * d,
            {{{cyl.origin, -cyl.axis, d, Value::kOrigin, Value::kDiameter},
              {cyl.origin + cyl.axis, cyl.axis, d, Value::kAxis, Value::kDiameter}}}};
  }
  Ends operator()(const Cone& cone) const {
    const double widest = std::max(cone.diameter1, cone.diameter2);
    const bool isFitting =
        !(cone.diameter1 > 0.0 && cone.diameter2 > 0.0) || cone.axis.length() < kFlatCone * widest;
    return {
        &Records::kCone,
        isFitting,
        {{{cone.origin, -cone.axis, cone.diameter1, Value::kOrigin, Value::kDiameter1},
          {cone.origin + cone.axis, cone.axis, cone.diameter2, Value::kAxis, Value::kDiameter2}}}};
  }
  Ends operator()(const Torus& torus) const {
    const GeVector& start = torus.startVector;
    const GeVector& end = torus.endVector;
    const GeVector normal = cross(start, end);
    const double d = torus.diameter;
    return {&Records::kTorus,
            false,
            {{{torus.centre + start, cross(start, normal), d, Value::kStart, Value::kDiameter},
              {torus.centre + end, cross(normal, end), d, Value::kEnd, Value::kDiameter}}}};
  }
  Ends operator()(const Box&) const { return {}; }
  Ends operator()(const Relb&) const { return {}; }
  Ends operator()(const Red&) const { return {}; }
  Ends operator()(const Pline&) const { return {}; }
  Ends operator()(const Pgon&) const { return {}; }
  Ends operator()(const Txt&) const { return {}; }
};

}  // namespace

void Joints::add(const Geo& geo, std::uint64_t line, const Recs& lines, std::int32_t mode,
                 std::uint64_t group, bool isClosed) {
  const std::uint32_t element = solids_.add(geo, group, line);
  const Ends ends = visit(geo, EndsOf(), [] { return Ends(); });
  if (ends.shape == nullptr) return;
  const std::vector<NumberPlace> places = numberPlaces(lines, mode);
  const auto spanOfValue = [&](Value value) {
    const NumberRange range = ends.shape->rangeOf(value, mode);
    return spanOf(places, lines, static_cast<std::size_t>(range.first),
                  static_cast<std::size_t>(range.last));
  };
  for (const End& each : ends.ends) {
    PipeEnd end;
    end.diameter = each.diameter;
    end.line = line;
    end.group = group;
    end.element = element;
    end.isFitting = ends.isFitting;
    end.isClosed = isClosed;
    end.place = spanOfValue(each.place);
    end.width = spanOfValue(each.width);
    addEnd(each.point, each.outward, end);
  }
}

void Joints::addEnd(const GePoint& point, const GeVector& outward, PipeEnd end) {
  end.point = point;
  end.outward = outward.normalised(kDirectionTolerance);
  if (!(end.diameter > 0.0) || end.outward.isNull(0.5) || !isFinite(point)) return;
  ends_.push_back(end);
}

void Joints::find(const std::function<void(const JointFault&)>& take,
                  const std::function<void(const OpenEnd&)>& takeOpen) {
  if (ends_.empty() || !(options_.reach > 0.0)) return;
  const EndTree tree(ends_, options_);
  std::vector<std::uint32_t> nearest(ends_.size());
  for (std::uint32_t i = 0; i < ends_.size(); ++i) {
    if (i % kEndsBetweenLooks == 0) checkInterrupt();
    nearest[i] = tree.nearestFacing(i);
  }
  std::vector<JointFault> faults;
  for (std::uint32_t i = 0; i < ends_.size(); ++i) {
    const std::uint32_t k = nearest[i];
    if (k == EndTree::kNone || k > i || nearest[k] != i) continue;
    judgeJoint(ends_[k], ends_[i], options_, faults);
  }
  std::stable_sort(faults.begin(), faults.end(), [](const JointFault& a, const JointFault& b) {
    return a.end.line < b.end.line;
  });
  for (const JointFault& fault : faults) take(fault);
  if (!takeOpen) return;
  std::vector<bool> isFree(ends_.size());
  for (std::size_t i = 0; i < ends_.size(); ++i)
    isFree[i] = nearest[i] == EndTree::kNone && !ends_[i].isClosed;
  solids_.finish();
  findOpenEnds(solids_, ends_, isFree, options_, takeOpen);
}

double facingReach(double diameter, double other, const JointOptions& options) {
  return std::min(options.reach, std::max(diameter, other) / 2.0) + kRounding;
}

bool areFacing(const PipeEnd& a, const PipeEnd& b, const JointOptions& options, double& distance) {
  if (a.element == b.element) return false;
  const GeVector between = b.point - a.point;
  distance = between.length();
  return distance <= facingReach(a.diameter, b.diameter, options) &&
         dot(a.outward, b.outward) <= -kFacingCosine;
}

void judgeJoint(const PipeEnd& a, const PipeEnd& b, const JointOptions& options,
                std::vector<JointFault>& faults) {
  const double tolerance = options.tolerance + kRounding;
  const bool inOrder = a.line <= b.line;
  JointFault fault{JointFault::Kind::kGap, inOrder ? b : a, inOrder ? a : b, 0.0, 0.0};
  const GeVector between = fault.other.point - fault.end.point;
  fault.along = dot(between, fault.end.outward);
  fault.across = (between - fault.end.outward * fault.along).length();
  if (fault.across > tolerance) {
    fault.kind = JointFault::Kind::kOffset;
    faults.push_back(fault);
  } else if (std::fabs(fault.along) > tolerance) {
    fault.kind = fault.along > 0.0 ? JointFault::Kind::kGap : JointFault::Kind::kOverlap;
    faults.push_back(fault);
  } else if (!a.isFitting && !b.isFitting && !isSameDiameter(a.diameter, b.diameter, tolerance)) {
    fault.kind = JointFault::Kind::kDiameter;
    faults.push_back(fault);
  }
}

}  // namespace VeskTool
