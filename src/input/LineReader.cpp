// SPDX-License-Identifier: MIT
#include "input/LineReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Vesk {
namespace {

// Where the first line end of these characters is; `length` if there is none.
std::size_t findLineEnd(const char* text, std::size_t length) {
  const void* found = length == 0 ? nullptr : std::memchr(text, '\n', length);
  return found == nullptr ? length
                          : static_cast<std::size_t>(static_cast<const char*>(found) - text);
}

}  // namespace

LineReader::LineReader(std::unique_ptr<ByteSource> source, std::size_t longestLine)
    : source_(std::move(source)), longestLine_(longestLine), buffer_(kFirstBlockSize) {}

bool LineReader::next() {
  begin_ = next_;
  length_ = 0;
  tooLong_ = false;
  for (;;) {
    const std::size_t searched = length_;
    length_ += findLineEnd(buffer_.data() + begin_ + searched, end_ - begin_ - searched);
    terminated_ = begin_ + length_ < end_;
    if (terminated_ || length_ > longestLine_ || !readMore()) break;
  }
  if (length_ == 0 && !terminated_) {
    next_ = begin_;
    return false;
  }
  ++number_;
  offset_ = origin_ + begin_;
  next_ = begin_ + length_ + (terminated_ ? 1 : 0);
  if (length_ > longestLine_) dropRestOfLine();
  hasReturn_ = length_ > 0 && buffer_[begin_ + length_ - 1] == '\r';
  if (hasReturn_) --length_;
  return true;
}

std::string_view LineReader::window() {
  while (end_ - begin_ < kBlockSize && readMore()) {
  }
  return {buffer_.data() + begin_, end_ - begin_};
}

// Moves the line to the front of the buffer and reads behind what is there.
bool LineReader::readMore() {
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    origin_ += begin_;
    end_ -= begin_;
    next_ -= std::min(next_, begin_);
    begin_ = 0;
  }
  if (buffer_.size() < kBlockSize || end_ == buffer_.size()) buffer_.resize(2 * buffer_.size());
  const std::size_t count = source_->read(buffer_.data() + end_, buffer_.size() - end_);
  end_ += count;
  return count > 0;
}

void LineReader::dropRestOfLine() {
  tooLong_ = true;
  length_ = longestLine_;
  std::size_t keep = begin_ + longestLine_;
  while (!terminated_) {
    origin_ += end_ - keep;
    end_ = keep;
    const std::size_t moved = begin_;
    if (!readMore()) break;
    keep -= moved;
    next_ = keep + findLineEnd(buffer_.data() + keep, end_ - keep);
    terminated_ = next_ < end_;
    if (terminated_) ++next_;
  }
  if (!terminated_) next_ = end_;
}

}  // namespace Vesk
