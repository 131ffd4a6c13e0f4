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

}  // namespace VeskTool
