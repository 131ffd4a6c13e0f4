// SPDX-License-Identifier: MIT
#include "rvm/WordStream.h"

#include <algorithm>

namespace Vesk {

bool WordStream::fill(std::size_t count) {
  const auto from = buffer_.begin() + static_cast<std::ptrdiff_t>(at_);
  std::copy(from, buffer_.begin() + static_cast<std::ptrdiff_t>(size_), buffer_.begin());
  blockPlace_ += at_;
  size_ -= at_;
  at_ = 0;
  while (size_ < count && !atEnd_) {
    const std::size_t read = bytes_(buffer_.data() + size_, buffer_.size() - size_);
    atEnd_ = read == 0;
    size_ += read;
  }
  return size_ >= count;
}

}  // namespace Vesk
