// SPDX-License-Identifier: MIT
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/Command.h"
#include "elements/Describe.h"
#include "elements/Fields.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "files/SidecarFile.h"
#include "text/Json.h"
#include "text/Table.h"

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
            "LINE may be any line of the element; options that choose elements may take its place. "
            "Columns are counted in bytes from 1.",
            {{"vesk show plant.dat:1042", "the element at this line"},
             {"vesk show plant.dat --near 1000,0,500,50", "everything near a point"},
             {"vesk show plant.dat:1042:31-40", "the place of a finding, as printed"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE:LINE", word_,
                   "record file and, unless options choose elements, a line from 1; - is stdin")
        ->required();
    app.add_option("--attributes", attributes_, "the sidecar, instead of the one beside FILE")
        ->type_name("SIDECAR")
        ->default_str("beside FILE");
    app.add_flag("--json", json_, "one JSON document");
    selection_.define(app);
  }

  Exit run(Session& session) override {
    if (selection_.isGiven()) return showChosen(session);
    const std::optional<Place> place = placeOf(word_);
    if (!place || place->line == 0) {
      throw Failure(Exit::kUsage, "\"" + word_ + "\" names no line",
                    "give a file, a colon and a line, for instance plant.dat:1042");
    }
    expectInput(place->file, session.progress());
    InputCount count;
    Vesk::RecordFile records = openRecords(place->file, count, session);
    const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(place->file, attributes_);
    std::uint64_t elements = 0;
    for (;;) {
      const Vesk::RecordFile::Found found = records.next();
      if (found == Vesk::RecordFile::Found::kEnd) break;
      const bool isFault = found == Vesk::RecordFile::Found::kFault;
      const std::uint64_t last = isFault ? records.fault().lastLine : records.element().lastLine;
      if (!isFault) ++elements;
      Attributes attributes;
      if (!isFault && sidecar != nullptr) attributes = attributesOf(*sidecar, records.element());
      if (last < place->line) continue;
      if (isFault && records.mode() != 0) session.say(findingOf(records));
      if (isFault && records.lines().empty()) return Exit::kNo;
      session.out().write(json_ ? jsonOf(records, isFault, attributes)
                                : textOf(records, isFault, attributes, session));
      return isFault ? Exit::kNo : Exit::kDone;
    }
    requireRecords(records, count, elements);
    throw Failure(Exit::kInput, records.name() + ": has " + std::to_string(count.lines) +
                                    " lines, not " + std::to_string(place->line));
  }

 private:
  // What the sidecar tells of an element: column and value.
  using Attributes = std::vector<std::pair<std::string, std::string>>;

  static Attributes attributesOf(SidecarFile& sidecar, const Vesk::RecordElement& element) {
    Attributes attributes;
    const Vesk::SidecarRow* row = sidecar.find(element);
    if (row == nullptr) return attributes;
    for (std::size_t i = 0; i < row->values.size(); ++i) {
      if (!row->values[i].empty()) attributes.emplace_back(sidecar.columns()[i], row->values[i]);
    }
    return attributes;
  }

  // One element below the other; with --json one document of all.
  Exit showChosen(Session& session) const {
    const std::string file = word_ == shownName("-") ? "-" : word_;
    Choice choice(selection_, {file}, session);
    expectInput(file, session.progress());
    const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(file, attributes_);
    bool isFirst = true;
    const RecordsRead read = readRecords(file, session, [&](Vesk::RecordFile& records) {
      Attributes attributes;
      if (sidecar != nullptr) attributes = attributesOf(*sidecar, records.element());
      if (!choice.takes(records.element())) return;
      std::string text;
      if (json_) {
        text = isFirst ? "{\n  \"schema\": \"vesk.show-list/1\",\n  \"elements\": [\n" : ",\n";
        JsonWriter json(text);
        appendElement(json.beginObject(), records, false, attributes);
        json.endObject();
        text.erase(text.find_last_not_of('\n') + 1);
      } else {
        text = (isFirst ? "" : "\n") + textOf(records, false, attributes, session);
      }
      session.out().write(text);
      isFirst = false;
    });
    if (json_ && !isFirst) session.out().write("\n  ]\n}\n");
    return worst(read.exit(), choice.finish(session));
  }

  static std::string textOf(Vesk::RecordFile& records, bool isFault, const Attributes& attributes,
                            Session& session) {
    const Vesk::RecordElement& element = records.element();
    std::string text;
    std::uint64_t number = element.firstLine;
    std::string title =
        isFault ? "element that can't be read" : std::string(wordOf(kindOf(*element.geo)));
    title += ", " + std::string(styleName(records.mode())) + " style";
    session.look().append(text, Look::Paint::kBold, title);
    text += '\n';
    for (const std::string& line : records.lines()) {
      text += "  " + std::to_string(number++) + " | " + session.shown(line) + '\n';
    }
    text += '\n';
    Table table({{"LINE", Table::Side::kRight},
                 {"COLUMNS", Table::Side::kLeft},
                 {"TEXT", Table::Side::kLeft},
                 {"MEANING", Table::Side::kLeft}});
    for (const Field& field : fieldsOf(records.lines(), records.mode())) {
      table.add({std::to_string(element.firstLine + field.line), columnsText(field),
                 "'" + session.shown(field.text) + "'", field.meaning});
    }
    text += table.text();
    if (!isFault) {
      text += '\n';
      Table values({{"VALUE", Table::Side::kLeft}, {"", Table::Side::kLeft}});
      for (const Property& property : propertiesOf(*element.geo)) {
        values.add({property.name, session.shown(valueText(property))});
      }
      text += values.text();
    }
    if (!attributes.empty()) {
      text += '\n';
      Table own({{"ATTRIBUTE", Table::Side::kLeft}, {"", Table::Side::kLeft}});
      for (const auto& [column, value] : attributes) {
        own.add({session.shown(column), session.shown(value)});
      }
      text += own.text();
    }
    return text;
  }

  static std::string jsonOf(Vesk::RecordFile& records, bool isFault, const Attributes& attributes) {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.show/1");
    appendElement(json, records, isFault, attributes);
    json.endObject();
    return text;
  }

  static void appendElement(JsonWriter& json, Vesk::RecordFile& records, bool isFault,
                            const Attributes& attributes) {
    const Vesk::RecordElement& element = records.element();
    json.key("file").value(records.name());
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
    if (!attributes.empty()) {
      json.key("attributes").beginObject();
      for (const auto& [column, value] : attributes) json.key(column).value(value);
      json.endObject();
    }
    if (isFault) {
      json.key("fault");
      appendJson(json, findingOf(records));
    } else {
      json.key("kind").value(nameOf(kindOf(*element.geo)));
      json.key("values").beginObject();
      for (const Property& property : propertiesOf(*element.geo)) appendJson(json, property);
      json.endObject();
    }
  }

  std::string word_;
  SelectionOptions selection_;
  std::string attributes_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeShow() { return std::make_unique<ShowCommand>(); }

}  // namespace VeskTool
