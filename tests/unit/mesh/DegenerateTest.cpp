// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/GeEx.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"
#include "vesk/mesh/ElementMesh.h"

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::string textOf(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", v);
  return std::isnan(v) ? "NaN" : text;
}

std::string textOf(const GePoint& p) { return textOf(p.x) + ' ' + textOf(p.y) + ' ' + textOf(p.z); }

std::string extentsOf(const Geo& geo) {
  Extents box;
  geo.addExtents(box);
  if (!(box.min.x <= box.max.x)) return "none";
  if (box.min == box.max) return textOf(box.min);
  return textOf(box.min) + " to " + textOf(box.max);
}

std::string centreOf(const Geo& geo) {
  try {
    GePoint p;
    geo.centroid(p);
    return std::isnan(p.x) ? "NaN" : textOf(p);
  } catch (const GeEx::NullDir&) {
    return "throws `NullDir`";
  }
}

// A line of the table in docs/units.md: the element, its volume, its extents, its
// centre of gravity, what checkSize returns and whether it has a surface.
struct State {
  const char* name;
  std::shared_ptr<Geo> geo;
  const char* answers;
};
std::ostream& operator<<(std::ostream& os, const State& state) { return os << state.name; }

template <class Primitive>
std::shared_ptr<Geo> the(Primitive primitive) {
  return std::make_shared<Primitive>(std::move(primitive));
}

std::shared_ptr<Geo> elbowOfHalfATurn() {
  Relb elbow;
  elbow.startVector = {10, 0, 0};
  elbow.endVector = {-10, 0, 0};
  elbow.width = 4;
  elbow.depth = 6;
  return the(elbow);
}

const GeVector o(0, 0, 0);

// Volumes: pi r^2 h; pi h / 3 (r1^2 + r1 r2 + r2^2); sweep R pi r^2; sweep R w d.
const std::vector<State> kStates = {
    // clang-format off
    {"cylinder, diameter 0, length 10", the(Cyl(o, {0, 0, 10}, 0)), "0 | 0 0 0 to 0 0 10 | 0 0 5 | 1 | no"},
    {"cylinder, diameter -2, length 10", the(Cyl(o, {0, 0, 10}, -2)), "31.4159 | -1 -1 0 to 1 1 10 | 0 0 5 | 2 | no"},
    {"cylinder, diameter 2, length 0", the(Cyl(o, o, 2)), "0 | 0 0 0 | 0 0 0 | 1 | no"},
    {"cylinder, diameter NaN", the(Cyl(o, {0, 0, 10}, kNaN)), "NaN | none | 0 0 5 | 0 | no"},
    {"cylinder, diameter 2.5e12, length 10", the(Cyl(o, {0, 0, 10}, 2.5e12)), "4.90874e+25 | -1.25e+12 -1.25e+12 0 to 1.25e+12 1.25e+12 10 | 0 0 5 | 0 | no"},
    {"cone, both diameters 0, length 9", the(Cone(o, {0, 0, 9}, 0, 0)), "0 | 0 0 0 to 0 0 9 | NaN | 1 | no"},
    {"cone, diameters 2 and 0, length 9", the(Cone(o, {0, 0, 9}, 2, 0)), "9.42478 | -1 -1 0 to 1 1 9 | 0 0 2.25 | 0 | yes"},
    {"bend of half a turn, radius 10, diameter 2", the(Torus(o, {10, 0, 0}, {-10, 0, 0}, 2)), "98.696 | 0 0 0 | throws `NullDir` | 0 | no"},
    {"bend without an angle", the(Torus(o, {10, 0, 0}, {10, 0, 0}, 2)), "0 | 0 0 0 | NaN | 0 | no"},
    {"bend that starts at its centre", the(Torus(o, o, {10, 0, 0}, 2)), "0 | 0 0 0 | throws `NullDir` | 1 | no"},
    {"duct elbow of half a turn, radius 10, section 4 by 6", elbowOfHalfATurn(), "753.982 | 0 0 0 | throws `NullDir` | 0 | no"},
    {"box, edges 2, 3 and 0", the(Box(o, {2, 0, 0}, {0, 3, 0}, o)), "0 | 0 0 0 to 2 3 0 | 1 1.5 0 | 0 | no"},
    {"box, three edges in one plane", the(Box(o, {2, 0, 0}, {0, 3, 0}, {2, 3, 0})), "21.6333 | 0 0 0 to 4 6 0 | 2 3 0 | 0 | no"},
    {"reducer, all corners in one plane", the(Red({o, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, o, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}})), "0 | 0 0 0 to 1 1 0 | NaN | 0 | no"},
    {"polyline without points", the(Pline()), "0 | none | 0 0 0 | 0 | no"},
    {"polygon of two points", the(Pgon{GePoint(0, 0, 0), GePoint(2, 0, 0)}), "0 | 0 0 0 to 2 0 0 | 0 0 0 | 0 | no"},
    {"polygon, all points in one line", the(Pgon{GePoint(0, 0, 0), GePoint(1, 0, 0), GePoint(2, 0, 0)}), "0 | 0 0 0 to 2 0 0 | 0 0 0 | 0 | no"},
    {"polygon with a NaN coordinate", the(Pgon{GePoint(kNaN, 0, 0), GePoint(1, 0, 0), GePoint(0, 1, 0)}), "0 | 0 0 0 to 1 1 0 | 0 0 0 | 0 | no"},
    {"text without characters", the(Txt({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, 1, 2, 1, 0, "")), "0 | 1 2 3 to 1 4 3 | 1 3 3 | 0 | no"},
    // clang-format on
};

class DegenerateTest : public testing::TestWithParam<State> {};

TEST_P(DegenerateTest, HasItsAnswers) {
  const Geo& geo = *GetParam().geo;
  const ElementMesh made = meshOf(geo, Fineness::ofSegments(16));
  EXPECT_EQ(made.reason.empty(), !made.mesh.triangles.empty());
  const std::string answers = textOf(geo.volume()) + " | " + extentsOf(geo) + " | " +
                              centreOf(geo) + " | " + std::to_string(geo.checkSize()) + " | " +
                              (made.reason.empty() ? "yes" : "no");
  EXPECT_EQ(answers, GetParam().answers);
}

TEST_P(DegenerateTest, IsInTheDocumentation) {
  std::ifstream file(VESK_SOURCE_DIR "/docs/units.md", std::ios::binary);
  const std::string page((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const std::string line =
      std::string("\n| ") + GetParam().name + " | " + GetParam().answers + " |\n";
  EXPECT_NE(page.find(line), std::string::npos) << line;
}

INSTANTIATE_TEST_SUITE_P(All, DegenerateTest, testing::ValuesIn(kStates));

}  // namespace
}  // namespace VeskTest
