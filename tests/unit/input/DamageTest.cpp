// SPDX-License-Identifier: MIT
// Files cut at every byte, and files with any bytes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "input/ReaderTesting.h"
#include "input/RecordHeading.h"
#include "input/RecordTesting.h"
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

struct Sample {
  std::string text;
  std::vector<std::string> elements;  // their lines
};

// Every kind of element, with and without what may follow its first line. Only
// every second element has the header of the one before.
Sample sampleOf(std::int32_t mode, bool tags) {
  Sample sample;
  ElementHolder holder;
  int count = 0;
  const auto add = [&](const Geo& geo) {
    holder.header.set("PIPE-001", "A1", count++ / 2);
    holder.setElement(geo);
    sample.elements.push_back(writtenText(holder, mode));
    sample.text += sample.elements.back();
  };
  add(Cyl({1, 2, 3}, {4, 5, 6.25}, 100));
  add(Cone({1, 2, 3}, {4, 5, 6}, 100, 0));
  Box box({0, 0, 0}, {10, 0, 0}, {0, 20, 0}, {0, 0, 30});
  add(box);
  Red red({{{0, 0, 0},
            {10, 0, 0},
            {0, 10, 0},
            {10, 10, 0},
            {2, 2, 20},
            {8, 2, 20},
            {2, 8, 20},
            {8, 8, 20}}});
  add(red);
  if (tags) {
    box.edges = {{"left", {}}, {"seam", {{1, 2}, {3, 4.5}}}};
    red.tags = box.edges;
    add(box);
    add(red);
    holder.ft = 12;
    holder.tk = 3;
  }
  add(Torus({0, 0, 0}, {100, 0, 0}, {0, 100, 0}, 20));
  add(Relb({0, 0, 0}, {0, 0, 10}, {50, 0, 0}, {0, 50, 0}, 30));
  add(Pline{{1, 2, 3}});
  add(Pline{{1, 2, 3}, {4, 5, 6}});
  add(Pgon{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
  Pgon normals{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  for (PgonVertex& vertex : normals.vertices) {
    vertex.normal = {0, 0, 1};
    vertex.hasNormal = true;
  }
  add(normals);
  add(Txt({1, 2, 0}, {1, 0, 0}, {0, 1, 0}, 0.5, 2.5, 1, 1, "cs V-101, sp"));
  add(Txt({1, 2, 0}, {1, 0, 0}, {0, 1, 0}, 0.5, 2.5, 1, 0, ""));
  if (mode == kTokens) {
    Pline line;
    for (int i = 0; i < 60; ++i) line.vertices.push_back({1000.0 + i, 2000.0 - i, i * 0.5});
    add(line);
  }
  add(Cyl({1, 2, 3}, {4, 5, 6.25}, 100));
  return sample;
}

// What a reader of the text finds; elements as they are written.
struct Reading {
  std::vector<std::string> elements;
  std::vector<RecordFault> faults;
};

Reading readAll(std::string_view text, std::int32_t mode) {
  RecordFile file(std::make_unique<TextSource>(text), "f", {mode, false});
  Reading reading;
  for (;;) {
    const RecordFile::Found found = file.next();
    if (found == RecordFile::Found::kEnd) return reading;
    if (found == RecordFile::Found::kElement) {
      reading.elements.push_back(writtenText(holderOf(file.element()), file.mode()));
    } else {
      reading.faults.push_back(file.fault());
    }
  }
}

// How many elements end at or before this byte, and whether one ends there.
std::pair<std::size_t, bool> endsBefore(const Sample& sample, std::size_t position) {
  std::size_t end = 0;
  std::size_t count = 0;
  while (count < sample.elements.size() && end + sample.elements[count].size() <= position) {
    end += sample.elements[count++].size();
  }
  return {count, end == position};
}

bool isPrefix(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
  return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

class Cut : public testing::TestWithParam<std::tuple<std::int32_t, bool>> {};

TEST_P(Cut, AtEveryByteGivesElementsAndAReport) {
  const auto [mode, tags] = GetParam();
  const Sample sample = sampleOf(mode, tags);
  for (std::size_t length = 0; length <= sample.text.size(); ++length) {
    const std::string text = sample.text.substr(0, length);
    const Reading reading = readAll(text, 0);
    const auto [complete, atEnd] = endsBefore(sample, length);
    const bool atLineEnd = length == 0 || text.back() == '\n';
    // A record whose tag lines are gone is a record without tags.
    if (atLineEnd && !atEnd && tags && reading.faults.empty()) continue;
    ASSERT_TRUE(isPrefix(reading.elements, sample.elements)) << length;
    ASSERT_EQ(reading.faults.size(), atEnd ? 0u : 1u) << length;
    if (!atLineEnd) {
      ASSERT_EQ(reading.faults[0].kind, RecordFault::Kind::kCutOff) << length;
    }
    // Of those that end before the cut, the last may be held back: a box or a
    // reducer when too little of the next line is left to see what it is.
    ASSERT_LE(complete - reading.elements.size(), 1u) << length;
    if (reading.elements.size() < complete) {
      const std::string& heldBack = sample.elements[complete - 1];
      const std::size_t column = mode == kTokens ? 19 : 21;
      const std::string keyword = heldBack.substr(column, 2);
      ASSERT_TRUE(keyword == "b " || keyword == "r " || keyword == "BO" || keyword == "RE")
          << length;
    }
  }
}

TEST_P(Cut, LineByLineNoElementIsInvented) {
  const auto [mode, tags] = GetParam();
  const Sample sample = sampleOf(mode, tags);
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < sample.text.size();) {
    const std::size_t end = sample.text.find('\n', begin) + 1;
    lines.push_back(sample.text.substr(begin, end - begin));
    begin = end;
  }
  for (std::size_t missing = 0; missing < lines.size(); ++missing) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (i != missing) text += lines[i];
    }
    const Reading reading = readAll(text, 0);
    // At most the element of the missing line is gone; one without its tags is
    // another one.
    std::size_t unknown = 0;
    for (const std::string& element : reading.elements) {
      unknown += std::count(sample.elements.begin(), sample.elements.end(), element) == 0 ? 1u : 0u;
    }
    EXPECT_LE(unknown, tags ? 1u : 0u) << missing;
    EXPECT_GE(reading.elements.size() + 1, sample.elements.size()) << missing;
  }
}

INSTANTIATE_TEST_SUITE_P(Styles, Cut,
                         testing::Combine(testing::Values(kFixedColumns, kTokens),
                                          testing::Bool()));

// A file of the project's own, as the sum of its elements.
Sample goldenSample(const std::string& name) {
  std::ifstream stream(std::string(VESK_TEST_SOURCE_DIR) + "/" + name, std::ios::binary);
  Sample sample;
  sample.text.assign(std::istreambuf_iterator<char>(stream), {});
  RecordFile file(std::make_unique<TextSource>(sample.text), name);
  for (RecordFile::Found found; (found = file.next()) != RecordFile::Found::kEnd;) {
    EXPECT_EQ(found, RecordFile::Found::kElement) << file.textOf(file.fault());
    sample.elements.push_back(writtenText(holderOf(file.element()), file.mode()));
  }
  return sample;
}

class Golden : public testing::TestWithParam<const char*> {};

TEST_P(Golden, FileIsWrittenAgain) {
  const Sample sample = goldenSample(GetParam());
  std::string again;
  for (const std::string& element : sample.elements) again += element;
  EXPECT_FALSE(again.empty());
  EXPECT_EQ(again, sample.text);
}

// Each prefix without all but its last elements: elements do not depend on those
// before them, and a file of n bytes has n prefixes.
TEST_P(Golden, EveryPrefixGivesAPrefixOfTheElements) {
  const Sample sample = goldenSample(GetParam());
  for (std::size_t length = 0; length <= sample.text.size(); ++length) {
    const auto [complete, atEnd] = endsBefore(sample, length);
    const std::size_t first = complete - std::min<std::size_t>(complete, 3);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < first; ++i) begin += sample.elements[i].size();
    const Reading reading = readAll(std::string_view(sample.text).substr(begin, length - begin), 0);
    const std::vector<std::string> rest(
        sample.elements.begin() + static_cast<std::ptrdiff_t>(first), sample.elements.end());
    ASSERT_TRUE(isPrefix(reading.elements, rest)) << length;
    ASSERT_EQ(reading.faults.size(), atEnd ? 0u : 1u) << length;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, Golden,
                         testing::Values("golden/elements.columns.dat",
                                         "golden/elements.tokens.dat", "golden/pump.dat",
                                         "unit/api/thirteen.dat"));

// How often hostile files are made: VESK_HOSTILE_FILES, or a few thousand.
int hostileFiles() {
  const char* text = std::getenv("VESK_HOSTILE_FILES");
  return text == nullptr ? 4000 : std::atoi(text);
}

// One of some bytes that mean something, or any.
char anyByte(std::mt19937& random) {
  static constexpr std::string_view kBytes("0123456789 .,-+*eEpt\n\r\0infaxcsedr67", 36);
  const auto choice = random() % 64;
  return choice < kBytes.size() ? kBytes[choice] : static_cast<char>(random() % 256);
}

void mutate(std::string& text, std::mt19937& random) {
  for (auto edits = 1 + random() % 6; edits > 0 && !text.empty(); --edits) {
    const std::size_t position = random() % text.size();
    const std::size_t length = random() % 40;
    switch (random() % 6) {
      case 0:
        text[position] = anyByte(random);
        break;
      case 1:
        text.erase(position, length);
        break;
      case 2:
        text.insert(position, text.substr(random() % text.size(), length));
        break;
      case 3:
        text.insert(position, 1, anyByte(random));
        break;
      case 4: {
        // Lines change places.
        const std::size_t begin = text.find('\n', position) + 1;
        const std::size_t end = text.find('\n', begin);
        if (end != std::string::npos) text += text.substr(begin, end - begin + 1);
        break;
      }
      default:
        text.resize(position);
    }
  }
}

TEST(Hostile, FilesGiveElementsOrReports) {
  std::mt19937 random(20240607);
  const Sample samples[] = {sampleOf(kFixedColumns, true), sampleOf(kTokens, true)};
  for (int i = 0; i < hostileFiles(); ++i) {
    const Sample& sample = samples[i % 2];
    const std::size_t first = random() % sample.elements.size();
    std::string text;
    for (std::size_t k = first; k < std::min(first + 3, sample.elements.size()); ++k) {
      text += sample.elements[k];
    }
    mutate(text, random);
    const Reading reading = readAll(text, i % 3 == 0 ? 0 : i % 2 == 0 ? kFixedColumns : kTokens);
    for (const RecordFault& fault : reading.faults) {
      ASSERT_FALSE(fault.message.empty());
      ASSERT_FALSE(fault.expected.empty());
      ASSERT_GE(fault.line, fault.firstLine);
      ASSERT_LE(fault.line, fault.lastLine);
      ASSERT_GE(fault.column, 1u);
    }
  }
}

// Any bytes behind a valid heading.
TEST(Hostile, RecordsGiveValuesOrExceptionInfo) {
  std::mt19937 random(7);
  static const char* const kKeywords[] = {"CYL", "CON", "BOX", "TOR", "RED", "ELB", "PNT",
                                          "SEG", "TRI", "TRN", "QUA", "QUN", "TXT"};
  static const char* const kNumbers[] = {"60", "61", "62", "63", "64", "70", "71", "72"};
  static const char* const kTags[] = {"be", "re", "x ", "l "};
  for (int i = 0; i < hostileFiles(); ++i) {
    const std::int32_t mode = i % 2 == 0 ? kFixedColumns : kTokens;
    Recs lines;
    for (auto n = random() % 4; n > 0; --n) {
      std::string data;
      for (auto length = random() % 60; length > 0; --length) data += anyByte(random);
      if (random() % 2 == 0)
        data = fields("1 2 3 4 5 6 7 8 9 10 11 12").substr(0, random() % 109) + data;
      if (mode == kTokens && random() % 2 == 0)
        data = "pt 1 2 3,ar 1 2 3 4,vn 1 2 3,ed a 1 2ed a" + data;
      if (random() % 8 == 0) data.clear();
      lines.push_back(mode == kTokens
                          ? tokenLine("00", kTags[random() % 4], data)
                          : fixedLine(kNumbers[random() % 8], kKeywords[random() % 13], data));
      if (random() % 16 == 0) lines.back().resize(random() % 25);
    }
    for (std::int32_t typeCode = 1; typeCode <= 9; ++typeCode) {
      Input in(lines, mode);
      const auto geo = makeGeo(typeCode);
      const std::string failure = failureOf([&] { geo->read(in); });
      ASSERT_TRUE(failure == "nothing" || failure[0] == '1' || failure[0] == '2');
    }
  }
}

}  // namespace
