// SPDX-License-Identifier: MIT
#include "draw/DepthBand.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "draw/ScreenPlane.h"

namespace Vesk {
namespace {

constexpr double kStep = 1.0 / kSamples;

// Samples of a tile.
constexpr int kTileColumns = 32;
constexpr int kTileRows = 8;

double centreOf(int sample) { return (sample + 0.5) * kStep; }

// The first sample at or behind this place, and the last at or before it, within
// the limits.
int firstSample(double place, int least, int most) {
  return static_cast<int>(std::clamp<double>(std::ceil(place * kSamples - 0.5), least, most));
}

int endSample(double place, int least, int most) {
  return static_cast<int>(std::clamp<double>(std::floor(place * kSamples - 0.5) + 1, least, most));
}

int tilesOf(int samples, int each) { return (samples + each - 1) / each; }

}  // namespace

// A triangle that is drawn.
struct DepthBand::Face {
  ScreenTriangle corners;
  ScreenPlane plane;
  double farthest;
  double nearest;
  std::uint32_t instance;
  std::uint32_t triangle;

  float depthAt(int column, double y) const {
    return static_cast<float>(std::clamp(plane.depthAt(centreOf(column), y), farthest, nearest));
  }

  // From the first to the last place between two heights; none: from the second on.
  std::pair<double, double> reachBetween(double top, double bottom) const {
    double left = std::numeric_limits<double>::infinity();
    double right = -left;
    for (std::size_t k = 0; k < 3; ++k) {
      const ScreenPoint& a = corners[k];
      const ScreenPoint& b = corners[(k + 1) % 3];
      if (std::max(a.y, b.y) < top || std::min(a.y, b.y) > bottom) continue;
      for (const double y : {std::clamp(a.y, top, bottom), std::clamp(b.y, top, bottom)}) {
        const double x = a.y == b.y ? b.x : a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y));
        left = std::min(left, x);
        right = std::max(right, x);
      }
    }
    return {left, right};
  }

  // Whether these samples are behind what a tile has already, or are not taken before it. Along
  // a row and a column the depth goes one way, so that the corners tell.
  bool isHidden(const Tile& tile, double top, double bottom, int begin, int end) const {
    const auto isBehind = [&](float depth) {
      return depth < tile.least || (depth == tile.least && instance > tile.lastInstance);
    };
    return isBehind(static_cast<float>(nearest)) ||
           isBehind(std::max({depthAt(begin, top), depthAt(end - 1, top), depthAt(begin, bottom),
                              depthAt(end - 1, bottom)}));
  }
};

DepthBand::DepthBand(const Surfaces& surfaces, int width)
    : surfaces_(surfaces), columns_(width * kSamples) {}

void DepthBand::draw(int firstRow, int endRow, int margin, Bands& bands) {
  first_ = firstRow * kSamples - margin;
  end_ = endRow * kSamples + margin;
  samples_.assign(static_cast<std::size_t>(end_ - first_) * static_cast<std::size_t>(columns_), {});
  tiles_.assign(static_cast<std::size_t>(tilesOf(columns_, kTileColumns)) *
                    static_cast<std::size_t>(tilesOf(end_ - first_, kTileRows)),
                {});
  for (const std::uint32_t i : surfaces_.nearestFirst()) {
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
  const auto [farthest, nearest] = std::minmax({t[0].z, t[1].z, t[2].z});
  const Face face{t, ScreenPlane(t), farthest, nearest, instance, triangle};
  const int end = endSample(bottom, first_, end_);
  for (int row = firstSample(top, first_, end_); row < end;) {
    const int endOfTiles = first_ + ((row - first_) / kTileRows + 1) * kTileRows;
    const int endRow = std::min(end, endOfTiles);
    if (isHidden(face, row, endRow)) {
      row = endRow;
    } else {
      for (; row < endRow; ++row) drawRow(face, row);
    }
  }
}

// Whether these rows of a face, which are those of one line of tiles, are hidden altogether.
bool DepthBand::isHidden(const Face& face, int firstRow, int endRow) {
  const double top = centreOf(firstRow);
  const double bottom = centreOf(endRow - 1);
  const auto [left, right] = face.reachBetween(top, bottom);
  // One more on either side, for the rounding.
  const int end = std::min(endSample(right, 0, columns_) + 1, columns_);
  for (int begin = std::max(firstSample(left, 0, columns_) - 1, 0); begin < end;) {
    const int endOfSpan = std::min(end, (begin / kTileColumns + 1) * kTileColumns);
    if (!face.isHidden(tileAt(begin, firstRow), top, bottom, begin, endOfSpan)) return false;
    begin = endOfSpan;
  }
  return true;
}

void DepthBand::drawRow(const Face& face, int row) {
  const double y = centreOf(row);
  // Where the row is to the left of each side; all sides run counter-clockwise.
  auto [left, right] = std::minmax({face.corners[0].x, face.corners[1].x, face.corners[2].x});
  for (std::size_t k = 0; k < 3; ++k) {
    const ScreenPoint& a = face.corners[k];
    const ScreenPoint& b = face.corners[(k + 1) % 3];
    const double dy = b.y - a.y;
    if (dy == 0.0) {
      if (b.x > a.x ? y > a.y : y < a.y) return;
      continue;
    }
    const double x = a.x + (b.x - a.x) * ((y - a.y) / dy);
    if (dy > 0.0) {
      left = std::max(left, x);
    } else {
      right = std::min(right, x);
    }
  }
  drawRow(face, row, firstSample(left, 0, columns_), endSample(right, 0, columns_));
}

void DepthBand::drawRow(const Face& face, int row, int begin, int end) {
  const double y = centreOf(row);
  while (begin < end) {
    const int endOfSpan = std::min(end, (begin / kTileColumns + 1) * kTileColumns);
    Tile& tile = tileAt(begin, row);
    if (!face.isHidden(tile, y, y, begin, endOfSpan)) drawSpan(face, row, begin, endOfSpan, tile);
    begin = endOfSpan;
  }
}

void DepthBand::drawSpan(const Face& face, int row, int begin, int end, Tile& tile) {
  const double y = centreOf(row);
  for (int column = begin; column < end; ++column) {
    const float depth = face.depthAt(column, y);
    DepthSample& sample = samples_[index(column, row)];
    if (depth < sample.depth || (depth == sample.depth && face.instance >= sample.instance)) {
      continue;
    }
    sample = {depth, face.instance, face.triangle};
    ++tile.writes;
  }
  comparisons_ += static_cast<std::uint64_t>(end - begin);
  // As seldom as that it costs no more than the drawing.
  if (tile.writes >= kTileColumns * kTileRows) findLeast(tile, begin, row);
}

DepthBand::Tile& DepthBand::tileAt(int column, int row) {
  const int line = (row - first_) / kTileRows;
  return tiles_[static_cast<std::size_t>(line) *
                    static_cast<std::size_t>(tilesOf(columns_, kTileColumns)) +
                static_cast<std::size_t>(column / kTileColumns)];
}

// Of the tile in which this sample is.
void DepthBand::findLeast(Tile& tile, int column, int row) const {
  const int left = column / kTileColumns * kTileColumns;
  const int right = std::min(left + kTileColumns, columns_);
  const int top = first_ + (row - first_) / kTileRows * kTileRows;
  const int bottom = std::min(top + kTileRows, end_);
  tile = {samples_[index(left, top)].depth, 0, 0};
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) {
      const DepthSample& sample = samples_[index(x, y)];
      if (sample.depth > tile.least) continue;
      if (sample.depth < tile.least) tile.lastInstance = 0;
      tile.least = sample.depth;
      tile.lastInstance = std::max(tile.lastInstance, sample.instance);
    }
  }
}

}  // namespace Vesk
