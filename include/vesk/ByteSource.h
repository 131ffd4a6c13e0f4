// SPDX-License-Identifier: MIT
#ifndef VESK_BYTESOURCE_H
#define VESK_BYTESOURCE_H

#include <cstddef>
#include <cstdio>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

namespace Vesk {

// Where a record file's bytes come from.
class ByteSource {
 public:
  virtual ~ByteSource() = default;

  // Puts the next bytes into the buffer, at most `size`, and returns how many:
  // at least one, 0 at the end or after an error.
  virtual std::size_t read(char* buffer, std::size_t size) = 0;

  // The reason of the first error, empty if there was none.
  const std::string& error() const { return error_; }

 protected:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  // Keeps the system's text for this number, unless there was an error before.
  void setError(int number);

 private:
  std::string error_;
};

// A file, opened and closed by this object, or the caller's, which stays open.
class FileSource : public ByteSource {
 public:
  explicit FileSource(const std::string& path);
  explicit FileSource(std::FILE* file) : file_(file) {}

  std::size_t read(char* buffer, std::size_t size) override;

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, Closer> owned_;
  std::FILE* file_ = nullptr;
};

// The caller's stream, read in blocks; it must be binary where text streams
// change line ends.
class StreamSource : public ByteSource {
 public:
  explicit StreamSource(std::istream& stream) : stream_(stream) {}

  std::size_t read(char* buffer, std::size_t size) override;

 private:
  std::istream& stream_;
};

// The caller's characters.
class TextSource : public ByteSource {
 public:
  explicit TextSource(std::string_view text) : text_(text) {}

  std::size_t read(char* buffer, std::size_t size) override;

 private:
  std::string_view text_;
};

}  // namespace Vesk

#endif
