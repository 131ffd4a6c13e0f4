#include "check/Joints.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "Terminal.h"
#include "Words.h"
#include "check/NumberPlaces.h"
#include "ge/GeConstants.h"
#include "prims/Cone.h"
#include "prims/Cyl.h"
#include "prims/Torus.h"

namespace VeskTool {
namespace {

using namespace Vesk;

constexpr double kFacingCosine = 0.99619469809174555;  // of five degrees
constexpr double kFittingLength = 3.0;                 // in diameters
constexpr double kRounding = 1e-6;                     // less than the last decimal of any style
constexpr double kLastCell = 4e15;                     // numbers of cells are exact up to here
constexpr std::size_t kEndsBetweenLooks = 4096;        // whether Ctrl-C was pressed
constexpr std::uint32_t kNone = 0xffffffff;

// The ends, by the cell of space in which they lie. Cells are four reaches wide,
// so that a sphere of one reach touches few of them, and share their places by a
// hash.
class Grid {
 public:
  Grid(const std::vector<PipeEnd>& ends, double reach) : cell_(4.0 * reach) {
    mask_ = std::bit_ceil(ends.size() + 1) - 1;
    starts_.resize(mask_ + 2);
    std::vector<std::uint32_t> places(ends.size());
    for (std::size_t i = 0; i < ends.size(); ++i) {
      const GePoint& p = ends[i].point;
      places[i] = static_cast<std::uint32_t>(placeOf(cellOf(p.x), cellOf(p.y), cellOf(p.z)));
      ++starts_[places[i] + 1];
    }
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
    order_.resize(ends.size());
    for (std::size_t i = 0; i < ends.size(); ++i) {
      order_[next[places[i]]++] = {ends[i].point, static_cast<std::uint32_t>(i)};
    }
  }

  // Calls visit(index) for the ends within the reach and some more; an index may
  // come twice.
  template <class Visit>
  void forEachNear(const GePoint& p, double reach, Visit visit) const {
    for (double x = cellOf(p.x - reach); x <= cellOf(p.x + reach); ++x) {
      for (double y = cellOf(p.y - reach); y <= cellOf(p.y + reach); ++y) {
        for (double z = cellOf(p.z - reach); z <= cellOf(p.z + reach); ++z) {
          const std::size_t place = placeOf(x, y, z);
          for (std::uint32_t i = starts_[place]; i < starts_[place + 1]; ++i) {
            const GePoint& other = order_[i].point;
            if (std::fabs(other.x - p.x) <= reach && std::fabs(other.y - p.y) <= reach &&
                std::fabs(other.z - p.z) <= reach) {
              visit(order_[i].index);
            }
          }
        }
      }
    }
  }

 private:
  struct Entry {
    GePoint point;
    std::uint32_t index;
  };

  // What is very far away is in one cell: that costs time and finds the same.
  double cellOf(double v) const { return std::clamp(std::floor(v / cell_), -kLastCell, kLastCell); }

  std::size_t placeOf(double x, double y, double z) const {
    std::uint64_t h = 0;
    for (const double v : {x, y, z}) {
      h = (h ^ static_cast<std::uint64_t>(static_cast<std::int64_t>(v))) * 0x9e3779b97f4a7c15U;
      h ^= h >> 32;
    }
    return static_cast<std::size_t>(h) & mask_;
  }

  double cell_;
  std::size_t mask_ = 0;
  std::vector<std::uint32_t> starts_;
  std::vector<Entry> order_;
};

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

void Joints::add(const Geo& geo, std::uint64_t line, const Recs& lines, std::int32_t mode) {
  const std::size_t before = ends_.size();
  std::vector<NumberPlace> places;
  // The end whose point and diameter these numbers give.
  const auto endOf = [&](double diameter, bool isFitting, std::size_t point, std::size_t width) {
    PipeEnd end;
    end.diameter = diameter;
    end.line = line;
    end.element = elements_;
    end.isFitting = isFitting;
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
    const bool isFitting = !(cone.diameter1 > 0.0 && cone.diameter2 > 0.0);
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
  if (ends_.size() > before) ++elements_;
}

void Joints::addEnd(const GePoint& point, const GeVector& outward, PipeEnd end) {
  end.point = point;
  end.outward = outward.normalised(kDirectionTolerance);
  if (!(end.diameter > 0.0) || end.outward.isNull(0.5) || !isFinite(point)) return;
  ends_.push_back(end);
}

void Joints::find(const std::function<void(const JointFault&)>& take) const {
  if (ends_.empty() || !(options_.reach > 0.0)) return;
  const Grid grid(ends_, options_.reach);
  std::vector<std::uint32_t> nearest(ends_.size(), kNone);
  for (std::size_t i = 0; i < ends_.size(); ++i) {
    if (i % kEndsBetweenLooks == 0) checkInterrupt();
    double best = 0.0;
    grid.forEachNear(ends_[i].point, options_.reach + kRounding, [&](std::uint32_t k) {
      double distance = 0.0;
      if (!areFacing(ends_[i], ends_[k], options_, distance)) return;
      const bool first = nearest[i] == kNone;
      if (!first && (distance > best || (distance == best && k >= nearest[i]))) return;
      best = distance;
      nearest[i] = k;
    });
  }
  std::vector<JointFault> faults;
  for (std::uint32_t i = 0; i < ends_.size(); ++i) {
    const std::uint32_t k = nearest[i];
    if (k == kNone || k > i || nearest[k] != i) continue;
    judgeJoint(ends_[k], ends_[i], options_, faults);
  }
  std::stable_sort(faults.begin(), faults.end(), [](const JointFault& a, const JointFault& b) {
    return a.end.line < b.end.line;
  });
  for (const JointFault& fault : faults) take(fault);
}

bool areFacing(const PipeEnd& a, const PipeEnd& b, const JointOptions& options, double& distance) {
  if (a.element == b.element) return false;
  const GeVector between = b.point - a.point;
  distance = between.length();
  const double most = std::min(options.reach, std::max(a.diameter, b.diameter) / 2.0);
  return distance <= most + kRounding && dot(a.outward, b.outward) <= -kFacingCosine;
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
  } else if (!a.isFitting && !b.isFitting && std::fabs(a.diameter - b.diameter) > tolerance) {
    fault.kind = JointFault::Kind::kDiameter;
    faults.push_back(fault);
  }
}

}  // namespace VeskTool
