// SPDX-License-Identifier: MIT
#include "vesk/RecordWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "support/ExportsFixture.h"
#include "support/TempFolder.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/RecordFile.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

using namespace Vesk;

namespace VeskTest {
namespace {

namespace fs = std::filesystem;

const Cyl kPipe({0, 0, 0}, {0, 0, 10}, 5);
const char* const kPipeLine = "                 00c 0 0 0,0 0 10,5\n";

// The model of the golden files.
void writeAllEleven(RecordWriter& file) {
  int number = 0;
  const auto write = [&](const Geo& primitive) {
    file.setHeader("DUCT-7", "A1", ++number);
    file.write(primitive);
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

std::string golden(const char* name) {
  return readFile(fs::path(VESK_TEST_SOURCE_DIR) / "golden" / name);
}

std::vector<std::string> filesHere() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(".")) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

using Names = std::vector<std::string>;

std::error_code refusalOf(const std::function<void()>& call, const std::string& name) {
  try {
    call();
  } catch (const std::system_error& e) {
    EXPECT_TRUE(std::string(e.what()).starts_with(name + ": ")) << e.what();
    return e.code();
  }
  return {};
}

class RecordWriterTest : public testing::Test {
 protected:
  TempFolder folder_;
};

TEST_F(RecordWriterTest, WritesTheBytesOfTheExportsInTokens) {
  RecordWriter file("a.dat");
  writeAllEleven(file);
  file.close();
  EXPECT_EQ(readFile("a.dat"), golden("elements.tokens.dat"));
}

TEST_F(RecordWriterTest, WritesFixedColumns) {
  RecordWriter file("a.dat", kFixedColumns);
  writeAllEleven(file);
  file.close();
  EXPECT_EQ(readFile("a.dat"), golden("elements.columns.dat"));
}

TEST_F(RecordWriterTest, TheFileAppearsWithClose) {
  RecordWriter file("a.dat");
  EXPECT_EQ(file.write(kPipe), 1);
  EXPECT_FALSE(fs::exists("a.dat"));
  file.close();
  EXPECT_EQ(filesHere(), Names{"a.dat"});
  EXPECT_EQ(readFile("a.dat"), kPipeLine);
}

TEST_F(RecordWriterTest, AnUnclosedWriterLeavesNothing) {
  { RecordWriter("a.dat").write(kPipe); }
  EXPECT_EQ(filesHere(), Names{});
}

TEST_F(RecordWriterTest, AnUnclosedWriterLeavesTheFormerFile) {
  std::ofstream("a.dat") << "former\n";
  { RecordWriter("a.dat").write(kPipe); }
  EXPECT_EQ(filesHere(), Names{"a.dat"});
  EXPECT_EQ(readFile("a.dat"), "former\n");
}

TEST_F(RecordWriterTest, CloseReplacesTheFormerFile) {
  std::ofstream("a.dat") << "former, and longer than what comes in its place\n";
  RecordWriter file("a.dat");
  file.write(kPipe);
  file.close();
  EXPECT_EQ(readFile("a.dat"), kPipeLine);
}

TEST_F(RecordWriterTest, AFileWithoutElementsIsEmpty) {
  RecordWriter("a.dat").close();
  EXPECT_EQ(readFile("a.dat"), "");
}

TEST_F(RecordWriterTest, CloseMayBeRepeated) {
  RecordWriter file("a.dat");
  file.close();
  fs::remove("a.dat");
  file.close();
  EXPECT_EQ(filesHere(), Names{});
}

TEST_F(RecordWriterTest, WritingAfterCloseIsAMistake) {
  RecordWriter file("a.dat");
  file.close();
  EXPECT_THROW(file.write(kPipe), std::logic_error);
}

TEST_F(RecordWriterTest, TwoWritersOfOneNameDoNotMix) {
  RecordWriter first("a.dat");
  RecordWriter second("a.dat");
  first.write(kPipe);
  second.write(kPipe);
  second.write(kPipe);
  first.close();
  second.close();
  EXPECT_EQ(readFile("a.dat"), std::string(kPipeLine) + kPipeLine);
  EXPECT_EQ(filesHere(), Names{"a.dat"});
}

TEST_F(RecordWriterTest, AMovedWriterGoesOn) {
  RecordWriter file("a.dat");
  file.write(kPipe);
  RecordWriter other(std::move(file));
  other.close();
  EXPECT_EQ(readFile("a.dat"), kPipeLine);
}

TEST_F(RecordWriterTest, AssigningDropsTheFileOfBefore) {
  RecordWriter file("a.dat");
  file.write(kPipe);
  RecordWriter other("b.dat");
  other = std::move(file);
  other.close();
  EXPECT_EQ(filesHere(), Names{"a.dat"});
}

TEST_F(RecordWriterTest, ANameInUtf8) {
  RecordWriter("l\u00fcfter.dat").close();
  EXPECT_TRUE(fs::exists(fs::path(u8"l\u00fcfter.dat")));
}

// What the system refuses names the file.

TEST_F(RecordWriterTest, AMissingFolderIsRefusedAtOnce) {
  EXPECT_EQ(refusalOf([] { RecordWriter("none/a.dat"); }, "none/a.dat"),
            std::errc::no_such_file_or_directory);
}

TEST_F(RecordWriterTest, AFolderIsRefusedAtOnce) {
  fs::create_directory("a.dat");
  EXPECT_EQ(refusalOf([] { RecordWriter("a.dat"); }, "a.dat"), std::errc::is_a_directory);
}

TEST_F(RecordWriterTest, AFolderThatCameMeanwhileIsRefusedByClose) {
  RecordWriter file("a.dat");
  file.write(kPipe);
  fs::create_directory("a.dat");
  EXPECT_TRUE(refusalOf([&] { file.close(); }, "a.dat"));
  EXPECT_TRUE(refusalOf([&] { file.close(); }, "a.dat")) << "and again";
}

TEST_F(RecordWriterTest, AFullDiskShowsInClose) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
  RecordWriter file("/dev/full");
  file.write(kPipe);
  EXPECT_EQ(refusalOf([&] { file.close(); }, "/dev/full"), std::errc::no_space_on_device);
  EXPECT_EQ(refusalOf([&] { file.write(kPipe); }, "/dev/full"), std::errc::no_space_on_device);
}

TEST_F(RecordWriterTest, AFullDiskShowsInTheWritesOfALargeFile) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
  RecordWriter file("/dev/full");
  const auto writeMany = [&] {
    for (int i = 0; i < 100000; ++i) file.write(kPipe);
  };
  EXPECT_EQ(refusalOf(writeMany, "/dev/full"), std::errc::no_space_on_device);
  EXPECT_EQ(refusalOf([&] { file.close(); }, "/dev/full"), std::errc::no_space_on_device);
}

TEST_F(RecordWriterTest, ALinkKeepsPointingToItsFile) {
  std::ofstream("real.dat") << "former\n";
  std::error_code error;
  fs::create_symlink("real.dat", "link.dat", error);
  if (error) GTEST_SKIP() << "no symbolic links";
  RecordWriter file("link.dat");
  file.write(kPipe);
  file.close();
  EXPECT_TRUE(fs::is_symlink("link.dat"));
  EXPECT_EQ(readFile("real.dat"), kPipeLine);
}

// Elements and headers that can't be written leave the file fit for the next.

TEST_F(RecordWriterTest, ATextThatDoesNotFitIsThrownAndNotWritten) {
  RecordWriter file("a.dat");
  const Txt text({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, 1, 2, 1, 0, std::string(513, 'x'));
  EXPECT_THROW(file.write(text), ExceptionInfo);
  EXPECT_EQ(file.write(kPipe), 1);
  file.close();
  EXPECT_EQ(readFile("a.dat"), kPipeLine);
}

// Of a kind that there is not.
class Sphere : public Cyl {
 public:
  std::int32_t typeCode() const override { return 10; }
};

TEST_F(RecordWriterTest, AnElementOfNoKindIsRefused) {
  RecordWriter file("a.dat");
  EXPECT_THROW(file.write(Sphere()), std::invalid_argument);
  EXPECT_THROW(file.write(RecordElement()), std::invalid_argument);
}

TEST_F(RecordWriterTest, AStyleThatThereIsNotIsRefused) {
  EXPECT_THROW(RecordWriter("a.dat", 4), std::invalid_argument);
  EXPECT_EQ(filesHere(), Names{});
}

struct HeaderCase {
  const char* name;
  std::string f1, f2;
  int number;
  const char* prefix;  // nullptr: refused
};
std::ostream& operator<<(std::ostream& os, const HeaderCase& c) { return os << c.name; }

const HeaderCase kHeaders[] = {
    {"PadsWithBlanks", "P-1", "A", 1, "P-1     A 001    00"},
    {"CutsToTheWidths", "123456789", "ABC", 46655, "12345678ABZZZ    00"},
    {"ControlsAreBlanks", "P\t1", "\n", 0, "P 1       000    00"},
    {"NegativeIsRefused", "P-1", "A", -1, nullptr},
    {"BeyondThreeDigitsIsRefused", "P-1", "A", 46656, nullptr},
};

class RecordWriterHeaderTest : public RecordWriterTest,
                               public testing::WithParamInterface<HeaderCase> {};

TEST_P(RecordWriterHeaderTest, IsWritten) {
  const HeaderCase& row = GetParam();
  RecordWriter file("a.dat");
  const auto set = [&] { file.setHeader(row.f1, row.f2, row.number); };
  if (row.prefix == nullptr) {
    EXPECT_THROW(set(), std::out_of_range);
  } else {
    set();
  }
  file.write(kPipe);
  file.close();
  const std::string blank(17, ' ');
  const std::string prefix = row.prefix == nullptr ? blank + "00" : row.prefix;
  EXPECT_EQ(readFile("a.dat"), prefix + "c 0 0 0,0 0 10,5\n");
}

INSTANTIATE_TEST_SUITE_P(All, RecordWriterHeaderTest, testing::ValuesIn(kHeaders),
                         [](const auto& row) { return row.param.name; });

TEST_F(RecordWriterTest, AllHeaderFieldsAreTaken) {
  HeaderFields header;
  header.f1.assign("P-1", true);
  header.f4.assign("XX", true);
  header.f6.assign("CS", true);
  RecordWriter file("a.dat");
  file.setHeader(header);
  file.write(kPipe);
  file.close();
  EXPECT_EQ(readFile("a.dat"), "P-1          XX  00c cs CS,0 0 0,0 0 10,5\n");
}

TEST_F(RecordWriterTest, WhatWasReadIsWrittenWithItsHeaderAndAttributes) {
  const std::string line = "P-1     A1001XXYY00c cs CS12,sp SPEC 7,0 0 0,0 0 10,5,ft 3,tk 4\n";
  std::ofstream("in.dat") << line;
  RecordFile in("in.dat");
  RecordWriter out("out.dat");
  while (in.next() == RecordFile::Found::kElement) out.write(in.element());
  out.close();
  EXPECT_EQ(readFile("out.dat"), line);
}

using RecordWriterBytesTest = ExportsFixture;

TEST_F(RecordWriterBytesTest, NumbersThatAreNoneAreWrittenAsTheExportsDo) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const double p[] = {nan, infinity, -infinity};
  vk_openVesk("a");
  vk_writeCyl(p, p, nan);
  RecordWriter file("b.dat");
  file.write(Cyl(p, p, nan));
  file.close();
  EXPECT_EQ(readFile("b.dat"), written("a"));
  EXPECT_NE(readFile("b.dat").find("00c nan inf -inf,"), std::string::npos);
}

}  // namespace
}  // namespace VeskTest
