// SPDX-License-Identifier: MIT
#include "check/Supports.h"

#include <cmath>

#include "distance/BoxTree.h"
#include "vesk/Extents.h"

namespace VeskTool {

using namespace Vesk;

void Supports::add(const Geo& first, const std::string& kind, std::uint64_t line) {
  GePoint at;
  first.centroid(at);
  if (std::isfinite(at.x) && std::isfinite(at.y) && std::isfinite(at.z))
    supports_.push_back({at, line, kind});
}

void Supports::find(double reach, const std::function<void(const SupportFault&)>& take) const {
  std::vector<Extents> boxes;
  boxes.reserve(supports_.size());
  for (const Support& support : supports_) boxes.emplace_back(support.at, support.at);
  const BoxTree tree(boxes);
  for (std::uint32_t i = 0; i < supports_.size(); ++i) {
    const Support& support = supports_[i];
    tree.forEachNear(boxes[i], reach, [&](std::uint32_t k) {
      const Support& other = supports_[k];
      const double apart = distance(support.at, other.at);
      if (k >= i || other.kind != support.kind || apart > reach) return true;
      take({support.at, support.line, other.line, support.kind, apart});
      return false;
    });
  }
}

}  // namespace VeskTool
