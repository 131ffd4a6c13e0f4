// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <zlib.h>

#include <bit>
#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"
#include "view/Page.h"

namespace VeskTest {
namespace {

using Json = nlohmann::json;

// In a folder with good.dat (a pipe), bad.dat (a damaged one behind a good one),
// thin.dat (a pipe without diameter), text.txt (no records) and old.html.
constexpr RunCase kRuns[] = {
    {"WritesAPage", "view good.dat -o new.html", 0, "new.html: 1 element, ", ""},
    {"ManyFilesAreOnePage", "view good.dat good.dat -o new.html", 0, "new.html: 2 elements, ", ""},
    {"StandardInput", "view - -o new.html", 0, "new.html: 1 element, ", ""},
    {"StandardOutput", "view good.dat -o -", 0, "<!doctype html>", ""},
    {"NoFile", "view", 2, "", "required"},
    {"MissingFile", "view none.dat -o new.html", 3, "", "none.dat: No such file"},
    {"NoRecordFile", "view text.txt -o new.html", 3, "", "this is not a record file"},
    {"DamagedElement", "view bad.dat -o new.html", 1, "new.html: 1 element, ", "[V021]"},
    {"WhatCannotBeDrawn", "view thin.dat -o new.html", 1, "1 element", "[V401]"},
    {"ExistingFile", "view good.dat -o old.html", 4, "", "-f replaces it"},
    {"ExistingFileByForce", "view good.dat -o old.html -f", 0, "old.html: 1 element", ""},
    {"OntoItself", "view good.html -o good.html -f", 2, "", "both input and output"},
    {"IntoNoFolder", "view good.dat -o none/new.html", 4, "", "none/new.html: No such file"},
    {"AnotherEnding", "view good.dat -o new.pdf", 2, "",
     "the ending of \"new.pdf\" names no format"},
    {"AttributesForOneFile", "view good.dat thin.dat --attributes a.csv -o new.html", 2, "",
     "--attributes is for a single file"},
    {"MissingAttributes", "view good.dat --attributes none.csv -o new.html", 3, "",
     "none.csv: No such file"},
    {"DamagedAttributes", "view good.dat --attributes text.txt -o new.html", 1,
     "new.html: 1 element", "text.txt"},
    {"UnknownQuality", "view good.dat --quality best -o new.html", 2, "", "vesk view --help"},
    {"NoTolerance", "view good.dat --tolerance 0 -o new.html", 2, "", "vesk view --help"},
    {"CheckShowsAPage", "check bad.dat --view -o new.html", 1, "bad.dat: 1 error, ", ""},
    {"CheckOfTheGood", "check good.dat --view -o new.html", 0, "new.html: 1 element", ""},
    {"CheckAsPageAndJson", "check good.dat --view --json", 2, "", "--view shows a page"},
    {"CheckOfStandardInput", "check - --view", 2, "", "stdin"},
    {"CheckOverAFile", "check good.dat --view -o old.html", 4, "", "-f replaces it"},
    {"DiffShowsAPage", "diff good.dat thin.dat --view -o new.html", 1, "1 changed", "[V401]"},
    {"DiffOfTheSame", "diff good.dat good.dat --view -o new.html", 0, "no difference", ""},
    {"DiffAsPageAndJson", "diff good.dat good.dat --view --json", 2, "", "--view shows a page"},
    {"PageOptionsNeedView", "diff good.dat good.dat -o new.html", 2, "", "requires --view"},
};

class ViewTest : public testing::TestWithParam<RunCase> {
 protected:
  void SetUp() override {
    if (VeskTool::pageTemplate().empty()) GTEST_SKIP() << "not run: vesk view: it was left out";
  }
};

TEST_P(ViewTest, Runs) {
  const TempFolder folder;
  writeFile("good.dat", kPipe);
  writeFile("good.html", kPipe);
  writeFile("bad.dat", kPipe + "P-1     01002    00c 0 0 0,0 0 1000x,100\n");
  writeFile("thin.dat", "P-1     01001    00c 0 0 0,0 0 1000,0\n");
  writeFile("text.txt", "nothing of this kind\n");
  writeFile("old.html", "old");
  const ToolRun run = expectRun(GetParam());
  // A page is whole or not there.
  EXPECT_EQ(std::filesystem::exists("new.html"), contains(run.out, "new.html: "));
  EXPECT_EQ(readFile("old.html") == "old", !contains(run.out, "old.html: "));
}

INSTANTIATE_TEST_SUITE_P(View, ViewTest, testing::ValuesIn(kRuns),
                         [](const auto& each) { return std::string(each.param.name); });

// What stands between two texts of another.
std::string between(const std::string& text, const std::string& begin, const std::string& end) {
  const std::size_t from = text.find(begin);
  if (from == std::string::npos) return {};
  const std::size_t first = from + begin.size();
  return text.substr(first, text.find(end, first) - first);
}

std::string decodedBase64(const std::string& text) {
  const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  unsigned bits = 0;
  int count = 0;
  for (const char c : text) {
    if (c == '=') break;
    bits = (bits << 6U) | static_cast<unsigned>(digits.find(c));
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>((bits >> static_cast<unsigned>(count)) & 0xFFU);
  }
  return bytes;
}

// What zlib's format holds.
std::string inflated(const std::string& bytes) {
  z_stream stream{};
  EXPECT_EQ(inflateInit(&stream), Z_OK);
  std::string in = bytes;
  stream.next_in = reinterpret_cast<Bytef*>(in.data());
  stream.avail_in = static_cast<uInt>(in.size());
  std::string all;
  int state = Z_OK;
  while (state == Z_OK) {
    char room[4096];
    stream.next_out = reinterpret_cast<Bytef*>(room);
    stream.avail_out = sizeof(room);
    state = inflate(&stream, Z_NO_FLUSH);
    all.append(room, sizeof(room) - stream.avail_out);
  }
  EXPECT_EQ(state, Z_STREAM_END);
  inflateEnd(&stream);
  return all;
}

// A page that the tool has written.
struct WrittenPage {
  explicit WrittenPage(const std::string& text)
      : html(text),
        head(Json::parse(inflated(decodedBase64(
            between(text, "<script type=\"text/plain\" id=\"vesk-scene\">", "</script>"))))),
        data(inflated(decodedBase64(
            between(text, "<script type=\"text/plain\" id=\"vesk-data\">", "</script>")))) {}

  // The numbers of a block, `width` of them an item.
  template <class Number>
  std::vector<Number> block(const Json& place, std::size_t width = 1) const {
    const auto offset = place.at(0).get<std::size_t>();
    std::vector<Number> numbers(place.at(1).get<std::size_t>() * width);
    EXPECT_EQ(offset % 8, 0u);
    EXPECT_LE(offset + numbers.size() * sizeof(Number), data.size());
    std::memcpy(numbers.data(), data.data() + offset, numbers.size() * sizeof(Number));
    return numbers;
  }

  // Numbers of 32 bits, whose lowest bytes come first.
  std::vector<std::uint32_t> planes(const Json& place, std::size_t width = 1) const {
    const std::size_t count = place.at(1).get<std::size_t>() * width;
    const auto bytes = block<std::uint8_t>({place.at(0), count * 4});
    std::vector<std::uint32_t> numbers(count);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      numbers[i % count] |= std::uint32_t{bytes[i]} << (8 * (i / count));
    }
    return numbers;
  }

  std::vector<float> floats(const Json& place, std::size_t width = 1) const {
    std::vector<float> numbers;
    for (const std::uint32_t bits : planes(place, width)) {
      numbers.push_back(std::bit_cast<float>(bits));
    }
    return numbers;
  }

  // Numbers from their differences, the sign of each in its lowest bit.
  std::vector<std::uint32_t> steps(const Json& place) const {
    std::vector<std::uint32_t> numbers = planes(place);
    std::uint32_t sum = 0;
    for (std::uint32_t& each : numbers) {
      sum += (each >> 1U) ^ (0U - (each & 1U));
      each = sum;
    }
    return numbers;
  }

  std::string records() const {
    const auto heads = block<char>(head["records"]["heads"], 19);
    const auto rests = block<char>(head["records"]["rests"]);
    const std::size_t count = heads.size() / 19;
    std::string text;
    auto rest = rests.begin();
    for (std::size_t line = 0; line < count; ++line) {
      char c = '\0';
      for (std::size_t k = 0; k < 19 && c != '\n'; ++k) text += c = heads[k * count + line];
      while (c != '\n') text += c = *rest++;
    }
    EXPECT_EQ(text.size(), head["records"]["bytes"].get<std::size_t>());
    return text;
  }

  std::string html;
  Json head;
  std::string data;
};

class PageTest : public testing::Test {
 protected:
  void SetUp() override {
    if (VeskTool::pageTemplate().empty()) GTEST_SKIP() << "not run: vesk view: it was left out";
  }

  static WrittenPage pageOf(const std::string& arguments) {
    const ToolRun run = runTool(arguments + " -o page.html -f");
    EXPECT_LE(run.exit, 1) << run.err;
    return WrittenPage(readFile("page.html"));
  }
};

// One of each kind; the file is in the folder of golden files.
TEST_F(PageTest, HoldsTheElementsInTheirOrder) {
  const TempFolder folder;
  const WrittenPage page = pageOf("view \"" + golden("elements.tokens.dat") + "\"");
  const Json& elements = page.head["elements"];
  EXPECT_EQ(page.head["schema"], "vesk-scene/2");
  EXPECT_EQ(page.head["title"], "elements.tokens.dat");
  EXPECT_EQ(elements["count"], 11);
  std::vector<std::string> kinds;
  for (const std::uint8_t kind : page.block<std::uint8_t>(elements["kind"])) {
    kinds.push_back(page.head["kinds"][kind]["name"]);
  }
  const std::vector<std::string> expected{"point", "segment", "triangle", "quadrangle",
                                          "text",  "box",     "reducer",  "cylinder",
                                          "cone",  "torus",   "elbow"};
  EXPECT_EQ(kinds, expected);
  // The text has two lines.
  const std::vector<std::uint32_t> lines{1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12};
  EXPECT_EQ(page.steps(elements["line"]), lines);
  const std::vector<std::uint32_t> counters{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  EXPECT_EQ(page.steps(elements["counter"]), counters);
  EXPECT_EQ(page.head["headers"], Json::array({"DUCT-7 A1"}));
}

TEST_F(PageTest, HoldsTheRecordsByteForByte) {
  const TempFolder folder;
  const std::string file = readFile(golden("elements.tokens.dat"));
  const WrittenPage page = pageOf("view \"" + golden("elements.tokens.dat") + "\"");
  EXPECT_EQ(page.records(), file);
  // The text has two.
  const std::vector<std::uint32_t> lines{1, 1, 1, 1, 2, 1, 1, 1, 1, 1, 1};
  EXPECT_EQ(page.steps(page.head["elements"]["lines"]), lines);
}

TEST_F(PageTest, HoldsTheNumbersExactly) {
  const TempFolder folder;
  writeFile("a.dat", "P-1     01001    00c 0.1 -2.5 123456.789,0 0 1e3,100.000001\n");
  const WrittenPage page = pageOf("view a.dat");
  EXPECT_EQ(page.head["layouts"], Json::parse(R"([[["origin", "p"], ["axis", "o"],
                                                   ["diameter", "n"]]])"));
  // 1e3 is no simple number: it stands there itself. The others are numbers of the
  // record, each behind the one before; behind 1 and 3 comes the diameter.
  EXPECT_EQ(page.block<double>(page.head["values"]["literals"]), std::vector<double>{1000.0});
  const std::vector<std::uint8_t> hints{1, 1, 1, 1, 1, 0, 1 + 8 * 2};
  EXPECT_EQ(page.block<std::uint8_t>(page.head["values"]["hints"]), hints);
}

// 11 elements, as `info` gives their box, but for the text, which goes from 1 to
// where its characters end: x of the segment is further.
TEST_F(PageTest, HoldsTheBounds) {
  const TempFolder folder;
  const WrittenPage page = pageOf("view \"" + golden("elements.tokens.dat") + "\"");
  const double low[] = {-108.55, -107.55, -10.0};
  const double high[] = {1000.0, 111.55, 100.0};
  for (std::size_t k = 0; k < 3; ++k) {
    EXPECT_NEAR(page.head["bounds"][0][k].get<double>(), low[k], 1e-9);
    EXPECT_NEAR(page.head["bounds"][1][k].get<double>(), high[k], 1e-9);
  }
}

// The matrices of the first mesh, of pipes with seven values each.
std::vector<float> matricesOf(const WrittenPage& page) {
  const double values[3][7] = {
      {0, 0, 0, 0, 0, 1000, 100}, {10, 20, 30, 200, 0, 0, 50}, {5, 5, 5, 0, -70, 0, 8}};
  const double changes[] = {1.0, -1.0, 0.5, -0.5};
  const float simple[] = {0.0F, 0.0F, -0.0F, 1.0F, -1.0F};
  const Json& group = page.head["groups"][0];
  const auto literals = page.floats(group["literals"]);
  auto literal = literals.begin();
  std::vector<float> numbers;
  for (const std::uint8_t hint : page.block<std::uint8_t>(group["hints"])) {
    if (hint == 0) {
      numbers.push_back(*literal++);
    } else if (hint < 5) {
      numbers.push_back(simple[hint]);
    } else if (hint == 5) {
      numbers.push_back(numbers[numbers.size() - 3]);
    } else {
      const std::size_t code = hint - 6U;
      const double value = values[numbers.size() / 12][code % 62];
      numbers.push_back(static_cast<float>(value * changes[code / 62]));
    }
  }
  return numbers;
}

// Numbers from hints, of an element of these values.
std::vector<float> placesOf(const WrittenPage& page, const Json& group,
                            const std::vector<double>& values) {
  const double changes[] = {1.0, -1.0, 0.5, -0.5};
  const float simple[] = {0.0F, 0.0F, -0.0F, 1.0F, -1.0F};
  const auto literals = page.floats(group["literals"]);
  auto literal = literals.begin();
  std::vector<float> numbers;
  for (const std::uint8_t hint : page.block<std::uint8_t>(group["hints"])) {
    if (hint == 0) {
      numbers.push_back(*literal++);
    } else if (hint < 5) {
      numbers.push_back(simple[hint]);
    } else if (hint == 5) {
      numbers.push_back(numbers[numbers.size() - 3]);
    } else {
      const std::size_t code = hint - 6U;
      numbers.push_back(static_cast<float>(values.at(code % 62) * changes[code / 62]));
    }
  }
  return numbers;
}

// From (1, 2, 3) 10 along x, 20 along y and 30 along z.
TEST_F(PageTest, LinesGoFromVertexToVertex) {
  const TempFolder folder;
  writeFile("a.dat", "P-1     01001    00l pt 1 2 3,pt 10 0 0,pt 10 20 0,pt 10 20 30\n");
  const WrittenPage page = pageOf("view a.dat");
  const std::vector<float> expected{1, 2, 3, 11, 2, 3, 11, 2, 3, 11, 22, 3, 11, 22, 3, 11, 22, 33};
  EXPECT_EQ(placesOf(page, page.head["lines"], {1, 2, 3, 11, 2, 3, 11, 22, 3, 11, 22, 33}),
            expected);
  EXPECT_EQ(page.steps(page.head["lines"]["elements"]), (std::vector<std::uint32_t>{0, 0, 0}));
}

// Three characters of 0.5, along a direction of the length 2; 5 high.
TEST_F(PageTest, TextsHaveTheirPlaceDirectionsAndSizes) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00x 1 2 3,0 2 0,0 0 1,5,0.5,1,3\n"
            "P-1     01001    01x ABC\n");
  const WrittenPage page = pageOf("view a.dat");
  const std::vector<float> expected{1, 2, 3, 0, 1, 0, 0, 0, 1, 5, 3};
  EXPECT_EQ(placesOf(page, page.head["texts"], {1, 2, 3, 0, 2, 0, 0, 0, 1, 5, 0.5, 1, 0}),
            expected);
}

// By their numbers, where nothing else tells.
TEST_F(PageTest, ElementsOfOneNumberAreOneComponent) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 0 0 0,0 0 9,4\n"
            "P-1     01001    00c 9 0 0,0 0 9,4\n"
            "P-1     01002    00c 18 0 0,0 0 9,4\n"
            "P-2     01002    00c 27 0 0,0 0 9,4\n");
  const WrittenPage page = pageOf("view a.dat");
  EXPECT_EQ(page.steps(page.head["elements"]["component"]),
            (std::vector<std::uint32_t>{0, 0, 1, 2}));
}

// Rows are those of their file, though both have the same header and number.
TEST_F(PageTest, RowsAreThoseOfTheirFile) {
  const TempFolder folder;
  writeFile("a.dat", kPipe);
  writeFile("b.dat", kPipe);
  writeFile("a.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\n");
  writeFile("b.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,B2\n");
  const WrittenPage page = pageOf("view a.dat b.dat");
  EXPECT_EQ(page.steps(page.head["elements"]["row"]), (std::vector<std::uint32_t>{1, 2}));
  EXPECT_EQ(page.steps(page.head["elements"]["component"]), (std::vector<std::uint32_t>{0, 1}));
  const Json& attributes = page.head["attributes"];
  std::vector<std::string> texts;
  for (const std::uint32_t id : page.steps(attributes["columns"][0])) {
    texts.push_back(attributes["texts"][id]);
  }
  EXPECT_EQ(texts, (std::vector<std::string>{"A1", "B2"}));  // rows are counted from 1
}

// What a page of differences says at which element; those as they were come behind all others.
TEST_F(PageTest, MarksWhatMovedChangedAppearedAndVanished) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 0 0 0,0 0 9,4\n"
            "P-1     01002    00c 500 0 0,0 0 9,4\n"
            "P-1     01003    00c 900 0 0,0 0 9,4\n");
  writeFile("b.dat",
            "P-1     01001    00c 0 0 7,0 0 9,4\n"
            "P-1     01002    00c 500 0 0,0 0 9,6\n"
            "P-1     01004    00n 5000 0 0,0 0 9,4,2\n");
  const WrittenPage page = pageOf("diff a.dat b.dat --view");
  std::string marks;
  for (const Json& mark : page.head["marks"]) {
    marks += mark["element"].dump() + ' ' + mark["level"].get<std::string>() + ": " +
             mark["text"].get<std::string>() + '\n';
  }
  EXPECT_EQ(marks,
            "0 moved: by 0 0 7\n"
            "3 before: moved by 0 0 7\n"
            "1 changed: diameter from 4 to 6\n"
            "4 before: changed: diameter from 4 to 6\n"
            "5 removed: length 9, diameter 4\n"
            "2 added: length 9, diameters 4 and 2\n");
}

// How each element is shown: whole, as context, or hidden.
std::vector<std::uint8_t> shownIn(const WrittenPage& page) {
  return page.block<std::uint8_t>(page.head["elements"]["shown"]);
}

// Of what did not change nothing is chosen, and what changed is shown all the same.
TEST_F(PageTest, OfDifferencesWhatIsNotChosenIsHidden) {
  const TempFolder folder;
  const std::string steady = "P-2     01001    00c 500 0 0,0 0 9,4\n";
  writeFile("a.dat", "P-1     01001    00c 0 0 0,0 0 9,4\n" + steady);
  writeFile("b.dat", "P-1     01001    00c 0 0 7,0 0 9,4\n" + steady);
  const auto all = shownIn(pageOf("diff a.dat b.dat --view"));
  const auto some = shownIn(pageOf("diff a.dat b.dat --view --header P-1"));
  ASSERT_EQ(all.size(), 3U);
  ASSERT_EQ(some.size(), 3U);
  EXPECT_EQ(all[0], some[0]);
  EXPECT_EQ(all[1], all[0]);    // whole
  EXPECT_NE(some[1], some[0]);  // hidden
}

TEST_F(PageTest, WhatIsNotChosenIsHiddenOrContext) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 0 0 0,0 0 9,4\n"
            "P-2     01001    00c 500 0 0,0 0 9,4\n");
  const auto whole = shownIn(pageOf("view a.dat"));
  const auto hidden = shownIn(pageOf("view a.dat --header P-2"));
  const auto context = shownIn(pageOf("view a.dat --header P-2 --context"));
  EXPECT_EQ(whole[0], whole[1]);
  EXPECT_EQ(hidden[1], whole[1]);
  EXPECT_EQ(context[1], whole[1]);
  EXPECT_NE(hidden[0], whole[0]);
  EXPECT_NE(context[0], whole[0]);
  EXPECT_NE(context[0], hidden[0]);
}

// Each of both sides has its own mark, at its own element and with the other one's line.
TEST_F(PageTest, MarksBothSidesOfAClash) {
  const TempFolder folder;
  writeFile("a.dat", kPipe + "P-2     01001    00c -500 0 500,1000 0 0,60\n");
  const WrittenPage page = pageOf("clash a.dat --view");
  ASSERT_EQ(page.head["marks"].size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const Json& mark = page.head["marks"][i];
    EXPECT_EQ(mark["element"], i);
    EXPECT_EQ(mark["code"], "V501");
    EXPECT_EQ(mark["level"], "error");
    const auto text = mark["text"].get<std::string>();
    const std::string both[] = {"cylinder of P-1 01 overlaps the cylinder of P-2 01 at line 2 at ",
                                "cylinder of P-2 01 overlaps the cylinder of P-1 01 at line 1 at "};
    EXPECT_TRUE(text.starts_with(both[i])) << text;
  }
}

// Of two files each finding is at the element of its own, by the number of the element in the page.
TEST_F(PageTest, MarksAClashInBothFiles) {
  const TempFolder folder;
  writeFile("a.dat", "P-9     01001    00c 0 5000 0,0 0 9,4\n" + kPipe);
  writeFile("b.dat", "P-2     01001    00c -500 0 500,1000 0 0,60\n");
  const WrittenPage page = pageOf("clash a.dat b.dat --view");
  ASSERT_EQ(page.head["marks"].size(), 2u);
  EXPECT_EQ(page.head["marks"][0]["element"], 1);
  EXPECT_EQ(page.head["marks"][1]["element"], 2);
  EXPECT_TRUE(contains(page.head["marks"][0]["text"], "at b.dat:1 ")) << page.head["marks"];
  EXPECT_TRUE(contains(page.head["marks"][1]["text"], "at a.dat:2 ")) << page.head["marks"];
}

TEST_F(PageTest, IsCalledByItsFilesUnlessItIsNamed) {
  const TempFolder folder;
  writeFile("a.dat", kPipe);
  writeFile("b.dat", kPipe);
  EXPECT_EQ(pageOf("view a.dat").head["title"], "a.dat");
  EXPECT_EQ(pageOf("view a.dat b.dat").head["title"], "a and others");
  EXPECT_EQ(pageOf("view a.dat b.dat --title Plant").head["title"], "Plant");
}

// By their second header field, each once.
TEST_F(PageTest, ElementsAreInTheirGroups) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     A1001    00c 0 0 0,0 0 9,4\n"
            "P-1     B2002    00c 9 0 0,0 0 9,4\n"
            "P-2     A1001    00c 18 0 0,0 0 9,4\n");
  const WrittenPage page = pageOf("view a.dat");
  std::vector<std::string> groups;
  for (const std::uint32_t id : page.steps(page.head["elements"]["group"]))
    groups.push_back(page.head["groupNames"][id]);
  EXPECT_EQ(groups, (std::vector<std::string>{"A1", "B2", "A1"}));
}

// The words of a finding, and what was expected.
TEST_F(PageTest, MarksSayWhatIsExpected) {
  const TempFolder folder;
  writeFile("a.dat", "P-1     01001    00c 0 0 0,0 0 1000,-5\n");
  const WrittenPage page = pageOf("check a.dat --view");
  ASSERT_EQ(page.head["marks"].size(), 1u);
  EXPECT_EQ(page.head["marks"][0]["text"],
            "diameter is below zero: -5; expected a positive number");
}

// A box has six directions, of 127 along one axis and 0 along the others.
TEST_F(PageTest, DirectionsAreInSteps) {
  const TempFolder folder;
  writeFile("a.dat", "P-1     01001    00b 10 0 0,0 0 0,0 20 0,0 0 30\n");
  const WrittenPage page = pageOf("view a.dat");
  const auto normals = page.block<std::int8_t>(page.head["meshes"][0]["normals"], 3);
  ASSERT_EQ(normals.size(), 24u * 3);  // four corners of six sides
  int sums[3][2] = {};
  for (std::size_t i = 0; i < normals.size(); ++i) {
    if (normals[i] == 0) continue;
    EXPECT_EQ(std::abs(int{normals[i]}), 127);
    ++sums[i % 3][normals[i] > 0];
  }
  for (const auto& axis : sums) {
    EXPECT_EQ(axis[0], 4);
    EXPECT_EQ(axis[1], 4);
  }
}

// A damaged record between two others belongs to neither.
TEST_F(PageTest, MarksNoElementForAFindingBesideThem) {
  const TempFolder folder;
  writeFile("a.dat", kPipe + "P-1     01002    00c 0 0 0,0 0 1000x,100\n" +
                         "P-1     01003    00c 9 0 0,0 0 1000,-5\n");
  const WrittenPage page = pageOf("check a.dat --view");
  ASSERT_EQ(page.head["marks"].size(), 2u);
  EXPECT_EQ(page.head["marks"][0]["code"], "V021");
  EXPECT_TRUE(page.head["marks"][0]["element"].is_null());
  EXPECT_TRUE(page.head["marks"][0]["text"].get<std::string>().starts_with("a.dat:2: "));
  EXPECT_EQ(page.head["marks"][1]["code"], "V101");
  EXPECT_EQ(page.head["marks"][1]["element"], 1);
}

// Three pipes share one mesh; each place takes its corners to the pipe's box.
TEST_F(PageTest, PipesShareAMesh) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 0 0 0,0 0 1000,100\n"
            "P-1     01002    00c 10 20 30,200 0 0,50\n"
            "P-1     01003    00c 5 5 5,0 -70 0,8\n");
  const WrittenPage page = pageOf("view a.dat");
  ASSERT_EQ(page.head["meshes"].size(), 1u);
  EXPECT_EQ(page.head["meshes"][0]["closed"], true);
  const auto positions = page.floats(page.head["meshes"][0]["positions"], 3);
  const auto matrices = matricesOf(page);
  const auto elements = page.steps(page.head["groups"][0]["elements"]);
  EXPECT_EQ(elements, (std::vector<std::uint32_t>{0, 1, 2}));
  const float boxes[3][6] = {
      {-50, -50, 0, 50, 50, 1000}, {10, -5, 5, 210, 45, 55}, {1, -65, 1, 9, 5, 9}};
  for (std::size_t place = 0; place < 3; ++place) {
    float low[3] = {1e9F, 1e9F, 1e9F};
    float high[3] = {-1e9F, -1e9F, -1e9F};
    for (std::size_t i = 0; i < positions.size(); i += 3) {
      for (std::size_t row = 0; row < 3; ++row) {
        const float* m = matrices.data() + place * 12 + row * 4;
        const float x =
            m[0] * positions[i] + m[1] * positions[i + 1] + m[2] * positions[i + 2] + m[3];
        low[row] = std::min(low[row], x);
        high[row] = std::max(high[row], x);
      }
    }
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_NEAR(low[k], boxes[place][k], 1e-3F) << place << ' ' << k;
      EXPECT_NEAR(high[k], boxes[place][k + 3], 1e-3F) << place << ' ' << k;
    }
  }
}

TEST_F(PageTest, IndicesStayInTheirMesh) {
  const TempFolder folder;
  const WrittenPage page = pageOf("view \"" + golden("elements.tokens.dat") + "\"");
  for (const Json& mesh : page.head["meshes"]) {
    const auto positions = page.floats(mesh["positions"], 3);
    const auto normals = page.block<std::int8_t>(mesh["normals"], 3);
    EXPECT_EQ(positions.size(), normals.size());
    for (const std::uint32_t index : page.steps(mesh["indices"])) {
      ASSERT_LT(index, positions.size() / 3);
    }
  }
}

// Six characters, each 0.5 wide.
TEST_F(PageTest, ATextHasItsSize) {
  const TempFolder folder;
  writeFile("a.dat",
            "PIPE-1  01001    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,6\n"
            "PIPE-1  01001    01x NOZZLE\n");
  const WrittenPage page = pageOf("view a.dat");
  const auto numbers = page.block<std::uint8_t>(page.head["texts"]["hints"]);
  ASSERT_EQ(numbers.size(), 11u);
  // The record's height is its tenth number; its width is none of them.
  EXPECT_EQ(numbers[9], 6 + 9);
  EXPECT_EQ(page.floats(page.head["texts"]["literals"]).back(), 3.0F);
}

TEST_F(PageTest, NoTextOfARecordEndsItsBlock) {
  const TempFolder folder;
  writeFile("a.dat",
            "<b>&\"'  01001    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,9\n"
            "<b>&\"'  01001    01x </script>\n");
  const WrittenPage page = pageOf("view a.dat --title \"<i>--></i>\"");
  EXPECT_EQ(page.head["title"], "<i>--></i>");
  EXPECT_EQ(page.head["headers"][0], "<b>&\"' 01");
  EXPECT_EQ(page.head["texts"]["strings"][0], "</script>");
  for (const std::string block : {"vesk-scene", "vesk-data"}) {
    const std::string text = between(page.html, "id=\"" + block + "\">", "</script>");
    EXPECT_EQ(text.find('<'), std::string::npos) << block;
  }
}

TEST_F(PageTest, IsTheTemplateAroundTheModel) {
  const TempFolder folder;
  writeFile("a.dat", kPipe);
  WrittenPage page = pageOf("view a.dat");
  const std::string scene = between(page.html, "id=\"vesk-scene\">", "</script>");
  const std::string data = between(page.html, "id=\"vesk-data\">", "</script>");
  page.html.erase(page.html.find(scene), scene.size());
  page.html.erase(page.html.find(data), data.size());
  EXPECT_TRUE(page.html == VeskTool::pageTemplate());
}

TEST_F(PageTest, HoldsWhatIsKnownOfComponents) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 0 0 0,0 0 1000,100\n"
            "P-1     01001    00l pt 0 0 0,pt 0 0 1000\n"
            "P-1     01002    00c 0 0 0,0 0 1000,100\n"
            "P-1     01003    00c 0 0 0,0 0 1000,100\n");
  writeFile("a.attributes.csv", "f1,f2,first,last,tag\nP-1,01,2,3,HV-7\n");
  const WrittenPage page = pageOf("view a.dat");
  const Json& elements = page.head["elements"];
  // One counter is one component, and so is one row.
  EXPECT_EQ(page.steps(elements["component"]), (std::vector<std::uint32_t>{0, 0, 1, 1}));
  EXPECT_EQ(page.steps(elements["row"]), (std::vector<std::uint32_t>{0, 0, 1, 1}));
  const Json& attributes = page.head["attributes"];
  EXPECT_EQ(attributes["names"], Json::array({"tag"}));
  EXPECT_EQ(attributes["texts"], Json::array({"", "HV-7"}));
  EXPECT_EQ(page.steps(attributes["columns"][0]), std::vector<std::uint32_t>{1});
}

TEST_F(PageTest, FilesHaveTheirNamesAlone) {
  const TempFolder folder;
  std::filesystem::create_directories("deep/one");
  std::filesystem::create_directories("deep/two");
  for (const std::string name : {"deep/one/a.dat", "deep/two/a.dat", "deep/two/b.dat"}) {
    writeFile(name, kPipe);
  }
  const std::string all = std::filesystem::absolute("deep/one/a.dat").string() +
                          "\" deep/two/a.dat deep/two/b.dat deep/two/b.dat";
  const WrittenPage page = pageOf("view \"" + all);
  EXPECT_EQ(page.head["files"], Json::array({"b.dat", "one/a.dat", "two/a.dat"}));
  EXPECT_EQ(page.steps(page.head["elements"]["file"]), (std::vector<std::uint32_t>{1, 2, 0, 0}));
}

// A number of the plant in the page, where bytes of the page can be told.
TEST_F(PageTest, AThousandPipesTakeLessThanFifteenBytesEach) {
  const TempFolder folder;
  std::string records;
  for (int i = 0; i < 1000; ++i) {
    const std::string counter = std::to_string(1000 + i).substr(1);
    records += "P-1     01" + counter + "    00c " + std::to_string(i * 37 % 1000) + ".5 " +
               std::to_string(i * 91 % 1000) + " 0,0 0 1000,100\n";
  }
  writeFile("a.dat", records);
  const std::size_t empty = VeskTool::pageTemplate().size();
  const WrittenPage page = pageOf("view a.dat");
  EXPECT_EQ(page.records(), records);
  EXPECT_LT(page.html.size() - empty, 15u * 1000u);
}

TEST_F(PageTest, SameInputSameBytes) {
  const TempFolder folder;
  const std::string arguments = "view \"" + golden("pump.dat") + "\"";
  EXPECT_TRUE(pageOf(arguments).html == pageOf(arguments).html);
}

// A quarter of the pieces of "fine".
TEST_F(PageTest, QualitySetsTheTriangles) {
  const TempFolder folder;
  writeFile("a.dat", kPipe);
  const auto corners = [](const std::string& quality) {
    const WrittenPage page = pageOf("view a.dat --quality " + quality);
    return page.head["meshes"][0]["indices"][1].get<std::size_t>();
  };
  // n pieces: 2 n triangles round about and n - 2 on each end.
  EXPECT_EQ(corners("draft"), 3 * (4 * 16u - 4));
  EXPECT_EQ(corners("normal"), 3 * (4 * 32u - 4));
  EXPECT_EQ(corners("fine"), 3 * (4 * 64u - 4));
}

TEST_F(PageTest, FarFromTheOriginItKeepsAnOffset) {
  const TempFolder folder;
  writeFile("a.dat", "P-1     01001    00c 6700000 500000 0,0 0 1000,0.5\n");
  const WrittenPage page = pageOf("view a.dat");
  const double x = page.head["offset"][0];
  EXPECT_NEAR(x + page.head["bounds"][0][0].get<double>(), 6700000 - 0.25, 1e-6);
  EXPECT_LT(std::abs(page.head["bounds"][1][0].get<double>()), 2000.0);
}

#ifndef _WIN32

// Programs of our own stand before those of the system.
class OpeningTest : public PageTest {
 protected:
  static ToolRun runWith(const std::string& settings, const std::string& arguments) {
    std::filesystem::create_directory("bin");
    std::filesystem::create_directory("tmp");
    writeFile("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" >opened.part\nmv opened.part opened\n");
    std::filesystem::permissions("bin/xdg-open", std::filesystem::perms::owner_all);
    writeFile("run", "#!/bin/sh\nunset DISPLAY WAYLAND_DISPLAY BROWSER\nexport TMPDIR=$PWD/tmp " +
                         settings + "\nexec \"" VESK_TOOL "\" \"$@\"\n");
    std::filesystem::permissions("run", std::filesystem::perms::owner_all);
    ToolRun run;
    run.exit = std::system(("./run " + arguments + " >out 2>err").c_str());
    run.out = readFile("out");
    run.err = readFile("err");
    return run;
  }

  // What the desktop was asked to open, once it was.
  static std::string opened() {
    std::system("for i in 1 2 3 4 5 6 7 8 9 10; do [ -e opened ] && break; sleep 0.2; done");
    return readFile("opened");
  }
};

TEST_F(OpeningTest, OpensATemporaryFile) {
  const TempFolder folder;
  writeFile("plant.dat", kPipe);
  const ToolRun run = runWith("DISPLAY=:7 PATH=\"$PWD/bin:$PATH\"", "view plant.dat");
  EXPECT_EQ(run.exit, 0) << run.err;
  const std::string name = run.out.substr(0, run.out.find(": "));
  EXPECT_TRUE(name.ends_with("/plant.html")) << name;
  EXPECT_EQ(opened(), name);
  EXPECT_EQ(WrittenPage(readFile(name)).head["elements"]["count"], 1);
  // Nobody else may read it.
  const auto permissions =
      std::filesystem::status(std::filesystem::path(name).parent_path()).permissions();
  EXPECT_EQ(permissions, std::filesystem::perms::owner_all);
}

TEST_F(OpeningTest, DoesNotOpenWhatHasAName) {
  const TempFolder folder;
  writeFile("plant.dat", kPipe);
  runWith("DISPLAY=:7 PATH=\"$PWD/bin:$PATH\"", "view plant.dat -o page.html");
  runWith("DISPLAY=:7 PATH=\"$PWD/bin:$PATH\"", "view plant.dat --no-open");
  EXPECT_FALSE(std::filesystem::exists("opened"));
}

TEST_F(OpeningTest, SaysWhereThereIsNoDesktop) {
  const TempFolder folder;
  writeFile("plant.dat", kPipe);
  const ToolRun run = runWith("PATH=\"$PWD/bin:$PATH\"", "view plant.dat");
  EXPECT_EQ(run.exit, 0);
  EXPECT_TRUE(contains(run.err, "there is no desktop")) << run.err;
  EXPECT_TRUE(contains(run.out, "/plant.html: 1 element")) << run.out;
}

TEST_F(OpeningTest, SaysThatTheOpenerIsMissing) {
  const TempFolder folder;
  writeFile("plant.dat", kPipe);
  std::filesystem::create_directory("none");
  const ToolRun run = runWith("DISPLAY=:7 PATH=\"$PWD/none\"", "view plant.dat");
  EXPECT_EQ(run.exit, 0);
  EXPECT_TRUE(contains(run.err, "xdg-open can't be started: No such file")) << run.err;
}

#endif

}  // namespace
}  // namespace VeskTest
