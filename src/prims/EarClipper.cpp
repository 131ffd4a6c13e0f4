#include "prims/EarClipper.h"

#include <numeric>

namespace Vesk {
namespace {

GeVector newellNormal(std::span<const GePoint> p) {
  GeVector normal;
  for (std::size_t i = 0; i < p.size(); ++i) {
    normal += cross(p[i] - p[0], p[(i + 1) % p.size()] - p[0]);
  }
  return normal;
}

}  // namespace

std::vector<EarTriangle> clipEars(std::span<const GePoint> polygon) {
  std::vector<EarTriangle> ears;
  const GeVector normal = newellNormal(polygon);
  const auto turn = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    return triple(normal, polygon[b] - polygon[a], polygon[c] - polygon[a]);
  };
  std::vector<std::uint32_t> ring(polygon.size());
  std::iota(ring.begin(), ring.end(), 0U);
  const auto isEar = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    if (turn(a, b, c) < 0.0) return false;
    for (const std::uint32_t q : ring) {
      if (q == a || q == b || q == c) continue;
      if (turn(a, b, q) > 0.0 && turn(b, c, q) > 0.0 && turn(c, a, q) > 0.0) return false;
    }
    return true;
  };
  for (bool cut = true; cut && ring.size() >= 3;) {
    cut = false;
    for (std::size_t i = 0; i < ring.size() && !cut; ++i) {
      const std::size_t n = ring.size();
      const EarTriangle ear{ring[(i + n - 1) % n], ring[i], ring[(i + 1) % n]};
      if (!isEar(ear[0], ear[1], ear[2])) continue;
      ears.push_back(ear);
      ring.erase(ring.begin() + static_cast<std::ptrdiff_t>(i));
      cut = true;
    }
  }
  return ears;
}

}  // namespace Vesk
