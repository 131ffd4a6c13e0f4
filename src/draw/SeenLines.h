// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_SEENLINES_H
#define VESK_DRAW_SEENLINES_H

#include <cstdint>
#include <functional>
#include <vector>

#include "draw/Projection.h"
#include "draw/Surfaces.h"

namespace Vesk {

enum class LineWeight {
  kOutline,  // nothing, or something far behind, on one side of it
  kEdge,     // between two faces
  kLine,     // of a polyline
};

// A line of a drawing, as far as it is seen.
struct Stroke {
  std::vector<ScreenPoint> points;  // two at least
  LineWeight weight = LineWeight::kEdge;
  std::uint32_t element = 0;
};

// What is to be seen of the lines of a scene: strokes without hidden parts, in
// the order of the elements, each place once; for each point and text of the
// scene whether it is seen. A text is seen if its start or its middle is.
struct SeenLines {
  std::vector<Stroke> strokes;
  std::vector<bool> points;
  std::vector<bool> texts;

  // Of each band, the instances that are seen in it, in the order of nearestFirst().
  std::vector<std::vector<std::uint32_t>> instances;
};

// In a drawing of this size. `lineWidth` in pixels says how far from a line the
// drawing must fall back to make it an outline. `poll` as in DrawingStyle.
SeenLines findSeenLines(const Surfaces& surfaces, int width, int height, double lineWidth,
                        const std::function<void()>& poll = {});

}  // namespace Vesk

#endif
