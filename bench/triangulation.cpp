// SPDX-License-Identifier: MIT
// How the time of a triangulation grows with the vertices: triangulation [MOST]

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <vector>

#include "prims/EarClipper.h"
#include "vesk/GePoint.h"

namespace {

constexpr double kTurn = 6.283185307179586;

double part(std::size_t i, std::size_t n) {
  return static_cast<double>(i) / static_cast<double>(n);
}

GePoint polar(double radius, double turns) {
  return {radius * std::cos(kTurn * turns), radius * std::sin(kTurn * turns), 0.0};
}

std::vector<GePoint> star(std::size_t n) {
  std::vector<GePoint> points;
  for (std::size_t i = 0; i < n; ++i)
    points.push_back(polar(i % 2 == 0 ? 1000.0 : 400.0, part(i, n)));
  return points;
}

// A back with n / 2 teeth.
std::vector<GePoint> comb(std::size_t n) {
  std::vector<GePoint> points{{static_cast<double>(n), -100.0, 0.0}, {0.0, -100.0, 0.0}};
  std::reverse(points.begin(), points.end());
  for (std::size_t i = n - 2; i-- > 0;) {
    points.push_back({static_cast<double>(i) + 1.0, i % 2 == 0 ? 0.0 : 100.0, 0.0});
  }
  return points;
}

// A band of ten turns, out on one side and back on the other.
std::vector<GePoint> spiral(std::size_t n) {
  std::vector<GePoint> points;
  const std::size_t half = n / 2;
  for (std::size_t i = 0; i < half; ++i) {
    points.push_back(polar(100.0 + 1000.0 * part(i, half), 10.0 * part(i, half)));
  }
  for (std::size_t i = half; i-- > 0;) {
    points.push_back(polar(150.0 + 1000.0 * part(i, half), 10.0 * part(i, half)));
  }
  return points;
}

// Random radii in the order of their angles: simple, for every ray from the
// middle meets it once.
std::vector<GePoint> random(std::size_t n) {
  std::mt19937_64 generator;
  std::vector<GePoint> points;
  for (std::size_t i = 0; i < n; ++i) {
    points.push_back(polar(100.0 + static_cast<double>(generator() % 900000) / 1000.0, part(i, n)));
  }
  return points;
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t most = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : std::size_t{1000000};
  constexpr std::size_t kLeast = 1000;
  const struct {
    const char* name;
    std::vector<GePoint> (*make)(std::size_t);
  } kShapes[] = {{"star", star}, {"comb", comb}, {"spiral", spiral}, {"random", random}};

  std::printf(
      "\n| polygon | vertices | triangles | ms | ns / (n log2 n) |\n|---|---:|---:|---:|---:|\n");
  for (const auto& shape : kShapes) {
    for (std::size_t n = kLeast; n <= most; n *= 10) {
      const std::vector<GePoint> points = shape.make(n);
      double least = 1e300;
      std::size_t triangles = 0;
      for (std::size_t round = 0; round < (n < 100000 ? 5 : 2); ++round) {
        const std::clock_t start = std::clock();
        triangles = Vesk::clipEars(points).size();
        least = std::min(least, static_cast<double>(std::clock() - start) * (1e9 / CLOCKS_PER_SEC));
      }
      const double size = static_cast<double>(n);
      std::printf("| %s | %zu | %zu | %.2f | %.1f |\n", shape.name, n, triangles, least / 1e6,
                  least / (size * std::log2(size)));
    }
  }
  return 0;
}
