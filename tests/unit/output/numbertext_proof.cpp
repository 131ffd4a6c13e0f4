// SPDX-License-Identifier: MIT
// Compares the number text of many values with the C library and with
// std::to_chars: numbertext_proof [COUNT [FIRST]], by custom 10 million from 0.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "output/NumberTextSweep.h"

int main(int argc, char** argv) {
  constexpr std::uint64_t kChunk = 10000000;
  const std::uint64_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : kChunk;
  const std::uint64_t first = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 0;
  for (std::uint64_t done = 0; done < count; done += kChunk) {
    const std::uint64_t end = std::min(done + kChunk, count);
    const std::string difference = VeskTest::firstDifference(first + done, first + end);
    if (!difference.empty()) {
      std::fprintf(stderr, "%s\n", difference.c_str());
      return 1;
    }
    std::printf("%llu values agree\n", static_cast<unsigned long long>(end));
    std::fflush(stdout);
  }
  return 0;
}
