// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_SVG_H
#define VESK_TOOLS_VIEW_SVG_H

#include <string_view>

#include "draw/Drawing.h"
#include "terminal/Streams.h"

namespace VeskTool {

// Writes a drawing as SVG: paths for lines, circles for points, text for texts,
// a group for each class of them. `title` is what it is called, in any encoding.
//
//   <g id="outlines" ...>   nothing, or something far behind, on one side
//   <g id="edges" ...>      between two faces
//   <g id="lines" ...>      polylines, in the colours of their kinds
//   <g id="points">  <g id="texts">  <g id="scale">
//
// Each path holds the lines of one element. Coordinates have two decimals.
void writeSvg(TextSink& to, const Vesk::Drawing& drawing, std::string_view title);

// Text for XML: UTF-8, whatever it was; what XML does not allow is U+FFFD.
std::string xmlText(std::string_view text);

}  // namespace VeskTool

#endif
