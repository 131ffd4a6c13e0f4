// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_DEPTHBAND_H
#define VESK_DRAW_DEPTHBAND_H

#include <cstdint>
#include <limits>
#include <vector>

#include "draw/Bands.h"
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
// What is nearest to the eye is drawn first, and a tile of samples knows a depth that
// none of them is behind: what lies behind that is left out as a whole.
class DepthBand {
 public:
  // `width` in pixels.
  DepthBand(const Surfaces& surfaces, int width);

  // Draws all surfaces between these rows of pixels, with `margin` more samples
  // above and below; `bands` is asked on the way whether to go on.
  void draw(int firstRow, int endRow, int margin, Bands& bands);

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

  struct Tile {
    float least = -std::numeric_limits<float>::infinity();  // no sample is behind it
    std::uint32_t lastInstance = 0;                         // of the samples at that depth
    int writes = 0;                                         // since these were found out
  };
  struct Face;

  Tile& tileAt(int column, int row);
  void draw(const ScreenTriangle& corners, std::uint32_t instance, std::uint32_t triangle);
  bool isHidden(const Face& face, int firstRow, int endRow);
  void drawRow(const Face& face, int row);
  void drawRow(const Face& face, int row, int begin, int end);
  void drawSpan(const Face& face, int row, int begin, int end, Tile& tile);
  void findLeast(Tile& tile, int column, int row) const;

  const Surfaces& surfaces_;
  int columns_;
  int first_ = 0;
  int end_ = 0;
  std::uint64_t comparisons_ = 0;
  std::vector<DepthSample> samples_;
  std::vector<Tile> tiles_;
  std::vector<ScreenPoint> points_;
};

}  // namespace Vesk

#endif
