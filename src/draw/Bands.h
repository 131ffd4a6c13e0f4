// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_BANDS_H
#define VESK_DRAW_BANDS_H

#include <atomic>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace Vesk {

// Rows of pixels that are drawn at once.
inline constexpr int kBandRows = 32;

// The bands of a picture of this height.
inline int bandsOf(int height) { return (height + kBandRows - 1) / kBandRows; }

// Draws the bands of a picture on all cores. Each band is the same whoever draws it.
class Bands {
 public:
  // `poll` is called often, on the thread of this object alone; what it throws ends
  // the drawing. May be empty.
  explicit Bands(std::function<void()> poll)
      : poll_(std::move(poll)), caller_(std::this_thread::get_id()) {}

  // Calls make() on each of some threads, and what that returns with numbers from 0
  // to below `count`, each once. Throws the first exception of any of them.
  void run(int count, const std::function<std::function<void(int)>()>& make);

  // To be called in long work on a band.
  void check() {
    if (isStopped_) throw Stopped();
    if (poll_ && std::this_thread::get_id() == caller_) poll_();
  }

 private:
  struct Stopped {};

  void work(int count, const std::function<std::function<void(int)>()>& make);

  std::function<void()> poll_;
  std::thread::id caller_;
  std::atomic<int> next_ = 0;
  std::atomic<bool> isStopped_ = false;
  std::mutex mutex_;
  std::exception_ptr failure_;
};

}  // namespace Vesk

#endif
