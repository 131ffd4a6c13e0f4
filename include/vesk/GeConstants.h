// SPDX-License-Identifier: MIT
#ifndef VESK_GECONSTANTS_H
#define VESK_GECONSTANTS_H

#include <limits>

#include <vesk/GePoint.h>
#include <vesk/GeVector.h>

// The read-only constants of the kernel. All are constant-initialised: they
// have their values before any code of the library runs.

namespace Vesk {

inline constexpr GeVector kNullVector{0.0, 0.0, 0.0};
inline constexpr GeVector kUnitX{1.0, 0.0, 0.0};
inline constexpr GeVector kUnitY{0.0, 1.0, 0.0};
inline constexpr GeVector kUnitZ{0.0, 0.0, 1.0};

// Mark a point or a vector that is not set.
inline constexpr GePoint kUndefinedPoint{std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::infinity()};
inline constexpr GeVector kUndefinedVector{std::numeric_limits<double>::infinity(),
                                           std::numeric_limits<double>::infinity(),
                                           std::numeric_limits<double>::infinity()};

// The double nearest to pi, which is acos(-1.0).
inline constexpr double kPi = 3.14159265358979323846;

// Vectors up to this length have no direction: normalisation, null test and
// parallel test of the primitives and of the frame matrix.
inline constexpr double kDirectionTolerance = 2.2e-15;

// Degenerate normals and perpendicular axes of the circle extents.
inline constexpr double kCoarseTolerance = 1e-10;

}  // namespace Vesk

#endif
