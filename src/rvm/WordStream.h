// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_WORDSTREAM_H
#define VESK_RVM_WORDSTREAM_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "rvm/ReviewModel.h"

namespace Vesk {

// The bytes of a file, one block in memory, with their place.
class WordStream {
 public:
  explicit WordStream(const ReadBytes& bytes) : bytes_(bytes), buffer_(kBlock) {}

  // The place of the next byte, from 0.
  std::uint64_t place() const { return blockPlace_ + at_; }

  // Whether so many bytes follow; at most kBlock.
  bool has(std::size_t count) { return size_ - at_ >= count || fill(count); }

  // The byte so far ahead, which must be there.
  unsigned char peek(std::size_t ahead) const {
    return static_cast<unsigned char>(buffer_[at_ + ahead]);
  }

  void skip(std::size_t count) { at_ += count; }

  // A big-endian word of 32 bits, which must be there.
  std::uint32_t word() {
    const auto byte = [this](std::size_t i) { return std::uint32_t{peek(i)}; };
    const std::uint32_t value = byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3);
    at_ += 4;
    return value;
  }

  static constexpr std::size_t kBlock = std::size_t{1} << 16;

 private:
  bool fill(std::size_t count);

  const ReadBytes& bytes_;
  std::vector<char> buffer_;
  std::size_t at_ = 0;
  std::size_t size_ = 0;
  std::uint64_t blockPlace_ = 0;
  bool atEnd_ = false;
};

}  // namespace Vesk

#endif
