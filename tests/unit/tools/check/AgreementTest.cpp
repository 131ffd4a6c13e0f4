// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "check/ShapeRules.h"
#include "mesh/SceneBuilder.h"
#include "output/RecordLayout.h"
#include "shape/Shape.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

// Elements of each kind; VESK_RANDOM_ELEMENTS=100000 asks for more.
int elementCount() {
  const char* wanted = std::getenv("VESK_RANDOM_ELEMENTS");
  return wanted == nullptr ? 1500 : std::atoi(wanted);
}

// Numbers as plants have them, and as they have them not: of any size, below zero,
// nothing, warped, flat, twisted, nearly so.
class Elements {
 public:
  double number(double from, double to) {
    return std::uniform_real_distribution(from, to)(random_);
  }

  int pick(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }

  double size() {
    constexpr double kOdd[] = {0.0, -1.0, 1e-13, -1e-13, 1e-9, 0.005, 1e5};
    return pick(8) == 0 ? kOdd[pick(7)] : std::pow(10.0, number(-1, 3));
  }

  GeVector direction() {
    if (pick(3) == 0) {
      const GeVector axes[] = {{1, 0, 0}, {0, -1, 0}, {0, 0, 1}};
      return axes[pick(3)];
    }
    return {number(-1, 1), number(-1, 1), number(-1, 1)};
  }

  GeVector vector() { return direction() * size(); }

  GePoint point() { return GePoint(vector()); }

  Cyl cyl() { return {vector(), vector(), size()}; }

  Cone cone() { return {vector(), vector(), size(), size()}; }

  Box box() {
    const GeVector a = vector();
    const GeVector b = vector();
    // One in three is flat or nearly.
    GeVector c = vector();
    if (pick(3) == 0)
      c = a * number(-1, 1) + b * number(-1, 1) + c * std::pow(10.0, number(-14, -4));
    const GeVector p = vector();
    return {p, p + a, p + b, p + c};
  }

  std::pair<GeVector, GeVector> bend() {
    const GeVector start = vector();
    GeVector end = vector();
    if (pick(2) == 0) end = start.rotatedAbout(direction(), number(0, 3.2));
    // Nearly in a line.
    if (pick(3) == 0) end = start * number(-1, 1) + end * std::pow(10.0, number(-12, -2));
    return {start, end};
  }

  Torus torus() {
    Torus torus;
    std::tie(torus.startVector, torus.endVector) = bend();
    torus.centre = point();
    torus.diameter = size();
    return torus;
  }

  Relb relb() {
    Relb relb;
    std::tie(relb.startVector, relb.endVector) = bend();
    relb.centre = point();
    relb.width = size();
    relb.depth = size();
    return relb;
  }

  Red red() {
    const GeVector p = vector();
    const GeVector edges[] = {vector(), vector(), vector()};
    std::array<GeVector, 8> corners;
    const double warp = pick(3) == 0 ? 0.0 : std::pow(10.0, number(-12, 0.3));
    for (std::size_t k = 0; k < 8; ++k) {
      GeVector corner = p;
      for (std::size_t i = 0; i < 3; ++i) {
        if (((k >> i) & 1U) != 0) corner += edges[i];
      }
      corners[k] = corner + direction() * (warp * edges[pick(3)].length());
    }
    if (pick(4) == 0)
      std::swap(corners[static_cast<std::size_t>(pick(8))],
                corners[static_cast<std::size_t>(pick(8))]);
    if (pick(4) == 0) std::rotate(corners.begin() + 4, corners.begin() + 5, corners.end());
    return Red(corners);
  }

  Pline pline() {
    Pline pline;
    for (int count = pick(5); count > 0; --count) pline.vertices.push_back(point());
    return pline;
  }

  Pgon pgon() {
    Pgon pgon;
    const GeVector a = vector();
    const GeVector b = vector();
    const double out = pick(2) == 0 ? 0.0 : std::pow(10.0, number(-12, 0));
    const int count = 2 + pick(6);
    for (int i = 0; i < count; ++i) {
      const double angle = pick(3) == 0 ? number(0, 6.3) : 6.28 * i / count;
      pgon.addVertex(GePoint(a * std::cos(angle) + b * std::sin(angle) + vector() * out));
    }
    return pgon;
  }

  Txt txt() { return {point(), vector(), vector(), size(), size(), pick(12), 0, "text"}; }

 private:
  std::mt19937 random_{19};
};

// What `check` and the meshes make of the element; empty if they agree.
std::string disagreement(const Geo& geo, std::int32_t mode) {
  std::vector<ElementFault> faults;
  checkShape(geo, mode, faults);
  SceneBuilder builder(Fineness::ofSegments(8));
  builder.add(geo, {});
  const Scene scene = builder.finish();
  const std::string told = faults.empty() ? "nothing" : faults.front().message;
  const std::string reason = scene.failures.empty() ? "" : scene.failures[0].reason;
  if (reason.ends_with("at this tolerance")) return {};
  if (reason != textOf(shapeFaultOf(geo))) return "not the one reason: " + reason;
  if (!reason.empty() && faults.empty()) return "check is silent on: " + reason;
  for (const ElementFault& fault : faults) {
    if (reason.empty() && fault.severity == Severity::kError) return "check alone: " + told;
  }
  return {};
}

void expectAgreement(const std::function<std::unique_ptr<Geo>()>& next) {
  const int count = elementCount();
  int without = 0;
  for (int i = 0; i < count; ++i) {
    const std::unique_ptr<Geo> geo = next();
    if (shapeFaultOf(*geo) != ShapeFault::kNone) ++without;
    for (const std::int32_t mode : {kFixedColumns, kTokens}) {
      ASSERT_EQ(disagreement(*geo, mode), "") << "element " << i << " in mode " << mode;
    }
  }
  // Both sides of the rule are visited.
  EXPECT_GT(without, count / 100);
  EXPECT_LT(without, count - count / 100);
}

TEST(Agreement, CheckAndMeshesGiveOneAnswer) {
  Elements elements;
  using Make = std::function<std::unique_ptr<Geo>()>;
  const std::pair<const char*, Make> kinds[] = {
      {"cylinder", [&] { return std::make_unique<Cyl>(elements.cyl()); }},
      {"cone", [&] { return std::make_unique<Cone>(elements.cone()); }},
      {"box", [&] { return std::make_unique<Box>(elements.box()); }},
      {"bend", [&] { return std::make_unique<Torus>(elements.torus()); }},
      {"duct elbow", [&] { return std::make_unique<Relb>(elements.relb()); }},
      {"reducer", [&] { return std::make_unique<Red>(elements.red()); }},
      {"polyline", [&] { return std::make_unique<Pline>(elements.pline()); }},
      {"polygon", [&] { return std::make_unique<Pgon>(elements.pgon()); }},
      {"text", [&] { return std::make_unique<Txt>(elements.txt()); }},
  };
  for (const auto& [name, make] : kinds) {
    SCOPED_TRACE(name);
    expectAgreement(make);
  }
}

}  // namespace
