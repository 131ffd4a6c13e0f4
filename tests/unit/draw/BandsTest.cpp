// SPDX-License-Identifier: MIT
#include "draw/Bands.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace VeskTest {
namespace {

using Vesk::Bands;

TEST(BandsTest, EachBandIsDrawnOnce) {
  for (const int count : {0, 1, 2, 3, 100}) {
    std::vector<std::atomic<int>> drawn(static_cast<std::size_t>(count));
    Bands bands({});
    bands.run(count, [&] { return [&](int band) { ++drawn[static_cast<std::size_t>(band)]; }; });
    for (const std::atomic<int>& times : drawn) EXPECT_EQ(times, 1) << count;
  }
}

TEST(BandsTest, RowsMakeBands) {
  EXPECT_EQ(Vesk::bandsOf(1), 1);
  EXPECT_EQ(Vesk::bandsOf(Vesk::kBandRows), 1);
  EXPECT_EQ(Vesk::bandsOf(Vesk::kBandRows + 1), 2);
}

struct Interrupt {};

// One thread draws till it is told to stop; the other one, once both have begun,
// is interrupted.
TEST(BandsTest, WhatEndsOneThreadEndsAll) {
  const std::thread::id caller = std::this_thread::get_id();
  std::atomic<int> begun = 0;
  Bands bands([&] {
    if (begun == 2) throw Interrupt();
  });
  EXPECT_THROW(bands.run(2,
                         [&] {
                           return [&](int) {
                             ++begun;
                             for (;;) bands.check();
                           };
                         }),
               Interrupt);
  EXPECT_EQ(begun, 2);
  EXPECT_EQ(std::this_thread::get_id(), caller);
}

// A fault of another thread than the caller's comes to the caller.
TEST(BandsTest, FaultsOfOtherThreadsAreThrown) {
  const std::thread::id caller = std::this_thread::get_id();
  Bands bands({});
  EXPECT_THROW(bands.run(2,
                         [&] {
                           return [&](int) {
                             if (std::this_thread::get_id() != caller) throw Interrupt();
                             for (;;) bands.check();
                           };
                         }),
               Interrupt);
}

}  // namespace
}  // namespace VeskTest
