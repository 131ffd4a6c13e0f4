// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_OCCLUSION_H
#define VESK_DRAW_OCCLUSION_H

#include <array>
#include <cstdint>
#include <vector>

#include "draw/DepthBand.h"
#include "draw/MeshLines.h"
#include "draw/Surfaces.h"

namespace Vesk {

// A part of a line, from 0 at its start to 1 at its end.
struct LinePart {
  double from = 0.0;
  double to = 1.0;
};

// The triangles that a line belongs to, which never hide it.
struct OwnTriangles {
  std::uint32_t instance = 0;
  std::uint32_t triangle1 = kNoTriangle;
  std::uint32_t triangle2 = kNoTriangle;

  bool has(const DepthSample& sample) const {
    return instance == sample.instance &&
           (triangle1 == sample.triangle || triangle2 == sample.triangle);
  }
};

// What surfaces leave of lines and points within a band.
//
// The samples along a line tell which triangles are nearest to the eye there; the
// parts that these hide are then calculated, so that the result does not depend
// on where the samples lie. What is less than kBehind behind a surface lies on it.
class Occlusion {
 public:
  static constexpr double kBehind = 0.05;  // pixels

  // Both outlive it.
  Occlusion(const Surfaces& surfaces, const DepthBand& band) : surfaces_(surfaces), band_(band) {}

  // What is to be seen of this part of the line from a to b, in their order, in
  // place of what `seen` held.
  void seenParts(const ScreenPoint& a, const ScreenPoint& b, const LinePart& part,
                 const OwnTriangles& own, std::vector<LinePart>& seen);

  // Whether surfaces hide all lines that are in the box. What they hide of some of them
  // only seenParts() tells.
  bool isHidden(const ScreenBox& box) const;
  bool isHidden(const ScreenPoint& a, const ScreenPoint& b) const;

  bool isSeen(const ScreenPoint& p) const;

  // Whether the drawing falls back or ends on one side of the line through p
  // towards a point, `aside` pixels away.
  bool isOutline(const ScreenPoint& p, const ScreenPoint& towards, double aside) const;

 private:
  void findNearest(const ScreenPoint& a, const ScreenPoint& b, const LinePart& part,
                   const OwnTriangles& own);
  void dropWellBehind(const ScreenPoint& a, const ScreenPoint& b, std::vector<LinePart>& seen);
  bool isWellBehind(const ScreenPoint& p) const;
  ScreenTriangle triangleOf(const DepthSample& sample) const;

  const Surfaces& surfaces_;
  const DepthBand& band_;
  std::vector<DepthSample> nearest_;
  std::vector<LinePart> left_;
};

}  // namespace Vesk

#endif
