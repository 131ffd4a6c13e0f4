// SPDX-License-Identifier: MIT
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "export/LittleEndian.h"
#include "export/Writers.h"
#include "terminal/Exit.h"

namespace VeskTool {
namespace {

using Corner = std::array<float, 3>;

constexpr std::size_t kHeading = 80;
constexpr std::size_t kBlock = std::size_t{1} << 16;

// From corners of 32 bits, as readers calculate it.
GeVector normalOf(const Corner& a, const Corner& b, const Corner& c) {
  const GePoint p(a[0], a[1], a[2]);
  const GeVector across = cross(GePoint(b[0], b[1], b[2]) - p, GePoint(c[0], c[1], c[2]) - p);
  const double length = across.length();
  return length > 0.0 ? across / length : across;
}

class StlWriter {
 public:
  StlWriter(const Vesk::Scene& scene, TextSink& out) : scene_(scene), out_(out) {}

  LeftOut write() {
    left_.points = scene_.points.size();
    left_.lines = scene_.lines.size();
    left_.texts = scene_.texts.size();
    // The count stands before the triangles.
    std::uint64_t count = 0;
    forEachTriangle([&](const Corner&, const Corner&, const Corner&) { ++count; });
    if (count > std::numeric_limits<std::uint32_t>::max()) {
      throw Failure(Exit::kOutput, "more triangles than an STL file can count");
    }
    bytes_ = "vesk " VESK_VERSION ", binary STL";
    bytes_.resize(kHeading, ' ');
    appendU32(bytes_, static_cast<std::uint32_t>(count));
    left_.triangles = 0;
    forEachTriangle([&](const Corner& a, const Corner& b, const Corner& c) { add(a, b, c); });
    out_.write(bytes_);
    return left_;
  }

 private:
  template <class Use>
  void forEachTriangle(Use use) {
    std::vector<Corner> corners;
    for (const Vesk::SceneInstance& instance : scene_.instances) {
      const Vesk::Mesh& mesh = scene_.meshes[instance.mesh];
      corners.clear();
      for (const GePoint& local : mesh.positions) {
        const GePoint p = instance.placement.point(local);
        corners.push_back(
            {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)});
      }
      for (const Vesk::MeshTriangle& t : mesh.triangles) {
        const Corner& a = corners[t[0]];
        const Corner& b = corners[t[1]];
        const Corner& c = corners[t[2]];
        // Where two corners meet, the triangle beside that edge goes too, and the
        // surface stays closed.
        if (a == b || b == c || c == a) {
          ++left_.triangles;
        } else {
          use(a, b, c);
        }
      }
    }
  }

  void add(const Corner& a, const Corner& b, const Corner& c) {
    const GeVector normal = normalOf(a, b, c);
    for (const double d : {normal.x, normal.y, normal.z}) appendF32(bytes_, static_cast<float>(d));
    for (const Corner* corner : {&a, &b, &c}) {
      for (const float f : *corner) appendF32(bytes_, f);
    }
    appendU16(bytes_, 0);
    if (bytes_.size() < kBlock) return;
    out_.write(bytes_);
    bytes_.clear();
  }

  const Vesk::Scene& scene_;
  TextSink& out_;
  std::string bytes_;
  LeftOut left_;
};

}  // namespace

LeftOut writeStl(const Vesk::Scene& scene, TextSink& out) { return StlWriter(scene, out).write(); }

}  // namespace VeskTool
