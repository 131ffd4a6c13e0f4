// SPDX-License-Identifier: MIT
#include "draw/DepthBand.h"

#include <algorithm>
#include <cmath>

#include "draw/ScreenPlane.h"

namespace Vesk {
namespace {

constexpr double kStep = 1.0 / kSamples;

double centreOf(int sample) { return (sample + 0.5) * kStep; }

// The first sample at or behind this place, and the last at or before it, within
// the limits.
int firstSample(double place, int least, int most) {
  return static_cast<int>(std::clamp<double>(std::ceil(place * kSamples - 0.5), least, most));
}

int endSample(double place, int least, int most) {
  return static_cast<int>(std::clamp<double>(std::floor(place * kSamples - 0.5) + 1, least, most));
}

}  // namespace

DepthBand::DepthBand(const Surfaces& surfaces, int width)
    : surfaces_(surfaces), columns_(width * kSamples) {}

void DepthBand::draw(int firstRow, int endRow, int margin, Bands& bands) {
  first_ = firstRow * kSamples - margin;
  end_ = endRow * kSamples + margin;
  samples_.assign(static_cast<std::size_t>(end_ - first_) * static_cast<std::size_t>(columns_), {});
  for (std::uint32_t i = 0; i < surfaces_.count(); ++i) {
    if (!surfaces_.isBetween(i, first_ * kStep, end_ * kStep)) continue;
    bands.check();
    surfaces_.project(i, points_);
    const Mesh& mesh = surfaces_.meshOf(i);
    for (std::size_t k = 0; k < mesh.triangles.size(); ++k) {
      const MeshTriangle& t = mesh.triangles[k];
      ScreenTriangle corners{points_[t[0]], points_[t[1]], points_[t[2]]};
      if (!facesEye(corners)) {
        // The far side of a solid is hidden by its near one.
        if (mesh.closed) continue;
        std::swap(corners[1], corners[2]);
        if (!facesEye(corners)) continue;
      }
      draw(corners, i, static_cast<std::uint32_t>(k));
    }
  }
}

void DepthBand::draw(const ScreenTriangle& t, std::uint32_t instance, std::uint32_t triangle) {
  const auto [top, bottom] = std::minmax({t[0].y, t[1].y, t[2].y});
  const auto [leftmost, rightmost] = std::minmax({t[0].x, t[1].x, t[2].x});
  const auto [farthest, nearest] = std::minmax({t[0].z, t[1].z, t[2].z});
  const ScreenPlane plane(t);
  const int endRow = endSample(bottom, first_, end_);
  for (int row = firstSample(top, first_, end_); row < endRow; ++row) {
    const double y = centreOf(row);
    // Where the row is to the left of each side; all sides run counter-clockwise.
    double left = leftmost;
    double right = rightmost;
    bool isOutside = false;
    for (std::size_t k = 0; k < 3; ++k) {
      const ScreenPoint& a = t[k];
      const ScreenPoint& b = t[(k + 1) % 3];
      const double dy = b.y - a.y;
      if (dy == 0.0) {
        isOutside = isOutside || (b.x > a.x ? y > a.y : y < a.y);
        continue;
      }
      const double x = a.x + (b.x - a.x) * ((y - a.y) / dy);
      if (dy > 0.0) {
        left = std::max(left, x);
      } else {
        right = std::min(right, x);
      }
    }
    if (isOutside) continue;
    const int end = endSample(right, 0, columns_);
    for (int column = firstSample(left, 0, columns_); column < end; ++column) {
      const double z = std::clamp(plane.depthAt(centreOf(column), y), farthest, nearest);
      DepthSample& sample = samples_[index(column, row)];
      const auto depth = static_cast<float>(z);
      if (depth > sample.depth) sample = {depth, instance, triangle};
    }
  }
}

}  // namespace Vesk
