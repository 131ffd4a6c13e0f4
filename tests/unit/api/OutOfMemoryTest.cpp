// SPDX-License-Identifier: MIT
// Every allocation of the exports and of the readers fails once, and from then
// on: nothing is lost but the call itself.
#include <gtest/gtest.h>
#include <vesk.h>

#include <functional>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <vector>

#include "api/Globals.h"
#include "input/ReaderTesting.h"
#include "input/RecordHeading.h"
#include "input/RecordTesting.h"
#include "support/ExportsFixture.h"
#include "support/FailingAllocation.h"
#include "support/Kinds.h"
#include "support/Text.h"
#include "vesk/RecordFile.h"

using namespace Vesk;
using VeskTest::Failing;
using VeskTest::FailingAllocation;
using VeskTest::joined;
using VeskTest::Kind;
using VeskTest::liveAllocations;

namespace {

// No case here needs as many.
constexpr int kMost = 20000;

constexpr Failing kFailings[] = {Failing::kOnce, Failing::kFromThenOn};

// Lets allocation `number` of the work fail; whether there was such a one.
template <class Work>
bool fails(int number, Failing failing, Work work) {
  const FailingAllocation failure(number, failing);
  try {
    work();
  } catch (const std::bad_alloc&) {
  }
  return failure.happened();
}

constexpr double kA[] = {0, 0, 0};
constexpr double kB[] = {10, 0, 0};
constexpr double kC[] = {0, 20, 0};
constexpr double kD[] = {0, 0, 30};

struct Call {
  const char* name;
  int fewest;  // allocations
  std::function<void()> make;
};

// Long enough for no text to fit into a string object itself.
const Call kWrites[] = {
    {"setHeader", 0, [] { vk_setHeader("A-LONG-PIPELINE-NAME", "01", 1); }},
    {"writePnt", 1, [] { vk_writePnt(kA); }},
    {"writeSeg", 1, [] { vk_writeSeg(kA, kB); }},
    {"writeTri", 1, [] { vk_writeTri(kA, kB, kC); }},
    {"writeQua", 1, [] { vk_writeQua(kA, kB, kC, kD); }},
    {"writeTxt", 1, [] { vk_writeTxt(kA, kB, kC, 1, 2, 1, 0, "a text of a good size"); }},
    {"writeBox", 1, [] { vk_writeBox(kA, kB, kC, kD); }},
    {"writeRed", 1, [] { vk_writeRed(kA, kB, kC, kD, kA, kB, kC, kD); }},
    {"writeCyl", 1, [] { vk_writeCyl(kA, kB, 1); }},
    {"writeCon", 1, [] { vk_writeCon(kA, kB, 1, 2); }},
    {"writeTor", 1, [] { vk_writeTor(kA, kB, kC, 1); }},
    {"writeElb", 1, [] { vk_writeElb(kA, kD, kB, kC, 1); }},
};

class OutOfMemoryTest : public VeskTest::ExportsFixture {
 protected:
  // The library as it is when loaded.
  static void reset() {
    vk_openVesk(nullptr);
    // An assignment would keep the room that its texts have.
    std::destroy_at(&outFile.output());
    std::construct_at(&outFile.output());
    elementHolder = ElementHolder();
  }
};

// What the file "a" holds: an element and the last cylinder, or the latter alone.
void expectWritten(bool element) {
  const std::string last = joined({"          000    00c 0 0 0,0 0 30,2"});
  const std::string text = VeskTest::readFile("veska.dat");
  EXPECT_TRUE(text.ends_with(last)) << text;
  EXPECT_EQ(text != last, element) << text;
}

// What a call writes either stands whole in the file or not at all.
TEST_F(OutOfMemoryTest, AWriteIsWholeOrNothingAndTheNextOneIsWhole) {
  for (const Call& call : kWrites) {
    SCOPED_TRACE(call.name);
    for (const Failing failing : kFailings) {
      reset();
      const long before = liveAllocations();
      int number = 1;
      for (bool happened = true; happened && number < kMost; ++number) {
        reset();
        ASSERT_EQ(vk_openVesk("a"), 1);
        happened = fails(number, failing, call.make);
        vk_setHeader("", "", 0);
        EXPECT_EQ(vk_writeCyl(kA, kD, 2), 1);
        vk_openVesk(nullptr);
        expectWritten(!happened && call.fewest > 0);
        reset();
        EXPECT_EQ(liveAllocations(), before) << "allocation " << number;
      }
      EXPECT_GT(number - 2, call.fewest - 1);
      EXPECT_LT(number, kMost);
    }
  }
}

TEST_F(OutOfMemoryTest, AnOpenThatFailsLeavesTheNextOneWhole) {
  const std::string name = "a-name-of-more-than-sixteen-bytes";
  for (const Failing failing : kFailings) {
    int number = 1;
    for (bool happened = true; happened && number < kMost; ++number) {
      vk_openVesk(nullptr);
      happened = fails(number, failing, [&] { vk_openVesk(name.c_str()); });
      ASSERT_EQ(vk_openVesk(name.c_str()), 1);
      const long open = liveAllocations();
      EXPECT_EQ(vk_writeCyl(kA, kD, 2), 1);
      EXPECT_TEXT(written(name), joined({"                 00c 0 0 0,0 0 30,2"}));
      EXPECT_LE(liveAllocations() - open, 8);
      reset();
    }
    EXPECT_GT(number, 2);
    EXPECT_LT(number, kMost);
  }
}

// The file's buffer is a convenience: without memory for it the file is written
// all the same.
TEST_F(OutOfMemoryTest, WithoutABufferTheFileIsWritten) {
  OutFile file;
  ASSERT_TRUE(file.open("b", kTokens));
  file.close();
  ASSERT_TRUE(fails(1, Failing::kFromThenOn, [&] { EXPECT_TRUE(file.open("b", kTokens)); }));
  ASSERT_TRUE(file.isOpen());
  VeskTest::Random random(1);
  elementHolder.setElement(*VeskTest::kinds()[0].make(random));
  EXPECT_EQ(file.writeElement(elementHolder), 1);
  EXPECT_TRUE(file.close());
}

TEST_F(OutOfMemoryTest, AReaderThatFailsReadsTheNextTime) {
  for (const Kind& kind : VeskTest::kinds()) {
    for (const std::int32_t mode : {kFixedColumns, kTokens}) {
      SCOPED_TRACE(testing::Message() << kind << ", mode " << mode);
      VeskTest::Random random(7);
      const std::unique_ptr<Geo> original = kind.make(random);
      const Recs whole = linesOf(*original, mode);
      // Of a polygon mode 2 writes several records; the first one is read.
      for (const Failing failing : kFailings) {
        std::unique_ptr<Geo> good = kind.make(random);
        {
          Input in(whole, mode);
          good->read(in);
        }
        const Recs expected = linesOf(*good, mode);
        int number = 1;
        for (bool happened = true; happened && number < kMost; ++number) {
          const std::unique_ptr<Geo> read = makeGeo(kind.typeCode);
          const long before = liveAllocations();
          {
            Input in(whole, mode);
            happened = fails(number, failing, [&] { read->read(in); });
          }
          {
            Input in(whole, mode);
            EXPECT_EQ(read->read(in), 0);
          }
          EXPECT_EQ(linesOf(*read, mode), expected) << "allocation " << number;
          EXPECT_LE(liveAllocations() - before, 40) << "allocation " << number;
        }
        EXPECT_GT(number, 2);
        EXPECT_LT(number, kMost);
      }
    }
  }
}

// All that next finds; stops when it is called in vain too often.
void readAll(RecordFile& file, std::size_t& elements) {
  for (int calls = 0; calls < kMost; ++calls) {
    const RecordFile::Found found = file.next();
    if (found == RecordFile::Found::kEnd) return;
    if (found == RecordFile::Found::kElement) ++elements;
  }
  FAIL() << "no end";
}

TEST_F(OutOfMemoryTest, AFileReaderThatFailsEndsAndTheNextOneReadsAll) {
  for (const char* name : {"elements.columns.dat", "elements.tokens.dat"}) {
    SCOPED_TRACE(name);
    const std::string text =
        VeskTest::readFile(std::string(VESK_TEST_SOURCE_DIR) + "/golden/" + name);
    const std::vector<std::string> expected = findings(text);
    ASSERT_GT(expected.size(), 8u);
    for (const Failing failing : kFailings) {
      int number = 1;
      for (bool happened = true; happened && number < kMost; ++number) {
        const long before = liveAllocations();
        {
          std::unique_ptr<RecordFile> file;
          std::size_t elements = 0;
          happened = fails(number, failing, [&] {
            file = std::make_unique<RecordFile>(std::make_unique<TextSource>(text), "f");
            readAll(*file, elements);
          });
          // With memory again the same reader comes to an end.
          if (file != nullptr) readAll(*file, elements);
          EXPECT_LE(elements, expected.size());
        }
        ASSERT_EQ(liveAllocations(), before) << "allocation " << number;
      }
      EXPECT_GT(number, 10);
      EXPECT_LT(number, kMost);
      EXPECT_EQ(findings(text), expected);
    }
  }
}

}  // namespace
