// SPDX-License-Identifier: MIT
#include <zlib.h>

#include <array>
#include <memory>
#include <new>

#include "view/PageData.h"

namespace VeskTool {
namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Of three bytes each, so that the pieces fit together.
constexpr std::size_t kPiece = 3 * std::size_t{16384};

void appendBase64(std::string& to, std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const auto byte = [&](std::size_t k) {
      return i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U;
    };
    const unsigned bits = (byte(0) << 16U) | (byte(1) << 8U) | byte(2);
    to += kDigits[bits >> 18U];
    to += kDigits[(bits >> 12U) & 63U];
    to += i + 1 < bytes.size() ? kDigits[(bits >> 6U) & 63U] : '=';
    to += i + 2 < bytes.size() ? kDigits[bits & 63U] : '=';
  }
}

// A compression that is given back whatever happens.
class Deflation {
 public:
  Deflation() {
    if (deflateInit(&stream_, kPageCompression) != Z_OK) throw std::bad_alloc();
  }
  ~Deflation() { deflateEnd(&stream_); }
  Deflation(const Deflation&) = delete;
  Deflation& operator=(const Deflation&) = delete;

  // Takes the next piece of the input.
  void give(std::string_view bytes) {
    // zlib does not write there.
    stream_.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
    stream_.avail_in = static_cast<uInt>(bytes.size());
  }

  // Appends what comes of it; at the end of the input all that is left.
  void appendTo(std::string& to, bool isEnd) {
    do {
      stream_.next_out = reinterpret_cast<Bytef*>(room_.data());
      stream_.avail_out = static_cast<uInt>(room_.size());
      deflate(&stream_, isEnd ? Z_FINISH : Z_NO_FLUSH);
      to.append(room_.data(), room_.size() - stream_.avail_out);
    } while (stream_.avail_out == 0);
  }

 private:
  z_stream stream_{};
  std::array<char, 65536> room_{};
};

}  // namespace

void writeCompressed(TextSink& to, std::string_view bytes) {
  const auto deflation = std::make_unique<Deflation>();
  std::string compressed;
  std::string text;
  do {
    const std::string_view piece = bytes.substr(0, kPiece);
    bytes.remove_prefix(piece.size());
    deflation->give(piece);
    deflation->appendTo(compressed, bytes.empty());
    const std::size_t whole = bytes.empty() ? compressed.size() : compressed.size() / 3 * 3;
    text.clear();
    appendBase64(text, std::string_view(compressed).substr(0, whole));
    compressed.erase(0, whole);
    to.write(text);
  } while (!bytes.empty());
}

}  // namespace VeskTool
