// SPDX-License-Identifier: MIT
#include "tiles/Spill.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <system_error>

#include "terminal/SystemFailure.h"

namespace VeskTool {
namespace {

using Size = std::uint64_t;

}  // namespace

void Spill::fail(int number) const {
  const std::string name = nameOf(path_);
  throw SystemFailure(Exit::kOutput, name + ": " + errorText(number), number, name);
}

void Spill::add(std::string_view entry) {
  const Size size = entry.size();
  char bytes[sizeof size];
  std::memcpy(bytes, &size, sizeof size);
  buffer_.append(bytes, sizeof bytes).append(entry);
  if (buffer_.size() >= kMost) flush();
}

void Spill::flush() {
  checkInterrupt();
  errno = 0;
  if (!file_) {
    if (!isMade_) half_ = HalfFile(path_);
    file_.reset(openFile(path_, isMade_ ? "rb+" : "wbx"));
    if (!file_ || std::fseek(file_.get(), 0, SEEK_END) != 0) fail(errno);
    isMade_ = true;
  }
  if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()) != buffer_.size()) fail(errno);
  buffer_.clear();
}

void Spill::rest() {
  if (!isMade_) return;
  flush();
  std::string().swap(buffer_);
  errno = 0;
  if (std::fclose(file_.release()) != 0) fail(errno);
}

void Spill::forEach(const std::function<void(std::string_view entry)>& take) {
  const auto takeAll = [&take](std::string_view bytes) {
    while (!bytes.empty()) {
      Size size = 0;
      if (bytes.size() < sizeof size) break;
      std::memcpy(&size, bytes.data(), sizeof size);
      if (bytes.size() - sizeof size < size) break;
      take(bytes.substr(sizeof size, size));
      bytes.remove_prefix(sizeof size + size);
    }
    return bytes.size();
  };
  if (!isMade_) {
    checkInterrupt();
    takeAll(buffer_);
    return;
  }
  rest();
  errno = 0;
  file_.reset(openFile(path_, "rb"));
  if (!file_) fail(errno);
  std::string block;
  std::size_t left = 0;  // of the block: the beginning of an entry
  for (;;) {
    checkInterrupt();
    block.resize(left + kMost / 4);
    errno = 0;
    const std::size_t count = std::fread(block.data() + left, 1, block.size() - left, file_.get());
    if (count == 0 && std::ferror(file_.get()) != 0) fail(errno);
    if (count == 0) break;
    block.resize(left + count);
    left = takeAll(block);
    block.erase(0, block.size() - left);
  }
  file_.reset();
}

void Spill::clear() noexcept {
  file_.reset();
  std::error_code error;
  if (isMade_) std::filesystem::remove(path_, error);
  isMade_ = false;
  half_.release();
  std::string().swap(buffer_);
}

}  // namespace VeskTool
