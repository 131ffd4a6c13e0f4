// SPDX-License-Identifier: MIT
#include "draw/DepthBand.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Vesk {
namespace {

constexpr double kStep = 1.0 / kSamples;

// Samples of a tile and tiles of a cell, as powers of two.
constexpr int kTileColumnBits = 5;
constexpr int kTileRowBits = 3;
constexpr int kCellBits = 2;  // each way
constexpr int kTileColumns = 1 << kTileColumnBits;
constexpr int kTileRows = 1 << kTileRowBits;

// What is behind a face by no more than rounding may be at its depth: pixels, and a part of
// the depth.
constexpr double kRounding = 1e-4;
constexpr double kRoundingPart = 4e-7;

// Depth in a pixel, and area of the square of the longest side. The plane of a face
// beyond these is too inexact where it is compared with another.
constexpr double kSteepest = 100.0;
constexpr double kThinnest = 1e-4;

double centreOf(int sample) { return (sample + 0.5) * kStep; }

// The first sample at or behind this place, and the last at or before it, within
// the limits.
int firstSample(double place, int least, int most) {
  return static_cast<int>(std::clamp<double>(std::ceil(place * kSamples - 0.5), least, most));
}

int endSample(double place, int least, int most) {
  return static_cast<int>(std::clamp<double>(std::floor(place * kSamples - 0.5) + 1, least, most));
}

int tilesOf(int samples, int bits) { return (samples + (1 << bits) - 1) >> bits; }

double roundingAt(double depth) { return kRounding + kRoundingPart * std::fabs(depth); }

bool isEven(const ScreenTriangle& t, const ScreenPlane& plane) {
  double longest = 0.0;
  for (std::size_t k = 0; k < 3; ++k) {
    const ScreenPoint side = t[(k + 1) % 3] - t[k];
    longest = std::max(longest, side.x * side.x + side.y * side.y);
  }
  return plane.steepness() < kSteepest && doubleArea(t) > kThinnest * longest;
}

}  // namespace

// A triangle that is drawn.
struct DepthBand::Face {
  ScreenTriangle corners;
  ScreenPlane plane;
  double farthest;
  double nearest;
  std::uint32_t instance;
  std::uint32_t triangle;
  bool isEven;

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

  // The same at one height: where that is to the left of each side; all sides run
  // counter-clockwise.
  std::pair<double, double> reachAt(double y) const {
    auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    for (std::size_t k = 0; k < 3; ++k) {
      const ScreenPoint& a = corners[k];
      const ScreenPoint& b = corners[(k + 1) % 3];
      const double dy = b.y - a.y;
      if (dy == 0.0) {
        if (b.x > a.x ? y > a.y : y < a.y) return {1.0, 0.0};
        continue;
      }
      const double x = a.x + (b.x - a.x) * ((y - a.y) / dy);
      if (dy > 0.0) {
        left = std::max(left, x);
      } else {
        right = std::min(right, x);
      }
    }
    return {left, right};
  }

  // Whether a plane is everywhere behind another one, by this distance.
  static bool isBehind(const ScreenPlane& plane, const ScreenPlane& other, const Area& area,
                       double distance) {
    for (const int row : {area.top, area.bottom - 1}) {
      for (const int column : {area.left, area.right - 1}) {
        const double x = centreOf(column);
        const double y = centreOf(row);
        if (!(plane.depthAt(x, y) + distance < other.depthAt(x, y))) return false;
      }
    }
    return true;
  }

  // Whether these samples are behind what a tile has already, or are not taken before it. Along
  // a row and a column the depth goes one way, so that the corners tell.
  bool isBehindAll(const Tile& tile, const Area& area) const {
    const auto isNotTaken = [&](double most) {
      const auto depth = static_cast<float>(std::clamp(most, farthest, nearest));
      return depth < tile.least || (depth == tile.least && instance > tile.lastInstance);
    };
    if (isNotTaken(nearest)) return true;
    if (!std::isfinite(tile.least)) return false;
    const double left = centreOf(area.left);
    const double right = centreOf(area.right - 1);
    const double top = centreOf(area.top);
    const double bottom = centreOf(area.bottom - 1);
    return isNotTaken(std::max({plane.depthAt(left, top), plane.depthAt(right, top),
                                plane.depthAt(left, bottom), plane.depthAt(right, bottom)}));
  }

  // Or behind a face that covers the tile.
  bool isHidden(const Tile& tile, const Area& area) const {
    if (isBehindAll(tile, area)) return true;
    if (!isEven || tile.coverCount == 0) return false;
    const double distance = roundingAt(std::max(std::fabs(farthest), std::fabs(nearest)));
    for (std::size_t i = 0; i < tile.coverCount; ++i) {
      if (isBehind(plane, tile.covers[i], area, distance)) return true;
    }
    return false;
  }

  // Has a tile keep the face, which covers this area, all of it. What is behind the face goes;
  // then one of many.
  void cover(Tile& tile, const Area& area) const {
    std::size_t slot = std::min(tile.coverCount, kCovers - 1);
    for (std::size_t i = 0; i < tile.coverCount; ++i) {
      if (isBehind(tile.covers[i], plane, area, 0.0)) slot = i;
    }
    tile.covers[slot] = plane;
    tile.coverCount = std::max(tile.coverCount, slot + 1);
  }
};

DepthBand::DepthBand(const Surfaces& surfaces, int width)
    : surfaces_(surfaces), columns_(width * kSamples) {
  tiles_.columnBits = kTileColumnBits;
  tiles_.rowBits = kTileRowBits;
  cells_.columnBits = kTileColumnBits + kCellBits;
  cells_.rowBits = kTileRowBits + kCellBits;
}

void DepthBand::draw(int firstRow, int endRow, int margin,
                     const std::vector<std::uint32_t>& instances, Bands& bands) {
  first_ = firstRow * kSamples - margin;
  end_ = endRow * kSamples + margin;
  samples_.assign(static_cast<std::size_t>(end_ - first_) * static_cast<std::size_t>(columns_), {});
  clear(tiles_);
  clear(cells_);
  for (const std::uint32_t i : instances) {
    if (!surfaces_.isBetween(i, first_ * kStep, end_ * kStep)) continue;
    bands.check();
    const ScreenBox& box = surfaces_.boxOf(i);
    if (isBehind(box, roundingAt(box.nearest))) continue;
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
  for (int row = first_; row < end_; row += kTileRows) {
    for (int column = 0; column < columns_; column += kTileColumns) {
      if (tiles_.tiles[tileOf(tiles_, column, row)].writes > 0) findLeast(column, row);
    }
  }
}

std::vector<std::uint32_t> DepthBand::instancesIn(int firstRow, int endRow) const {
  std::vector<bool> isIn(surfaces_.count(), false);
  std::uint32_t last = surfaces_.count();
  const auto end = samples_.begin() + static_cast<std::ptrdiff_t>(index(0, endRow * kSamples));
  for (auto each = samples_.begin() + static_cast<std::ptrdiff_t>(index(0, firstRow * kSamples));
       each != end; ++each) {
    if (each->isEmpty() || each->instance == last) continue;
    last = each->instance;
    isIn[last] = true;
  }
  std::vector<std::uint32_t> instances;
  for (const std::uint32_t i : surfaces_.nearestFirst()) {
    if (isIn[i]) instances.push_back(i);
  }
  instances.shrink_to_fit();
  return instances;
}

bool DepthBand::isBehind(const ScreenBox& box, double distance) const {
  // One more on each side than those next to the box, for the rounding.
  return isNearer({std::max(firstSample(box.left, 0, columns_) - 2, 0),
                   std::min(endSample(box.right, 0, columns_) + 2, columns_),
                   std::max(firstSample(box.top, first_, end_) - 2, first_),
                   std::min(endSample(box.bottom, first_, end_) + 2, end_)},
                  box.nearest + distance);
}

bool DepthBand::isBehind(const ScreenPoint& a, const ScreenPoint& b, double distance) const {
  // Pieces that are in a few tiles at the most.
  const double columns = std::fabs(b.x - a.x) * kSamples / kTileColumns;
  const double rows = std::fabs(b.y - a.y) * kSamples / kTileRows;
  const int pieces = static_cast<int>(std::min(2.0 * std::max(columns, rows), 1e6)) + 1;
  ScreenPoint start = a;
  for (int i = 1; i <= pieces; ++i) {
    const ScreenPoint end = between(a, b, static_cast<double>(i) / pieces);
    if (!isPieceBehind(start, end, distance)) return false;
    start = end;
  }
  return true;
}

bool DepthBand::isPieceBehind(const ScreenPoint& a, const ScreenPoint& b, double distance) const {
  // One more on each side than those next to the line, for the rounding.
  const auto [low, high] = std::minmax(a.x, b.x);
  const auto [top, bottom] = std::minmax(a.y, b.y);
  const Area around{firstSample(low, -2, columns_ + 2) - 2, endSample(high, -2, columns_ + 2) + 2,
                    firstSample(top, first_ - 2, end_ + 2) - 2,
                    endSample(bottom, first_ - 2, end_ + 2) + 2};
  if (around.left < 0 || around.right > columns_ || around.top < first_ || around.bottom > end_) {
    return false;
  }
  const auto isNearer = [&](const Tile& tile) {
    if (static_cast<double>(tile.least) >= std::max(a.z, b.z) + distance) return true;
    for (std::size_t i = 0; i < tile.coverCount; ++i) {
      const ScreenPlane& plane = tile.covers[i];
      // As far as two samples away from the line.
      const double most =
          distance + roundingAt(a.z) + roundingAt(b.z) + plane.steepness() * 2.0 * kStep;
      if (plane.depthAt(a.x, a.y) >= a.z + most && plane.depthAt(b.x, b.y) >= b.z + most)
        return true;
    }
    return false;
  };
  for (int row = around.top; row < around.bottom; row = areaOf(tiles_, 0, row).bottom) {
    for (int column = around.left; column < around.right;
         column = areaOf(tiles_, column, row).right) {
      if (!isNearer(tiles_.tiles[tileOf(tiles_, column, row)])) return false;
    }
  }
  return true;
}

// Whether all samples of an area are so near or nearer.
bool DepthBand::isNearer(const Area& area, double depth) const {
  const auto isTile = [&](const Tile& tile) { return static_cast<double>(tile.least) >= depth; };
  for (int row = area.top; row < area.bottom; row = areaOf(cells_, 0, row).bottom) {
    for (int column = area.left; column < area.right;) {
      const Area cell = areaOf(cells_, column, row);
      if (!isTile(cells_.tiles[tileOf(cells_, column, row)])) {
        for (int y = row; y < std::min(cell.bottom, area.bottom);) {
          const int endRow = areaOf(tiles_, column, y).bottom;
          for (int x = column; x < std::min(cell.right, area.right);) {
            if (!isTile(tiles_.tiles[tileOf(tiles_, x, y)])) return false;
            x = areaOf(tiles_, x, y).right;
          }
          y = endRow;
        }
      }
      column = cell.right;
    }
  }
  return true;
}

void DepthBand::draw(const ScreenTriangle& t, std::uint32_t instance, std::uint32_t triangle) {
  const auto [top, bottom] = std::minmax({t[0].y, t[1].y, t[2].y});
  const auto [farthest, nearest] = std::minmax({t[0].z, t[1].z, t[2].z});
  const ScreenPlane plane(t);
  const Face face{t, plane, farthest, nearest, instance, triangle, isEven(t, plane)};
  const int end = endSample(bottom, first_, end_);
  for (int row = firstSample(top, first_, end_); row < end;) {
    const int endRow = std::min(end, areaOf(cells_, 0, row).bottom);
    // For a few tiles cells are no gain.
    if (endRow - row <= 2 * kTileRows) {
      drawInCells(face, nullptr, row, endRow);
    } else {
      const Area area = open(cells_, nullptr, face, row, endRow);
      if (area.left < area.right) drawInCells(face, &cells_, row, endRow);
    }
    row = endRow;
  }
}

// In a row of cells; of some only those that are open.
void DepthBand::drawInCells(const Face& face, const Tiling* cells, int firstRow, int endRow) {
  for (int row = firstRow; row < endRow;) {
    const int endOfTiles = std::min(endRow, areaOf(tiles_, 0, row).bottom);
    const Area area = open(tiles_, cells, face, row, endOfTiles);
    if (area.left < area.right) {
      for (int each = row; each < endOfTiles; ++each) drawRow(face, each, area);
    }
    row = endOfTiles;
  }
}

// From the first to the last place that a face has in all of these rows; from the second on, if
// they are no whole row of tiles, or too few to ask.
std::pair<double, double> DepthBand::wholeReach(const Tiling& tiling, const Face& face,
                                                int firstRow, int endRow) const {
  const Area rows = areaOf(tiling, 0, firstRow);
  if (!face.isEven || rows.top != firstRow || rows.bottom != endRow) return {1.0, 0.0};
  const auto [left1, right1] = face.reachAt(centreOf(firstRow));
  const auto [left2, right2] = face.reachAt(centreOf(endRow - 1));
  // One less on either side, for the rounding.
  return {std::max(left1, left2) + kStep, std::min(right1, right2) - kStep};
}

// Finds where in a row of tiles these rows of a face may be seen: the area from the first tile to
// the last, which is empty if it is hidden altogether. With cells only in those that are open.
DepthBand::Area DepthBand::open(Tiling& tiling, const Tiling* cells, const Face& face, int firstRow,
                                int endRow) {
  const double top = centreOf(firstRow);
  const double bottom = centreOf(endRow - 1);
  const auto [left, right] = face.reachBetween(top, bottom);
  const auto [covered, endOfCovered] = wholeReach(tiling, face, firstRow, endRow);
  // One more on either side, for the rounding.
  const int end = std::min(endSample(right, 0, columns_) + 1, columns_);
  Area opened{columns_, 0, firstRow, endRow};
  for (int begin = std::max(firstSample(left, 0, columns_) - 1, 0); begin < end;) {
    const Area whole = areaOf(tiling, begin, firstRow);
    const Area area{begin, std::min(end, whole.right), firstRow, endRow};
    Tile& tile = tiling.tiles[tileOf(tiling, begin, firstRow)];
    const bool isOpen = (cells == nullptr || cells->isOpenAt(begin)) && !face.isHidden(tile, area);
    tiling.isOpen[static_cast<std::size_t>(begin >> tiling.columnBits)] = isOpen ? 1 : 0;
    if (isOpen) {
      opened.left = std::min(opened.left, area.left);
      opened.right = area.right;
      const bool isWhole =
          centreOf(whole.left) >= covered && centreOf(whole.right - 1) <= endOfCovered;
      if (isWhole) face.cover(tile, whole);
    }
    begin = area.right;
  }
  return opened;
}

void DepthBand::drawRow(const Face& face, int row, const Area& area) {
  const auto [left, right] = face.reachAt(centreOf(row));
  const int end = endSample(right, area.left, area.right);
  for (int begin = firstSample(left, area.left, area.right); begin < end;) {
    const int endOfSpan = std::min(end, (begin / kTileColumns + 1) * kTileColumns);
    if (tiles_.isOpenAt(begin)) {
      Tile& tile = tiles_.tiles[tileOf(tiles_, begin, row)];
      if (!face.isBehindAll(tile, {begin, endOfSpan, row, row + 1})) {
        drawSpan(face, row, begin, endOfSpan, tile);
      }
    }
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
  if (tile.writes >= kTileColumns * kTileRows) findLeast(begin, row);
}

void DepthBand::clear(Tiling& tiling) const {
  const auto across = static_cast<std::size_t>(tilesOf(columns_, tiling.columnBits));
  tiling.tiles.assign(across * static_cast<std::size_t>(tilesOf(end_ - first_, tiling.rowBits)),
                      {});
  tiling.isOpen.assign(across, false);
}

// The tile in which this sample is.
std::size_t DepthBand::tileOf(const Tiling& tiling, int column, int row) const {
  return (static_cast<std::size_t>(row - first_) >> tiling.rowBits) * tiling.isOpen.size() +
         (static_cast<std::size_t>(column) >> tiling.columnBits);
}

// Its samples.
DepthBand::Area DepthBand::areaOf(const Tiling& tiling, int column, int row) const {
  const int left = (column >> tiling.columnBits) << tiling.columnBits;
  const int top = first_ + (((row - first_) >> tiling.rowBits) << tiling.rowBits);
  return {left, std::min(left + (1 << tiling.columnBits), columns_), top,
          std::min(top + (1 << tiling.rowBits), end_)};
}

// Of the tile in which this sample is, and of its cell.
void DepthBand::findLeast(int column, int row) {
  const Area area = areaOf(tiles_, column, row);
  Tile& tile = tiles_.tiles[tileOf(tiles_, column, row)];
  tile.least = samples_[index(area.left, area.top)].depth;
  tile.lastInstance = 0;
  tile.writes = 0;
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) {
      const DepthSample& sample = samples_[index(x, y)];
      if (sample.depth > tile.least) continue;
      if (sample.depth < tile.least) tile.lastInstance = 0;
      tile.least = sample.depth;
      tile.lastInstance = std::max(tile.lastInstance, sample.instance);
    }
  }
  findLeastOfCell(column, row);
}

void DepthBand::findLeastOfCell(int column, int row) {
  const Area area = areaOf(cells_, column, row);
  Tile& cell = cells_.tiles[tileOf(cells_, column, row)];
  cell.least = std::numeric_limits<float>::infinity();
  for (int y = area.top; y < area.bottom; y += kTileRows) {
    for (int x = area.left; x < area.right; x += kTileColumns) {
      const Tile& tile = tiles_.tiles[tileOf(tiles_, x, y)];
      if (tile.least > cell.least) continue;
      if (tile.least < cell.least) cell.lastInstance = 0;
      cell.least = tile.least;
      cell.lastInstance = std::max(cell.lastInstance, tile.lastInstance);
    }
  }
}

}  // namespace Vesk
