// SPDX-License-Identifier: MIT
#include "check/Joints.h"

#include <algorithm>
#include <cmath>

#include "check/EndTree.h"
#include "check/NumberPlaces.h"
#include "terminal/Terminal.h"
#include "text/Words.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/GeConstants.h"
#include "vesk/Torus.h"

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

}  // namespace

void Joints::add(const Geo& geo, std::uint64_t line, const Recs& lines, std::int32_t mode,
                 std::uint64_t group, bool isClosed) {
  const std::uint32_t element = solids_.add(geo, group, line);
  std::vector<NumberPlace> places;
  // The end whose point and diameter these numbers give.
  const auto endOf = [&](double diameter, bool isFitting, std::size_t point, std::size_t width) {
    PipeEnd end;
    end.diameter = diameter;
    end.line = line;
    end.group = group;
    end.element = element;
    end.isFitting = isFitting;
    end.isClosed = isClosed;
    end.place = spanOf(places, lines, point, point + 2);
    end.width = spanOf(places, lines, width, width);
    return end;
  };
  if (geo.typeCode() == Cyl::kTypeCode) {
    const auto& cyl = static_cast<const Cyl&>(geo);
    const bool isFitting = cyl.axis.length() < kFittingLength * cyl.diameter;
    places = numberPlaces(lines, mode);
    addEnd(cyl.origin, -cyl.axis, endOf(cyl.diameter, isFitting, 0, 6));
    addEnd(cyl.origin + cyl.axis, cyl.axis, endOf(cyl.diameter, isFitting, 3, 6));
  } else if (geo.typeCode() == Cone::kTypeCode) {
    const auto& cone = static_cast<const Cone&>(geo);
    const double widest = std::max(cone.diameter1, cone.diameter2);
    const bool isFitting =
        !(cone.diameter1 > 0.0 && cone.diameter2 > 0.0) || cone.axis.length() < kFlatCone * widest;
    places = numberPlaces(lines, mode);
    addEnd(cone.origin, -cone.axis, endOf(cone.diameter1, isFitting, 0, 6));
    addEnd(cone.origin + cone.axis, cone.axis, endOf(cone.diameter2, isFitting, 3, 7));
  } else if (geo.typeCode() == Torus::kTypeCode) {
    const auto& torus = static_cast<const Torus&>(geo);
    const GeVector normal = cross(torus.startVector, torus.endVector);
    // Fixed columns have the bend radius before the diameter.
    const std::size_t width = mode == kFixedColumns ? 10 : 9;
    places = numberPlaces(lines, mode);
    addEnd(torus.centre + torus.startVector, cross(torus.startVector, normal),
           endOf(torus.diameter, false, 3, width));
    addEnd(torus.centre + torus.endVector, cross(normal, torus.endVector),
           endOf(torus.diameter, false, 6, width));
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
