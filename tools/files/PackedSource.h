// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FILES_PACKEDSOURCE_H
#define VESK_TOOLS_FILES_PACKEDSOURCE_H

#include <memory>
#include <string>
#include <vector>

#include "files/Unpacker.h"
#include "terminal/Streams.h"

namespace VeskTool {

// An input as InputSource gives it, unpacked if gzip or zstd packed it: `count` is
// of what comes out, the progress of what is in the file.
//
// Throws a Failure with Exit::kInput for what is damaged or cut off, and for what
// becomes more than kMostTimes its size, once it is more than kFreeBytes: that is
// no plant. Damaged bytes may be noticed after some were given.
class PackedSource : public Vesk::ByteSource {
 public:
  static constexpr std::uint64_t kMostTimes = 256;
  static constexpr std::uint64_t kFreeBytes = std::uint64_t{1} << 26;

  PackedSource(const std::string& name, InputCount& count, Progress& progress);

  std::size_t read(char* buffer, std::size_t size) override;

 protected:
  InputCount& counts() { return count_; }

 private:
  bool readBlock(std::size_t size);
  std::size_t unpack(char* buffer, std::size_t size);

  std::string name_;
  InputCount packed_;
  InputSource source_;
  InputCount& count_;
  std::unique_ptr<Unpacker> unpacker_;  // null: the bytes as they are
  std::vector<char> block_;
  std::size_t next_ = 0;  // of the block: what was not taken yet
  std::size_t end_ = 0;
  std::uint64_t lineEnds_ = 0;
  bool hasBegun_ = false;
};

// A text: PackedSource without the mark that some editors write at the beginning
// (EF BB BF), and with nothing in it if it is blank, up to kMostBlank bytes.
class TextInput : public PackedSource {
 public:
  static constexpr std::size_t kMostBlank = std::size_t{1} << 20;

  using PackedSource::PackedSource;

  std::size_t read(char* buffer, std::size_t size) override;

 private:
  void begin();

  std::string first_;
  std::size_t next_ = 0;  // of `first_`: what was not given yet
  bool hasBegun_ = false;
};

}  // namespace VeskTool

#endif
