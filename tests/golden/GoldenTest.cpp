#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "api/ElementHolder.h"
#include "output/OutFile.h"
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

namespace {

// The whole file, with line ends of any system as "\n".
std::string textOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  std::erase(text, '\r');
  return text;
}

// All eleven elements, the model that docs/records.md walks through.
std::string elementsIn(int mode) {
  const std::filesystem::path path =
      std::filesystem::path(testing::TempDir()) / ("elements." + std::to_string(mode) + ".dat");
  {
    OutFile file;
    EXPECT_TRUE(file.open(path.string().c_str(), mode));
    ElementHolder holder;
    int number = 0;
    const auto write = [&](const Geo& primitive) {
      holder.header.set("DUCT-7", "A1", ++number);
      holder.setElement(primitive);
      file.writeElement(holder);
    };
    write(Pline{{1, 2, 3}});
    write(Pline{{0, 0, 0}, {1000, 0, 0.5}});
    write(Pgon{{0, 0, 0}, {100, 0, 0}, {0, 50, 0}});
    write(Pgon{{0, 0, 10}, {100, 0, 10}, {100, 50, 10}, {0, 50, 10}});
    write(Txt({1, 2, 0}, {1, 0, 0}, {0, 1, 0}, 0.5, 2.5, 7, 1, "Fan 1"));
    write(Box({0, 0, 0}, {10, 0, 0}, {0, 20, 0}, {0, 0, 30}));
    write(Red({{{0, 0, 0},
                {10, 0, 0},
                {0, 10, 0},
                {10, 10, 0},
                {2, 2, 20},
                {8, 2, 20},
                {2, 8, 20},
                {8, 8, 20}}}));
    write(Cyl({1, 2, 3}, {1, 2, 13}, 219.1));
    write(Cone({0, 0, 0}, {0, 0, 100}, 168.3, 114.3));
    write(Torus({0, 0, 0}, {100, 0, 0}, {0, 100, 0}, 20));
    write(Relb({0, 0, 0}, {0, 0, 10}, {50, 0, 0}, {0, 50, 0}, 30));
  }
  return textOf(path);
}

std::filesystem::path golden(const char* name) {
  return std::filesystem::path(VESK_TEST_SOURCE_DIR) / "golden" / name;
}

TEST(GoldenTest, AllElevenElementsInTokens) {
  EXPECT_EQ(elementsIn(kTokens), textOf(golden("elements.tokens.dat")));
}

TEST(GoldenTest, AllElevenElementsInFixedColumns) {
  EXPECT_EQ(elementsIn(kFixedColumns), textOf(golden("elements.columns.dat")));
}

}  // namespace
