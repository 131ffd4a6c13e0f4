// SPDX-License-Identifier: MIT
#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <system_error>

namespace VeskBench {

double processorTime() { return static_cast<double>(std::clock()) * (1e9 / CLOCKS_PER_SEC); }

long peakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::atol(line.c_str() + 6);
  }
  return 0;
}

double Rival::middle() const {
  std::vector<double> sorted = times;
  std::sort(sorted.begin(), sorted.end());
  return sorted[sorted.size() / 2];
}

double Rival::least() const { return *std::min_element(times.begin(), times.end()); }

void runAll(std::vector<Rival>& rivals, std::size_t count, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (Rival& rival : rivals) {
      const double start = processorTime();
      rival.run();
      rival.times.push_back((processorTime() - start) / static_cast<double>(count));
    }
  }
}

void printTable(const char* title, const std::vector<Rival>& rivals, double bytes) {
  const bool rates = bytes > 0.0;
  std::printf("\n| %s | ns an element | least |%s ratio |\n|---|---:|---:|%s---:|\n", title,
              rates ? " MB/s |" : "", rates ? "---:|" : "");
  for (const Rival& rival : rivals) {
    std::printf("| %s | %.1f | %.1f |", rival.name.c_str(), rival.middle(), rival.least());
    if (rates) std::printf(" %.0f |", 1e3 * bytes / rival.middle());
    std::printf(" %.2f |\n", rival.middle() / rivals.front().middle());
  }
}

WorkFolder::WorkFolder()
    : path_(std::filesystem::temp_directory_path() /
            ("vesk-bench-" +
             std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))) {
  std::filesystem::create_directory(path_);
  std::filesystem::current_path(path_);
}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  std::filesystem::current_path(path_.parent_path(), ignored);
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace VeskBench
