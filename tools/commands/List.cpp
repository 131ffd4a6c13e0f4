// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "commands/Command.h"
#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "files/SidecarFile.h"
#include "prims/Visit.h"
#include "terminal/Terminal.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Table.h"

namespace VeskTool {
namespace {

// What --sort takes and --csv has a column for, one number each.
enum class Key {
  kLine,
  kKind,
  kHeader,
  kGroup,
  kCounter,
  kX,
  kY,
  kZ,
  kVolume,
  kLength,
  kDiameter,
  kDiameter2,
  kRadius,
  kAngle,
  kWidth,
  kDepth,
  kEdge1,
  kEdge2,
  kEdge3,
  kHeight,
  kVertices,
};

constexpr std::string_view kKeys[] = {
    "line",  "kind",   "header", "group",    "counter",   "x",      "y",
    "z",     "volume", "length", "diameter", "diameter2", "radius", "angle",
    "width", "depth",  "edge1",  "edge2",    "edge3",     "height", "vertices"};
constexpr std::size_t kKeyCount = std::size(kKeys);

// By key; what an element does not have is NaN.
using Numbers = std::array<double, kKeyCount>;

// The sizes, by class.
class SizeTaker {
 public:
  explicit SizeTaker(Numbers& numbers) : numbers_(numbers) {}

  void operator()(const Vesk::Cyl& cyl) {
    put(Key::kLength, cyl.axis.length());
    put(Key::kDiameter, cyl.diameter);
  }
  void operator()(const Vesk::Cone& cone) {
    put(Key::kLength, cone.axis.length());
    put(Key::kDiameter, cone.diameter1);
    put(Key::kDiameter2, cone.diameter2);
  }
  void operator()(const Vesk::Box& box) {
    put(Key::kEdge1, box.edge1.length());
    put(Key::kEdge2, box.edge2.length());
    put(Key::kEdge3, box.edge3.length());
  }
  void operator()(const Vesk::Torus& torus) {
    bend(torus.startVector, torus.endVector);
    put(Key::kDiameter, torus.diameter);
  }
  void operator()(const Vesk::Relb& relb) {
    bend(relb.startVector, relb.endVector);
    put(Key::kDepth, relb.depth);
    put(Key::kWidth, relb.width);
  }
  void operator()(const Vesk::Red& /*red*/) {}
  void operator()(const Vesk::Pline& pline) {
    double length = 0.0;
    for (std::size_t i = 1; i < pline.vertices.size(); ++i) {
      length += distance(pline.vertices[i - 1], pline.vertices[i]);
    }
    put(Key::kLength, length);
    put(Key::kVertices, static_cast<double>(pline.vertices.size()));
  }
  void operator()(const Vesk::Pgon& pgon) {
    put(Key::kVertices, static_cast<double>(pgon.vertices.size()));
  }
  void operator()(const Vesk::Txt& txt) { put(Key::kHeight, txt.height); }

 private:
  void put(Key key, double value) { numbers_[static_cast<std::size_t>(key)] = value; }

  void bend(const GeVector& start, const GeVector& end) {
    put(Key::kRadius, (start.length() + end.length()) / 2.0);
    if (start.length() == 0.0 || end.length() == 0.0) return;
    put(Key::kAngle, start.angleTo(end) * 180.0 / std::numbers::pi);
  }

  Numbers& numbers_;
};

Numbers numbersOf(const Vesk::RecordElement& element) {
  Numbers numbers;
  numbers.fill(std::numeric_limits<double>::quiet_NaN());
  const GePoint p = placeOf(*element.geo);
  const auto at = [&](Key key) -> double& { return numbers[static_cast<std::size_t>(key)]; };
  at(Key::kLine) = static_cast<double>(element.firstLine);
  at(Key::kCounter) = element.counter();
  at(Key::kX) = p.x;
  at(Key::kY) = p.y;
  at(Key::kZ) = p.z;
  at(Key::kVolume) = element.geo->volume();
  SizeTaker take(numbers);
  Vesk::visit(
      *element.geo, [&](const auto& primitive) { take(primitive); }, [] {});
  return numbers;
}

// An element on its way into the answer.
struct Entry {
  const Vesk::RecordElement& element;
  const std::string& file;
  std::span<const std::string> attributes;  // by the columns; empty without a row
};

// The form of the answer, row by row.
class Listing {
 public:
  virtual ~Listing() = default;
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  // `columns` are those of the sidecars.
  virtual std::string begin(const std::vector<std::string>& files,
                            const std::vector<std::string>& columns) = 0;
  virtual const std::string& row(const Entry& entry) = 0;

  // What stands between two rows, and behind the last.
  virtual std::string_view between() const { return ""; }
  virtual std::string end(bool isEmpty) = 0;

 protected:
  Listing() = default;
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
  explicit TableListing(const Session& session) : session_(session) {}

  std::string begin(const std::vector<std::string>& files,
                    const std::vector<std::string>& /*columns*/) override {
    isOfMany_ = files.size() > 1;
    return "    LINE  KIND        HEADER       COUNTER             X             Y"
           "             Z  SIZES\n";
  }

  const std::string& row(const Entry& entry) override {
    const Vesk::RecordElement& element = entry.element;
    text_.clear();
    if (isOfMany_ && entry.file != file_) text_ = (file_ = entry.file) + ":\n";
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
    const std::string sizes = session_.shown(sizesOf(*element.geo));
    if (!sizes.empty()) text_.append("  ").append(sizes);
    text_ += '\n';
    return text_;
  }

  std::string end(bool /*isEmpty*/) override { return {}; }

 private:
  // Most elements have the header of the one before.
  const std::string& headerOf(const Vesk::HeaderFields& fields) {
    const std::string_view f1(fields.f1.data(), fields.f1.width());
    const std::string_view f2(fields.f2.data(), fields.f2.width());
    if (f1 != f1_ || f2 != f2_) {
      f1_ = f1;
      f2_ = f2;
      header_ = session_.shown(headerText(fields));
    }
    return header_;
  }

  const Session& session_;
  bool isOfMany_ = false;
  std::string text_;
  std::string file_;  // of the last row
  std::string number_;
  std::string f1_;
  std::string f2_;
  std::string header_;
};

class CsvListing : public Listing {
 public:
  explicit CsvListing(const Session& session) : session_(session) {}

  std::string begin(const std::vector<std::string>& files,
                    const std::vector<std::string>& columns) override {
    isOfMany_ = files.size() > 1;
    std::string text = isOfMany_ ? "file" : "";
    for (const std::string_view key : kKeys) {
      if (!text.empty()) text += ',';
      text += key;
    }
    text += ",text";
    for (const std::string& column : columns) appendCsv(text += ',', column);
    width_ = columns.size();
    return text + '\n';
  }

  const std::string& row(const Entry& entry) override {
    const Vesk::RecordElement& element = entry.element;
    text_.clear();
    if (isOfMany_) appendCsv(text_, entry.file);
    const Numbers numbers = numbersOf(element);
    for (std::size_t i = 0; i < kKeyCount; ++i) {
      if (!text_.empty()) text_ += ',';
      const auto key = static_cast<Key>(i);
      if (key == Key::kKind) {
        text_ += nameOf(kindOf(*element.geo));
      } else if (key == Key::kHeader) {
        appendCsv(text_, trimmedField(element.header.f1));
      } else if (key == Key::kGroup) {
        appendCsv(text_, trimmedField(element.header.f2));
      } else if (!std::isnan(numbers[i])) {
        appendShortest(text_, numbers[i]);
      }
    }
    text_ += ',';
    if (kindOf(*element.geo) == Kind::kText) {
      appendCell(static_cast<const Vesk::Txt&>(*element.geo).text);
    }
    for (std::size_t i = 0; i < width_; ++i) {
      text_ += ',';
      if (i < entry.attributes.size()) appendCell(entry.attributes[i]);
    }
    text_ += '\n';
    if (session_.isTerminal()) text_ = session_.shown(text_);
    return text_;
  }

  std::string end(bool /*isEmpty*/) override { return {}; }

 private:
  // As in the sidecar: no text is a formula.
  void appendCell(const std::string& value) {
    appendCsv(text_, Vesk::isLikeFormula(value) ? "'" + value : value);
  }

  const Session& session_;
  bool isOfMany_ = false;
  std::string text_;
  std::size_t width_ = 0;
};

class JsonListing : public Listing {
 public:
  std::string begin(const std::vector<std::string>& files,
                    const std::vector<std::string>& columns) override {
    columns_ = columns;
    isOfMany_ = files.size() > 1;
    std::string text = "{\n  \"schema\": ";
    text += isOfMany_ ? "\"vesk.list-files/1\",\n  \"files\": [" : "\"vesk.list/1\",\n  \"file\": ";
    for (std::size_t i = 0; i < files.size(); ++i) {
      if (i > 0) text += ", ";
      appendJsonString(text, files[i]);
    }
    if (isOfMany_) text += ']';
    return text + ",\n  \"elements\": [";
  }

  const std::string& row(const Entry& entry) override {
    const Vesk::RecordElement& element = entry.element;
    text_ = "\n    ";
    JsonWriter json(text_);
    json.beginObjectRow();
    if (isOfMany_) json.key("file").value(entry.file);
    json.key("line").value(element.firstLine);
    json.key("kind").value(nameOf(kindOf(*element.geo)));
    json.key("header").value(trimmedField(element.header.f1));
    json.key("group").value(trimmedField(element.header.f2));
    json.key("counter").value(element.counter());
    json.key("volume").value(element.geo->volume());
    json.key("values").beginObject();
    for (const Property& property : propertiesOf(*element.geo)) appendJson(json, property);
    json.endObject();
    if (!entry.attributes.empty()) {
      json.key("attributes").beginObject();
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (!entry.attributes[i].empty()) json.key(columns_[i]).value(entry.attributes[i]);
      }
      json.endObject();
    }
    json.endObject();
    text_.pop_back();
    return text_;
  }

  std::string_view between() const override { return ","; }
  std::string end(bool isEmpty) override { return isEmpty ? "]\n}\n" : "\n  ]\n}\n"; }

 private:
  std::string text_;
  bool isOfMany_ = false;
  std::vector<std::string> columns_;
};

// The rows in their order, or sorted, as many as are wanted.
class Rows {
 public:
  Rows(Listing& listing, TextSink& out, const std::string& key, bool isDescending,
       std::uint64_t most)
      : listing_(listing), out_(out), isDescending_(isDescending), most_(most) {
    const auto found = std::find(std::begin(kKeys), std::end(kKeys), key);
    if (found == std::end(kKeys)) return;
    isSorted_ = true;
    key_ = static_cast<Key>(found - std::begin(kKeys));
  }

  void begin(const std::vector<std::string>& files, const std::vector<std::string>& columns) {
    head_ = listing_.begin(files, columns);
  }

  void add(const Entry& entry) {
    ++count_;
    if (!isSorted_) {
      if (most_ == 0 || count_ <= most_) write(listing_.row(entry));
      return;
    }
    Sorted sorted;
    if (key_ == Key::kKind) {
      sorted.text = wordOf(kindOf(*entry.element.geo));
    } else if (key_ == Key::kHeader || key_ == Key::kGroup) {
      const Vesk::HeaderFields& header = entry.element.header;
      sorted.text = key_ == Key::kHeader ? trimmedField(header.f1) : trimmedField(header.f2);
    } else {
      sorted.number = numbersOf(entry.element)[static_cast<std::size_t>(key_)];
    }
    sorted.row = listing_.row(entry);
    sorted_.push_back(std::move(sorted));
  }

  void end() {
    std::stable_sort(sorted_.begin(), sorted_.end(), [&](const Sorted& a, const Sorted& b) {
      // What does not have the number comes last.
      if (std::isnan(a.number) || std::isnan(b.number))
        return !std::isnan(a.number) && std::isnan(b.number);
      const bool isLess = std::tie(a.number, a.text) < std::tie(b.number, b.text);
      const bool isMore = std::tie(b.number, b.text) < std::tie(a.number, a.text);
      return isDescending_ ? isMore : isLess;
    });
    std::uint64_t written = 0;
    for (const Sorted& each : sorted_) {
      if (most_ != 0 && ++written > most_) break;
      write(each.row);
    }
    if (!head_.empty()) out_.write(head_);
    out_.write(listing_.end(!hasRow_));
  }

  std::uint64_t untold() const { return most_ != 0 && count_ > most_ ? count_ - most_ : 0; }
  std::uint64_t count() const { return count_; }

 private:
  struct Sorted {
    double number = 0.0;
    std::string text;
    std::string row;
  };

  void write(const std::string& row) {
    if (!head_.empty()) out_.write(head_);
    head_.clear();
    if (hasRow_) out_.write(listing_.between());
    out_.write(row);
    hasRow_ = true;
  }

  Listing& listing_;
  TextSink& out_;
  std::string head_;  // until the first row
  Key key_ = Key::kLine;
  bool isSorted_ = false;
  bool isDescending_;
  std::uint64_t most_;
  std::uint64_t count_ = 0;
  bool hasRow_ = false;
  std::vector<Sorted> sorted_;
};

class ListCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "list",
        Group::kLook,
        "FILE...",
        "one line per element",
        "X, Y and Z are the first point of the record. Elements that can't be read are reported "
        "and left out; the exit code is then 1. --csv and --json include the attributes of a "
        "sidecar, plant.attributes.csv beside plant.dat. --csv has a column for each number, in "
        "the unit of the file and degrees; with several files the first column is the file. --sort "
        "keeps all lines of the answer in memory.",
        {{"vesk list plant.dat | less", "all elements"},
         {"vesk list plant.dat --only bend --header 'P-10*'", "the bends of some lines"},
         {"vesk list plant.dat --bbox 0,0,0,5000,5000,3000", "what is in a corner"},
         {"vesk list plant.dat --sort volume --descending --limit 10", "the ten largest"},
         {"vesk list --csv zones/ > plant.csv", "for a spreadsheet"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", words_, "record files, folders of *.dat files or patterns; - is stdin")
        ->required();
    app.add_option("--attributes", attributes_,
                   "the sidecar of a single FILE, instead of the one beside it")
        ->type_name("SIDECAR")
        ->default_str("beside FILE");
    CLI::Option* csv = app.add_flag("--csv", csv_, "comma-separated values");
    app.add_flag("--json", json_, "one JSON document with all values")->excludes(csv);
    CLI::Option* sort =
        app.add_option("--sort", sort_, "sort by one of the columns of --csv, smallest first")
            ->type_name("COLUMN")
            ->default_str("as in the file")
            ->check(CLI::IsMember(std::vector<std::string>(std::begin(kKeys), std::end(kKeys))));
    app.add_flag("--descending", descending_, "sort largest first")->needs(sort);
    app.add_option("--limit", most_, "list at most this many elements; 0: all")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    selection_.define(app);
  }

  Exit run(Session& session) override {
    const std::vector<std::string> files = expandFiles(words_);
    if (!attributes_.empty() && files.size() > 1) {
      throw Failure(Exit::kUsage, "--attributes is for a single file",
                    "the sidecars beside the files are read without it");
    }
    Choice choice(selection_, files, session);
    const std::unique_ptr<Listing> listing = makeListing(session);
    Rows rows(*listing, session.out(), sort_, descending_, most_);
    std::vector<std::string> names;
    for (const std::string& file : files) names.push_back(shownName(file));
    const std::vector<std::string> columns = columnsOf(files, session);
    rows.begin(names, columns);
    const Exit exit = forEachFile(session, files, 1, [&](std::size_t index, Session& own) {
      return listFile(files[index], columns, choice, rows, own);
    });
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    if (rows.count() > 0 || exit < Exit::kUsage) rows.end();
    if (rows.untold() > 0) {
      session.remark("vesk: " + grouped(rows.count() - rows.untold()) + " of " +
                     counted(rows.count(), "element") + " listed (--limit)\n");
    }
    return exit;
  }

 private:
  // Of all sidecars, each once.
  std::vector<std::string> columnsOf(const std::vector<std::string>& files,
                                     Session& session) const {
    std::vector<std::string> columns;
    if (!csv_ && !json_) return columns;
    for (const std::string& file : files) {
      checkInterrupt();
      try {
        const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(file, attributes_);
        if (sidecar == nullptr) continue;
        for (const std::string& column : sidecar->columns()) {
          if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
            columns.push_back(column);
          }
        }
      } catch (const Failure&) {
        if (files.size() == 1) throw;
        session.note(file + ": its sidecar can't be read");  // an error when its turn comes
      }
    }
    return columns;
  }

  Exit listFile(const std::string& file, const std::vector<std::string>& columns, Choice& choice,
                Rows& rows, Session& session) const {
    const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(file, attributes_);
    std::vector<std::size_t> places;  // of the sidecar's columns among all
    if (sidecar != nullptr && !columns.empty()) {
      for (const std::string& column : sidecar->columns()) {
        places.push_back(static_cast<std::size_t>(
            std::find(columns.begin(), columns.end(), column) - columns.begin()));
      }
    }
    std::vector<std::string> values;
    const RecordsRead read = readRecords(file, session, [&](Vesk::RecordFile& records) {
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(records.element());
      if (!choice.takes(records.element())) return;
      values.assign(row == nullptr ? 0 : columns.size(), "");
      for (std::size_t i = 0; row != nullptr && i < places.size(); ++i) {
        values[places[i]] = row->values[i];
      }
      rows.add({records.element(), records.name(), values});
    });
    if (sidecar != nullptr) sidecar->finish(session);
    return read.exit();
  }

  std::unique_ptr<Listing> makeListing(const Session& session) const {
    if (csv_) return std::make_unique<CsvListing>(session);
    if (json_) return std::make_unique<JsonListing>();
    return std::make_unique<TableListing>(session);
  }

  std::vector<std::string> words_;
  std::string attributes_;
  SelectionOptions selection_;
  std::string sort_;
  bool descending_ = false;
  std::uint64_t most_ = 0;
  bool csv_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeList() { return std::make_unique<ListCommand>(); }

}  // namespace VeskTool
