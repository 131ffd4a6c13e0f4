// SPDX-License-Identifier: MIT
#include "draw/Occlusion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include "draw/ScreenPlane.h"

namespace Vesk {
namespace {

// Pixels that a triangle reaches beyond its sides: a line behind one of them is
// hidden, although rounding may have it on either side. More would hide lines of
// fine silhouettes that run beside it. Less for a triangle that is nearly seen from
// its edge: its plane goes far forward within that distance.
constexpr double kReach = 1e-5;

// Pixels. What is so far behind all the samples around it is hidden, though no
// triangle found there covers it: some are narrower than samples. Of lines each
// pixel counts by itself.
constexpr double kWellBehind = 1.0;
constexpr double kRounding = 1e-6;

// In depth. What is further behind than so many times the distance in the drawing
// is another body or another part of it.
constexpr double kStep = 6.0;

// Narrows the part to where a quantity is not below zero that runs from v0 to v1.
void keepPositive(LinePart& part, double v0, double v1) {
  if (v0 >= 0.0 && v1 >= 0.0) return;
  if (v0 < 0.0 && v1 < 0.0) {
    part.to = part.from;
    return;
  }
  const double t = v0 / (v0 - v1);
  if (v0 < 0.0) {
    part.from = std::max(part.from, t);
  } else {
    part.to = std::min(part.to, t);
  }
}

// How far p is to the inner side of the side from a to b.
double inside(const ScreenPoint& a, const ScreenPoint& b, const ScreenPoint& p) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return (dy * (p.x - a.x) - dx * (p.y - a.y)) / std::sqrt(dx * dx + dy * dy);
}

// The part of the line that the triangle hides; empty if to <= from.
LinePart hiddenPart(const ScreenPoint& a, const ScreenPoint& b, const ScreenTriangle& t) {
  LinePart part;
  const ScreenPlane plane(t);
  const double reach = std::min(kReach, Occlusion::kBehind / (4.0 * plane.steepness() + 1.0));
  for (std::size_t k = 0; k < 3 && part.from < part.to; ++k) {
    const ScreenPoint& from = t[k];
    const ScreenPoint& to = t[(k + 1) % 3];
    keepPositive(part, inside(from, to, a) + reach, inside(from, to, b) + reach);
  }
  keepPositive(part, plane.depthAt(a.x, a.y) - a.z - Occlusion::kBehind,
               plane.depthAt(b.x, b.y) - b.z - Occlusion::kBehind);
  return part;
}

double lengthOf(const ScreenPoint& a, const ScreenPoint& b) {
  return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

// Of a place beside all drawings, where a text may be, some sample beside them.
int sampleBefore(double place) {
  constexpr double kBeside = 1e9;
  const double sample = std::floor(place * kSamples - 0.5);
  if (!(sample > -kBeside)) return static_cast<int>(-kBeside);
  return static_cast<int>(std::min(sample, kBeside));
}

}  // namespace

ScreenTriangle Occlusion::triangleOf(const DepthSample& sample) const {
  ScreenTriangle t = surfaces_.triangle(sample.instance, sample.triangle);
  if (doubleArea(t) < 0.0) std::swap(t[1], t[2]);
  return t;
}

void Occlusion::findNearest(const ScreenPoint& a, const ScreenPoint& b, const LinePart& part,
                            const OwnTriangles& own) {
  nearest_.clear();
  const ScreenPoint start = between(a, b, part.from);
  const ScreenPoint end = between(a, b, part.to);
  const double longest = std::max(std::fabs(end.x - start.x), std::fabs(end.y - start.y));
  const int steps = static_cast<int>(longest * kSamples * 2.0) + 1;
  int lastColumn = std::numeric_limits<int>::min();
  int lastRow = lastColumn;
  for (int i = 0; i <= steps; ++i) {
    const ScreenPoint p = between(start, end, static_cast<double>(i) / steps);
    const int column = sampleBefore(p.x);
    const int row = sampleBefore(p.y);
    if (column == lastColumn && row == lastRow) continue;
    lastColumn = column;
    lastRow = row;
    for (int k = 0; k < 4; ++k) {
      const DepthSample* sample = band_.at(column + k % 2, row + k / 2);
      if (sample == nullptr || sample->isEmpty() || own.has(*sample)) continue;
      const auto isSame = [&](const DepthSample& other) {
        return other.instance == sample->instance && other.triangle == sample->triangle;
      };
      const std::size_t recent = std::min<std::size_t>(nearest_.size(), 4);
      if (std::any_of(nearest_.end() - static_cast<std::ptrdiff_t>(recent), nearest_.end(), isSame))
        continue;
      nearest_.push_back(*sample);
    }
  }
  const auto idOf = [](const DepthSample& s) { return std::tie(s.instance, s.triangle); };
  std::sort(nearest_.begin(), nearest_.end(),
            [&](const DepthSample& x, const DepthSample& y) { return idOf(x) < idOf(y); });
  nearest_.erase(
      std::unique(nearest_.begin(), nearest_.end(),
                  [&](const DepthSample& x, const DepthSample& y) { return idOf(x) == idOf(y); }),
      nearest_.end());
}

void Occlusion::seenParts(const ScreenPoint& a, const ScreenPoint& b, const LinePart& part,
                          const OwnTriangles& own, std::vector<LinePart>& seen) {
  findNearest(a, b, part, own);
  seen.assign(1, part);
  for (const DepthSample& sample : nearest_) {
    const LinePart hidden = hiddenPart(a, b, triangleOf(sample));
    if (!(hidden.from < hidden.to)) continue;
    left_.clear();
    for (const LinePart& each : seen) {
      if (hidden.to <= each.from || hidden.from >= each.to) {
        left_.push_back(each);
        continue;
      }
      if (hidden.from > each.from) left_.push_back({each.from, hidden.from});
      if (hidden.to < each.to) left_.push_back({hidden.to, each.to});
    }
    std::swap(seen, left_);
  }
  dropWellBehind(a, b, seen);
}

void Occlusion::dropWellBehind(const ScreenPoint& a, const ScreenPoint& b,
                               std::vector<LinePart>& seen) {
  const double length = lengthOf(a, b);
  left_.clear();
  for (const LinePart& part : seen) {
    const int pieces = static_cast<int>((part.to - part.from) * length) + 1;
    const double step = (part.to - part.from) / pieces;
    bool goesOn = false;
    for (int i = 0; i < pieces; ++i) {
      const LinePart piece{part.from + step * i,
                           i + 1 == pieces ? part.to : part.from + step * (i + 1)};
      if (isWellBehind(between(a, b, (piece.from + piece.to) / 2.0))) {
        goesOn = false;
      } else if (goesOn) {
        left_.back().to = piece.to;
      } else {
        left_.push_back(piece);
        goesOn = true;
      }
    }
  }
  std::swap(seen, left_);
}

bool Occlusion::isHidden(const ScreenBox& box) const {
  const bool isInBand = sampleBefore(box.left) > 0 &&
                        sampleBefore(box.right) + 2 < band_.columns() &&
                        sampleBefore(box.top) > band_.firstSampleRow() &&
                        sampleBefore(box.bottom) + 2 < band_.endSampleRow();
  return isInBand && band_.isBehind(box, kWellBehind + kRounding);
}

bool Occlusion::isHidden(const ScreenPoint& a, const ScreenPoint& b) const {
  return band_.isBehind(a, b, kWellBehind + kRounding);
}

bool Occlusion::isSeen(const ScreenPoint& p) const {
  if (isWellBehind(p)) return false;
  const int column = sampleBefore(p.x);
  const int row = sampleBefore(p.y);
  for (int k = 0; k < 4; ++k) {
    const DepthSample* sample = band_.at(column + k % 2, row + k / 2);
    if (sample == nullptr || sample->isEmpty()) continue;
    const LinePart hidden = hiddenPart(p, p, triangleOf(*sample));
    if (hidden.from < hidden.to) return false;
  }
  return true;
}

bool Occlusion::isWellBehind(const ScreenPoint& p) const {
  const int column = sampleBefore(p.x);
  const int row = sampleBefore(p.y);
  for (int k = 0; k < 4; ++k) {
    const DepthSample* sample = band_.at(column + k % 2, row + k / 2);
    if (sample == nullptr || sample->isEmpty()) return false;
    if (static_cast<double>(sample->depth) < p.z + kWellBehind) return false;
  }
  return true;
}

bool Occlusion::isOutline(const ScreenPoint& p, const ScreenPoint& towards, double aside) const {
  const double dx = towards.x - p.x;
  const double dy = towards.y - p.y;
  const double length = std::sqrt(dx * dx + dy * dy);
  if (length == 0.0) return false;
  for (const double side : {-aside, aside}) {
    const double x = p.x - dy / length * side;
    const double y = p.y + dx / length * side;
    const DepthSample* sample = band_.at(static_cast<int>(std::floor(x * kSamples)),
                                         static_cast<int>(std::floor(y * kSamples)));
    if (sample == nullptr || sample->isEmpty()) return true;
    if (static_cast<double>(sample->depth) < p.z - kStep * aside) return true;
  }
  return false;
}

}  // namespace Vesk
