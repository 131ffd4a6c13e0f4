// SPDX-License-Identifier: MIT
#include "check/OpenEnds.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "distance/Body.h"
#include "distance/BoxTree.h"
#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "prims/Visit.h"
#include "terminal/Terminal.h"

namespace VeskTool {
namespace {

using namespace Vesk;

// Ends of centre lines are told by the cell of space in which they lie: several
// last decimals wide.
constexpr double kCell = 0.01;
constexpr double kLastCell = 4e15;  // numbers of cells are exact up to here

// What a search may cost for each end on average, in solids that are looked at and
// in solids to which the distance is measured; at least for so many ends. What is
// crowded beyond that is listed without what it faces.
constexpr std::size_t kLooksPerEnd = 400;
constexpr std::size_t kMeasuresPerEnd = 16;
constexpr std::size_t kEndsAtLeast = 10000;

constexpr std::size_t kEndsBetweenLooks = 256;  // whether Ctrl-C was pressed
constexpr int kHalvings = 40;

// A pipe that another only passes goes across it: the cosine of 45 degrees.
constexpr double kAcross = 0.707;

std::uint64_t mix(std::uint64_t h, std::uint64_t v) {
  h = (h ^ v) * 0x9e3779b97f4a7c15U;
  return h ^ (h >> 32);
}

std::uint64_t cellOf(double x, double y, double z) {
  std::uint64_t h = 0;
  for (const double v : {x, y, z})
    h = mix(h, static_cast<std::uint64_t>(static_cast<std::int64_t>(v)));
  return h;
}

double cellNumber(double v) { return std::clamp(std::floor(v / kCell), -kLastCell, kLastCell); }

std::uint64_t cellOf(const GePoint& p) {
  return cellOf(cellNumber(p.x), cellNumber(p.y), cellNumber(p.z));
}

// Whether pipes may end at it; one for each class.
struct IsSolid {
  bool operator()(const Cyl&) const { return true; }
  bool operator()(const Cone&) const { return true; }
  bool operator()(const Torus&) const { return true; }
  bool operator()(const Box&) const { return true; }
  bool operator()(const Red&) const { return true; }
  bool operator()(const Relb&) const { return true; }
  bool operator()(const Pline&) const { return false; }
  bool operator()(const Pgon&) const { return false; }
  bool operator()(const Txt&) const { return false; }
};

std::unique_ptr<Geo> copyOfSolid(const Geo& geo) {
  return visit(geo, IsSolid(), [] { return false; }) ? copyOf(geo) : nullptr;
}

void sortUnique(std::vector<std::uint64_t>& values) {
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

// A pipe, cone or bend by what is about it: all of it is within reach of this way.
struct Round {
  GePoint from;
  GeVector way;  // null for a bend
  double reach;
};

// One for each class.
struct RoundOf {
  using Answer = std::optional<Round>;
  Answer operator()(const Cyl& cyl) const {
    return Round{cyl.origin, cyl.axis, cyl.diameter / 2.0};
  }
  Answer operator()(const Cone& cone) const {
    return Round{cone.origin, cone.axis, std::max(cone.diameter1, cone.diameter2) / 2.0};
  }
  Answer operator()(const Torus& torus) const {
    const double radius = std::max(torus.startVector.length(), torus.endVector.length());
    return Round{torus.centre, GeVector(), radius + torus.diameter / 2.0};
  }
  Answer operator()(const Box&) const { return {}; }
  Answer operator()(const Relb&) const { return {}; }
  Answer operator()(const Red&) const { return {}; }
  Answer operator()(const Pline&) const { return {}; }
  Answer operator()(const Pgon&) const { return {}; }
  Answer operator()(const Txt&) const { return {}; }
};

std::optional<Round> roundOf(const Geo& geo) {
  return visit(geo, RoundOf(), [] { return std::optional<Round>(); });
}

bool isRound(const Geo& geo) { return roundOf(geo).has_value(); }

// Whether the solid is a straight pipe that runs along the end's axis.
bool runsAlong(const Geo& geo, const PipeEnd& end) {
  const std::optional<Round> round = roundOf(geo);
  const GeVector axis = round ? round->way : GeVector();
  return std::fabs(dot(axis, end.outward)) > kAcross * axis.length();
}

// How far two straight pieces are apart, each from a point along a way.
double distanceOfWays(const GePoint& p, const GeVector& u, const GePoint& q, const GeVector& v) {
  const GeVector between = p - q;
  const double uu = dot(u, u);
  const double vv = dot(v, v);
  const double uv = dot(u, v);
  const double ub = dot(u, between);
  const double vb = dot(v, between);
  const double square = uu * vv - uv * uv;
  double s = square > 1e-12 * uu * vv ? std::clamp((uv * vb - vv * ub) / square, 0.0, 1.0) : 0.0;
  const double t = vv > 0.0 ? std::clamp((uv * s + vb) / vv, 0.0, 1.0) : 0.0;
  s = uu > 0.0 ? std::clamp((uv * t - ub) / uu, 0.0, 1.0) : 0.0;
  return distance(p + u * s, q + v * t);
}

// How far a point is from the whole ring that a bend is a part of, at least; of a bend without a
// plane 0.
double distanceOfRing(const Torus& bend, const GePoint& point) {
  const double one = bend.startVector.length();
  const double other = bend.endVector.length();
  const GeVector normal = cross(bend.startVector, bend.endVector);
  const double length = normal.length();
  constexpr double kPlane = 1e-6;  // of the sine
  if (!(length > kPlane * one * other)) return 0.0;
  const GeVector from = point - bend.centre;
  const double above = dot(from, normal) / length;
  const double out = (from - normal * (above / length)).length();
  const double aside = std::hypot(out - (one + other) / 2.0, above);
  constexpr double kRoundingOf = 1e-9;
  return aside - bend.diameter / 2.0 - std::fabs(one - other) / 2.0 - kRoundingOf * (one + other);
}

// Whether a way may come so near to the solid; quickly, by what is about it.
bool mayTouch(const Geo& geo, const GePoint& from, const GeVector& way, double margin) {
  const std::optional<Round> round = roundOf(geo);
  if (!round) return true;
  if (distanceOfWays(from, way, round->from, round->way) > round->reach + margin) return false;
  if (geo.typeCode() != Torus::kTypeCode) return true;
  return distanceOfRing(static_cast<const Torus&>(geo), from) <= way.length() + margin;
}

// The search in one file.
class Search {
 public:
  Search(const Solids& solids, const std::vector<PipeEnd>& ends, const JointOptions& options)
      : solids_(solids), ends_(ends), options_(options) {
    std::vector<Extents> boxes(solids.size());
    for (std::uint32_t i = 0; i < solids.size(); ++i) solids.solid(i).addExtents(boxes[i]);
    tree_ = BoxTree(boxes);
    const std::size_t share = std::max(kEndsAtLeast, ends.size());
    looks_ = kLooksPerEnd * share;
    measures_ = kMeasuresPerEnd * share;
  }

  // Whether the end lies in a solid besides its own, as far as was looked.
  bool isInside(const PipeEnd& end) {
    const double tolerance = options_.tolerance + kRounding;
    bool found = false;
    tree_.forEachNear(Extents(end.point, end.point), tolerance, [&](std::uint32_t index) {
      if (index == end.element) return true;
      if (!look()) return false;
      if (!mayTouch(solids_.solid(index), end.point, {}, tolerance)) return true;
      if (!measure()) return false;
      const std::optional<Body> body = Body::of(solids_.solid(index));
      found = body && distance(*body, end.point) <= tolerance;
      return !found;
    });
    return found;
  }

  OpenEnd lookAhead(const PipeEnd& end) {
    OpenEnd open;
    open.end = end;
    double nearest = kAhead * end.diameter;
    std::optional<std::uint32_t> faced;
    const GePoint last = end.point + end.outward * nearest;
    Extents way(end.point, end.point);
    way.add(last);
    tree_.forEachNear(way, 0.0, [&](std::uint32_t index) {
      if (index == end.element) return true;
      if (!look()) return open.isLooked = false;
      const GeVector ahead = end.outward * nearest;
      if (!mayTouch(solids_.solid(index), end.point, ahead, kTouchDistance)) return true;
      if (!measure()) return open.isLooked = false;
      const std::optional<double> found = hit(end, index, nearest);
      const bool isSooner = found && (*found < nearest || !faced || index < *faced);
      if (isSooner) {
        nearest = *found;
        faced = index;
      }
      return true;
    });
    if (faced) {
      setFaced(open, *faced, nearest);
      if (nearest <= options_.reach) open.kind = OpenEnd::Kind::kShort;
    }
    if (open.kind == OpenEnd::Kind::kOpen) lookAside(open);
    return open;
  }

  // Another open end that faces this one across nothing; `openOnes` by their lines.
  bool facesOpenEnd(const OpenEnd& open, const std::vector<std::uint32_t>& openOnes,
                    std::uint32_t& other) const {
    if (!open.facesSolid || open.kind == OpenEnd::Kind::kBeside) return false;
    const PipeEnd& end = open.end;
    auto at = std::lower_bound(
        openOnes.begin(), openOnes.end(), open.line,
        [&](std::uint32_t index, std::uint64_t line) { return ends_[index].line < line; });
    for (; at != openOnes.end() && ends_[*at].line == open.line; ++at) {
      const PipeEnd& each = ends_[*at];
      if (dot(each.outward, end.outward) > -kFacingCosine) continue;
      const GeVector between = each.point - end.point;
      const double along = dot(between, end.outward);
      const double across = (between - end.outward * along).length();
      const double width = std::min(each.diameter, end.diameter) / 2.0;
      if (std::fabs(along - open.distance) > width || across > width) continue;
      other = *at;
      return true;
    }
    return false;
  }

 private:
  static bool spend(std::size_t& budget) {
    if (budget == 0) return false;
    --budget;
    return true;
  }
  bool look() { return spend(looks_); }
  bool measure() { return spend(measures_); }

  void setFaced(OpenEnd& open, std::uint32_t index, double distance) const {
    open.facesSolid = true;
    open.what = wordOf(kindOf(solids_.solid(index)));
    open.line = solids_.lineOf(index);
    open.distance = distance;
  }

  // How far ahead the solid begins, if no further than `most`.
  std::optional<double> hit(const PipeEnd& end, std::uint32_t index, double most) const {
    const std::optional<Body> body = Body::of(solids_.solid(index));
    if (!body) return {};
    const auto reaches = [&](double length) {
      const std::optional<Body> way = Body::of(Pline{end.point, end.point + end.outward * length});
      return way && gapOf(*body, *way, kTouchDistance).distance <= kTouchDistance;
    };
    if (!reaches(most)) return {};
    double low = 0.0;
    double high = most;
    for (int i = 0; i < kHalvings && high - low > kRounding; ++i) {
      const double middle = (low + high) / 2.0;
      (reaches(middle) ? high : low) = middle;
    }
    return high;
  }

  // A pipe within the reach that the end's axis passes.
  void lookAside(OpenEnd& open) {
    const PipeEnd& end = open.end;
    const Extents place(end.point, end.point);
    double nearest = options_.reach + kRounding;
    tree_.forEachNear(place, options_.reach, [&](std::uint32_t index) {
      const Geo& solid = solids_.solid(index);
      if (!look()) return false;
      if (index == end.element || !isRound(solid) || runsAlong(solid, end)) return true;
      if (!mayTouch(solid, end.point, {}, nearest)) return true;
      if (!measure()) return false;
      const std::optional<Body> body = Body::of(solid);
      if (!body) return true;
      const double apart = distance(*body, end.point);
      if (apart >= nearest) return true;
      nearest = apart;
      open.kind = OpenEnd::Kind::kBeside;
      setFaced(open, index, apart);
      return true;
    });
  }

  const Solids& solids_;
  const std::vector<PipeEnd>& ends_;
  const JointOptions& options_;
  BoxTree tree_;
  std::size_t looks_;
  std::size_t measures_;
};

}  // namespace

std::uint64_t Solids::groupOf(const HeaderFields& header) {
  std::uint64_t h = 0;
  for (const std::string_view field : {header.f1.view(), header.f2.view()}) {
    for (const char c : field) h = mix(h, static_cast<unsigned char>(c));
  }
  return h;
}

std::uint32_t Solids::add(const Geo& geo, std::uint64_t group, std::uint64_t line) {
  const auto index = static_cast<std::uint32_t>(solids_.size());
  if (geo.typeCode() == Pline::kTypeCode) {
    const auto& vertices = static_cast<const Pline&>(geo).vertices;
    if (vertices.size() < 2) return index;
    for (const GePoint& p : {vertices.front(), vertices.back()}) {
      // A number that is none is in no cell.
      if (std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z)) {
        lineEnds_.push_back(cellOf(p));
      }
    }
    if (groups_.empty() || groups_.back() != group) groups_.push_back(group);
    return index;
  }
  if (std::unique_ptr<Geo> copy = copyOfSolid(geo)) solids_.push_back({std::move(copy), line});
  return index;
}

void Solids::finish() {
  sortUnique(lineEnds_);
  sortUnique(groups_);
}

bool Solids::isLineEnd(const PipeEnd& end) const {
  if (!std::binary_search(groups_.begin(), groups_.end(), end.group)) return true;
  for (double x = -1; x <= 1; ++x) {
    for (double y = -1; y <= 1; ++y) {
      for (double z = -1; z <= 1; ++z) {
        const std::uint64_t cell = cellOf(cellNumber(end.point.x) + x, cellNumber(end.point.y) + y,
                                          cellNumber(end.point.z) + z);
        if (std::binary_search(lineEnds_.begin(), lineEnds_.end(), cell)) return true;
      }
    }
  }
  return false;
}

void findOpenEnds(const Solids& solids, const std::vector<PipeEnd>& ends,
                  const std::vector<bool>& isFree, const JointOptions& options,
                  const std::function<void(const OpenEnd&)>& take) {
  Search search(solids, ends, options);
  std::vector<std::uint32_t> open;
  for (std::uint32_t i = 0; i < ends.size(); ++i) {
    if (i % kEndsBetweenLooks == 0) checkInterrupt();
    if (isFree[i] && solids.isLineEnd(ends[i]) && !search.isInside(ends[i])) open.push_back(i);
  }
  std::stable_sort(open.begin(), open.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return ends[a].line < ends[b].line; });
  std::vector<bool> isTold(ends.size());
  std::vector<OpenEnd> found;
  for (const std::uint32_t i : open) {
    checkInterrupt();
    found.push_back(search.lookAhead(ends[i]));
  }
  for (std::size_t k = open.size(); k-- > 0;) {
    std::uint32_t other = 0;
    if (isTold[open[k]] || !search.facesOpenEnd(found[k], open, other)) continue;
    found[k].kind = OpenEnd::Kind::kMissing;
    isTold[other] = true;
  }
  for (std::size_t k = 0; k < open.size(); ++k) {
    if (!isTold[open[k]]) take(found[k]);
  }
}

}  // namespace VeskTool
