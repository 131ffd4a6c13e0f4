// SPDX-License-Identifier: MIT
#include "draw/SeenLines.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "draw/DepthBand.h"
#include "draw/MeshLines.h"
#include "draw/Occlusion.h"
#include "draw/StrokeChains.h"

namespace Vesk {
namespace {

constexpr int kBandRows = 64;  // pixels
constexpr int kMargin = 16;    // samples: 4 pixels

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

bool hasLength(const ScreenPoint& a, const ScreenPoint& b) {
  return std::fabs(a.x - b.x) > kNoLength || std::fabs(a.y - b.y) > kNoLength;
}

class Finder {
 public:
  Finder(const Surfaces& surfaces, int width, double lineWidth)
      : surfaces_(surfaces),
        scene_(surfaces.scene()),
        band_(surfaces, width),
        occlusion_(surfaces, band_),
        aside_(lineWidth) {
    lines_.resize(scene_.meshes.size());
    isKnown_.resize(scene_.meshes.size());
    for (std::size_t i = 0; i < scene_.lines.size(); ++i) {
      const SceneLine& line = scene_.lines[i];
      for (std::size_t k = 0; k + 1 < line.count; ++k) {
        const Projection& projection = surfaces.projection();
        free_.push_back({projection.point(scene_.lineVertices[line.first + k]),
                         projection.point(scene_.lineVertices[line.first + k + 1])});
      }
    }
    seen_.points.assign(scene_.points.size(), false);
    seen_.texts.assign(scene_.texts.size(), false);
  }

  // The rows of a band; the first one goes up and the last one down without end.
  void look(int firstRow, int endRow, double top, double bottom) {
    band_.draw(firstRow, endRow, kMargin);
    for (std::uint32_t i = 0; i < surfaces_.count(); ++i) {
      if (surfaces_.isBetween(i, top, bottom)) lookAtInstance(i, top, bottom);
    }
    for (std::size_t i = 0; i < free_.size(); ++i) {
      const FreeLine& line = free_[i];
      if (hasLength(line.a, line.b)) lookAt(line.a, line.b, {}, i, freePieces_, top, bottom);
    }
    const auto isSeen = [&](const GePoint& p) {
      const ScreenPoint at = surfaces_.projection().point(p);
      return at.y >= top && at.y < bottom && occlusion_.isSeen(at);
    };
    for (std::size_t i = 0; i < scene_.points.size(); ++i) {
      if (isSeen(scene_.points[i].position)) seen_.points[i] = true;
    }
    for (std::size_t i = 0; i < scene_.texts.size(); ++i) {
      const SceneText& text = scene_.texts[i];
      const GePoint middle =
          text.position + text.along * (text.width / 2.0) + text.up * (text.height / 2.0);
      if (isSeen(text.position) || isSeen(middle)) seen_.texts[i] = true;
    }
  }

  SeenLines take() {
    makeMeshStrokes();
    makeFreeStrokes();
    std::stable_sort(seen_.strokes.begin(), seen_.strokes.end(),
                     [](const Stroke& a, const Stroke& b) { return a.element < b.element; });
    return std::move(seen_);
  }

 private:
  const std::vector<MeshLine>& linesOfMesh(std::uint32_t mesh) {
    if (!isKnown_[mesh]) {
      isKnown_[mesh] = true;
      lines_[mesh] = linesOf(scene_.meshes[mesh]);
    }
    return lines_[mesh];
  }

  void lookAtInstance(std::uint32_t instance, double top, double bottom) {
    surfaces_.project(instance, points_);
    const Mesh& mesh = surfaces_.meshOf(instance);
    faces_.clear();
    for (const MeshTriangle& t : mesh.triangles) {
      faces_.push_back(facesEye({points_[t[0]], points_[t[1]], points_[t[2]]}));
    }
    const auto faces = [&](std::uint32_t triangle) {
      return triangle != kNoTriangle && faces_[triangle];
    };
    const std::vector<MeshLine>& lines = linesOfMesh(scene_.instances[instance].mesh);
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
      lookAt(a, b, {instance, line.triangle1, line.triangle2}, id, meshPieces_, top, bottom);
    }
  }

  void lookAt(const ScreenPoint& a, const ScreenPoint& b, const OwnTriangles& own,
              std::uint64_t line, std::vector<LinePiece>& pieces, double top, double bottom) {
    const std::optional<LinePart> part = partBetween(a, b, top, bottom);
    if (!part) return;
    occlusion_.seenParts(a, b, *part, own, parts_);
    for (const LinePart& each : parts_) {
      const ScreenPoint middle = between(a, b, (each.from + each.to) / 2.0);
      const bool isOutline = occlusion_.isOutline(middle, between(a, b, each.to), aside_);
      pieces.push_back({line, each, isOutline});
    }
  }

  void makeMeshStrokes() {
    joinPieces(meshPieces_);
    StrokeChains chains;
    for (std::size_t begin = 0; begin < meshPieces_.size();) {
      const auto instance = static_cast<std::uint32_t>(meshPieces_[begin].line >> 32U);
      const SceneInstance& placed = scene_.instances[instance];
      const std::vector<MeshLine>& lines = linesOfMesh(placed.mesh);
      surfaces_.project(instance, points_);
      std::size_t end = begin;
      for (; end < meshPieces_.size() && meshPieces_[end].line >> 32U == instance; ++end) {
        const LinePiece& piece = meshPieces_[end];
        const MeshLine& line = lines[piece.line & 0xFFFFFFFFU];
        chains.add({points_[line.a], line.a}, {points_[line.b], line.b}, piece.part,
                   piece.isOutline ? LineWeight::kOutline : LineWeight::kEdge);
      }
      chains.take(placed.element, seen_.strokes);
      begin = end;
    }
  }

  void makeFreeStrokes() {
    joinPieces(freePieces_);
    StrokeChains chains;
    std::size_t piece = 0;
    std::size_t first = 0;
    for (const SceneLine& line : scene_.lines) {
      const std::size_t end = first + line.count - 1;
      for (; piece < freePieces_.size() && freePieces_[piece].line < end; ++piece) {
        const auto index = static_cast<std::size_t>(freePieces_[piece].line);
        const auto vertex = static_cast<std::uint32_t>(index - first);
        chains.add({free_[index].a, vertex}, {free_[index].b, vertex + 1}, freePieces_[piece].part,
                   LineWeight::kLine);
      }
      chains.take(line.element, seen_.strokes);
      first = end;
    }
  }

  const Surfaces& surfaces_;
  const Scene& scene_;
  DepthBand band_;
  Occlusion occlusion_;
  double aside_;
  std::vector<std::vector<MeshLine>> lines_;  // by mesh
  std::vector<bool> isKnown_;
  std::vector<FreeLine> free_;
  std::vector<ScreenPoint> points_;
  std::vector<bool> faces_;
  std::vector<LinePart> parts_;
  std::vector<LinePiece> meshPieces_;
  std::vector<LinePiece> freePieces_;
  SeenLines seen_;
};

}  // namespace

SeenLines findSeenLines(const Surfaces& surfaces, int width, int height, double lineWidth) {
  constexpr double kEndless = 1e300;
  Finder finder(surfaces, width, lineWidth);
  for (int row = 0; row < height; row += kBandRows) {
    const int end = std::min(row + kBandRows, height);
    finder.look(row, end, row == 0 ? -kEndless : row, end == height ? kEndless : end);
  }
  return finder.take();
}

}  // namespace Vesk
