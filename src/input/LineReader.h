// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_LINEREADER_H
#define VESK_INPUT_LINEREADER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "vesk/ByteSource.h"

namespace Vesk {

// Takes a byte source apart into lines, in blocks that grow to a fixed size; only
// a longer line needs more memory. A line ends with LF or CR LF.
class LineReader {
 public:
  static constexpr std::size_t kFirstBlockSize = std::size_t{1} << 12;
  static constexpr std::size_t kBlockSize = std::size_t{1} << 18;

  // What no record comes near; of a longer line only this much is kept.
  static constexpr std::size_t kLongestLine = std::size_t{1} << 24;

  explicit LineReader(std::unique_ptr<ByteSource> source, std::size_t longestLine = kLongestLine);

  // Goes to the next line; false at the end.
  bool next();

  // The line without its end. Valid until next or window.
  std::string_view line() const { return {buffer_.data() + begin_, length_}; }

  // Whether the line has an end; the last one of a file that was cut off has not.
  bool isTerminated() const { return terminated_; }

  // Whether CR, taken for part of its end, stood behind it.
  bool hasReturn() const { return hasReturn_; }

  // Whether characters of it were dropped.
  bool isTooLong() const { return tooLong_; }

  std::uint64_t number() const { return number_; }  // from 1
  std::uint64_t offset() const { return offset_; }  // of its first byte in the file

  // What follows from the line's first byte on, as much as a block holds.
  std::string_view window();

  const ByteSource& source() const { return *source_; }

 private:
  bool readMore();
  void dropRestOfLine();

  std::unique_ptr<ByteSource> source_;
  std::size_t longestLine_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;     // of the line in the buffer
  std::size_t length_ = 0;    // of the line
  std::size_t next_ = 0;      // where the next line begins
  std::size_t end_ = 0;       // of what was read
  std::uint64_t origin_ = 0;  // of the buffer in the file
  std::uint64_t offset_ = 0;
  std::uint64_t number_ = 0;
  bool terminated_ = false;
  bool hasReturn_ = false;
  bool tooLong_ = false;
};

}  // namespace Vesk

#endif
