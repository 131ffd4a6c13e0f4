// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <vesk.h>

#include <climits>
#include <cmath>
#include <filesystem>
#include <limits>
#include <new>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "api/Globals.h"
#include "support/ExportsFixture.h"
#include "support/FailingAllocation.h"
#include "support/Text.h"
#include "vesk/GeEx.h"

using VeskTest::FailingAllocation;
using VeskTest::joined;
using VeskTest::readFile;

namespace {

class ExportsTest : public VeskTest::ExportsFixture {};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr double kOrigin[] = {0, 0, 0};
constexpr double kX10[] = {10, 0, 0};
constexpr double kY20[] = {0, 20, 0};
constexpr double kZ30[] = {0, 0, 30};

// A cylinder and its line under a blank header.
int writeCyl() { return vk_writeCyl(kOrigin, kZ30, 2); }
const std::string kCylLine = "                 00c 0 0 0,0 0 30,2";

// vk_openVesk

TEST_F(ExportsTest, OpenPutsTheNameBetweenVeskAndDat) {
  EXPECT_EQ(vk_openVesk("pump"), 1);
  EXPECT_TRUE(std::filesystem::exists("veskpump.dat"));
  EXPECT_EQ(vk_openVesk(""), 1);
  EXPECT_TRUE(std::filesystem::exists("vesk.dat"));
  std::filesystem::create_directory("veska");
  EXPECT_EQ(vk_openVesk("a/b"), 1);
  EXPECT_TRUE(std::filesystem::exists("veska/b.dat"));
}

TEST_F(ExportsTest, OpenSelectsTokenRecordsOfLineSize512) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  const Vesk::Output& out = Vesk::outFile.output();
  EXPECT_EQ(out.mode, 3);
  EXPECT_EQ(out.lineSize, 512u);
  EXPECT_EQ(out.pointDecimals, 4);
  EXPECT_EQ(out.valueDecimals, 6);
}

TEST_F(ExportsTest, OpenEmptiesAnExistingFile) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  writeCyl();
  ASSERT_EQ(vk_openVesk("a"), 1);
  EXPECT_TEXT(written("a"), "");
}

TEST_F(ExportsTest, TheFirstFileIsClosedBeforeTheSecondIsOpened) {
  ASSERT_EQ(vk_openVesk("first"), 1);
  writeCyl();
  ASSERT_EQ(vk_openVesk("second"), 1);
  EXPECT_TEXT(readFile("veskfirst.dat"), joined({kCylLine}));
  writeCyl();
  EXPECT_TEXT(readFile("veskfirst.dat"), joined({kCylLine}));
  EXPECT_TEXT(written("second"), joined({kCylLine}));
}

TEST_F(ExportsTest, AFailedOpenReturnsZeroAndHasClosedTheFile) {
  const std::string tooLong(100000, 'n');
  for (const char* name : {"/no/such/folder", tooLong.c_str(), static_cast<const char*>(nullptr)}) {
    ASSERT_EQ(vk_openVesk("a"), 1);
    EXPECT_EQ(writeCyl(), 1);
    EXPECT_EQ(vk_openVesk(name), 0);
    EXPECT_TEXT(readFile("veska.dat"), joined({kCylLine}));
    EXPECT_EQ(writeCyl(), 0);
    EXPECT_TEXT(readFile("veska.dat"), joined({kCylLine}));
  }
}

// Writes elements while no file is open.
void writeNowhere() {
  testing::internal::CaptureStdout();
  EXPECT_EQ(writeCyl(), 0);
  EXPECT_EQ(vk_writeCon(kOrigin, kZ30, 1, 2), 0);
  EXPECT_EQ(vk_writeTor(kOrigin, kX10, kY20, 2), 0);
  EXPECT_EQ(vk_writeElb(kOrigin, kZ30, kX10, kY20, 2), 0);
  vk_writePnt(kOrigin);
  vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, "text");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(ExportsTest, BeforeTheFirstOpenNothingIsPrintedAndTheCountIsZero) {
  writeNowhere();
  EXPECT_TRUE(std::filesystem::is_empty("."));
  ASSERT_EQ(vk_openVesk("a"), 1);
  EXPECT_EQ(writeCyl(), 1);
  EXPECT_TEXT(written("a"), joined({kCylLine}));
}

TEST_F(ExportsTest, AfterAFailedOpenLinesAreAssembledButNotPrinted) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  ASSERT_EQ(vk_openVesk("/no/such/folder"), 0);
  writeNowhere();
  EXPECT_EQ(Vesk::outFile.records().size(), 2u);  // of the text
  EXPECT_TEXT(readFile("veska.dat"), "");
}

// vk_setHeader

struct HeaderCase {
  const char* name;
  const char* a;
  const char* b;
  int n;
  int result;
  const char* prefix;

  friend std::ostream& operator<<(std::ostream& out, const HeaderCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr HeaderCase kHeaders[] = {
    {"TheLargestNumberIsThreeZ",     "P-1",        "01", 46655,    1, "P-1     01ZZZ    00"},
    {"OneMoreIs000AndReturns0",      "P-1",        "01", 46656,    0, "P-1     01000    00"},
    {"TheHighDigitsAreLost",         "P-1",        "01", 46656+35, 0, "P-1     0100Z    00"},
    {"Zero",                         "",           "",   0,        1, "          000    00"},
    {"LongTextsAreCut",              "123456789",  "ABC", 1,       1, "12345678AB001    00"},
    {"ControlsBecomeBlanks",         "a\nb",       "\t", 1,        1, "a b       001    00"},
    {"NullTextsAreBlank",            nullptr,      nullptr, 1,     1, "          001    00"},
    {"NegativeByRemainder",          "",           "",   -1,       1, "          00/    00"},
    {"TheSmallestThatFits",          "",           "",   -46655,   1, "          \r\r\r    00"},
    {"NegativeThatDoesNotFit",       "",           "",   -46656,   0, "          000    00"},
};
// clang-format on

TEST_F(ExportsTest, SetHeaderGivesThePrefixOfEveryLaterElement) {
  for (const HeaderCase& row : kHeaders) {
    SCOPED_TRACE(row);
    ASSERT_EQ(vk_openVesk("a"), 1);
    EXPECT_EQ(vk_setHeader(row.a, row.b, row.n), row.result);
    writeCyl();
    writeCyl();
    const std::string line = std::string(row.prefix) + "c 0 0 0,0 0 30,2";
    EXPECT_TEXT(written("a"), joined({line, line}));
  }
}

TEST_F(ExportsTest, EveryIntIsANumber) {
  EXPECT_EQ(vk_setHeader("", "", INT_MAX), 0);
  EXPECT_EQ(vk_setHeader("", "", INT_MIN), 0);
}

TEST_F(ExportsTest, TheHeaderIsBlankAtFirstAndStaysAcrossFiles) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  writeCyl();
  vk_setHeader("P-1", "01", 1);
  ASSERT_EQ(vk_openVesk("b"), 1);
  writeCyl();
  EXPECT_TEXT(written("a"), joined({kCylLine}));
  EXPECT_TEXT(readFile("veskb.dat"), joined({"P-1     01001    00c 0 0 0,0 0 30,2"}));
}

// The eleven elements

TEST_F(ExportsTest, EachElementIsItsRecord) {
  ASSERT_EQ(vk_openVesk("all"), 1);
  ASSERT_EQ(vk_setHeader("PIPE-1", "01", 42), 1);

  const double a[] = {1, 2, 3};
  const double b[] = {4, 2, 3.5};
  const double c[] = {1, 3, 3};
  const double d[] = {0, 2, 2.25};
  vk_writePnt(a);
  vk_writeSeg(a, b);
  vk_writeTri(a, b, c);
  vk_writeQua(a, b, c, d);

  const double place[] = {1, 2, 0};
  const double along[] = {1, 0, 0};
  const double up[] = {0, 1, 0};
  vk_writeTxt(place, along, up, 0.5, 2.5, 1, 0, "AB");
  vk_writeBox(kOrigin, kX10, kY20, kZ30);

  const double corners[8][3] = {{0, 0, 0},  {10, 0, 0}, {0, 10, 0}, {10, 10, 0},
                                {2, 2, 20}, {8, 2, 20}, {2, 8, 20}, {8, 8, 20}};
  vk_writeRed(corners[0], corners[1], corners[2], corners[3], corners[4], corners[5], corners[6],
              corners[7]);

  const double top[] = {0, 0, 1000};
  EXPECT_EQ(vk_writeCyl(kOrigin, top, 200), 1);
  EXPECT_EQ(vk_writeCon(a, top, 200, 100.5), 1);
  const double x100[] = {100, 0, 0};
  const double y100[] = {0, 100, 0};
  EXPECT_EQ(vk_writeTor(kOrigin, x100, y100, 20), 1);
  const double z10[] = {0, 0, 10};
  const double x50[] = {50, 0, 0};
  const double y50[] = {0, 50, 0};
  EXPECT_EQ(vk_writeElb(kOrigin, z10, x50, y50, 30), 1);

  // 42 is 016 in base 36.
  const std::string prefix = "PIPE-1  01016    00";
  EXPECT_TEXT(written("all"),
              joined({
                  prefix + "l pt 1 2 3",
                  prefix + "l pt 1 2 3,pt 3 0 0.5",
                  prefix + "g pt 1 2 3,pt 3 0 0.5,pt 0 1 0",
                  prefix + "g pt 1 2 3,pt 3 0 0.5,pt 0 1 0,pt -1 0 -0.75",
                  prefix + "x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,2",
                  std::string("PIPE-1  01016    01x AB"),
                  prefix + "b 10 0 0,0 0 0,0 20 0,0 0 30",
                  prefix + "r 0 0 0,10 0 0,0 10 0,10 10 0,2 2 20,8 2 20,2 8 20,8 8 20",
                  prefix + "c 0 0 0,0 0 1000,200",
                  prefix + "n 1 2 3,-1 -2 997,200,100.5",
                  prefix + "t 0 0 0,100 0 0,0 100 0,20",
                  prefix + "e 0 0 5,40 0 0,0 40 0,20,10",
              }));
}

TEST_F(ExportsTest, ResultsAreInts) {
  EXPECT_TRUE((std::is_same_v<decltype(vk_openVesk(nullptr)), int>));
  EXPECT_TRUE((std::is_same_v<decltype(vk_setHeader(nullptr, nullptr, 0)), int>));
  EXPECT_TRUE((std::is_same_v<decltype(vk_writeCyl(nullptr, nullptr, 0)), int>));
  EXPECT_TRUE((std::is_same_v<decltype(vk_writePnt(nullptr)), void>));
}

TEST_F(ExportsTest, TheCallersArraysAreReadDuringTheCallOnly) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  double end[] = {0, 0, 30};
  vk_writeCyl(kOrigin, end, 2);
  end[2] = 99;
  vk_writeCyl(kOrigin, kOrigin, 2);
  EXPECT_TEXT(written("a"), joined({kCylLine, "                 00c 0 0 0,0 0 0,2"}));
}

TEST_F(ExportsTest, ANullTextIsAnEmptyText) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, nullptr);
  vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, "");
  const std::string first = "                 00x 0 0 0,10 0 0,0 20 0,2,1,1,0";
  const std::string second = "                 01x ";
  EXPECT_TEXT(written("a"), joined({first, second, first, second}));
}

TEST_F(ExportsTest, ATextOf491CharactersFillsItsLine) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  const std::string text(491, 't');
  vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, text.c_str());
  EXPECT_TEXT(written("a"), joined({"                 00x 0 0 0,10 0 0,0 20 0,2,1,1,491",
                                    "                 01x " + text}));
}

TEST_F(ExportsTest, ATextOf512CharactersGivesALineOf533) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  const std::string text(512, 't');
  vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, text.c_str());
  // It does not fit behind the heading of line 01 and is not measured on line 02.
  const std::string last = "                 02x " + text;
  EXPECT_EQ(last.size(), 533u);
  EXPECT_TEXT(written("a"), joined({"                 00x 0 0 0,10 0 0,0 20 0,2,1,1,512",
                                    "                 01x ", last}));
}

TEST_F(ExportsTest, ATextOf513CharactersIsCutShortAfterItsFirstLine) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, std::string(513, 't').c_str());
  writeCyl();
  EXPECT_TEXT(written("a"),
              joined({"                 00x 0 0 0,10 0 0,0 20 0,2,1,1,513", kCylLine}));
}

TEST_F(ExportsTest, ALongElementCountsItsContinuationLines) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  // -1.8e308 has 309 digits and a sign; two such numbers do not fit on a line.
  const double far[] = {std::numeric_limits<double>::lowest(), 0, 0};
  EXPECT_EQ(vk_writeCyl(kOrigin, far, std::numeric_limits<double>::max()), 2);
  const std::string digits = std::to_string(std::numeric_limits<double>::max());
  const std::string number = digits.substr(0, digits.find('.'));
  EXPECT_TEXT(written("a"), joined({"                 00c 0 0 0,-" + number + " 0 0,",
                                    "                 01c " + number}));
}

// Numbers that are none

TEST_F(ExportsTest, InfinitiesAndNaNAreWords) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  const double infinite[] = {kInfinity, -kInfinity, kNaN};
  const double negative[] = {-kNaN, -0.0, -0.00001};
  vk_writePnt(infinite);
  vk_writePnt(negative);
  // inf - inf is a NaN of either sign.
  vk_writeCyl(infinite, infinite, -kNaN);
  EXPECT_TEXT(written("a"),
              joined({"                 00l pt inf -inf nan", "                 00l pt nan -0 -0",
                      "                 00c inf -inf nan,nan nan nan,nan"}));
}

TEST_F(ExportsTest, InfiniteElbowsAreWritten) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  const double far[] = {kInfinity, 0, 0};
  const double z10[] = {0, 0, 10};
  const double y50[] = {0, 50, 0};
  // depth = inf - 30; the unit direction of (inf, 0, 0) is (nan, 0, 0), and 0 * inf is nan.
  EXPECT_EQ(vk_writeElb(kOrigin, z10, far, y50, 30), 1);
  EXPECT_TEXT(written("a"), joined({"                 00e 0 0 5,nan nan nan,nan -inf nan,inf,10"}));
}

// Exceptions

using Arrays = const double* const*;

struct NullCase {
  const char* name;
  void (*call)(Arrays p);
  std::vector<const char*> places;  // of each array in turn

  friend std::ostream& operator<<(std::ostream& out, const NullCase& row) {
    return out << row.name;
  }
};

constexpr const char* kPoint = "GePoint";
constexpr const char* kVector = "GeVector";

// clang-format off
const NullCase kNulls[] = {
    {"Pnt", [](Arrays p) { vk_writePnt(p[0]); }, {kPoint}},
    {"Seg", [](Arrays p) { vk_writeSeg(p[0], p[1]); }, {kPoint, kPoint}},
    {"Tri", [](Arrays p) { vk_writeTri(p[0], p[1], p[2]); }, {kPoint, kPoint, kPoint}},
    {"Qua", [](Arrays p) { vk_writeQua(p[0], p[1], p[2], p[3]); }, {kPoint, kPoint, kPoint, kPoint}},
    {"Txt", [](Arrays p) { vk_writeTxt(p[0], p[1], p[2], 1, 2, 1, 0, "t"); }, {kPoint, kVector, kVector}},
    {"Box", [](Arrays p) { vk_writeBox(p[0], p[1], p[2], p[3]); }, {kVector, kVector, kVector, kVector}},
    {"Red", [](Arrays p) { vk_writeRed(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7]); },
     {kVector, kVector, kVector, kVector, kVector, kVector, kVector, kVector}},
    {"Cyl", [](Arrays p) { vk_writeCyl(p[0], p[1], 1); }, {kVector, kVector}},
    {"Con", [](Arrays p) { vk_writeCon(p[0], p[1], 1, 2); }, {kVector, kVector}},
    {"Tor", [](Arrays p) { vk_writeTor(p[0], p[1], p[2], 1); }, {kVector, kVector, kVector}},
    {"Elb", [](Arrays p) { vk_writeElb(p[0], p[1], p[2], p[3], 1); }, {kVector, kVector, kVector, kVector}},
};
// clang-format on

// The place of the NullPtr thrown, or "nothing".
std::string nullPlace(const NullCase& row, Arrays arrays) {
  try {
    row.call(arrays);
  } catch (const GeEx::NullPtr& e) {
    EXPECT_STREQ(e.what(), "Pointer to array should not be NULL");
    return e.where;
  }
  return "nothing";
}

TEST_F(ExportsTest, ANullArrayThrowsAndWritesNothing) {
  for (const NullCase& row : kNulls) {
    for (std::size_t i = 0; i < row.places.size(); ++i) {
      SCOPED_TRACE(VeskTest::streamed(row) + " array " + std::to_string(i));
      const double* arrays[8] = {kOrigin, kX10, kY20, kZ30, kOrigin, kX10, kY20, kZ30};
      arrays[i] = nullptr;
      ASSERT_EQ(vk_openVesk("a"), 1);
      EXPECT_EQ(nullPlace(row, arrays), row.places[i]);
      EXPECT_EQ(writeCyl(), 1);
      EXPECT_TEXT(written("a"), joined({kCylLine}));
    }
  }
}

TEST_F(ExportsTest, OfTwoNullArraysTheFirstNamesThePlace) {
  const double* const none[8] = {};
  for (const NullCase& row : kNulls) {
    SCOPED_TRACE(row);
    EXPECT_EQ(nullPlace(row, none), row.places[0]);
  }
}

TEST_F(ExportsTest, ANullArrayThrowsWithoutAFileToo) {
  const double* const none[8] = {};
  for (const NullCase& row : kNulls) EXPECT_NE(nullPlace(row, none), "nothing") << row;
}

struct ElbowCase {
  const char* name;
  double start[3];
  double end[3];
  bool written;

  friend std::ostream& operator<<(std::ostream& out, const ElbowCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr ElbowCase kElbows[] = {
    {"StartAtTheBendAxis",       {1, 1, 1},          {9, 1, 1},  false},
    {"EndAtTheBendAxis",         {9, 1, 1},          {1, 1, 1},  false},
    {"BothAtTheBendAxis",        {1, 1, 1},          {1, 1, 1},  false},
    {"OneStepAway",              {1 + 2.3e-16, 1, 1}, {9, 1, 1}, false},
    {"LongerThanTheTolerance",   {1 + 3e-15, 1, 1},  {1, 9, 1},  true},
    {"InfinitelyFar",            {kInfinity, 1, 1},  {1, 9, 1},  true},
};
// clang-format on

TEST_F(ExportsTest, AnElbowWithoutDirectionThrowsNullDirAndWritesNothing) {
  const double p0[] = {1, 1, 1};
  for (const ElbowCase& row : kElbows) {
    SCOPED_TRACE(row);
    ASSERT_EQ(vk_openVesk("a"), 1);
    std::string place = "nothing";
    try {
      EXPECT_EQ(vk_writeElb(p0, kZ30, row.start, row.end, 2), 1);
    } catch (const GeEx::NullDir& e) {
      EXPECT_STREQ(e.what(), "Direction should not be Null or Infinity");
      place = e.where;
    }
    EXPECT_EQ(place, row.written ? "nothing" : "GeDirect");
    EXPECT_EQ(writeCyl(), 1);
    const std::string text = written("a");
    EXPECT_EQ(text == joined({kCylLine}), !row.written);
    EXPECT_TRUE(text.ends_with(joined({kCylLine})));
  }
}

TEST_F(ExportsTest, AnElbowWithoutWidthIsWritten) {
  ASSERT_EQ(vk_openVesk("a"), 1);
  EXPECT_EQ(vk_writeElb(kOrigin, kOrigin, kX10, kY20, 4), 1);
  // depth 6: start (10 - 3) along x, end (20 - 3) along y
  EXPECT_TEXT(written("a"), joined({"                 00e 0 0 0,7 0 0,0 17 0,6,0"}));
}

TEST_F(ExportsTest, WithoutMemoryNothingIsWrittenAndTheNextCallIsWhole) {
  const auto calls = {
      +[] { vk_writeSeg(kOrigin, kX10); },
      +[] { vk_writeQua(kOrigin, kX10, kY20, kZ30); },
      +[] { vk_writeTxt(kOrigin, kX10, kY20, 1, 2, 1, 0, "a text of more than sixteen bytes"); },
      +[] { vk_writeRed(kOrigin, kX10, kY20, kZ30, kOrigin, kX10, kY20, kZ30); },
  };
  for (const auto call : calls) {
    int number = 1;
    for (; number < 1000; ++number) {
      // An assembler whose texts have no room yet.
      vk_openVesk(nullptr);
      Vesk::outFile.output() = Vesk::Output();
      ASSERT_EQ(vk_openVesk("a"), 1);
      bool happened = false;
      {
        const FailingAllocation failing(number);
        try {
          call();
        } catch (const std::bad_alloc&) {
        }
        happened = failing.happened();
      }
      if (!happened) break;
      EXPECT_EQ(writeCyl(), 1);
      EXPECT_TEXT(written("a"), joined({kCylLine})) << "allocation " << number;
    }
    EXPECT_GT(number, 2);
    EXPECT_LT(number, 1000);
  }
}

}  // namespace
