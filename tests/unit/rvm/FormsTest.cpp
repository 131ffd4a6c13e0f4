// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "rvm/ReviewNames.h"
#include "rvm/ReviewReading.h"
#include "rvm/ReviewWriter.h"

namespace {

using VeskTest::kUpright;
using VeskTest::Numbers;
using VeskTest::readReviewText;
using VeskTest::ReviewReading;
using VeskTest::ReviewWriter;

constexpr ReviewWriter::Form kForms[] = {ReviewWriter::Form::kBinary, ReviewWriter::Form::kText};

const Numbers kBox = {-50, -50, -500, 50, 50, 500};
const Numbers kPipe = {50, 1000};

// Two pumps in an area, one of them with a nozzle; a shape of each kind of chunk.
std::string plant(ReviewWriter::Form form) {
  ReviewWriter writer(form);
  writer.colour();
  writer.group("/AREA-1");
  writer.group("/PUMP-1");
  writer.shape(8, kUpright, kBox, kPipe);
  writer.group("NOZZLE 1 of /PUMP-1");
  writer.shape(8, kUpright, kBox, kPipe);
  writer.facets(kUpright, {0, 0, 0, 100, 100, 0}, {{{{0, 0, 0}, {100, 0, 0}, {0, 100, 0}}}});
  writer.end();
  writer.end();
  writer.group("/PUMP-2");
  writer.shape(4, kUpright, {-350, 0, -50, 350, 350, 50}, {300, 50, 3.14159274});
  writer.end();
  writer.end();
  return writer.finish();
}

TEST(ReviewForms, BothSayTheSame) {
  const ReviewReading binary = readReviewText(plant(kForms[0]));
  const ReviewReading text = readReviewText(plant(kForms[1]));
  EXPECT_EQ(binary.fault + text.fault, "");
  EXPECT_EQ(binary.lines(), text.lines());
  EXPECT_EQ(binary.rows, text.rows);
  EXPECT_EQ(binary.rows, (std::vector<std::string>{
                             "/PUMP-1 01 1 /AREA-1/PUMP-1 cylinder exact 1",
                             "/PUMP-1 01 2 /AREA-1/PUMP-1/NOZZLE 1 of /PUMP-1 cylinder exact 1",
                             "/PUMP-1 01 3 /AREA-1/PUMP-1/NOZZLE 1 of /PUMP-1 facets exact 1",
                             "/PUMP-2 01 1 /AREA-1/PUMP-2 circular torus in pieces 2"}));
  EXPECT_TRUE(binary.counts.isAllExact());
  EXPECT_EQ(binary.counts.groups, 4U);
  EXPECT_EQ(binary.counts.colours, 1U);
  EXPECT_EQ(binary.counts.normals, 3U);
}

TEST(ReviewForms, PiecesOfAnySizeReadTheSame) {
  for (const auto form : kForms) {
    const ReviewReading whole = readReviewText(plant(form));
    for (const std::size_t piece : {1U, 3U, 7U}) {
      EXPECT_EQ(readReviewText(plant(form), {}, {}, piece).lines(), whole.lines());
    }
  }
}

// Cut anywhere before END: it is a fault, and what came before is a part of the
// whole; behind it the whole model is there.
TEST(ReviewForms, CutOffAtEveryByteIsSaid) {
  for (const auto form : kForms) {
    const std::string file = plant(form);
    const std::string whole = readReviewText(file).lines();
    const std::string_view end =
        form == kForms[0] ? std::string_view("\0\0\0E\0\0\0N\0\0\0D\0\0\0:", 16) : "END:";
    const std::size_t last = file.rfind(end) + end.size();
    for (std::size_t size = 0; size < file.size(); ++size) {
      const ReviewReading reading = readReviewText(file.substr(0, size));
      if (size < last) {
        EXPECT_NE(reading.fault, "") << size;
        EXPECT_TRUE(whole.starts_with(reading.lines())) << size;
      } else {
        EXPECT_EQ(reading.fault, "") << size;
        EXPECT_EQ(reading.lines(), whole) << size;
      }
    }
  }
}

// Each byte changed: it ends, with a fault or without.
TEST(ReviewForms, EveryChangedByteEnds) {
  for (const auto form : kForms) {
    const std::string file = plant(form);
    for (std::size_t i = 0; i < file.size(); ++i) {
      for (const char c : {'\xFF', '9'}) {
        std::string changed = file;
        changed[i] = c;
        readReviewText(changed);
      }
    }
  }
}

struct DamageCase {
  const char* name;
  std::string bytes;
  std::string fault;  // its beginning; empty: none
};

std::string withWord(std::string bytes, std::size_t at, std::uint32_t word) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[at + i] = static_cast<char>(word >> (24 - 8 * i) & 0xFFU);
  }
  return bytes;
}

std::string facetFile(std::uint32_t polygons, std::uint32_t contours, std::uint32_t points) {
  ReviewWriter writer(kForms[0]);
  std::vector<std::uint32_t> body = {1, 11};
  for (const double each : kUpright) body.push_back(ReviewWriter::word(each));
  for (int i = 0; i < 6; ++i) body.push_back(0);
  body.insert(body.end(), {polygons, contours, points});
  for (int i = 0; i < 18; ++i) body.push_back(ReviewWriter::word(i * i));
  writer.chunk("PRIM", body);
  return writer.finish();
}

std::string nested(ReviewWriter::Form form, int depth, bool closed) {
  ReviewWriter writer(form);
  for (int i = 0; i < depth; ++i) writer.group("G");
  for (int i = 0; closed && i < depth; ++i) writer.end();
  return writer.finish();
}

TEST(ReviewForms, DamageEndsWithAMessage) {
  const std::string file = plant(kForms[0]);
  const DamageCase rows[] = {
      {"Empty", "", "this is not a review model"},
      {"OtherFile", "%PDF-1.4", "this is not a review model"},
      {"OffsetBackwards", withWord(file, 16, 4), "the chunk HEAD leads back to byte 4"},
      {"OffsetToItself", withWord(file, 16, 0), "the chunk HEAD leads back to byte 0"},
      {"OffsetInsideTheBody", withWord(file, 16, 32), "the chunk HEAD ends at byte 32, inside"},
      {"OffsetBeyondTheFile", withWord(file, 16, 0x7FFFFFFF),
       "the chunk HEAD says that it ends at byte 2147483647"},
      {"TextTooLong", withWord(file, 28, 0x7FFFFFFF), "the chunk HEAD ends at byte"},
      {"PolygonsLie", facetFile(0xFFFFFFFF, 1, 3), "4294967295 polygons don't fit"},
      {"ContoursLie", facetFile(1, 0xFFFFFFFF, 3), "4294967295 contours don't fit"},
      {"CornersLie", facetFile(1, 1, 4), "4 corners don't fit"},
      {"CountsFit", facetFile(1, 1, 3), ""},
      {"DeepNesting", nested(kForms[0], 10001, true), "more than 10000 nested groups"},
      {"DeepNestingOfText", nested(kForms[1], 10001, true), "more than 10000 nested groups"},
      {"DeepEnough", nested(kForms[0], 10000, true), ""},
      {"NamesTooLong",
       [] {
         ReviewWriter writer(kForms[0]);
         for (int i = 0; i < 3; ++i) writer.group(std::string(40000, 'x'));
         return writer.finish();
       }(),
       "the names of nested groups have more than 65536 bytes"},
      {"WordInsteadOfNumber", "HEAD\n1 1\na\nb\nc\nd\nPRIM\n1 one\n",
       "a number of the chunk PRIM was expected, not \"one\""},
      {"FractionOfAKind", "HEAD\n1 1\na\nb\nc\nd\nPRIM\n1 1\n8.5\n",
       "a whole number of the chunk PRIM was expected"},
  };
  for (const DamageCase& row : rows) {
    const std::string fault = readReviewText(row.bytes).fault;
    EXPECT_EQ(fault.substr(0, row.fault.size()), row.fault) << row.name << ": " << fault;
    EXPECT_EQ(fault.empty(), row.fault.empty()) << row.name << ": " << fault;
  }
}

struct OddCase {
  const char* name;
  Vesk::ReviewOddity oddity;
  std::string bytes;
};

TEST(ReviewForms, WhatIsOddIsCounted) {
  using Vesk::ReviewOddity;
  for (const auto form : kForms) {
    const auto with = [form](auto add) {
      ReviewWriter writer(form);
      writer.group("/A");
      add(writer);
      writer.shape(8, kUpright, kBox, kPipe);
      writer.end();
      return writer.finish();
    };
    ReviewWriter open(form);
    open.group("/A");
    open.shape(8, kUpright, kBox, kPipe);
    const OddCase rows[] = {
        {"SurplusEnd", ReviewOddity::kGroupEndTooMany, with([](auto& w) { w.end(); })},
        {"OpenGroup", ReviewOddity::kGroupLeftOpen, open.finish()},
        {"UnknownChunk", ReviewOddity::kUnknownChunk, with([](auto& w) {
           w.chunk("ABCD", {1, 2, 3});
         })},
        {"NewerBody", ReviewOddity::kNewerBody, with([](auto& w) {
           w.shape(8, kUpright, kBox, {50, 1000, 7});
         })},
        {"SecondModel", ReviewOddity::kOutOfOrder, with([](auto& w) { w.model(); })},
        {"BytesBehindTheEnd", ReviewOddity::kBytesBehindEnd, with([](auto&) {}) + "\nmore"},
    };
    for (const OddCase& row : rows) {
      const ReviewReading reading = readReviewText(row.bytes);
      EXPECT_EQ(reading.fault, "") << row.name;
      EXPECT_EQ(reading.counts.oddities[static_cast<std::size_t>(row.oddity)].count, 1U)
          << row.name;
      EXPECT_GE(reading.elements.size(), 1U) << row.name;
    }
    EXPECT_TRUE(readReviewText(with([](auto&) {}) + std::string(100, '\0')).counts.isAllExact());
  }
}

TEST(ReviewForms, HeadAndModelComeOnceAndFirst) {
  const std::string head = "HEAD\n1 1\na\nb\nc\nd\n";
  const std::string model = "MODL\n1 1\np\nm\n";
  const std::string colour = "COLR\n1 1\n";
  const std::pair<std::string, std::size_t> rows[] = {
      {head + model + colour, 0}, {head, 1},          {head + head + model, 1},
      {head + model + model, 1},  {head + colour, 1}, {head + colour + model + colour, 2},
  };
  for (const auto& [chunks, odd] : rows) {
    const ReviewReading reading = readReviewText(chunks + "END:\n1 1\n");
    EXPECT_EQ(reading.fault, "");
    EXPECT_EQ(
        reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kOutOfOrder)].count,
        odd)
        << chunks;
  }
}

// END: has two numbers behind it; the last line of a file need not end.
TEST(ReviewForms, TextCutOffBehindEndIsCounted) {
  const std::string before = "HEAD\n1 1\na\nb\nc\nd\nMODL\n1 1\np\nm\nEND:";
  const std::pair<const char*, std::size_t> rows[] = {
      {"", 1}, {"\n", 1}, {"\n 1", 1}, {"\n 1\n", 1}, {"\n 1 1", 0}, {"\n 1 1\n", 0},
  };
  for (const auto& [rest, odd] : rows) {
    const ReviewReading reading = readReviewText(before + rest);
    EXPECT_EQ(reading.fault, "") << rest;
    EXPECT_EQ(
        reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kCutOffAtEnd)].count,
        odd)
        << rest;
  }
}

// A chunk that is as long as that of a shape has no word for it.
TEST(ReviewForms, ObstructionWithoutTransparencyIsRead) {
  ReviewWriter writer(kForms[0]);
  writer.shape(8, kUpright, kBox, kPipe, "OBST");
  const ReviewReading reading = readReviewText(writer.finish(), {.obstructions = true});
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.lines(), "c 1000 2000 2500,0 0 1000,100\n");
  EXPECT_EQ(reading.counts.uncertainTransparencies, 1U);
}

TEST(ReviewForms, ObstructionsAndInsulationsAreSkippedUnlessAskedFor) {
  for (const bool before : {true, false}) {
    for (const int transparency : {0, 50, 63, 100}) {
      ReviewWriter writer(kForms[0]);
      writer.transparent("OBST", before, static_cast<std::uint8_t>(transparency), 8, kUpright, kBox,
                         kPipe);
      writer.transparent("INSU", before, static_cast<std::uint8_t>(transparency), 8,
                         {0, 0.001, 0, -0.001, 0, 0, 0, 0, 0.001, 0, 0, 0}, kBox, kPipe);
      const std::string file = writer.finish();
      const ReviewReading skipped = readReviewText(file);
      EXPECT_EQ(skipped.counts.obstructionsSkipped, 1U);
      EXPECT_EQ(skipped.counts.insulationsSkipped, 1U);
      EXPECT_TRUE(skipped.elements.empty());
      const ReviewReading read = readReviewText(file, {.obstructions = true, .insulations = true});
      EXPECT_EQ(read.lines(), "c 1000 2000 2500,0 0 1000,100\nc 0 0 -500,0 0 1000,100\n")
          << before << ' ' << transparency;
      EXPECT_EQ(read.counts.transparencies, transparency > 0 ? 2U : 0U);
    }
  }
}

struct SelectionCase {
  const char* group;
  std::size_t elements;  // of the 5 of the plant
};

TEST(ReviewForms, GroupsAreSelectedByPath) {
  const SelectionCase rows[] = {
      {"/AREA-1", 5},
      {"AREA-1", 5},
      {"/PUMP-1", 3},
      {"/AREA-1/PUMP-2", 2},
      {"AREA-1/PUMP-2", 2},
      {"/PUMP-*", 5},
      {"NOZZLE 1 of /PUMP-1", 2},
      {"/PUMP-3", 0},
      {"PUMP", 0},
      {"*/PUMP-?", 5},
      {"/AREA-1/NOZZLE*", 0},
  };
  for (const SelectionCase& row : rows) {
    const ReviewReading reading = readReviewText(plant(kForms[0]), {.groups = {row.group}});
    EXPECT_EQ(reading.elements.size(), row.elements) << row.group;
  }
}

struct NameCase {
  const char* name;
  const char* end;
};

TEST(ReviewNames, KeepTheLastWholeCharactersOfEightBytes) {
  const NameCase rows[] = {
      {"/P-1", "/P-1"},
      {"/AREA/PUMP-1001", "UMP-1001"},
      {"/PUMPE-Größe", "-Größe"},  // ö and ß have two bytes
      {"/XÄÖÜabc", "ÖÜabc"},       // the eighth byte from the end is half of an Ä
      {"", ""},
      {"/A\tB", "/A B"},
      {"/LAST   ", "/LAST"},
  };
  for (const NameCase& row : rows) EXPECT_EQ(Vesk::ReviewNames::endOf(row.name), row.end);
}

TEST(ReviewNames, CountTheNamesOfAnEndAndTheShapesOfAName) {
  Vesk::ReviewNames names;
  const auto next = [&names](const char* name) {
    const Vesk::ReviewHeader header = names.next(name);
    return header.f1 + '|' + header.f2 + '|' + std::to_string(header.number);
  };
  EXPECT_EQ(next("/AREA-1/PUMP-100"), "PUMP-100|01|1");
  EXPECT_EQ(next("/AREA-2/PUMP-100"), "PUMP-100|02|1");
  EXPECT_EQ(next("/AREA-1/PUMP-100"), "PUMP-100|01|2");
  EXPECT_EQ(next("/OTHER"), "/OTHER|01|1");
}

TEST(ReviewNames, NeverGiveAHeaderTwice) {
  Vesk::ReviewNames names;
  std::string last;
  for (int i = 0; i < 46655; ++i) names.next("/LONG");
  EXPECT_EQ(names.next("/LONG").f2, "02");
  EXPECT_EQ(names.next("/LONG").number, 2);
  for (int i = 0; i < 1400; ++i) last = names.next("/N" + std::to_string(i) + "/12345678").f2;
  EXPECT_EQ(last, "ZZ");
  EXPECT_EQ(names.crowded(), 1400U - 1295U);
  EXPECT_EQ(names.next("/N1399/12345678").number, 107);
}

constexpr const char* kAttributes =
    "\xEF\xBB\xBF"
    "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n"
    "NEW Header Information\n"
    "Source:= a plant\n"
    "END\n"
    "NEW /AREA-1\r\n"
    "  Owner:= 'Smith & Co' &end& Rev:=B\r\n"
    "  NEW /PUMP-1\n"
    "    Spec:= A1A &end& Note:= a:=b &end& Empty:=\n"
    "    NEW NOZZLE 1 of /PUMP-1\n"
    "      Size:= \"80\"\n"
    "    END\n"
    "    NEW TEXT 1\n"
    "    END\n"
    "  END\n"
    "  what is this\n"
    "END\n"
    "NEW /PUMP-2\n"
    "Spec:= B2B\n"
    "END\n";

TEST(ReviewAttributes, MatchGroupsByNameUnderTheSameParent) {
  const ReviewReading reading = readReviewText(plant(kForms[0]), {}, kAttributes);
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.values,
            (std::vector<std::string>{"Spec=A1A Note=a:=b Empty=", "Size=80", "Size=80", ""}));
  EXPECT_EQ(reading.counts.groupsWithoutAttributes, 1U);  // /PUMP-2 lies in /AREA-1
  EXPECT_EQ(reading.counts.groupsOfNoShape, 1U);          // /AREA-1
  Vesk::ReviewAttributes attributes;
  attributes.read(VeskTest::bytesOf(kAttributes));
  EXPECT_EQ(attributes.blockCount(), 5U);
  EXPECT_EQ(attributes.strayCount(), 1U);
  EXPECT_EQ(attributes.unusedCount(), 5U);
}

constexpr const char* kMarks =
    "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n";

// Three blocks, two groups: one each, in their order; the third is left.
TEST(ReviewAttributes, BlocksOfOneNameGoToTheGroupsInOrder) {
  ReviewWriter writer(kForms[0]);
  for (int i = 0; i < 2; ++i) {
    writer.group("VALVE");
    writer.shape(8, kUpright, kBox, kPipe);
    writer.end();
  }
  const std::string blocks =
      std::string(kMarks) + "NEW VALVE\nNo:=1\nEND\nNEW VALVE\nNo:=2\nEND\nNEW VALVE\nNo:=3\nEND\n";
  const std::string file = writer.finish();
  EXPECT_EQ(readReviewText(file, {}, blocks).values, (std::vector<std::string>{"No=1", "No=2"}));
}

TEST(ReviewAttributes, MatchNamesWithoutTheBlanksAround) {
  ReviewWriter writer(kForms[0]);
  writer.group(" /A ");
  writer.shape(8, kUpright, kBox, kPipe);
  const std::string blocks = std::string(kMarks) + "NEW  /A \nNo:=1\nEND\n";
  EXPECT_EQ(readReviewText(writer.finish(), {}, blocks).values, std::vector<std::string>{"No=1"});
}

struct EncodingCase {
  const char* name;
  const char* group;  // in the model
  const char* block;  // in the file of attributes
  const char* pattern;
};

const EncodingCase kEncodings[] = {
    {"BothUtf8", "/K\xC3\xBCHLER", "/K\xC3\xBCHLER", "K\xC3\xBCH*"},
    {"BothLatin1", "/K\xFCHLER", "/K\xFCHLER", "K\xFCH*"},
    {"Latin1AndUtf8", "/K\xFCHLER", "/K\xC3\xBCHLER", "K\xC3\xBCH*"},
    {"Utf8AndLatin1", "/K\xC3\xBCHLER", "/K\xFCHLER", "K\xFCH*"},
};

TEST(ReviewAttributes, MatchNamesWhateverTheirEncoding) {
  for (const EncodingCase& row : kEncodings) {
    ReviewWriter writer(kForms[0]);
    writer.group(row.group);
    writer.shape(8, kUpright, kBox, kPipe);
    writer.end();
    writer.group("/OTHER");
    writer.shape(8, kUpright, kBox, kPipe);
    const std::string blocks = std::string(kMarks) + "NEW " + row.block + "\nNo:=1\nEND\n";
    Vesk::ReviewOptions options;
    options.groups = {row.pattern};
    EXPECT_EQ(readReviewText(writer.finish(), options, blocks).values,
              std::vector<std::string>{"No=1"})
        << row.name;
  }
}

// The inner block's key is another one's: only the second Spec of /PUMP-1 replaces one.
TEST(ReviewAttributes, OfTheSameKeyTheLastOneIsKeptAndCounted) {
  Vesk::ReviewAttributes attributes;
  attributes.read(VeskTest::bytesOf(
      std::string(kMarks) +
      "NEW /PUMP-1\nSpec:=A &end& Size:=80\nNEW NOZZLE\nSpec:=B\nEND\nSpec:=C\nEND\n"));
  EXPECT_EQ(attributes.replacedCount(), 1U);
  const auto block = attributes.find(Vesk::ReviewAttributes::kTop, "/PUMP-1");
  EXPECT_EQ(attributes.valuesOf(block), (Vesk::ReviewAttributes::Values{{0, "C"}, {1, "80"}}));
}

TEST(ReviewAttributes, HaveAtMostAsManyKeysAsTheLimit) {
  for (const std::size_t keys : {Vesk::ReviewLimits::kKeys, Vesk::ReviewLimits::kKeys + 1}) {
    std::string text = std::string(kMarks) + "NEW /A\n";
    for (std::size_t i = 0; i < keys; ++i) text += 'K' + std::to_string(i) + ":=x\n";
    const std::string fault = readReviewText(plant(kForms[0]), {}, text + "END\n").fault;
    EXPECT_EQ(fault, keys > Vesk::ReviewLimits::kKeys ? "more than 4096 different attributes" : "");
  }
}

TEST(ReviewAttributes, MarksAreThoseOfTheFirstLine) {
  Vesk::ReviewAttributes attributes;
  attributes.read(VeskTest::bytesOf(
      "CADC_Attributes_File v1.0 , start: BEGIN , end: DONE , name_end: = , sep: ;\n"
      "BEGIN /A\nx= 1 ; y = 2\nDONE\n"));
  EXPECT_EQ(attributes.keys(), (std::vector<std::string>{"x", "y"}));
}

TEST(ReviewAttributes, CutOffAtEveryByteIsSaid) {
  const std::string file = kAttributes;
  for (std::size_t size = 0; size + 5 < file.size(); ++size) {
    try {
      Vesk::ReviewAttributes attributes;
      attributes.read(VeskTest::bytesOf(std::string_view(file).substr(0, size)));
    } catch (const std::runtime_error& fault) {
      EXPECT_NE(std::string(fault.what()), "");
    }
  }
}

}  // namespace
