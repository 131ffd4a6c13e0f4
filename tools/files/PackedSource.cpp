// SPDX-License-Identifier: MIT
#include "files/PackedSource.h"

#include <algorithm>
#include <cstring>

#include "terminal/Exit.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr std::size_t kFirstBlock = std::size_t{1} << 12;
constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr std::string_view kBlanks = " \t\r\n";

}  // namespace

PackedSource::PackedSource(const std::string& name, InputCount& count, Progress& progress)
    : name_(name), source_(name, packed_, progress), count_(count) {}

// What is left of the block is none of it.
bool PackedSource::readBlock(std::size_t size) {
  block_.resize(size);
  next_ = 0;
  end_ = source_.read(block_.data(), size);
  if (!source_.error().empty()) setError(source_.errorNumber());
  return end_ > 0;
}

std::size_t PackedSource::read(char* buffer, std::size_t size) {
  checkInterrupt();
  if (!hasBegun_) {
    hasBegun_ = true;
    readBlock(kFirstBlock);
    unpacker_ = unpackerFor({block_.data(), std::min(end_, kPackedMark)});
  }
  if (unpacker_ != nullptr) return unpack(buffer, size);
  std::size_t count = std::min(size, end_ - next_);
  if (count > 0) {
    std::copy_n(block_.data() + next_, count, buffer);
    next_ += count;
  } else {
    count = source_.read(buffer, size);
    if (!source_.error().empty()) setError(source_.errorNumber());
  }
  count_.bytes = packed_.bytes;
  count_.lines = packed_.lines;
  return count;
}

std::size_t PackedSource::unpack(char* buffer, std::size_t size) {
  std::size_t count = 0;
  try {
    for (;;) {
      const Unpacker::Step step =
          unpacker_->step({block_.data() + next_, end_ - next_}, buffer, size);
      next_ += step.taken;
      count = step.given;
      if (count > 0) break;
      if (step.taken > 0) continue;
      if (!readBlock(kBlock)) break;
    }
    if (count == 0 && error().empty() && !unpacker_->isWhole()) {
      throw Failure(Exit::kInput, "cut off: the end of the packed bytes is missing");
    }
    if (count_.bytes + count > std::max(kFreeBytes, kMostTimes * packed_.bytes)) {
      throw Failure(Exit::kInput,
                    "becomes more than " + grouped(kMostTimes) +
                        " times its size when it is unpacked, which no plant does",
                    "if it is a plant all the same, unpack it first");
    }
  } catch (const Failure& failure) {
    throw Failure(failure.exit, shownName(name_) + ": " + failure.what(), failure.hint);
  }
  if (count == 0) return 0;
  lineEnds_ += static_cast<std::uint64_t>(std::count(buffer, buffer + count, '\n'));
  count_.bytes += count;
  count_.lines = lineEnds_ + (buffer[count - 1] == '\n' ? 0 : 1);
  return count;
}

std::size_t TextInput::read(char* buffer, std::size_t size) {
  if (!hasBegun_) begin();
  if (next_ == first_.size()) return PackedSource::read(buffer, size);
  const std::size_t count = std::min(size, first_.size() - next_);
  std::copy_n(first_.data() + next_, count, buffer);
  next_ += count;
  return count;
}

// Reads until there is something to see.
void TextInput::begin() {
  hasBegun_ = true;
  std::vector<char> block(kFirstBlock);
  std::size_t seen = 0;
  while (first_.size() < kMostBlank) {
    const std::size_t count = PackedSource::read(block.data(), block.size());
    if (count == 0) {
      counts().isBlank = seen == first_.size();
      if (counts().isBlank) first_.clear();
      break;
    }
    first_.append(block.data(), count);
    if (first_.starts_with(kByteOrderMark)) first_.erase(0, kByteOrderMark.size());
    seen = std::min(first_.find_first_not_of(kBlanks, seen), first_.size());
    if (seen < first_.size()) break;
  }
}

}  // namespace VeskTool
