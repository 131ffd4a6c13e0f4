// SPDX-License-Identifier: MIT
#include "prims/EarClipper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "vesk/GeConstants.h"

using namespace Vesk;

namespace {

using Polygon = std::vector<GePoint>;

// "x y, x y, ..." in the plane z = 0.
Polygon parse(const std::string& text) {
  Polygon polygon;
  std::istringstream in(text);
  for (double x = 0, y = 0; in >> x >> y; in.ignore(1)) polygon.emplace_back(x, y, 0.0);
  return polygon;
}

GeVector doubleAreaOf(const Polygon& p) {
  GeVector sum;
  for (std::size_t i = 2; i < p.size(); ++i) sum += cross(p[i - 1] - p[0], p[i] - p[0]);
  return sum;
}

GeVector doubleAreaOf(const Polygon& p, const EarTriangle& ear) {
  return cross(p[ear[1]] - p[ear[0]], p[ear[2]] - p[ear[0]]);
}

double areaOf(const Polygon& p, const std::vector<EarTriangle>& ears) {
  double area = 0.0;
  for (const EarTriangle& ear : ears) area += doubleAreaOf(p, ear).length() / 2;
  return area;
}

// Every triangle turns as the polygon does. If the areas also add up to that of
// a polygon that does not cross itself, the triangles cover it once.
void expectSameSense(const Polygon& p, const std::vector<EarTriangle>& ears) {
  const GeVector normal = doubleAreaOf(p);
  for (const EarTriangle& ear : ears) {
    for (const std::uint32_t v : ear) ASSERT_LT(v, p.size());
    ASSERT_GT(dot(doubleAreaOf(p, ear), normal), 0.0);
  }
}

// Each triangle is made of three vertices that follow each other when it is
// cut, and all but two vertices are cut.
void expectCutFromTheRing(const Polygon& p, const std::vector<EarTriangle>& ears) {
  const std::size_t n = p.size();
  ASSERT_EQ(ears.size(), n - 2);
  std::vector<std::size_t> before(n);
  std::vector<std::size_t> after(n);
  for (std::size_t v = 0; v < n; ++v) {
    before[v] = (v + n - 1) % n;
    after[v] = (v + 1) % n;
  }
  for (const auto& [first, tip, last] : ears) {
    ASSERT_EQ(before[tip], first);
    ASSERT_EQ(after[tip], last);
    after[first] = last;
    before[last] = first;
    before[tip] = after[tip] = n;  // cut only once
  }
}

void expectTriangulated(const Polygon& p, double area) {
  const std::vector<EarTriangle> ears = clipEars(p);
  expectCutFromTheRing(p, ears);
  expectSameSense(p, ears);
  EXPECT_NEAR(areaOf(p, ears), area, 1e-9 * area);
}

void expectTriangulated(const Polygon& p) { expectTriangulated(p, doubleAreaOf(p).length() / 2); }

struct EarCase {
  const char* name;
  const char* polygon;
  std::size_t triangles;
  double area;
  friend void PrintTo(const EarCase& row, std::ostream* out) { *out << row.name; }
};

// clang-format off
constexpr EarCase kSimple[] = {
    // name, polygon, triangles (vertices - 2), area
    {"Square", "0 0, 4 0, 4 4, 0 4", 2, 16},
    {"LShape", "0 0, 4 0, 4 1, 1 1, 1 5, 0 5", 4, 4 + 4},
    {"UShape", "0 0, 5 0, 5 4, 4 4, 4 1, 1 1, 1 4, 0 4", 6, 5 + 2 * 3},
    {"Arrow", "0 0, 4 2, 0 4, 1 2", 2, 8 - 2},
    {"Pentagon", "2 0, 5 1, 4 4, 1 4, 0 2", 3, (2 + 16 + 12 + 2 - 4) / 2.0},
    {"Comb", "0 0, 9 0, 9 5, 8 1, 7 5, 6 1, 5 5, 4 1, 3 5, 2 1, 1 5, 0 1", 10, 9 + 4 * 4 + 0.5 * 4},
    {"CombUpsideDown", "0 0, 0 -9, 1 0, 2 0, 3 -9, 4 0, 4 1, 0 1", 6, 4 + 4.5 + 9},
    {"Plus", "1 0, 2 0, 2 1, 3 1, 3 2, 2 2, 2 3, 1 3, 1 2, 0 2, 0 1, 1 1", 10, 5},
    {"SquareSpiral", "0 0, 7 0, 7 7, 1 7, 1 2, 5 2, 5 5, 3 5, 3 4, 4 4, 4 3, 2 3, 2 6, 6 6, 6 1, 0 1", 14,
        7 + 6 + 5 + 4 + 3 + 2 + 1},
    {"HourglassWithWaist", "0 0, 4 0, 3 2, 4 4, 0 4, 1 2", 4, 2 * 6},
    {"VerticesOnTheSides", "0 0, 1 0, 2 0, 4 0, 4 1, 4 4, 3 4, 0 4, 0 3, 0 2, 0 1", 9, 16},
    {"VerticesOnOneSlantedSide", "0 0, 8 0, 6 2, 5 3, 4 4, 3 5, 0 8", 5, 32},
    {"TriangleWithOneMoreVertex", "0 0, 2 0, 4 0, 0 4", 2, 8},
    {"ChannelsFromAboveAndBelow", "0 0, 2 0, 3 7, 4 0, 8 0, 8 8, 6 8, 5 1, 4 8, 0 8", 8, 64 - 7 - 7},
};

constexpr EarCase kTouching[] = {
    {"RepeatedVertex", "0 0, 4 0, 4 0, 4 4, 0 4", 2, 16},
    {"EveryVertexRepeated", "0 0, 0 0, 4 0, 4 0, 4 4, 4 4, 4 4, 0 4, 0 4, 0 0", 2, 16},
    {"Spike", "0 0, 4 0, 9 0, 4 0, 4 4, 0 4", 2, 16},
    {"SpikeOnASpike", "0 0, 4 0, 6 0, 6 3, 8 5, 6 3, 6 0, 4 0, 4 4, 0 4", 2, 16},
    {"SpikeLongerThanTheWayBack", "0 0, 9 0, 4 0, 4 4, 0 4", 2, 16},
    {"SpikeAtTheFirstVertex", "9 0, 4 0, 4 4, 0 4, 0 0, 4 0", 2, 16},
    {"SpikeInwards", "0 0, 4 0, 2 2, 4 0, 4 4, 0 4", 2, 16},
    // The way 0 0 - 2 2 leads to a square hole and back: 10 vertices.
    {"HoleOverABridge", "0 0, 2 2, 2 4, 4 4, 4 2, 2 2, 0 0, 6 0, 6 6, 0 6", 8, 36 - 4},
    {"HoleOverABridgeFromTheRight", "6 0, 4 2, 2 2, 2 4, 4 4, 4 2, 6 0, 6 6, 0 6, 0 0", 8, 36 - 4},
    {"HoleOverAnUprightBridge", "0 0, 3 0, 3 2, 2 3, 3 4, 4 3, 3 2, 3 0, 6 0, 6 6, 0 6", 9, 36 - 2},
    {"TwoHolesOverBridges",
        "0 0, 1 1, 1 2, 2 2, 2 1, 1 1, 0 0, 9 0, 9 9, 8 8, 8 7, 7 7, 7 8, 8 8, 9 9, 0 9", 14, 81 - 2},
    {"HoleBehindAHole",
        "0 0, 1 1, 1 2, 2 2, 4 4, 4 5, 5 5, 5 4, 4 4, 2 2, 2 1, 1 1, 0 0, 9 0, 9 9, 0 9", 14, 81 - 2},
    {"CornersMeet", "0 0, 2 2, 4 0, 4 4, 2 2, 0 4", 2, 2 * 4},
    {"CornerOnASide", "0 0, 6 0, 6 6, 3 0, 0 6", 2, 2 * 9},
    {"HoleInACorner", "0 0, 1 2, 2 1, 0 0, 6 0, 6 6, 0 6", 5, 36 - 1.5},
};

constexpr EarCase kNothing[] = {
    {"NoVertex", "", 0, 0},
    {"TwoVertices", "0 0, 1 0", 0, 0},
    {"AllOnALine", "0 0, 1 0, 2 0, 3 0, 4 0", 0, 0},
    {"AllOnALineOutOfOrder", "0 0, 3 0, 1 0, 4 0, 2 0", 0, 0},
    {"AllOnASlantedLine", "0 0, 1 3, 2 6, 4 12, 5 15", 0, 0},
    {"AllEqual", "5 5, 5 5, 5 5, 5 5, 5 5", 0, 0},
    {"ThereAndBack", "0 0, 4 0, 4 4, 4 0", 0, 0},
    {"BowTieOfEqualHalves", "0 0, 4 4, 4 0, 0 4", 0, 0},
};

// Where a polygon is put: two axes that are perpendicular and one unit long.
// All numbers are such that nothing rounds.
struct Frame {
  const char* name;
  GePoint origin;
  GeVector x;
  GeVector y;
  double unit;
};
constexpr Frame kFrames[] = {
    {"Flat",          {0, 0, 0},          {1, 0, 0},         {0, 1, 0},         1},
    {"FromBelow",     {0, 0, 0},          {0, 1, 0},         {1, 0, 0},         1},
    {"UpsideDown",    {0, 0, 0},          {-1, 0, 0},        {0, -1, 0},        1},
    {"QuarterTurned", {0, 0, 0},          {0, 1, 0},         {-1, 0, 0},        1},
    {"FacingX",       {7, 0, 0},          {0, 1, 0},         {0, 0, 1},         1},
    {"FacingMinusX",  {7, 0, 0},          {0, 0, 1},         {0, 1, 0},         1},
    {"FacingY",       {0, 7, 0},          {0, 0, 1},         {1, 0, 0},         1},
    {"FacingMinusY",  {0, 7, 0},          {1, 0, 0},         {0, 0, 1},         1},
    {"Skew",          {1, 2, 3},          {1, 2, 2},         {-2, 2, -1}, /*1 + 4 + 4 = 9*/ 3},
    {"SkewAgain",     {-5, 0, 1},         {2, -3, 6},        {3, 6, 2},   /*4 + 9 + 36 = 49*/ 7},
    {"FarAway",       {500e3, -900e3, 3}, {0x1p-8, 0, 0},    {0, 0x1p-8, 0},    0x1p-8},
    {"Tiny",          {0, 0, 0},          {0x1p-500, 0, 0},  {0, 0x1p-500, 0},  0x1p-500},
    {"Huge",          {0, 0, 0},          {0, 0x1p500, 0},   {0, 0, 0x1p500},   0x1p500},
};
// clang-format on

Polygon placed(const Polygon& flat, const Frame& frame) {
  Polygon polygon;
  for (const GePoint& p : flat) polygon.push_back(frame.origin + p.x * frame.x + p.y * frame.y);
  return polygon;
}

// The shape in units of the frame, so that no area leaves the range of a double.
Polygon measured(const Polygon& p, const Frame& frame) {
  Polygon shape;
  for (const GePoint& q : p) {
    const GeVector v = (q - p.front()) / frame.unit;
    shape.emplace_back(v.x, v.y, v.z);
  }
  return shape;
}

Polygon rotated(const Polygon& p, std::size_t first) {
  Polygon copy = p;
  if (!copy.empty()) {
    std::rotate(copy.begin(), copy.begin() + static_cast<std::ptrdiff_t>(first % p.size()),
                copy.end());
  }
  return copy;
}

class EarClipperSimple : public testing::TestWithParam<EarCase> {};
class EarClipperTouching : public testing::TestWithParam<EarCase> {};
class EarClipperNothing : public testing::TestWithParam<EarCase> {};

// Each row from every first vertex, in every frame, in both senses.
template <class Check>
void inAllPositions(const EarCase& row, Check check) {
  const Polygon flat = parse(row.polygon);
  for (const Frame& frame : kFrames) {
    for (std::size_t first = 0; first < std::max<std::size_t>(flat.size(), 1); ++first) {
      Polygon p = placed(rotated(flat, first), frame);
      for (const char* sense : {"forward", "backward"}) {
        SCOPED_TRACE(std::string(frame.name) + " " + std::to_string(first) + " " + sense);
        check(p, clipEars(p), measured(p, frame));
        std::reverse(p.begin(), p.end());
      }
    }
  }
}

void expectRow(const EarCase& row) {
  inAllPositions(row,
                 [&](const Polygon&, const std::vector<EarTriangle>& ears, const Polygon& shape) {
                   EXPECT_EQ(ears.size(), row.triangles);
                   expectSameSense(shape, ears);
                   EXPECT_NEAR(areaOf(shape, ears), row.area, 1e-9 * row.area);
                 });
}

TEST_P(EarClipperSimple, IsCoveredByEars) {
  const EarCase& row = GetParam();
  ASSERT_EQ(parse(row.polygon).size(), row.triangles + 2);
  expectRow(row);
  inAllPositions(row, [](const Polygon& p, const std::vector<EarTriangle>& ears, const Polygon&) {
    expectCutFromTheRing(p, ears);
  });
}

TEST_P(EarClipperTouching, IsCoveredByEars) { expectRow(GetParam()); }

TEST_P(EarClipperNothing, GivesNoTriangle) {
  inAllPositions(GetParam(), [](const Polygon&, const std::vector<EarTriangle>& ears,
                                const Polygon&) { EXPECT_TRUE(ears.empty()); });
}

constexpr auto kRowName = [](const auto& row) { return std::string(row.param.name); };
INSTANTIATE_TEST_SUITE_P(Rows, EarClipperSimple, testing::ValuesIn(kSimple), kRowName);
INSTANTIATE_TEST_SUITE_P(Rows, EarClipperTouching, testing::ValuesIn(kTouching), kRowName);
INSTANTIATE_TEST_SUITE_P(Rows, EarClipperNothing, testing::ValuesIn(kNothing), kRowName);

TEST(EarClipperTest, ThreeVerticesAreTheTriangle) {
  const std::vector<EarTriangle> whole = {{0, 1, 2}};
  EXPECT_EQ(clipEars(parse("0 0, 4 0, 0 3")), whole);
  EXPECT_EQ(clipEars(parse("0 0, 0 3, 4 0")), whole);
  EXPECT_EQ(clipEars(parse("0 0, 1 1, 2 2")), whole);
}

TEST(EarClipperTest, CoordinateThatIsNotFiniteGivesNothing) {
  for (const double bad :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity()}) {
    for (const char* text : {"0 0, 4 0, 0 3", "0 0, 4 0, 4 4, 0 4", "0 0, 4 0, 5 5, 4 4, 0 4"}) {
      for (std::size_t i = 0; i < parse(text).size(); ++i) {
        for (double GePoint::*c : {&GePoint::x, &GePoint::y, &GePoint::z}) {
          Polygon p = parse(text);
          p[i].*c = bad;
          EXPECT_TRUE(clipEars(p).empty());
        }
      }
    }
  }
}

TEST(EarClipperTest, LargestAndSmallestCoordinates) {
  const double most = std::numeric_limits<double>::max();
  EXPECT_EQ(
      clipEars(Polygon{{-most, -most, 0}, {most, -most, 0}, {most, most, 0}, {0, most, 0}}).size(),
      2u);
  const double least = std::numeric_limits<double>::min();
  EXPECT_EQ(clipEars(Polygon{{0, 0, 0}, {least, 0, 0}, {least, least, 0}, {0, least, 0}}).size(),
            2u);
}

// Points on a slanted line in space that decimals put beside it by a rounding.
TEST(EarClipperTest, LineOfRoundedPointsGivesNothing) {
  const GePoint from(123456.7, -98765.4, 4321.1);
  const GeVector way(0.1, 0.7, -0.3);
  for (std::size_t n = 4; n < 50; ++n) {
    Polygon p;
    for (std::size_t i = 0; i < n; ++i) p.push_back(from + 33.3 * static_cast<double>(i) * way);
    EXPECT_TRUE(clipEars(p).empty()) << n;
  }
}

// The lobes of these have different areas; the larger one gives the sense.
TEST(EarClipperTest, CrossingPolygonEndsWithUsableTriangles) {
  for (const char* text :
       {"0 0, 4 4, 4 0, 0 2", "0 0, 6 0, 6 6, 3 -3, 0 6", "0 0, 9 0, 9 9, 4 4, 9 4, 0 9",
        "0 0, 4 0, 4 4, 0 4, 0 0, 4 0, 4 4, 0 4", "3 0, 1 5, 6 2, 0 2, 5 5"}) {
    const Polygon p = parse(text);
    const std::vector<EarTriangle> ears = clipEars(p);
    EXPECT_LE(ears.size(), p.size() - 2) << text;
    EXPECT_FALSE(ears.empty()) << text;
    expectSameSense(p, ears);
  }
}

// ---------------------------------------------------------------------------
// Families

// 0 <= number < 1, the same with every standard library.
double random01(std::mt19937_64& source) { return static_cast<double>(source() >> 11) * 0x1p-53; }

GePoint polar(double radius, double angle) {
  return {radius * std::cos(angle), radius * std::sin(angle), 0.0};
}

double turnOf(std::size_t i, std::size_t n) {
  return 2 * kPi * static_cast<double>(i) / static_cast<double>(n);
}

Polygon randomStar(std::size_t n, std::mt19937_64& source) {
  Polygon p;
  for (std::size_t i = 0; i < n; ++i) p.push_back(polar(1 + 999 * random01(source), turnOf(i, n)));
  return p;
}

bool isLeft(const GePoint& a, const GePoint& b, const GePoint& c) {
  return cross(b - a, c - a).z > 0.0;
}

bool cross(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  return isLeft(a, b, c) != isLeft(a, b, d) && isLeft(c, d, a) != isLeft(c, d, b);
}

// Random points joined in turn; as long as two edges cross, the way between
// them is reversed, which shortens the polygon.
Polygon randomSimple(std::size_t n, std::mt19937_64& source) {
  Polygon p;
  for (std::size_t i = 0; i < n; ++i) p.emplace_back(random01(source), random01(source), 0.0);
  for (bool crossing = true; crossing;) {
    crossing = false;
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t k = i + 2; k < n; ++k) {
        if ((k + 1) % n == i || !cross(p[i], p[i + 1], p[k], p[(k + 1) % n])) continue;
        std::reverse(p.begin() + static_cast<std::ptrdiff_t>(i + 1),
                     p.begin() + static_cast<std::ptrdiff_t>(k + 1));
        crossing = true;
      }
    }
  }
  return p;
}

// Into a plane of no special direction, with rounding, far from the origin.
Polygon turned(Polygon p) {
  for (GePoint& q : p) {
    const GeVector v = GeVector(q.x, q.y, q.z).rotatedAbout({1, 2, 3}, 1.0);
    q = GePoint(300e3, -450e3, 12e3) + v;
  }
  return p;
}

void expectTriangulatedEverywhere(Polygon p) {
  expectTriangulated(p);
  // Far from the origin an area has fewer correct digits: that of the turned
  // polygon itself is what the triangles add up to.
  expectTriangulated(turned(p));
  std::reverse(p.begin(), p.end());
  expectTriangulated(p);
}

TEST(EarClipperTest, RowsInAnyDirection) {
  for (const EarCase& row : kSimple) {
    SCOPED_TRACE(row.name);
    expectTriangulated(turned(parse(row.polygon)));
  }
}

TEST(EarClipperTest, RandomStars) {
  std::mt19937_64 source(1);
  for (std::size_t n = 4; n < 300; ++n) {
    SCOPED_TRACE(n);
    expectTriangulatedEverywhere(randomStar(n, source));
  }
}

TEST(EarClipperTest, RandomSimplePolygons) {
  std::mt19937_64 source(2);
  for (std::size_t n = 4; n < 100; ++n) {
    SCOPED_TRACE(n);
    Polygon p = randomSimple(n, source);
    for (GePoint& q : p) q = {1000 * q.x, 1000 * q.y, 0};
    expectTriangulatedEverywhere(p);
  }
}

// On a grid of 4 x 4 to 7 x 7 points lines, touching corners, doubled edges
// and crossings are the rule.
TEST(EarClipperTest, RandomWalksOnASmallGridEnd) {
  std::mt19937_64 source(3);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t side = 4 + source() % 4;
    Polygon p(static_cast<std::size_t>(3 + source() % 20));
    for (GePoint& q : p) {
      q = {static_cast<double>(source() % side), static_cast<double>(source() % side), 0.0};
    }
    const std::vector<EarTriangle> ears = clipEars(p);
    ASSERT_LE(ears.size(), p.size() - 2);
    if (p.size() > 3) expectSameSense(p, ears);
  }
}

// Holes around the points of a grid, each joined to one found before it: a
// tree of bridges. A hole is a square on its corner, half a diagonal is 0.25.
class Plate {
 public:
  Plate(int side, std::uint64_t seed) : side_(side), source_(seed) {
    polygon_.emplace_back(-1, 0, 0);
    addHoles();
    for (const auto& [x, y] : {std::pair(-1, 0), {-1, -1}, {side, -1}, {side, side}, {-1, side}}) {
      polygon_.emplace_back(x, y, 0);
    }
  }

  const Polygon& polygon() const { return polygon_; }
  double area() const {
    return (side_ + 1) * (side_ + 1) - 0.125 * static_cast<double>(taken_.size());
  }

 private:
  struct Hole {
    int column;
    int row;
    int firstCorner;  // 0 is right, 1 up, 2 left, 3 down
    int corners;      // passed so far, of 5: the first is also the last
  };

  void addHoles() {
    constexpr int kRight[] = {1, 0, -1, 0};
    constexpr int kUp[] = {0, 1, 0, -1};
    std::vector<Hole> way = {{0, 0, 2, 0}};
    take(0, 0);
    while (!way.empty()) {
      Hole& hole = way.back();
      if (hole.corners == 5) {
        way.pop_back();
        continue;
      }
      const int corner = (hole.firstCorner + 8 - hole.corners) % 4;
      polygon_.emplace_back(hole.column + 0.25 * kRight[corner], hole.row + 0.25 * kUp[corner], 0);
      const int column = hole.column + kRight[corner];
      const int row = hole.row + kUp[corner];
      const bool isBridgehead = hole.corners == 0 || hole.corners == 4;
      if (isBridgehead || source_() % 4 == 0 || !take(column, row)) {
        ++hole.corners;
      } else {
        way.push_back({column, row, (corner + 2) % 4, 0});  // and back to this corner
      }
    }
  }

  // Whether there is a place for a hole that no other has.
  bool take(int column, int row) {
    if (column < 0 || row < 0 || column >= side_ || row >= side_) return false;
    return taken_.emplace(column, row).second;
  }

  int side_;
  std::mt19937_64 source_;
  Polygon polygon_;
  std::set<std::pair<int, int>> taken_;
};

// Every end of a bridge comes twice.
TEST(EarClipperTest, PlatesWithHolesOverBridges) {
  for (const int side : {1, 2, 3, 4, 7, 70}) {
    for (std::uint64_t seed = 0; seed < (side > 7 ? 1u : 40u); ++seed) {
      const Plate plate(side, seed);
      for (const double shear : {0.0, 0.5, -0.25, 0.375}) {
        SCOPED_TRACE(testing::Message() << side << ' ' << seed << ' ' << shear);
        Polygon p = plate.polygon();
        for (GePoint& q : p) q = {1024 * (q.x + shear * q.y), 1024 * q.y, 0.0};
        const double area = 1024 * 1024 * plate.area();
        const std::vector<EarTriangle> ears = clipEars(p);
        expectSameSense(p, ears);
        EXPECT_NEAR(areaOf(p, ears), area, 1e-9 * area);
        p = turned(p);
        EXPECT_NEAR(areaOf(p, clipEars(p)), area, 1e-9 * area);
      }
    }
  }
}

// Two neighbours changed places: there, and only there, the edges cross.
TEST(EarClipperTest, OneCrossingCostsLittle) {
  std::mt19937_64 source(4);
  for (std::size_t n : {300u, 3'000u}) {
    for (int i = 0; i < 3; ++i) {
      Polygon p = randomStar(n, source);
      const auto at = static_cast<std::size_t>(source() % (n - 1));
      std::swap(p[at], p[at + 1]);
      const std::vector<EarTriangle> ears = clipEars(p);
      expectSameSense(p, ears);
      const double area = doubleAreaOf(p).length() / 2;
      EXPECT_NEAR(areaOf(p, ears), area, 0.01 * area);
    }
  }
}

TEST(EarClipperTest, WildCrossingsEnd) {
  std::mt19937_64 source(5);
  Polygon p;
  for (int i = 0; i < 5'000; ++i) p.emplace_back(random01(source), random01(source), 0.0);
  const std::vector<EarTriangle> ears = clipEars(p);
  EXPECT_LE(ears.size(), p.size() - 2);
  expectSameSense(p, ears);
}

TEST(EarClipperTest, StarOf100000Vertices) {
  const std::size_t n = 100'000;
  Polygon p;
  for (std::size_t i = 0; i < n; ++i) p.push_back(polar(i % 2 == 0 ? 1000 : 400, turnOf(i, n)));
  // n triangles with the centre, each of sides 1000 and 400.
  expectTriangulated(p, n * 0.5 * 1000 * 400 * std::sin(2 * kPi / n));
}

TEST(EarClipperTest, CombOf100000Vertices) {
  const std::size_t teeth = 49'999;
  Polygon p = {{0, 0, 0}, {2 * teeth, 0, 0}};
  for (std::size_t i = teeth; i > 0; --i) {
    p.emplace_back(2.0 * static_cast<double>(i), 1.0, 0.0);
    p.emplace_back(2.0 * static_cast<double>(i) - 1.0, 1001.0, 0.0);
  }
  // A bar of height 1, and teeth that are 2 wide and 1000 high.
  p.emplace_back(0.0, 1.0, 0.0);
  expectTriangulated(p, 2.0 * teeth + teeth * 0.5 * 2 * 1000);
}

TEST(EarClipperTest, SpiralOf100000Vertices) {
  for (const double turns : {3.0, 50.0, 500.0}) {
    SCOPED_TRACE(turns);
    const std::size_t half = 50'000;
    Polygon p;
    for (std::size_t i = 0; i < 2 * half; ++i) {
      const std::size_t along = i < half ? i : 2 * half - 1 - i;
      const double angle = turns * turnOf(along, half);
      p.push_back(polar(5 + angle + (i < half ? 3 : 0), angle));
    }
    expectTriangulated(p);
  }
}

}  // namespace
