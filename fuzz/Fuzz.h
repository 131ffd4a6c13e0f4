// SPDX-License-Identifier: MIT
#ifndef VESK_FUZZ_FUZZ_H
#define VESK_FUZZ_FUZZ_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

// What every harness has: the entry that libFuzzer and the replay call with one
// input after the other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace VeskFuzz {

// Ends the program with a message unless the promise is kept.
inline void check(bool kept, const char* promise, const std::string& detail = {}) {
  if (kept) return;
  std::fprintf(stderr, "broken: %s\n%s\n", promise, detail.c_str());
  std::abort();
}

// Takes an input apart. Behind its end all is 0.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool empty() const { return at_ >= size_; }

  std::uint8_t byte() { return empty() ? std::uint8_t{0} : data_[at_++]; }

  // 0 to n - 1, n at most 256.
  int below(int n) { return byte() % n; }

  std::uint64_t bits() {
    std::uint64_t value = 0;
    for (int i = 0; i < 8; ++i) value = value << 8 | byte();
    return value;
  }

  std::int32_t integer() { return static_cast<std::int32_t>(bits() >> 32); }

  // Mostly a small number with some decimals, sometimes any double.
  double number() {
    constexpr double kSpecial[] = {0.0,
                                   -0.0,
                                   1e300,
                                   -1e300,
                                   1e-300,
                                   1e15,
                                   1e16,
                                   0.5,
                                   99999999.5,
                                   9999.999,
                                   std::numeric_limits<double>::infinity(),
                                   5e-324};
    const int choice = below(8);
    if (choice == 0) return std::bit_cast<double>(bits());
    if (choice == 1) return kSpecial[static_cast<std::size_t>(below(12))];
    const int whole = (below(256) - 128) * 256 + below(256);
    constexpr double kScales[] = {1, 1, 10, 100, 1000, 1000000};
    return whole / kScales[choice - 2];
  }

  // Up to `most` bytes, as they come.
  std::string text(std::size_t most) {
    std::string taken;
    for (std::size_t left = byte() % (most + 1); left > 0 && !empty(); --left)
      taken += static_cast<char>(byte());
    return taken;
  }

  // All that is left.
  std::string rest() {
    std::string taken(reinterpret_cast<const char*>(data_) + at_, empty() ? 0 : size_ - at_);
    at_ = size_;
    return taken;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

}  // namespace VeskFuzz

#endif
