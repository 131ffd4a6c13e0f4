#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <ostream>
#include <streambuf>
#include <vector>

#include "Exit.h"
#include "Json.h"
#include "Kinds.h"
#include "export/LittleEndian.h"
#include "export/TinyGltf.h"
#include "export/Writers.h"
#include "mesh/FlatMesh.h"

namespace VeskTool {
namespace {

using tinygltf::Value;

// A stream into a sink.
class SinkBuffer : public std::streambuf {
 public:
  explicit SinkBuffer(TextSink& out) : out_(out) {}

 protected:
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    // In pieces, so that a sink that keeps what it gets need not keep all at once.
    constexpr std::size_t kPiece = std::size_t{1} << 18;
    for (std::string_view rest(bytes, static_cast<std::size_t>(count)); !rest.empty();) {
      const std::string_view piece = rest.substr(0, kPiece);
      out_.write(piece);
      rest.remove_prefix(piece.size());
    }
    return count;
  }

  int_type overflow(int_type c) override {
    const char byte = traits_type::to_char_type(c);
    out_.write({&byte, 1});
    return c;
  }

 private:
  TextSink& out_;
};

// What the views of the one buffer hold.
enum View { kPositions, kNormals, kIndices32, kIndices16, kViews };

// Materials.
enum Material { kSolid, kFace, kThin };

constexpr std::uint64_t kMostBytes = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kMostShort = 0xFFFF;  // stands for no vertex

tinygltf::Material materialOf(const char* name, std::array<double, 3> colour, bool doubleSided) {
  tinygltf::Material material;
  material.name = name;
  material.pbrMetallicRoughness.baseColorFactor = {colour[0], colour[1], colour[2], 1.0};
  material.pbrMetallicRoughness.metallicFactor = 0.0;
  material.pbrMetallicRoughness.roughnessFactor = 0.6;
  material.doubleSided = doubleSided;
  return material;
}

Value pointValue(const GePoint& p) {
  return Value(Value::Array{Value(p.x), Value(p.y), Value(p.z)});
}

std::vector<double> numbersOf(const GePoint& p) { return {p.x, p.y, p.z}; }

// The turn that takes x, y and z to these unit directions, as x, y, z, w.
std::vector<double> quaternionOf(const GeVector& x, const GeVector& y, const GeVector& z) {
  // The largest of the four is found by a root, the others by a division.
  const std::array<double, 4> squares{1.0 + x.x - y.y - z.z, 1.0 - x.x + y.y - z.z,
                                      1.0 - x.x - y.y + z.z, 1.0 + x.x + y.y + z.z};
  const auto largest = std::max_element(squares.begin(), squares.end());
  const double root = std::sqrt(*largest);
  const double f = 0.5 / root;
  std::vector<double> q;
  switch (largest - squares.begin()) {
    case 0:
      q = {root / 2.0, (x.y + y.x) * f, (x.z + z.x) * f, (y.z - z.y) * f};
      break;
    case 1:
      q = {(x.y + y.x) * f, root / 2.0, (y.z + z.y) * f, (z.x - x.z) * f};
      break;
    case 2:
      q = {(x.z + z.x) * f, (y.z + z.y) * f, root / 2.0, (x.y - y.x) * f};
      break;
    default:
      q = {(y.z - z.y) * f, (z.x - x.z) * f, (x.y - y.x) * f, root / 2.0};
  }
  for (double& each : q) each = each == 0.0 ? 0.0 : each;  // no minus zero
  return q;
}

class GltfMaker {
 public:
  GltfMaker(const Vesk::Scene& scene, double millimetres) : scene_(scene) {
    model_.asset.version = "2.0";
    model_.asset.generator = "vesk " VESK_VERSION;
    model_.materials = {materialOf("solid", {0.55, 0.62, 0.68}, false),
                        materialOf("face", {0.72, 0.66, 0.52}, true),
                        materialOf("line", {0.10, 0.10, 0.12}, false)};
    addRoot(millimetres);
    meshes_.assign(scene.meshes.size(), -1);
  }

  tinygltf::Model make() {
    for (const Vesk::SceneInstance& instance : scene_.instances) add(instance);
    for (const Vesk::ScenePoint& point : scene_.points) add(point);
    for (const Vesk::SceneLine& line : scene_.lines) add(line);
    for (const Vesk::SceneText& text : scene_.texts) add(text);
    finishNodes();
    finishBuffer();
    return std::move(model_);
  }

 private:
  void addRoot(double millimetres) {
    tinygltf::Node root;
    root.name = "model";
    const double half = std::sqrt(0.5);
    root.rotation = {-half, 0.0, 0.0, half};
    const double metres = millimetres / 1000.0;
    root.scale = {metres, metres, metres};
    root.extras = Value(Value::Object{{"unit", Value(millimetres)},
                                      {"offset", pointValue(GePoint(scene_.offset))}});
    model_.nodes.push_back(std::move(root));
    model_.nodes.reserve(scene_.elements.size() + 1);
    tinygltf::Scene whole;
    whole.nodes = {0};
    model_.scenes.push_back(std::move(whole));
    model_.defaultScene = 0;
  }

  Value::Object extrasOf(std::uint32_t element) const {
    const Vesk::SceneElement& each = scene_.elements[element];
    const bool fits = each.line <= std::numeric_limits<int>::max();
    return {{"header", Value(validUtf8(scene_.headers[each.header]))},
            {"kind", Value(std::string(nameOf(static_cast<Kind>(each.kind))))},
            {"file", Value(validUtf8(scene_.files[each.file]))},
            {"line",
             fits ? Value(static_cast<int>(each.line)) : Value(static_cast<double>(each.line))}};
  }

  tinygltf::Node& addNode(std::uint32_t element, int mesh, const GePoint& at) {
    tinygltf::Node& node = model_.nodes.emplace_back();
    node.name = validUtf8(nameOf(scene_, element));
    node.mesh = mesh;
    if (!(at == GePoint())) node.translation = numbersOf(at);
    node.extras = Value(extrasOf(element));
    return node;
  }

  void add(const Vesk::SceneInstance& instance) {
    int& mesh = meshes_[instance.mesh];
    if (mesh < 0) mesh = addMesh(scene_.meshes[instance.mesh]);
    const Vesk::Placement& placement = instance.placement;
    tinygltf::Node& node = addNode(instance.element, mesh, placement.origin);
    place(node, placement.x, placement.y, placement.z);
  }

  static void place(tinygltf::Node& node, const GeVector& x, const GeVector& y, const GeVector& z) {
    const GeVector size(x.length(), y.length(), z.length());
    const std::vector<double> turn = quaternionOf(x / size.x, y / size.y, z / size.z);
    if (turn[3] != 1.0) node.rotation = turn;
    if (!(size == GeVector(1.0, 1.0, 1.0))) node.scale = {size.x, size.y, size.z};
  }

  void add(const Vesk::ScenePoint& point) {
    if (pointMesh_ < 0) pointMesh_ = addThin({GePoint()}, TINYGLTF_MODE_POINTS);
    addNode(point.element, pointMesh_, point.position);
  }

  // A segment is the unit one, stretched.
  void add(const Vesk::SceneLine& line) {
    const GePoint* vertices = &scene_.lineVertices[line.first];
    const GeVector along = vertices[1] - vertices[0];
    const double length = along.length();
    if (line.count == 2 && length > 0.0) {
      if (segmentMesh_ < 0) segmentMesh_ = addThin({{}, {1.0, 0.0, 0.0}}, TINYGLTF_MODE_LINE);
      tinygltf::Node& node = addNode(line.element, segmentMesh_, vertices[0]);
      const GeVector x = along / length;
      const GeVector y = x.perpendicular();
      place(node, along, y * length, cross(x, y) * length);
      return;
    }
    std::vector<GePoint> points;
    for (std::size_t i = 0; i < line.count; ++i) {
      points.emplace_back(vertices[i] - vertices[0]);
    }
    addNode(line.element, addThin(points, TINYGLTF_MODE_LINE_STRIP), vertices[0]);
  }

  void add(const Vesk::SceneText& text) {
    tinygltf::Node& node = addNode(text.element, -1, text.position);
    Value::Object extras = extrasOf(text.element);
    extras["text"] = Value(validUtf8(text.text));
    extras["along"] = pointValue(GePoint(text.along));
    extras["up"] = pointValue(GePoint(text.up));
    extras["width"] = Value(text.width);
    extras["height"] = Value(text.height);
    node.extras = Value(std::move(extras));
  }

  int addMesh(const Vesk::Mesh& mesh) {
    const Vesk::FlatMesh flat = Vesk::flattened(mesh);
    const int normals = addVectors(kNormals, flat.normals.data(), flat.normals.size() / 3, false);
    return addPrimitive(
        addVectors(kPositions, flat.positions.data(), flat.positions.size() / 3, true), normals,
        addIndices(flat), mesh.closed ? kSolid : kFace, TINYGLTF_MODE_TRIANGLES);
  }

  int addThin(const std::vector<GePoint>& points, int mode) {
    std::vector<float> numbers;
    for (const GePoint& p : points) {
      for (const double d : {p.x, p.y, p.z}) numbers.push_back(static_cast<float>(d));
    }
    const int positions = addVectors(kPositions, numbers.data(), points.size(), true);
    return addPrimitive(positions, -1, -1, kThin, mode);
  }

  int addPrimitive(int positions, int normals, int indices, Material material, int mode) {
    tinygltf::Primitive primitive;
    primitive.attributes["POSITION"] = positions;
    if (normals >= 0) primitive.attributes["NORMAL"] = normals;
    primitive.indices = indices;
    primitive.material = material;
    primitive.mode = mode;
    tinygltf::Mesh& made = model_.meshes.emplace_back();
    made.primitives.push_back(std::move(primitive));
    return static_cast<int>(model_.meshes.size() - 1);
  }

  int addAccessor(View view, int component, int type, std::size_t count) {
    tinygltf::Accessor& accessor = model_.accessors.emplace_back();
    accessor.bufferView = view;
    accessor.byteOffset = bytes_[view].size();
    accessor.componentType = component;
    accessor.type = type;
    accessor.count = count;
    return static_cast<int>(model_.accessors.size() - 1);
  }

  int addVectors(View view, const float* numbers, std::size_t count, bool withBounds) {
    const int index = addAccessor(view, TINYGLTF_COMPONENT_TYPE_FLOAT, TINYGLTF_TYPE_VEC3, count);
    std::array<float, 3> low{numbers[0], numbers[1], numbers[2]};
    std::array<float, 3> high = low;
    for (std::size_t i = 0; i < 3 * count; ++i) {
      appendF32(bytes_[view], numbers[i]);
      low[i % 3] = std::min(low[i % 3], numbers[i]);
      high[i % 3] = std::max(high[i % 3], numbers[i]);
    }
    if (withBounds) {
      tinygltf::Accessor& accessor = model_.accessors.back();
      accessor.minValues.assign(low.begin(), low.end());
      accessor.maxValues.assign(high.begin(), high.end());
    }
    return index;
  }

  int addIndices(const Vesk::FlatMesh& flat) {
    const bool isShort = flat.positions.size() / 3 <= kMostShort;
    const int index = addAccessor(
        isShort ? kIndices16 : kIndices32,
        isShort ? TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT : TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT,
        TINYGLTF_TYPE_SCALAR, flat.indices.size());
    for (const std::uint32_t i : flat.indices) {
      if (isShort) {
        appendU16(bytes_[kIndices16], static_cast<std::uint16_t>(i));
      } else {
        appendU32(bytes_[kIndices32], i);
      }
    }
    return index;
  }

  void finishNodes() {
    std::vector<int>& children = model_.nodes.front().children;
    for (std::size_t i = 1; i < model_.nodes.size(); ++i) children.push_back(static_cast<int>(i));
  }

  // Views that hold nothing are left out, and the others count without them.
  void finishBuffer() {
    std::array<int, kViews> places{};
    tinygltf::Buffer buffer;
    for (std::size_t view = 0; view < kViews; ++view) {
      if (bytes_[view].empty()) continue;
      const bool isVertex = view == kPositions || view == kNormals;
      tinygltf::BufferView& made = model_.bufferViews.emplace_back();
      made.buffer = 0;
      made.byteOffset = buffer.data.size();
      made.byteLength = bytes_[view].size();
      made.byteStride = isVertex ? 3 * sizeof(float) : 0;
      made.target = isVertex ? TINYGLTF_TARGET_ARRAY_BUFFER : TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER;
      places[view] = static_cast<int>(model_.bufferViews.size() - 1);
      buffer.data.insert(buffer.data.end(), bytes_[view].begin(), bytes_[view].end());
      bytes_[view] = {};
    }
    for (tinygltf::Accessor& accessor : model_.accessors) {
      accessor.bufferView = places[static_cast<std::size_t>(accessor.bufferView)];
    }
    if (buffer.data.empty()) return;
    if (buffer.data.size() > kMostBytes / 2) {
      throw Failure(Exit::kOutput, "more than a binary glTF file can hold", "--quality draft");
    }
    model_.buffers.push_back(std::move(buffer));
  }

  const Vesk::Scene& scene_;
  tinygltf::Model model_;
  std::vector<int> meshes_;  // of the scene's; -1: not there yet
  int pointMesh_ = -1;
  int segmentMesh_ = -1;
  std::array<std::vector<unsigned char>, kViews> bytes_;
};

}  // namespace

void writeGlb(const Vesk::Scene& scene, double millimetres, TextSink& out) {
  const tinygltf::Model model = GltfMaker(scene, millimetres).make();
  SinkBuffer buffer(out);
  std::ostream stream(&buffer);
  stream.exceptions(std::ios::badbit);  // what the sink throws comes through
  tinygltf::TinyGLTF writer;
  writer.WriteGltfSceneToStream(&model, stream, false, true);
}

}  // namespace VeskTool
