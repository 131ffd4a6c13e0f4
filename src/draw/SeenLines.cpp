// SPDX-License-Identifier: MIT
#include "draw/SeenLines.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "draw/Bands.h"
#include "draw/DepthBand.h"
#include "draw/MeshLines.h"
#include "draw/Occlusion.h"
#include "draw/StrokeChains.h"

namespace Vesk {
namespace {

constexpr int kMargin = 16;  // samples: 4 pixels

// Shorter lines in the drawing are points.
constexpr double kNoLength = 1e-3;

// A segment of a polyline.
struct FreeLine {
  ScreenPoint a;
  ScreenPoint b;
};

// The part of a line between two heights; none if it has none. The lower limit is
// no part of it.
std::optional<LinePart> partBetween(const ScreenPoint& a, const ScreenPoint& b, double top,
                                    double bottom) {
  const double dy = b.y - a.y;
  if (dy == 0.0) {
    if (a.y < top || a.y >= bottom) return std::nullopt;
    return LinePart();
  }
  const auto [from, to] = std::minmax({(top - a.y) / dy, (bottom - a.y) / dy});
  const LinePart part{std::max(from, 0.0), std::min(to, 1.0)};
  if (!(part.from < part.to)) return std::nullopt;
  return part;
}

// The part of a box between two heights.
ScreenBox boxBetween(const ScreenBox& box, double top, double bottom) {
  return {box.left, box.right, std::max(box.top, top), std::min(box.bottom, bottom), box.nearest};
}

bool hasLength(const ScreenPoint& a, const ScreenPoint& b) {
  return std::fabs(a.x - b.x) > kNoLength || std::fabs(a.y - b.y) > kNoLength;
}

// What the threads share: lines of meshes and polylines, none of which changes.
class LinesOfScene {
 public:
  explicit LinesOfScene(const Surfaces& surfaces) {
    const Scene& scene = surfaces.scene();
    meshes_.reserve(scene.meshes.size());
    for (const Mesh& mesh : scene.meshes) meshes_.push_back(linesOf(mesh));
    const Projection& projection = surfaces.projection();
    for (const SceneLine& line : scene.lines) {
      for (std::size_t k = 0; k + 1 < line.count; ++k) {
        free_.push_back({projection.point(scene.lineVertices[line.first + k]),
                         projection.point(scene.lineVertices[line.first + k + 1])});
      }
    }
  }

  const std::vector<MeshLine>& ofMesh(std::uint32_t mesh) const { return meshes_[mesh]; }
  const std::vector<FreeLine>& free() const { return free_; }

 private:
  std::vector<std::vector<MeshLine>> meshes_;
  std::vector<FreeLine> free_;
};

// What of lines, points and texts is seen in a band.
struct SeenInBand {
  std::vector<LinePiece> meshPieces;
  std::vector<LinePiece> freePieces;
  std::vector<std::size_t> points;
  std::vector<std::size_t> texts;
  std::vector<std::uint32_t> instances;
};

// Looks at bands, one after the other.
class Finder {
 public:
  Finder(const Surfaces& surfaces, const LinesOfScene& lines, int width, double lineWidth,
         Bands& bands)
      : surfaces_(surfaces),
        scene_(surfaces.scene()),
        lines_(lines),
        bands_(bands),
        band_(surfaces, width),
        occlusion_(surfaces, band_),
        aside_(lineWidth) {}

  // The rows of a band; the first one goes up and the last one down without end.
  SeenInBand look(int firstRow, int endRow, double top, double bottom) {
    SeenInBand seen;
    band_.draw(firstRow, endRow, kMargin, bands_);
    seen.instances = band_.instancesIn(firstRow, endRow);
    for (std::uint32_t i = 0; i < surfaces_.count(); ++i) {
      if (!surfaces_.isBetween(i, top, bottom)) continue;
      bands_.check();
      if (occlusion_.isHidden(boxBetween(surfaces_.boxOf(i), top, bottom))) continue;
      lookAtInstance(i, seen.meshPieces, top, bottom);
    }
    const std::vector<FreeLine>& free = lines_.free();
    for (std::size_t i = 0; i < free.size(); ++i) {
      const FreeLine& line = free[i];
      if (hasLength(line.a, line.b)) lookAt(line.a, line.b, {}, i, seen.freePieces, top, bottom);
    }
    const auto isSeen = [&](const GePoint& p) {
      const ScreenPoint at = surfaces_.projection().point(p);
      return at.y >= top && at.y < bottom && occlusion_.isSeen(at);
    };
    for (std::size_t i = 0; i < scene_.points.size(); ++i) {
      if (isSeen(scene_.points[i].position)) seen.points.push_back(i);
    }
    for (std::size_t i = 0; i < scene_.texts.size(); ++i) {
      const SceneText& text = scene_.texts[i];
      const GePoint middle =
          text.position + text.along * (text.width / 2.0) + text.up * (text.height / 2.0);
      if (isSeen(text.position) || isSeen(middle)) seen.texts.push_back(i);
    }
    seen.meshPieces.shrink_to_fit();
    return seen;
  }

 private:
  void lookAtInstance(std::uint32_t instance, std::vector<LinePiece>& pieces, double top,
                      double bottom) {
    surfaces_.project(instance, points_);
    const Mesh& mesh = surfaces_.meshOf(instance);
    faces_.clear();
    for (const MeshTriangle& t : mesh.triangles) {
      faces_.push_back(facesEye({points_[t[0]], points_[t[1]], points_[t[2]]}));
    }
    const auto faces = [&](std::uint32_t triangle) {
      return triangle != kNoTriangle && faces_[triangle];
    };
    const std::vector<MeshLine>& lines = lines_.ofMesh(scene_.instances[instance].mesh);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const MeshLine& line = lines[i];
      const bool first = faces(line.triangle1);
      const bool second = faces(line.triangle2);
      // A silhouette lies between a face that is seen and one that is not.
      if (!line.isSharp && first == second) continue;
      if (mesh.closed && !first && !second) continue;
      const ScreenPoint& a = points_[line.a];
      const ScreenPoint& b = points_[line.b];
      if (!hasLength(a, b)) continue;
      const auto id = (std::uint64_t{instance} << 32U) | i;
      lookAt(a, b, {instance, line.triangle1, line.triangle2}, id, pieces, top, bottom);
    }
  }

  void lookAt(const ScreenPoint& a, const ScreenPoint& b, const OwnTriangles& own,
              std::uint64_t line, std::vector<LinePiece>& pieces, double top, double bottom) {
    const std::optional<LinePart> part = partBetween(a, b, top, bottom);
    if (!part) return;
    if (occlusion_.isHidden(between(a, b, part->from), between(a, b, part->to))) return;
    occlusion_.seenParts(a, b, *part, own, parts_);
    for (const LinePart& each : parts_) {
      const ScreenPoint middle = between(a, b, (each.from + each.to) / 2.0);
      const bool isOutline = occlusion_.isOutline(middle, between(a, b, each.to), aside_);
      pieces.push_back({line, each, isOutline});
    }
  }

  const Surfaces& surfaces_;
  const Scene& scene_;
  const LinesOfScene& lines_;
  Bands& bands_;
  DepthBand band_;
  Occlusion occlusion_;
  double aside_;
  std::vector<ScreenPoint> points_;
  std::vector<bool> faces_;
  std::vector<LinePart> parts_;
};

// Moves what was found to the end of `all`, and gives its memory back.
void append(std::vector<LinePiece>& all, std::vector<LinePiece>& found) {
  all.insert(all.end(), found.begin(), found.end());
  std::vector<LinePiece>().swap(found);
}

// Joins what the bands have found to strokes.
class StrokeMaker {
 public:
  StrokeMaker(const Surfaces& surfaces, const LinesOfScene& lines, Bands& bands)
      : surfaces_(surfaces), scene_(surfaces.scene()), lines_(lines), bands_(bands) {}

  SeenLines make(std::vector<SeenInBand>& found) {
    seen_.points.assign(scene_.points.size(), false);
    seen_.texts.assign(scene_.texts.size(), false);
    std::size_t meshCount = 0;
    std::size_t freeCount = 0;
    for (const SeenInBand& each : found) {
      meshCount += each.meshPieces.size();
      freeCount += each.freePieces.size();
    }
    meshPieces_.reserve(meshCount);
    freePieces_.reserve(freeCount);
    for (SeenInBand& each : found) {
      append(meshPieces_, each.meshPieces);
      append(freePieces_, each.freePieces);
      seen_.instances.push_back(std::move(each.instances));
      for (const std::size_t i : each.points) seen_.points[i] = true;
      for (const std::size_t i : each.texts) seen_.texts[i] = true;
    }
    makeMeshStrokes();
    makeFreeStrokes();
    std::stable_sort(seen_.strokes.begin(), seen_.strokes.end(),
                     [](const Stroke& a, const Stroke& b) { return a.element < b.element; });
    return std::move(seen_);
  }

 private:
  void makeMeshStrokes() {
    joinPieces(meshPieces_);
    StrokeChains chains(meshPieces_.size());
    for (std::size_t begin = 0; begin < meshPieces_.size();) {
      const auto instance = static_cast<std::uint32_t>(meshPieces_[begin].line >> 32U);
      const SceneInstance& placed = scene_.instances[instance];
      const std::vector<MeshLine>& lines = lines_.ofMesh(placed.mesh);
      surfaces_.project(instance, points_);
      std::size_t end = begin;
      for (; end < meshPieces_.size() && meshPieces_[end].line >> 32U == instance; ++end) {
        const LinePiece& piece = meshPieces_[end];
        const MeshLine& line = lines[piece.line & 0xFFFFFFFFU];
        chains.add({points_[line.a], line.a}, {points_[line.b], line.b}, piece.part,
                   piece.isOutline ? LineWeight::kOutline : LineWeight::kEdge);
      }
      bands_.check();
      chains.take(placed.element, seen_.strokes);
      begin = end;
    }
    std::vector<LinePiece>().swap(meshPieces_);
  }

  void makeFreeStrokes() {
    joinPieces(freePieces_);
    StrokeChains chains(freePieces_.size());
    const std::vector<FreeLine>& free = lines_.free();
    std::size_t piece = 0;
    std::size_t first = 0;
    for (const SceneLine& line : scene_.lines) {
      const std::size_t end = first + line.count - 1;
      for (; piece < freePieces_.size() && freePieces_[piece].line < end; ++piece) {
        const auto index = static_cast<std::size_t>(freePieces_[piece].line);
        const auto vertex = static_cast<std::uint32_t>(index - first);
        chains.add({free[index].a, vertex}, {free[index].b, vertex + 1}, freePieces_[piece].part,
                   LineWeight::kLine);
      }
      chains.take(line.element, seen_.strokes);
      first = end;
    }
  }

  const Surfaces& surfaces_;
  const Scene& scene_;
  const LinesOfScene& lines_;
  Bands& bands_;
  std::vector<ScreenPoint> points_;
  std::vector<LinePiece> meshPieces_;
  std::vector<LinePiece> freePieces_;
  SeenLines seen_;
};

}  // namespace

SeenLines findSeenLines(const Surfaces& surfaces, int width, int height, double lineWidth,
                        const std::function<void()>& poll) {
  constexpr double kEndless = 1e300;
  const LinesOfScene lines(surfaces);
  std::vector<SeenInBand> found(static_cast<std::size_t>(bandsOf(height)));
  Bands bands(poll);
  bands.run(bandsOf(height), [&] {
    const auto finder = std::make_shared<Finder>(surfaces, lines, width, lineWidth, bands);
    return [&, finder](int band) {
      const int row = band * kBandRows;
      const int end = std::min(row + kBandRows, height);
      found[static_cast<std::size_t>(band)] =
          finder->look(row, end, row == 0 ? -kEndless : row, end == height ? kEndless : end);
    };
  });
  return StrokeMaker(surfaces, lines, bands).make(found);
}

}  // namespace Vesk
