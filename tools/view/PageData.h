// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PAGEDATA_H
#define VESK_TOOLS_VIEW_PAGEDATA_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/Streams.h"

namespace VeskTool {

// Of 9 steps between fast and small: the last three take twice the time for 2 %.
inline constexpr int kPageCompression = 7;

// Writes bytes compressed (zlib's format) and in base64.
void writeCompressed(TextSink& to, std::string_view bytes);

// The binary data of a page: blocks of little-endian numbers one after the other,
// each from a multiple of eight bytes on.
class PageData {
 public:
  struct Block {
    std::uint64_t offset = 0;  // in bytes
    std::uint64_t count = 0;   // of items
  };

  // Adds a block of numbers or bytes; `width` of them are an item.
  template <class Numbers>
  Block add(const Numbers& numbers, std::size_t width = 1) {
    using Number = typename Numbers::value_type;
    bytes_.resize((bytes_.size() + 7) / 8 * 8, '\0');
    const Block block{bytes_.size(), numbers.size() / width};
    const std::size_t size = numbers.size() * sizeof(Number);
    bytes_.append(reinterpret_cast<const char*>(numbers.data()), size);
    if constexpr (std::endian::native == std::endian::big) {
      turnOver(block.offset, size, sizeof(Number));
    }
    return block;
  }

  // Adds numbers of 32 bits by their bytes: all lowest ones first. Where neighbours
  // are alike this is smaller when compressed.
  Block addPlanes(const std::vector<std::uint32_t>& numbers);
  Block addPlanes(const std::vector<float>& numbers, std::size_t width = 1);

  // Adds the differences between neighbours, the sign in the lowest bit, in planes.
  Block addSteps(const std::vector<std::uint32_t>& numbers);

  const std::string& bytes() const { return bytes_; }

 private:
  // Turns the order of the bytes of each number.
  void turnOver(std::size_t begin, std::size_t size, std::size_t each);

  std::string bytes_;
};

}  // namespace VeskTool

#endif
