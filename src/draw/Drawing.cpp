// SPDX-License-Identifier: MIT
#include "draw/Drawing.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "draw/StrokeFont.h"

namespace Vesk {
namespace {

constexpr Colour kDarkInk{28, 36, 48};
constexpr Colour kLightInk{228, 233, 239};
constexpr Colour kOther{154, 164, 176};

// Pixels in a drawing of 900.
constexpr double kMargin = 36.0;
constexpr double kFooter = 84.0;  // below, with scale bar and axes
constexpr double kLeastText = 7.0;
constexpr double kLeastCharacter = 0.5;  // its width
constexpr double kLevelText = 9.0;
constexpr double kAxis = 30.0;
constexpr double kOutlineWidth = 1.6;

// How many outlines a solid is thick, and the least of the usual width that lines keep.
constexpr double kOutlinesOfSolid = 5.0;
constexpr double kThinnest = 0.25;

// How far a round shape may be from its pieces, in pixels.
constexpr double kUnseen = 0.25;

constexpr double kNoDirection = 1e-3;

struct Box {
  double left;
  double top;
  double right;
  double bottom;

  bool overlaps(const Box& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
};

double lengthOf(const ScreenPoint& p) { return std::sqrt(p.x * p.x + p.y * p.y); }

// Of a label as it lies, with its line and what stands above it.
Box boxOf(const Label& label) {
  const double width = label.width > 0.0 ? label.width : StrokeFont::widthOf(label.text);
  const ScreenPoint end = label.place + label.along * width;
  const std::array<ScreenPoint, 4> corners{label.place, end, label.place + label.up,
                                           end + label.up};
  const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
  const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
  return {left, top, right, bottom};
}

// How many labels lie over each of the fields of a drawing, 64 by 64.
class Heaps {
 public:
  Heaps(int width, int height) : width_(width), height_(height), fields_(kFields * kFields) {}

  // Adds one; false if as many as the limit lie where it would, taken over all of its fields.
  bool add(const Box& box, int limit) {
    const auto field = [](double place, int size) {
      return static_cast<std::size_t>(std::clamp(place / size * kFields, 0.0, kFields - 1.0));
    };
    const std::size_t left = field(box.left, width_);
    const std::size_t right = field(box.right, width_);
    const std::size_t top = field(box.top, height_);
    const std::size_t bottom = field(box.bottom, height_);
    const auto forEach = [&](auto visit) {
      for (std::size_t y = top; y <= bottom; ++y) {
        for (std::size_t x = left; x <= right; ++x) visit(fields_[y * kFields + x]);
      }
    };
    std::int64_t room = 0;
    forEach([&](int count) { room += limit - count; });
    if (room <= 0) return false;
    forEach([](int& count) { ++count; });
    return true;
  }

 private:
  static constexpr std::size_t kFields = 64;

  int width_;
  int height_;
  std::vector<int> fields_;
};

// The largest of 1, 2 and 5 times a power of ten that is not above the limit.
double roundLength(double limit) {
  double power = std::pow(10.0, std::floor(std::log10(limit)));
  if (power > limit) power /= 10.0;
  const double digit = 5.0 * power <= limit ? 5.0 : 2.0 * power <= limit ? 2.0 : 1.0;
  return digit * power;
}

// 5000 mm, 10 m; an exponent for very large and very small ones.
std::string textOfLength(double millimetres) {
  constexpr double kMetres = 9999.0;  // above
  const double length = millimetres > kMetres ? millimetres / 1000.0 : millimetres;
  std::array<char, 32> digits{};
  const bool isPlain = length >= 1e-4 && length < 1e7;
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), length,
                    isPlain ? std::chars_format::fixed : std::chars_format::scientific);
  if (error != std::errc()) return {};
  return std::string(digits.data(), end) + (millimetres > kMetres ? " m" : " mm");
}

}  // namespace

Drawing::Drawing(const Scene& scene, const DrawingStyle& style)
    : scene_(scene),
      style_(style),
      unit_(unitOf(style)),
      projection_(Projection::fit(scene, style.view, areaOf(style))),
      surfaces_(scene, projection_),
      pen_(penOf(unit_, surfaces_.thickness())),
      ink_(lightnessOf(style.background) < 0.45 ? kLightInk : kDarkInk) {
  SeenLines seen = findSeenLines(surfaces_, style_.width, style_.height,
                                 widthOf(LineWeight::kOutline), style_.poll);
  strokes_ = std::move(seen.strokes);
  instances_ = std::move(seen.instances);
  for (std::size_t i = 0; i < scene_.points.size(); ++i) {
    if (!seen.points[i]) continue;
    dots_.push_back({projection_.point(scene_.points[i].position), scene_.points[i].element});
  }
  addLabels(seen.texts);
  if (style_.isPlain) return;
  addScaleBar();
  addAxes();
}

double Drawing::scaleOf(const Scene& scene, const DrawingStyle& style) {
  return Projection::fit(scene, style.view, areaOf(style)).scale();
}

Fineness Drawing::finenessFor(const Scene& scene, const DrawingStyle& style) {
  return Fineness::ofTolerance(kUnseen / scaleOf(scene, style));
}

double Drawing::unitOf(const DrawingStyle& style) {
  return std::clamp(std::min(style.width, style.height) / 900.0, 0.7, 8.0);
}

double Drawing::penOf(double unit, double thickness) {
  return std::clamp(thickness / (kOutlinesOfSolid * kOutlineWidth), kThinnest * unit, unit);
}

ScreenArea Drawing::areaOf(const DrawingStyle& style) {
  const double unit = unitOf(style);
  // Of a tiny picture the margins leave a half at least.
  const double side = std::min(kMargin * unit, style.width / 8.0);
  const double top = std::min(kMargin * unit, style.height / 8.0);
  const double bottom = style.isPlain ? top : std::min(kFooter * unit, style.height / 8.0 * 3.0);
  return {side, top, style.width - side, style.height - bottom};
}

Colour Drawing::colourOf(std::uint32_t element) const {
  const std::uint8_t kind = scene_.elements[element].kind;
  return kind < style_.colours.size() ? style_.colours[kind] : kOther;
}

double Drawing::widthOf(LineWeight weight) const {
  switch (weight) {
    case LineWeight::kOutline:
      return kOutlineWidth * pen_;
    case LineWeight::kEdge:
      return 0.9 * pen_;
    case LineWeight::kLine:
      break;
  }
  return 2.2 * pen_;
}

double Drawing::haloOf(const Label& label) const {
  return std::min(0.18 * lengthOf(label.up), 2.5 * unit_);
}

void Drawing::addLabels(const std::vector<bool>& isSeen) {
  std::vector<Box> taken;
  Heaps heaps(style_.width, style_.height);
  const std::vector<bool> isFar = farTextsOf(scene_);
  farTexts_ = static_cast<std::size_t>(std::count(isFar.begin(), isFar.end(), true));
  for (std::size_t i = 0; i < scene_.texts.size(); ++i) {
    const SceneText& text = scene_.texts[i];
    if (isFar[i] || !isSeen[i] || text.text.empty()) continue;
    Label label;
    label.text = text.text;
    label.colour = ink_;
    label.place = projection_.point(text.position);
    label.up = projection_.vector(text.up * text.height);
    const ScreenPoint whole = projection_.vector(text.along * text.width);
    const double height = lengthOf(label.up);
    const double width = lengthOf(whole);
    const double area = label.up.x * whole.y - label.up.y * whole.x;  // of what is read forwards
    const double least =
        std::max(kLeastCharacter * unit_ * StrokeFont::widthOf(text.text), kNoDirection);
    const bool isReadable =
        height >= kLeastText * unit_ && width > least && area > 0.25 * height * width;
    if (isReadable) {
      label.along = whole * (height / width);
      label.width = width / height;
    } else {
      const double size = kLevelText * unit_;
      label.along = {size, 0.0, 0.0};
      label.up = {0.0, -size, 0.0};
      // Within the drawing as far as it goes.
      const double length = StrokeFont::widthOf(text.text) * size;
      label.place.x = std::max(std::min(label.place.x, style_.width - length - size), size);
      label.place.y = std::clamp(label.place.y, 2.0 * size, style_.height - size);
      const Box box{label.place.x - 0.3 * size, label.place.y - 1.3 * size,
                    label.place.x + length + 0.3 * size, label.place.y + 0.4 * size};
      const auto overlaps = [&](const Box& other) { return box.overlaps(other); };
      if (std::any_of(taken.begin(), taken.end(), overlaps)) continue;
      taken.push_back(box);
    }
    if (!heaps.add(boxOf(label), kMostOverEachOther)) {
      ++buriedTexts_;
      continue;
    }
    labels_.push_back(std::move(label));
  }
}

void Drawing::addNote(std::string text, const ScreenPoint& middle, const Colour& colour) {
  const double size = kLevelText * unit_;
  labels_.push_back(
      {std::move(text), middle, {size, 0.0, 0.0}, {0.0, -size, 0.0}, 0.0, true, colour});
}

void Drawing::addScaleBar() {
  if (scene_.elements.size() == scene_.failures.size()) return;
  const double pixelsOfMillimetre = projection_.scale() / style_.unit;
  const double length = roundLength(0.25 * style_.width / pixelsOfMillimetre);
  const double pixels = length * pixelsOfMillimetre;
  const double left = kMargin * unit_;
  const double y = style_.height - 24.0 * unit_;
  const double tick = 5.0 * unit_;
  if (left + pixels > style_.width || y < 0.0) return;
  const double width = kOutlineWidth * unit_;
  scaleBar_.push_back({{{left, y - tick, 0.0},
                        {left, y, 0.0},
                        {left + pixels, y, 0.0},
                        {left + pixels, y - tick, 0.0}},
                       width,
                       ink_});
  addNote(textOfLength(length), {left + pixels / 2.0, y - 1.2 * tick, 0.0}, ink_);
}

void Drawing::addAxes() {
  struct Axis {
    const char* name;
    GeVector direction;
    Colour colour;
  };
  constexpr Axis kAxes[] = {
      {"X", {1, 0, 0}, {200, 60, 60}},
      {"Y", {0, 1, 0}, {60, 140, 70}},
      {"Z", {0, 0, 1}, {60, 100, 200}},
  };
  const double size = kAxis * unit_;
  const double around = size + 12.0 * unit_;
  const ScreenPoint origin{style_.width - around - 6.0 * unit_, style_.height - around, 0.0};
  if (origin.x - around < 0.0 || origin.y - around < 0.0) return;
  const StandardView& view = style_.view;
  for (const Axis& axis : kAxes) {
    const ScreenPoint tip{dot(view.right, axis.direction) * size,
                          -dot(view.up, axis.direction) * size, 0.0};
    if (lengthOf(tip) < 0.5) continue;
    axes_.push_back({{origin, origin + tip}, kOutlineWidth * unit_, axis.colour});
    const double cap = kLevelText * unit_;
    const ScreenPoint name = origin + tip * (1.0 + 9.0 * unit_ / lengthOf(tip));
    addNote(axis.name, {name.x, name.y + cap / 2.0, 0.0}, axis.colour);
  }
}

}  // namespace Vesk
