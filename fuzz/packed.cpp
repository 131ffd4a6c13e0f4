// SPDX-License-Identifier: MIT
// Packed inputs: a text that is packed comes out as it went in, whatever pieces are asked for,
// also behind another one. Of damaged bytes either the text comes out or a failure that names
// the file; no more comes out than the limit allows.
//
//   1 byte how it is packed (0: the bytes as they are, 1: gzip, 2: zstd); 1 byte how many are
//   damaged, and for each 2 bytes the place and 1 what is done there; the text
#include <zlib.h>
#include <zstd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "Tool.h"
#include "files/PackedSource.h"
#include "terminal/Exit.h"

using VeskFuzz::check;
using VeskFuzz::Workplace;

namespace {

std::string gzip(const std::string& text) {
  z_stream stream{};
  constexpr int kGzip = 16;
  check(deflateInit2(&stream, 6, Z_DEFLATED, MAX_WBITS + kGzip, 8, Z_DEFAULT_STRATEGY) == Z_OK,
        "zlib begins");
  std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())) + 32, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  check(deflate(&stream, Z_FINISH) == Z_STREAM_END, "zlib packs");
  packed.resize(packed.size() - stream.avail_out);
  deflateEnd(&stream);
  return packed;
}

std::string zstd(const std::string& text) {
  std::string packed(ZSTD_compressBound(text.size()), '\0');
  const std::size_t size = ZSTD_compress(packed.data(), packed.size(), text.data(), text.size(), 3);
  check(ZSTD_isError(size) == 0, "zstd packs");
  packed.resize(size);
  return packed;
}

struct Unpacked {
  std::string text;
  std::string failure;
};

Unpacked unpack(const std::string& bytes, std::size_t piece) {
  Workplace::put("in.dat", bytes);
  VeskTool::InputCount count;
  VeskTool::Progress progress("", VeskTool::Progress::Mode::kNever);
  Unpacked unpacked;
  try {
    VeskTool::PackedSource source("in.dat", count, progress);
    std::vector<char> buffer(piece);
    while (const std::size_t size = source.read(buffer.data(), piece)) {
      unpacked.text.append(buffer.data(), size);
    }
    check(count.bytes == unpacked.text.size(), "what is given is counted");
  } catch (const VeskTool::Failure& failure) {
    unpacked.failure = failure.what();
    check(failure.exit == VeskTool::Exit::kInput && unpacked.failure.starts_with("in.dat: "),
          "a failure names the file", unpacked.failure);
  }
  check(unpacked.text.size() <=
            std::max<std::size_t>(VeskTool::PackedSource::kFreeBytes,
                                  VeskTool::PackedSource::kMostTimes * bytes.size()),
        "no more is given than the limit allows");
  return unpacked;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Workplace workplace;
  VeskFuzz::Bytes bytes(data, size);
  const int how = bytes.below(3);
  struct Damage {
    std::size_t place;
    std::uint8_t what;
  };
  std::vector<Damage> damages;
  for (int left = how == 0 ? 0 : bytes.below(8); left > 0; --left) {
    const std::size_t high = bytes.byte();
    damages.push_back({high << 8U | bytes.byte(), bytes.byte()});
  }
  const std::string text = bytes.rest();
  std::string packed = how == 0 ? text : how == 1 ? gzip(text) : zstd(text);
  const std::string sound = packed;
  for (const Damage& damage : damages) {
    if (packed.empty()) break;
    const std::size_t place = damage.place % packed.size();
    if (damage.what == 0) {
      packed.resize(place);
    } else {
      packed[place] = static_cast<char>(packed[place] ^ damage.what);
    }
  }
  const Unpacked whole = unpack(packed, 1U << 16U);
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}}) {
    const Unpacked again = unpack(packed, piece);
    check(again.failure == whole.failure, "pieces of any size fail the same",
          whole.failure + '\n' + again.failure);
    check(!whole.failure.empty() || again.text == whole.text, "pieces of any size give the same");
  }
  if (how == 0 || packed != sound) return 0;
  check(whole.failure.empty() && whole.text == text, "what was packed comes out", whole.failure);
  const Unpacked twice = unpack(packed + packed, 1U << 16U);
  check(twice.text == text + text, "one behind another comes out as both", twice.failure);
  return 0;
}
