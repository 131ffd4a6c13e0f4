// SPDX-License-Identifier: MIT
#include "output/OutFile.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <new>
#include <ostream>
#include <string>
#include <system_error>
#include <type_traits>

#include "api/ElementHolder.h"
#include "support/FailingAllocation.h"
#include "support/TempFolder.h"
#include "support/Text.h"
#include "vesk/Cyl.h"
#include "vesk/GeEx.h"
#include "vesk/Pgon.h"
#include "vesk/Relb.h"
#include "vesk/Txt.h"

using namespace Vesk;
using VeskTest::FailingAllocation;
using VeskTest::joined;
using VeskTest::readFile;

namespace {

const Cyl kCyl({0, 0, 0}, {0, 0, 10}, 2);

// kCyl under a blank header.
constexpr const char* kCylLine = "                 00c 0 0 0,0 0 10,2";

class OutFileTest : public testing::Test {
 protected:
  int write(const Geo& g) {
    holder.setElement(g);
    return file.writeElement(holder);
  }

  // What the file holds once it is closed.
  std::string written(const char* name = "out.dat") {
    file.close();
    return readFile(name);
  }

  VeskTest::TempFolder folder;
  ElementHolder holder;
  OutFile file;
};

Txt textOf(std::size_t length) {
  return Txt({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, 1, 2, 1, 0, std::string(length, 'a'));
}

struct OpenCase {
  int mode;
  std::uint32_t lineSize;

  friend std::ostream& operator<<(std::ostream& out, const OpenCase& row) {
    return out << "mode " << row.mode;
  }
};

TEST_F(OutFileTest, OpenSetsModeLineSizeAndDecimals) {
  for (const OpenCase& row : {OpenCase{2, 256}, OpenCase{3, 512}, OpenCase{0, 512},
                              OpenCase{1, 512}, OpenCase{99, 512}}) {
    SCOPED_TRACE(row);
    Output& out = file.output();
    out.valueDecimals = 1;
    out.pointDecimals = 1;
    out.lineSize = 0;
    ASSERT_TRUE(file.open("out.dat", row.mode));
    EXPECT_EQ(out.mode, row.mode);
    EXPECT_EQ(out.format, row.mode);
    EXPECT_EQ(out.lineSize, row.lineSize);
    EXPECT_EQ(out.valueDecimals, 6);
    EXPECT_EQ(out.pointDecimals, 4);
  }
}

TEST_F(OutFileTest, OpenEmptiesTheFile) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  write(kCyl);
  ASSERT_TRUE(file.open("out.dat", kTokens));
  EXPECT_TEXT(written(), "");
}

TEST_F(OutFileTest, OpenWithAppendAddsToTheFile) {
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(file.open("out.dat", kTokens, true));
    EXPECT_EQ(write(kCyl), 1);
  }
  EXPECT_TEXT(written(), joined({kCylLine, kCylLine}));
}

TEST_F(OutFileTest, OpenClosesTheOpenFileFirst) {
  ASSERT_TRUE(file.open("first.dat", kTokens));
  write(kCyl);
  ASSERT_TRUE(file.open("second.dat", kTokens));
  EXPECT_TEXT(readFile("first.dat"), joined({kCylLine}));
}

TEST_F(OutFileTest, AFailedOpenHasClosedTheFileAndChangesNothingElse) {
  for (const char* name : {"no/such/folder/out.dat", static_cast<const char*>(nullptr), ""}) {
    ASSERT_TRUE(file.open("out.dat", kFixedColumns));
    EXPECT_FALSE(file.open(name, kTokens));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.output().mode, kFixedColumns);
    EXPECT_EQ(file.output().format, kFixedColumns);
    EXPECT_EQ(file.output().lineSize, 256u);
  }
}

TEST_F(OutFileTest, CloseMayBeRepeated) {
  file.close();
  ASSERT_TRUE(file.open("out.dat", kTokens));
  file.close();
  EXPECT_FALSE(file.isOpen());
  file.close();
  EXPECT_FALSE(file.isOpen());
}

TEST_F(OutFileTest, TheDestructorClosesTheFile) {
  {
    OutFile other;
    ASSERT_TRUE(other.open("out.dat", kTokens));
    holder.setElement(kCyl);
    EXPECT_EQ(other.writeElement(holder), 1);
  }
  EXPECT_TEXT(readFile("out.dat"), joined({kCylLine}));
  EXPECT_TRUE(std::has_virtual_destructor_v<OutFile>);
}

TEST_F(OutFileTest, EveryLineIsFollowedByANewline) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  EXPECT_EQ(write(textOf(2)), 2);
  EXPECT_EQ(write(kCyl), 1);
  EXPECT_TEXT(written(), joined({"                 00x 0 0 0,1 0 0,0 1 0,2,1,1,2",  //
                                 "                 01x aa",                         //
                                 kCylLine}));
}

TEST_F(OutFileTest, AnInvalidHolderGivesZeroAndKeepsTheLinesBefore) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  write(kCyl);
  holder.reset();
  file.output().counter = 7;
  EXPECT_EQ(file.writeElement(holder), 0);
  EXPECT_EQ(file.output().counter, 7);
  EXPECT_TEXT(joined(file.records()), joined({kCylLine}));
  EXPECT_TEXT(written(), joined({kCylLine}));
}

TEST_F(OutFileTest, TheCounterIsZeroBeforeEveryElement) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  file.output().counter = 7;
  write(kCyl);
  EXPECT_EQ(file.output().counter, 0);
}

TEST_F(OutFileTest, AnElementThatWritesNothingPrintsNothing) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  write(kCyl);
  file.output().mode = 9;
  EXPECT_EQ(write(kCyl), 0);
  EXPECT_TRUE(file.records().empty());
  EXPECT_TEXT(written(), joined({kCylLine}));
}

// An ExceptionInfo

TEST_F(OutFileTest, ATokenTooLongPrintsTheLinesBeforeIt) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  EXPECT_EQ(write(textOf(513)), 1);
  EXPECT_EQ(write(kCyl), 1);
  EXPECT_TEXT(written(), joined({"                 00x 0 0 0,1 0 0,0 1 0,2,1,1,513", kCylLine}));
}

TEST_F(OutFileTest, ATokenTooLongPrintsTheLinesBeforeItInFixedColumns) {
  ASSERT_TRUE(file.open("out.dat", kFixedColumns));
  EXPECT_EQ(write(textOf(257)), 2);
  const std::string text = written();
  EXPECT_EQ(text.substr(0, 2), "70");
  const std::size_t second = text.find('\n') + 1;
  EXPECT_EQ(text.substr(second, 2), "71");
  EXPECT_EQ(text.find('\n', second), text.size() - 1);
}

TEST_F(OutFileTest, AFailureOnTheFirstLineGivesZero) {
  ASSERT_TRUE(file.open("out.dat", kTokens));
  EXPECT_EQ(write(Pgon{{0, 0, 0}, {1, 0, 0}}), 0);
  EXPECT_EQ(write(kCyl), 1);
  EXPECT_TEXT(written(), joined({kCylLine}));
}

TEST_F(OutFileTest, ALineSizeTooSmallForAnyLineGivesZero) {
  for (const std::uint32_t lineSize : {0u, 1u, 18u, 19u, 20u}) {
    ASSERT_TRUE(file.open("out.dat", kTokens));
    file.output().lineSize = lineSize;
    EXPECT_EQ(write(kCyl), 0) << "line size " << lineSize;
    EXPECT_TRUE(file.records().empty());
  }
  for (const std::uint32_t lineSize : {0u, 1u, 20u, 21u, 22u, 23u}) {
    ASSERT_TRUE(file.open("out.dat", kFixedColumns));
    file.output().lineSize = lineSize;
    EXPECT_EQ(write(kCyl), 0) << "line size " << lineSize;
    EXPECT_TRUE(file.records().empty());
  }
}

// Any other exception

TEST_F(OutFileTest, AKernelExceptionPassesAndTheNextElementIsWhole) {
  ASSERT_TRUE(file.open("out.dat", kFixedColumns));
  write(kCyl);
  const Relb collinear;
  holder.setElement(collinear);
  EXPECT_THROW(file.writeElement(holder), GeEx::NullDir);
  EXPECT_TRUE(holder.isValid());
  EXPECT_TRUE(file.isOpen());
  EXPECT_EQ(write(kCyl), 1);
  const std::string line = "60" + std::string(19, ' ') +
                           "CYL    0.000    0.000    0.000    0.000    0.000   10.000    2.000";
  EXPECT_TEXT(written(), joined({line, line}));
}

TEST_F(OutFileTest, LackOfMemoryPassesAndTheNextElementIsWhole) {
  int failures = 0;
  for (bool happened = true; happened; ++failures) {
    ASSERT_LT(failures, 1000);
    OutFile fresh;
    ASSERT_TRUE(fresh.open("out.dat", kTokens));
    holder.setElement(textOf(300));
    {
      const FailingAllocation failing(failures + 1);
      try {
        fresh.writeElement(holder);
        happened = failing.happened();
      } catch (const std::bad_alloc&) {
      }
    }
    if (!happened) break;
    holder.setElement(kCyl);
    EXPECT_EQ(fresh.writeElement(holder), 1);
    fresh.close();
    EXPECT_TEXT(readFile("out.dat"), joined({kCylLine})) << "allocation " << failures + 1;
  }
  EXPECT_GT(failures, 3);
}

// No file

TEST_F(OutFileTest, WithoutAFileLinesAreAssembledButNotCounted) {
  file.output().mode = kTokens;
  EXPECT_EQ(write(kCyl), 0);
  EXPECT_TEXT(joined(file.records()), joined({kCylLine}));
}

// What the system refuses

TEST_F(OutFileTest, WithoutAFailureThereIsNoError) {
  EXPECT_FALSE(file.error());
  EXPECT_TRUE(file.close());
  ASSERT_TRUE(file.open("out.dat", kTokens));
  write(kCyl);
  errno = ERANGE;
  EXPECT_TRUE(file.close());
  EXPECT_EQ(errno, ERANGE);
  EXPECT_FALSE(file.error());
}

TEST_F(OutFileTest, AFailedOpenGivesItsReasonUntilTheNextOpen) {
  EXPECT_FALSE(file.open("no/such/folder/out.dat", kTokens));
  EXPECT_EQ(file.error(), std::errc::no_such_file_or_directory);
  EXPECT_FALSE(file.close());
  EXPECT_EQ(write(kCyl), 0);
  EXPECT_FALSE(file.open(nullptr, kTokens));
  EXPECT_EQ(file.error(), std::errc::invalid_argument);
  ASSERT_TRUE(file.open("out.dat", kTokens));
  EXPECT_FALSE(file.error());
}

#ifndef _WIN32
// A new file that refuses every byte with ENOSPC, if the system has such a thing.
bool makeFullDisk(const char* name) {
  std::error_code error;
  std::filesystem::create_symlink("/dev/full", name, error);
  return !error && std::filesystem::exists(name);
}

TEST_F(OutFileTest, AFullDiskShowsInTheClose) {
  if (!makeFullDisk("out.dat")) GTEST_SKIP() << "no /dev/full";
  ASSERT_TRUE(file.open("out.dat", kTokens));
  EXPECT_EQ(write(kCyl), 1);
  EXPECT_FALSE(file.error());  // all is in the buffer
  errno = 0;
  EXPECT_FALSE(file.close());
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_EQ(file.error(), std::errc::no_space_on_device);
  errno = 0;
  EXPECT_FALSE(file.close());
  EXPECT_EQ(errno, 0);
  ASSERT_TRUE(file.open("other.dat", kTokens));
  EXPECT_FALSE(file.error());
}

TEST_F(OutFileTest, AFullDiskShowsInAWriteOfALargeFile) {
  if (!makeFullDisk("out.dat")) GTEST_SKIP() << "no /dev/full";
  ASSERT_TRUE(file.open("out.dat", kTokens));
  int elements = 0;
  for (; !file.error() && elements < 100000; ++elements) EXPECT_EQ(write(kCyl), 1);
  EXPECT_LT(elements, 100000);
  EXPECT_EQ(file.error(), std::errc::no_space_on_device);
  EXPECT_EQ(write(kCyl), 1);
  EXPECT_FALSE(file.close());
}

// The limit is lifted while the file is open: only the writes in between are
// refused, the last ones and the close are not.
TEST_F(OutFileTest, TheFirstFailureIsKeptWhenTheNextWritesSucceed) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit former{};
  getrlimit(RLIMIT_FSIZE, &former);
  rlimit small = former;
  small.rlim_cur = 1000;
  ASSERT_TRUE(file.open("out.dat", kTokens));
  setrlimit(RLIMIT_FSIZE, &small);
  for (int i = 0; !file.error() && i < 100000; ++i) write(kCyl);
  setrlimit(RLIMIT_FSIZE, &former);
  std::signal(SIGXFSZ, SIG_DFL);
  for (int i = 0; i < 20000; ++i) write(kCyl);
  EXPECT_FALSE(file.close());
  EXPECT_EQ(file.error(), std::errc::file_too_large);
  EXPECT_GT(std::filesystem::file_size("out.dat"), 1000u);
}
#endif

// The list of lines

TEST_F(OutFileTest, SetRecordsCopiesTheLinesAndResetsTheCounter) {
  file.output().counter = 7;
  file.records().push_back("old");
  const Recs lines = {"a", "", "b"};
  EXPECT_EQ(file.setRecords(lines), 3);
  EXPECT_EQ(file.output().counter, 0);
  EXPECT_EQ(joined(file.records()), joined({"a", "", "b"}));
  EXPECT_EQ(file.setRecords(Recs()), 0);
  EXPECT_TRUE(file.records().empty());
  EXPECT_EQ(lines.size(), 3u);
}

TEST_F(OutFileTest, SetRecordsWithItsOwnListKeepsIt) {
  file.setRecords({"a", "b"});
  file.output().counter = 7;
  EXPECT_EQ(file.setRecords(file.records()), 2);
  EXPECT_EQ(file.output().counter, 0);
  EXPECT_EQ(joined(file.records()), joined({"a", "b"}));
}

TEST_F(OutFileTest, TheBaseReachesTheFile) {
  FileBase& base = file;
  ASSERT_TRUE(base.open("out.dat", kTokens));
  EXPECT_EQ(base.setRecords({"a"}), 1);
  EXPECT_EQ(&base.records(), &file.output().recs);
  base.close();
  EXPECT_FALSE(file.isOpen());
}

}  // namespace
