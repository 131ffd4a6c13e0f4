// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_REVIEWFAULT_H
#define VESK_RVM_REVIEWFAULT_H

#include <cstdint>
#include <stdexcept>
#include <string>

namespace Vesk {

// Why a review model or a file of attributes can't be read any further.
class ReviewFault : public std::runtime_error {
 public:
  ReviewFault(std::uint64_t at, bool isLineNumber, const std::string& message)
      : std::runtime_error(message), place(at), isLine(isLineNumber) {}

  std::uint64_t place;  // the byte, from 0, or the line, from 1
  bool isLine;
};

}  // namespace Vesk

#endif
