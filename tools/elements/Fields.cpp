// SPDX-License-Identifier: MIT
#include "elements/Fields.h"

#include <algorithm>
#include <string_view>

#include "output/RecordLayout.h"
#include "output/RecordWords.h"
#include "prims/TagLines.h"

namespace VeskTool {
namespace {

struct Names {
  std::string_view keyword;
  std::string_view names;  // with commas; "start*" is start x, start y, start z
};

// Which numbers follow each other, by keyword. See docs/records.md.
constexpr Names kFixedNames[] = {
    {"CYL", "start*,end*,diameter"},
    {"CON", "start*,end*,start diameter,end diameter"},
    {"BOX", "corner*,end of edge 1*,end of edge 2*,end of edge 3*"},
    {"TOR", "centre*,start*,end*,bend radius,diameter"},
    {"RED", "corner 0*,corner 1*,corner 2*,corner 3*,corner 4*,corner 5*,corner 6*,corner 7*"},
    {"ELB", "bend axis end a*,bend axis end b*,outer start*,outer end*,inner radius"},
    {"PNT", "point*,size or direction*,direction*"},
    {"SEG", "from*,to*"},
    {"TRI", "vertex 0*,vertex 1*,vertex 2*"},
    {"QUA", "vertex 0*,vertex 1*,vertex 2*,vertex 3*"},
    {"TRN", "vertex 0*,vertex 1*,vertex 2*,normal 0*,normal 1*,normal 2*"},
    {"QUN", "vertex 0*,vertex 1*,vertex 2*,vertex 3*,normal 0*,normal 1*,normal 2*,normal 3*"},
    {"TXT", "position*,direction*,up direction*,height,width,alignment"},
};

constexpr Names kTokenNames[] = {
    {"c ", "origin*,axis*,diameter"},
    {"n ", "origin*,axis*,start diameter,end diameter"},
    {"b ", "edge 1*,corner*,edge 2*,edge 3*"},
    {"t ", "centre*,start vector*,end vector*,diameter"},
    {"r ",
     "corner 0*,to corner 1*,to corner 2*,to corner 3*,to corner 4*,to corner 5*,"
     "to corner 6*,to corner 7*"},
    {"e ", "centre*,start vector*,end vector*,depth,width"},
    {"x ", "position*,direction*,up direction*,height,width,alignment,length of the text"},
};

std::string_view partOf(std::string_view line, std::size_t begin, std::size_t length) {
  return begin < line.size() ? line.substr(begin, length) : std::string_view();
}

// "start*,diameter" -> start x, start y, start z, diameter
std::vector<std::string> expand(std::string_view names) {
  std::vector<std::string> result;
  while (!names.empty()) {
    std::string name(names.substr(0, names.find(',')));
    names.remove_prefix(std::min(names.size(), name.size() + 1));
    if (!name.ends_with('*')) {
      result.push_back(name);
      continue;
    }
    name.pop_back();
    for (const char* axis : {" x", " y", " z"}) result.push_back(name + axis);
  }
  return result;
}

template <std::size_t N>
std::vector<std::string> namesOf(const Names (&table)[N], std::string_view keyword) {
  for (const Names& each : table) {
    if (each.keyword == keyword) return expand(each.names);
  }
  return {};
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
  std::size_t vertices_ = 0;
  std::size_t normals_ = 0;
  std::size_t arcs_ = 0;
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
  names_ = namesOf(kFixedNames, keyword);
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
    } else if (keyword == "TXT" && number == Vesk::LineNumbers::kTextThird) {
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
  if (word == "pt") names_ = expand("vertex " + std::to_string(vertices_++) + '*');
  if (word == "vn") names_ = expand("normal " + std::to_string(normals_++) + '*');
  if (word == "ar") {
    const std::string arc = "arc " + std::to_string(arcs_++);
    names_ = {arc + " radius", arc + " value 1", arc + " value 2", arc + " value 3"};
  }
  if (word == "ft" || word == "tk") names_ = {std::string(word) + ", closing attribute"};
}

void FieldScanner::addWord(std::size_t begin, std::size_t length) {
  const std::string_view word = partOf(line(), begin, length);
  if (word == "pt" || word == "vn" || word == "ar" || word == "ft" || word == "tk") {
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
  names_ = namesOf(kTokenNames, partOf(lines_.front(), Vesk::kTokensLayout.keyword, 2));
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
    if (keyword == "x " && index_ > 0 && next_ == names_.size()) {
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
