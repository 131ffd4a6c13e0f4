// SPDX-License-Identifier: MIT
#include "tiles/TilesMerge.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string_view>
#include <system_error>

#include "export/GltfText.h"
#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "tiles/TilesFolder.h"
#include "vesk/Extents.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

// Of a parent to its child, at the least: errors fall towards the children.
constexpr double kErrorStep = 1.25;

[[noreturn]] void refuse(const std::string& folder, const std::string& why) {
  throw Failure(Exit::kInput, folder + '/' + kTilesetName + ": " + why);
}

struct Zone {
  std::string uri;
  Vesk::Extents box;  // metres
  double error = 0.0;
  std::uint64_t elements = 0;
};

// Without the children of its root, which may be many.
Json headOf(const std::string& folder) {
  std::ifstream in(pathOf(folder) / kTilesetName, std::ios::binary);
  const auto keep = [](int /*depth*/, Json::parse_event_t event, Json& parsed) {
    return event != Json::parse_event_t::key || parsed != Json("children");
  };
  try {
    return Json::parse(in, keep);
  } catch (const Json::exception&) {
    refuse(folder, "not a tileset");
  }
}

// The box of the root: of this program's tilesets, which stand upright.
Vesk::Extents boxOf(const Json& root, const std::string& folder) {
  const auto numbers = root.at("boundingVolume").at("box").get<std::array<double, 12>>();
  GeVector by;
  if (root.contains("transform")) {
    const auto transform = root.at("transform").get<std::array<double, 16>>();
    by = {transform[12], transform[13], transform[14]};
  }
  const GeVector half(numbers[3], numbers[7], numbers[11]);
  const GePoint centre = GePoint(numbers[0], numbers[1], numbers[2]) + by;
  if (!(half.x >= 0.0 && half.y >= 0.0 && half.z >= 0.0)) refuse(folder, "no box");
  return {centre - half, centre + half};
}

// As a relative reference.
std::string uriOf(const fs::path& path) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string name = nameOf(path);
  std::replace(name.begin(), name.end(), '\\', '/');
  std::string uri;
  for (const char c : name) {
    if (kPlain.find(c) != kPlain.npos) {
      uri += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri += '%';
    uri += kDigits[byte >> 4U];
    uri += kDigits[byte & 0xFU];
  }
  return uri;
}

Zone zoneOf(const std::string& folder, const std::string& into) {
  Zone zone;
  std::error_code error;
  const fs::path from = fs::weakly_canonical(pathOf(into), error);
  const fs::path to = fs::weakly_canonical(pathOf(folder), error);
  const fs::path relative = to.lexically_relative(from);
  if (relative.empty() || *relative.begin() == ".." || relative == ".") {
    throw Failure(Exit::kUsage, folder + " is not below " + into,
                  "tilesets are merged where they stand: name the folder that holds them all");
  }
  zone.uri = uriOf(relative / kTilesetName);
  const Json head = headOf(folder);
  try {
    zone.box = boxOf(head.at("root"), folder);
    zone.error = head.at("geometricError").get<double>();
    if (head.contains("extras")) zone.elements = head["extras"].value("elements", std::uint64_t{0});
  } catch (const Json::exception&) {
    refuse(folder, "not a tileset of vesk");
  }
  return zone;
}

void appendBox(std::string& to, const Vesk::Extents& box) {
  const GeVector half = (box.max - box.min) / 2.0;
  const GePoint centre = box.min + half;
  to += "{\"boundingVolume\":{\"box\":";
  appendJsonNumbers(to, std::array{centre.x, centre.y, centre.z, half.x, 0.0, 0.0, 0.0, half.y, 0.0,
                                   0.0, 0.0, half.z});
  to += "},\"geometricError\":";
}

}  // namespace

bool isTileset(const std::string& folder) {
  std::error_code error;
  return fs::is_regular_file(pathOf(folder) / kTilesetName, error);
}

std::string mergedTileset(const std::vector<std::string>& folders, const std::string& into) {
  std::vector<Zone> zones;
  Vesk::Extents all;
  double error = 0.0;
  std::uint64_t elements = 0;
  for (const std::string& folder : folders) {
    const Zone& zone = zones.emplace_back(zoneOf(folder, into));
    all.add(zone.box.min).add(zone.box.max);
    error = std::max(error, zone.error);
    elements += zone.elements;
  }
  error = std::max(error * kErrorStep, (all.max - all.min).length());
  std::string json = "{\"asset\":{\"version\":\"1.1\"},\"geometricError\":";
  appendJsonNumber(json, error * kErrorStep);
  json += ",\n\"root\":";
  appendBox(json, all);
  appendJsonNumber(json, error);
  json += ",\"refine\":\"REPLACE\",\"children\":[";
  for (const Zone& zone : zones) {
    json += &zone == zones.data() ? "\n" : ",\n";
    appendBox(json, zone.box);
    appendJsonNumber(json, zone.error);
    json += ",\"content\":{\"uri\":\"" + zone.uri + "\"}}";
  }
  json += "]},\n\"extras\":{\"generator\":\"vesk " VESK_VERSION "\",\"elements\":";
  appendJsonNumber(json, elements);
  return json + "}}\n";
}

}  // namespace VeskTool
