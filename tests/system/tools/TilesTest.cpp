// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "support/TempFolder.h"
#include "tiles/TilesPage.h"
#include "tools/Exported.h"
#include "tools/Tileset.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using Point = std::array<double, 3>;

// A record for each line: pipes of three sizes in a grid, boxes, faces, segments and
// points; `count` of them, from x on.
std::string plant(int count, int x) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const std::string at = std::to_string(x + i % 20 * 900) + ' ' +
                           std::to_string(i / 20 % 10 * 700) + ' ' + std::to_string(i / 200 * 800);
    std::string digits = std::to_string(i % 1000);
    digits.insert(0, 3 - digits.size(), '0');
    text += "P-" + std::to_string(100 + i / 1000) + "   01" + digits + "    00";
    if (i % 10 < 6) {
      const int size = i % 3 == 0 ? 40 : i % 3 == 1 ? 150 : 400;
      text += "c " + at + ",0 " + std::to_string(size * 4) + " 0," + std::to_string(size);
    } else if (i % 10 == 6) {
      text += "b 100 0 0," + at + ",0 200 0,0 0 300";
    } else if (i % 10 == 7) {
      text += "g pt " + at + ",pt 500 0 0,pt 500 0 500";
    } else if (i % 10 == 8) {
      text += "l pt " + at + ",pt 1 2 300";
    } else {
      text += "l pt " + at;
    }
    text += '\n';
  }
  return text;
}

std::vector<std::pair<std::string, std::uint64_t>> linesOf(const std::string& file, int count) {
  std::vector<std::pair<std::string, std::uint64_t>> lines;
  for (int i = 1; i <= count; ++i) lines.emplace_back(file, i);
  return lines;
}

// 600 elements in tiles of at most 5,000 triangles.
class TilesTest : public testing::Test {
 protected:
  static constexpr int kCount = 600;
  static constexpr std::size_t kMost = 5000;

  TilesTest() {
    writeFile("plant.dat", plant(kCount, 0));
    const ToolRun run = runTool("export plant.dat -o tiles/ --tile-triangles 5000");
    EXPECT_EQ(run.exit, 0) << run.err;
    tiles_ = readTileset("tiles/tileset.json");
  }

  TempFolder folder_;
  std::vector<ReadTile> tiles_;
};

TEST_F(TilesTest, ATileLiesInItsParent) {
  ASSERT_GT(tiles_.size(), 9U);
  for (const ReadTile& tile : tiles_) {
    const ReadTile& parent = tiles_[tile.parent];
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_GE(tile.low[i], parent.low[i] - 1e-9);
      EXPECT_LE(tile.high[i], parent.high[i] + 1e-9);
    }
  }
}

TEST_F(TilesTest, ErrorsFallTowardsTheLeavesAndAreNoneThere) {
  for (const ReadTile& tile : tiles_) {
    EXPECT_EQ(tile.error == 0.0, tile.isLeaf);
    if (tile.depth > 0) {
      EXPECT_LT(tile.error, tiles_[tile.parent].error);
    }
  }
}

// What shows nothing at all is off by the diagonal, and by no less than twice the root.
TEST_F(TilesTest, TheErrorOfTheWholeIsItsDiagonal) {
  const ReadTile& root = tiles_.front();
  const double diagonal = std::hypot(root.high[0] - root.low[0], root.high[1] - root.low[1],
                                     root.high[2] - root.low[2]);
  const double error = nlohmann::json::parse(bytesOf("tiles/tileset.json"))["geometricError"];
  ASSERT_LT(2.0 * root.error, diagonal);
  EXPECT_NEAR(error, diagonal, 1e-3 * diagonal);
}

TEST_F(TilesTest, EveryElementIsInJustOneLeaf) {
  EXPECT_EQ(shownInLeaves(tiles_), linesOf("plant.dat", kCount));
}

TEST_F(TilesTest, NoTileHasMoreTrianglesThanWereAskedFor) {
  for (const ReadTile& tile : tiles_) EXPECT_LE(tile.triangles(), kMost);
}

// By what is left out and by the pieces of a circle: a cylinder of 32 pieces has
// 2 * 32 triangles around and 30 for each end, one of 8 pieces 2 * 8 and 6.
TEST_F(TilesTest, CoarseTilesShowLess) {
  std::size_t coarse = 0;
  for (const ReadTile& tile : tiles_) {
    std::size_t below = 0;
    for (const ReadTile& other : tiles_) {
      below += &tiles_[other.parent] == &tile && &other != &tile ? other.elements.size() : 0U;
    }
    for (const ShownElement& each : tile.elements) {
      if (each.kind != "cylinder") continue;
      EXPECT_TRUE(each.triangles == 124U || (!tile.isLeaf && each.triangles == 28U))
          << each.triangles;
      coarse += each.triangles == 28U ? 1U : 0U;
    }
    if (!tile.isLeaf) {
      EXPECT_FALSE(tile.elements.empty());
      EXPECT_LE(tile.elements.size(), below);
    }
  }
  EXPECT_GT(coarse, 0U);
}

// Whatever a coarse tile leaves out is no larger than its error, and so is how far its
// circles are off: 8 pieces by r (1 - cos(22.5 degrees)), 0.0762 r.
TEST_F(TilesTest, TheErrorOfATileIsTrue) {
  const ReadTile& root = tiles_.front();
  std::vector<bool> isShown(kCount + 1, false);
  for (const ShownElement& each : root.elements) isShown[each.line] = true;
  for (const ReadTile& tile : tiles_) {
    if (!tile.isLeaf) continue;
    for (const ShownElement& each : tile.elements) {
      if (isShown[each.line]) continue;
      Point low = each.points.front();
      Point high = low;
      for (const Point& p : each.points) {
        for (std::size_t i = 0; i < 3; ++i) {
          low[i] = std::min(low[i], p[i]);
          high[i] = std::max(high[i], p[i]);
        }
      }
      EXPECT_LE(std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]),
                root.error * (1.0 + 1e-6));
    }
  }
  EXPECT_GE(root.error, 0.0762 * 0.2);
}

TEST_F(TilesTest, WhatATileShowsLiesInItsBox) {
  for (const ReadTile& tile : tiles_) {
    for (const ShownElement& each : tile.elements) {
      for (const Point& p : each.points) {
        for (std::size_t i = 0; i < 3; ++i) {
          ASSERT_GE(p[i], tile.low[i]);
          ASSERT_LE(p[i], tile.high[i]);
        }
      }
    }
  }
}

TEST_F(TilesTest, TheSameRecordsGiveTheSameBytes) {
  ASSERT_EQ(runTool("export plant.dat -o again/ --tile-triangles 5000").exit, 0);
  for (const auto& each : std::filesystem::recursive_directory_iterator("tiles")) {
    if (!each.is_regular_file()) continue;
    const std::string name = each.path().string();
    EXPECT_EQ(bytesOf(name), bytesOf("again" + name.substr(5))) << name;
  }
}

TEST_F(TilesTest, ATilesetIsReplacedByForceAlone) {
  const std::string arguments = "export plant.dat -o tiles/";
  const ToolRun refused = runTool(arguments);
  EXPECT_EQ(refused.exit, 4);
  EXPECT_TRUE(contains(refused.err, "there is a tileset already\n  hint: -f replaces it"));
  EXPECT_EQ(readTileset("tiles/tileset.json").size(), tiles_.size());
  EXPECT_EQ(runTool(arguments + " -f").exit, 0);
  EXPECT_LT(readTileset("tiles/tileset.json").size(), tiles_.size());
  expectNothingHalf();
}

// Its corners are (x, y, z) + (0 or 1000, 0 or 2000, 0 or 3000) millimetres, of which
// neither 32 bits nor a millimetre's thousandth are left at this distance.
TEST(Tiles, StandWhereTheRecordsAreAlsoFarFromTheOrigin) {
  const TempFolder folder;
  writeFile("far.dat",
            "P-1     01001    00b 1000 0 0,6700000.125 -9000000.25 1000.5,0 2000 0,0 0 3000\n");
  for (const auto& [unit, metres] : {std::pair{"1", 0.001}, {"1000", 1.0}, {"25.4", 0.0254}}) {
    ASSERT_EQ(runTool("export far.dat -f -o tiles/ --unit " + std::string(unit)).exit, 0);
    const std::vector<ReadTile> tiles = readTileset("tiles/tileset.json");
    ASSERT_EQ(tiles.size(), 1U);
    ASSERT_EQ(tiles[0].elements.size(), 1U);
    std::vector<std::array<long long, 3>> corners;
    for (const Point& p : tiles[0].elements[0].points) {
      // In quarters of a micrometre of a unit of a millimetre.
      std::array<long long, 3> corner{};
      const Point origin{6700000.125, -9000000.25, 1000.5};
      const Point edge{1000.0, 2000.0, 3000.0};
      for (std::size_t i = 0; i < 3; ++i) {
        const double along = (p[i] / metres - origin[i]) / edge[i];
        EXPECT_NEAR(along, std::round(along), 1e-6) << unit;
        corner[i] = std::llround(along);
      }
      corners.push_back(corner);
    }
    std::sort(corners.begin(), corners.end());
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    EXPECT_EQ(corners, (std::vector<std::array<long long, 3>>{{0, 0, 0},
                                                              {0, 0, 1},
                                                              {0, 1, 0},
                                                              {0, 1, 1},
                                                              {1, 0, 0},
                                                              {1, 0, 1},
                                                              {1, 1, 0},
                                                              {1, 1, 1}}));
  }
}

// 400 pipes of 124 triangles, which no place tells apart: more than 9 tiles.
TEST(Tiles, ElementsInOnePlaceAreDividedByTheirOrder) {
  const TempFolder folder;
  std::string text;
  for (int i = 0; i < 400; ++i) text += kPipe;
  writeFile("same.dat", text);
  ASSERT_EQ(runTool("export same.dat -o tiles/ --tile-triangles 5000").exit, 0);
  const std::vector<ReadTile> tiles = readTileset("tiles/tileset.json", Points::kLeft);
  EXPECT_EQ(shownInLeaves(tiles), linesOf("same.dat", 400));
  for (const ReadTile& tile : tiles) EXPECT_LE(tile.triangles(), 5000U);
  // Its tiles are nearly as coarse as the whole is large.
  const double diagonal = std::sqrt(0.1 * 0.1 + 0.1 * 0.1 + 1.0);
  const double error = nlohmann::json::parse(bytesOf("tiles/tileset.json"))["geometricError"];
  EXPECT_NEAR(error, std::max(diagonal, 2.0 * tiles[0].error), 1e-3 * diagonal);
}

// A single zone fills the whole: 1.25 times its error is more than the diagonal of its box.
TEST(Tiles, ErrorsFallTowardsTheZone) {
  const TempFolder folder;
  std::filesystem::create_directories("web");
  writeFile("zone.dat", kPipe);
  ASSERT_EQ(runTool("export -q zone.dat -o web/zone/").exit, 0);
  ASSERT_EQ(runTool("export -q web/zone -o web/").exit, 0);
  const auto zone = nlohmann::json::parse(bytesOf("web/zone/tileset.json"));
  const auto whole = nlohmann::json::parse(bytesOf("web/tileset.json"));
  const double error = zone["geometricError"];
  EXPECT_NEAR(error, std::sqrt(0.1 * 0.1 + 0.1 * 0.1 + 1.0), 1e-6);
  EXPECT_NEAR(whole["root"]["geometricError"].get<double>(), 1.25 * error, 1e-9);
  EXPECT_NEAR(whole["geometricError"].get<double>(), 1.25 * 1.25 * error, 1e-9);
  EXPECT_EQ(whole["root"]["children"][0]["geometricError"], error);
}

// Pipes above one another, along each axis in turn: their tiles are no longer than half of all.
TEST(Tiles, AreDividedAlongTheirLongestSide) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const TempFolder folder;
    std::string text;
    for (int i = 0; i < 120; ++i) {
      int at[3] = {9000, 5000, 1000};
      at[axis] += i * 1000;
      text += "P-1     01001    00c " + std::to_string(at[0]) + ' ' + std::to_string(at[1]) + ' ' +
              std::to_string(at[2]) + ",0 0 100,100\n";
    }
    writeFile("row.dat", text);
    ASSERT_EQ(runTool("export -q row.dat -o tiles/ --tile-triangles 10000").exit, 0);
    const std::vector<ReadTile> tiles = readTileset("tiles/tileset.json", Points::kLeft);
    EXPECT_EQ(shownInLeaves(tiles), linesOf("row.dat", 120));
    const double all = tiles[0].high[axis] - tiles[0].low[axis];
    std::size_t leaves = 0;
    for (const ReadTile& tile : tiles) {
      if (!tile.isLeaf) continue;
      ++leaves;
      EXPECT_LT(tile.high[axis] - tile.low[axis], 0.52 * all) << axis;
    }
    EXPECT_EQ(leaves, 2U) << axis;
  }
}

// A line through 5001 points has 5000 segments, which fit into a tile; one more does not.
TEST(Tiles, SegmentsAreCounted) {
  const TempFolder folder;
  for (const int segments : {5000, 5001}) {
    std::string text = "P-1     01001    00l pt 0 0 0";
    for (int i = 0; i < segments; ++i) {
      text += i % 2 == 0 ? ",pt 1 0 0" : ",pt 0 1 0";
    }
    writeFile("way.dat", text + '\n');
    const ToolRun run = runTool("export -f way.dat -o tiles/ --tile-triangles 5000");
    EXPECT_EQ(run.exit, segments == 5000 ? 0 : 1) << run.err;
    EXPECT_EQ(contains(run.err, "--tile-triangles 5001 has room for them"), segments == 5001)
        << run.err;
  }
}

// What does not fit into memory waits in files: some 250 bytes for each of these are more
// than a megabyte.
TEST(Tiles, WhatWaitsInFilesIsAllThere) {
  const TempFolder folder;
  writeFile("plant.dat", plant(6000, 0));
  ASSERT_EQ(runTool("export plant.dat -o tiles/").exit, 0);
  EXPECT_EQ(shownInLeaves(readTileset("tiles/tileset.json", Points::kLeft)),
            linesOf("plant.dat", 6000));
  expectNothingHalf();
  for (const auto& each : std::filesystem::directory_iterator("tiles")) {
    const std::string name = each.path().filename().string();
    EXPECT_TRUE(name == "tileset.json" || name == "index.html" || name == "content") << name;
  }
}

// The policy lets it fetch what is on its own server, and nothing else.
TEST(Tiles, APageShowsThemInABuildWithTheViewer) {
  const TempFolder folder;
  const ToolRun run = runTool("export - -o tiles/", kPipe);
  EXPECT_EQ(run.exit, 0);
  const std::string page = bytesOf("tiles/index.html");
  if (VeskTool::tilesPage().empty()) {
    EXPECT_TRUE(contains(run.err, "this build has no viewer"));
    EXPECT_FALSE(std::filesystem::exists("tiles/index.html"));
    return;
  }
  EXPECT_TRUE(contains(page, "default-src 'none'; "));
  EXPECT_TRUE(contains(page, "; connect-src 'self'; "));
  EXPECT_FALSE(contains(page, "http://")) << "an address";
  EXPECT_FALSE(contains(page, "https://")) << "an address";
}

TEST(Tiles, ZonesAreShownAsOne) {
  const TempFolder folder;
  std::filesystem::create_directories("web/all zones");
  std::vector<std::pair<std::string, std::uint64_t>> lines;
  for (int zone = 1; zone <= 3; ++zone) {
    const std::string name = "zone" + std::to_string(zone);
    writeFile(name + ".dat", plant(300, 20000 * zone));
    ASSERT_EQ(
        runTool("export " + name + ".dat -o \"web/all zones/" + name + "/\" --tile-triangles 5000")
            .exit,
        0);
    const auto own = linesOf(name + ".dat", 300);
    lines.insert(lines.end(), own.begin(), own.end());
  }
  const std::string zones =
      "\"web/all zones/zone1\" \"web/all zones/zone2/\" \"web/all zones/zone3\"";
  const ToolRun run = runTool("export " + zones + " -o web/");
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_TRUE(contains(bytesOf("web/tileset.json"), "\"all%20zones/zone2/tileset.json\""));
  EXPECT_EQ(runTool("export " + zones + " -o web/").exit, 4);
  EXPECT_EQ(runTool("export " + zones + " -o web/ -f").exit, 0);
  // As a server takes the address.
  std::string text = bytesOf("web/tileset.json");
  for (std::size_t at = 0; (at = text.find("%20")) != text.npos;) text.replace(at, 3, " ");
  writeFile("web/tileset.json", text);
  const std::vector<ReadTile> tiles = readTileset("web/tileset.json", Points::kLeft);
  EXPECT_EQ(shownInLeaves(tiles), lines);
  const auto whole = nlohmann::json::parse(text);
  EXPECT_EQ(whole["extras"]["elements"], 900);
  // Errors fall by a quarter of the child's at least.
  double largest = 0.0;
  for (int zone = 1; zone <= 3; ++zone) {
    const auto own = nlohmann::json::parse(
        bytesOf("web/all zones/zone" + std::to_string(zone) + "/tileset.json"));
    EXPECT_EQ(own["extras"]["elements"], 300);
    largest = std::max(largest, own["geometricError"].get<double>());
  }
  const double rootError = whole["root"]["geometricError"];
  EXPECT_GE(rootError, 1.25 * largest - 1e-9);
  EXPECT_GE(whole["geometricError"].get<double>(), 1.25 * rootError - 1e-9);
  for (const ReadTile& tile : tiles) {
    const ReadTile& parent = tiles[tile.parent];
    if (tile.depth > 0) {
      EXPECT_LT(tile.error, parent.error);
    }
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_GE(tile.low[i], parent.low[i] - 1e-9);
      EXPECT_LE(tile.high[i], parent.high[i] + 1e-9);
    }
  }
}

constexpr RunCase kCases[] = {
    {"ByName", "export - --to tiles -o new", 0, "", ""},
    {"CountIsToldWithV", "export - -v -o new/", 0, "", "note: 1 tile"},
    {"TextsAreCounted", "export text.dat -o new/", 0, "", "left out: 1 text"},
    {"TextsAreStrict", "export text.dat -o new/ --strict", 1, "", "left out: 1 text"},
    {"NothingHasAShape", "export flat.dat -o new/", 1, "",
     "flat.dat:1: error: cylinder can't be shown"},
    {"TooFineForATile", "export - -o new/ --tolerance 1e-8", 1, "",
     "more triangles than a tile may have"},
    {"FewerTrianglesThanAnElementHas", "export - -o new/ --tile-triangles 4999", 2, "",
     "--tile-triangles"},
    {"IntoAFolderOfOthers", "export - -o others/", 4, "", "the folder holds other files"},
    {"IntoAFolderOfOthersByForce", "export - -f -o others/", 4, "", "the folder holds other files"},
    {"OverAFile", "export - -f -o text.dat/", 4, "", "not a folder"},
    {"IntoNoFolder", "export - -o none/new/", 4, "", "none/new: "},
    {"ToStandardOutput", "export - --to tiles -o -", 2, "", "a tileset is a folder"},
    {"IntoAnEmptyFolder", "export - -o empty/", 0, "", ""},
    {"ReportOfTiles", "export - -o new/ --report", 2, "", "--report is for meshes"},
    {"Packed", "export - -o new/ --compress", 2, "", "are for glb and gltf"},
    {"DamagedInput", "export damaged.dat -o new/", 1, "", "[V021]"},
    {"MissingInput", "export none.dat -o new/", 3, "", "none.dat: No such file"},
    {"ZonesElsewhere", "export zones/one -o others/", 2, "", "zones/one is not below others/"},
    {"ZonesAndRecords", "export zones/one text.dat -o zones/", 2, "", "text.dat is no tileset"},
    {"ZoneThatIsNone", "export zones/odd -o zones/", 3, "",
     "zones/odd/tileset.json: not a tileset"},
    {"ZoneWithoutABox", "export zones/round -o zones/", 3, "", "not a tileset of vesk"},
};

class TilesRunTest : public testing::TestWithParam<RunCase> {};

TEST_P(TilesRunTest, Runs) {
  if (VeskTool::tilesPage().empty() && GetParam().exit == 0) {
    GTEST_SKIP() << "not run: the page of tilesets was left out, and that is said";
  }
  const TempFolder folder;
  for (const char* each : {"others", "empty", "zones", "zones/odd", "zones/round"}) {
    std::filesystem::create_directory(each);
  }
  writeFile("others/notes.txt", "mine");
  writeFile("others/tileset.json", "{}");
  writeFile("text.dat", kPipe +
                            "P-1     01005    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,2\n"
                            "P-1     01005    01x AB\n");
  writeFile("flat.dat", "P-1     01001    00c 0 0 0,0 0 0,100\n");
  writeFile("damaged.dat", kPipe + "P-1     01002    00c 0 0 x,0 0 1000,100\n");
  writeFile("zones/odd/tileset.json", "[1, 2");
  writeFile("zones/round/tileset.json",
            R"({"geometricError": 1, "root": {"boundingVolume": {"sphere": [0, 0, 0, 1]}}})");
  ASSERT_EQ(runTool("export text.dat -q -o zones/one/").exit, 0);
  expectRun(GetParam());
  EXPECT_EQ(bytesOf("others/notes.txt"), "mine");
}

INSTANTIATE_TEST_SUITE_P(Tiles, TilesRunTest, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace VeskTest
