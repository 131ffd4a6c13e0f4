// SPDX-License-Identifier: MIT
#ifndef VESK_ARCENTRY_H
#define VESK_ARCENTRY_H

#include <array>
#include <cstdint>

namespace Vesk {

// An arc of a polyline or polygon, kept in mode 3 records only. Scaling
// multiplies the radius; the three integers are carried through unchanged.
struct ArcEntry {
  double radius = 0.0;
  std::array<std::int32_t, 3> values{};

  friend bool operator==(const ArcEntry&, const ArcEntry&) = default;
};

}  // namespace Vesk

#endif
