// SPDX-License-Identifier: MIT
// What exported files say of places, sizes and directions, by arithmetic on the records. Other
// programs read the files in tests/system/judges and exchange.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/TempFolder.h"
#include "tools/Exported.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using std::numbers::pi;
using Json = nlohmann::json;
using Point = std::array<double, 3>;

Point minus(const Point& a, const Point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// A triangle and what the file says of the directions at its corners.
struct Triangle {
  std::array<Point, 3> corners;
  std::array<Point, 3> normals;
};

using Triangles = std::vector<Triangle>;

double volumeOf(const Triangles& triangles) {
  double six = 0.0;
  for (const Triangle& t : triangles) {
    const Point& o = triangles.front().corners[0];
    six += dot(minus(t.corners[0], o), cross(minus(t.corners[1], o), minus(t.corners[2], o)));
  }
  return six / 6.0;
}

// The lowest corner of the box about them, and the highest.
std::array<Point, 2> boxOf(const Triangles& triangles) {
  std::array<Point, 2> box = {triangles.front().corners[0], triangles.front().corners[0]};
  for (const Triangle& t : triangles) {
    for (const Point& p : t.corners) {
      for (std::size_t i = 0; i < 3; ++i) {
        box[0][i] = std::min(box[0][i], p[i]);
        box[1][i] = std::max(box[1][i], p[i]);
      }
    }
  }
  return box;
}

// Two upright boxes, one of which the other can't be taken for, a pipe along y, a cone that
// points along -x, a quarter bend, and a face that looks up.
const std::string kSolids =
    "P-1     01001    00b 10 0 0,100 200 300,0 20 0,0 0 30\n"
    "P-1     01002    00c 1000 2000 3000,0 500 0,80\n"
    "P-2     01001    00b 0 70 0,-100 -200 -300,0 0 90,50 0 0\n"
    "P-2     01002    00n 5000 0 0,-200 0 0,60,20\n"
    "P-2     01003    00t 0 0 7000,100 0 0,0 100 0,40\n"
    "P-2     01004    00g pt 10 20 30,pt 5 0 0,pt 0 6 0\n";

struct Solid {
  int line;
  double volume;  // of the shape
  double least;   // the part of it that a mesh of 32 pieces has at least
  Point low;      // of its box
  Point high;
  double chord;  // how far the mesh may stay inside of the box
};

// 16 / pi * sin(2 pi / 32) of a disc is in its polygon; a bend has less also along its way, of
// no fewer than 8 pieces: sin(x) / x for half of a 32nd of a turn, at each of them.
const double kDisc = 16 / pi * std::sin(2 * pi / 32);

const std::vector<Solid> kExpected = {
    {1, 6000, 1, {100, 200, 300}, {110, 220, 330}, 0},
    {2, pi * 1600 * 500, kDisc, {960, 2000, 2960}, {1040, 2500, 3040}, 40 * 0.005},
    {3, 70 * 90 * 50, 1, {-100, -200, -300}, {-50, -130, -210}, 0},
    {4, pi / 3 * 200 * (900 + 300 + 100), kDisc, {4800, -30, -30}, {5000, 30, 30}, 30 * 0.005},
    {5, pi * 400 * 50 * pi, 0.97, {0, 0, 6980}, {120, 120, 7020}, 120 * 0.005},
};

// By the line of the record, as the format's own reader has it.
void expectSolids(const std::map<int, Triangles>& found,
                  const std::vector<Solid>& expected = kExpected) {
  for (const Solid& solid : expected) {
    ASSERT_EQ(found.count(solid.line), 1U) << "line " << solid.line;
    const Triangles& triangles = found.at(solid.line);
    const double part = volumeOf(triangles) / solid.volume;
    EXPECT_GT(part, solid.least - 1e-5) << "line " << solid.line;
    EXPECT_LT(part, 1 + 1e-5) << "line " << solid.line;
    const std::array<Point, 2> box = boxOf(triangles);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(box[0][i], solid.low[i], solid.chord + 1e-3) << "line " << solid.line;
      EXPECT_NEAR(box[1][i], solid.high[i], solid.chord + 1e-3) << "line " << solid.line;
    }
    for (const Triangle& t : triangles) {
      Point across = cross(minus(t.corners[1], t.corners[0]), minus(t.corners[2], t.corners[0]));
      const double size = std::sqrt(dot(across, across));
      for (double& each : across) each /= size;
      for (const Point& normal : t.normals) {
        EXPECT_NEAR(dot(normal, normal), 1, 1e-5) << "line " << solid.line;
        // Directions of curved surfaces are those of the surface: a 64th of a turn off at most,
        // at a bend both ways.
        EXPECT_GT(dot(normal, across), std::cos(0.15)) << "line " << solid.line;
      }
    }
  }
}

// Points and normals are counted through the file, each for itself.
std::map<int, Triangles> readObj(const std::string& text) {
  std::map<int, Triangles> found;
  std::vector<Point> points;
  std::vector<Point> normals;
  int line = 0;
  std::istringstream stream(text);
  for (std::string row; std::getline(stream, row);) {
    std::istringstream words(row);
    std::string word;
    words >> word;
    if (word == "o") line = std::stoi(row.substr(row.find(':') + 1));
    Point p{};
    if (word == "v" || word == "vn") {
      words >> p[0] >> p[1] >> p[2];
      (word == "v" ? points : normals).push_back(p);
    }
    if (word != "f") continue;
    Triangle triangle;
    for (std::size_t k = 0; k < 3; ++k) {
      std::size_t point = 0;
      std::size_t normal = 0;
      char slash = 0;
      words >> point >> slash >> slash >> normal;
      triangle.corners[k] = points.at(point - 1);
      triangle.normals[k] = normals.at(normal - 1);
    }
    found[line].push_back(triangle);
  }
  return found;
}

TEST(ExportNumbers, OfObj) {
  const TempFolder folder;
  writeFile("solids.dat", kSolids);
  expectSolids(readObj(runTool("export solids.dat -o - --to obj").out));
}

// The boxes are met in the order of the file, 12 triangles each; which solid a triangle is of is
// known from its place.
TEST(ExportNumbers, OfStl) {
  const TempFolder folder;
  writeFile("solids.dat", kSolids);
  ASSERT_EQ(runTool("export solids.dat -o x.stl").exit, 0);
  const std::string bytes = bytesOf("x.stl");
  std::map<int, Triangles> found;
  for (std::size_t at = 84; at < bytes.size(); at += 50) {
    Triangle triangle;
    for (std::size_t k = 0; k < 12; ++k) {
      const double number = static_cast<double>(f32At(bytes, at + 4 * k));
      if (k < 3) {
        for (Point& normal : triangle.normals) normal[k] = number;
      } else {
        triangle.corners[k / 3 - 1][k % 3] = number;
      }
    }
    const Point& p = triangle.corners[0];
    const int line = p[2] > 6000   ? 5
                     : p[2] > 2000 ? 2
                     : p[2] > 100  ? 1
                     : p[0] > 4000 ? 4
                     : p[0] < 0    ? 3
                                   : 6;
    found[line].push_back(triangle);
  }
  expectSolids(found);
  ASSERT_EQ(found[6].size(), 1U);
  EXPECT_EQ(found[6][0].normals[0], (Point{0, 0, 1}));
}

TEST(ExportNumbers, OfPly) {
  const TempFolder folder;
  writeFile("solids.dat", kSolids);
  ASSERT_EQ(runTool("export solids.dat -o x.ply").exit, 0);
  const std::string bytes = bytesOf("x.ply");
  const std::size_t data = bytes.find("end_header\n") + 11;
  const std::size_t vertices = std::stoul(bytes.substr(bytes.find("element vertex ") + 15));
  std::map<int, Triangles> found;
  for (std::size_t at = data + 15 * vertices; at < bytes.size(); at += 13) {
    ASSERT_EQ(bytes[at], '\3');
    Triangle triangle;
    for (std::size_t k = 0; k < 9; ++k) {
      const std::size_t vertex = u32At(bytes, at + 1 + 4 * (k / 3));
      ASSERT_LT(vertex, vertices);
      triangle.corners[k / 3][k % 3] =
          static_cast<double>(f32At(bytes, data + 15 * vertex + 4 * (k % 3)));
    }
    // No normals stand in the file.
    Point across = cross(minus(triangle.corners[1], triangle.corners[0]),
                         minus(triangle.corners[2], triangle.corners[0]));
    const double size = std::sqrt(dot(across, across));
    for (double& each : across) each /= size;
    triangle.normals = {across, across, across};
    const Point& p = triangle.corners[0];
    const int line = p[2] > 6000   ? 5
                     : p[2] > 2000 ? 2
                     : p[2] > 100  ? 1
                     : p[0] > 4000 ? 4
                     : p[0] < 0    ? 3
                                   : 6;
    found[line].push_back(triangle);
  }
  expectSolids(found);
}

// By a unit quaternion x, y, z, w.
Point turned(const std::array<double, 4>& q, const Point& p) {
  const Point u = {q[0], q[1], q[2]};
  const Point twice = cross(u, p);
  const Point again = cross(u, twice);
  return {p[0] + 2 * (q[3] * twice[0] + again[0]), p[1] + 2 * (q[3] * twice[1] + again[1]),
          p[2] + 2 * (q[3] * twice[2] + again[2])};
}

struct Placing {
  Point shift = {0, 0, 0};
  std::array<double, 4> turn = {0, 0, 0, 1};
  Point stretch = {1, 1, 1};

  Point point(Point p) const {
    for (std::size_t i = 0; i < 3; ++i) p[i] *= stretch[i];
    p = turned(turn, p);
    return {p[0] + shift[0], p[1] + shift[1], p[2] + shift[2]};
  }
  Point normal(Point n) const {
    for (std::size_t i = 0; i < 3; ++i) n[i] /= stretch[i];
    n = turned(turn, n);
    const double size = std::sqrt(dot(n, n));
    return {n[0] / size, n[1] / size, n[2] / size};
  }
};

Placing placingOf(const Json& node) {
  Placing placing;
  if (node.contains("translation")) placing.shift = node["translation"].get<Point>();
  if (node.contains("rotation")) placing.turn = node["rotation"].get<std::array<double, 4>>();
  if (node.contains("scale")) placing.stretch = node["scale"].get<Point>();
  return placing;
}

void append(Triangles& to, const Glb& glb, const Json& mesh, const Placing& placing,
            std::size_t first, std::size_t last) {
  const Json& primitive = mesh["primitives"][0];
  const auto accessor = [&](const Json& index) -> const Json& {
    return glb.json["accessors"][index.get<std::size_t>()];
  };
  const Json& indices = accessor(primitive["indices"]);
  for (std::size_t i = 3 * first; i < std::min(3 * last, indices["count"].get<std::size_t>());
       i += 3) {
    Triangle triangle;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t vertex = glb.indexAt(indices, i + k);
      Point p{};
      Point n{};
      for (std::size_t j = 0; j < 3; ++j) {
        p[j] =
            static_cast<double>(glb.at(accessor(primitive["attributes"]["POSITION"]), vertex, j));
        n[j] = static_cast<double>(glb.at(accessor(primitive["attributes"]["NORMAL"]), vertex, j));
      }
      triangle.corners[k] = placing.point(p);
      triangle.normals[k] = placing.normal(n);
    }
    to.push_back(triangle);
  }
}

std::map<int, Triangles> readGlb(const std::string& records) {
  writeFile("solids.dat", records);
  EXPECT_EQ(runTool("export solids.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  std::map<int, Triangles> found;
  for (const Json& node : glb.json["nodes"]) {
    if (!node.contains("mesh")) continue;
    append(found[node["extras"]["line"].get<int>()], glb,
           glb.json["meshes"][node["mesh"].get<std::size_t>()], placingOf(node), 0, 1000000);
  }
  return found;
}

TEST(ExportNumbers, OfGlb) {
  const TempFolder folder;
  expectSolids(readGlb(kSolids));
}

// Boxes of 30, 60 and 90 along (2, 2, 1) / 3, (-2, 1, 2) / 3 and (1, -2, 2) / 3, then turned by
// half a turn about each of these; a pipe of 300 and 60 along the first.
const std::string kTurned =
    "P-1     01001    00b 20 20 10,0 0 0,-40 20 40,30 -60 60\n"
    "P-1     01002    00b 20 20 10,0 0 0,40 -20 -40,-30 60 -60\n"
    "P-1     01003    00b -20 -20 -10,0 0 0,-40 20 40,-30 60 -60\n"
    "P-1     01004    00b -20 -20 -10,0 0 0,40 -20 -40,30 -60 60\n"
    "P-1     01005    00c 0 0 0,200 200 100,60\n";

// A disc of 30 reaches 30 times the sine of the angle between its normal and an axis.
const double kAside = 30 * std::sqrt(5) / 3;
const double kUp = 30 * std::sqrt(8) / 3;

const std::vector<Solid> kTurnedSolids = {
    {1, 162000, 1, {-40, -60, 0}, {50, 40, 110}, 0},
    {2, 162000, 1, {-30, -20, -100}, {60, 80, 10}, 0},
    {3, 162000, 1, {-90, -20, -70}, {0, 80, 40}, 0},
    {4, 162000, 1, {-20, -100, -50}, {70, 0, 60}, 0},
    {5,
     pi * 900 * 300,
     kDisc,
     {-kAside, -kAside, -kUp},
     {200 + kAside, 200 + kAside, 100 + kUp},
     30 * 0.005},
};

TEST(ExportNumbers, OfGlbTurnedAnyWay) {
  const TempFolder folder;
  expectSolids(readGlb(kTurned), kTurnedSolids);
}

TEST(ExportNumbers, OfObjTurnedAnyWay) {
  const TempFolder folder;
  writeFile("turned.dat", kTurned);
  expectSolids(readObj(runTool("export turned.dat -o - --to obj").out), kTurnedSolids);
}

TEST(ExportNumbers, OfMergedGlb) {
  const TempFolder folder;
  writeFile("solids.dat", kSolids);
  ASSERT_EQ(runTool("export solids.dat -o x.glb --merge").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  std::map<int, Triangles> found;
  for (const Json& node : glb.json["nodes"]) {
    if (!node.contains("mesh")) continue;
    const Json& lines = node["extras"]["lines"];
    Json starts = node["extras"]["firstTriangles"];
    starts.push_back(1000000);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      append(found[lines[i].get<int>()], glb, glb.json["meshes"][node["mesh"].get<std::size_t>()],
             placingOf(node), starts[i].get<std::size_t>(), starts[i + 1].get<std::size_t>());
    }
  }
  expectSolids(found);
}

// x stays, z is up in the records and y in the file; one unit is 25.4 mm.
TEST(ExportNumbers, OfGlbAreMetresAndYUp) {
  const TempFolder folder;
  writeFile("solids.dat", kSolids);
  ASSERT_EQ(runTool("export solids.dat -o x.glb --unit 25.4").exit, 0);
  const Placing root = placingOf(Glb(bytesOf("x.glb")).json["nodes"][0]);
  const Point p = root.point({1000, 2000, 3000});
  const Point wanted = {25.4, 76.2, -50.8};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(p[i], wanted[i], 1e-12);
}

struct TextCase {
  const char* name;
  const char* arguments;
  std::vector<const char*> parts;
};

// Of a pipe of 1000 and 100, a quarter bend of 300 and a face, which has neither length nor
// volume; lengths in the unit of the file, volumes in cubic metres.
const std::string kQuantities =
    "P-1     01001    00c 0 0 0,0 0 1000,100\n"
    "P-1     01002    00l pt 1 2 3,pt 10 0 0,pt 10 20 0\n";

const TextCase kTexts[] = {
    // pi / 4 * 0.1 * 0.1 * 1 m3.
    {"IfcInMillimetres",
     "--to ifc",
     {"IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.)", "IFCQUANTITYLENGTH('Length',$,$,1000.,$)",
      "IFCQUANTITYVOLUME('GrossVolume',$,$,0.00785398163", "IFCPIPESEGMENT(", "'P-1 01 1'",
      "'cylinder:1'", "IFCCIRCLEPROFILEDEF(.AREA.,$,$,50.)", "IFCCARTESIANPOINT((1.,2.,3.))",
      "IFCCARTESIANPOINT((11.,2.,3.))", "IFCCARTESIANPOINT((11.,22.,3.))", "IFCANNOTATION("}},
    // pi / 4 * 100 * 100 * 1000 m3.
    {"IfcInMetres",
     "--to ifc --unit 1000",
     {"IFCSIUNIT(*,.LENGTHUNIT.,$,.METRE.)", "IFCQUANTITYLENGTH('Length',$,$,1000.,$)",
      "IFCQUANTITYVOLUME('GrossVolume',$,$,7853981.63"}},
    // 0.00785398 m3 * 25.4^3.
    {"IfcInInches",
     "--to ifc --unit 25.4",
     {"IFCMEASUREWITHUNIT(IFCLENGTHMEASURE(25.4),", ".LENGTHUNIT.,'INCH',",
      "IFCQUANTITYVOLUME('GrossVolume',$,$,128.7036"}},
    {"StepInMillimetres",
     "--to step",
     {"SI_UNIT(.MILLI.,.METRE.)", "CARTESIAN_POINT('',(1.,2.,3.))",
      "CARTESIAN_POINT('',(11.,2.,3.))", "CARTESIAN_POINT('',(11.,22.,3.))",
      "POLYLINE('polyline:2',", "'cylinder:1'"}},
    {"StepInMetres", "--to step --unit 1000", {"SI_UNIT($,.METRE.)"}},
    {"StepInInches",
     "--to step --unit 25.4",
     {"LENGTH_MEASURE(25.4)", "CONVERSION_BASED_UNIT('INCH'", "SI_UNIT(.MILLI.,.METRE.)"}},
    {"StepInAnotherUnit", "--to step --unit 3", {"LENGTH_MEASURE(3.)", "('UNIT'"}},
    {"DxfInMillimetres", "--to dxf", {"$INSUNITS\n 70\n4\n"}},
    {"DxfInMetres", "--to dxf --unit 1000", {"$INSUNITS\n 70\n6\n"}},
    {"DxfInCentimetres", "--to dxf --unit 10", {"$INSUNITS\n 70\n5\n"}},
    {"DxfInInches", "--to dxf --unit 25.4", {"$INSUNITS\n 70\n1\n"}},
    {"DxfInFeet", "--to dxf --unit 304.8", {"$INSUNITS\n 70\n2\n"}},
    {"DxfInAnotherUnit", "--to dxf --unit 3", {"$INSUNITS\n 70\n0\n"}},
    {"ObjInInches", "--to obj --unit 25.4", {"# unit: 25.4 mm\n"}},
    {"PlyInInches", "--to ply --unit 25.4", {"comment unit: 25.4 mm\n"}},
};

TEST(ExportNumbers, AreInTheUnitThatIsSaid) {
  const TempFolder folder;
  writeFile("pipe.dat", kQuantities);
  for (const TextCase& each : kTexts) {
    const std::string text = runTool(std::string("export -q pipe.dat -o - ") + each.arguments).out;
    for (const char* part : each.parts) {
      EXPECT_TRUE(contains(text, part)) << each.name << ": " << part;
    }
  }
}

// A MESH of DXF has so many numbers for its faces as it says, the corners of each behind their
// number; no corner is beyond its vertices.
TEST(ExportNumbers, OfDxfAreAsManyAsItSays) {
  const TempFolder folder;
  writeFile("solids.dat", kSolids);
  std::istringstream text(runTool("export solids.dat -o - --to dxf").out);
  std::vector<std::pair<int, std::string>> pairs;
  for (std::string code, value; std::getline(text, code) && std::getline(text, value);)
    pairs.emplace_back(std::stoi(code), value);
  std::map<int, Triangles> found;
  int meshes = 0;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (pairs[i] != std::pair(0, std::string("MESH"))) continue;
    ++meshes;
    while (pairs[i].first != 92) ++i;
    std::vector<Point> vertices(std::stoul(pairs[i].second));
    ++i;
    for (Point& p : vertices) {
      for (std::size_t k = 0; k < 3; ++k, ++i) {
        ASSERT_EQ(pairs[i].first, 10 + 10 * static_cast<int>(k));
        p[k] = std::stod(pairs[i].second);
      }
    }
    ASSERT_EQ(pairs[i].first, 93);
    const std::size_t numbers = std::stoul(pairs[i].second);
    ++i;
    Triangles triangles;
    for (std::size_t k = 0; k < numbers; k += 4, i += 4) {
      ASSERT_EQ(pairs[i], std::pair(90, std::string("3")));
      Triangle triangle;
      for (std::size_t corner = 0; corner < 3; ++corner)
        triangle.corners[corner] = vertices.at(std::stoul(pairs[i + 1 + corner].second));
      Point across = cross(minus(triangle.corners[1], triangle.corners[0]),
                           minus(triangle.corners[2], triangle.corners[0]));
      const double size = std::sqrt(dot(across, across));
      for (double& each : across) each /= size;
      triangle.normals = {across, across, across};
      triangles.push_back(triangle);
    }
    ASSERT_EQ(pairs[i], std::pair(94, std::string("0")));
    while (pairs[i].first != 1001) ++i;
    EXPECT_EQ(pairs[i + 1].first, 1000);
    EXPECT_EQ(pairs[i + 2].second.substr(0, 5), "line ");
    found[std::stoi(pairs[i + 2].second.substr(5))] = triangles;
  }
  EXPECT_EQ(meshes, 6);
  expectSolids(found);
}

// The colours of twelve headers differ; that of the thirteenth is the first one's again.
TEST(ExportNumbers, OfStepHaveAColourForEachHeader) {
  const TempFolder folder;
  for (const std::size_t headers : {1U, 2U, 12U, 13U}) {
    std::string records;
    for (std::size_t i = 0; i < headers; ++i) {
      const std::string name = "P-" + std::to_string(i);
      records += name + std::string(8 - name.size(), ' ') + "01001    00c 0 0 0,0 0 9,4\n";
    }
    writeFile("pipes.dat", records + records);
    std::istringstream lines(runTool("export pipes.dat -o - --to step").out);
    std::set<std::string> colours;
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);) {
      const std::size_t at = line.find("COLOUR_RGB(");
      if (at == line.npos) continue;
      colours.insert(line.substr(at));
      ++count;
    }
    EXPECT_EQ(count, std::min(headers, std::size_t{12}));
    EXPECT_EQ(colours.size(), count);
  }
}

// 250 bytes go into a line of a text of DXF; what is more stands before its last one.
TEST(ExportNumbers, OfDxfHaveTextsInLinesOf250) {
  const TempFolder folder;
  for (const std::size_t length : {1U, 250U, 251U, 500U, 501U}) {
    const std::string size = std::to_string(length);
    writeFile("text.dat", "P-1     01001    00x 1 2 3,1 0 0,0 1 0,5,4,1," + size +
                              "\nP-1     01001    01x " + std::string(length, 'a') + '\n');
    const std::string text = runTool("export text.dat -o - --to dxf").out;
    std::string expected;
    std::size_t left = length;
    for (; left > 250; left -= 250) expected += "  3\n" + std::string(250, 'a') + '\n';
    expected += "  1\n" + std::string(left, 'a') + "\n  7\nStandard\n";
    EXPECT_TRUE(contains(text, "\n 72\n1\n" + expected))
        << length << text.substr(text.find("MTEXT"));
  }
}

// How many faces look along their surface's own normal, and how many against it: of a pipe the
// plane where it begins, of a bend the one where it ends, of an elbow the lower side and the inner
// one, whose surface looks away from the axis and so into the elbow.
TEST(ExportNumbers, OfStepAreFacesWithTheirSides) {
  const TempFolder folder;
  struct Faces {
    const char* record;
    std::size_t along;
    std::size_t against;
  };
  for (const Faces& each :
       {Faces{"c 0 0 0,0 0 9,4", 2, 1}, Faces{"t 0 0 0,9 0 0,0 9 0,4", 2, 1},
        Faces{"e 0 0 5,40 0 0,0 40 0,20,10", 4, 2}, Faces{"b 10 0 0,0 0 0,0 20 0,0 0 30", 6, 0}}) {
    writeFile("one.dat", std::string("P-1     01001    00") + each.record + '\n');
    std::istringstream lines(runTool("export one.dat -o - --to step").out);
    std::size_t along = 0;
    std::size_t against = 0;
    for (std::string line; std::getline(lines, line);) {
      if (!contains(line, "=ADVANCED_FACE(")) continue;
      along += line.ends_with(",.T.);") ? 1U : 0U;
      against += line.ends_with(",.F.);") ? 1U : 0U;
    }
    EXPECT_EQ(along, each.along) << each.record;
    EXPECT_EQ(against, each.against) << each.record;
  }
}

struct ClassCase {
  const char* component;  // of a piping file; "": the element has no row
  const char* record;
  const char* begin;  // of the product
  const char* end;
};

constexpr char kAnyPipe[] = "c 0 0 0,0 0 9,4";

constexpr ClassCase kClasses[] = {
    {"PIPE", kAnyPipe, "IFCPIPESEGMENT(", ",.RIGIDSEGMENT.);"},
    {"ELBOW", kAnyPipe, "IFCPIPEFITTING(", ",.BEND.);"},
    {"BEND", kAnyPipe, "IFCPIPEFITTING(", ",.BEND.);"},
    {"TEE-STUB", kAnyPipe, "IFCPIPEFITTING(", ",.JUNCTION.);"},
    {"CROSS", kAnyPipe, "IFCPIPEFITTING(", ",.JUNCTION.);"},
    {"OLET", kAnyPipe, "IFCPIPEFITTING(", ",.JUNCTION.);"},
    {"REDUCER-CONCENTRIC", kAnyPipe, "IFCPIPEFITTING(", ",.TRANSITION.);"},
    {"FLANGE", kAnyPipe, "IFCPIPEFITTING(", ",.CONNECTOR.);"},
    {"COUPLING", kAnyPipe, "IFCPIPEFITTING(", ",.CONNECTOR.);"},
    {"CAP", kAnyPipe, "IFCPIPEFITTING(", ",.OBSTRUCTION.);"},
    {"VALVE-ANGLE", kAnyPipe, "IFCVALVE(", ",.NOTDEFINED.);"},
    {"INSTRUMENT", kAnyPipe, "IFCFLOWINSTRUMENT(", ",.NOTDEFINED.);"},
    {"FILTER", kAnyPipe, "IFCFILTER(", ",.NOTDEFINED.);"},
    {"SUPPORT", "b 1 0 0,0 0 0,0 1 0,0 0 1", "IFCBUILDINGELEMENTPROXY(", ",.NOTDEFINED.);"},
    {"", kAnyPipe, "IFCPIPESEGMENT(", ",.RIGIDSEGMENT.);"},
    {"", "t 0 0 0,9 0 0,0 9 0,4", "IFCPIPEFITTING(", ",.BEND.);"},
    {"", "n 0 0 0,0 0 9,4,2", "IFCPIPEFITTING(", ",.TRANSITION.);"},
    {"", "e 0 0 0,9 0 0,0 9 0,4,5", "IFCDUCTFITTING(", ",.BEND.);"},
    {"", "r 0 0 0,1 0 0,0 1 0,1 1 0,0 0 1,1 0 1,0 1 1,1 1 1", "IFCDUCTFITTING(", ",.TRANSITION.);"},
    {"", "b 1 0 0,0 0 0,0 1 0,0 0 1", "IFCBUILDINGELEMENTPROXY(", ",.NOTDEFINED.);"},
};

// What an element is comes from its component, else from its kind; the columns of its row become
// properties, but for empty ones.
TEST(ExportNumbers, OfIfcAreClassesAndProperties) {
  const TempFolder folder;
  for (const ClassCase& each : kClasses) {
    writeFile("plant.dat", std::string("P-1     01007    00") + each.record + '\n');
    const std::string row = *each.component == '\0' ? "P-2,01,7,7," : "P-1,01,6,8,";
    writeFile("plant.attributes.csv",
              "f1,f2,first,last,component,spec,tag\n" + row + each.component + ",A1,\n");
    const std::string text = runTool("export -q plant.dat -o - --to ifc").out;
    const std::size_t begin = text.find(std::string("=") + each.begin);
    ASSERT_NE(begin, std::string::npos) << each.component << each.record << text;
    const std::string line = text.substr(begin, text.find('\n', begin) - begin);
    EXPECT_TRUE(line.ends_with(each.end)) << line;
    EXPECT_EQ(contains(text, "IFCPROPERTYSINGLEVALUE('spec',$,IFCLABEL('A1'),$)"),
              *each.component != '\0');
    EXPECT_FALSE(contains(text, "IFCPROPERTYSINGLEVALUE('tag'")) << each.component;
  }
}

}  // namespace
}  // namespace VeskTest
