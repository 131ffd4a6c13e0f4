// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_PROGRESS_H
#define VESK_TOOLS_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>

namespace VeskTool {

// Shows on standard error how far the reading has come, by bytes:
//
//   vesk info:  42 %, 113.4 of 270.1 MB, 211 MB/s, 1 s left
//
// Nothing is shown before a tenth of a second has passed and unless more than
// half a second in all is expected; then ten times a second at most. Threads
// may share one.
class Progress {
 public:
  enum class Mode {
    kNever,
    kLine,  // one line that is drawn over and cleared at the end
    kJson,  // a JSON document on each line, from the first tenth of a second on
  };

  Progress(std::string task, Mode mode) : task_(std::move(task)), mode_(mode) {}
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // Adds bytes that will be read; never called for inputs of unknown size.
  void expect(std::uint64_t bytes);

  // Says that there are inputs of unknown size: no total is shown then.
  void expectUnknown();

  void advance(std::uint64_t bytes);

  // Says what is done from now on, of which nobody knows how long it takes: "searching".
  // Shown if there was much to read.
  void enter(std::string_view what);

  // Takes the line away, before other text goes to standard error.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  void show(double seconds);
  std::string lineOf(double seconds) const;
  std::string jsonOf(double seconds) const;
  double secondsLeft(double seconds) const;

  std::string task_;
  Mode mode_;
  std::mutex mutex_;
  std::uint64_t total_ = 0;
  std::uint64_t done_ = 0;
  bool unknown_ = false;
  std::size_t shown_ = 0;  // columns of the line that is drawn
  Clock::time_point start_ = Clock::now();
  Clock::time_point last_ = start_;
};

}  // namespace VeskTool

#endif
