// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_SIZES_H
#define VESK_PCF_SIZES_H

namespace Vesk::Pcf {

// A nominal size of pipe.
struct PipeSize {
  double inches;   // NPS
  double dn;       // the same in millimetres, as it is called
  double outside;  // diameter, millimetres, ASME B36.10
};

// The size of this DN exactly; null if there is none.
const PipeSize* sizeOfDn(double dn);

// The size whose NPS is within the tolerance (inches) of this; null if there is none.
const PipeSize* sizeOfNps(double inches, double tolerance);

// The distance (millimetres) to the nearest outside diameter of a pipe of ASME B36.10
// or EN 10220 series 1.
double distanceToOutside(double diameter);

}  // namespace Vesk::Pcf

#endif
