// SPDX-License-Identifier: MIT
#include <memory>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "files/SidecarFile.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Table.h"

namespace VeskTool {
namespace {

// The form of the answer; elements are added one by one.
class Listing {
 public:
  explicit Listing(TextSink& out) : out_(out) {}
  virtual ~Listing() = default;
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  // `columns` are those of the sidecar, `row` is the element's; both empty without one.
  virtual void begin(const std::string& file, const std::vector<std::string>& columns) = 0;
  virtual void add(const Vesk::RecordElement& element, const Vesk::SidecarRow* row) = 0;
  virtual void end() {}

 protected:
  TextSink& out_;
  std::string text_;
};

void appendRight(std::string& to, std::string_view text, std::size_t width) {
  if (text.size() < width) to.append(width - text.size(), ' ');
  to += text;
}

void appendLeft(std::string& to, std::string_view text, std::size_t width) {
  to += text;
  if (text.size() < width) to.append(width - text.size(), ' ');
}

// Columns of fixed widths, since the file is not in memory.
class TableListing : public Listing {
 public:
  using Listing::Listing;

  void begin(const std::string& /*file*/, const std::vector<std::string>& /*columns*/) override {
    out_.write(
        "    LINE  KIND        HEADER       COUNTER             X             Y"
        "             Z  SIZES\n");
  }

  void add(const Vesk::RecordElement& element, const Vesk::SidecarRow* /*row*/) override {
    text_.clear();
    appendRight(text_, std::to_string(element.firstLine), 8);
    text_ += "  ";
    appendLeft(text_, wordOf(kindOf(*element.geo)), 10);
    text_ += "  ";
    appendLeft(text_, headerOf(element.header), 11);
    text_ += "  ";
    appendRight(text_, std::to_string(element.counter()), 7);
    const GePoint p = placeOf(*element.geo);
    for (const double v : {p.x, p.y, p.z}) {
      text_ += "  ";
      number_.clear();
      appendRounded(number_, v, 3);
      appendRight(text_, number_, 12);
    }
    const std::string sizes = sizesOf(*element.geo);
    if (!sizes.empty()) text_.append("  ").append(sizes);
    text_ += '\n';
    out_.write(text_);
  }

 private:
  // Most elements have the header of the one before.
  const std::string& headerOf(const Vesk::HeaderFields& fields) {
    const std::string_view f1(fields.f1.data(), fields.f1.width());
    const std::string_view f2(fields.f2.data(), fields.f2.width());
    if (f1 != f1_ || f2 != f2_) {
      f1_ = f1;
      f2_ = f2;
      header_ = headerText(fields);
    }
    return header_;
  }

  std::string number_;
  std::string f1_;
  std::string f2_;
  std::string header_;
};

class CsvListing : public Listing {
 public:
  using Listing::Listing;

  void begin(const std::string& /*file*/, const std::vector<std::string>& columns) override {
    text_ = "line,kind,header,group,counter,x,y,z,volume,sizes";
    for (const std::string& column : columns) appendCsv(text_ += ',', column);
    out_.write(text_ += '\n');
    width_ = columns.size();
  }

  void add(const Vesk::RecordElement& element, const Vesk::SidecarRow* row) override {
    text_ = std::to_string(element.firstLine);
    text_.append(",").append(nameOf(kindOf(*element.geo))).append(",");
    appendCsv(text_, trimmedField(element.header.f1));
    text_ += ',';
    appendCsv(text_, trimmedField(element.header.f2));
    text_ += ',' + std::to_string(element.counter());
    const GePoint p = placeOf(*element.geo);
    for (const double v : {p.x, p.y, p.z, element.geo->volume()}) {
      text_ += ',';
      appendShortest(text_, v);
    }
    text_ += ',';
    appendCsv(text_, sizesOf(*element.geo));
    for (std::size_t i = 0; i < width_; ++i) {
      text_ += ',';
      if (row == nullptr) continue;
      // As in the sidecar: no text is a formula.
      const std::string& value = row->values[i];
      appendCsv(text_, Vesk::isLikeFormula(value) ? "'" + value : value);
    }
    text_ += '\n';
    out_.write(text_);
  }

 private:
  std::size_t width_ = 0;
};

class JsonListing : public Listing {
 public:
  explicit JsonListing(TextSink& out) : Listing(out), json_(text_) {}

  void begin(const std::string& file, const std::vector<std::string>& columns) override {
    columns_ = columns;
    json_.beginObject().key("schema").value("vesk.list/1").key("file").value(file);
    json_.key("elements").beginArray();
    flush();
  }

  void add(const Vesk::RecordElement& element, const Vesk::SidecarRow* row) override {
    json_.beginObjectRow().key("line").value(element.firstLine);
    json_.key("kind").value(nameOf(kindOf(*element.geo)));
    json_.key("header").value(trimmedField(element.header.f1));
    json_.key("group").value(trimmedField(element.header.f2));
    json_.key("counter").value(element.counter());
    json_.key("volume").value(element.geo->volume());
    json_.key("values").beginObject();
    for (const Property& property : propertiesOf(*element.geo)) appendJson(json_, property);
    json_.endObject();
    if (row != nullptr) {
      json_.key("attributes").beginObject();
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (!row->values[i].empty()) json_.key(columns_[i]).value(row->values[i]);
      }
      json_.endObject();
    }
    json_.endObject();
    flush();
  }

  void end() override {
    json_.endArray().endObject();
    flush();
  }

 private:
  void flush() {
    out_.write(text_);
    text_.clear();
  }

  JsonWriter json_;
  std::vector<std::string> columns_;
};

class ListCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "list",
        Group::kLook,
        "FILE",
        "one line per element",
        "X, Y and Z are the first point of the record. Elements that can't be read are reported "
        "and left out; the exit code is then 1. --csv and --json tell the attributes of a sidecar, "
        "plant.attributes.csv beside plant.dat.",
        {{"vesk list plant.dat | less", "all elements"},
         {"vesk list plant.dat --only bend --header 'P-10*'", "the bends of some lines"},
         {"vesk list plant.dat --bbox 0,0,0,5000,5000,3000", "what is in a corner"},
         {"vesk list --csv plant.dat > plant.csv", "for a spreadsheet"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", file_, "record file; - is stdin")->required();
    app.add_option("--attributes", attributes_, "the sidecar, in place of the one beside FILE")
        ->type_name("SIDECAR")
        ->default_str("beside FILE");
    CLI::Option* csv = app.add_flag("--csv", csv_, "comma-separated values");
    app.add_flag("--json", json_, "one JSON document with all values")->excludes(csv);
    selection_.define(app);
  }

  Exit run(Session& session) override {
    Choice choice(selection_, {file_}, session);
    expectInput(file_, session.progress());
    const std::unique_ptr<Listing> listing = makeListing(session.out());
    const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(file_, attributes_);
    const std::vector<std::string> columns =
        sidecar == nullptr ? std::vector<std::string>() : sidecar->columns();
    bool begun = false;
    const RecordsRead read = readRecords(file_, session, [&](Vesk::RecordFile& records) {
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(records.element());
      if (!choice.takes(records.element())) return;
      if (!begun) listing->begin(records.name(), columns);
      begun = true;
      listing->add(records.element(), row);
    });
    if (choice.isNothing()) return worst(read.exit(), choice.finish(session));
    if (!begun) listing->begin(read.name, columns);
    listing->end();
    if (sidecar != nullptr) sidecar->finish(session);
    return read.exit();
  }

 private:
  std::unique_ptr<Listing> makeListing(TextSink& out) const {
    if (csv_) return std::make_unique<CsvListing>(out);
    if (json_) return std::make_unique<JsonListing>(out);
    return std::make_unique<TableListing>(out);
  }

  std::string file_;
  std::string attributes_;
  SelectionOptions selection_;
  bool csv_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeList() { return std::make_unique<ListCommand>(); }

}  // namespace VeskTool
