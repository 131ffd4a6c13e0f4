// SPDX-License-Identifier: MIT
#include <zstd.h>

#include <new>

#include "files/Unpacker.h"
#include "terminal/Exit.h"

namespace VeskTool {
namespace {

class ZstdUnpacker : public Unpacker {
 public:
  ZstdUnpacker() : stream_(ZSTD_createDStream()) {
    if (!stream_) throw std::bad_alloc();
    ZSTD_initDStream(stream_.get());
  }

  Step step(std::string_view packed, char* buffer, std::size_t size) override {
    if (packed.empty() && isAtEnd_) return {};
    ZSTD_inBuffer in{packed.data(), packed.size(), 0};
    ZSTD_outBuffer out{buffer, size, 0};
    const std::size_t code = ZSTD_decompressStream(stream_.get(), &out, &in);
    if (ZSTD_isError(code) != 0) {
      throw Failure(Exit::kInput, "damaged: the zstd data can't be unpacked");
    }
    isAtEnd_ = code == 0;
    return {in.pos, out.pos};
  }

  bool isWhole() const override { return isAtEnd_; }

 private:
  struct Deleter {
    void operator()(ZSTD_DStream* stream) const { ZSTD_freeDStream(stream); }
  };

  std::unique_ptr<ZSTD_DStream, Deleter> stream_;
  bool isAtEnd_ = false;
};

}  // namespace

std::unique_ptr<Unpacker> makeZstdUnpacker() { return std::make_unique<ZstdUnpacker>(); }

}  // namespace VeskTool
