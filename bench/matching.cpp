// SPDX-License-Identifier: MIT
// How the time to match two lists of points grows with their length:
//
//   matching [MOST]      by custom 1,600

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "Measure.h"
#include "ge/PointMatch.h"
#include "vesk/GePoint.h"

namespace {

std::vector<GePoint> randomPoints(std::mt19937_64& random, std::size_t n) {
  const auto coordinate = [&random] { return static_cast<double>(random() % 1000000) / 1000.0; };
  std::vector<GePoint> points(n);
  for (GePoint& p : points) p = {coordinate(), coordinate(), coordinate()};
  return points;
}

struct Lists {
  std::vector<GePoint> first;
  std::vector<GePoint> second;
};

// The same points, turned backwards.
Lists reversed(std::mt19937_64& random, std::size_t n) {
  Lists lists;
  lists.first = randomPoints(random, n);
  lists.second.assign(lists.first.rbegin(), lists.first.rend());
  return lists;
}

// Points that have nothing to do with each other.
Lists unrelated(std::mt19937_64& random, std::size_t n) {
  return {randomPoints(random, n), randomPoints(random, n)};
}

// All on two places, so that every distance is one of two.
Lists crowded(std::mt19937_64& random, std::size_t n) {
  Lists lists;
  for (std::vector<GePoint>* list : {&lists.first, &lists.second}) {
    for (std::size_t i = 0; i < n; ++i) {
      list->push_back({random() % 2 == 0 ? 0.0 : 1.0, 0.0, 0.0});
    }
  }
  return lists;
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t most = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : std::size_t{1600};
  const struct {
    const char* name;
    Lists (*make)(std::mt19937_64&, std::size_t);
  } kCases[] = {{"reversed", reversed}, {"unrelated", unrelated}, {"crowded", crowded}};

  std::printf("\n| points | n | ms | ns / n^2 | ns / n^3 |\n|---|---:|---:|---:|---:|\n");
  for (const auto& each : kCases) {
    std::mt19937_64 random;
    for (std::size_t n = 100; n <= most; n *= 2) {
      const Lists lists = each.make(random, n);
      double least = 1e300;
      for (int round = 0; round < 3; ++round) {
        const double start = VeskBench::processorTime();
        if (!Vesk::matchPoints(lists.first, lists.second)) return 1;
        least = std::min(least, VeskBench::processorTime() - start);
      }
      const double size = static_cast<double>(n);
      std::printf("| %s | %zu | %.2f | %.1f | %.3f |\n", each.name, n, least / 1e6,
                  least / (size * size), least / (size * size * size));
    }
  }
  return 0;
}
