// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_DEPTHBAND_H
#define VESK_DRAW_DEPTHBAND_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "draw/Bands.h"
#include "draw/ScreenPlane.h"
#include "draw/Surfaces.h"

namespace Vesk {

// Samples for a pixel, each way.
inline constexpr int kSamples = 4;

// Which triangle is nearest to the eye.
struct DepthSample {
  float depth = -std::numeric_limits<float>::infinity();
  std::uint32_t instance = 0;
  std::uint32_t triangle = std::numeric_limits<std::uint32_t>::max();  // none

  bool isEmpty() const { return triangle == std::numeric_limits<std::uint32_t>::max(); }
};

// A depth buffer for some rows of a drawing, so that memory does not grow with
// its height. Sample (i, j) lies at ((i + 0.5) / kSamples, (j + 0.5) / kSamples).
// Of two surfaces at one depth the one of the first instance is taken.
//
// What is nearest to the eye is drawn first. A tile of samples knows a depth that none of
// them is behind, and a few faces that cover all of it: what lies behind one of these is
// left out as a whole. So does a cell of several tiles.
class DepthBand {
 public:
  // `width` in pixels.
  DepthBand(const Surfaces& surfaces, int width);

  // Draws all surfaces between these rows of pixels, with `margin` more samples
  // above and below; `bands` is asked on the way whether to go on.
  void draw(int firstRow, int endRow, int margin, Bands& bands) {
    draw(firstRow, endRow, margin, surfaces_.nearestFirst(), bands);
  }

  // Of these instances alone, which are in the order of nearestFirst().
  void draw(int firstRow, int endRow, int margin, const std::vector<std::uint32_t>& instances,
            Bands& bands);

  // The instances that have a sample in these rows of pixels, in the order of nearestFirst().
  std::vector<std::uint32_t> instancesIn(int firstRow, int endRow) const;

  // Whether all samples of the band in the box and next to it are a surface's that is
  // nearer to the eye, by this distance or more, than anything in the box.
  bool isBehind(const ScreenBox& box, double distance) const;

  // The same of the samples next to a line. False if some are not in the band, and where
  // only single samples would tell.
  bool isBehind(const ScreenPoint& a, const ScreenPoint& b, double distance) const;

  // How many samples were compared with a surface so far.
  std::uint64_t comparisons() const { return comparisons_; }

  int columns() const { return columns_; }  // samples
  int firstSampleRow() const { return first_; }
  int endSampleRow() const { return end_; }

  // Null outside of the band.
  const DepthSample* at(int column, int row) const {
    if (column < 0 || column >= columns_ || row < first_ || row >= end_) return nullptr;
    return &samples_[index(column, row)];
  }

 private:
  std::size_t index(int column, int row) const {
    return static_cast<std::size_t>(row - first_) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column);
  }

  // Faces that reach over all samples of a tile; each is somewhere before the others.
  static constexpr std::size_t kCovers = 3;

  struct Tile {
    float least = -std::numeric_limits<float>::infinity();  // no sample is behind it
    std::uint32_t lastInstance = 0;                         // of the samples at that depth
    int writes = 0;                                         // since these were found out
    std::size_t coverCount = 0;
    std::array<ScreenPlane, kCovers> covers;
  };

  // Samples in columns and rows.
  struct Area {
    int left;
    int right;  // behind the last one
    int top;
    int bottom;
  };

  // The band in tiles of one size, from left to right and then down.
  struct Tiling {
    int columnBits = 0;  // samples of a tile, as powers of two
    int rowBits = 0;
    std::vector<Tile> tiles;
    std::vector<char> isOpen;  // of one row of tiles: where the face that is drawn may be seen

    bool isOpenAt(int column) const {
      return isOpen[static_cast<std::size_t>(column) >> columnBits] != 0;
    }
  };

  struct Face;

  void clear(Tiling& tiling) const;
  std::size_t tileOf(const Tiling& tiling, int column, int row) const;
  Area areaOf(const Tiling& tiling, int column, int row) const;
  bool isNearer(const Area& area, double depth) const;
  bool isPieceBehind(const ScreenPoint& a, const ScreenPoint& b, double distance) const;
  void draw(const ScreenTriangle& corners, std::uint32_t instance, std::uint32_t triangle);
  void drawInCells(const Face& face, const Tiling* cells, int firstRow, int endRow);
  std::pair<double, double> wholeReach(const Tiling& tiling, const Face& face, int firstRow,
                                       int endRow) const;
  Area open(Tiling& tiling, const Tiling* cells, const Face& face, int firstRow, int endRow);
  void drawRow(const Face& face, int row, const Area& area);
  void drawSpan(const Face& face, int row, int begin, int end, Tile& tile);
  void findLeast(int column, int row);
  void findLeastOfCell(int column, int row);

  const Surfaces& surfaces_;
  int columns_;
  int first_ = 0;
  int end_ = 0;
  std::uint64_t comparisons_ = 0;
  std::vector<DepthSample> samples_;
  Tiling tiles_;
  Tiling cells_;
  std::vector<ScreenPoint> points_;
};

}  // namespace Vesk

#endif
