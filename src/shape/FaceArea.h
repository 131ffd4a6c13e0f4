// SPDX-License-Identifier: MIT
#ifndef VESK_SHAPE_FACEAREA_H
#define VESK_SHAPE_FACEAREA_H

#include "vesk/GePoint.h"

namespace Vesk {

// The area of the bilinear face of four corners, straight along both pairs of sides,
// within 1e-10 of itself. A plane quadrangle with an inner corner counts as the face
// that its sides enclose.
double bilinearArea(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d);

// The area of a quadrangle: of its bilinear face or, with an inner corner, plane or
// not, of the two triangles that it is drawn as.
double quadrangleArea(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d);

}  // namespace Vesk

#endif
