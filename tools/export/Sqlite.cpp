// SPDX-License-Identifier: MIT
#include "export/Sqlite.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <vector>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "export/ExactShape.h"
#include "export/SqliteBoxes.h"
#include "export/SqliteStatement.h"
#include "sidecar/Sidecar.h"
#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTables = R"(
PRAGMA page_size=4096;
PRAGMA journal_mode=OFF;
PRAGMA synchronous=OFF;
PRAGMA locking_mode=EXCLUSIVE;
PRAGMA cache_size=-65536;
PRAGMA user_version=1;
BEGIN;
CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE files(id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE headers(id INTEGER PRIMARY KEY, f1 TEXT NOT NULL, f2 TEXT NOT NULL);
CREATE TABLE elements(
  id INTEGER PRIMARY KEY, file INTEGER NOT NULL REFERENCES files,
  line INTEGER NOT NULL, last_line INTEGER NOT NULL,
  header INTEGER NOT NULL REFERENCES headers, counter INTEGER NOT NULL,
  kind TEXT NOT NULL, length REAL, volume REAL,
  min_x REAL, min_y REAL, min_z REAL, max_x REAL, max_y REAL, max_z REAL,
  reason TEXT);
CREATE TABLE value_names(id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE element_values(
  element INTEGER NOT NULL REFERENCES elements, name INTEGER NOT NULL REFERENCES value_names,
  x REAL, y REAL, z REAL, text TEXT, PRIMARY KEY(element, name)) WITHOUT ROWID;
CREATE TABLE components(
  id INTEGER PRIMARY KEY, file INTEGER NOT NULL REFERENCES files,
  header INTEGER NOT NULL REFERENCES headers, first INTEGER NOT NULL, last INTEGER NOT NULL);
CREATE TABLE attributes(
  component INTEGER NOT NULL REFERENCES components, name TEXT NOT NULL, value TEXT NOT NULL,
  PRIMARY KEY(component, name)) WITHOUT ROWID;
CREATE TABLE faults(
  id INTEGER PRIMARY KEY, file INTEGER NOT NULL REFERENCES files, line INTEGER NOT NULL,
  column INTEGER NOT NULL, message TEXT NOT NULL, expected TEXT NOT NULL);
CREATE VIRTUAL TABLE boxes USING rtree(id, min_x, max_x, min_y, max_y, min_z, max_z);
)";

constexpr const char* kEnd = R"(
CREATE INDEX elements_by_header ON elements(header, counter);
CREATE INDEX elements_by_kind ON elements(kind);
CREATE INDEX components_by_header ON components(file, header, first);
CREATE INDEX attributes_by_value ON attributes(name, value);
CREATE VIEW element_list AS
  SELECT e.id, f.name AS file, e.line, h.f1, h.f2, e.counter, e.kind, e.length, e.volume,
         e.min_x, e.min_y, e.min_z, e.max_x, e.max_y, e.max_z
  FROM elements e JOIN files f ON f.id = e.file JOIN headers h ON h.id = e.header;
CREATE VIEW value_list AS
  SELECT v.element, n.name, v.x, v.y, v.z, v.text
  FROM element_values v JOIN value_names n ON n.id = v.name;
CREATE VIEW attribute_list AS
  SELECT e.id AS element, a.name, a.value
  FROM elements e
  JOIN components c ON c.file = e.file AND c.header = e.header
                   AND e.counter BETWEEN c.first AND c.last
  JOIN attributes a ON a.component = c.id;
COMMIT;
)";

// The file that SQLite writes; it goes with this object.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& beside) {
    const std::string name = ".part-" + std::to_string(processNumber()) + ".sqlite";
    path_ = beside == "-" || isDevice(pathOf(beside))
                ? fs::temp_directory_path() / pathOf("vesk" + name)
                : pathOf(beside + name);
    std::error_code error;
    fs::remove(path_, error);
    half_ = HalfFile(path_);
    fs::path journal = path_;
    halfJournal_ = HalfFile(journal += "-journal");
  }
  ~TemporaryFile() {
    std::error_code error;
    fs::remove(path_, error);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
  HalfFile half_;
  HalfFile halfJournal_;
};

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  void operator()(std::FILE* file) const { std::fclose(file); }
};

class SqliteWriter : public ElementWriter {
 public:
  SqliteWriter(double millimetres, const std::string& beside, TextSink& out)
      : file_(beside), out_(out) {
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(nameOf(file_.path()).c_str(), &opened,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(opened);
    if (code != SQLITE_OK) failSqlite(database());
    run(kTables);
    prepare();
    SqliteStatement meta(database(), "INSERT INTO meta VALUES(?, ?)");
    meta.add(std::string_view("schema")).add(std::string_view("vesk.sqlite/1")).run();
    meta.add(std::string_view("tool")).add(std::string_view("vesk " VESK_VERSION)).run();
    meta.add(std::string_view("unit in millimetres")).add(shortest(millimetres)).run();
  }

  void beginFile(const std::string& name, const std::string& handedOn) override {
    fileId_ = ++files_;
    insertFile_->add(fileId_).add(handedOn).run();
    if (name != "-") addSidecar(Vesk::sidecarNameOf(name));
  }

  std::string add(const ExportedElement& element) override {
    const Vesk::RecordElement& record = element.record;
    ExactShape shape;
    const std::string reason = makeExact(*record.geo, shape);
    Vesk::Extents box;
    record.geo->addExtents(box);
    const bool hasBox = std::isfinite(box.min.x + box.min.y + box.min.z) &&
                        std::isfinite(box.max.x + box.max.y + box.max.z);
    ++elements_;
    SqliteStatement& row = *insertElement_;
    row.add(elements_).add(fileId_).add(static_cast<std::int64_t>(record.firstLine));
    row.add(static_cast<std::int64_t>(record.lastLine));
    row.add(headerId(trimmedField(record.header.f1), trimmedField(record.header.f2)));
    row.add(std::int64_t{record.counter()})
        .add(std::string_view(VeskTool::nameOf(kindOf(*record.geo))));
    addSizes(row, shape, reason, record.geo->isSolid());
    for (const double each : {box.min.x, box.min.y, box.min.z, box.max.x, box.max.y, box.max.z}) {
      hasBox ? row.add(each) : row.null();
    }
    reason.empty() ? row.null() : row.add(reason);
    row.run();
    addValues(*record.geo);
    return {};
  }

  void fault(const Vesk::RecordFault& fault) override {
    insertFault_->add(++faults_).add(fileId_).add(static_cast<std::int64_t>(fault.line));
    insertFault_->add(static_cast<std::int64_t>(fault.column)).add(fault.message);
    insertFault_->add(fault.expected).run();
  }

  void finish() override {
    for (auto* statement : {&insertFile_, &insertHeader_, &insertElement_, &insertName_,
                            &insertValue_, &insertComponent_, &insertAttribute_, &insertFault_}) {
      statement->reset();
    }
    fillBoxes(database());
    run(kEnd);
    if (sqlite3_close(database_.release()) != SQLITE_OK) {
      throw Failure(Exit::kOutput, "SQLite: the database can't be closed");
    }
    copyOut();
  }

 private:
  sqlite3* database() const { return database_.get(); }

  void run(const char* text) {
    if (sqlite3_exec(database(), text, nullptr, nullptr, nullptr) != SQLITE_OK)
      failSqlite(database());
  }

  void prepare() {
    const auto make = [this](std::optional<SqliteStatement>& statement, const char* text) {
      statement.emplace(database(), text);
    };
    make(insertFile_, "INSERT INTO files VALUES(?, ?)");
    make(insertHeader_, "INSERT INTO headers VALUES(?, ?, ?)");
    make(insertElement_, "INSERT INTO elements VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    make(insertName_, "INSERT INTO value_names VALUES(?, ?)");
    make(insertValue_, "INSERT INTO element_values VALUES(?, ?, ?, ?, ?, ?)");
    make(insertComponent_, "INSERT INTO components VALUES(?, ?, ?, ?, ?)");
    make(insertAttribute_, "INSERT OR IGNORE INTO attributes VALUES(?, ?, ?)");
    make(insertFault_, "INSERT INTO faults VALUES(?, ?, ?, ?, ?, ?)");
  }

  std::int64_t headerId(const std::string& f1, const std::string& f2) {
    const auto [place, isNew] =
        headers_.try_emplace(f1 + '\n' + f2, static_cast<std::int64_t>(headers_.size() + 1));
    if (isNew) insertHeader_->add(place->second).add(f1).add(f2).run();
    return place->second;
  }

  // The length of what has an axis or is a line, and the volume of solids.
  static void addSizes(SqliteStatement& row, const ExactShape& shape, const std::string& reason,
                       bool isSolid) {
    double length = std::nan("");
    if (const auto* round = std::get_if<ExactRound>(&shape)) length = round->height;
    if (const auto* bend = std::get_if<ExactBend>(&shape)) length = bend->radius * bend->sweep;
    if (const auto* duct = std::get_if<ExactDuct>(&shape)) length = duct->radius * duct->sweep;
    if (const auto* line = std::get_if<ExactPolyline>(&shape)) {
      length = 0.0;
      for (std::size_t i = 1; i < line->points.size(); ++i) {
        length += distance(line->points[i - 1], line->points[i]);
      }
    }
    row.add(length);
    reason.empty() && isSolid ? row.add(volumeOf(shape)) : row.null();
  }

  void addValues(const Vesk::Geo& geo) {
    for (const Property& property : propertiesOf(geo)) {
      const auto [place, isNew] =
          names_.try_emplace(property.name, static_cast<std::int64_t>(names_.size() + 1));
      if (isNew) insertName_->add(place->second).add(property.name).run();
      SqliteStatement& row = insertValue_->add(elements_).add(place->second);
      const bool isText = property.type == Property::Type::kText;
      const bool isPoint =
          property.type == Property::Type::kPoint || property.type == Property::Type::kVector;
      isText ? row.null() : row.add(property.value.x);
      isPoint ? row.add(property.value.y).add(property.value.z) : row.null().null();
      isText ? row.add(property.text) : row.null();
      row.run();
    }
  }

  void addSidecar(const std::string& name) {
    std::ifstream stream(pathOf(name), std::ios::binary);
    if (!stream) return;
    Vesk::SidecarReader reader(stream, name);
    for (Vesk::SidecarRow row; reader.next(row);) {
      insertComponent_->add(++components_).add(fileId_).add(headerId(row.f1, row.f2));
      insertComponent_->add(std::int64_t{row.first}).add(std::int64_t{row.last}).run();
      for (std::size_t i = 0; i < row.values.size(); ++i) {
        if (row.values[i].empty()) continue;
        insertAttribute_->add(components_).add(reader.columns()[i]).add(row.values[i]).run();
      }
    }
    if (!reader.fault().empty()) throw Failure(Exit::kInput, reader.fault());
  }

  void copyOut() {
    const std::unique_ptr<std::FILE, Closer> made(openFile(file_.path(), "rb"));
    if (!made) throw Failure(Exit::kOutput, "SQLite: the database can't be read back");
    std::vector<char> block(std::size_t{1} << 20);
    for (std::size_t size; (size = std::fread(block.data(), 1, block.size(), made.get())) > 0;) {
      out_.write({block.data(), size});
    }
    if (std::ferror(made.get()) != 0) {
      throw Failure(Exit::kOutput, "SQLite: the database can't be read back");
    }
  }

  TemporaryFile file_;
  TextSink& out_;
  std::unique_ptr<sqlite3, Closer> database_;
  std::optional<SqliteStatement> insertFile_;
  std::optional<SqliteStatement> insertHeader_;
  std::optional<SqliteStatement> insertElement_;
  std::optional<SqliteStatement> insertName_;
  std::optional<SqliteStatement> insertValue_;
  std::optional<SqliteStatement> insertComponent_;
  std::optional<SqliteStatement> insertAttribute_;
  std::optional<SqliteStatement> insertFault_;
  std::unordered_map<std::string, std::int64_t> headers_;
  std::unordered_map<std::string, std::int64_t> names_;
  std::int64_t fileId_ = 0;
  std::int64_t files_ = 0;
  std::int64_t elements_ = 0;
  std::int64_t components_ = 0;
  std::int64_t faults_ = 0;
};

}  // namespace

std::unique_ptr<ElementWriter> makeSqliteWriter(double millimetres, const std::string& beside,
                                                TextSink& out) {
  return std::make_unique<SqliteWriter>(millimetres, beside, out);
}

}  // namespace VeskTool
