#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "Command.h"
#include "Describe.h"
#include "Fields.h"
#include "Files.h"
#include "Json.h"
#include "Kinds.h"
#include "Table.h"

namespace VeskTool {
namespace {

struct Place {
  std::string file;
  std::uint64_t line = 0;
};

bool isNumber(std::string_view text) {
  return !text.empty() && text.size() < 19 && text.find_first_not_of("0123456789") == text.npos;
}

// "plant.dat:1042", and what a finding begins with: "plant.dat:1042:31-40:".
std::optional<Place> placeOf(std::string word) {
  std::vector<std::string> numbers;
  while (word.ends_with(':')) word.pop_back();
  while (numbers.size() < 2) {
    const std::size_t colon = word.rfind(':');
    if (colon == word.npos) break;
    const std::string last = word.substr(colon + 1);
    const std::string begin = last.substr(0, last.find('-'));
    if (!isNumber(begin)) break;
    numbers.push_back(begin);
    word.erase(colon);
  }
  if (numbers.empty() || word.empty()) return std::nullopt;
  if (word == shownName("-")) word = "-";
  return Place{word, std::stoull(numbers.back())};
}

std::string columnsText(const Field& field) {
  const std::string first = std::to_string(field.column);
  if (field.text.size() < 2) return first;
  return first + '-' + std::to_string(field.column + field.text.size() - 1);
}

class ShowCommand : public Command {
 public:
  CommandText text() const override {
    return {"show",
            Group::kLook,
            "FILE:LINE",
            "the fields of an element with their columns",
            "Any line of the element will do. Columns count from 1, in bytes.",
            {{"vesk show plant.dat:1042", "the element at this line"},
             {"vesk show plant.dat:1042:31-40", "the place of a finding, as it was printed"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE:LINE", word_, "record file and line, from 1; - is stdin")->required();
    app.add_flag("--json", json_, "one JSON document");
  }

  Exit run(Session& session) override {
    const std::optional<Place> place = placeOf(word_);
    if (!place || place->line == 0) {
      throw Failure(Exit::kUsage, "\"" + word_ + "\" names no line",
                    "a file, a colon and a line, for instance plant.dat:1042");
    }
    expectInput(place->file, session.progress());
    InputCount count;
    Vesk::RecordFile records = openRecords(place->file, count, session);
    std::uint64_t elements = 0;
    for (;;) {
      const Vesk::RecordFile::Found found = records.next();
      if (found == Vesk::RecordFile::Found::kEnd) break;
      const bool isFault = found == Vesk::RecordFile::Found::kFault;
      const std::uint64_t last = isFault ? records.fault().lastLine : records.element().lastLine;
      if (!isFault) ++elements;
      if (last < place->line) continue;
      if (isFault && records.mode() != 0) session.say(findingOf(records));
      if (isFault && records.lines().empty()) return Exit::kNo;
      session.out().write(json_ ? jsonOf(records, isFault) : textOf(records, isFault, session));
      return isFault ? Exit::kNo : Exit::kDone;
    }
    requireRecords(records, count, elements);
    throw Failure(Exit::kInput, records.name() + ": has " + std::to_string(count.lines) +
                                    " lines, not " + std::to_string(place->line));
  }

 private:
  static std::string textOf(Vesk::RecordFile& records, bool isFault, Session& session) {
    const Vesk::RecordElement& element = records.element();
    std::string text;
    std::uint64_t number = element.firstLine;
    std::string title =
        isFault ? "element that can't be read" : std::string(nameOf(kindOf(*element.geo)));
    title += ", " + std::string(styleName(records.mode())) + " style";
    session.look().append(text, Look::Paint::kBold, title);
    text += '\n';
    for (const std::string& line : records.lines()) {
      text += "  " + std::to_string(number++) + " | " + line + '\n';
    }
    text += '\n';
    Table table({{"LINE", Table::Side::kRight},
                 {"COLUMNS", Table::Side::kLeft},
                 {"TEXT", Table::Side::kLeft},
                 {"MEANING", Table::Side::kLeft}});
    for (const Field& field : fieldsOf(records.lines(), records.mode())) {
      table.add({std::to_string(element.firstLine + field.line), columnsText(field),
                 "'" + field.text + "'", field.meaning});
    }
    text += table.text();
    if (!isFault) {
      text += '\n';
      Table values({{"VALUE", Table::Side::kLeft}, {"", Table::Side::kLeft}});
      for (const Property& property : propertiesOf(*element.geo)) {
        values.add({property.name, valueText(property)});
      }
      text += values.text();
    }
    return text;
  }

  static std::string jsonOf(Vesk::RecordFile& records, bool isFault) {
    const Vesk::RecordElement& element = records.element();
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.show/1").key("file").value(records.name());
    json.key("style").value(styleName(records.mode()));
    json.key("firstLine").value(element.firstLine).key("lastLine").value(element.lastLine);
    json.key("lines").beginArray();
    for (const std::string& line : records.lines()) json.value(line);
    json.endArray();
    json.key("fields").beginArray();
    for (const Field& field : fieldsOf(records.lines(), records.mode())) {
      json.beginObjectRow().key("line").value(element.firstLine + field.line);
      json.key("column").value(std::uint64_t{field.column});
      json.key("endColumn").value(std::uint64_t{field.column + field.text.size() - 1});
      json.key("text").value(field.text).key("meaning").value(field.meaning).endObject();
    }
    json.endArray();
    if (isFault) {
      json.key("fault");
      appendJson(json, findingOf(records));
    } else {
      json.key("kind").value(nameOf(kindOf(*element.geo)));
      json.key("values").beginObject();
      for (const Property& property : propertiesOf(*element.geo)) appendJson(json, property);
      json.endObject();
    }
    json.endObject();
    return text;
  }

  std::string word_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeShow() { return std::make_unique<ShowCommand>(); }

}  // namespace VeskTool
