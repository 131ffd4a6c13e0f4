// SPDX-License-Identifier: MIT
#include "terminal/Progress.h"

#include <algorithm>
#include <cmath>

#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr double kInterval = 0.1;      // seconds between two updates
constexpr double kWorthShowing = 0.5;  // seconds that a shown task takes
constexpr double kMega = 1e6;

}  // namespace

void Progress::expect(std::uint64_t bytes) {
  const std::lock_guard lock(mutex_);
  total_ += bytes;
}

void Progress::expectUnknown() {
  const std::lock_guard lock(mutex_);
  unknown_ = true;
}

void Progress::advance(std::uint64_t bytes) {
  if (mode_ == Mode::kNever) return;
  const std::lock_guard lock(mutex_);
  done_ += bytes;
  const Clock::time_point now = Clock::now();
  if (std::chrono::duration<double>(now - last_).count() < kInterval) return;
  last_ = now;
  show(std::chrono::duration<double>(now - start_).count());
}

void Progress::enter(std::string_view what) {
  constexpr double kMuch = 0.2;  // seconds of reading
  clear();
  const std::lock_guard lock(mutex_);
  const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  if (mode_ == Mode::kNever || seconds < kMuch) return;
  std::string text;
  if (mode_ == Mode::kJson) {
    text = "{\"schema\":\"vesk.progress/1\",\"bytes\":" + std::to_string(done_) +
           ",\"bytesPerSecond\":";
    appendRounded(text, static_cast<double>(done_) / seconds, 0);
    text.append(",\"doing\":\"").append(what).append("\"}\n");
  } else {
    text = '\r' + task_ + ": ";
    text.append(what).append(" ...");
    shown_ = text.size() - 1;
    setDrawnColumns(shown_);
  }
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

void Progress::clear() {
  const std::lock_guard lock(mutex_);
  if (shown_ == 0) return;
  const std::string over = '\r' + std::string(shown_, ' ') + '\r';
  std::fwrite(over.data(), 1, over.size(), stderr);
  std::fflush(stderr);
  shown_ = 0;
  setDrawnColumns(0);
}

void Progress::show(double seconds) {
  std::string text;
  if (mode_ == Mode::kJson) {
    text = jsonOf(seconds);
  } else {
    if (seconds + std::max(secondsLeft(seconds), 0.0) < kWorthShowing) return;
    std::string line = lineOf(seconds);
    const std::size_t room = static_cast<std::size_t>(std::max(terminalWidth(stderr), 2)) - 1;
    if (line.size() > room) line.resize(room);
    const std::size_t columns = line.size();
    if (columns < shown_) line.append(shown_ - columns, ' ');
    shown_ = columns;
    setDrawnColumns(shown_);
    text = '\r' + line;
  }
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

// Below 0 when nobody knows.
double Progress::secondsLeft(double seconds) const {
  if (unknown_ || done_ == 0 || total_ < done_) return -1.0;
  return seconds * static_cast<double>(total_ - done_) / static_cast<double>(done_);
}

std::string Progress::lineOf(double seconds) const {
  const double done = static_cast<double>(done_);
  std::string text = task_ + ": ";
  const double left = secondsLeft(seconds);
  if (left >= 0.0) {
    appendRounded(text, std::floor(100.0 * done / static_cast<double>(total_)), 0);
    text += " %, ";
  }
  appendRounded(text, done / kMega, 1);
  if (left >= 0.0) {
    text += " of ";
    appendRounded(text, static_cast<double>(total_) / kMega, 1);
  }
  text += " MB, ";
  appendRounded(text, done / kMega / seconds, 0);
  text += " MB/s";
  if (left >= 0.0) {
    text += ", ";
    appendRounded(text, std::ceil(left), 0);
    text += " s left";
  }
  return text;
}

std::string Progress::jsonOf(double seconds) const {
  std::string text = "{\"schema\":\"vesk.progress/1\",\"bytes\":" + std::to_string(done_);
  const double left = secondsLeft(seconds);
  if (left >= 0.0) text += ",\"total\":" + std::to_string(total_);
  text += ",\"bytesPerSecond\":";
  appendRounded(text, static_cast<double>(done_) / seconds, 0);
  if (left >= 0.0) {
    text += ",\"secondsLeft\":";
    appendRounded(text, left, 1);
  }
  return text + "}\n";
}

}  // namespace VeskTool
