// SPDX-License-Identifier: MIT
#include "clash/ClashSearch.h"

#include <algorithm>
#include <cmath>

#include "distance/BoxTree.h"
#include "select/Pattern.h"
#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

using Vesk::Body;

constexpr std::size_t kElementsBetweenLooks = 256;  // whether Ctrl-C was pressed
constexpr std::size_t kPairsBetweenLooks = 64;
constexpr int kLooksAlongAPipe = 32;
constexpr double kParallel = 1e-9;  // sine of the angle

[[noreturn]] void refuseNear(std::uint64_t most) {
  throw Failure(Exit::kInput,
                "too many elements in one place: more than " + grouped(most) +
                    " pairs are near to each other",
                "take fewer files, another --between or a smaller --clearance");
}

bool isPipe(const ClashElement& element) {
  return element.kind == Kind::kCylinder || element.kind == Kind::kCone ||
         element.kind == Kind::kTorus;
}

GePoint middle(const GePoint& a, const GePoint& b) { return a + (b - a) * 0.5; }

// The point of the pipe's centre line at the part t of the way between its ends.
GePoint onCentreLine(const ClashElement& pipe, std::span<const PipeEnd> ends, double t) {
  const std::optional<Vesk::SweptArc>& arc = pipe.body.arc();
  if (!arc) return ends[0].point + (ends[1].point - ends[0].point) * t;
  return pipe.body.origin() + arc->outward(arc->sweep * t) * arc->radius;
}

}  // namespace

ClashSearch::ClashSearch(const ClashModel& model, const ClashOptions& options)
    : model_(model), options_(options) {
  for (const auto& [first, second] : options.ignored) {
    std::vector<std::uint8_t>& sides = ignored_.emplace_back();
    for (const ClashHeader& header : model.headers()) {
      const auto line =
          std::string_view(header.text).substr(0, header.text.size() - header.group.size());
      const auto matches = [&](const std::string& pattern) {
        return Vesk::matchesHeader(line, header.group, pattern);
      };
      sides.push_back(
          static_cast<std::uint8_t>((matches(first) ? 1 : 0) | (matches(second) ? 2 : 0)));
    }
  }
}

std::vector<Clash> ClashSearch::find() {
  const std::vector<Pair> pairs = nearPairs();
  pairs_ = pairs.size();
  std::vector<Clash> clashes;
  for (std::size_t n = 0; n < pairs.size(); ++n) {
    if (n % kPairsBetweenLooks == 0) checkInterrupt();
    const std::optional<Clash> clash = judge(pairs[n].first, pairs[n].second);
    if (clash) clashes.push_back(*clash);
  }
  return clashes;
}

std::vector<ClashSearch::Pair> ClashSearch::nearPairs() const {
  const std::vector<ClashElement>& elements = model_.elements();
  std::vector<Vesk::Extents> boxes;
  boxes.reserve(elements.size());
  for (const ClashElement& element : elements) boxes.push_back(element.body.box());
  const Vesk::BoxTree tree(boxes);
  std::vector<Pair> pairs;
  std::uint64_t near = 0;
  for (std::uint32_t i = 0; i < elements.size(); ++i) {
    if (i % kElementsBetweenLooks == 0) checkInterrupt();
    const std::size_t before = pairs.size();
    tree.forEachNear(boxes[i], options_.clearance + Vesk::kTouchDistance, [&](std::uint32_t k) {
      if (++near > 2 * kMostNear) refuseNear(kMostNear);
      if (k > i && isWanted(elements[i], elements[k])) pairs.emplace_back(i, k);
      return true;
    });
    if (pairs.size() > kMostPairs) refuseNear(kMostPairs);
    std::sort(pairs.begin() + static_cast<std::ptrdiff_t>(before), pairs.end());
  }
  return pairs;
}

bool ClashSearch::isWanted(const ClashElement& a, const ClashElement& b) const {
  if (!a.isChosen && !b.isChosen) return false;
  if (a.component != 0 && a.component == b.component) return false;
  if (options_.secondFrom) {
    if ((a.file < *options_.secondFrom) == (b.file < *options_.secondFrom)) return false;
  } else {
    const bool isSame = [&] {
      switch (options_.between) {
        case ClashScope::kHeaders:
          return a.header == b.header;
        case ClashScope::kLines:
          return model_.headers()[a.header].line == model_.headers()[b.header].line;
        case ClashScope::kFiles:
          return a.file == b.file;
        case ClashScope::kElements:
          break;
      }
      return false;
    }();
    if (isSame) return false;
  }
  return !isIgnored(a.header, b.header);
}

bool ClashSearch::isIgnored(std::uint32_t header, std::uint32_t other) const {
  return std::any_of(ignored_.begin(), ignored_.end(), [&](const auto& sides) {
    return ((sides[header] & 1U) != 0 && (sides[other] & 2U) != 0) ||
           ((sides[header] & 2U) != 0 && (sides[other] & 1U) != 0);
  });
}

std::optional<Clash> ClashSearch::judge(std::uint32_t i, std::uint32_t k) const {
  const ClashElement& a = model_.elements()[i];
  const ClashElement& b = model_.elements()[k];
  Clash clash{Clash::Kind::kHard, i, k, 0.0, {}};
  if (a.isDuplicable && a.shape.high == b.shape.high && a.shape.low == b.shape.low) {
    clash.kind = Clash::Kind::kDuplicate;
    clash.place = middle(a.body.box().min, a.body.box().max);
    return clash;
  }
  const Vesk::Gap gap =
      Vesk::gapOf(a.body, b.body, std::max(options_.clearance, Vesk::kTouchDistance));
  if (std::isinf(gap.distance) || doMeet(a, b)) return std::nullopt;
  clash.distance = gap.distance <= Vesk::kTouchDistance ? 0.0 : gap.distance;
  clash.place = middle(gap.onA, gap.onB);
  const bool isHard = clash.distance == 0.0 &&
                      Vesk::depthOf(a.body, b.body, options_.tolerance) > options_.tolerance;
  if (isBranch(a, b)) {
    if (!isHard || !options_.isStrict) return std::nullopt;
    clash.kind = Clash::Kind::kInside;
    return clash;
  }
  if (isHard) return clash;
  if (!(clash.distance < options_.clearance - Vesk::kTouchDistance)) return std::nullopt;
  clash.kind = Clash::Kind::kClearance;
  return clash;
}

bool ClashSearch::doMeet(const ClashElement& a, const ClashElement& b) const {
  JointOptions joint;
  joint.tolerance = options_.tolerance;
  for (const PipeEnd& x : model_.endsOf(a)) {
    for (const PipeEnd& y : model_.endsOf(b)) {
      double distance = 0.0;
      if (!areFacing(x, y, joint, distance)) continue;
      std::vector<JointFault> faults;
      judgeJoint(x, y, joint, faults);
      if (std::all_of(faults.begin(), faults.end(), [](const JointFault& fault) {
            return fault.kind == JointFault::Kind::kDiameter;
          })) {
        return true;
      }
    }
  }
  return false;
}

bool ClashSearch::isBranch(const ClashElement& a, const ClashElement& b) const {
  const std::optional<GePoint> ofA = endInside(a, b);
  const std::optional<GePoint> ofB = endInside(b, a);
  if (ofA && ofB) return distance(*ofA, *ofB) <= options_.tolerance;
  return ofA || ofB;
}

// The end of the pipe that lies in the run, if only one does and its centre line
// leaves the run once.
std::optional<GePoint> ClashSearch::endInside(const ClashElement& pipe,
                                              const ClashElement& run) const {
  const std::span<const PipeEnd> ends = model_.endsOf(pipe);
  if (ends.size() != 2 || !isPipe(run)) return std::nullopt;
  const auto isIn = [&](const GePoint& point) {
    return Vesk::distance(run.body, point) <= options_.tolerance;
  };
  const bool startIsIn = isIn(ends[0].point);
  if (startIsIn == isIn(ends[1].point)) return std::nullopt;
  bool isOut = false;
  for (int n = 1; n < kLooksAlongAPipe; ++n) {
    const double t = static_cast<double>(n) / kLooksAlongAPipe;
    const bool isInside = isIn(onCentreLine(pipe, ends, startIsIn ? t : 1.0 - t));
    if (isOut && isInside) return std::nullopt;
    isOut = !isInside;
  }
  return ends[startIsIn ? 0 : 1].point;
}

ClashDepth ClashSearch::depthOf(const Clash& clash) const {
  const ClashElement& a = model_.elements()[clash.a];
  const ClashElement& b = model_.elements()[clash.b];
  const std::span<const PipeEnd> x = model_.endsOf(a);
  const std::span<const PipeEnd> y = model_.endsOf(b);
  if (a.kind == Kind::kCylinder && b.kind == Kind::kCylinder && x.size() == 2 && y.size() == 2 &&
      cross(x[1].outward, y[1].outward).length() <= kParallel) {
    const GeVector& along = x[1].outward;
    const GeVector off = y[0].point - x[0].point;
    const double across = cross(off, along).length();
    const double length = dot(x[1].point - x[0].point, along);
    const double from = dot(off, along);
    const double to = dot(y[1].point - x[0].point, along);
    // Past one end or past the other, whichever is the shorter way out.
    const double lengthwise = std::min(std::max(from, to), length - std::min(from, to));
    return {std::max(0.0, std::min((x[0].diameter + y[0].diameter) / 2.0 - across, lengthwise)),
            false};
  }
  return {Vesk::depthOf(a.body, b.body), true};
}

}  // namespace VeskTool
