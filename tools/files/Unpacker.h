// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FILES_UNPACKER_H
#define VESK_TOOLS_FILES_UNPACKER_H

#include <cstddef>
#include <memory>
#include <string_view>

namespace VeskTool {

// Unpacks what gzip or zstd packed, piece by piece; several packed files one behind
// the other are one.
class Unpacker {
 public:
  struct Step {
    std::size_t taken = 0;  // of the packed bytes
    std::size_t given = 0;  // of the unpacked ones
  };

  virtual ~Unpacker() = default;
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;

  // What there is of the packed bytes, as far as the buffer has room. Neither taken
  // nor given: more is needed. Throws a Failure with Exit::kInput, without the name
  // of the file, for damaged bytes.
  virtual Step step(std::string_view packed, char* buffer, std::size_t size) = 0;

  // Whether the bytes may end here.
  virtual bool isWhole() const = 0;

 protected:
  Unpacker() = default;
};

// The longest of the beginnings below.
constexpr std::size_t kPackedMark = 4;

// For bytes that begin so; null if these are not packed. Throws a Failure with
// Exit::kUsage for what this build of vesk was made without.
std::unique_ptr<Unpacker> unpackerFor(std::string_view begin);

// In a source of its own, with the library or without.
std::unique_ptr<Unpacker> makeZstdUnpacker();

}  // namespace VeskTool

#endif
