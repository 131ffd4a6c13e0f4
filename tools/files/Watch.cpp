// SPDX-License-Identifier: MIT
#include "files/Watch.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>
#include <tuple>

#include "files/Files.h"
#include "terminal/Terminal.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kLook{100};
constexpr int kLooksAtRest = 5;

// What a file is known by: its name, when it was written, its size.
using Stamps = std::vector<std::tuple<std::string, fs::file_time_type, std::uintmax_t>>;

Stamps stampsOf(const std::vector<std::string>& words) {
  Stamps stamps;
  try {
    for (const std::string& file : expandFiles(words)) {
      std::error_code error;
      const fs::path path = pathOf(file);
      const fs::file_time_type time = fs::last_write_time(path, error);
      const std::uintmax_t size = fs::file_size(path, error);
      stamps.emplace_back(file, time, size);
    }
  } catch (const Failure&) {
    // A folder that is being made anew has nothing in it.
  }
  return stamps;
}

void waitFor(const std::vector<std::string>& words, Stamps& known) {
  int rests = 0;
  Stamps last = known;
  while (last == known || rests < kLooksAtRest) {
    std::this_thread::sleep_for(kLook);
    checkInterrupt();
    Stamps now = stampsOf(words);
    rests = now == last ? rests + 1 : 0;
    last = std::move(now);
  }
  known = std::move(last);
}

}  // namespace

void watchFiles(const std::vector<std::string>& words, Session& session,
                const std::function<void()>& work) {
  if (std::find(words.begin(), words.end(), "-") != words.end()) {
    throw Failure(Exit::kUsage, "--watch is for files, not for the standard input");
  }
  Stamps known = stampsOf(words);
  work();
  for (;;) {
    session.sayRest();
    session.out().flush();
    waitFor(words, known);
    try {
      work();
    } catch (const Failure& failure) {
      if (failure.exit == Exit::kUsage) throw;
      session.error(failure.what(), failure.hint);
    }
  }
}

}  // namespace VeskTool
