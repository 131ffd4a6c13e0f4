// SPDX-License-Identifier: MIT
#include "tiles/DetailSum.h"

#include <algorithm>
#include <cmath>

namespace VeskTool {
namespace {

// Of the error 1: sizes from 1e-18 to 1e20 have a level of their own.
constexpr int kMiddle = 120;

}  // namespace

double DetailSum::errorOf(std::size_t level) {
  return std::sqrt(std::ldexp(1.0, static_cast<int>(level) - kMiddle));
}

std::size_t DetailSum::levelOf(double length) {
  if (!(length > 0.0)) return 0;
  int exponent = 0;
  const double fraction = std::frexp(length, &exponent);
  int level = 2 * exponent + kMiddle;
  if (fraction == 0.5) {
    level -= 2;
  } else if (fraction * fraction <= 0.5) {
    level -= 1;
  }
  return static_cast<std::size_t>(std::clamp(level, 0, static_cast<int>(kLevels) - 1));
}

void DetailSum::add(const ElementDetail& detail) {
  const std::size_t gone = levelOf(detail.size);
  const std::size_t coarse = std::min(levelOf(detail.deviation), gone);
  fine_ += detail.fine;
  change_[coarse] += std::int64_t{detail.coarse} - std::int64_t{detail.fine};
  change_[gone] -= detail.coarse;
  leftOut_[gone] += detail.coarse;
}

std::uint64_t DetailSum::triangles(std::size_t level) const {
  auto sum = static_cast<std::int64_t>(fine_);
  for (std::size_t i = 0; i <= level; ++i) sum += change_[i];
  return static_cast<std::uint64_t>(sum);
}

std::size_t DetailSum::levelFor(std::uint64_t most) const {
  auto sum = static_cast<std::int64_t>(fine_);
  for (std::size_t level = 0; level < kLevels; ++level) {
    sum += change_[level];
    if (sum <= static_cast<std::int64_t>(most)) return level;
  }
  return kLevels - 1;
}

}  // namespace VeskTool
