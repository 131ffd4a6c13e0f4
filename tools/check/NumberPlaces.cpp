// SPDX-License-Identifier: MIT
#include "check/NumberPlaces.h"

#include <algorithm>

#include "input/ParseDouble.h"
#include "output/RecordWords.h"

namespace VeskTool {
namespace {

using namespace Vesk;

void addFields(const Recs& lines, std::vector<NumberPlace>& places) {
  forEachField9(lines, [&](std::size_t line, std::size_t column, std::string_view field) {
    const std::size_t blanks = std::min(field.find_first_not_of(' '), field.size());
    places.push_back({line, column + blanks, field.substr(blanks)});
  });
}

bool hasTagKeyword(std::string_view line) {
  const std::string_view keyword = line.substr(kTokensLayout.keyword, 2);
  return keyword == Keywords::kBoxTags || keyword == Keywords::kRedTags;
}

bool isAttribute(std::string_view token) {
  return token.starts_with(tagOf(Words::kCs)) || token.starts_with(tagOf(Words::kSp)) ||
         token.starts_with(tagOf(Words::kFt)) || token.starts_with(tagOf(Words::kTk));
}

// "pt 1 2 3" from this column on.
void addNumbers(std::string_view token, std::size_t line, std::size_t column,
                std::vector<NumberPlace>& places) {
  while (!token.empty()) {
    const std::size_t blanks = std::min(token.find_first_not_of(' '), token.size());
    column += blanks;
    token.remove_prefix(blanks);
    const std::string_view word = token.substr(0, token.find(' '));
    if (parseDouble(word)) places.push_back({line, column, word});
    column += word.size();
    token.remove_prefix(word.size());
  }
}

void addTokens(const Recs& lines, std::vector<NumberPlace>& places) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    if (line.size() < kTokensLayout.data || hasTagKeyword(line)) return;
    // The characters of a text stand behind its numbers, on a line of their own.
    if (i > 0 && line.substr(kTokensLayout.keyword, 2) == Keywords::kTxt.tokens) return;
    for (std::size_t column = kTokensLayout.data; column < line.size();) {
      const std::string_view token = line.substr(column, line.find(',', column) - column);
      if (!isAttribute(token)) addNumbers(token, i, column, places);
      column += token.size() + 1;
    }
  }
}

}  // namespace

std::vector<NumberPlace> numberPlaces(const Recs& lines, std::int32_t mode) {
  std::vector<NumberPlace> places;
  if (mode == kTokens) {
    addTokens(lines, places);
  } else {
    addFields(lines, places);
  }
  return places;
}

}  // namespace VeskTool
