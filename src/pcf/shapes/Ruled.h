// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_SHAPES_RULED_H
#define VESK_PCF_SHAPES_RULED_H

#include <vector>

#include <vesk/Red.h>

namespace Vesk::Pcf {

// A round body ruled between two circles: an oblique cylinder or cone if both
// are parallel. Normals are unit vectors, both towards the second circle.
struct RuledBody {
  GePoint centre1;
  GeVector normal1;
  double radius1;
  GePoint centre2;
  GeVector normal2;
  double radius2;
};

// The even number of corners, 8 or more, with which a circle of this radius keeps
// its chords within the tolerance: r (1 - cos(pi / n)) <= tolerance. Never above
// 1000.
int facets(double radius, double tolerance);

// The body as wedges, half as many as it has facets: each lies between the axis
// and two facets, corners 0, 1, 3 and 2 being the centre and three neighbours on
// the rim of the first circle, and the same on the second. The corners lie on both
// circles. Neighbouring wedges share their faces.
std::vector<Red> wedges(const RuledBody& body, double tolerance);

}  // namespace Vesk::Pcf

#endif
