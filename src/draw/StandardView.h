// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_STANDARDVIEW_H
#define VESK_DRAW_STANDARDVIEW_H

#include <optional>
#include <span>
#include <string_view>

#include "vesk/GeVector.h"

namespace Vesk {

// Where a drawing is seen from: the directions of the model that go to the right,
// upwards and towards the eye. Of unit length, perpendicular, right-handed.
//
// Z is up. "front" looks along y, "right" against x, "top" has y upwards, "bottom"
// has y downwards, so that x goes to the right in front, top and bottom. "iso"
// stands between front, right and top.
struct StandardView {
  std::string_view name;
  GeVector right;
  GeVector up;
  GeVector toEye;
};

// iso, top, bottom, front, back, left, right.
std::span<const StandardView> standardViews();

// The one of this name, if there is one.
std::optional<StandardView> standardView(std::string_view name);

}  // namespace Vesk

#endif
