// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_MEASURE_H
#define VESK_BENCH_MEASURE_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace VeskBench {

// The processor's time for this process, the system's part too, in nanoseconds:
// what others do on the machine counts less in it than in the clock's time.
double processorTime();

// The peak of the resident memory in KiB, 0 where the system does not tell.
long peakMemory();

// One way to do the work, and its times in nanoseconds an element.
struct Rival {
  std::string name;
  std::function<void()> run;
  std::vector<double> times{};

  double middle() const;
  double least() const;
};

// Each round runs every rival once, on `count` elements.
void runAll(std::vector<Rival>& rivals, std::size_t count, int rounds);

// Times, with `bytes` an element also MB/s, and ratios to the first rival.
void printTable(const char* title, const std::vector<Rival>& rivals, double bytes = 0.0);

// A new folder beside the system's temporary files, which is the current one
// until it is removed at the end.
class WorkFolder {
 public:
  WorkFolder();
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

 private:
  std::filesystem::path path_;
};

}  // namespace VeskBench

#endif
