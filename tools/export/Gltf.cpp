// SPDX-License-Identifier: MIT
#include "export/Gltf.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "elements/Kinds.h"
#include "export/GltfBuffer.h"
#include "export/GltfText.h"
#include "export/LittleEndian.h"
#include "export/Writers.h"
#include "files/FileNames.h"
#include "mesh/FlatMesh.h"
#include "terminal/Exit.h"
#include "text/Json.h"
#include "view/Palette.h"

namespace VeskTool {
namespace {

constexpr std::uint64_t kMostBytes = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kPiece = std::size_t{1} << 20;  // of the nodes' text
constexpr std::size_t kPart = std::size_t{1} << 18;   // that is written at once
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

// How primitives are drawn, as glTF numbers it.
enum Mode { kPoints = 0, kLines = 1, kLineStrip = 3, kTriangles = 4 };

std::array<double, 3> numbersOf(const GePoint& p) { return {p.x, p.y, p.z}; }

// The light that a byte of a colour of the screen stands for.
double linear(std::uint8_t byte) {
  const double c = byte / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

// The turn that takes x, y and z to these unit directions, as x, y, z, w.
std::array<double, 4> quaternionOf(const GeVector& x, const GeVector& y, const GeVector& z) {
  // The largest of the four is found by a root, the others by a division.
  const std::array<double, 4> squares{1.0 + x.x - y.y - z.z, 1.0 - x.x + y.y - z.z,
                                      1.0 - x.x - y.y + z.z, 1.0 + x.x + y.y + z.z};
  const auto largest = std::max_element(squares.begin(), squares.end());
  const double root = std::sqrt(*largest);
  const double f = 0.5 / root;
  switch (largest - squares.begin()) {
    case 0:
      return {root / 2.0, (x.y + y.x) * f, (x.z + z.x) * f, (y.z - z.y) * f};
    case 1:
      return {(x.y + y.x) * f, root / 2.0, (y.z + z.y) * f, (z.x - x.z) * f};
    case 2:
      return {(x.z + z.x) * f, (y.z + z.y) * f, root / 2.0, (x.y - y.x) * f};
    default:
      return {(y.z - z.y) * f, (z.x - x.z) * f, (x.y - y.x) * f, root / 2.0};
  }
}

// Where a node stands: its axes' lengths apart from their turn.
struct Stand {
  std::array<double, 3> translation{};
  std::array<double, 4> rotation{0.0, 0.0, 0.0, 1.0};
  std::array<double, 3> scale{1.0, 1.0, 1.0};
};

Stand standOf(const Vesk::Placement& placement) {
  const GeVector size(placement.x.length(), placement.y.length(), placement.z.length());
  Stand stand;
  stand.translation = numbersOf(placement.origin);
  stand.rotation = quaternionOf(placement.x / size.x, placement.y / size.y, placement.z / size.z);
  stand.scale = {size.x, size.y, size.z};
  return stand;
}

// Of an element's tolerance: how far apart compressed values may lie. Each number
// is half a step off at the most, a point sqrt(3) times that; places and sizes of
// instances, half as far apart, add as much again: 0.87 of a tenth together.
constexpr double kStep = 0.05;
constexpr double kInstanceStep = kStep / 2.0;

// For the points of each mesh along its axes, by the instance that needs the least.
std::vector<GltfBuffer::Steps> meshSteps(const Vesk::Scene& scene) {
  std::vector<GltfBuffer::Steps> all(scene.meshes.size());
  for (const Vesk::SceneInstance& instance : scene.instances) {
    GltfBuffer::Steps& steps = all[instance.mesh];
    const Vesk::Placement& p = instance.placement;
    const std::array<double, 3> sizes{p.x.length(), p.y.length(), p.z.length()};
    for (std::size_t i = 0; i < 3; ++i) {
      const double step = kStep * instance.tolerance / sizes[i];
      if (steps[i] == 0.0 || step < steps[i]) steps[i] = step;
    }
  }
  return all;
}

double leastTolerance(const std::vector<const Vesk::SceneInstance*>& set) {
  double least = set.front()->tolerance;
  for (const Vesk::SceneInstance* each : set) least = std::min(least, each->tolerance);
  return least;
}

double largestOf(const Vesk::Mesh& mesh) {
  double largest = 0.0;
  for (const GePoint& p : mesh.positions) {
    largest = std::max({largest, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
  }
  return largest;
}

class GltfWriter {
 public:
  GltfWriter(const Vesk::Scene& scene, double millimetres, const GltfOptions& options)
      : scene_(scene),
        options_(options),
        millimetres_(millimetres),
        // A shape that is stretched would make more of an error of its normals.
        buffer_(options.packer, options.grouping == GltfOptions::Grouping::kMerged) {
    if (options.packer != nullptr) steps_ = meshSteps(scene);
  }

  void write(TextSink& out) {
    for (const std::string& header : scene_.headers) {
      quotedHeaders_.push_back(quoted(header));
    }
    for (const std::string& file : handedOnNames(scene_.files)) {
      quotedFiles_.push_back(quoted(file));
    }
    headerNodes_.resize(scene_.headers.size());
    switch (options_.grouping) {
      case GltfOptions::Grouping::kElements:
        for (const Vesk::SceneInstance& instance : scene_.instances) add(instance);
        break;
      case GltfOptions::Grouping::kInstances:
        addInstanced();
        break;
      case GltfOptions::Grouping::kMerged:
        addMerged();
        break;
    }
    for (const Vesk::ScenePoint& point : scene_.points) add(point);
    for (const Vesk::SceneLine& line : scene_.lines) add(line);
    for (const Vesk::SceneText& text : scene_.texts) add(text);
    addTree();
    finish(out);
  }

 private:
  static std::string quoted(const std::string& text) {
    std::string to;
    appendJsonString(to, validUtf8(text));
    return to;
  }

  // ---- materials and meshes

  std::size_t materialOf(std::uint8_t kind, bool doubleSided) {
    const auto [place, isNew] = materials_.try_emplace({kind, doubleSided}, materials_.size());
    if (isNew) {
      const Vesk::Colour colour = colours_[kind];
      materialText_ += materialText_.empty() ? "{" : ",{";
      materialText_ += "\"name\":\"" + std::string(nameOf(static_cast<Kind>(kind))) +
                       "\",\"pbrMetallicRoughness\":{\"baseColorFactor\":";
      appendJsonNumbers(materialText_,
                        std::array<double, 4>{linear(colour.red), linear(colour.green),
                                              linear(colour.blue), 1.0});
      materialText_ += ",\"metallicFactor\":0,\"roughnessFactor\":0.6}";
      if (doubleSided) materialText_ += ",\"doubleSided\":true";
      materialText_ += '}';
    }
    return place->second;
  }

  std::size_t addMesh(std::size_t positions, std::size_t normals, std::size_t indices,
                      std::size_t material, Mode mode) {
    meshText_ += meshes_ == 0 ? "{" : ",{";
    meshText_ += "\"primitives\":[{\"attributes\":{\"POSITION\":";
    appendJsonNumber(meshText_, positions);
    if (normals != kNone) member(meshText_, "NORMAL", normals);
    meshText_ += '}';
    if (indices != kNone) member(meshText_, "indices", indices);
    member(meshText_, "material", material);
    if (mode != kTriangles) member(meshText_, "mode", static_cast<std::size_t>(mode));
    meshText_ += "}]}";
    return meshes_++;
  }

  // Positions, normals and indices.
  std::array<std::size_t, 3> addFlat(const Vesk::FlatMesh& flat, const GltfBuffer::Steps& steps) {
    const std::size_t positions = buffer_.addPositions(flat.positions, steps);
    const std::size_t normals = buffer_.addNormals(flat.normals);
    return {positions, normals, buffer_.addIndices(flat.indices, flat.positions.size() / 3)};
  }

  // A shape in the colour of a kind; its accessors are shared by all its colours.
  std::size_t meshOf(std::uint32_t mesh, std::uint8_t kind) {
    const auto [place, isNew] = sceneMeshes_.try_emplace({mesh, kind}, 0);
    if (!isNew) return place->second;
    const Vesk::Mesh& shape = scene_.meshes[mesh];
    const std::size_t material = materialOf(kind, !shape.closed);
    const auto [accessors, isFirst] = sceneAccessors_.try_emplace(mesh);
    if (isFirst) {
      accessors->second = addFlat(Vesk::flattened(shape),
                                  options_.packer != nullptr ? steps_[mesh] : GltfBuffer::Steps{});
    }
    const auto& [positions, normals, indices] = accessors->second;
    place->second = addMesh(positions, normals, indices, material, kTriangles);
    return place->second;
  }

  std::size_t addThin(const std::vector<GePoint>& points, std::uint8_t kind, Mode mode) {
    std::vector<float> numbers;
    for (const GePoint& p : points) {
      for (const double d : {p.x, p.y, p.z}) numbers.push_back(static_cast<float>(d));
    }
    return addMesh(buffer_.addPositions(numbers, {}), kNone, kNone, materialOf(kind, false), mode);
  }

  // ---- nodes

  static void member(std::string& to, std::string_view key, std::size_t value) {
    to += ",\"";
    to += key;
    to += "\":";
    appendJsonNumber(to, value);
  }

  // Node 0 is the root.
  std::size_t beginNode(std::string_view quotedName) {
    if (nodeText_.size() >= kPiece) {
      nodePieces_.push_back(std::move(nodeText_));
      nodeText_ = std::string();
      nodeText_.reserve(kPiece + kPiece / 8);
    }
    nodeText_ += ",{\"name\":";
    nodeText_ += quotedName;
    return ++nodes_;
  }

  void appendExtras(std::uint32_t element) {
    const Vesk::SceneElement& each = scene_.elements[element];
    nodeText_ += ",\"extras\":{\"header\":";
    nodeText_ += quotedHeaders_[each.header];
    nodeText_ += ",\"kind\":\"";
    nodeText_ += nameOf(static_cast<Kind>(each.kind));
    nodeText_ += "\",\"file\":";
    nodeText_ += quotedFiles_[each.file];
    member(nodeText_, "line", each.line);
  }

  // A node of an element, below its header; endElement closes it.
  void beginElement(std::uint32_t element, std::size_t mesh, const Stand& stand) {
    name_.clear();
    appendJsonString(name_, validUtf8(nameOf(scene_, element)));
    headerNodes_[scene_.elements[element].header].push_back(beginNode(name_));
    if (mesh != kNone) member(nodeText_, "mesh", mesh);
    const Stand still;
    if (stand.translation != still.translation) {
      nodeText_ += ",\"translation\":";
      appendJsonNumbers(nodeText_, stand.translation);
    }
    if (stand.rotation[3] != 1.0) {
      nodeText_ += ",\"rotation\":";
      appendJsonNumbers(nodeText_, stand.rotation);
    }
    if (stand.scale != still.scale) {
      nodeText_ += ",\"scale\":";
      appendJsonNumbers(nodeText_, stand.scale);
    }
    appendExtras(element);
  }

  void endElement() { nodeText_ += "}}"; }

  void addElement(std::uint32_t element, std::size_t mesh, const Stand& stand) {
    beginElement(element, mesh, stand);
    endElement();
  }

  std::uint8_t kindOf(std::uint32_t element) const { return scene_.elements[element].kind; }

  void add(const Vesk::SceneInstance& instance) {
    addElement(instance.element, meshOf(instance.mesh, kindOf(instance.element)),
               standOf(instance.placement));
  }

  void add(const Vesk::ScenePoint& point) {
    if (pointMesh_ == kNone) pointMesh_ = addThin({GePoint()}, kindOf(point.element), kPoints);
    Stand stand;
    stand.translation = numbersOf(point.position);
    addElement(point.element, pointMesh_, stand);
  }

  // A segment is the unit one, stretched.
  void add(const Vesk::SceneLine& line) {
    const GePoint* vertices = &scene_.lineVertices[line.first];
    const GeVector along = vertices[1] - vertices[0];
    const double length = along.length();
    if (line.count == 2 && length > 0.0) {
      if (segmentMesh_ == kNone) {
        segmentMesh_ = addThin({{}, {1.0, 0.0, 0.0}}, kindOf(line.element), kLines);
      }
      const GeVector x = along / length;
      const GeVector y = x.perpendicular();
      addElement(line.element, segmentMesh_,
                 standOf({along, y * length, cross(x, y) * length, vertices[0]}));
      return;
    }
    std::vector<GePoint> points;
    for (std::size_t i = 0; i < line.count; ++i) points.emplace_back(vertices[i] - vertices[0]);
    Stand stand;
    stand.translation = numbersOf(vertices[0]);
    addElement(line.element, addThin(points, kindOf(line.element), kLineStrip), stand);
  }

  void add(const Vesk::SceneText& text) {
    Stand stand;
    stand.translation = numbersOf(text.position);
    beginElement(text.element, kNone, stand);
    nodeText_ += ",\"text\":" + quoted(text.text) + ",\"along\":";
    appendJsonNumbers(nodeText_, std::array{text.along.x, text.along.y, text.along.z});
    nodeText_ += ",\"up\":";
    appendJsonNumbers(nodeText_, std::array{text.up.x, text.up.y, text.up.z});
    nodeText_ += ",\"width\":";
    appendJsonNumber(nodeText_, text.width);
    nodeText_ += ",\"height\":";
    appendJsonNumber(nodeText_, text.height);
    endElement();
  }

  // ---- instances: a node for each shape of a colour

  void addInstanced() {
    std::map<std::pair<std::uint32_t, std::uint8_t>, std::vector<const Vesk::SceneInstance*>> sets;
    for (const Vesk::SceneInstance& instance : scene_.instances) {
      sets[{instance.mesh, kindOf(instance.element)}].push_back(&instance);
    }
    for (const auto& [key, set] : sets) {
      const auto& [mesh, kind] = key;
      if (set.size() == 1) {
        add(*set.front());
        continue;
      }
      addInstances(mesh, kind, set);
    }
    if (hasInstances_) elementTable_ = tableOfElements();
  }

  void addInstances(std::uint32_t mesh, std::uint8_t kind,
                    const std::vector<const Vesk::SceneInstance*>& set) {
    std::vector<float> translations;
    std::vector<float> rotations;
    std::vector<float> scales;
    std::vector<float> features;
    const auto append = [](std::vector<float>& to, const auto& numbers) {
      for (const double d : numbers) to.push_back(static_cast<float>(d));
    };
    for (const Vesk::SceneInstance* instance : set) {
      const Stand stand = standOf(instance->placement);
      append(translations, stand.translation);
      append(rotations, stand.rotation);
      append(scales, stand.scale);
      features.push_back(static_cast<float>(instance->element));
    }
    const double step = kInstanceStep * leastTolerance(set);
    // The thinnest keeps its thickness too.
    const double scaleStep = std::min(step / largestOf(scene_.meshes[mesh]),
                                      *std::min_element(scales.begin(), scales.end()) / 1024.0);
    rootChildren_.push_back(
        beginNode("\"" + std::string(pluralOf(static_cast<Kind>(kind))) + "\""));
    member(nodeText_, "mesh", meshOf(mesh, kind));
    nodeText_ += ",\"extensions\":{\"EXT_mesh_gpu_instancing\":{\"attributes\":{\"TRANSLATION\":";
    appendJsonNumber(nodeText_, buffer_.addInstanceVectors(translations, step));
    member(nodeText_, "ROTATION", buffer_.addInstances(rotations, 4));
    member(nodeText_, "SCALE", buffer_.addInstanceVectors(scales, scaleStep));
    member(nodeText_, "_FEATURE_ID_0", buffer_.addInstances(features, 1));
    nodeText_ += "}},\"EXT_instance_features\":{\"featureIds\":[{\"featureCount\":";
    appendJsonNumber(nodeText_, set.size());
    nodeText_ += ",\"attribute\":0}]}}}";
    hasInstances_ = true;
  }

  // What the extras of single nodes would say, by feature id: columns of indices.
  std::string tableOfElements() const {
    std::string text = "{\"headers\":[";
    const auto list = [&text](const auto& quotedTexts) {
      for (std::size_t i = 0; i < quotedTexts.size(); ++i) {
        if (i > 0) text += ',';
        text += quotedTexts[i];
      }
    };
    list(quotedHeaders_);
    text += "],\"files\":[";
    list(quotedFiles_);
    text += "],\"kinds\":[";
    for (std::size_t i = 0; i < kKinds; ++i) {
      text += (i > 0 ? ",\"" : "\"") + std::string(nameOf(static_cast<Kind>(i))) + '"';
    }
    text += ']';
    const auto column = [&](const char* name, auto value) {
      text += ",\"" + std::string(name) + "\":[";
      for (std::size_t i = 0; i < scene_.elements.size(); ++i) {
        if (i > 0) text += ',';
        appendJsonNumber(text, value(scene_.elements[i]));
      }
      text += ']';
    };
    column("header", [](const Vesk::SceneElement& e) { return e.header; });
    column("kind", [](const Vesk::SceneElement& e) { return std::uint32_t{e.kind}; });
    column("file", [](const Vesk::SceneElement& e) { return e.file; });
    column("line", [](const Vesk::SceneElement& e) { return e.line; });
    return text + '}';
  }

  // ---- merged: a mesh for each header and kind

  void addMerged() {
    // header, kind, whether it is a solid
    std::map<std::tuple<std::uint32_t, std::uint8_t, bool>, std::vector<const Vesk::SceneInstance*>>
        sets;
    for (const Vesk::SceneInstance& instance : scene_.instances) {
      const Vesk::SceneElement& element = scene_.elements[instance.element];
      sets[{element.header, element.kind, scene_.meshes[instance.mesh].closed}].push_back(
          &instance);
    }
    for (const auto& [key, set] : sets) {
      const auto& [header, kind, closed] = key;
      addMergedSet(header, kind, closed, set);
    }
  }

  void addMergedSet(std::uint32_t header, std::uint8_t kind, bool closed,
                    const std::vector<const Vesk::SceneInstance*>& set) {
    Vesk::FlatMesh merged;
    // Of each element: its line, and where its triangles begin.
    std::string lines;
    std::string starts;
    // About its first point: 32 bits keep more digits there.
    const GePoint origin = set.front()->placement.origin;
    for (const Vesk::SceneInstance* instance : set) {
      lines += lines.empty() ? "" : ",";
      appendJsonNumber(lines, scene_.elements[instance->element].line);
      starts += starts.empty() ? "" : ",";
      appendJsonNumber(starts, merged.indices.size() / 3);
      append(merged, *instance, origin);
    }
    const std::string name =
        validUtf8(scene_.headers[header]) + '/' + std::string(pluralOf(static_cast<Kind>(kind)));
    headerNodes_[header].push_back(beginNode(quoted(name)));
    const double step = kStep * leastTolerance(set);
    const auto [positions, normals, indices] = addFlat(merged, {step, step, step});
    member(nodeText_, "mesh",
           addMesh(positions, normals, indices, materialOf(kind, !closed), kTriangles));
    nodeText_ += ",\"translation\":";
    appendJsonNumbers(nodeText_, numbersOf(origin));
    appendExtras(set.front()->element);
    nodeText_ += ",\"lines\":[" + lines + "],\"firstTriangles\":[" + starts + "]}}";
  }

  void append(Vesk::FlatMesh& to, const Vesk::SceneInstance& instance, const GePoint& origin) {
    const auto [place, isNew] = flats_.try_emplace(instance.mesh);
    if (isNew) place->second = Vesk::flattened(scene_.meshes[instance.mesh]);
    const Vesk::FlatMesh& flat = place->second;
    const auto first = static_cast<std::uint32_t>(to.positions.size() / 3);
    for (std::size_t i = 0; i < flat.positions.size(); i += 3) {
      const GePoint p = instance.placement.point(
          {flat.positions[i], flat.positions[i + 1], flat.positions[i + 2]});
      const GeVector n =
          instance.placement.normal({flat.normals[i], flat.normals[i + 1], flat.normals[i + 2]});
      for (const double d : {p.x - origin.x, p.y - origin.y, p.z - origin.z}) {
        to.positions.push_back(static_cast<float>(d));
      }
      for (const double d : {n.x, n.y, n.z}) to.normals.push_back(static_cast<float>(d));
    }
    for (const std::uint32_t index : flat.indices) to.indices.push_back(first + index);
  }

  // ---- the whole

  std::size_t addParent(const std::string& quotedName, const std::vector<std::size_t>& children) {
    const std::size_t node = beginNode(quotedName);
    nodeText_ += ",\"children\":";
    appendJsonNumbers(nodeText_, children);
    nodeText_ += '}';
    return node;
  }

  // A node for each header below one for its group; behind those of the elements.
  void addTree() {
    std::map<std::string, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < headerNodes_.size(); ++i) {
      if (headerNodes_[i].empty()) continue;
      groups[scene_.groups[i]].push_back(addParent(quotedHeaders_[i], headerNodes_[i]));
    }
    for (const auto& [group, headers] : groups) {
      rootChildren_.push_back(addParent(quoted("group " + group), headers));
    }
  }

  std::string rootText() const {
    const double half = std::sqrt(0.5);
    const double metres = millimetres_ / 1000.0;
    std::string root = "{\"name\":\"model\",\"rotation\":";
    appendJsonNumbers(root, std::array{-half, 0.0, 0.0, half});
    root += ",\"scale\":";
    appendJsonNumbers(root, std::array{metres, metres, metres});
    root += ",\"extras\":{\"unit\":";
    appendJsonNumber(root, millimetres_);
    root += ",\"offset\":";
    appendJsonNumbers(root, numbersOf(GePoint(scene_.offset)));
    if (!elementTable_.empty()) root += ",\"elements\":" + elementTable_;
    root += '}';
    if (!rootChildren_.empty()) {
      root += ",\"children\":";
      appendJsonNumbers(root, rootChildren_);
    }
    return root + '}';
  }

  // The members that name the extensions; nothing without one.
  std::string extensionsText() const {
    std::string used;
    std::string required;
    const auto add = [&](bool isUsed, std::string_view name, bool isRequired) {
      if (!isUsed) return;
      for (std::string* list : {&used, isRequired ? &required : nullptr}) {
        if (list != nullptr) *list += (list->empty() ? "\"" : ",\"") + std::string(name) + '"';
      }
    };
    add(hasInstances_, "EXT_mesh_gpu_instancing", true);
    add(hasInstances_, "EXT_instance_features", false);
    add(options_.packer != nullptr && buffer_.size() > 0, "EXT_meshopt_compression", true);
    add(buffer_.isQuantized(), "KHR_mesh_quantization", true);
    if (used.empty()) return {};
    return ",\"extensionsUsed\":[" + used + "],\"extensionsRequired\":[" + required + ']';
  }

  void finish(TextSink& out) {
    buffer_.finish();
    if (buffer_.size() > kMostBytes / 2) {
      throw Failure(Exit::kOutput, "more than a binary glTF file can hold", "--quality draft");
    }
    // The nodes' text stays in its pieces: it is nearly all of a large file.
    std::vector<std::string> json = std::exchange(nodePieces_, {});
    json.push_back(std::exchange(nodeText_, {}));
    std::string first = "{\"asset\":{\"version\":\"2.0\",\"generator\":\"vesk " VESK_VERSION "\"}";
    first += extensionsText();
    first += ",\"scene\":0,\"scenes\":[{\"nodes\":[0]}],\"nodes\":[" + rootText();
    json.insert(json.begin(), std::move(first));
    std::string last = "]";
    if (meshes_ > 0)
      last += ",\"meshes\":[" + meshText_ + "],\"materials\":[" + materialText_ + ']';
    buffer_.appendJson(last, options_.isBinary ? "" : buffer_.dataUri());
    last += '}';
    json.push_back(std::move(last));
    if (options_.isBinary) {
      writeBinary(json, out);
    } else {
      writeText(json, out);
      out.write("\n");
    }
  }

  // In small parts, so that a sink that keeps what it gets need not keep all at once.
  static void writeText(std::vector<std::string>& pieces, TextSink& out) {
    for (std::string& piece : pieces) {
      const std::string text = std::move(piece);
      for (std::string_view rest = text; !rest.empty();) {
        const std::string_view part = rest.substr(0, kPart);
        out.write(part);
        rest.remove_prefix(part.size());
      }
    }
  }

  void writeBinary(std::vector<std::string>& json, TextSink& out) const {
    constexpr std::size_t kHeading = 12;
    constexpr std::size_t kChunk = 8;
    std::size_t text = 0;
    for (const std::string& piece : json) text += piece.size();
    const std::size_t blanks = (4 - text % 4) % 4;
    json.emplace_back(blanks, ' ');
    text += blanks;
    const std::size_t data = buffer_.size();
    const std::size_t size = kHeading + kChunk + text + (data > 0 ? kChunk + data : 0);
    if (size > kMostBytes) {
      throw Failure(Exit::kOutput, "more than a binary glTF file can hold", "--quality draft");
    }
    std::string heading = "glTF";
    appendU32(heading, 2);
    appendU32(heading, static_cast<std::uint32_t>(size));
    appendU32(heading, static_cast<std::uint32_t>(text));
    heading += "JSON";
    out.write(heading);
    writeText(json, out);
    if (data == 0) return;
    heading.clear();
    appendU32(heading, static_cast<std::uint32_t>(data));
    heading.append("BIN\0", 4);
    out.write(heading);
    buffer_.writeTo(out);
  }

  const Vesk::Scene& scene_;
  GltfOptions options_;
  double millimetres_;
  std::vector<Vesk::Colour> colours_ = kindColours();

  std::vector<std::string> quotedHeaders_;
  std::vector<std::string> quotedFiles_;
  std::vector<std::vector<std::size_t>> headerNodes_;  // children, by header
  std::vector<std::size_t> rootChildren_;
  std::string name_;
  std::string elementTable_;
  std::vector<GltfBuffer::Steps> steps_;  // for each mesh, if compressed
  bool hasInstances_ = false;

  std::map<std::pair<std::uint8_t, bool>, std::size_t> materials_;
  std::map<std::pair<std::uint32_t, std::uint8_t>, std::size_t> sceneMeshes_;
  std::map<std::uint32_t, std::array<std::size_t, 3>> sceneAccessors_;
  std::map<std::uint32_t, Vesk::FlatMesh> flats_;
  std::size_t pointMesh_ = kNone;
  std::size_t segmentMesh_ = kNone;

  std::size_t nodes_ = 0;
  std::size_t meshes_ = 0;
  std::vector<std::string> nodePieces_;  // what is before nodeText_
  std::string nodeText_;
  std::string meshText_;
  std::string materialText_;
  GltfBuffer buffer_;
};

}  // namespace

std::uint64_t mergedBytes(const Vesk::Scene& scene) {
  constexpr std::uint64_t kVertex = 24;
  constexpr std::uint64_t kIndex = 4;
  std::vector<std::uint64_t> sizes(scene.meshes.size(), 0);
  std::uint64_t total = 0;
  for (const Vesk::SceneInstance& instance : scene.instances) {
    std::uint64_t& size = sizes[instance.mesh];
    if (size == 0) {
      const Vesk::FlatMesh flat = Vesk::flattened(scene.meshes[instance.mesh]);
      size = flat.positions.size() / 3 * kVertex + flat.indices.size() * kIndex;
    }
    total += size;
  }
  return total;
}

void writeGltf(const Vesk::Scene& scene, double millimetres, const GltfOptions& options,
               TextSink& out) {
  GltfWriter(scene, millimetres, options).write(out);
}

}  // namespace VeskTool
