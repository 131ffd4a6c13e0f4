// SPDX-License-Identifier: MIT
#include "draw/Bands.h"

#include <algorithm>
#include <vector>

namespace Vesk {
namespace {

// More gain little, and each has a band in memory. On one core two do no harm.
constexpr unsigned kFewestThreads = 2;
constexpr unsigned kMostThreads = 4;

}  // namespace

void Bands::run(int count, const std::function<std::function<void(int)>()>& make) {
  next_ = 0;
  const unsigned cores =
      std::clamp(std::thread::hardware_concurrency(), kFewestThreads, kMostThreads);
  const auto most = static_cast<unsigned>(std::max(1, count));
  std::vector<std::thread> others(std::min(cores, most) - 1);
  for (std::thread& each : others) each = std::thread([&] { work(count, make); });
  work(count, make);
  for (std::thread& each : others) each.join();
  if (failure_) std::rethrow_exception(failure_);
}

void Bands::work(int count, const std::function<std::function<void(int)>()>& make) {
  try {
    const std::function<void(int)> draw = make();
    for (int band = next_++; band < count; band = next_++) {
      check();
      draw(band);
    }
  } catch (const Stopped&) {
    // Another one has told why.
  } catch (...) {
    const std::lock_guard lock(mutex_);
    if (!failure_) failure_ = std::current_exception();
    isStopped_ = true;
  }
}

}  // namespace Vesk
