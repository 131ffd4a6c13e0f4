// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_UNITS_H
#define VESK_TOOLS_TAKEOFF_UNITS_H

#include <string>
#include <string_view>

#include "takeoff/Measures.h"

namespace VeskTool {

// What the numbers of a take-off are.
enum class Quantity { kSize, kAngle, kLength, kArea, kVolume, kWeight, kCount };

// Metric: mm, m, m2, m3, kg. Imperial: in, ft, ft2, ft3, lb.
class Units {
 public:
  explicit Units(bool isImperial) : isImperial_(isImperial) {}

  std::string_view name() const { return isImperial_ ? "imperial" : "metric"; }

  // "m2"; "" for a count.
  std::string_view of(Quantity quantity) const;

  // From mm, degrees, m, m2, m3 and kg. Sizes in inches are rounded to a ten-thousandth.
  double value(Quantity quantity, double metric) const;

  // For people, with the decimals that are of use; lengths in feet as 12'-6 1/2".
  std::string text(Quantity quantity, double metric) const;

  // "168.3", of a cone "219.1 x 168.3", of a duct "400 x 300", larger side first; ""
  // for what has no size.
  std::string sizeText(const Size& size) const;

 private:
  bool isImperial_;
};

// To the next sixteenth of an inch: 12'-6 1/2", 0'-0 1/16".
std::string feetAndInches(double metres);

}  // namespace VeskTool

#endif
