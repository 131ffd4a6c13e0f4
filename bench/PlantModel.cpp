// SPDX-License-Identifier: MIT
#include "PlantModel.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>

namespace VeskBench {
namespace {

using Vector = std::array<double, 3>;

struct Share {
  Element::Kind kind;
  int perHundred;
  std::size_t points;
  std::size_t sizes;
};

constexpr Share kMix[] = {
    {Element::kCyl, 36, 2, 1}, {Element::kTor, 24, 3, 1}, {Element::kCon, 7, 2, 2},
    {Element::kBox, 7, 4, 0},  {Element::kElb, 4, 4, 1},  {Element::kRed, 3, 8, 0},
    {Element::kPnt, 1, 1, 0},  {Element::kSeg, 6, 2, 0},  {Element::kTri, 3, 3, 0},
    {Element::kQua, 4, 4, 0},  {Element::kTxt, 5, 3, 2},
};

constexpr double kPipes[] = {21.3, 33.7, 48.3, 60.3, 88.9, 114.3, 168.3, 219.1, 273.0, 323.9};

class Plant {
 public:
  Element next() {
    Element element;
    const Share& share = choose();
    element.kind = share.kind;
    element.sizes = {kPipes[below(10)], kPipes[below(10)]};
    const Vector place{tenths(2000000), tenths(2000000), tenths(500000)};
    const bool turned = below(8) == 0;
    const auto put = [&](std::size_t i, Vector v) {
      if (turned) v = turn(v);
      for (std::size_t k = 0; k < 3; ++k) element.points[i][k] = place[k] + v[k];
    };
    const double a = tenths(60000);
    const double b = 1.5 * element.sizes[0];
    switch (element.kind) {
      case Element::kCyl:
      case Element::kCon:
      case Element::kSeg:
        put(0, {});
        put(1, along(below(3), a));
        break;
      case Element::kTor:
        put(0, {});
        put(1, along(0, b));
        put(2, below(2) == 0 ? along(1, b) : Vector{b * std::sqrt(0.5), b * std::sqrt(0.5), 0.0});
        break;
      case Element::kElb:
        put(0, {});
        put(1, along(2, a));
        put(2, along(0, 2.0 * b));
        put(3, along(1, 2.0 * b));
        element.sizes[0] = b;
        break;
      case Element::kRed:
        for (std::size_t i = 0; i < 8; ++i) {
          const double inset = i < 4 ? 0.0 : 50.0;
          put(i, {i % 2 == 0 ? inset : a - inset, i / 2 % 2 == 0 ? inset : b - inset,
                  i < 4 ? 0.0 : 300.0});
        }
        break;
      case Element::kTxt:
        put(0, {});
        element.points[1] = {1.0, 0.0, 0.0};
        element.points[2] = {0.0, 1.0, 0.0};
        element.sizes = {2.5, 3.5};
        element.alignment = 1 + static_cast<int>(below(9));
        element.text = "P-" + std::to_string(1000 + below(9000)) + "-" + std::to_string(below(300));
        break;
      default:
        put(0, {});
        put(1, along(0, a));
        put(2, element.kind == Element::kBox ? along(1, b) : Vector{a, b, 0.0});
        put(3, element.kind == Element::kBox ? along(2, b) : along(1, b));
    }
    return element;
  }

 private:
  // The generator's numbers, not a distribution's: the same with every library.
  std::uint64_t below(std::uint64_t n) { return random_() % n; }
  double tenths(std::uint64_t n) { return static_cast<double>(below(n)) / 10.0; }

  const Share& choose() {
    int hundredth = static_cast<int>(below(100));
    const Share* share = kMix;
    while (hundredth >= share->perHundred) hundredth -= share++->perHundred;
    return *share;
  }

  static Vector along(std::uint64_t axis, double length) {
    Vector v{};
    v[static_cast<std::size_t>(axis)] = length;
    return v;
  }

  // Two turns by angles that no record writes in full.
  static Vector turn(const Vector& v) {
    const double c = std::cos(0.3);
    const double s = std::sin(0.3);
    const Vector flat{c * v[0] - s * v[1], s * v[0] + c * v[1], v[2]};
    return {flat[0], c * flat[1] - s * flat[2], s * flat[1] + c * flat[2]};
  }

  std::mt19937_64 random_;
};

}  // namespace

std::vector<Element> plantModel(std::size_t count) {
  Plant plant;
  std::vector<Element> elements(count);
  for (Element& element : elements) element = plant.next();
  return elements;
}

std::vector<double> plantNumbers(const std::vector<Element>& elements) {
  std::vector<double> numbers;
  for (const Element& element : elements) {
    for (const Share& share : kMix) {
      if (share.kind != element.kind) continue;
      for (std::size_t i = 0; i < share.points; ++i) {
        numbers.insert(numbers.end(), element.points[i].begin(), element.points[i].end());
      }
      for (std::size_t i = 0; i < share.sizes; ++i) numbers.push_back(element.sizes[i]);
    }
  }
  return numbers;
}

}  // namespace VeskBench
