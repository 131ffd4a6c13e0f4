// SPDX-License-Identifier: MIT
// Counts the allocations of a call. An executable of its own, for it replaces
// operator new.

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>

#include "api/ElementHolder.h"
#include "output/OutFile.h"
#include "support/CountingAllocation.h"
#include "vesk.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Txt.h"

using VeskTest::allocations;

namespace {

// Numbers of every length, a value that the fast number text does not take, and
// what is no number.
constexpr double kA[] = {123456.789, -0.5, 1e17};
constexpr double kB[] = {123456.789, 1000.25, 0.0};
constexpr double kC[] = {-98765.4321, 3.0, 33.333333333};
constexpr double kD[] = {1.0, 1e300, 5e-324};
constexpr const char* kLongText = "a text of more characters than a string keeps within itself";

// The allocations of a call after some like it.
template <class Call>
int warmAllocations(Call call) {
  for (int i = 0; i < 3; ++i) call();
  const int before = allocations;
  call();
  return allocations - before;
}

struct ExportCase {
  const char* name;
  int allocations;
  void (*call)();

  friend std::ostream& operator<<(std::ostream& out, const ExportCase& row) {
    return out << row.name;
  }
};

// The holder's copy is one allocation. A primitive with a list, and a text that
// does not fit into a string itself, has one more for that: it is made when the
// primitive is built and goes into the copy.
// clang-format off
const ExportCase kExports[] = {
    {"PointHasAList",      2, [] { vk_writePnt(kA); }},
    {"SegmentHasAList",    2, [] { vk_writeSeg(kA, kB); }},
    {"TriangleHasAList",   2, [] { vk_writeTri(kA, kB, kC); }},
    {"QuadrangleHasAList", 2, [] { vk_writeQua(kA, kB, kC, kD); }},
    {"ShortText",          1, [] { vk_writeTxt(kA, kB, kC, 1.0, 2.0, 1, 1, "P-1001"); }},
    {"LongText",           2, [] { vk_writeTxt(kA, kB, kC, 1.0, 2.0, 1, 1, kLongText); }},
    {"Box",                1, [] { vk_writeBox(kA, kB, kC, kD); }},
    {"ReducerOnTwoLines",  1, [] { vk_writeRed(kA, kB, kC, kD, kA, kB, kC, kD); }},
    {"Cylinder",           1, [] { vk_writeCyl(kA, kB, 219.1); }},
    {"Cone",               1, [] { vk_writeCon(kA, kB, 219.1, 1e17); }},
    {"Torus",              1, [] { vk_writeTor(kA, kB, kC, 219.1); }},
    {"Elbow",              1, [] { vk_writeElb(kA, kB, kC, kD, 150.0); }},
    {"HeaderTakesNone",    0, [] { vk_setHeader("P-1001", "A1", 17); }},
};
// clang-format on

class AllocationTest : public testing::TestWithParam<ExportCase> {};

TEST_P(AllocationTest, WarmCallAllocatesWhatTheHolderKeeps) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(testing::TempDir());
  EXPECT_EQ(vk_openVesk("allocations"), 1);
  std::filesystem::current_path(before);
  EXPECT_EQ(warmAllocations(GetParam().call), GetParam().allocations);
  vk_openVesk(nullptr);
}

INSTANTIATE_TEST_SUITE_P(Exports, AllocationTest, testing::ValuesIn(kExports),
                         [](const auto& row) { return std::string(row.param.name); });

// The same for the C++ model, whose file can have any name.
class ModelAllocationTest : public testing::TestWithParam<int> {
 protected:
  ModelAllocationTest() {
    const std::string name =
        testing::TempDir() + "allocations" + std::to_string(GetParam()) + ".dat";
    EXPECT_TRUE(file.open(name.c_str(), GetParam()));
  }

  Vesk::OutFile file;
  Vesk::ElementHolder holder;
};

TEST_P(ModelAllocationTest, CopiedCylinderIsOneAllocation) {
  const Vesk::Cyl cyl(kA, kB, 219.1);
  EXPECT_EQ(warmAllocations([&] {
              holder.setElement(cyl);
              file.writeElement(holder);
            }),
            1);
}

TEST_P(ModelAllocationTest, CopiedPolygonIsTwoAllocations) {
  const Vesk::Pgon pgon{GePoint(kA), GePoint(kB), GePoint(kC)};
  EXPECT_EQ(warmAllocations([&] {
              holder.setElement(pgon);
              file.writeElement(holder);
            }),
            2);
}

TEST_P(ModelAllocationTest, TextOfSeveralLinesUsesThemAgain) {
  const Vesk::Txt txt(kA, kB, kC, 1.0, 2.0, 1, 1, "P-1001");
  EXPECT_EQ(warmAllocations([&] {
              holder.setElement(txt);
              file.writeElement(holder);
            }),
            1);
}

TEST_P(ModelAllocationTest, ElementsOfEveryLengthInTurnSettle) {
  const Vesk::Cyl cyl(kA, kB, 219.1);
  const Vesk::Pgon pgon{GePoint(kA), GePoint(kB), GePoint(kC)};
  const Vesk::Txt txt(kA, kB, kC, 1.0, 2.0, 1, 1, "P-1001");
  const auto write = [&] {
    for (const Vesk::Geo* element :
         {static_cast<const Vesk::Geo*>(&cyl), static_cast<const Vesk::Geo*>(&pgon),
          static_cast<const Vesk::Geo*>(&txt)}) {
      holder.setElement(*element);
      file.writeElement(holder);
    }
  };
  for (int i = 0; i < 10; ++i) write();
  EXPECT_EQ(warmAllocations(write), 1 + 2 + 1);
}

TEST_P(ModelAllocationTest, GivenUpPolygonIsOneAllocation) {
  Vesk::Pgon pgon{GePoint(kA), GePoint(kB), GePoint(kC)};
  const int before = allocations;
  holder.takeElement(std::move(pgon));
  EXPECT_EQ(allocations - before, 1);
  EXPECT_TRUE(holder.isValid());
}

INSTANTIATE_TEST_SUITE_P(Modes, ModelAllocationTest, testing::Values(2, 3),
                         [](const auto& row) { return "Mode" + std::to_string(row.param); });

}  // namespace
