// SPDX-License-Identifier: MIT
#include "draw/StrokeChains.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace Vesk {
namespace {

// In parts of a line.
constexpr double kTouch = 1e-9;

// Pixels. Rests of hidden lines are seen that are not yet far enough behind what
// hides them, or behind a triangle too thin for the samples. Outlines of bends
// consist of short pieces: of them only what has no length is left out.
constexpr double kTinyRest = 0.05;
constexpr double kShortRest = 0.5;

// Pixels that a corner may be away from the line between its neighbours to be
// left out.
constexpr double kStraight = 0.01;

double lengthOf(const ScreenPoint& a, const ScreenPoint& b) {
  return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

double lengthOf(const std::vector<ScreenPoint>& points) {
  double length = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) length += lengthOf(points[i - 1], points[i]);
  return length;
}

// Whether b lies between a and c, on their line.
bool isStraight(const ScreenPoint& a, const ScreenPoint& b, const ScreenPoint& c) {
  const ScreenPoint u = c - a;
  const ScreenPoint v = b - a;
  const double length = lengthOf(a, c);
  const double along = u.x * v.x + u.y * v.y;
  return std::fabs(u.x * v.y - u.y * v.x) <= kStraight * length && along >= 0.0 &&
         along <= length * length;
}

// Leaves out corners as long as all that are left out lie on the line. Drawings keep
// very many of these, so without room for more.
void straighten(std::vector<ScreenPoint>& points) {
  std::size_t last = 0;   // of those kept, which stand in front
  std::size_t first = 1;  // behind the last one kept
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    bool isLine = true;
    for (std::size_t k = first; k <= i && isLine; ++k) {
      isLine = isStraight(points[last], points[k], points[i + 1]);
    }
    if (isLine) continue;
    points[++last] = points[i];
    first = i + 1;
  }
  points[++last] = points.back();
  points.resize(last + 1);
  // What runs round may begin anywhere.
  if (last > 2 && lengthOf(points[0], points[last]) == 0.0 &&
      isStraight(points[last - 1], points[0], points[1])) {
    points.erase(points.begin());
    points.back() = points.front();
  }
  points.shrink_to_fit();
}

// No drawing is as wide as the limit.
std::int32_t hundredths(double place) {
  constexpr double kLimit = 2e7;
  return static_cast<std::int32_t>(std::floor(std::clamp(place, -kLimit, kLimit) * 100.0 + 0.5));
}

}  // namespace

void joinPieces(std::vector<LinePiece>& pieces) {
  std::sort(pieces.begin(), pieces.end(), [](const LinePiece& a, const LinePiece& b) {
    return std::tie(a.line, a.part.from) < std::tie(b.line, b.part.from);
  });
  std::size_t kept = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (kept > 0 && pieces[kept - 1].line == pieces[i].line &&
        pieces[i].part.from - pieces[kept - 1].part.to <= kTouch) {
      pieces[kept - 1].part.to = pieces[i].part.to;
      pieces[kept - 1].isOutline = pieces[kept - 1].isOutline || pieces[i].isOutline;
    } else {
      pieces[kept++] = pieces[i];
    }
  }
  pieces.resize(kept);
}

void StrokeChains::add(const End& a, const End& b, const LinePart& part, LineWeight weight) {
  Segment segment{{a.place, b.place}, {a.vertex, b.vertex}, weight};
  if (part.from > kTouch) {
    segment.ends[0] = between(a.place, b.place, part.from);
    segment.nodes[0] = cuts_++;
  }
  if (part.to < 1.0 - kTouch) {
    segment.ends[1] = between(a.place, b.place, part.to);
    segment.nodes[1] = cuts_++;
  }
  const bool isCut = segment.nodes[0] >= kCut || segment.nodes[1] >= kCut;
  if (isCut && lengthOf(segment.ends[0], segment.ends[1]) < kTinyRest) return;
  if (places_.insert(placeOf(segment))) segments_.push_back(segment);
}

PlaceSet::Place StrokeChains::placeOf(const Segment& segment) {
  const auto roundedEnd = [&](std::size_t i) {
    return std::pair(hundredths(segment.ends[i].x), hundredths(segment.ends[i].y));
  };
  const auto [a, b] = std::minmax({roundedEnd(0), roundedEnd(1)});
  return {a.first, a.second, b.first, b.second};
}

// The only other segment of the weight that ends here; segments_.size() if there
// is none, or more than one.
std::size_t StrokeChains::next(const Segment& segment, std::uint64_t node) const {
  const auto first =
      std::lower_bound(meetings_.begin(), meetings_.end(), Meeting{node, segment.weight, 0});
  std::size_t found = segments_.size();
  std::size_t count = 0;
  for (auto each = first;
       each != meetings_.end() && each->node == node && each->weight == segment.weight;
       ++each, ++count) {
    if (&segments_[each->segment] != &segment) found = each->segment;
  }
  return count == 2 ? found : segments_.size();
}

// Appends the segment from its end with this number, and those that follow.
void StrokeChains::follow(std::size_t index, std::size_t end, Stroke& stroke, bool& isCut) {
  while (index < segments_.size() && !segments_[index].isUsed) {
    Segment& segment = segments_[index];
    segment.isUsed = true;
    stroke.points.push_back(segment.ends[1 - end]);
    const std::uint64_t node = segment.nodes[1 - end];
    if (node >= kCut) isCut = true;
    index = next(segment, node);
    if (index < segments_.size()) end = segments_[index].nodes[0] == node ? 0 : 1;
  }
}

void StrokeChains::take(std::uint32_t element, std::vector<Stroke>& strokes) {
  meetings_.clear();
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    for (const std::uint64_t node : segments_[i].nodes) {
      meetings_.push_back({node, segments_[i].weight, i});
    }
  }
  std::sort(meetings_.begin(), meetings_.end());
  const auto addFrom = [&](std::size_t i, std::size_t end) {
    Stroke stroke{{segments_[i].ends[end]}, segments_[i].weight, element};
    bool isCut = segments_[i].nodes[end] >= kCut;
    follow(i, end, stroke, isCut);
    const bool isEdge = stroke.weight == LineWeight::kEdge;
    if (isCut && isEdge && lengthOf(stroke.points) < kShortRest) return;
    straighten(stroke.points);
    strokes.push_back(std::move(stroke));
  };
  // First those with ends, then what runs round.
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    for (std::size_t end = 0; end < 2; ++end) {
      if (segments_[i].isUsed) break;
      if (next(segments_[i], segments_[i].nodes[end]) == segments_.size()) addFrom(i, end);
    }
  }
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    if (!segments_[i].isUsed) addFrom(i, 0);
  }
  segments_.clear();
}

}  // namespace Vesk
