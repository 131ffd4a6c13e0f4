#include "view/PageData.h"

#include <algorithm>
#include <string_view>

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

}  // namespace

void PageData::writeBase64(TextSink& to) const {
  const std::string_view all = bytes_;
  std::string text;
  for (std::size_t i = 0; i < all.size(); i += kPiece) {
    text.clear();
    appendBase64(text, all.substr(i, kPiece));
    to.write(text);
  }
}

void PageData::turnOver(std::size_t begin, std::size_t size, std::size_t each) {
  for (std::size_t at = begin; at < begin + size; at += each) {
    const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(at);
    std::reverse(first, first + static_cast<std::ptrdiff_t>(each));
  }
}

}  // namespace VeskTool
