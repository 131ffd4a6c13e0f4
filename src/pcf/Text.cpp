// SPDX-License-Identifier: MIT
#include "pcf/Text.h"

#include <algorithm>

#include "sidecar/Utf8.h"

namespace Vesk::Pcf {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

void appendCode(std::string& text, std::uint32_t code) {
  if (code < 0x80U) {
    text += static_cast<char>(code);
    return;
  }
  if (code < 0x800U) {
    text += static_cast<char>(0xC0U | (code >> 6U));
  } else {
    if (code < 0x10000U) {
      text += static_cast<char>(0xE0U | (code >> 12U));
    } else {
      text += static_cast<char>(0xF0U | (code >> 18U));
      text += static_cast<char>(0x80U | ((code >> 12U) & 0x3FU));
    }
    text += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
  }
  text += static_cast<char>(0x80U | (code & 0x3FU));
}

std::string fromUtf16(std::string_view bytes, bool isBig) {
  const auto unitAt = [&](std::size_t at) {
    const auto one = static_cast<std::uint8_t>(bytes[at]);
    const auto two = static_cast<std::uint8_t>(bytes[at + 1]);
    return static_cast<std::uint32_t>(isBig ? one << 8U | two : two << 8U | one);
  };
  std::string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    std::uint32_t code = unitAt(at);
    const bool isHigh = code >= 0xD800U && code < 0xDC00U;
    if (isHigh && at + 3 < bytes.size()) {
      const std::uint32_t low = unitAt(at + 2);
      if (low >= 0xDC00U && low < 0xE000U) {
        code = 0x10000U + ((code - 0xD800U) << 10U) + (low - 0xDC00U);
        at += 2;
      }
    }
    if (code >= 0xD800U && code < 0xE000U) code = '?';
    appendCode(text, code);
  }
  return text;
}

// The order of UTF-16 without a mark: of English text every other byte is 0.
enum class Utf16 { kNone, kLittle, kBig };

Utf16 utf16Of(std::string_view bytes) {
  if (bytes.size() < 2) return Utf16::kNone;
  if (bytes[0] == '\xFF' && bytes[1] == '\xFE') return Utf16::kLittle;
  if (bytes[0] == '\xFE' && bytes[1] == '\xFF') return Utf16::kBig;
  const std::size_t pairs = std::min<std::size_t>(bytes.size() / 2, 128);
  std::size_t zeros[2] = {0, 0};
  for (std::size_t i = 0; i < 2 * pairs; ++i) {
    if (bytes[i] == '\0') ++zeros[i % 2];
  }
  if (zeros[0] == 0 && zeros[1] * 10 > pairs * 9) return Utf16::kLittle;
  if (zeros[1] == 0 && zeros[0] * 10 > pairs * 9) return Utf16::kBig;
  return Utf16::kNone;
}

// As pages and word processors indent what is copied from them.
void replaceNoBreakSpaces(std::string& bytes) {
  constexpr std::string_view kNoBreakSpace = "\xC2\xA0";
  std::size_t from = bytes.find(kNoBreakSpace);
  if (from == std::string::npos) return;
  std::size_t to = from;
  while (from < bytes.size()) {
    const bool isOne = bytes.compare(from, kNoBreakSpace.size(), kNoBreakSpace) == 0;
    bytes[to++] = isOne ? ' ' : bytes[from];
    from += isOne ? kNoBreakSpace.size() : 1;
  }
  bytes.resize(to);
}

// Takes "<" and ">" from a text that has both.
std::string_view withoutBrackets(std::string_view text) {
  text = trimmed(text);
  if (text.size() < 2 || text.front() != '<' || text.back() != '>') return text;
  return text.substr(1, text.size() - 2);
}

}  // namespace

std::string decoded(std::string bytes) {
  const Utf16 order = utf16Of(bytes);
  if (order != Utf16::kNone) bytes = fromUtf16(bytes, order == Utf16::kBig);
  if (bytes.compare(0, kUtf8Mark.size(), kUtf8Mark) == 0) bytes.erase(0, kUtf8Mark.size());
  replaceNoBreakSpaces(bytes);
  return bytes;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view nextWord(std::string_view& text) {
  std::size_t start = 0;
  while (start < text.size() && isBlank(text[start])) ++start;
  std::size_t end = start;
  while (end < text.size() && !isBlank(text[end])) ++end;
  const std::string_view word = text.substr(start, end - start);
  text.remove_prefix(end);
  return word;
}

namespace {

char capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

std::string capitals(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), capital);
  return result;
}

bool isWord(std::string_view text, std::string_view word) {
  return text.size() == word.size() && std::equal(text.begin(), text.end(), word.begin(),
                                                  [](char a, char b) { return capital(a) == b; });
}

std::string harmless(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  const bool isCut = text.size() > kLongest;
  std::string result(cutUtf8(text, kLongest));
  const bool isText = isUtf8(result);
  for (char& c : result) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == 127 || (byte > 127 && !isText)) c = '?';
  }
  return isCut ? result + "..." : result;
}

std::size_t indentOf(std::string_view line) {
  std::size_t indent = 0;
  for (const char c : line) {
    if (!isBlank(c)) break;
    indent = c == '\t' ? indent / 8 * 8 + 8 : indent + 1;
  }
  return indent;
}

bool Lines::next() {
  if (at_ >= text_.size()) return false;
  offset_ = at_;
  // find_first_of asks for each character of the text whether it is one of the two.
  std::size_t end = at_;
  while (end < text_.size() && text_[end] != '\n' && text_[end] != '\r') ++end;
  line_ = text_.substr(at_, end - at_);
  at_ = end;
  if (at_ < text_.size()) {
    const bool isPair = text_[at_] == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
    at_ += isPair ? 2 : 1;
  }
  ++next_;
  return true;
}

KeyValue keyValueOf(std::string_view line) {
  line = trimmed(line);
  if (!line.empty() && line.front() == '<') {
    const std::size_t close = line.find('>');
    if (close != std::string_view::npos && close + 1 < line.size() && isBlank(line[close + 1])) {
      std::string_view key = line.substr(1, close - 1);
      return {nextWord(key), withoutBrackets(line.substr(close + 1))};
    }
    line = withoutBrackets(line);
  }
  const std::string_view key = nextWord(line);
  return {key, withoutBrackets(line)};
}

bool isComment(std::string_view trimmedLine) {
  return !trimmedLine.empty() && (trimmedLine[0] == '!' || trimmedLine[0] == '#' ||
                                  trimmedLine[0] == ';' || trimmedLine.substr(0, 2) == "//");
}

}  // namespace Vesk::Pcf
