// SPDX-License-Identifier: MIT
#include "tiles/Spill.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace VeskTest {
namespace {

// Entries of all lengths: empty ones, and one that is longer than what is read at once.
std::string entry(std::size_t i) {
  return std::string(i == 500 ? 900000 : i * 37 % 5000, static_cast<char>('a' + i % 26));
}

void fill(VeskTool::Spill& spill, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) spill.add(entry(i));
}

void expectEntries(VeskTool::Spill& spill, std::size_t count) {
  std::size_t next = 0;
  spill.forEach([&next](std::string_view each) { ASSERT_EQ(each, entry(next++)); });
  EXPECT_EQ(next, count);
}

// 40 entries are 30 KB, 2,000 are 6 MB.
TEST(SpillTest, GivesWhatItGotInItsOrder) {
  const TempFolder folder;
  for (const std::size_t count : {0U, 1U, 40U, 2000U}) {
    VeskTool::Spill spill("waiting");
    fill(spill, count);
    EXPECT_EQ(std::filesystem::exists("waiting"), count == 2000U);
    expectEntries(spill, count);
    expectEntries(spill, count);
  }
  EXPECT_FALSE(std::filesystem::exists("waiting"));
}

TEST(SpillTest, GoesOnBehindARest) {
  const TempFolder folder;
  VeskTool::Spill spill("waiting");
  for (std::size_t i = 0; i < 2000; ++i) {
    spill.add(entry(i));
    if (i % 300 == 0) spill.rest();
  }
  expectEntries(spill, 2000);
  spill.clear();
  EXPECT_FALSE(std::filesystem::exists("waiting"));
  expectEntries(spill, 0);
}

}  // namespace
}  // namespace VeskTest
