// SPDX-License-Identifier: MIT
#include "files/Unpacker.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

#include "terminal/Exit.h"

namespace VeskTool {
namespace {

constexpr std::string_view kGzip = "\x1f\x8b";
constexpr std::string_view kZstd = "\x28\xb5\x2f\xfd";

class GzipUnpacker : public Unpacker {
 public:
  GzipUnpacker() {
    constexpr int kOnlyGzip = 16;
    if (inflateInit2(&stream_, MAX_WBITS + kOnlyGzip) != Z_OK) throw std::bad_alloc();
  }
  ~GzipUnpacker() override { inflateEnd(&stream_); }

  Step step(std::string_view packed, char* buffer, std::size_t size) override {
    if (isAtEnd_) {
      if (packed.empty()) return {};
      // Tapes and some pipes fill up with zeros.
      if (packed.front() == '\0') return {packed.size(), 0};
      if (inflateReset(&stream_) != Z_OK) throw std::bad_alloc();
      isAtEnd_ = false;
    }
    constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
    const auto in = static_cast<uInt>(std::min(packed.size(), kMost));
    const auto out = static_cast<uInt>(std::min(size, kMost));
    // zlib does not change what it reads; some of its versions do not say so.
    // NOLINTNEXTLINE
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream_.avail_in = in;
    // NOLINTNEXTLINE: characters as bytes
    stream_.next_out = reinterpret_cast<Bytef*>(buffer);
    stream_.avail_out = out;
    const int code = inflate(&stream_, Z_NO_FLUSH);
    if (code == Z_MEM_ERROR) throw std::bad_alloc();
    if (code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR) {
      throw Failure(Exit::kInput, "damaged: the gzip data can't be unpacked");
    }
    isAtEnd_ = code == Z_STREAM_END;
    return {in - stream_.avail_in, out - stream_.avail_out};
  }

  bool isWhole() const override { return isAtEnd_; }

 private:
  z_stream stream_{};
  bool isAtEnd_ = false;
};

}  // namespace

std::unique_ptr<Unpacker> unpackerFor(std::string_view begin) {
  if (begin.starts_with(kGzip)) return std::make_unique<GzipUnpacker>();
  if (begin.starts_with(kZstd)) return makeZstdUnpacker();
  return nullptr;
}

}  // namespace VeskTool
