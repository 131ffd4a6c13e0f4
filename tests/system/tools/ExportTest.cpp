// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/TempFolder.h"
#include "terminal/Libraries.h"
#include "tools/Exported.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using Json = nlohmann::json;

// One of each: a box, a triangle, a segment, a point and a text.
const std::string kMixed =
    "P-1     01001    00b 10 0 0,1 2 3,0 20 0,0 0 30\n"
    "P-1     01002    00g pt 0 0 0,pt 4 0 0,pt 0 3 0\n"
    "P-1     01003    00l pt 1 1 1,pt 0 0 4\n"
    "P-1     01004    00l pt 7 8 9\n"
    "P-1     01005    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,2\n"
    "P-1     01005    01x AB\n";

struct ExportCase {
  const char* name;
  const char* arguments;
  int exit;
  const char* out;             // what stdout holds; "" nothing
  const char* err;             // what stderr holds; "" nothing
  const char* file = nullptr;  // that is there afterwards
};

// In a folder with pipe.dat, mixed.dat, bad.dat (a pipe without a diameter behind
// a good one), damaged.dat, far.dat and old.glb.
// clang-format off
constexpr ExportCase kCases[] = {
    {"Glb", "export pipe.dat -o x.glb", 0, "", "", "x.glb"},
    {"Obj", "export pipe.dat -o x.obj", 0, "", "", "x.obj"},
    {"Stl", "export pipe.dat -o x.STL", 0, "", "", "x.STL"},
    {"Ply", "export pipe.dat -o x.ply", 0, "", "", "x.ply"},
    {"Gltf", "export pipe.dat -o x.gltf", 0, "", "", "x.gltf"},
    {"Instances", "export pipe.dat -o x.glb --instances", 0, "", "", "x.glb"},
    {"Merged", "export pipe.dat -o x.glb --merge", 0, "", "", "x.glb"},
    {"MergedSizeIsForetold", "export pipe.dat -o x.glb --merge -v", 0, "", "merged: about 1 MB", "x.glb"},
    {"InstancesAndMerged", "export pipe.dat -o x.glb --merge --instances", 2, "", "excludes"},
    {"InstancesAreForGltf", "export pipe.dat -o x.stl --instances", 2, "", "for glb and gltf"},
    {"LeftOutOfPly", "export mixed.dat -o x.ply", 0, "", "left out: 1 text\n  hint: .ply", "x.ply"},
    {"FormatByName", "export pipe.dat -o x.bin --to glb", 0, "", "", "x.bin"},
    {"SeveralFiles", "export pipe.dat mixed.dat -o x.glb", 0, "", "", "x.glb"},
    {"StandardInput", "export - -o x.glb", 0, "", "", "x.glb"},
    {"StandardOutput", "export pipe.dat -o - --to obj", 0, "\no P-1_01/cylinder:1\nv ", ""},
    {"WithoutOutput", "export pipe.dat", 2, "", "-o is missing"},
    {"WithoutAFormat", "export pipe.dat -o x.txt", 2, "", "\"x.txt\" names no format"},
    {"StandardOutputNeedsAFormat", "export pipe.dat -o -", 2, "", "--to glb, gltf, obj, ply, stl, step, ifc, dxf, sqlite or tiles"},
    {"Step", "export pipe.dat -o x.step", 0, "", "", "x.step"},
    {"Ifc", "export pipe.dat -o x.ifc", 0, "", "", "x.ifc"},
    {"Dxf", "export pipe.dat -o x.dxf", 0, "", "", "x.dxf"},
    {"ReportOfSurfaces", "export pipe.dat -o x.step --report", 2, "", "--report is for meshes"},
    {"FormatWithoutOutput", "export pipe.dat --to glb --report", 2, "", "--to needs -o"},
    {"UnknownFormat", "export pipe.dat -o x --to dae", 2, "", "export --help"},
    {"ReportAndMeshOnStandardOutput", "export pipe.dat -o - --to stl --report", 2, "", "can't both go to stdout"},
    {"JsonNeedsTheReport", "export pipe.dat -o x.glb --json", 2, "", "--report"},
    {"ToleranceOfZero", "export pipe.dat -o x.glb --tolerance 0", 2, "", "--tolerance"},
    {"ToleranceAndQuality", "export pipe.dat -o x.glb --tolerance 1 --quality fine", 2, "", "excludes"},
    {"UnknownQuality", "export pipe.dat -o x.glb --quality best", 2, "", "--quality"},
    {"OntoItself", "export pipe.dat -o pipe.dat --to glb -f", 2, "", "both input and output"},
    {"OverAFile", "export pipe.dat -o old.glb", 4, "", "-f replaces it"},
    {"OverAFileByForce", "export pipe.dat -o old.glb -f", 0, "", "", "old.glb"},
    {"IntoNoFolder", "export pipe.dat -o none/x.glb", 4, "", "No such file"},
    {"MissingFile", "export none.dat -o x.glb", 3, "", "none.dat: No such file"},
    {"NoRecordFile", "export old.glb -o x.glb", 3, "", "this is not a record file"},
    {"NotShown", "export bad.dat -o x.glb", 1, "", "bad.dat:2: error: cylinder can't be shown: diameter of zero [V401]", "x.glb"},
    {"Damaged", "export damaged.dat -o x.glb", 1, "", "damaged.dat:2:32-36: error:", "x.glb"},
    {"NothingLeftOutOfGlb", "export mixed.dat -o x.glb", 0, "", "", "x.glb"},
    {"LeftOutIsAnErrorOnDemand", "export mixed.dat -o x.stl --strict", 1, "", "left out: 1 point, 1 line, 1 text\n", "x.stl"},
    {"LeftOutOfObj", "export mixed.dat -o x.obj", 0, "", "left out: 1 text\n  hint: .obj", "x.obj"},
    {"LeftOutOfStl", "export mixed.dat -o x.stl", 0, "", "left out: 1 point, 1 line, 1 text\n  hint: .stl", "x.stl"},
    {"FarAway", "export far.dat -o x.glb", 0, "", "6700000 0 500 is taken off all coordinates\n  hint: the extras", "x.glb"},
    // pi * 50^2 * 1000 is 0.007853982 m3; the polygon of 32 has 16 sin(11.25 deg) / pi of it.
    {"Report", "export pipe.dat --report", 0, "cylinders         1          0        124       1   0.240764   0.240764   0.007804  0.007854  yes\n", ""},
    {"ReportBesidesTheMesh", "export pipe.dat -o x.glb --report", 0, "0.007854  yes", "", "x.glb"},
    {"ReportInInches", "export pipe.dat --report --unit 25.4", 0, "128.703", ""},
    // Radius 50 and 5000 in 32 pieces: r (1 - cos(pi / 32)) is 0.240764 and 24.0764.
    {"ReportTellsTheLargestDeviation", "export sizes.dat --report", 0, "cylinders         2          0        248       1  24.076367  24.076367", ""},
    {"ReportTellsItInEitherOrder", "export sezis.dat --report", 0, "cylinders         2          0        248       1  24.076367  24.076367", ""},
    {"ReportTellsItAsJson", "export sizes.dat --report --json", 0, "\"deviation\": 24.07636663901", ""},
    {"ReportOfFailures", "export bad.dat --report", 1, "cylinders         2          1        124", "[V401]"},
    {"ReportOfTolerance", "export pipe.dat --report --tolerance 0.01", 0, "0.009", ""},
};
// clang-format on

class ExportTest : public testing::TestWithParam<ExportCase> {};

TEST_P(ExportTest, Runs) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  writeFile("mixed.dat", kMixed);
  writeFile("bad.dat", kPipe + "P-1     01002    00c 0 0 0,0 0 1000,0\n");
  writeFile("damaged.dat", kPipe + "P-1     01002    00c 0 0 0,0 0 1000x,100\n");
  writeFile("far.dat", "P-1     01001    00c 6700000 0 0,0 0 1000,100\n");
  const std::string large = "P-1     01002    00c 0 0 0,0 0 1000,10000\n";
  writeFile("sizes.dat", kPipe + large);
  writeFile("sezis.dat", large + kPipe);
  writeFile("old.glb", "nothing of this kind\n");
  const ExportCase& each = GetParam();
  expectRun({each.name, each.arguments, each.exit, each.out, each.err});
  std::set<std::string> there{"pipe.dat", "mixed.dat", "bad.dat",   "damaged.dat",
                              "far.dat",  "old.glb",   "sizes.dat", "sezis.dat"};
  if (each.file != nullptr) there.insert(each.file);
  std::set<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(".")) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with("tool.")) found.insert(name);  // those of the run itself
  }
  EXPECT_EQ(found, there);
}

INSTANTIATE_TEST_SUITE_P(Export, ExportTest, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const ExportCase& each, std::ostream* out) { *out << each.arguments; }

TEST(Glb, KeepsEveryElement) {
  const TempFolder folder;
  writeFile("mixed.dat", kMixed);
  ASSERT_EQ(runTool("export mixed.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  const Json& nodes = glb.json["nodes"];
  ASSERT_EQ(nodes.size(), 8U);
  EXPECT_EQ(nodes[6]["name"], "P-1 01");
  EXPECT_EQ(nodes[6]["children"], Json::parse("[1, 2, 3, 4, 5]"));
  EXPECT_EQ(nodes[7]["name"], "group 01");
  EXPECT_EQ(nodes[7]["children"], Json::parse("[6]"));
  // z up to y up, millimetres to metres.
  EXPECT_EQ(nodes[0]["scale"], Json::parse("[0.001, 0.001, 0.001]"));
  EXPECT_NEAR(nodes[0]["rotation"][0].get<double>(), -std::sqrt(0.5), 1e-15);
  EXPECT_NEAR(nodes[0]["rotation"][3].get<double>(), std::sqrt(0.5), 1e-15);
  EXPECT_EQ(nodes[0]["extras"], Json::parse(R"({"unit": 1.0, "offset": [0.0, 0.0, 0.0]})"));
  EXPECT_EQ(nodes[0]["children"], Json::parse("[7]"));
  EXPECT_EQ(nodes[1]["extras"],
            Json::parse(R"({"header": "P-1 01", "kind": "box", "file": "mixed.dat", "line": 1})"));
  EXPECT_EQ(nodes[1]["translation"], Json::parse("[1.0, 2.0, 3.0]"));
  EXPECT_EQ(nodes[1]["scale"], Json::parse("[10.0, 20.0, 30.0]"));
  EXPECT_EQ(nodes[2]["extras"]["line"], 2);
  EXPECT_EQ(nodes[5]["extras"]["text"], "AB");
  EXPECT_EQ(nodes[5]["extras"]["line"], 5);
  EXPECT_EQ(nodes[5]["extras"]["height"], 2.5);
  EXPECT_EQ(nodes[5]["extras"]["width"], 1.0);
  EXPECT_EQ(nodes[5]["extras"]["along"], Json::parse("[1.0, 0.0, 0.0]"));
  EXPECT_EQ(nodes[5]["extras"]["up"], Json::parse("[0.0, 1.0, 0.0]"));
  EXPECT_FALSE(nodes[5].contains("mesh"));
  // Only the triangle can be seen from both sides.
  const auto doubleSided = [&](std::size_t node) {
    const Json& mesh = glb.json["meshes"][nodes[node]["mesh"].get<std::size_t>()];
    const Json& primitive = mesh["primitives"][0];
    return glb.json["materials"][primitive["material"].get<std::size_t>()].value("doubleSided",
                                                                                 false);
  };
  EXPECT_FALSE(doubleSided(1));
  EXPECT_TRUE(doubleSided(2));
}

TEST(Glb, BoundsAreThoseOfTheRoundedNumbers) {
  const TempFolder folder;
  // 0.1 and 7.7 are no numbers of 32 bits.
  writeFile("face.dat", "P-1     01001    00g pt 0 0 0,pt 0.1 0 0,pt 7.7 3.3 0\n");
  ASSERT_EQ(runTool("export face.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  std::size_t looked = 0;
  for (const Json& accessor : glb.json["accessors"]) {
    if (!accessor.contains("min")) continue;
    ++looked;
    for (std::size_t i = 0; i < 3; ++i) {
      float low = glb.at(accessor, 0, i);
      float high = low;
      for (std::size_t k = 1; k < accessor["count"].get<std::size_t>(); ++k) {
        low = std::min(low, glb.at(accessor, k, i));
        high = std::max(high, glb.at(accessor, k, i));
      }
      EXPECT_EQ(accessor["min"][i].get<double>(), static_cast<double>(low));
      EXPECT_EQ(accessor["max"][i].get<double>(), static_cast<double>(high));
    }
  }
  EXPECT_EQ(looked, 1U);
}

TEST(Glb, EqualShapesShareAMesh) {
  const TempFolder folder;
  std::string records;
  for (int i = 1; i <= 100; ++i) {
    records += "P-1     01001    00c " + std::to_string(i) + " 0 0,0 " + std::to_string(i) + " 9," +
               std::to_string(i * 7) + "\n";
  }
  writeFile("pipes.dat", records);
  ASSERT_EQ(runTool("export pipes.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  EXPECT_EQ(glb.json["nodes"].size(), 103U);
  EXPECT_EQ(glb.json["meshes"].size(), 1U);
}

// Two pipes of one shape, a torus of another, in two headers of two groups.
const std::string kTwoHeaders =
    "P-1     AA001    00c 0 0 0,0 0 1000,100\n"
    "P-2     BB001    00c 500 0 0,0 2000 0,50\n"
    "P-2     BB002    00t 0 0 0,300 0 0,0 300 0,100\n";

// Neither the folder of this machine nor the way there; two of one name by their folders.
TEST(Glb, FilesAreNamedWithoutTheirFolders) {
  const TempFolder folder;
  for (const char* name : {"one", "two"}) std::filesystem::create_directory(name);
  writeFile("one/a.dat", kPipe);
  writeFile("two/a.dat", kPipe);
  writeFile("two/b.dat", kPipe);
  const std::string here = std::filesystem::current_path().string();
  ASSERT_EQ(runTool("export \"" + here + "/one/a.dat\" two/a.dat two/b.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  std::set<std::string> files;
  for (const Json& node : glb.json["nodes"]) {
    if (node.contains("extras") && node["extras"].contains("file"))
      files.insert(node["extras"]["file"]);
  }
  EXPECT_EQ(files, (std::set<std::string>{"one/a.dat", "two/a.dat", "b.dat"}));
  // Written as they are among the others; a build without SQLite has no file to look at.
  const ToolRun run = runTool("export \"" + here + "/one/a.dat\" two/b.dat -o x.sqlite");
  if (run.exit == 2) return;
  EXPECT_TRUE(contains(bytesOf("x.sqlite"), "a.dat"));
  EXPECT_FALSE(contains(bytesOf("x.sqlite"), "one/a.dat"));
  EXPECT_FALSE(contains(bytesOf("x.sqlite"), "two/b.dat"));
}

// A name and its value stand side by side in a row of the file.
TEST(ExportedDatabase, KnowsTheUnitOfTheFile) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  const ToolRun run = runTool("export pipe.dat -o x.sqlite --unit 25.4");
  if (run.exit == 2) return;  // a build without SQLite
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_TRUE(contains(bytesOf("x.sqlite"), "unit in millimetres25.4"));
}

TEST(Glb, HeadersStandBelowTheirGroups) {
  const TempFolder folder;
  writeFile("two.dat", kTwoHeaders);
  ASSERT_EQ(runTool("export two.dat -o x.glb").exit, 0);
  const Json nodes = Glb(bytesOf("x.glb")).json["nodes"];
  std::string tree;
  for (const Json& group : nodes[0]["children"]) {
    tree += nodes[group.get<std::size_t>()]["name"].get<std::string>() + ':';
    for (const Json& header : nodes[group.get<std::size_t>()]["children"]) {
      const Json& node = nodes[header.get<std::size_t>()];
      tree += ' ' + node["name"].get<std::string>() + ' ' + node["children"].dump();
    }
    tree += '\n';
  }
  EXPECT_EQ(tree, "group AA: P-1 AA [1]\ngroup BB: P-2 BB [2,3]\n");
}

// #6b9ac8, a cylinder's colour on the screen: (0x6b / 255 + 0.055) / 1.055 to 2.4.
TEST(Glb, ColoursAreByKindAndLinear) {
  const TempFolder folder;
  writeFile("two.dat", kTwoHeaders);
  ASSERT_EQ(runTool("export two.dat -o x.glb").exit, 0);
  const Json json = Glb(bytesOf("x.glb")).json;
  const Json& colour = json["materials"][0]["pbrMetallicRoughness"]["baseColorFactor"];
  EXPECT_EQ(json["materials"][0]["name"], "cylinder");
  EXPECT_EQ(json["materials"][1]["name"], "torus");
  EXPECT_NEAR(colour[0].get<double>(), 0.147027, 1e-6);
  EXPECT_NEAR(colour[1].get<double>(), 0.323143, 1e-6);
  EXPECT_NEAR(colour[2].get<double>(), 0.577580, 1e-6);
}

TEST(Glb, InstancesTellTheirElements) {
  const TempFolder folder;
  writeFile("two.dat", kTwoHeaders);
  ASSERT_EQ(runTool("export two.dat -o x.glb --instances").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  EXPECT_EQ(glb.json["extensionsRequired"], Json::parse("[\"EXT_mesh_gpu_instancing\"]"));
  const Json& node = glb.json["nodes"][1];
  const Json& attributes = node["extensions"]["EXT_mesh_gpu_instancing"]["attributes"];
  EXPECT_EQ(node["extensions"]["EXT_instance_features"]["featureIds"][0]["featureCount"], 2);
  const auto numbers = [&](const char* name) {
    const Json& accessor = glb.json["accessors"][attributes[name].get<std::size_t>()];
    const Json& view = glb.json["bufferViews"][accessor["bufferView"].get<std::size_t>()];
    const std::size_t size = accessor["type"] == "SCALAR" ? 1 : accessor["type"] == "VEC3" ? 3 : 4;
    std::vector<float> all;
    for (std::size_t i = 0; i < accessor["count"].get<std::size_t>() * size; ++i) {
      all.push_back(f32At(glb.data, view.value("byteOffset", std::size_t{0}) +
                                        accessor.value("byteOffset", std::size_t{0}) + 4 * i));
    }
    return all;
  };
  EXPECT_EQ(numbers("TRANSLATION"), (std::vector<float>{0, 0, 0, 500, 0, 0}));
  EXPECT_EQ(numbers("_FEATURE_ID_0"), (std::vector<float>{0, 1}));
  // A pipe's unit shape is stretched by its radius twice and its length.
  std::vector<float> scales = numbers("SCALE");
  std::sort(scales.begin(), scales.begin() + 3);
  std::sort(scales.begin() + 3, scales.end());
  EXPECT_EQ(scales, (std::vector<float>{50, 50, 1000, 25, 25, 2000}));
  const Json& table = glb.json["nodes"][0]["extras"]["elements"];
  EXPECT_EQ(table["headers"], Json::parse(R"(["P-1 AA", "P-2 BB"])"));
  EXPECT_EQ(table["header"], Json::parse("[0, 1, 1]"));
  EXPECT_EQ(table["line"], Json::parse("[1, 2, 3]"));
  EXPECT_EQ(table["kinds"][table["kind"][2].get<std::size_t>()], "torus");
  // The bend is alone, so a node of its own.
  EXPECT_EQ(glb.json["nodes"][2]["extras"]["line"], 3);
}

TEST(Glb, MergedMeshesTellTheirElements) {
  const TempFolder folder;
  writeFile("two.dat", kPipe + "P-1     01002    00c 0 0 5000,0 0 1000,200\n");
  ASSERT_EQ(runTool("export two.dat -o x.glb --merge").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  EXPECT_EQ(glb.json["meshes"].size(), 1U);
  const Json& extras = glb.json["nodes"][1]["extras"];
  EXPECT_EQ(extras["lines"], Json::parse("[1, 2]"));
  // 32 sides of two triangles and two lids of 30.
  EXPECT_EQ(extras["firstTriangles"], Json::parse("[0, 124]"));
  const Json& positions = glb.json["accessors"][0];
  EXPECT_EQ(positions["min"], Json::parse("[-100.0, -100.0, 0.0]"));
  EXPECT_EQ(positions["max"], Json::parse("[100.0, 100.0, 6000.0]"));
}

TEST(Glb, TextFormHoldsTheSame) {
  const TempFolder folder;
  writeFile("mixed.dat", kMixed);
  ASSERT_EQ(runTool("export mixed.dat -o x.glb").exit, 0);
  ASSERT_EQ(runTool("export mixed.dat -o x.gltf").exit, 0);
  Json json = Json::parse(bytesOf("x.gltf"));
  const std::string uri = json["buffers"][0]["uri"];
  const std::string heading = "data:application/octet-stream;base64,";
  ASSERT_TRUE(uri.starts_with(heading));
  const std::string digits = uri.substr(heading.size());
  std::string bytes;
  for (std::size_t i = 0; i + 3 < digits.size(); i += 4) {
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const std::size_t place =
          std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
              .find(digits[i + k]);
      bits = bits << 6U | static_cast<std::uint32_t>(place == std::string::npos ? 0 : place);
    }
    for (const unsigned shift : {16U, 8U, 0U}) bytes += static_cast<char>(bits >> shift & 0xFFU);
  }
  const Glb glb(bytesOf("x.glb"));
  EXPECT_EQ(bytes.substr(0, glb.data.size()), glb.data);
  json["buffers"][0].erase("uri");
  EXPECT_EQ(json, glb.json);
}

TEST(Ply, IsWhatItSays) {
  const TempFolder folder;
  writeFile("mixed.dat", kMixed.substr(kMixed.find('\n') + 1));
  ASSERT_EQ(runTool("export mixed.dat -o x.ply").exit, 0);
  const std::string bytes = bytesOf("x.ply");
  const std::string end = "end_header\n";
  const std::size_t data = bytes.find(end) + end.size();
  EXPECT_EQ(bytes.substr(0, data),
            "ply\nformat binary_little_endian 1.0\ncomment vesk " VESK_VERSION
            "\ncomment unit: 1 mm\ncomment offset: 0 0 0\n"
            "element vertex 6\nproperty float x\nproperty float y\nproperty float z\n"
            "property uchar red\nproperty uchar green\nproperty uchar blue\n"
            "element face 1\nproperty list uchar uint vertex_indices\n"
            "element edge 1\nproperty uint vertex1\nproperty uint vertex2\nend_header\n");
  // Six corners of fifteen bytes, the triangle's three and its list, one edge.
  ASSERT_EQ(bytes.size(), data + 6 * 15 + 13 + 8);
  const float corners[] = {0, 0, 0, 4, 0, 0, 0, 3, 0, 7, 8, 9, 1, 1, 1, 1, 1, 5};
  for (std::size_t i = 0; i < 18; ++i) {
    EXPECT_EQ(f32At(bytes, data + i / 3 * 15 + i % 3 * 4), corners[i]) << i;
  }
  EXPECT_EQ(bytes.substr(data + 12, 3), "\x7f\xa8\x86");  // a triangle's colour
  EXPECT_EQ(u32At(bytes, data + 90 + 9), 2U);
  EXPECT_EQ(u32At(bytes, data + 103), 4U);
  EXPECT_EQ(u32At(bytes, data + 107), 5U);
}

TEST(Glb, OffsetIsKeptInFull) {
  const TempFolder folder;
  writeFile("far.dat", "P-1     01001    00c 6700000 0 0,0 0 1000,100\n");
  ASSERT_EQ(runTool("export far.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  EXPECT_EQ(glb.json["nodes"][0]["extras"]["offset"], Json::parse("[6700000.0, 0.0, 500.0]"));
  EXPECT_EQ(glb.json["nodes"][1]["translation"], Json::parse("[0.0, 0.0, -500.0]"));
}

TEST(Glb, TextsOfOddBytesAreUtf8) {
  const TempFolder folder;
  writeFile("odd.dat",
            "P-\xFF\xC3\xA4   01001    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,2\n"
            "P-\xFF\xC3\xA4   01001    01x \xFEZ\n");
  ASSERT_EQ(runTool("export odd.dat -o x.glb").exit, 0);
  const Glb glb(bytesOf("x.glb"));
  EXPECT_EQ(glb.json["nodes"][1]["extras"]["text"], "\xEF\xBF\xBDZ");
  EXPECT_EQ(glb.json["nodes"][1]["extras"]["header"], "P-\xEF\xBF\xBD\xC3\xA4 01");
}

TEST(Glb, SameInputSameBytes) {
  const TempFolder folder;
  ASSERT_EQ(runTool("export \"" + golden("pump.dat") + "\" -o a.glb").exit, 0);
  ASSERT_EQ(runTool("export \"" + golden("pump.dat") + "\" -o b.glb").exit, 0);
  EXPECT_EQ(bytesOf("a.glb"), bytesOf("b.glb"));
}

bool hasMeshoptimizer() {
  const auto all = VeskTool::libraries();
  return std::any_of(all.begin(), all.end(), [](const VeskTool::Library& each) {
    return std::string_view(each.name) == "meshoptimizer" && each.isIn;
  });
}

constexpr RunCase kCompressed[] = {
    {"Instances", "export pipe.dat -o 1.glb --compress --instances", 0, "", ""},
    {"Merged", "export pipe.dat -o 2.glb --compress --merge", 0, "", ""},
    {"AloneGainsLittle", "export pipe.dat -o 3.glb --compress", 0, "",
     "warning: --compress gains little"},
    {"WithoutTriangles", "export point.dat -o 4.gltf --compress --merge", 0, "", ""},
    {"WithoutElements", "export empty.dat -o 5.glb --compress --merge", 0, "", ""},
};

TEST(Glb, IsCompressedOrTheLibraryIsNamed) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  writeFile("point.dat", "P-1     01004    00l pt 0 0 0\n");
  writeFile("empty.dat", "");
  for (RunCase each : kCompressed) {
    if (!hasMeshoptimizer()) {
      each.exit = 2;
      each.err = "vesk export --compress needs meshoptimizer";
    }
    expectRun(each);
  }
}

TEST(Glb, CompressionIsForGltf) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  expectRun({"", "export pipe.dat -o x.ply --compress", 2, "", "are for glb and gltf"});
}

// Readers know the places of what is compressed by buffer 1, which no file holds.
TEST(Glb, CompressedViewsLieInTheFile) {
  if (!hasMeshoptimizer()) GTEST_SKIP() << "this build has no meshoptimizer";
  const TempFolder folder;
  const std::string pump = "export \"" + golden("pump.dat") + "\" --merge -o ";
  for (const char* out : {"plain.glb", "a.glb --compress", "b.glb --compress"}) {
    ASSERT_EQ(runTool(pump + out).exit, 0);
  }
  EXPECT_EQ(bytesOf("a.glb"), bytesOf("b.glb"));
  const Glb glb(bytesOf("a.glb"));
  EXPECT_EQ(glb.json["extensionsRequired"],
            Json::parse(R"(["EXT_meshopt_compression", "KHR_mesh_quantization"])"));
  EXPECT_EQ(glb.json["buffers"][0]["byteLength"], glb.data.size());
  std::size_t end = 0;
  for (const Json& view : glb.json["bufferViews"]) {
    EXPECT_EQ(view["buffer"], 1);
    const Json& packed = view["extensions"]["EXT_meshopt_compression"];
    EXPECT_EQ(packed["buffer"], 0);
    EXPECT_GE(packed.value("byteOffset", std::size_t{0}), end);
    end = packed.value("byteOffset", std::size_t{0}) + packed["byteLength"].get<std::size_t>();
    EXPECT_EQ(packed["count"].get<std::size_t>() * packed["byteStride"].get<std::size_t>(),
              view["byteLength"].get<std::size_t>());
  }
  EXPECT_LE(end, glb.data.size());
  // 24 bytes a corner become 16 before they are packed: positions 12, normals 4.
  EXPECT_LT(glb.data.size() * 24, Glb(bytesOf("plain.glb")).data.size() * 16);
}

// In steps of the largest power of two below a twentieth of the tolerance: 2^-5 below
// 0.05, so that 1.02, which is 32.64 of them, becomes 33.
TEST(Glb, CompressedPointsStandOnMultiples) {
  if (!hasMeshoptimizer()) GTEST_SKIP() << "this build has no meshoptimizer";
  const TempFolder folder;
  writeFile("face.dat", "P-1     01002    00g pt 0 0 0,pt 64 50 64,pt 0 30 -1.02\n");
  ASSERT_EQ(runTool("export face.dat -o x.glb --merge --compress --tolerance 1").exit, 0);
  const Json low = Glb(bytesOf("x.glb")).json["accessors"][0]["min"];
  EXPECT_EQ(low, Json::parse("[0, 0, -1.03125]"));
}

TEST(Obj, IsWhatItSays) {
  const TempFolder folder;
  writeFile("mixed.dat", kMixed.substr(kMixed.find('\n') + 1));
  ASSERT_EQ(runTool("export mixed.dat -o x.obj").exit, 0);
  EXPECT_EQ(bytesOf("x.obj"), "# vesk " VESK_VERSION
                              "\n# unit: 1 mm\n# offset: 0 0 0\n"
                              "o P-1_01/triangle:1\n"
                              "v 0 0 0\nv 4 0 0\nv 0 3 0\n"
                              "vn 0 0 1\n"
                              "f 1//1 2//1 3//1\n"
                              "o P-1_01/point:3\nv 7 8 9\np 4\n"
                              "o P-1_01/segment:2\nv 1 1 1\nv 1 1 5\nl 5 6\n");
}

TEST(Stl, IsWhatItSays) {
  const TempFolder folder;
  writeFile("mixed.dat", kMixed);
  ASSERT_EQ(runTool("export mixed.dat -o x.stl").exit, 0);
  const std::string bytes = bytesOf("x.stl");
  // 80 bytes of heading, the count, and 50 bytes for each: 12 of the box and one.
  ASSERT_EQ(bytes.size(), 84U + 13 * 50);
  EXPECT_EQ(bytes.substr(0, 5), "vesk ");
  EXPECT_EQ(u32At(bytes, 80), 13U);
  const float face[] = {0, 0, 1, 0, 0, 0, 4, 0, 0, 0, 3, 0};
  for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(f32At(bytes, 84 + 12 * 50 + 4 * i), face[i]);
}

// A disk of 10 so far out that its ring of 64 lies on steps of 0.5: some corners
// fall together, and what is left is still closed.
TEST(Stl, LeavesOutWhatVanishesIn32Bits) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 6000000 0 0,10 0 0,10\n"
            "P-1     01002    00c -6000000 0 0,10 0 0,10\n");
  const ToolRun run = runTool("export a.dat -o x.stl -v --quality fine");
  EXPECT_EQ(run.exit, 0);
  const std::string bytes = bytesOf("x.stl");
  const std::size_t count = u32At(bytes, 80);
  ASSERT_EQ(bytes.size(), 84 + 50 * count);
  using Corner = std::array<float, 3>;
  std::multiset<std::pair<Corner, Corner>> edges;
  for (std::size_t i = 0; i < count; ++i) {
    Corner corners[3];
    for (std::size_t k = 0; k < 9; ++k) {
      corners[k / 3][k % 3] = f32At(bytes, 84 + 50 * i + 12 + 4 * k);
    }
    for (std::size_t k = 0; k < 3; ++k) edges.insert({corners[k], corners[(k + 1) % 3]});
  }
  for (const auto& [from, to] : edges) {
    EXPECT_NE(from, to);
    EXPECT_EQ(edges.count({from, to}), edges.count({to, from}));
  }
}

}  // namespace
}  // namespace VeskTest
