// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "check/Duplicates.h"
#include "commands/Command.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "output/Base36.h"
#include "records/HeaderClashes.h"
#include "records/Headers.h"
#include "records/RawRecords.h"
#include "records/RecordTarget.h"
#include "records/Renumbering.h"
#include "records/Sizes.h"
#include "select/Pattern.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

constexpr std::uint64_t kMostSaid = 20;

// Another header for all that have one: of the key F1 alone, F2 alone, or both.
struct Renaming {
  std::string pattern;
  std::string f1;  // eight characters; empty: as it is
  std::string f2;  // two characters; empty: as it is
  bool isUsed = false;
};

// An element on its way from IN to OUT.
struct Item {
  std::string text;  // its lines
  HeaderUse* header = nullptr;
  int counter = 0;
  Vesk::HeaderFields fields;
  const Vesk::SidecarRow* row = nullptr;
  Kind kind = Kind::kPoint;
  double size = 0.0;
};

// A duplicate, and which element it is like, by their first lines.
struct Dropped {
  std::uint64_t line;
  std::uint64_t like;
  Kind kind;
};

// Lines that say what changes, up to a number of them.
class Changes {
 public:
  explicit Changes(bool isVerbose) : isVerbose_(isVerbose) {}

  void add(const std::string& line) {
    if (++count_ <= kMostSaid || isVerbose_) text_ += line + '\n';
  }
  std::string text(const char* what) const {
    if (count_ <= kMostSaid || isVerbose_) return text_;
    return text_ + "and " + grouped(count_ - kMostSaid) + " more " + what + "; -v shows all\n";
  }
  std::uint64_t count() const { return count_; }

 private:
  bool isVerbose_;
  std::uint64_t count_ = 0;
  std::string text_;
};

enum class SortKey { kHeader, kGroup, kCounter, kKind, kSize };

const std::map<std::string, SortKey> kSortKeys = {{"header", SortKey::kHeader},
                                                  {"group", SortKey::kGroup},
                                                  {"counter", SortKey::kCounter},
                                                  {"kind", SortKey::kKind},
                                                  {"size", SortKey::kSize}};

// Below 0, 0, above 0.
template <class Value>
int order(const Value& a, const Value& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

int compare(const Item& a, const Item& b, SortKey key) {
  switch (key) {
    case SortKey::kHeader:
      return order(a.header->newKey, b.header->newKey);
    case SortKey::kGroup:
      return order(a.header->newKey.substr(8), b.header->newKey.substr(8));
    case SortKey::kCounter:
      return order(a.counter, b.counter);
    case SortKey::kKind:
      return order(a.kind, b.kind);
    case SortKey::kSize:
      break;
  }
  return order(a.size, b.size);
}

class EditCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "edit",
        Group::kChange,
        "IN -o OUT",
        "rename headers, renumber, sort, drop duplicates",
        "Only the header of an element changes; everything else stays as it is, byte for byte. "
        "First duplicates are dropped, then headers are renamed and moved to groups, then elements "
        "are sorted, then renumbered. HEADER is what --header of other commands takes: F1, or F1 "
        "and F2 with a blank between; * and ? stand for any characters. Headers that become one "
        "must have no counter in common, unless they are renumbered. Rows of plant.attributes.csv "
        "are copied, under their new keys. Elements that can't be read are named and left out; the "
        "exit code is then 1. Memory: 6 KB at most for each header; 64 bytes for each element with "
        "--drop-duplicates; with --sort all of IN and its sidecar, and 300 bytes for each element.",
        {{"vesk edit a.dat -o b.dat --rename P-1001 P-2001", "another F1, F2 stays"},
         {"vesk edit a.dat -o b.dat --group \"P-10* 01\" 02", "into group 02"},
         {"vesk edit a.dat -o b.dat --sort header,kind --renumber components", "in order"},
         {"vesk edit a.dat -o b.dat --drop-duplicates -n", "say only what would be dropped"}}};
  }

  bool takesMixed() const override { return false; }

  void define(CLI::App& app) override {
    app.add_option("IN", input_, "record file; - is stdin")->required();
    app.add_option("-o,--output", output_, "record file; - is stdout")
        ->type_name("OUT")
        ->required()
        ->default_str("to be given");
    app.add_option("--rename", renames_,
                   "give these headers the name NEW: F1 of at most 8 characters, or F1, a blank "
                   "and F2 of at most 2")
        ->type_name("HEADER NEW")
        ->default_str("none")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--group", groups_,
                   "move these headers to the group F2, of at most 2 characters")
        ->type_name("HEADER F2")
        ->default_str("none")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_flag("--drop-duplicates", dropsDuplicates_,
                 "leave out each element that has the same shape as one before it (V204 of check)");
    app.add_option("--sort", sort_,
                   "sort by these, with commas between: header, group, counter, kind, size; equal "
                   "elements keep their order")
        ->type_name("WHAT,...")
        ->default_str("as in IN");
    app.add_option("--renumber", renumber_,
                   "new counters in the order of OUT, header by header: for components "
                   "(consecutive elements with the same counter keep sharing one) or elements "
                   "(each gets its own)")
        ->type_name("WHAT")
        ->default_str("as in IN")
        ->check(CLI::IsMember(std::vector<std::string>{"components", "elements"}));
    app.add_option("--start", start_, "the first counter of --renumber, 0 to 46655")
        ->type_name("N")
        ->check(CLI::Range(0, Vesk::kMaxCounter))
        ->capture_default_str();
    app.add_flag("-n,--dry-run", dryRun_, "say only what would change");
    app.add_flag("--no-attributes", noAttributes_, "leave the sidecar where it is");
    app.add_flag("--json", json_, "one JSON document of what was done");
    app.add_flag("-f,--force", force_, "replace OUT");
  }

  Exit run(Session& session) override {
    if (json_) refuseJsonBeside(output_);
    prepare();
    refuseSameRecords(input_, output_);
    sidecars_.emplace(std::vector<std::string>{input_}, noAttributes_);
    target_.emplace(output_, sidecars_->columns(), force_, dryRun_);
    moved_.emplace(*target_);
    expectInput(input_, session.progress());
    Changes dropped(session.options().verbose);
    const Exit exit = read(dropped, session);
    for (const Renaming& each : renamings_) {
      if (each.isUsed) continue;
      session.error("there is no header " + withoutControls(each.pattern),
                    "vesk info --headers lists what there is");
      return worst(exit, Exit::kNo);
    }
    if (!renumbering_) refuseSharedCounters();
    writeSorted();
    moved_->finish();
    if (rowClashes_ + moved_->clashes() > 0) {
      throw Failure(Exit::kInput, "rows of the sidecar have elements in common",
                    "docs/sidecar.md describes sidecars");
    }
    commitTogether({&*target_});
    const std::string text = json_ ? jsonOf() : summary(dropped, session.options().verbose);
    if (output_ == "-") {
      session.remark(text);
    } else {
      session.out().write(text);
    }
    return exit;
  }

 private:
  void prepare() {
    for (const auto& [pattern, name] : renames_) {
      const std::optional<std::string> key = headerKeyOf(name);
      if (!key) {
        throw Failure(Exit::kUsage, "--rename " + pattern + ' ' + name + ": that is not a header",
                      "at most 8 characters, or these, a blank and at most 2");
      }
      renamings_.push_back({pattern, key->substr(0, 8), key->substr(8)});
    }
    for (const auto& [pattern, group] : groups_) {
      std::string f2 = group;
      if (f2.size() > 2 || withoutControls(f2) != f2) {
        throw Failure(Exit::kUsage, "--group " + pattern + ' ' + group + ": that is not a group",
                      "at most 2 characters");
      }
      f2.resize(2, ' ');
      renamings_.push_back({pattern, "", f2});
    }
    if (!sort_.empty()) {
      for (const std::string& word : splitAt(sort_, ',')) {
        const auto found = kSortKeys.find(word);
        if (found == kSortKeys.end()) {
          throw Failure(Exit::kUsage,
                        "--sort " + sort_ + ": there is no sorting by \"" + word + '"',
                        "header, group, counter, kind or size");
        }
        sortKeys_.push_back(found->second);
      }
    }
    if (!renumber_.empty()) renumbering_.emplace(renumber_ == "elements", start_);
    if (renamings_.empty() && sortKeys_.empty() && !renumbering_ && !dropsDuplicates_) {
      throw Failure(Exit::kUsage, "no change is asked for",
                    "--rename, --group, --renumber, --sort or --drop-duplicates");
    }
  }

  Exit read(Changes& dropped, Session& session) {
    const std::unique_ptr<SidecarFile> sidecar = sidecars_->open(input_);
    RawRecords records(input_, session);
    ShapeSet shapes;
    while (records.next()) {
      const Vesk::RecordElement& element = records.element();
      mode_ = records.mode();
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(element);
      if (dropsDuplicates_ && countsAsDuplicate(*element.geo)) {
        const std::uint64_t first = shapes.insert(shapeKey(*element.geo), element.firstLine);
        if (first != 0) {
          dropped.add("line " + std::to_string(element.firstLine) +
                      " dropped: " + std::string(wordOf(kindOf(*element.geo))) +
                      " like the one at line " + std::to_string(first));
          if (json_) dropped_.push_back({element.firstLine, first, kindOf(*element.geo)});
          continue;
        }
      }
      take(records, row);
    }
    if (sidecar != nullptr) sidecar->finish(session);
    return records.exit();
  }

  void take(RawRecords& records, const Vesk::SidecarRow* row) {
    const Vesk::RecordElement& element = records.element();
    item_.header = &headerOf(element.header);
    item_.counter = element.counter();
    item_.fields = element.header;
    item_.text = records.bytes();
    item_.row = row;
    ++item_.header->elements;
    item_.header->counters.add(item_.counter);
    if (row != nullptr) item_.header->counters.add(row->first, row->last);
    if (sortKeys_.empty()) {
      write(item_);
      return;
    }
    item_.kind = kindOf(*element.geo);
    item_.size = sizeOf(*element.geo);
    if (item_.size != item_.size) item_.size = 0.0;
    if (row != nullptr) item_.row = keptRow(*row);
    items_.push_back(item_);
  }

  HeaderUse& headerOf(const Vesk::HeaderFields& header) {
    HeaderUse& use = headers_.of(headerKey(header));
    if (use.elements > 0) return use;
    const std::string f1 = use.key.substr(0, 8);
    const std::string f2 = use.key.substr(8);
    for (Renaming& each : renamings_) {
      if (!Vesk::matchesHeader(f1, f2, each.pattern)) continue;
      each.isUsed = true;
      if (!each.f1.empty()) use.newKey.replace(0, 8, each.f1);
      if (!each.f2.empty()) use.newKey.replace(8, 2, each.f2);
    }
    return use;
  }

  // One copy of each row for all of its elements.
  const Vesk::SidecarRow* keptRow(const Vesk::SidecarRow& row) {
    const std::string key = row.f1 + '\n' + row.f2 + '\n' + std::to_string(row.first);
    const auto [found, isNew] = rowPlaces_.try_emplace(key, rows_.size());
    if (isNew) rows_.push_back(row);
    return &rows_[found->second];
  }

  void writeSorted() {
    std::vector<std::uint32_t> places(items_.size());
    for (std::size_t i = 0; i < places.size(); ++i) places[i] = static_cast<std::uint32_t>(i);
    std::uint64_t compared = 0;
    std::stable_sort(places.begin(), places.end(), [&](std::uint32_t a, std::uint32_t b) {
      if (++compared % 65536 == 0) checkInterrupt();
      for (const SortKey key : sortKeys_) {
        const int result = compare(items_[a], items_[b], key);
        if (result != 0) return result < 0;
      }
      return false;
    });
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (places[i] != i) ++sorted_;
      write(items_[places[i]]);
    }
  }

  void write(Item& item) {
    const HeaderUse& use = *item.header;
    int counter = item.counter;
    if (renumbering_) {
      counter = renumbering_->next(use.newKey, use.key, item.counter);
      if (counter != item.counter) ++renumbered_;
      setCounter(item.fields, counter);
    }
    if (use.newKey != use.key) setHeader(item.fields, use.newKey);
    putHeader(item.text, mode_, item.fields);
    target_->write(item.text);
    if (item.row == nullptr) return;
    if (renumbering_) {
      moved_->add(*item.row, use.newKey, counter);
      return;
    }
    Vesk::SidecarRow row = *item.row;
    if (use.newKey != use.key) setHeader(row, use.newKey);
    if (!target_->put(row)) ++rowClashes_;
  }

  // Of headers that have become one.
  void refuseSharedCounters() {
    std::unordered_map<std::string, std::pair<CounterSet, std::string>> taken;
    for (const HeaderUse& use : headers_.all()) {
      auto& [counters, first] = taken[use.newKey];
      if (counters.meets(use.counters)) {
        throw Failure(Exit::kNo,
                      shownHeader(first) + " and " + shownHeader(use.key) +
                          " would be one header, and have counters in common",
                      "--renumber components gives each component its own");
      }
      counters.add(use.counters);
      if (first.empty()) first = use.key;
    }
  }

  std::string jsonOf() const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.edit/1");
    json.key("written").value(!dryRun_).key("input").value(input_);
    target_->append(json);
    json.key("dropped").beginArray();
    for (const Dropped& each : dropped_) {
      json.beginObjectRow().key("line").value(each.line).key("kind").value(nameOf(each.kind));
      json.key("like").value(each.like).endObject();
    }
    json.endArray().key("headers").beginArray();
    for (const HeaderUse& use : headers_.all()) {
      if (use.newKey == use.key) continue;
      json.beginObjectRow().key("header").value(shownHeader(use.key));
      json.key("becomes").value(shownHeader(use.newKey));
      json.key("elements").value(use.elements).endObject();
    }
    json.endArray().key("inAnotherPlace").value(sorted_).key("renumbered").value(renumbered_);
    json.key("componentsApart").value(moved_->moreRows()).endObject();
    return text;
  }

  std::string summary(const Changes& dropped, bool isVerbose) const {
    Changes renamed(isVerbose);
    for (const HeaderUse& use : headers_.all()) {
      if (use.newKey == use.key) continue;
      renamed.add("header " + shownHeader(use.key) + " becomes " + shownHeader(use.newKey) + ": " +
                  counted(use.elements, "element"));
    }
    std::string text = dropped.text("elements") + renamed.text("headers");
    if (dropsDuplicates_) text += counted(dropped.count(), "element") + " dropped\n";
    if (!sortKeys_.empty()) text += counted(sorted_, "element") + " reordered\n";
    if (renumbering_) text += counted(renumbered_, "element") + " renumbered\n";
    if (moved_->moreRows() > 0) {
      text +=
          counted(moved_->moreRows(), "component") + " split: a row for each range of counters\n";
    }
    return text + target_->summary();
  }

  std::string input_;
  std::string output_;
  std::vector<std::pair<std::string, std::string>> renames_;
  std::vector<std::pair<std::string, std::string>> groups_;
  bool dropsDuplicates_ = false;
  std::string sort_;
  std::string renumber_;
  int start_ = 1;
  bool dryRun_ = false;
  bool noAttributes_ = false;
  bool json_ = false;
  bool force_ = false;

  std::vector<Renaming> renamings_;
  std::vector<SortKey> sortKeys_;
  std::optional<Renumbering> renumbering_;
  std::optional<Sidecars> sidecars_;
  std::optional<RecordTarget> target_;
  std::optional<MovedRows> moved_;
  FileHeaders headers_;
  int mode_ = 0;
  Item item_;               // without --sort the only one
  std::deque<Item> items_;  // with --sort all
  std::deque<Vesk::SidecarRow> rows_;
  std::unordered_map<std::string, std::size_t> rowPlaces_;
  std::vector<Dropped> dropped_;  // with --json
  std::uint64_t sorted_ = 0;
  std::uint64_t renumbered_ = 0;
  std::uint64_t rowClashes_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeEdit() { return std::make_unique<EditCommand>(); }

}  // namespace VeskTool
