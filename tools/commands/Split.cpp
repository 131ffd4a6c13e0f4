// SPDX-License-Identifier: MIT
#include <array>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

#include "commands/Command.h"
#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "records/Headers.h"
#include "records/PartNames.h"
#include "records/RawRecords.h"
#include "records/RecordTarget.h"
#include "records/Sizes.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "text/Table.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;

// A folder that goes again unless what it is for is done.
class NewFolder {
 public:
  // Makes the folder unless it is there; its parent must be.
  explicit NewFolder(const std::string& name) {
    std::error_code error;
    if (fs::create_directory(pathOf(name), error)) path_ = pathOf(name);
    if (error) throw Failure(Exit::kOutput, name + ": " + error.message());
  }
  ~NewFolder() {
    std::error_code error;
    if (!path_.empty()) fs::remove(path_, error);
  }
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;

  void keep() { path_.clear(); }

 private:
  fs::path path_;  // empty if it stays
};

// One file of the parts.
struct Part {
  Part(std::string text, const std::string& name, const std::optional<Columns>& columns, bool force,
       bool isDryRun)
      : value(std::move(text)), target(name, columns, force, isDryRun) {}

  std::string value;
  RecordTarget target;
};

std::size_t sizeOf(const Vesk::SidecarRow& row) {
  std::size_t size = 0;
  for (const std::string& value : row.values) size += value.size() + 1;
  return size;
}

class SplitCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "split",
        Group::kChange,
        "IN --by HOW -o OUT",
        "parts by header, kind, size or place",
        "Each element goes into one part, as it stands in IN, byte for byte, and in the order of "
        "IN; all parts together make up IN. OUT is a folder, which is made if it does not exist, "
        "or a name with * where the names of the parts go. In these names letters, digits, \"-\", "
        "\"+\", \"_\" and \".\" stay, and every other character becomes \"_\"; if two parts would "
        "have the same name, or names that differ only in upper and lower case, the second gets "
        "\"-2\". Rows of plant.attributes.csv are copied; the row of a component in several parts "
        "goes into each. Elements that can't be read are named and left out; the exit code is then "
        "1. Either all parts appear, or none. Only a few files are open at a time. Memory: 32 MB, "
        "5 KB for each part and 100 bytes for each row.",
        {{"vesk split plant.dat --by header -o lines", "lines/P-1001_01.dat and so on"},
         {"vesk split plant.dat --by kind -o \"plant-*.dat\"", "plant-cylinder.dat and so on"},
         {"vesk split plant.dat --by grid --grid 6000 -o areas", "squares of 6 m in plan"},
         {"vesk split plant.dat --by size -o sizes -n", "say only which parts"}}};
  }

  bool takesMixed() const override { return false; }

  void define(CLI::App& app) override {
    app.add_option("IN", input_, "record file; - is stdin")->required();
    app.add_option("--by", by_,
                   "header (F1 and F2), group (F2), kind, size (diameter, sides of duct elbows) or "
                   "grid (the middle of the element's box)")
        ->type_name("HOW")
        ->required()
        ->default_str("to be given")
        ->check(CLI::IsMember(std::vector<std::string>{"header", "group", "kind", "size", "grid"}));
    app.add_option("--grid", grid_,
                   "the cells of --by grid, starting at 0: squares in plan of this size, or boxes "
                   "with X,Y,Z")
        ->type_name("LENGTH")
        ->default_str("none");
    app.add_option("-o,--output", output_, "folder, or a name with *")
        ->type_name("OUT")
        ->required()
        ->default_str("to be given");
    app.add_option("--limit", limit_, "the largest number of parts; more are refused")
        ->type_name("N")
        ->check(CLI::Range(1, 100000))
        ->capture_default_str();
    app.add_flag("-n,--dry-run", dryRun_, "say only which parts there would be");
    app.add_flag("--no-attributes", noAttributes_, "leave the sidecar where it is");
    app.add_flag("--json", json_, "one JSON document of what was done");
    app.add_flag("-f,--force", force_, "replace existing files");
  }

  Exit run(Session& session) override {
    findCells();
    findPattern();
    const Sidecars sidecars({input_}, noAttributes_);
    expectInput(input_, session.progress());
    if (!folder_.empty() && !dryRun_) made_.emplace(folder_);
    const Exit exit = split(sidecars, session);
    std::vector<RecordTarget*> targets;
    for (Part& part : parts_) targets.push_back(&part.target);
    commitTogether(targets);
    if (made_) made_->keep();
    session.out().write(json_ ? jsonOf() : summary());
    return exit;
  }

 private:
  // What is kept in memory before it goes to the files.
  static constexpr std::size_t kMostPending = std::size_t{1} << 25;

  void findCells() {
    if ((by_ == "grid") != !grid_.empty()) {
      throw Failure(Exit::kUsage, "--by grid and --grid LENGTH belong together",
                    "for instance --by grid --grid 6000");
    }
    if (by_ != "grid") return;
    double lengths[3] = {};
    const bool isPlan = readNumbers(grid_, 1, lengths);
    if (isPlan) lengths[1] = lengths[0];
    const bool isGood = isPlan || readNumbers(grid_, 3, lengths);
    for (std::size_t i = 0; i < (isPlan ? 2 : 3); ++i) {
      if (!isGood || !(lengths[i] > 0.0)) {
        throw Failure(Exit::kUsage, "--grid " + grid_ + ": not lengths above 0",
                      "for instance --grid 6000 or --grid 6000,6000,3000");
      }
      cells_[i] = lengths[i];
    }
  }

  // Folder, and what stands before and behind the value.
  void findPattern() {
    const std::string name = nameOf(pathOf(output_).filename());
    const std::size_t star = name.find('*');
    if (output_.find('*') != output_.npos) {
      if (star == name.npos || output_.find('*') != output_.rfind('*')) {
        throw Failure(Exit::kUsage,
                      output_ +
                          ": only one * may stand for the parts, in the name "
                          "of the file",
                      "for instance -o \"parts/plant-*.dat\"");
      }
      before_ = output_.substr(0, output_.find('*'));
      behind_ = output_.substr(output_.find('*') + 1);
      return;
    }
    std::error_code error;
    if (output_ == "-" || fs::is_regular_file(pathOf(output_), error)) {
      throw Failure(Exit::kUsage, shownName(output_) + ": parts go into a folder, or a name with *",
                    "for instance -o parts or -o \"plant-*.dat\"");
    }
    folder_ = output_;
    const bool hasEnd = folder_.ends_with('/') || folder_.ends_with('\\');
    before_ = folder_ + (hasEnd ? "" : "/");
    behind_ = ".dat";
  }

  // What the elements of a part have in common: as a key, and as people read it.
  struct Value {
    std::string key;
    std::string text;
  };

  Value valueOf(const Vesk::RecordElement& element) const {
    if (by_ == "header") {
      const std::string key = headerKey(element.header);
      return {key, shownHeader(key)};
    }
    std::string text;
    if (by_ == "group") text = trimmedField(element.header.f2);
    if (by_ == "kind") text = nameOf(kindOf(*element.geo));
    if (by_ == "size") text = sizeName(*element.geo);
    if (by_ == "grid") text = cellName(*element.geo, cells_);
    return {text, withoutControls(text)};
  }

  Part& partOf(const Vesk::RecordElement& element, const Sidecars& sidecars, Session& session) {
    const Value value = valueOf(element);
    const auto [found, isNew] = places_.try_emplace(value.key, parts_.size());
    if (!isNew) return parts_[found->second];
    if (parts_.size() == limit_) {
      throw Failure(Exit::kOutput, "there are more than " + grouped(limit_) + " parts",
                    "--limit allows more");
    }
    const std::string safe = names_.nameFor(value.text);
    const std::string name = before_ + safe + behind_;
    refuseSameRecords(input_, name);
    if (safe != safeName(value.text)) sayClash(value.text, name, session);
    parts_.emplace_back(value.text, name, sidecars.columns(), force_, dryRun_);
    parts_.back().target.rest();
    return parts_.back();
  }

  void sayClash(const std::string& value, const std::string& name, Session& session) {
    constexpr std::uint64_t kMostSaid = 5;
    if (++clashes_ > kMostSaid) return;
    session.warning(name + " is for \"" + value +
                    "\": another part has the name without the number");
  }

  Exit split(const Sidecars& sidecars, Session& session) {
    const std::unique_ptr<SidecarFile> sidecar = sidecars.open(input_);
    RawRecords records(input_, session);
    std::size_t pending = 0;
    while (records.next()) {
      Part& part = partOf(records.element(), sidecars, session);
      const std::string_view bytes = records.bytes();
      part.target.write(bytes);
      pending += bytes.size();
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(records.element());
      if (row != nullptr) {
        part.target.put(*row);
        pending += sizeOf(*row);
      }
      if (pending < kMostPending) continue;
      pending = 0;
      for (Part& each : parts_) each.target.rest();
    }
    if (sidecar != nullptr) sidecar->finish(session);
    // One after the other, so that no two are open.
    for (Part& each : parts_) each.target.rest();
    return records.exit();
  }

  std::string jsonOf() const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.split/1");
    json.key("written").value(!dryRun_).key("input").value(input_);
    json.key("by").value(by_).key("parts").beginArray();
    for (const Part& part : parts_) {
      json.beginObjectRow().key("of").value(part.value);
      part.target.append(json);
      json.endObject();
    }
    json.endArray().endObject();
    return text;
  }

  std::string summary() const {
    Table table({{"FILE", Table::Side::kLeft},
                 {"ELEMENTS", Table::Side::kRight},
                 {"OF", Table::Side::kLeft}});
    std::uint64_t elements = 0;
    std::uint64_t rows = 0;
    for (const Part& part : parts_) {
      table.add({part.target.name(), grouped(part.target.elements()), part.value});
      elements += part.target.elements();
      rows += part.target.rows();
    }
    std::string text = parts_.empty() ? std::string() : table.text();
    text += counted(elements, "element") + " in " + counted(parts_.size(), "part");
    if (rows > 0) text += ", " + counted(rows, "row") + " beside them";
    return text + (dryRun_ ? "; not written (--dry-run)\n" : "\n");
  }

  std::string input_;
  std::string by_;
  std::string grid_;
  std::string output_;
  std::size_t limit_ = 1000;
  bool dryRun_ = false;
  bool noAttributes_ = false;
  bool json_ = false;
  bool force_ = false;

  std::array<std::optional<double>, 3> cells_;
  std::string folder_;  // to be made; empty for a pattern
  std::string before_;
  std::string behind_;
  PartNames names_;
  std::optional<NewFolder> made_;  // goes behind what is in it
  std::deque<Part> parts_;         // in the order of their first elements
  std::unordered_map<std::string, std::size_t> places_;
  std::uint64_t clashes_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeSplit() { return std::make_unique<SplitCommand>(); }

}  // namespace VeskTool
