#include <array>
#include <string>
#include <vector>

#include "Command.h"
#include "Describe.h"
#include "Files.h"
#include "Json.h"
#include "Kinds.h"
#include "Nearest.h"
#include "Numbers.h"
#include "Table.h"

namespace VeskTool {
namespace {

// Which elements are listed.
class Filter {
 public:
  std::vector<std::string> kinds;
  std::string header;
  std::string box;

  void define(CLI::App& app) {
    app.add_option("--only", kinds, "this kind only; may be given several times: " + kindNames())
        ->type_name("KIND")
        ->default_str("all")
        ->take_all()
        ->expected(1);
    app.add_option("--header", header,
                   "this header only: field F1 and, after a blank, F2; * and ? "
                   "stand for any characters")
        ->type_name("TEXT")
        ->default_str("all");
    app.add_option("--bbox", box,
                   "what touches this box only: X1,Y1,Z1,X2,Y2,Z2 in the unit of the file")
        ->type_name("BOX")
        ->default_str("all");
  }

  // Takes the words apart; throws a Failure for those that mean nothing.
  void prepare() {
    for (const std::string& word : kinds) addKind(word);
    std::array<double, 6> v{};
    if (box.empty()) return;
    if (!readNumbers(box, v.size(), v.data())) {
      throw Failure(Exit::kUsage, "--bbox " + box + ": not six numbers",
                    "X1,Y1,Z1,X2,Y2,Z2, for instance 0,0,0,1000,1000,500");
    }
    wanted_.add({v[0], v[1], v[2]}).add({v[3], v[4], v[5]});
  }

  bool takes(const Vesk::RecordElement& element) const {
    if (!kinds.empty() && !allowed_[static_cast<std::size_t>(kindOf(*element.geo))]) return false;
    if (!header.empty() && !takesHeader(element.header)) return false;
    return box.empty() || touches(*element.geo);
  }

 private:
  void addKind(const std::string& word) {
    const std::optional<Kind> kind = kindNamed(word);
    if (kind) {
      allowed_[static_cast<std::size_t>(*kind)] = true;
      return;
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < kKinds; ++i) names.emplace_back(nameOf(static_cast<Kind>(i)));
    const std::string nearest = didYouMean(word, names);
    throw Failure(Exit::kUsage, "there is no kind \"" + word + "\"",
                  nearest.empty() ? "kinds: " + kindNames() : nearest);
  }

  bool takesHeader(const Vesk::HeaderFields& fields) const {
    return matchesPattern(headerText(fields), header) ||
           matchesPattern(trimmedField(fields.f1), header);
  }

  bool touches(const Vesk::Geo& geo) const {
    Extents own;
    geo.addExtents(own);
    return own.min.x <= wanted_.max.x && own.max.x >= wanted_.min.x && own.min.y <= wanted_.max.y &&
           own.max.y >= wanted_.min.y && own.min.z <= wanted_.max.z && own.max.z >= wanted_.min.z;
  }

  std::array<bool, kKinds> allowed_{};
  Extents wanted_;
};

// The form of the answer; elements are added one by one.
class Listing {
 public:
  explicit Listing(TextSink& out) : out_(out) {}
  virtual ~Listing() = default;
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  virtual void begin(const std::string& file) = 0;
  virtual void add(const Vesk::RecordElement& element) = 0;
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

  void begin(const std::string& /*file*/) override {
    out_.write(
        "    LINE  KIND        HEADER       COUNTER             X             Y"
        "             Z  SIZES\n");
  }

  void add(const Vesk::RecordElement& element) override {
    text_.clear();
    appendRight(text_, std::to_string(element.firstLine), 8);
    text_ += "  ";
    appendLeft(text_, nameOf(kindOf(*element.geo)), 10);
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

  void begin(const std::string& /*file*/) override {
    out_.write("line,kind,header,group,counter,x,y,z,volume,sizes\n");
  }

  void add(const Vesk::RecordElement& element) override {
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
    text_ += '\n';
    out_.write(text_);
  }
};

class JsonListing : public Listing {
 public:
  explicit JsonListing(TextSink& out) : Listing(out), json_(text_) {}

  void begin(const std::string& file) override {
    json_.beginObject().key("schema").value("vesk.list/1").key("file").value(file);
    json_.key("elements").beginArray();
    flush();
  }

  void add(const Vesk::RecordElement& element) override {
    json_.beginObjectRow().key("line").value(element.firstLine);
    json_.key("kind").value(nameOf(kindOf(*element.geo)));
    json_.key("header").value(trimmedField(element.header.f1));
    json_.key("group").value(trimmedField(element.header.f2));
    json_.key("counter").value(element.counter());
    json_.key("volume").value(element.geo->volume());
    json_.key("values").beginObject();
    for (const Property& property : propertiesOf(*element.geo)) appendJson(json_, property);
    json_.endObject().endObject();
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
};

class ListCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "list",
        Group::kLook,
        "FILE",
        "one line per element",
        "X, Y and Z are the first point of the record. Elements that can't be read are said and "
        "left out; the exit code is 1 then.",
        {{"vesk list plant.dat | less", "all elements"},
         {"vesk list plant.dat --only torus --header 'P-10*'", "the bends of some lines"},
         {"vesk list plant.dat --bbox 0,0,0,5000,5000,3000", "what is in a corner"},
         {"vesk list --csv plant.dat > plant.csv", "for a spreadsheet"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", file_, "record file; - is stdin")->required();
    filter_.define(app);
    CLI::Option* csv = app.add_flag("--csv", csv_, "comma-separated values");
    app.add_flag("--json", json_, "one JSON document with all values")->excludes(csv);
  }

  Exit run(Session& session) override {
    filter_.prepare();
    expectInput(file_, session.progress());
    const std::unique_ptr<Listing> listing = makeListing(session.out());
    bool begun = false;
    const RecordsRead read = readRecords(file_, session, [&](Vesk::RecordFile& records) {
      if (!begun) listing->begin(records.name());
      begun = true;
      if (filter_.takes(records.element())) listing->add(records.element());
    });
    if (!begun) listing->begin(read.name);
    listing->end();
    return read.exit();
  }

 private:
  std::unique_ptr<Listing> makeListing(TextSink& out) const {
    if (csv_) return std::make_unique<CsvListing>(out);
    if (json_) return std::make_unique<JsonListing>(out);
    return std::make_unique<TableListing>(out);
  }

  std::string file_;
  Filter filter_;
  bool csv_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeList() { return std::make_unique<ListCommand>(); }

}  // namespace VeskTool
