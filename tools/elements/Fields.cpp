// SPDX-License-Identifier: MIT
#include "elements/Fields.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "output/RecordFields.h"
#include "output/RecordLayout.h"
#include "output/RecordWords.h"
#include "prims/TagLines.h"

namespace VeskTool {
namespace {

std::string_view partOf(std::string_view line, std::size_t begin, std::size_t length) {
  return begin < line.size() ? line.substr(begin, length) : std::string_view();
}

// start x, start y, start z, diameter
std::vector<std::string> namesOf(std::string_view keyword, int mode) {
  const Vesk::RecordShape* shape = Vesk::recordNamed(keyword, mode);
  if (shape == nullptr) return {};
  std::vector<std::string> names;
  for (const Vesk::RecordField& field : shape->fields(mode)) {
    if (field.numbers() == 1) {
      names.emplace_back(field.name);
      continue;
    }
    for (const std::string_view axis : Vesk::kAxisNames) {
      names.push_back(std::string(field.name) += axis);
    }
  }
  return names;
}

// What follows "pt", "vn" or "ar"; null for another word.
const Vesk::WordFields* fieldsBehind(std::string_view word) {
  const auto* found =
      std::find_if(std::begin(Vesk::kWordFields), std::end(Vesk::kWordFields),
                   [word](const Vesk::WordFields& each) { return Vesk::tagOf(each.word) == word; });
  return found == std::end(Vesk::kWordFields) ? nullptr : found;
}

bool isClosing(std::string_view word) {
  return word == Vesk::tagOf(Vesk::Words::kFt) || word == Vesk::tagOf(Vesk::Words::kTk);
}

class FieldScanner {
 public:
  explicit FieldScanner(const Vesk::Recs& lines) : lines_(lines) {}

  std::vector<Field> fixedColumns();
  std::vector<Field> tokens();

 private:
  void add(std::size_t begin, std::size_t length, std::string meaning) {
    const std::string_view text = partOf(line(), begin, length);
    if (text.empty()) return;
    fields_.push_back({index_, begin + 1, std::string(text), std::move(meaning)});
  }

  void addPrefix(std::size_t begin, const std::vector<std::pair<const char*, std::size_t>>& parts) {
    for (const auto& [meaning, width] : parts) {
      add(begin, width, meaning);
      begin += width;
    }
  }

  std::string nextName() {
    return next_ < names_.size() ? names_[next_++] : std::string("further number");
  }

  std::string_view line() const { return lines_[index_]; }

  void addNumbers(std::size_t column);
  void addTagLine(std::string_view number);
  void addTokens(std::string_view keyword);
  void addWord(std::size_t begin, std::size_t length);
  void openWord(std::string_view word);

  const Vesk::Recs& lines_;
  std::size_t index_ = 0;
  std::vector<Field> fields_;
  std::vector<std::string> names_;
  std::size_t next_ = 0;
  std::array<std::size_t, std::size(Vesk::kWordFields)> counts_{};  // of each word so far
};

void FieldScanner::addNumbers(std::size_t column) {
  for (; column < line().size(); column += Vesk::kNumberFieldWidth) {
    add(column, Vesk::kNumberFieldWidth, nextName());
  }
}

// "    *name*" and pairs of numbers.
void FieldScanner::addTagLine(std::string_view number) {
  std::size_t column = Vesk::kFixedColumnsLayout.data + std::string_view("    *").size();
  if (number == Vesk::TagWords::kNamesLine) {
    while (column < line().size()) {
      const std::size_t end = std::min(line().find('*', column), line().size());
      add(column, end - column, "name without values");
      column = end + 1;
    }
    return;
  }
  const std::size_t end = std::min(line().find('*', column), line().size());
  add(column, end - column, "name");
  names_.clear();
  for (std::size_t at = end + 1; at < line().size(); at += Vesk::kNumberFieldWidth) {
    add(at, Vesk::kNumberFieldWidth, "value");
  }
}

std::vector<Field> FieldScanner::fixedColumns() {
  const std::string keyword(partOf(lines_.front(), Vesk::kFixedColumnsLayout.keyword, 3));
  names_ = namesOf(keyword, Vesk::kFixedColumns);
  for (; index_ < lines_.size(); ++index_) {
    addPrefix(0, {{"line number", 2},
                  {"F6", 4},
                  {"F2, second header text", 2},
                  {"F4", 2},
                  {"F1, header text", 8},
                  {"F3, element counter", 3},
                  {"keyword", 3}});
    const std::string_view number = partOf(line(), 0, Vesk::kLineNumberWidth);
    const std::string_view data = partOf(line(), Vesk::kFixedColumnsLayout.data, line().npos);
    if (data.starts_with(Vesk::TagWords::kOpening)) {
      addTagLine(number);
    } else if (keyword == Vesk::Keywords::kTxt.fixedColumns &&
               number == Vesk::LineNumbers::kTextThird) {
      add(Vesk::kFixedColumnsLayout.data, 3, "length of the text");
      add(Vesk::kFixedColumnsLayout.data + 3, line().npos, "text");
    } else {
      addNumbers(Vesk::kFixedColumnsLayout.data);
    }
  }
  return std::move(fields_);
}

void FieldScanner::openWord(std::string_view word) {
  next_ = 0;
  if (isClosing(word)) names_ = {std::string(word) + ", closing attribute"};
  const Vesk::WordFields* fields = fieldsBehind(word);
  if (fields == nullptr) return;
  std::size_t& count = counts_[static_cast<std::size_t>(fields - std::begin(Vesk::kWordFields))];
  const std::string name = std::string(fields->name) + ' ' + std::to_string(count++);
  names_.clear();
  for (const std::string_view number : fields->numbers) {
    names_.push_back(name + std::string(number));
  }
}

void FieldScanner::addWord(std::size_t begin, std::size_t length) {
  const std::string_view word = partOf(line(), begin, length);
  if (isClosing(word) || fieldsBehind(word) != nullptr) {
    add(begin, length, "word");
    openWord(word);
  } else {
    add(begin, length, nextName());
  }
}

void FieldScanner::addTokens(std::string_view keyword) {
  std::size_t at = Vesk::kTokensLayout.data;
  const bool isTags = keyword == Vesk::Keywords::kBoxTags || keyword == Vesk::Keywords::kRedTags;
  while (at < line().size()) {
    at = std::min(line().find_first_not_of(" ,", at), line().size());
    const std::string_view rest = line().substr(at);
    const bool isAttribute =
        rest.starts_with(Vesk::Words::kCs) || rest.starts_with(Vesk::Words::kSp);
    if (isAttribute || (isTags && rest.starts_with(Vesk::TagWords::kEntry))) {
      const std::size_t end = std::min(rest.find(','), rest.size());
      add(at, 2, "word");
      add(at + 3, end - std::min<std::size_t>(end, 3),
          !isAttribute ? "name and values" : (rest.starts_with("cs") ? "F6" : "F7"));
      at += end;
      continue;
    }
    const std::size_t end = std::min(rest.find_first_of(" ,"), rest.size());
    addWord(at, end);
    at += end;
  }
}

std::vector<Field> FieldScanner::tokens() {
  names_ = namesOf(partOf(lines_.front(), Vesk::kTokensLayout.keyword, 2), Vesk::kTokens);
  for (; index_ < lines_.size(); ++index_) {
    addPrefix(0, {{"F1, header text", 8},
                  {"F2, second header text", 2},
                  {"F3, element counter", 3},
                  {"F4", 2},
                  {"F5", 2},
                  {"line number", 2},
                  {"keyword", 2}});
    const std::string_view keyword = partOf(line(), Vesk::kTokensLayout.keyword, 2);
    // All numbers have been read: the text itself.
    if (keyword == Vesk::Keywords::kTxt.tokens && index_ > 0 && next_ == names_.size()) {
      add(Vesk::kTokensLayout.data, line().npos, "text");
    } else {
      addTokens(keyword);
    }
  }
  return std::move(fields_);
}

}  // namespace

std::vector<Field> fieldsOf(const Vesk::Recs& lines, int mode) {
  if (lines.empty()) return {};
  FieldScanner scanner(lines);
  return mode == Vesk::kTokens ? scanner.tokens() : scanner.fixedColumns();
}

}  // namespace VeskTool
