// SPDX-License-Identifier: MIT
#include "tiles/Tiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <utility>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "export/GltfText.h"
#include "tiles/GeoBytes.h"
#include "tiles/Spill.h"
#include "vesk/Txt.h"

namespace VeskTool {
namespace {

constexpr std::size_t kBatch = 1024;  // elements that are measured at once
constexpr std::size_t kPiece = std::size_t{1} << 16;

// So often tiles are divided by place; what is still together then is divided by its order.
constexpr std::size_t kDivisions = 24;

// Of the model's diagonal, and in metres: what rounding to 32 bits may add to a box.
constexpr double kPad = 1e-6;
constexpr double kLeastPad = 1e-4;

void widen(Vesk::Extents& box, const Vesk::Extents& by) { box.add(by.min).add(by.max); }

double diagonalOf(const Vesk::Extents& box) { return (box.max - box.min).length(); }

// What the elements of a scene take to draw, by their index.
struct Drawn {
  std::vector<Vesk::Extents> boxes;
  std::vector<std::uint64_t> triangles;
  std::vector<double> deviations;
};

Drawn drawnOf(const Vesk::Scene& scene) {
  const std::size_t count = scene.elements.size();
  Drawn drawn{std::vector<Vesk::Extents>(count), std::vector<std::uint64_t>(count),
              std::vector<double>(count)};
  for (const Vesk::SceneInstance& each : scene.instances) {
    const Vesk::Mesh& mesh = scene.meshes[each.mesh];
    Vesk::Extents& box = drawn.boxes[each.element];
    for (const GePoint& p : mesh.positions) box.add(each.placement.point(p) + scene.offset);
    drawn.triangles[each.element] = mesh.triangles.size();
    drawn.deviations[each.element] = each.deviation;
  }
  for (const Vesk::ScenePoint& each : scene.points) {
    drawn.boxes[each.element].add(each.position + scene.offset);
    drawn.triangles[each.element] = 1;
  }
  for (const Vesk::SceneLine& each : scene.lines) {
    for (std::size_t i = 0; i < each.count; ++i) {
      drawn.boxes[each.element].add(scene.lineVertices[each.first + i] + scene.offset);
    }
    drawn.triangles[each.element] = each.count - 1;
  }
  return drawn;
}

// Takes of the largest elements that a tile leaves out as many as it has room for, evenly
// over all of them.
class Filler {
 public:
  Filler(std::uint64_t room, std::uint64_t wanted)
      : share_(wanted == 0
                   ? 0.0
                   : std::min(1.0, static_cast<double>(room) / static_cast<double>(wanted))) {}

  bool takes(std::uint32_t triangles) {
    seen_ += triangles;
    if (static_cast<double>(taken_ + triangles) > share_ * static_cast<double>(seen_)) return false;
    taken_ += triangles;
    return true;
  }

 private:
  double share_;
  std::uint64_t seen_ = 0;
  std::uint64_t taken_ = 0;
};

// Which part of a tile an element is in.
class Division {
 public:
  static constexpr std::size_t kParts = 8;

  // In no more parts than `wanted`, if that is 2 or 4: tiles are better filled then.
  Division(const Vesk::Extents& centres, std::uint64_t count, bool byPlace, std::uint64_t wanted)
      : middle_(centreOf(centres)), count_(count) {
    const GeVector size = centres.max - centres.min;
    std::array<std::pair<double, std::size_t>, 3> sides{
        {{size.x, std::size_t{0}}, {size.y, std::size_t{1}}, {size.z, std::size_t{2}}}};
    std::sort(sides.begin(), sides.end(), std::greater<>());
    byPlace_ = byPlace && sides[0].first > 0.0;
    std::uint64_t parts = 1;
    for (const auto& [length, axis] : sides) {
      if (parts >= wanted || !(length > sides[0].first / 2.0)) continue;
      divided_[axis] = true;
      parts *= 2;
    }
  }

  std::size_t partOf(const GePoint& centre) {
    if (!byPlace_) return static_cast<std::size_t>(kParts * index_++ / count_);
    return (divided_[0] && centre.x > middle_.x ? 1U : 0U) +
           (divided_[1] && centre.y > middle_.y ? 2U : 0U) +
           (divided_[2] && centre.z > middle_.z ? 4U : 0U);
  }

 private:
  GePoint middle_;
  std::uint64_t count_;
  bool byPlace_ = false;
  std::array<bool, 3> divided_{};
  std::uint64_t index_ = 0;
};

}  // namespace

struct TilesWriter::Part {
  explicit Part(std::filesystem::path file) : spill(std::move(file)) {}

  void add(std::string_view bytes, const TileElement& element) {
    spill.add(bytes);
    widen(box, element.box);
    centres.add(centreOf(element.box));
    sum.add(element.detail);
    ++count;
  }

  Spill spill;
  Vesk::Extents box;
  Vesk::Extents centres;
  DetailSum sum;
  std::uint64_t count = 0;
};

// The tile that the next one is a child of.
struct TilesWriter::Above {
  std::size_t level = DetailSum::kLevels;
  GePoint centre;
  bool hasChild = false;
};

TilesWriter::TilesWriter(const TilesOptions& options, const TilesFolder& folder, Session& session)
    : options_(options),
      folder_(folder),
      session_(session),
      tileset_(nameOf(folder.path() / kTilesetName), false),
      fine_(options.fineness),
      coarse_(coarseFineness()) {
  all_ = makePart();
}

TilesWriter::~TilesWriter() = default;

std::unique_ptr<TilesWriter::Part> TilesWriter::makePart() {
  return std::make_unique<Part>(folder_.path() / ("waiting-" + std::to_string(spills_++)));
}

void TilesWriter::beginFile(const std::string& name, const std::string& handedOn) {
  addWaiting();
  files_.push_back(handedOn);
  shownFile_ = shownName(name);
}

std::string TilesWriter::add(const ExportedElement& element) {
  const Vesk::Geo& geo = *element.record.geo;
  if (geo.typeCode() == Vesk::Txt::kTypeCode) {
    ++leftOut_["text"];
    return {};
  }
  TileElement& each = waiting_.emplace_back();
  each.line = element.record.firstLine;
  each.file = static_cast<std::uint32_t>(files_.size() - 1);
  each.kind = static_cast<std::uint8_t>(kindOf(geo));
  each.header = headerText(element.record.header);
  each.group = trimmedField(element.record.header.f2);
  appendGeo(each.geo, geo);
  fine_.add(geo, {});
  coarse_.add(geo, {});
  if (waiting_.size() == kBatch) addWaiting();
  return {};
}

void TilesWriter::say(const TileElement& element, const std::string& reason) {
  Finding finding;
  finding.code = "V401";
  finding.file = shownFile_;
  finding.line = element.line;
  finding.message =
      std::string(wordOf(static_cast<Kind>(element.kind))) + " can't be shown: " + reason;
  session_.say(finding);
  exit_ = Exit::kNo;
}

// Measures what waits.
void TilesWriter::addWaiting() {
  const Vesk::Scene scene = fine_.finish();
  const Drawn fine = drawnOf(scene);
  const Drawn coarse = drawnOf(coarse_.finish());
  std::vector<std::string> reasons(waiting_.size());
  for (const Vesk::SceneFailure& each : scene.failures) reasons[each.element] = each.reason;
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    TileElement& element = waiting_[i];
    if (reasons[i].empty() && fine.triangles[i] > options_.triangles) {
      reasons[i] = "more triangles than a tile may have; --tile-triangles " +
                   std::to_string(fine.triangles[i]) + " has room for them";
    }
    if (!reasons[i].empty()) {
      say(element, reasons[i]);
      continue;
    }
    const bool hasCoarse = coarse.triangles[i] > 0;
    element.box = fine.boxes[i];
    if (hasCoarse) widen(element.box, coarse.boxes[i]);
    element.detail.size = diagonalOf(element.box);
    element.detail.fine = static_cast<std::uint32_t>(fine.triangles[i]);
    element.detail.coarse = element.detail.fine;
    element.detail.deviation = element.detail.size;
    if (hasCoarse && coarse.triangles[i] <= fine.triangles[i]) {
      element.detail.coarse = static_cast<std::uint32_t>(coarse.triangles[i]);
      element.detail.deviation = coarse.deviations[i];
    }
    all_->add(bytesOf(element), element);
  }
  waiting_.clear();
}

void TilesWriter::finish() {
  addWaiting();
  const double metres = options_.millimetres / 1000.0;
  if (all_->count == 0) all_->box = Vesk::Extents({}, {});
  const double diagonal = diagonalOf(all_->box) * metres;
  pad_ = kPad * diagonal + kLeastPad;
  const bool isLeaf = all_->sum.fine() <= options_.triangles;
  const double rootError =
      isLeaf ? 0.0 : DetailSum::errorOf(all_->sum.levelFor(options_.triangles)) * metres;
  json_ = "{\"asset\":{\"version\":\"1.1\"},\"geometricError\":";
  appendJsonNumber(json_, std::max(diagonal, 2.0 * rootError));
  json_ += ",\n\"root\":";
  const std::uint64_t elements = all_->count;
  Above above;
  writeTile(*all_, above, 0);
  json_ += ",\n\"extras\":{\"generator\":\"vesk " VESK_VERSION "\",\"elements\":";
  appendJsonNumber(json_, elements);
  json_ += ",\"tiles\":";
  appendJsonNumber(json_, tiles_);
  json_ += "}}\n";
  tileset_.write(json_);
  tileset_.commit();
}

void TilesWriter::writeTile(Part& part, Above& above, std::size_t depth) {
  if (part.sum.fine() <= options_.triangles) {
    writeLeaf(part, above);
    return;
  }
  const std::size_t level = part.sum.levelFor(options_.triangles);
  // What would look like its parent is none: its children are the parent's.
  const bool isTile = level < above.level;
  Above own;
  own.level = level;
  own.centre = centreOf(part.box);
  if (isTile) beginTile(part, DetailSum::errorOf(level), above);
  TileContent content(options_.fineness);
  std::array<std::unique_ptr<Part>, kParts> children =
      divide(part, depth < kDivisions, isTile ? level : DetailSum::kLevels, content);
  if (isTile) {
    if (!content.isEmpty()) writeContent(content, own.centre);
    json_ += ",\"children\":[\n";
  }
  for (std::unique_ptr<Part>& child : children) {
    if (child != nullptr) writeTile(*child, isTile ? own : above, depth + 1);
    child.reset();
  }
  if (isTile) json_ += "]}";
}

// The elements go to parts of it, and what a tile of this level shows to its content.
std::array<std::unique_ptr<TilesWriter::Part>, TilesWriter::kParts> TilesWriter::divide(
    Part& part, bool byPlace, std::size_t level, TileContent& content) {
  std::array<std::unique_ptr<Part>, kParts> parts;
  Division division(part.centres, part.count, byPlace,
                    (part.sum.fine() - 1) / options_.triangles + 1);
  const bool isShown = level < DetailSum::kLevels;
  Filler filler(isShown ? options_.triangles - part.sum.triangles(level) : 0,
                isShown ? part.sum.leftOut(level) : 0);
  part.spill.forEach([&](std::string_view bytes) {
    const TileElement element = tileElementOf(bytes);
    std::unique_ptr<Part>& to = parts[division.partOf(centreOf(element.box))];
    if (to == nullptr) to = makePart();
    to->add(bytes, element);
    if (!isShown) return;
    const std::size_t gone = DetailSum::levelOf(element.detail.size);
    if (gone < level || (gone == level && !filler.takes(element.detail.coarse))) return;
    content.add(element, DetailSum::levelOf(element.detail.deviation) <= level);
  });
  part.spill.clear();
  for (const std::unique_ptr<Part>& each : parts) {
    if (each != nullptr) each->spill.rest();
  }
  return parts;
}

void TilesWriter::writeLeaf(Part& part, Above& above) {
  beginTile(part, 0.0, above);
  TileContent content(options_.fineness);
  part.spill.forEach([&](std::string_view bytes) { content.add(tileElementOf(bytes), false); });
  part.spill.clear();
  if (!content.isEmpty()) writeContent(content, centreOf(part.box));
  json_ += '}';
}

// All of it but content and children.
void TilesWriter::beginTile(const Part& part, double error, Above& above) {
  const double metres = options_.millimetres / 1000.0;
  const GePoint centre = centreOf(part.box);
  const GeVector half = (part.box.max - part.box.min) * (metres / 2.0);
  const GeVector by = (centre - above.centre) * metres;
  if (above.hasChild) json_ += ",\n";
  above.hasChild = true;
  json_ += "{\"boundingVolume\":{\"box\":";
  appendJsonNumbers(json_, std::array{0.0, 0.0, 0.0, half.x + pad_, 0.0, 0.0, 0.0, half.y + pad_,
                                      0.0, 0.0, 0.0, half.z + pad_});
  json_ += "},\"geometricError\":";
  appendJsonNumber(json_, error * metres);
  if (tiles_++ == 0) json_ += ",\"refine\":\"REPLACE\"";
  json_ += ",\"transform\":";
  appendJsonNumbers(json_, std::array{1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0,
                                      by.x, by.y, by.z, 1.0});
}

void TilesWriter::writeContent(TileContent& content, const GePoint& centre) {
  const std::string name = std::string(kContentName) + '/' + std::to_string(contents_++) + ".glb";
  TileFile file(folder_.path() / name);
  content.write(files_, centre, options_.millimetres, file);
  file.close();
  json_ += ",\"content\":{\"uri\":\"" + name + "\"}";
  if (json_.size() < kPiece) return;
  tileset_.write(json_);
  json_.clear();
}

}  // namespace VeskTool
