// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_PAINTER_H
#define VESK_DRAW_PAINTER_H

#include "draw/Drawing.h"
#include "draw/Picture.h"

namespace Vesk {

// How bright a face is with a unit normal n, in parts of its colour:
//
//     0.64 + 0.48 max(0, n . l)
//
// where the light l comes from the left, above and before: (-1, 2, 2) / 3 to the
// right, up and towards the eye. Above 1 the colour goes towards white by as much.
double brightnessOf(const StandardView& view, const GeVector& normal);
Colour shaded(const Colour& colour, double brightness);

// Paints a drawing: surfaces in the colours of their kinds if `hasFaces`, then
// lines, points and texts. Each pixel is the mean of kSamples by kSamples samples.
Picture paint(const Drawing& drawing, bool hasFaces);

}  // namespace Vesk

#endif
