// SPDX-License-Identifier: MIT
#include "vesk/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace Vesk {

void ByteSource::setError(int number) {
  if (error_.empty()) error_ = std::generic_category().message(number != 0 ? number : EIO);
}

FileSource::FileSource(const std::string& path) {
  errno = 0;
  owned_.reset(std::fopen(path.c_str(), "rb"));
  file_ = owned_.get();
  if (file_ == nullptr) setError(errno);
}

std::size_t FileSource::read(char* buffer, std::size_t size) {
  if (file_ == nullptr || !error().empty()) return 0;
  errno = 0;
  const std::size_t count = std::fread(buffer, 1, size, file_);
  if (count < size && std::ferror(file_) != 0) setError(errno);
  return count;
}

std::size_t StreamSource::read(char* buffer, std::size_t size) {
  if (!stream_.good()) return 0;
  errno = 0;
  stream_.read(buffer, static_cast<std::streamsize>(size));
  if (stream_.bad()) setError(errno);
  return static_cast<std::size_t>(stream_.gcount());
}

std::size_t TextSource::read(char* buffer, std::size_t size) {
  const std::size_t count = text_.copy(buffer, size);
  text_.remove_prefix(count);
  return count;
}

}  // namespace Vesk
