// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>

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
      {"NoLettersWhereAChunkBegins",
       withWord(file, file.find(std::string_view("\0\0\0C\0\0\0N\0\0\0T\0\0\0B", 16)), 7),
       "no chunk begins here; the four letters of its name were expected"},
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
      {"TextOfMoreThan65536Bytes",
       [] {
         // 17501 words of four bytes, the last for the NUL.
         ReviewWriter writer(kForms[0]);
         writer.group(std::string(70000, 'x'));
         return writer.finish();
       }(),
       "a text of 70004 bytes; at most 65536 are taken"},
      {"LineOfMoreThan65536Bytes",
       [] {
         ReviewWriter writer(kForms[1]);
         writer.group(std::string(70000, 'x'));
         return writer.finish();
       }(),
       "a line of more than 65536 bytes"},
      {"LongestText",
       [] {
         // 16384 words.
         ReviewWriter writer(kForms[0]);
         writer.group('/' + std::string(65534, 'x'));
         writer.end();
         return writer.finish();
       }(),
       ""},
      {"TextOfOneByteMore",
       [] {
         ReviewWriter writer(kForms[0]);
         writer.group('/' + std::string(65535, 'x'));
         writer.end();
         return writer.finish();
       }(),
       "a text of 65540 bytes; at most 65536 are taken"},
      {"LongestLine",
       [] {
         ReviewWriter writer(kForms[1]);
         writer.group('/' + std::string(65535, 'x'));
         writer.end();
         return writer.finish();
       }(),
       ""},
      {"LineOfOneByteMore",
       [] {
         ReviewWriter writer(kForms[1]);
         writer.group('/' + std::string(65536, 'x'));
         writer.end();
         return writer.finish();
       }(),
       "a line of more than 65536 bytes"},
      {"LongestNames",
       [] {
         ReviewWriter writer(kForms[0]);
         for (int i = 0; i < 2; ++i) writer.group(std::string(32767, 'x'));
         for (int i = 0; i < 2; ++i) writer.end();
         return writer.finish();
       }(),
       ""},
      {"NamesOfOneByteMore",
       [] {
         ReviewWriter writer(kForms[0]);
         writer.group(std::string(32767, 'x'));
         writer.group(std::string(32768, 'x'));
         return writer.finish();
       }(),
       "the names of nested groups have more than 65536 bytes together"},
      {"DeepEnoughOfText", nested(kForms[1], 10000, true), ""},
      {"OtherWordThanHead", "HEADER\n1 1\n", "this is not a review model"},
      {"WordBelowHead", "HEAC\n1 1\n", "this is not a review model"},
      {"BlanksAlone", " \n \n", "this is not a review model"},
      {"NothingBehindHead", "HEAD", "the file is cut off"},
      {"NothingBehindTheMark", "\xEF\xBB\xBFHEAD", "the file is cut off"},
      {"NegativeKind", "HEAD\n1 1\na\nb\nc\nd\nPRIM\n1 1\n-8\n",
       "a whole number of the chunk PRIM was expected"},
      {"KindBeyond32Bits", "HEAD\n1 1\na\nb\nc\nd\nPRIM\n1 1\n4294967296\n",
       "a whole number of the chunk PRIM was expected"},
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

// Of what is odd more than once the first place is told: the byte of a chunk, or its line.
TEST(ReviewForms, FirstOfManyOddPlacesIsTold) {
  for (const auto form : kForms) {
    ReviewWriter writer(form);
    writer.group("/A");
    const std::string& bytes = writer.bytes();
    const auto lines = static_cast<std::uint64_t>(std::count(bytes.begin(), bytes.end(), '\n'));
    const std::uint64_t place = form == kForms[0] ? bytes.size() : lines + 1;
    for (int i = 0; i < 3; ++i) {
      writer.chunk("ABCD", {1, 2, 3});
      writer.shape(8, kUpright, kBox, kPipe);
    }
    writer.end();
    const ReviewReading reading = readReviewText(writer.finish());
    const Vesk::ReviewOddityCount& odd =
        reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kUnknownChunk)];
    EXPECT_EQ(odd.count, 3U);
    EXPECT_EQ(odd.first, place);
  }
}

struct IntegerCase {
  const char* text;
  bool isTaken;
};

// The material of a group in the text form, which the binary one has in 32 bits.
TEST(ReviewForms, WholeNumbersOfATextAreThoseOf32Bits) {
  const IntegerCase rows[] = {
      {"0", true},   {"65536", true}, {"4294967295", true}, {"4294967296", false},
      {"-1", false}, {"1.5", false},  {"7.0", true},        {"+7", true},
  };
  for (const IntegerCase& row : rows) {
    ReviewWriter writer(kForms[1]);
    writer.group("/A", 123456);
    writer.shape(8, kUpright, kBox, kPipe);
    writer.end();
    std::string bytes = writer.finish();
    const std::size_t at = bytes.find("123456");
    ASSERT_NE(at, std::string::npos);
    bytes.replace(at, 6, row.text);
    const ReviewReading reading = readReviewText(bytes);
    EXPECT_EQ(
        reading.fault.find("a whole number of the chunk CNTB was expected") == std::string::npos,
        row.isTaken)
        << row.text << ": " << reading.fault;
    EXPECT_EQ(reading.elements.size(), row.isTaken ? 1U : 0U) << row.text;
  }
}

struct VersionCase {
  const char* version;
  std::size_t newer;
};

// What follows a group's material is odd up to version 2; from 3 on it may say more.
TEST(ReviewForms, GroupsOfATextMaySayMoreFromVersionThreeOn) {
  for (const VersionCase& row : {VersionCase{"1", 1}, {"2", 1}, {"3", 0}, {"4", 0}}) {
    ReviewWriter writer(kForms[1]);
    writer.group("/A", 123456);
    writer.shape(8, kUpright, kBox, kPipe);
    writer.end();
    std::string bytes = writer.finish();
    bytes.replace(bytes.find("123456"), 6, "7\n     50");
    const std::size_t group = bytes.find("CNTB\n");
    ASSERT_NE(group, std::string::npos);
    const std::size_t end = bytes.find('\n', group + 5);
    bytes.replace(end - 1, 1, row.version);
    const ReviewReading reading = readReviewText(bytes);
    EXPECT_EQ(reading.fault, "") << row.version;
    EXPECT_EQ(
        reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kNewerBody)].count,
        row.newer)
        << row.version;
    EXPECT_EQ(reading.elements.size(), 1U) << row.version;
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

// A mark of the encoding, blanks behind HEAD, plus signs, and the line ends of another system
// change nothing.
TEST(ReviewForms, TextIsReadHoweverItWasSaved) {
  const std::string text = plant(kForms[1]);
  const std::string lines = readReviewText(text).lines();
  std::string returns;
  for (const char c : text) returns += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const std::string rest = text.substr(4);
  std::string plus = rest;
  plus.replace(plus.find("PRIM\n     1     1\n     8") + 22, 2, "+8");
  const std::string rows[] = {"\xEF\xBB\xBF" + text, " \n" + text,      "HEAD " + rest,
                              "HEAD\t" + rest,       returns,           "HEAD" + plus,
                              text + " \t\v\n",      text + "\xFF more"};
  for (const std::string& row : rows) {
    const ReviewReading reading = readReviewText(row);
    EXPECT_EQ(reading.fault, "");
    EXPECT_EQ(reading.lines(), lines);
    const std::size_t behind = row.ends_with("more") ? 1 : 0;
    EXPECT_EQ(reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kBytesBehindEnd)]
                  .count,
              behind);
  }
}

TEST(ReviewForms, NumberBeyondAllNumbersIsRefusedWithItsShape) {
  std::string text = plant(kForms[1]);
  const std::string length = "1000.00000";
  text.replace(text.find(length), length.size(), "1e999");
  const ReviewReading reading = readReviewText(text);
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.counts.kinds[8].fates[5], 1U);
  EXPECT_EQ(reading.counts.kinds[8].fates[0], 1U);
  EXPECT_EQ(reading.counts.shapes(), 4U);
}

// Four capitals in the middle of a chunk that nobody knows are text.
TEST(ReviewForms, UnknownTextChunkEndsAtAKnownName) {
  ReviewWriter writer(kForms[1]);
  writer.bytes() += "NOTE\n 1 1\nsome words\nABCD\n";
  writer.shape(8, kUpright, kBox, kPipe);
  const ReviewReading reading = readReviewText(writer.finish());
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.elements.size(), 1U);
  EXPECT_EQ(
      reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kUnknownChunk)].count,
      1U);
}

struct GroupCase {
  const char* name;
  std::vector<std::uint32_t> rest;  // behind the material
  std::uint32_t version;
  std::size_t transparencies;
  std::size_t newer;
};

TEST(ReviewForms, GroupsOfLaterVersionsSayMore) {
  constexpr std::uint32_t kHalf = 50U << 24U;
  const GroupCase rows[] = {
      {"VersionTwo", {}, 2, 0, 0},
      {"VersionThreeWithATransparency", {kHalf}, 3, 1, 0},
      {"VersionThreeWithoutIt", {}, 3, 0, 0},
      {"VersionFourWithSevenWords", {kHalf, 2, 3, 4, 5, 6, 7}, 4, 0, 0},
      {"VersionFourWithoutThem", {}, 4, 0, 0},
      {"VersionFourWithSix", {1, 2, 3, 4, 5, 6}, 4, 0, 1},
      {"VersionFive", {kHalf}, 5, 0, 1},
  };
  for (const GroupCase& row : rows) {
    ReviewWriter writer(kForms[0]);
    std::vector<std::uint32_t> body = {row.version, 1, 0x47000000, 0, 0, 0, 1};  // "G"
    body.insert(body.end(), row.rest.begin(), row.rest.end());
    writer.chunk("CNTB", body);
    writer.shape(8, kUpright, kBox, kPipe);
    writer.end();
    const ReviewReading reading = readReviewText(writer.finish());
    EXPECT_EQ(reading.fault, "") << row.name;
    EXPECT_EQ(reading.rows, std::vector<std::string>{"G 01 1 /G cylinder exact 1"}) << row.name;
    EXPECT_EQ(reading.counts.transparencies, row.transparencies) << row.name;
    EXPECT_EQ(
        reading.counts.oddities[static_cast<std::size_t>(Vesk::ReviewOddity::kNewerBody)].count,
        row.newer)
        << row.name;
  }
}

TEST(ReviewForms, TextHasObstructionsAndInsulationsToo) {
  ReviewWriter writer(kForms[1]);
  writer.shape(8, kUpright, kBox, kPipe, "OBST");
  writer.shape(8, kUpright, kBox, kPipe, "INSU");
  const std::string file = writer.finish();
  const ReviewReading skipped = readReviewText(file);
  EXPECT_EQ(skipped.counts.obstructionsSkipped, 1U);
  EXPECT_EQ(skipped.counts.insulationsSkipped, 1U);
  EXPECT_FALSE(skipped.counts.isAllExact());
  const ReviewReading read = readReviewText(file, {.obstructions = true, .insulations = true});
  EXPECT_EQ(read.lines(), "c 1000 2000 2500,0 0 1000,100\nc 1000 2000 2500,0 0 1000,100\n");
  EXPECT_TRUE(read.counts.isAllExact());
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

struct TransparencyCase {
  const char* name;
  std::uint32_t kind;
  VeskTest::ReviewMatrix matrix;
  Numbers box;
  Numbers parameters;
  bool isBefore;
  std::uint32_t word;
  std::string lines;
  std::size_t transparencies;
  std::size_t uncertain;
};

// The word of the transparency is one whose last three bytes are 0, before the matrix or
// behind the box; a length or a corner that is 0 looks like one.
TEST(ReviewForms, TransparencyStandsWhereTheAxesMakeSense) {
  constexpr std::uint32_t kHalf = 50U << 24U;
  const VeskTest::ReviewMatrix uneven = {0, 0.002, 0, -0.001, 0, 0, 0, 0, 0.001, 0, 0, 0};
  const TransparencyCase rows[] = {
      // Behind it the box ends with 0; read from there the third axis would be null.
      {"BeforeABoxThatEndsWithNull",
       10,
       kUpright,
       {-500, 0, 0, 500, 0, 0},
       {-500, 500},
       true,
       kHalf,
       "l pt 500 2000 3000,pt 1000 0 0\n",
       1,
       0},
      // The first axis begins with 0, and neither place has axes of one length.
      {"BehindUnevenAxes",
       2,
       uneven,
       {-50, -50, -50, 50, 50, 50},
       {100, 100, 100},
       false,
       kHalf,
       "b 0 200 0,50 -100 -50,-100 0 0,0 0 100\n",
       1,
       1},
      // A box upside down is no box either.
      {"BehindABoxUpsideDown",
       2,
       {0, 0.001, 0, -0.001, 0, 0, 0, 0, 0.001, 0, 0, 0},
       {-50, -50, 50, 50, 50, -50},
       {100, 100, 100},
       false,
       kHalf,
       "b 0 100 0,50 -50 -50,-100 0 0,0 0 100\n",
       1,
       1},
      {"InNeitherPlace",
       2,
       kUpright,
       {-50, -50, -50, 50, 50, 50},
       {100, 100, 100},
       false,
       0x12345678,
       "b 100 0 0,950 1950 2950,0 100 0,0 0 100\n",
       0,
       1},
      {"MoreThanAHundredPercentInNeitherPlace",
       2,
       kUpright,
       {-50, -50, -50, 50, 50, 50},
       {100, 100, 100},
       false,
       101U << 24U,
       "b 100 0 0,950 1950 2950,0 100 0,0 0 100\n",
       0,
       1},
  };
  for (const TransparencyCase& row : rows) {
    ReviewWriter writer(kForms[0]);
    std::vector<std::uint32_t> body = {1, row.kind};
    if (row.isBefore) body.push_back(row.word);
    for (const double each : row.matrix) body.push_back(ReviewWriter::word(each));
    for (const double each : row.box) body.push_back(ReviewWriter::word(each));
    if (!row.isBefore) body.push_back(row.word);
    for (const double each : row.parameters) body.push_back(ReviewWriter::word(each));
    writer.chunk("OBST", body);
    const ReviewReading reading = readReviewText(writer.finish(), {.obstructions = true});
    EXPECT_EQ(reading.fault, "") << row.name;
    EXPECT_EQ(reading.lines(), row.lines) << row.name;
    EXPECT_EQ(reading.counts.transparencies, row.transparencies) << row.name;
    EXPECT_EQ(reading.counts.uncertainTransparencies, row.uncertain) << row.name;
  }
}

TEST(ReviewForms, WhatIsLeftOutIsNotAllExact) {
  const auto file = [](const char* chunk, std::uint32_t kind, const Numbers& parameters) {
    ReviewWriter writer(kForms[0]);
    writer.shape(kind, kUpright, kBox, parameters, chunk);
    return writer.finish();
  };
  EXPECT_TRUE(readReviewText(file("PRIM", 8, kPipe)).counts.isAllExact());
  EXPECT_FALSE(readReviewText(file("PRIM", 8, {0, 1000})).counts.isAllExact());  // refused
  EXPECT_FALSE(readReviewText(file("PRIM", 9, {1000})).counts.isAllExact());     // sliced
  EXPECT_FALSE(readReviewText(file("PRIM", 12, {})).counts.isAllExact());
  EXPECT_FALSE(readReviewText(file("OBST", 8, kPipe)).counts.isAllExact());
  EXPECT_FALSE(readReviewText(file("INSU", 8, kPipe)).counts.isAllExact());
  EXPECT_FALSE(readReviewText(file("ABCD", 8, kPipe)).counts.isAllExact());
  EXPECT_FALSE(readReviewText(file("PRIM", 8, {50, 1000, 7})).counts.isAllExact());
  EXPECT_FALSE(readReviewText(file("PRIM", 8, kPipe) + "more").counts.isAllExact());
  ReviewWriter facets(kForms[0]);
  facets.facets(kUpright, kBox, {{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}}, {{{0, 0, 0}, {1, 0, 0}}}});
  EXPECT_FALSE(readReviewText(facets.finish()).counts.isAllExact());
  const std::string whole = file("PRIM", 8, kPipe);  // END: and three words
  EXPECT_FALSE(readReviewText(whole.substr(0, whole.size() - 4)).counts.isAllExact());
}

// One without the other.
TEST(ReviewForms, ObstructionsAndInsulationsAreAskedForOneByOne) {
  ReviewWriter writer(kForms[0]);
  writer.transparent("OBST", true, 50, 8, kUpright, kBox, kPipe);
  writer.transparent("INSU", true, 50, 8, {0, 0.001, 0, -0.001, 0, 0, 0, 0, 0.001, 0, 0, 0}, kBox,
                     kPipe);
  const std::string file = writer.finish();
  const ReviewReading obstructions = readReviewText(file, {.obstructions = true});
  EXPECT_EQ(obstructions.lines(), "c 1000 2000 2500,0 0 1000,100\n");
  EXPECT_EQ(obstructions.counts.insulationsSkipped, 1U);
  EXPECT_EQ(obstructions.counts.obstructionsSkipped, 0U);
  const ReviewReading insulations = readReviewText(file, {.insulations = true});
  EXPECT_EQ(insulations.lines(), "c 0 0 -500,0 0 1000,100\n");
  EXPECT_EQ(insulations.counts.insulationsSkipped, 0U);
  EXPECT_EQ(insulations.counts.obstructionsSkipped, 1U);
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
      {"/A\x80\x80\x80\x80\x80\x80\x80\x80", ""},  // no whole character
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
  for (int i = 107; i < 46655; ++i) names.next("/N1399/12345678");
  EXPECT_THROW(names.next("/N1399/12345678"), std::length_error);
  EXPECT_THROW(names.next("/N1398/12345678"), std::length_error);
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

TEST(ReviewAttributes, GroupsBeyondTheBlocksOfTheirNameHaveThoseOfTheLast) {
  ReviewWriter writer(kForms[0]);
  for (int i = 0; i < 3; ++i) {
    writer.group("VALVE");
    writer.shape(8, kUpright, kBox, kPipe);
    writer.end();
  }
  const std::string blocks = std::string(kMarks) + "NEW VALVE\nNo:=1\nEND\nNEW VALVE\nNo:=2\nEND\n";
  EXPECT_EQ(readReviewText(writer.finish(), {}, blocks).values,
            (std::vector<std::string>{"No=1", "No=2", "No=2"}));
}

struct AttributeCase {
  const char* name;
  std::string lines;  // behind the marks
  std::vector<std::string> keys;
  std::size_t blocks;
  std::size_t stray;
};

TEST(ReviewAttributes, LinesAreBlocksOrValuesOrStray) {
  const AttributeCase rows[] = {
      {"EndWithoutABlock", "END\nNEW A\nEND\nEND\n", {}, 1, 2},
      {"ValueOutsideOfABlock", "Spec:=A\nNEW A\nEND\n", {}, 1, 1},
      {"ValueWithoutAKey", "NEW A\n :=A1A\nEND\n", {}, 1, 1},
      {"NothingBetweenTwoMarks", "NEW A\nx:=1 &end& &end& y:=2 &end&\nEND\n", {"x", "y"}, 1, 0},
      {"WordThatOnlyBeginsLikeABlock", "NEW A\nNEWS:=1\nEND\n", {"NEWS"}, 1, 0},
      {"BlockWithoutAName", "NEW\nx:=1\nEND\n", {"x"}, 1, 0},
      {"BlockBehindATabulator", "NEW\tA\nEND\n", {}, 1, 0},
      {"BlankLines", "\n  \nNEW A\n\nEND\n", {}, 1, 0},
  };
  for (const AttributeCase& row : rows) {
    Vesk::ReviewAttributes attributes;
    const std::string text = kMarks + row.lines;
    attributes.read(VeskTest::bytesOf(text));
    EXPECT_EQ(attributes.keys(), row.keys) << row.name;
    EXPECT_EQ(attributes.blockCount(), row.blocks) << row.name;
    EXPECT_EQ(attributes.strayCount(), row.stray) << row.name;
  }
}

// Each quotes pair is taken off once, and only where both are the same.
TEST(ReviewAttributes, ValuesLoseOnePairOfQuotes) {
  const std::pair<const char*, const char*> rows[] = {
      {"\"80\"", "80"}, {"'80'", "80"}, {"''80''", "'80'"}, {"\"80'", "\"80'"},
      {"\"", "\""},     {"\"\"", ""},   {"121", "121"},
  };
  for (const auto& [written, value] : rows) {
    Vesk::ReviewAttributes attributes;
    const std::string text = std::string(kMarks) + "NEW A\nx:=" + written + "\nEND\n";
    attributes.read(VeskTest::bytesOf(text));
    const auto block = attributes.find(Vesk::ReviewAttributes::kTop, "A");
    EXPECT_EQ(attributes.valuesOf(block), (Vesk::ReviewAttributes::Values{{0, value}}));
  }
}

TEST(ReviewAttributes, DamageEndsWithAMessage) {
  std::string nested;
  for (int i = 0; i < 10001; ++i) nested += "NEW A\n";
  const std::pair<std::string, const char*> rows[] = {
      {"", "the file of attributes is empty"},
      {"NEW A\nEND\n", "this is not a file of attributes"},
      {kMarks + std::string("NEW A\n"), "the file of attributes is cut off: 1 blocks have no END"},
      {kMarks + std::string(65537, 'x'), "a line of more than 65536 bytes"},
      {kMarks + nested, "more than 10000 nested blocks"},
  };
  for (const auto& [text, message] : rows) {
    try {
      Vesk::ReviewAttributes attributes;
      attributes.read(VeskTest::bytesOf(text));
      ADD_FAILURE() << message;
    } catch (const std::runtime_error& fault) {
      EXPECT_NE(std::string(fault.what()).find(message), std::string::npos) << fault.what();
    }
  }
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
