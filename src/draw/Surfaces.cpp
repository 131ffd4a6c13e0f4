#include "draw/Surfaces.h"

#include <algorithm>
#include <cmath>

namespace Vesk {
namespace {

// Of the square of the longest side. What is thinner is seen from its edge.
constexpr double kThin = 1e-9;

double squareOf(const ScreenPoint& a, const ScreenPoint& b) {
  return (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
}

}  // namespace

bool facesEye(const ScreenTriangle& t) {
  const double longest =
      std::max({squareOf(t[0], t[1]), squareOf(t[1], t[2]), squareOf(t[2], t[0])});
  return doubleArea(t) > kThin * longest;
}

Surfaces::Surfaces(const Scene& scene, const Projection& projection)
    : scene_(scene), projection_(projection) {
  std::vector<ScreenPoint> points;
  for (std::uint32_t i = 0; i < count(); ++i) {
    project(i, points);
    const auto [top, bottom] =
        std::minmax_element(points.begin(), points.end(),
                            [](const ScreenPoint& a, const ScreenPoint& b) { return a.y < b.y; });
    tops_.push_back(points.empty() ? 0.0 : top->y);
    bottoms_.push_back(points.empty() ? 0.0 : bottom->y);
  }
}

void Surfaces::project(std::uint32_t instance, std::vector<ScreenPoint>& points) const {
  const PlacedProjection placed(projection_, scene_.instances[instance].placement);
  points.clear();
  for (const GePoint& p : meshOf(instance).positions) points.push_back(placed.point(p));
}

ScreenTriangle Surfaces::triangle(std::uint32_t instance, std::uint32_t triangle) const {
  const PlacedProjection placed(projection_, scene_.instances[instance].placement);
  const Mesh& mesh = meshOf(instance);
  const MeshTriangle& t = mesh.triangles[triangle];
  return {placed.point(mesh.positions[t[0]]), placed.point(mesh.positions[t[1]]),
          placed.point(mesh.positions[t[2]])};
}

}  // namespace Vesk
