// SPDX-License-Identifier: MIT
#include "view/PageData.h"

#include <algorithm>

namespace VeskTool {

PageData::Block PageData::addPlanes(const std::vector<std::uint32_t>& numbers) {
  std::vector<std::uint8_t> planes;
  planes.reserve(numbers.size() * 4);
  for (unsigned shift = 0; shift < 32; shift += 8) {
    for (const std::uint32_t number : numbers) {
      planes.push_back(static_cast<std::uint8_t>(number >> shift));
    }
  }
  return {add(planes).offset, numbers.size()};
}

PageData::Block PageData::addPlanes(const std::vector<float>& numbers, std::size_t width) {
  std::vector<std::uint32_t> bits;
  bits.reserve(numbers.size());
  for (const float number : numbers) bits.push_back(std::bit_cast<std::uint32_t>(number));
  return {addPlanes(bits).offset, numbers.size() / width};
}

PageData::Block PageData::addSteps(const std::vector<std::uint32_t>& numbers) {
  std::vector<std::uint32_t> steps;
  steps.reserve(numbers.size());
  std::uint32_t before = 0;
  for (const std::uint32_t number : numbers) {
    const std::uint32_t step = number - before;
    steps.push_back((step << 1U) ^ (step >> 31U == 1U ? ~0U : 0U));
    before = number;
  }
  return addPlanes(steps);
}

void PageData::turnOver(std::size_t begin, std::size_t size, std::size_t each) {
  for (std::size_t at = begin; at < begin + size; at += each) {
    const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(at);
    std::reverse(first, first + static_cast<std::ptrdiff_t>(each));
  }
}

}  // namespace VeskTool
