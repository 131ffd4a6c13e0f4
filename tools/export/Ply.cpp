// SPDX-License-Identifier: MIT
#include <array>
#include <limits>
#include <vector>

#include "elements/Kinds.h"
#include "export/LittleEndian.h"
#include "export/Writers.h"
#include "terminal/Exit.h"
#include "text/Numbers.h"
#include "view/Palette.h"

namespace VeskTool {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 16;

class PlyWriter {
 public:
  PlyWriter(const Vesk::Scene& scene, TextSink& out) : scene_(scene), out_(out) {}

  LeftOut write(double millimetres) {
    std::uint64_t vertices = scene_.points.size();
    std::uint64_t faces = 0;
    std::uint64_t edges = 0;
    for (const Vesk::SceneInstance& instance : scene_.instances) {
      vertices += scene_.meshes[instance.mesh].positions.size();
      faces += scene_.meshes[instance.mesh].triangles.size();
    }
    for (const Vesk::SceneLine& line : scene_.lines) {
      vertices += line.count;
      edges += line.count - 1;
    }
    if (vertices > std::numeric_limits<std::uint32_t>::max()) {
      throw Failure(Exit::kOutput, "more corners than a PLY file can count", "--quality draft");
    }
    heading(millimetres, vertices, faces, edges);
    for (const Vesk::SceneInstance& instance : scene_.instances) {
      for (const GePoint& p : scene_.meshes[instance.mesh].positions) {
        vertex(instance.placement.point(p), instance.element);
      }
    }
    for (const Vesk::ScenePoint& point : scene_.points) vertex(point.position, point.element);
    for (const Vesk::SceneLine& line : scene_.lines) {
      for (std::size_t i = 0; i < line.count; ++i) {
        vertex(scene_.lineVertices[line.first + i], line.element);
      }
    }
    std::uint32_t first = 0;
    for (const Vesk::SceneInstance& instance : scene_.instances) {
      const Vesk::Mesh& mesh = scene_.meshes[instance.mesh];
      for (const Vesk::MeshTriangle& triangle : mesh.triangles) {
        bytes_ += '\3';
        for (const std::uint32_t corner : triangle) appendU32(bytes_, first + corner);
        flush();
      }
      first += static_cast<std::uint32_t>(mesh.positions.size());
    }
    first += static_cast<std::uint32_t>(scene_.points.size());
    for (const Vesk::SceneLine& line : scene_.lines) {
      for (std::size_t i = 1; i < line.count; ++i, ++first) {
        appendU32(bytes_, first);
        appendU32(bytes_, first + 1);
      }
      ++first;
      flush();
    }
    out_.write(bytes_);
    LeftOut left;
    left.texts = scene_.texts.size();
    return left;
  }

 private:
  void heading(double millimetres, std::uint64_t vertices, std::uint64_t faces,
               std::uint64_t edges) {
    bytes_ = "ply\nformat binary_little_endian 1.0\ncomment vesk " VESK_VERSION "\ncomment unit: " +
             shortest(millimetres) + " mm\ncomment offset: " + pointText(GePoint(scene_.offset)) +
             "\nelement vertex " + std::to_string(vertices) +
             "\nproperty float x\nproperty float y\nproperty float z\n"
             "property uchar red\nproperty uchar green\nproperty uchar blue\nelement face " +
             std::to_string(faces) + "\nproperty list uchar uint vertex_indices\n";
    if (edges > 0) {
      bytes_ += "element edge " + std::to_string(edges) +
                "\nproperty uint vertex1\nproperty uint vertex2\n";
    }
    bytes_ += "end_header\n";
  }

  void vertex(const GePoint& p, std::uint32_t element) {
    for (const double d : {p.x, p.y, p.z}) appendF32(bytes_, static_cast<float>(d));
    const Vesk::Colour& colour = colours_[scene_.elements[element].kind];
    for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
      bytes_ += static_cast<char>(part);
    }
    flush();
  }

  void flush() {
    if (bytes_.size() < kBlock) return;
    out_.write(bytes_);
    bytes_.clear();
  }

  const Vesk::Scene& scene_;
  TextSink& out_;
  std::vector<Vesk::Colour> colours_ = kindColours();
  std::string bytes_;
};

}  // namespace

LeftOut writePly(const Vesk::Scene& scene, double millimetres, TextSink& out) {
  return PlyWriter(scene, out).write(millimetres);
}

}  // namespace VeskTool
