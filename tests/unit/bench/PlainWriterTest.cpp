// SPDX-License-Identifier: MIT
#include "plain/PlainWriter.h"

#include <gtest/gtest.h>

#include <bitset>
#include <string>
#include <vector>

#include "Calls.h"
#include "PlantModel.h"
#include "api/ElementHolder.h"
#include "output/OutFile.h"
#include "support/TempFolder.h"
#include "vesk.h"

using namespace VeskBench;

namespace {

// The rival of the benchmarks must do the same work.
class PlainWriterTest : public testing::Test {
 protected:
  std::string plainText(int mode) const {
    {
      PlainWriter writer;
      EXPECT_TRUE(writer.open("plain.dat", mode));
      writer.setHeader("P-1001", "A1", 46655);
      for (const Element& element : model) {
        withPrimitive(element, [&](const auto& primitive) { writer.write(primitive); });
      }
    }
    return VeskTest::readFile("plain.dat");
  }

  VeskTest::TempFolder folder;
  std::vector<Element> model = plantModel(3000);
};

TEST_F(PlainWriterTest, TheModelHasEveryKindOfElement) {
  std::bitset<11> kinds;
  for (const Element& element : model) kinds.set(element.kind);
  EXPECT_TRUE(kinds.all());
}

TEST_F(PlainWriterTest, TokensAreThoseOfTheExports) {
  ASSERT_EQ(vk_openVesk("own"), 1);
  vk_setHeader("P-1001", "A1", 46655);
  for (const Element& element : model) callExport(element);
  vk_openVesk(nullptr);
  const std::string text = plainText(3);
  EXPECT_GT(text.size(), 70 * model.size());
  EXPECT_EQ(VeskTest::readFile("veskown.dat"), text);
}

TEST_F(PlainWriterTest, FixedColumnsAreThoseOfTheModel) {
  {
    Vesk::OutFile file;
    Vesk::ElementHolder holder;
    ASSERT_TRUE(file.open("own.dat", 2));
    holder.header.set("P-1001", "A1", 46655);
    for (const Element& element : model) {
      withPrimitive(element, [&](const auto& primitive) {
        holder.setElement(primitive);
        file.writeElement(holder);
      });
    }
  }
  const std::string text = plainText(2);
  EXPECT_GT(text.size(), 70 * model.size());
  EXPECT_EQ(VeskTest::readFile("own.dat"), text);
}

}  // namespace
