// SPDX-License-Identifier: MIT
#include "draw/Painter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <utility>

#include "draw/Bands.h"
#include "draw/DepthBand.h"
#include "draw/MeshLines.h"
#include "draw/ScreenPlane.h"
#include "draw/StrokeFont.h"

namespace Vesk {
namespace {

// Of what lies between 0 and 255, where adding a half rounds right.
std::uint8_t byteOf(double value) {
  return static_cast<std::uint8_t>(value + 0.5);  // NOLINT(bugprone-incorrect-roundings)
}

// A line with round ends; of one point a dot.
struct Ink {
  std::span<const ScreenPoint> points;
  double radius;
  Colour colour;
  double top;
  double bottom;
};

// The lines of a label, side by side in memory: a text may have millions of them.
struct TextInk {
  std::vector<ScreenPoint> points;
  std::vector<std::size_t> ends;  // of each line, behind its last point
  double radius = 0.0;
  double halo = 0.0;  // around that; 0: none
  Colour colour;
  double top = std::numeric_limits<double>::infinity();
  double bottom = -std::numeric_limits<double>::infinity();
};

// All lines of a drawing, in the order in which they cover each other; the texts cover the rest.
class Inks {
 public:
  explicit Inks(const Drawing& drawing) : drawing_(drawing) { addAll(); }

  const std::vector<Ink>& lines() const { return lines_; }
  const std::vector<TextInk>& texts() const { return texts_; }

 private:
  void addInk(std::span<const ScreenPoint> points, double radius, const Colour& colour) {
    const auto [top, bottom] =
        std::minmax_element(points.begin(), points.end(),
                            [](const ScreenPoint& a, const ScreenPoint& b) { return a.y < b.y; });
    const double least = top->y - radius;
    const double most = bottom->y + radius;
    lines_.push_back({points, radius, colour, least, most});
  }

  void addAll() {
    lines_.reserve(drawing_.strokes().size() + drawing_.dots().size());
    for (const Stroke& stroke : drawing_.strokes()) {
      const bool isLine = stroke.weight == LineWeight::kLine;
      addInk(stroke.points, drawing_.widthOf(stroke.weight) / 2.0,
             isLine ? drawing_.colourOf(stroke.element) : drawing_.ink());
    }
    for (const Dot& dot : drawing_.dots()) {
      addInk({&dot.place, 1}, drawing_.dotRadius(), drawing_.colourOf(dot.element));
    }
    for (const auto* lines : {&drawing_.scaleBar(), &drawing_.axes()}) {
      for (const InkLine& line : *lines) addInk(line.points, line.width / 2.0, line.colour);
    }
    for (const Label& label : drawing_.labels()) addLabel(label);
  }

  void addLabel(const Label& label) {
    const double natural = StrokeFont::widthOf(label.text);
    const double stretch = label.width > 0.0 && natural > 0.0 ? label.width / natural : 1.0;
    const double shift = label.isMiddle ? -natural / 2.0 : 0.0;
    std::vector<FontLine> lines;
    StrokeFont::append(label.text, lines);
    const double height = std::sqrt(label.up.x * label.up.x + label.up.y * label.up.y);
    const bool hasHalo = drawing_.style().background.alpha == 255;
    TextInk ink;
    ink.radius = std::max(0.055 * height, 0.5);
    ink.halo = hasHalo ? drawing_.haloOf(label) : 0.0;
    ink.colour = label.colour;
    std::vector<ScreenPoint> placed;
    for (const FontLine& line : lines) {
      placed.clear();
      for (const FontPoint& p : line) {
        placed.push_back(label.place + label.along * ((p.x + shift) * stretch) + label.up * p.y);
      }
      addLine(placed, ink);
    }
    if (!ink.points.empty()) texts_.push_back(std::move(ink));
  }

  // Unless it is beside the drawing.
  void addLine(const std::vector<ScreenPoint>& line, TextInk& ink) const {
    ScreenPoint low = line.front();
    ScreenPoint high = low;
    for (const ScreenPoint& p : line) {
      low = {std::min(low.x, p.x), std::min(low.y, p.y), 0.0};
      high = {std::max(high.x, p.x), std::max(high.y, p.y), 0.0};
    }
    const double reach = ink.radius + ink.halo;
    if (high.x + reach < 0.0 || low.x - reach > drawing_.style().width || high.y + reach < 0.0 ||
        low.y - reach > drawing_.style().height) {
      return;
    }
    ink.top = std::min(ink.top, low.y - reach);
    ink.bottom = std::max(ink.bottom, high.y + reach);
    ink.points.insert(ink.points.end(), line.begin(), line.end());
    ink.ends.push_back(ink.points.size());
  }

  const Drawing& drawing_;
  std::vector<Ink> lines_;
  std::vector<TextInk> texts_;
};

// Paints bands, one after the other.
class Painter {
 public:
  Painter(const Drawing& drawing, const Inks& inks, bool hasFaces, Bands& bands)
      : drawing_(drawing),
        surfaces_(drawing.surfaces()),
        inks_(inks),
        bands_(bands),
        hasFaces_(hasFaces),
        width_(drawing.style().width),
        band_(surfaces_, width_) {}

  // A band, into the picture.
  void paint(int band, Picture& picture) {
    const int row = band * kBandRows;
    const int end = std::min(row + kBandRows, drawing_.style().height);
    if (hasFaces_) band_.draw(row, end, 0, drawing_.instancesIn(band), bands_);
    first_ = row * kSamples;
    end_ = end * kSamples;
    samples_.assign(
        static_cast<std::size_t>(band_.columns()) * static_cast<std::size_t>(end_ - first_),
        drawing_.style().background);
    if (hasFaces_) paintFaces();
    for (const Ink& ink : inks_.lines()) {
      bands_.check();
      if (isInBand(ink.top, ink.bottom)) paintLine(ink.points, ink.radius, ink.colour);
    }
    for (const TextInk& ink : inks_.texts()) {
      if (!isInBand(ink.top, ink.bottom)) continue;
      if (ink.halo > 0.0) paintText(ink, ink.radius + ink.halo, drawing_.style().background);
      paintText(ink, ink.radius, ink.colour);
    }
    const std::size_t rowBytes = static_cast<std::size_t>(width_) * 4;
    std::uint8_t* to = picture.bytes.data() + static_cast<std::size_t>(row) * rowBytes;
    for (int y = row; y < end; ++y, to += rowBytes) writeRow(y, to);
  }

 private:
  Colour& sampleAt(int column, int row) {
    return samples_[static_cast<std::size_t>(row - first_) *
                        static_cast<std::size_t>(band_.columns()) +
                    static_cast<std::size_t>(column)];
  }

  void paintFaces() {
    std::uint32_t instance = 0;
    std::uint32_t triangle = kNoTriangle;
    ScreenPlane brightness(ScreenTriangle{});
    Colour colour;
    for (int row = first_; row < end_; ++row) {
      for (int column = 0; column < band_.columns(); ++column) {
        const DepthSample& sample = *band_.at(column, row);
        if (sample.isEmpty()) continue;
        if (sample.triangle != triangle || sample.instance != instance) {
          instance = sample.instance;
          triangle = sample.triangle;
          brightness = brightnessOfTriangle(instance, triangle);
          colour = drawing_.colourOf(surfaces_.scene().instances[instance].element);
        }
        const double x = (column + 0.5) / kSamples;
        const double y = (row + 0.5) / kSamples;
        sampleAt(column, row) = shaded(colour, std::clamp(brightness.depthAt(x, y), 0.64, 1.12));
      }
    }
  }

  // As a plane over the drawing with the brightness as its depth.
  ScreenPlane brightnessOfTriangle(std::uint32_t instance, std::uint32_t triangle) const {
    const Mesh& mesh = surfaces_.meshOf(instance);
    const Placement& placement = surfaces_.scene().instances[instance].placement;
    ScreenTriangle corners = surfaces_.triangle(instance, triangle);
    const bool isTurned = !mesh.closed && doubleArea(corners) < 0.0;
    for (std::size_t k = 0; k < 3; ++k) {
      const GeVector n = placement.normal(mesh.normals[mesh.triangleNormals[triangle][k]]);
      corners[k].z = brightnessOf(drawing_.style().view, isTurned ? -n : n);
    }
    return ScreenPlane(corners);
  }

  bool isInBand(double inkTop, double inkBottom) const {
    const double top = static_cast<double>(first_) / kSamples;
    const double bottom = static_cast<double>(end_) / kSamples;
    return inkBottom >= top && inkTop <= bottom;
  }

  void paintText(const TextInk& ink, double radius, const Colour& colour) {
    const std::span<const ScreenPoint> points(ink.points);
    std::size_t begin = 0;
    for (const std::size_t end : ink.ends) {
      bands_.check();
      paintLine(points.subspan(begin, end - begin), radius, colour);
      begin = end;
    }
  }

  void paintLine(std::span<const ScreenPoint> points, double radius, const Colour& colour) {
    if (points.size() == 1) paintSegment(points[0], points[0], radius, colour);
    for (std::size_t i = 1; i < points.size(); ++i) {
      paintSegment(points[i - 1], points[i], radius, colour);
    }
  }

  // All samples that are no further from the segment than the radius.
  void paintSegment(const ScreenPoint& a, const ScreenPoint& b, double radius,
                    const Colour& colour) {
    const auto limit = [](double place, int least, int most) {
      return static_cast<int>(
          std::clamp(place * kSamples, static_cast<double>(least), static_cast<double>(most)));
    };
    const int firstRow = limit(std::min(a.y, b.y) - radius - 1.0, first_, end_);
    const int endRow = limit(std::max(a.y, b.y) + radius + 1.0, first_, end_);
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double square = dx * dx + dy * dy;
    for (int row = firstRow; row < endRow; ++row) {
      const double y = (row + 0.5) / kSamples;
      // Of a long line only what is near this row.
      double left = std::min(a.x, b.x);
      double right = std::max(a.x, b.x);
      if (std::fabs(dy) > radius) {
        const double reach = radius * (1.0 + std::fabs(dx / dy)) + 1.0;
        const double middle = a.x + dx * ((y - a.y) / dy);
        left = std::max(left, middle - reach);
        right = std::min(right, middle + reach);
      }
      const int endColumn = limit(right + radius + 1.0, 0, band_.columns());
      for (int column = limit(left - radius - 1.0, 0, band_.columns()); column < endColumn;
           ++column) {
        const double px = (column + 0.5) / kSamples - a.x;
        const double py = y - a.y;
        const double t = square > 0.0 ? std::clamp((px * dx + py * dy) / square, 0.0, 1.0) : 0.0;
        const double ex = px - dx * t;
        const double ey = py - dy * t;
        if (ex * ex + ey * ey <= radius * radius) sampleAt(column, row) = colour;
      }
    }
  }

  void writeRow(int y, std::uint8_t* to) {
    constexpr int kAll = kSamples * kSamples;
    for (int x = 0; x < width_; ++x) {
      int red = 0;
      int green = 0;
      int blue = 0;
      int alpha = 0;
      for (int k = 0; k < kAll; ++k) {
        const Colour& c = sampleAt(x * kSamples + k % kSamples, y * kSamples + k / kSamples);
        const int weight = c.alpha;
        red += c.red * weight;
        green += c.green * weight;
        blue += c.blue * weight;
        alpha += weight;
      }
      const auto mean = [&](int sum) {
        return static_cast<std::uint8_t>(alpha == 0 ? 0 : (2 * sum + alpha) / (2 * alpha));
      };
      for (const int sum : {red, green, blue}) *to++ = mean(sum);
      *to++ = static_cast<std::uint8_t>((2 * alpha + kAll) / (2 * kAll));
    }
  }

  const Drawing& drawing_;
  const Surfaces& surfaces_;
  const Inks& inks_;
  Bands& bands_;
  bool hasFaces_;
  int width_;
  DepthBand band_;
  int first_ = 0;  // row of samples
  int end_ = 0;
  std::vector<Colour> samples_;
};

}  // namespace

double brightnessOf(const StandardView& view, const GeVector& normal) {
  const double towardsLight =
      (2.0 * dot(view.up, normal) + 2.0 * dot(view.toEye, normal) - dot(view.right, normal)) / 3.0;
  return 0.64 + 0.48 * std::max(0.0, towardsLight);
}

Colour shaded(const Colour& colour, double brightness) {
  const auto part = [&](std::uint8_t value) {
    if (brightness <= 1.0) return byteOf(value * brightness);
    return byteOf(value + (255 - value) * (brightness - 1.0));
  };
  return {part(colour.red), part(colour.green), part(colour.blue), colour.alpha};
}

Picture paint(const Drawing& drawing, bool hasFaces) {
  const int height = drawing.style().height;
  Picture picture;
  picture.width = drawing.style().width;
  picture.height = height;
  picture.bytes.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(height) *
                       4);
  const Inks inks(drawing);
  Bands bands(drawing.style().poll);
  bands.run(bandsOf(height), [&] {
    const auto painter = std::make_shared<Painter>(drawing, inks, hasFaces, bands);
    return [&, painter](int band) { painter->paint(band, picture); };
  });
  return picture;
}

}  // namespace Vesk
