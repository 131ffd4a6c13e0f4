// SPDX-License-Identifier: MIT
#include "tools/Tileset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tools/Exported.h"

namespace VeskTest {
namespace {

using Json = nlohmann::json;
using Point = std::array<double, 3>;

// Columns, as the formats have them.
using Matrix = std::array<double, 16>;

constexpr Matrix kSame{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// From y up to z up: (x, y, z) to (x, -z, y).
constexpr Matrix kUpright{1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};

Matrix product(const Matrix& a, const Matrix& b) {
  Matrix c{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 4; ++row) {
      for (std::size_t k = 0; k < 4; ++k) c[4 * column + row] += a[4 * k + row] * b[4 * column + k];
    }
  }
  return c;
}

Point placed(const Matrix& m, const Point& p) {
  Point q{};
  for (std::size_t row = 0; row < 3; ++row) {
    q[row] = m[row] * p[0] + m[4 + row] * p[1] + m[8 + row] * p[2] + m[12 + row];
  }
  return q;
}

Matrix placeOf(const Point& t, const std::array<double, 4>& q, const Point& s) {
  const auto [x, y, z, w] = q;
  return {s[0] * (1 - 2 * (y * y + z * z)),
          s[0] * 2 * (x * y + z * w),
          s[0] * 2 * (x * z - y * w),
          0,
          s[1] * 2 * (x * y - z * w),
          s[1] * (1 - 2 * (x * x + z * z)),
          s[1] * 2 * (y * z + x * w),
          0,
          s[2] * 2 * (x * z + y * w),
          s[2] * 2 * (y * z - x * w),
          s[2] * (1 - 2 * (x * x + y * y)),
          0,
          t[0],
          t[1],
          t[2],
          1};
}

Matrix placeOf(const Json& node) {
  return placeOf(node.value("translation", Point{0, 0, 0}),
                 node.value("rotation", std::array<double, 4>{0, 0, 0, 1}),
                 node.value("scale", Point{1, 1, 1}));
}

// What a content shows.
class Content {
 public:
  Content(const std::string& file, Points points) : glb_(bytesOf(file)), points_(points) {}

  void readInto(ReadTile& tile, const Matrix& place) {
    tile_ = &tile;
    for (const Json& node : glb_.json["scenes"][0]["nodes"]) walk(node, product(place, kUpright));
  }

 private:
  double numberAt(const Json& accessor, std::size_t size, std::size_t k, std::size_t i) const {
    const Json& view = glb_.json["bufferViews"][accessor["bufferView"].get<std::size_t>()];
    return f32At(glb_.data, view.value("byteOffset", std::size_t{0}) +
                                accessor.value("byteOffset", std::size_t{0}) +
                                k * view.value("byteStride", 4 * size) + 4 * i);
  }

  const Json& accessor(const Json& index) const {
    return glb_.json["accessors"][index.get<std::size_t>()];
  }

  template <std::size_t kSize>
  std::array<double, kSize> vectorAt(const Json& index, std::size_t k) const {
    std::array<double, kSize> vector{};
    for (std::size_t i = 0; i < kSize; ++i) vector[i] = numberAt(accessor(index), kSize, k, i);
    return vector;
  }

  void walk(const Json& index, const Matrix& above) {
    const Json& node = glb_.json["nodes"][index.get<std::size_t>()];
    const Matrix place = product(above, placeOf(node));
    const Json none = Json::object();
    const Json& extras = node.contains("extras") ? node["extras"] : none;
    if (extras.contains("elements")) table_ = extras["elements"];
    if (node.contains("extensions")) {
      readInstances(node, place);
    } else if (node.contains("mesh")) {
      add(node["mesh"], place,
          {extras["header"], extras["kind"], extras["file"], extras["line"], 0, {}});
    }
    if (!node.contains("children")) return;
    for (const Json& child : node["children"]) walk(child, place);
  }

  void readInstances(const Json& node, const Matrix& place) {
    const Json& attributes = node["extensions"]["EXT_mesh_gpu_instancing"]["attributes"];
    const std::size_t count = accessor(attributes["TRANSLATION"])["count"];
    for (std::size_t k = 0; k < count; ++k) {
      const Matrix own =
          placeOf(vectorAt<3>(attributes["TRANSLATION"], k), vectorAt<4>(attributes["ROTATION"], k),
                  vectorAt<3>(attributes["SCALE"], k));
      const auto id = static_cast<std::size_t>(vectorAt<1>(attributes["_FEATURE_ID_0"], k)[0]);
      const auto told = [&](const char* column, const char* names) {
        return table_[names][table_[column][id].get<std::size_t>()].get<std::string>();
      };
      add(node["mesh"], product(place, own),
          {told("header", "headers"),
           told("kind", "kinds"),
           told("file", "files"),
           table_["line"][id],
           0,
           {}});
    }
  }

  void add(const Json& mesh, const Matrix& place, ShownElement element) {
    for (const Json& primitive : glb_.json["meshes"][mesh.get<std::size_t>()]["primitives"]) {
      const Json& position = primitive["attributes"]["POSITION"];
      const std::size_t count = accessor(position)["count"];
      for (std::size_t k = 0; k < count && points_ == Points::kRead; ++k) {
        element.points.push_back(placed(place, vectorAt<3>(position, k)));
      }
      element.triangles += trianglesOf(primitive, count);
    }
    tile_->elements.push_back(std::move(element));
  }

  // Modes 0 points, 1 a segment, 3 a line, none triangles.
  std::size_t trianglesOf(const Json& primitive, std::size_t count) const {
    if (!primitive.contains("mode")) {
      return accessor(primitive["indices"])["count"].get<std::size_t>() / 3;
    }
    return primitive["mode"] == 0 ? count : count - 1;
  }

  Glb glb_;
  Points points_;
  Json table_;
  ReadTile* tile_ = nullptr;
};

void read(const std::string& file, const Matrix& above, std::size_t parent, std::size_t depth,
          Points points, std::vector<ReadTile>& tiles);

void readTile(const Json& json, const std::filesystem::path& folder, const Matrix& above,
              std::size_t parent, std::size_t depth, Points points, std::vector<ReadTile>& tiles) {
  const Matrix place = product(above, json.value("transform", kSame));
  const auto box = json.at("boundingVolume").at("box").get<std::array<double, 12>>();
  const std::size_t index = tiles.size();
  ReadTile& tile = tiles.emplace_back();
  tile.depth = depth;
  tile.parent = parent;
  tile.error = json.at("geometricError");
  const Point centre = placed(place, {box[0], box[1], box[2]});
  for (std::size_t i = 0; i < 3; ++i) {
    tile.low[i] = centre[i] - box[3 + 4 * i];
    tile.high[i] = centre[i] + box[3 + 4 * i];
  }
  tile.isLeaf = !json.contains("children");
  if (json.contains("content")) {
    const std::string uri = json["content"].at("uri");
    const std::string file = (folder / uri).string();
    if (uri.ends_with(".json")) {
      tile.isLeaf = false;
      read(file, place, index, depth + 1, points, tiles);
      return;
    }
    Content(file, points).readInto(tile, place);
  }
  if (!json.contains("children")) return;
  for (const Json& child : json["children"]) {
    readTile(child, folder, place, index, depth + 1, points, tiles);
  }
}

void read(const std::string& file, const Matrix& above, std::size_t parent, std::size_t depth,
          Points points, std::vector<ReadTile>& tiles) {
  const Json json = Json::parse(bytesOf(file));
  EXPECT_EQ(json.at("asset").at("version"), "1.1");
  EXPECT_GE(json.at("geometricError"), json.at("root").at("geometricError"));
  EXPECT_EQ(json.at("root").at("refine"), "REPLACE");
  readTile(json["root"], std::filesystem::path(file).parent_path(), above, parent, depth, points,
           tiles);
}

}  // namespace

std::size_t ReadTile::triangles() const {
  std::size_t sum = 0;
  for (const ShownElement& each : elements) sum += each.triangles;
  return sum;
}

std::vector<ReadTile> readTileset(const std::string& file, Points points) {
  std::vector<ReadTile> tiles;
  read(file, kSame, 0, 0, points, tiles);
  return tiles;
}

std::vector<std::pair<std::string, std::uint64_t>> shownInLeaves(
    const std::vector<ReadTile>& tiles) {
  std::vector<std::pair<std::string, std::uint64_t>> shown;
  for (const ReadTile& tile : tiles) {
    if (!tile.isLeaf) continue;
    for (const ShownElement& each : tile.elements) shown.emplace_back(each.file, each.line);
  }
  std::sort(shown.begin(), shown.end());
  return shown;
}

}  // namespace VeskTest
