// SPDX-License-Identifier: MIT
#include "input/TagReader.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "input/ParseDouble.h"
#include "input/ReaderFrame.h"

namespace Vesk {
namespace {

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

[[noreturn]] void failLine(const Input& in, std::string_view number) {
  in.fail(number == TagWords::kNamesLine ? ReadCause::kBadNames : ReadCause::kBadValues, number);
}

// "left*right*" -> two tags without values; false if this is no list of names.
bool addNames(std::string_view text, std::vector<TagEntry>& tags) {
  const std::string_view closing = TagWords::kClosing;
  if (!text.ends_with(closing)) return false;
  while (!text.empty()) {
    const std::size_t end = text.find(closing);
    tags.push_back({std::string(text.substr(0, end)), {}});
    text.remove_prefix(end + closing.size());
  }
  return true;
}

// "seam*    1.000    2.500" -> one tag; false if this is none with values.
bool addTag(std::string_view text, std::vector<TagEntry>& tags) {
  const std::size_t end = text.find(TagWords::kClosing);
  if (end == std::string_view::npos) return false;
  TagEntry tag{std::string(text.substr(0, end)), {}};
  text.remove_prefix(end + std::string_view(TagWords::kClosing).size());
  if (text.empty() || text.size() % (2 * kNumberFieldWidth) != 0) return false;
  for (; !text.empty(); text.remove_prefix(2 * kNumberFieldWidth)) {
    const auto first = parseDouble(text.substr(0, kNumberFieldWidth));
    const auto second = parseDouble(text.substr(kNumberFieldWidth, kNumberFieldWidth));
    if (!first || !second) return false;
    tag.values.emplace_back(*first, *second);
  }
  tags.push_back(std::move(tag));
  return true;
}

// A tag line and its continuation lines, joined.
struct TagLine {
  std::string number;      // of the first line, "63" or "64"; empty: none yet
  std::string lastNumber;  // of the last one
  std::size_t lastIndex;   // its index
  std::string text;        // behind the opening

  void addTo(std::vector<TagEntry>& tags, Input& in) const {
    if (number.empty()) return;
    const bool names = number == TagWords::kNamesLine;
    if (names ? addNames(text, tags) : addTag(text, tags)) return;
    in.markToken(lastIndex, in.startColumn);
    // Names may have run on to a line "64"; or that one is no tag line.
    failLine(in, names && lastNumber == TagWords::kValuesLine ? lastNumber : number);
  }
};

std::string_view lastWord(std::string_view text) { return text.substr(text.rfind(' ') + 1); }

// "seam 1 2.5" -> "seam" and the pair; nothing if no pair ends the text.
std::optional<std::pair<double, double>> takeLastPair(std::string_view& text) {
  const std::size_t blank = text.rfind(' ');
  // One word is left, or an empty name before a single value.
  if (blank == std::string_view::npos || blank == 0) return std::nullopt;
  const std::string_view front = text.substr(0, blank);
  const std::size_t before = front.rfind(' ');
  if (before == std::string_view::npos) return std::nullopt;
  const auto first = parseDouble(lastWord(front));
  const auto second = parseDouble(lastWord(text));
  if (!first || !second) return std::nullopt;
  text = front.substr(0, before);
  return std::pair(*first, *second);
}

std::string_view behindEntryWord(std::string_view token) {
  return token.substr(std::string_view(TagWords::kEntry).size());
}

// "ed seam 1 2.5" -> its name and at most `pairs` pairs of values.
TagEntry parseTag(std::string_view token, std::size_t pairs) {
  std::string_view name = behindEntryWord(token);
  TagEntry tag;
  while (tag.values.size() < pairs) {
    const auto pair = takeLastPair(name);
    if (!pair) break;
    tag.values.push_back(*pair);
  }
  // They were taken from the end.
  std::reverse(tag.values.begin(), tag.values.end());
  tag.name = name;
  return tag;
}

// Whether the text is " 1 2.5".
bool isPair(std::string_view text) {
  if (!text.starts_with(' ')) return false;
  const std::size_t blank = text.find(' ', 1);
  return blank != std::string_view::npos && parseDouble(text.substr(1, blank - 1)) &&
         text.find(' ', blank + 1) == std::string_view::npos && parseDouble(text.substr(blank + 1));
}

// The last of tokens each of which repeats the one before and adds a pair, the
// first of them being `first` characters long; nothing if `text` is not made so.
std::optional<TagEntry> lastOfRepeated(std::string_view text, std::size_t first) {
  std::string_view previous = text.substr(0, first);
  std::string_view name = behindEntryWord(previous);
  if (!takeLastPair(name)) return std::nullopt;  // The first has a pair too.
  text.remove_prefix(first);
  for (std::size_t pairs = 2;; ++pairs) {
    const std::size_t end = text.find(TagWords::kEntry, std::min(previous.size(), text.size()));
    const std::string_view token = text.substr(0, end);
    if (token.size() < previous.size() || !isPair(token.substr(previous.size())) ||
        !token.starts_with(previous)) {
      return std::nullopt;
    }
    if (end == std::string_view::npos) return parseTag(token, pairs);
    previous = token;
    text.remove_prefix(end);
  }
}

// For every place of the text how many characters from there on are those that
// it begins with. Takes time in proportion to the text.
std::vector<std::size_t> repeatedLengths(std::string_view text) {
  std::vector<std::size_t> lengths(text.size());
  std::size_t begin = 0;  // of the repetition that reaches farthest
  std::size_t end = 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    std::size_t length = i < end ? std::min(end - i, lengths[i - begin]) : 0;
    while (i + length < text.size() && text[length] == text[i + length]) ++length;
    lengths[i] = length;
    if (i + length > end) {
      begin = i;
      end = i + length;
    }
  }
  return lengths;
}

TagEntry parseRepeatedTag(std::string_view text) {
  std::size_t i = text.find(TagWords::kEntry, 1);
  if (i == std::string_view::npos) return parseTag(text, kAnyNumber);
  const auto lengths = repeatedLengths(text);
  for (; i != std::string_view::npos; i = text.find(TagWords::kEntry, i + 1)) {
    if (lengths[i] < i) continue;
    if (auto tag = lastOfRepeated(text, i)) return *tag;
  }
  return parseTag(text, kAnyNumber);
}

// The line's data if it has this keyword.
std::optional<std::string_view> dataOf(std::string_view line, std::string_view keyword) {
  if (line.size() < kTokensLayout.data) return std::nullopt;
  if (!line.substr(kTokensLayout.keyword).starts_with(keyword)) return std::nullopt;
  return line.substr(kTokensLayout.data);
}

// Notes the place of a character of the lines with this keyword, joined.
void markTag(Input& in, std::string_view keyword, std::size_t position) {
  for (std::size_t i = 0; i < in.recs.size(); ++i) {
    const auto data = dataOf(in.recs[i], keyword);
    if (!data) continue;
    // Behind a line is at the start of the next one, if there is one.
    if (position <= data->size()) in.markToken(i, kTokensLayout.data + position);
    if (position < data->size()) return;
    position -= data->size();
  }
}

}  // namespace

void readTagLines(Input& in, std::vector<TagEntry>& tags) {
  tags.clear();
  TagLine tagLine{};
  while (in.nextLineVerbatim()) {
    std::string_view data = in.getRest();
    const std::string_view number = std::string_view(in.line).substr(0, kLineNumberWidth);
    const bool names = number == TagWords::kNamesLine;
    if ((names || number == TagWords::kValuesLine) && data.starts_with(TagWords::kOpening)) {
      tagLine.addTo(tags, in);
      data.remove_prefix(std::string_view(TagWords::kOpening).size());
      tagLine = {std::string(number), std::string(number), in.lineIndex, std::string(data)};
    } else if (names || (tagLine.number.empty() && number == TagWords::kValuesLine)) {
      failLine(in, number);
    } else {
      tagLine.lastNumber = number;
      tagLine.lastIndex = in.lineIndex;
      tagLine.text += data;
    }
  }
  tagLine.addTo(tags, in);
}

void readTagTokens(Input& in, const TagTokens& form, std::vector<TagEntry>& tags) {
  tags.clear();
  std::string text;
  bool any = false;
  for (const std::string& line : in.recs) {
    const auto data = dataOf(line, form.keyword);
    if (!data) continue;
    any = true;
    text += *data;
  }
  if (!any) return;

  std::string_view lastTag;
  std::string_view rest = text;
  const auto addLast = [&] {
    if (!lastTag.empty()) tags.push_back(parseTag(lastTag, kAnyNumber));
  };
  for (bool more = true; more;) {
    const std::size_t comma = rest.find(',');
    const std::string_view token = rest.substr(0, comma);
    more = comma != std::string_view::npos;
    if (more) rest.remove_prefix(comma + 1);
    if (token.starts_with(TagWords::kEntry)) {
      addLast();
      lastTag = token;
    } else if (!takeClosing(in, token)) {
      markTag(in, form.keyword, static_cast<std::size_t>(token.data() - text.data()));
      in.fail(form.unknown, token.substr(0, token.find(' ')));
    }
  }
  if (form.lastRepeats && !lastTag.empty()) {
    tags.push_back(parseRepeatedTag(lastTag));
  } else {
    addLast();
  }

  // Unless something is left on the lines before.
  if (!in.atEnd() && !dataOf(in.line, form.keyword)) return;
  while (in.nextLineVerbatim()) {
  }
}

}  // namespace Vesk
