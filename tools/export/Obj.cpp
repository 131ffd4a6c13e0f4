// SPDX-License-Identifier: MIT
#include <charconv>
#include <map>
#include <vector>

#include "export/Writers.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 16;

// The fewest digits that give the same 32 bits back; OBJ has no exponents in
// the eyes of some readers, so there are none below a million.
void appendFloat(std::string& to, double value) {
  const float rounded = static_cast<float>(value);
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, rounded == 0.0F ? 0.0F : rounded);
  to.append(text, end.ptr);
}

void appendCount(std::string& to, std::uint64_t value) {
  char text[24];
  to.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}

template <class Vector>
void appendLine(std::string& to, std::string_view word, const Vector& v) {
  to += word;
  for (const double d : {v.x, v.y, v.z}) {
    to += ' ';
    appendFloat(to, d);
  }
  to += '\n';
}

class ObjWriter {
 public:
  ObjWriter(const Vesk::Scene& scene, double millimetres, TextSink& out)
      : scene_(scene), out_(out) {
    text_ = "# vesk " VESK_VERSION "\n# unit: " + shortest(millimetres) +
            " mm\n# offset: " + pointText(GePoint(scene.offset)) + '\n';
  }

  LeftOut write() {
    for (const Vesk::SceneInstance& instance : scene_.instances) add(instance);
    for (const Vesk::ScenePoint& point : scene_.points) {
      begin(point.element);
      appendLine(text_, "v", point.position);
      text_ += "p ";
      appendCount(text_, ++positions_);
      text_ += '\n';
      flush();
    }
    for (const Vesk::SceneLine& line : scene_.lines) add(line);
    out_.write(text_);
    LeftOut left;
    left.texts = scene_.texts.size();
    return left;
  }

 private:
  void begin(std::uint32_t element) {
    text_ += "o ";
    text_ += nameOf(scene_, element);
    text_ += '\n';
  }

  void flush() {
    if (text_.size() < kBlock) return;
    out_.write(text_);
    text_.clear();
  }

  void add(const Vesk::SceneInstance& instance) {
    const Vesk::Mesh& mesh = scene_.meshes[instance.mesh];
    begin(instance.element);
    for (const GePoint& p : mesh.positions) appendLine(text_, "v", instance.placement.point(p));
    for (const GeVector& n : mesh.normals) appendLine(text_, "vn", instance.placement.normal(n));
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
      text_ += 'f';
      for (std::size_t k = 0; k < 3; ++k) {
        text_ += ' ';
        appendCount(text_, positions_ + mesh.triangles[i][k] + 1);
        text_ += "//";
        appendCount(text_, normals_ + mesh.triangleNormals[i][k] + 1);
      }
      text_ += '\n';
    }
    positions_ += mesh.positions.size();
    normals_ += mesh.normals.size();
    flush();
  }

  void add(const Vesk::SceneLine& line) {
    begin(line.element);
    for (std::size_t i = 0; i < line.count; ++i) {
      appendLine(text_, "v", scene_.lineVertices[line.first + i]);
    }
    text_ += 'l';
    for (std::size_t i = 0; i < line.count; ++i) {
      text_ += ' ';
      appendCount(text_, ++positions_);
    }
    text_ += '\n';
    flush();
  }

  const Vesk::Scene& scene_;
  TextSink& out_;
  std::string text_;
  std::uint64_t positions_ = 0;
  std::uint64_t normals_ = 0;
};

}  // namespace

LeftOut writeObj(const Vesk::Scene& scene, double millimetres, TextSink& out) {
  return ObjWriter(scene, millimetres, out).write();
}

}  // namespace VeskTool
