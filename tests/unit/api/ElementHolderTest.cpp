// SPDX-License-Identifier: MIT
#include "api/ElementHolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

#include "support/FailingAllocation.h"
#include "support/Text.h"
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
using VeskTest::FailingAllocation;
using VeskTest::joined;

namespace {

// A primitive of no known class that gives any type code.
class Foreign : public Geo {
 public:
  explicit Foreign(std::int32_t code) : code_(code) {}

  std::int32_t typeCode() const override { return code_; }
  Extents& addExtents(Extents& box) const override { return box; }
  std::int32_t checkSize() const override { return 0; }
  bool isSolid() const override { return false; }
  GePoint& centroid(GePoint& p) const override { return p; }

 private:
  std::int32_t code_;
};

TEST(ElementHolderTest, ANewHolderIsInvalidAndBlank) {
  const ElementHolder holder;
  EXPECT_FALSE(holder.isValid());
  EXPECT_EQ(holder.element(), nullptr);
  EXPECT_FALSE(holder.ft);
  EXPECT_FALSE(holder.tk);
  EXPECT_TRUE(holder.header.f1.isBlank());
  EXPECT_TRUE(holder.header.f2.isBlank());
  EXPECT_TRUE(holder.header.f3.isBlank());
  EXPECT_TRUE(holder.header.f4.isBlank());
  EXPECT_TRUE(holder.header.f5.isBlank());
  EXPECT_TRUE(holder.header.f6.isBlank());
  EXPECT_TRUE(holder.header.f7.isBlank());
}

template <class Primitive>
class ElementHolderKindTest : public testing::Test {};

using Kinds = testing::Types<Cyl, Box, Relb, Torus, Red, Cone, Pline, Pgon, Txt>;
TYPED_TEST_SUITE(ElementHolderKindTest, Kinds);

TYPED_TEST(ElementHolderKindTest, HoldsACopyOfTheSameClass) {
  const TypeParam primitive;
  ElementHolder holder;
  holder.setElement(primitive);
  ASSERT_TRUE(holder.isValid());
  EXPECT_NE(holder.element(), &primitive);
  EXPECT_NE(dynamic_cast<const TypeParam*>(holder.element()), nullptr);
}

TEST(ElementHolderTest, TheCopyIsDeep) {
  Pline pline{{1, 2, 3}, {4, 5, 6}};
  ElementHolder holder;
  holder.setElement(pline);
  pline.move({1, 1, 1});
  pline.vertices.clear();
  EXPECT_TRUE(holder.element()->equal(Pline{{1, 2, 3}, {4, 5, 6}}, 0.0));
}

TEST(ElementHolderTest, TheNewElementReplacesTheFormer) {
  ElementHolder holder;
  holder.setElement(Cyl());
  holder.setElement(Torus());
  EXPECT_EQ(holder.element()->typeCode(), Torus::kTypeCode);
}

TEST(ElementHolderTest, TheFormerCopyIsDeletedBeforeTheNewOneIsMade) {
  ElementHolder holder;
  holder.setElement(Cyl());
  const Torus torus;
  const FailingAllocation failing(1);
  holder.setElement(torus);
  EXPECT_TRUE(failing.happened());
  EXPECT_FALSE(holder.isValid());
  EXPECT_EQ(holder.element(), nullptr);
}

TEST(ElementHolderTest, ACopyWithoutMemoryStoresNothing) {
  const Pline pline{{1, 2, 3}, {4, 5, 6}};
  for (const int allocation : {1, 2}) {  // the primitive, its vertices
    ElementHolder holder;
    const FailingAllocation failing(allocation);
    holder.setElement(pline);
    EXPECT_TRUE(failing.happened());
    EXPECT_FALSE(holder.isValid());
  }
}

TEST(ElementHolderTest, AnUnknownTypeCodeStoresNothing) {
  for (const std::int32_t code : {0, -1, 10, 256 + 1, 1000000}) {
    ElementHolder holder;
    holder.setElement(Cyl());
    holder.setElement(Foreign(code));
    EXPECT_FALSE(holder.isValid()) << "type code " << code;
    EXPECT_EQ(holder.element(), nullptr);
  }
}

TEST(ElementHolderTest, ATypeCodeOfAnotherClassStoresNothing) {
  for (std::int32_t code = 1; code <= 9; ++code) {
    ElementHolder holder;
    holder.setElement(Foreign(code));
    EXPECT_FALSE(holder.isValid()) << "type code " << code;
  }
}

TEST(ElementHolderTest, ResetLeavesTheHolderInvalid) {
  ElementHolder holder;
  holder.reset();
  EXPECT_FALSE(holder.isValid());
  holder.setElement(Cyl());
  holder.reset();
  EXPECT_FALSE(holder.isValid());
  EXPECT_EQ(holder.element(), nullptr);
  holder.reset();
  EXPECT_FALSE(holder.isValid());
}

TEST(ElementHolderTest, TheHeldElementMayBeSetAgain) {
  ElementHolder holder;
  holder.setElement(Pline{{1, 2, 3}, {4, 5, 6}});
  holder.setElement(*holder.element());
  ASSERT_TRUE(holder.isValid());
  EXPECT_TRUE(holder.element()->equal(Pline{{1, 2, 3}, {4, 5, 6}}, 0.0));
}

TEST(ElementHolderTest, HeaderAndAttributesStayWhenAnElementIsSet) {
  ElementHolder holder;
  holder.header.set("P-1", "A", 7);
  holder.ft = 5;
  holder.setElement(Cyl());
  holder.setElement(Foreign(0));
  EXPECT_TEXT(holder.header.f1.text(), "P-1     ");
  EXPECT_TEXT(holder.header.f3.text(), "007");
  EXPECT_EQ(holder.ft, 5);
  EXPECT_FALSE(holder.tk);
}

// Closing attributes

struct ClosingCase {
  const char* name;
  int mode;
  std::optional<std::int32_t> ft;
  std::optional<std::int32_t> tk;
  std::uint32_t lineSize;
  std::string lines;

  friend std::ostream& operator<<(std::ostream& out, const ClosingCase& row) {
    return out << row.name;
  }
};

// "                 00c 0 0 0,0 0 10,2" has 35 characters.
const std::string kCylLine = "                 00c 0 0 0,0 0 10,2";
const std::string kNext = "                 01c ";
const std::string kFixedLine = "60" + std::string(19, ' ') +
                               "CYL    0.000    0.000    0.000    0.000    0.000   10.000    2.000";

// clang-format off
const ClosingCase kClosings[] = {
    {"NoneIsPresent",               kTokens, {},  {},  512, joined({kCylLine})},
    {"OnlyFt",                      kTokens, 12,  {},  512, joined({kCylLine + ",ft 12"})},
    {"OnlyTk",                      kTokens, {},  7,   512, joined({kCylLine + ",tk 7"})},
    {"FtBeforeTk",                  kTokens, 12,  7,   512, joined({kCylLine + ",ft 12,tk 7"})},
    {"ZeroIsPresent",               kTokens, 0,   {},  512, joined({kCylLine + ",ft 0"})},
    {"ValuesOfAnyIntAreInFull",     kTokens, -2147483647 - 1, 2147483647, 512,
     joined({kCylLine + ",ft -2147483648,tk 2147483647"})},
    {"TrailingZerosStay",           kTokens, 100, {},  512, joined({kCylLine + ",ft 100"})},
    {"NoneInFixedColumns",          kFixedColumns, 12, 7, 256, joined({kFixedLine})},
    // Comma, name and value are tokens of their own and wrap on their own.
    {"TheCommaWraps",               kTokens, 12,  {},  35,  joined({kCylLine, kNext + ",ft 12"})},
    {"TheNameWraps",                kTokens, 12,  {},  38,  joined({kCylLine + ",", kNext + "ft 12"})},
    {"TheValueWraps",               kTokens, 12,  {},  40,  joined({kCylLine + ",ft ", kNext + "12"})},
    {"NothingWraps",                kTokens, 12,  {},  41,  joined({kCylLine + ",ft 12"})},
};
// clang-format on

TEST(ElementHolderTest, ClosingAttributesAreThreeTokensEach) {
  for (const ClosingCase& row : kClosings) {
    SCOPED_TRACE(row);
    ElementHolder holder;
    holder.ft = row.ft;
    holder.tk = row.tk;
    holder.setElement(Cyl({0, 0, 0}, {0, 0, 10}, 2));
    Output out;
    out.mode = row.mode;
    out.pointDecimals = 4;
    out.valueDecimals = 6;
    out.lineSize = row.lineSize;
    holder.writeRecords(out);
    out.flushLine();
    EXPECT_TEXT(joined(out.recs), row.lines);
  }
}

TEST(ElementHolderTest, AttributesOfTheHeaderStandBehindTheKeyword) {
  ElementHolder holder;
  holder.header.set("P-1", "A", 1);
  holder.header.f6.assign("7", false);
  holder.header.f7.assign("S 2", false);
  holder.setElement(Cyl({0, 0, 0}, {0, 0, 10}, 2));
  Output out;
  out.mode = kTokens;
  holder.writeRecords(out);
  EXPECT_TEXT(out.lineText(), "P-1     A 001    00c cs 7,sp S 2,0 0 0,0 0 10,2");
}

}  // namespace
