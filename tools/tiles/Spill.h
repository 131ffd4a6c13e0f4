// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_SPILL_H
#define VESK_TOOLS_TILES_SPILL_H

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "terminal/Terminal.h"

namespace VeskTool {

// A list of entries of bytes that is kept in memory as long as it is short, and then in
// a file, which goes with the object. The file is open only while the list is written or
// read. Throws a Failure with Exit::kOutput where the system refuses, Interrupted after
// Ctrl-C.
class Spill {
 public:
  // No such file is there.
  explicit Spill(std::filesystem::path file) : path_(std::move(file)) {}
  ~Spill() { clear(); }
  Spill(const Spill&) = delete;
  Spill& operator=(const Spill&) = delete;

  void add(std::string_view entry);

  // What is still to come, if anything, will be added later: closes the file.
  void rest();

  // Each entry in the order in which it was added.
  void forEach(const std::function<void(std::string_view entry)>& take);

  // Empty, and without a file, again.
  void clear() noexcept;

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  static constexpr std::size_t kMost = std::size_t{1} << 20;  // in memory

  [[noreturn]] void fail(int number) const;
  void flush();

  std::filesystem::path path_;
  std::unique_ptr<std::FILE, Closer> file_;
  HalfFile half_;
  bool isMade_ = false;
  std::string buffer_;  // what is not in the file
};

}  // namespace VeskTool

#endif
