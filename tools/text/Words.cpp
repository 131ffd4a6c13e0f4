// SPDX-License-Identifier: MIT
#include "text/Words.h"

#include <algorithm>

namespace VeskTool {
namespace {

void appendWrappedLine(std::string& result, std::string_view text, std::size_t indent,
                       std::size_t width) {
  std::string line;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    if (!line.empty() && indent + line.size() + 1 + word.size() > width) {
      result.append(indent, ' ').append(line).append("\n");
      line.clear();
    }
    if (!line.empty()) line += ' ';
    line += word;
  }
  if (!line.empty()) result.append(indent, ' ').append(line);
  result += '\n';
}

}  // namespace

std::string wrapped(std::string_view text, std::size_t indent, std::size_t width) {
  std::string result;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    appendWrappedLine(result, line, indent, width);
  }
  return result;
}

std::vector<std::string> splitAt(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    std::string_view part = text.substr(0, end);
    part.remove_prefix(std::min(part.find_first_not_of(' '), part.size()));
    part.remove_suffix(part.size() - (part.find_last_not_of(' ') + 1));
    parts.emplace_back(part);
    if (end == text.npos) return parts;
    text.remove_prefix(end + 1);
  }
}

namespace {

// How many bytes a letter of UTF-8 has that begins here; 0 if none does.
std::size_t letterLength(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text.front());
  const std::size_t length = byte < 0x80   ? 1
                             : byte < 0xC2 ? 0
                             : byte < 0xE0 ? 2
                             : byte < 0xF0 ? 3
                             : byte < 0xF5 ? 4
                                           : 0;
  if (length == 0 || length > text.size()) return 0;
  const std::string_view rest = text.substr(1, length - 1);
  return std::all_of(rest.begin(), rest.end(), isContinuationByte) ? length : 0;
}

bool isControl(std::string_view letter) {
  const auto first = static_cast<unsigned char>(letter.front());
  if (letter.size() == 1) return (first < 32 && first != '\n' && first != '\t') || first == 127;
  return first == 0xC2 && static_cast<unsigned char>(letter[1]) < 0xA0;
}

// The length of "ESC [ digits and semicolons m" at the beginning; 0 if that is not there.
std::size_t colourLength(std::string_view text) {
  if (!text.starts_with("\x1b[")) return 0;
  const std::size_t end = text.find_first_not_of("0123456789;", 2);
  return end != text.npos && text[end] == 'm' ? end + 1 : 0;
}

std::string cleaned(std::string_view text, bool keepsColours) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    std::size_t length = keepsColours ? colourLength(text) : 0;
    if (length == 0) {
      length = letterLength(text);
      // A byte that is no letter of UTF-8 may be one of another code, or a control.
      const auto byte = static_cast<unsigned char>(text.front());
      const bool isBad = length == 0 ? byte < 0xA0 : isControl(text.substr(0, length));
      length = std::max<std::size_t>(length, 1);
      if (isBad) {
        result += '?';
        text.remove_prefix(length);
        continue;
      }
    }
    result += text.substr(0, length);
    text.remove_prefix(length);
  }
  return result;
}

}  // namespace

std::string withoutControls(std::string_view text) { return cleaned(text, false); }

std::string harmless(std::string_view text) { return cleaned(text, true); }

}  // namespace VeskTool
