// SPDX-License-Identifier: MIT
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/Command.h"
#include "elements/Encoder.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "records/HeaderClashes.h"
#include "records/Headers.h"
#include "records/Losses.h"
#include "records/RawRecords.h"
#include "records/RecordTarget.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

const std::map<std::string, ClashRule> kRules = {{"renumber", ClashRule::kRenumber},
                                                 {"rename", ClashRule::kRename},
                                                 {"keep", ClashRule::kKeep},
                                                 {"refuse", ClashRule::kKeep}};

class MergeCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "merge",
        Group::kChange,
        "IN IN... -o OUT",
        "several files into one, headers kept apart",
        "Writes the elements of the files one after another: unchanged if the file has the style "
        "of OUT, else converted, and then every value that is lost is named, as convert does. A "
        "header clashes if two files have elements with the same counter in it: --clash says what "
        "becomes of the header in the later file, and the answer reports it. Rows of "
        "plant.attributes.csv beside the files are copied, under their new keys. The exit code is "
        "1 if anything but decimals is lost, or if elements can't be read and are left out. The "
        "files are read twice. Memory: 6 KB at most for each header, and 100 bytes for each row.",
        {{"vesk merge piping.dat steel.dat -o plant.dat", "two files"},
         {"vesk merge zones/*.dat -o plant.dat --style fixed", "all in one style"},
         {"vesk merge lines/ -o plant.dat --clash keep", "the parts from split"},
         {"vesk merge a.dat b.dat -o c.dat -n", "say only which headers clash"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("IN", words_, "record files, folders of *.dat files or patterns")->required();
    app.add_option("-o,--output", output_, "record file; - is stdout")
        ->type_name("OUT")
        ->required()
        ->default_str("to be given");
    app.add_option("--style", style_, "fixed or token")
        ->type_name("STYLE")
        ->default_str("that of the first file")
        ->check(CLI::IsMember(std::vector<std::string>{"fixed", "token"}));
    app.add_option("--clash", clash_,
                   "what to do with headers that clash: renumber (counters move behind those of "
                   "the files before), rename (F1 gets ~2 at its end), keep (both are one header, "
                   "equal counters one component) or refuse")
        ->type_name("WHAT")
        ->check(CLI::IsMember(std::vector<std::string>{"renumber", "rename", "keep", "refuse"}))
        ->capture_default_str();
    app.add_option("--limit", limit_, "name at most this many lost values; 0: all")
        ->type_name("N")
        ->capture_default_str();
    app.add_flag("--strict", strict_, "write nothing if anything but decimals is lost");
    app.add_flag("-n,--dry-run", dryRun_, "say only what would be written, and what clashes");
    app.add_flag("--no-attributes", noAttributes_, "leave the sidecars where they are");
    app.add_flag("--json", json_, "one JSON document of what was done");
    app.add_flag("-f,--force", force_, "replace OUT");
  }

  Exit run(Session& session) override {
    if (json_) refuseJsonBeside(output_);
    const std::vector<std::string> files = expandFiles(words_);
    for (const std::string& file : files) {
      if (file == "-") {
        throw Failure(Exit::kUsage, "merge reads its files twice, which stdin does not allow",
                      "name a file");
      }
      refuseSameRecords(file, output_);
    }
    const Sidecars sidecars(files, noAttributes_);
    for (int pass = 0; pass < 2; ++pass) {
      for (const std::string& file : files) expectInput(file, session.progress());
    }
    std::vector<FileHeaders> headers = settled(files, sidecars, session);
    std::string text = clashText(files, headers, session.options().verbose);
    if (clash_ == "refuse" && !text.empty()) {
      session.remark(text);
      session.error(output_ + " is not written, since headers clash (--clash refuse)");
      return Exit::kNo;
    }
    RecordTarget target(output_, sidecars.columns(), force_, dryRun_);
    LossReport losses(session, limit_);
    Exit exit = Exit::kDone;
    for (std::size_t i = 0; i < files.size(); ++i)
      exit = worst(exit, add(files[i], headers[i], sidecars, target, losses, session));
    losses.sum();
    if (rowClashes_ > 0) {
      session.warning(counted(rowClashes_, "row") + " left out: another row has their elements");
      exit = worst(exit, Exit::kNo);
    }
    if (losses.isHarmful()) exit = worst(exit, Exit::kNo);
    if (losses.isHarmful() && strict_) {
      session.error(output_ + " is not written, since something would be lost (--strict)");
      return exit;
    }
    commitTogether({&target});
    text += target.summary();
    if (json_) {
      session.out().write(jsonOf(files, headers, target));
    } else if (output_ == "-") {
      session.remark(text);
    } else {
      session.out().write(text);
    }
    return exit;
  }

 private:
  // Which headers there are, and what becomes of them. Sets the style.
  std::vector<FileHeaders> settled(const std::vector<std::string>& files, const Sidecars& sidecars,
                                   Session& session) {
    std::vector<FileHeaders> headers(files.size());
    if (!style_.empty()) mode_ = style_ == "fixed" ? Vesk::kFixedColumns : Vesk::kTokens;
    HeaderClashes clashes(kRules.at(clash_));
    for (std::size_t i = 0; i < files.size(); ++i) {
      findHeaders(files[i], sidecars, headers[i], session);
      clashes.know(headers[i]);
    }
    for (std::size_t i = 0; i < files.size(); ++i) clashes.settle(headers[i], files[i]);
    return headers;
  }

  void findHeaders(const std::string& file, const Sidecars& sidecars, FileHeaders& headers,
                   Session& session) {
    const std::unique_ptr<SidecarFile> sidecar = sidecars.open(file);
    RawRecords records(file, session, true);
    while (records.next()) {
      if (mode_ == 0) mode_ = records.mode();
      const Vesk::RecordElement& element = records.element();
      HeaderUse& use = headers.of(headerKey(element.header));
      ++use.elements;
      use.counters.add(element.counter());
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(element);
      if (row != nullptr) use.counters.add(row->first, row->last);
    }
  }

  Exit add(const std::string& file, const FileHeaders& headers, const Sidecars& sidecars,
           RecordTarget& target, LossReport& losses, Session& session) {
    const std::unique_ptr<SidecarFile> sidecar = sidecars.open(file);
    RawRecords records(file, session);
    std::string text;
    std::optional<Encoder> encoder;
    while (records.next()) {
      const Vesk::RecordElement& element = records.element();
      const HeaderUse* use = headers.find(headerKey(element.header));
      Vesk::RecordElement moved = element;
      if (use != nullptr && use->newKey != use->key) setHeader(moved.header, use->newKey);
      if (use != nullptr && use->shift != 0 && use->counters.has(element.counter()))
        setCounter(moved.header, element.counter() + use->shift);
      if (records.mode() == mode_) {
        text = records.bytes();
        putHeader(text, mode_, moved.header);
        target.write(text);
      } else {
        if (!encoder) encoder.emplace(mode_);
        convert(records.file(), moved, *encoder, target, losses);
      }
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(element);
      if (row != nullptr) put(*row, use, *sidecar, sidecars, target);
    }
    if (sidecar != nullptr) sidecar->finish(session);
    return records.exit();
  }

  static void convert(const Vesk::RecordFile& records, const Vesk::RecordElement& element,
                      Encoder& encoder, RecordTarget& target, LossReport& losses) {
    if (const auto moved = movedByReading(records, *element.geo))
      losses.add(*moved, records.name(), element);
    const bool isWritten = encoder.encode(element);
    for (const Finding& loss : encoder.losses()) losses.add(loss, records.name(), element);
    if (!isWritten) return;
    std::string text;
    for (const std::string& line : encoder.lines()) text.append(line).append("\n");
    target.write(text);
  }

  void put(const Vesk::SidecarRow& row, const HeaderUse* use, const SidecarFile& from,
           const Sidecars& sidecars, RecordTarget& target) {
    Vesk::SidecarRow copy = row;
    if (use != nullptr) {
      if (use->newKey != use->key) setHeader(copy, use->newKey);
      copy.first += use->shift;
      copy.last += use->shift;
    }
    sidecars.arrange(copy, from);
    if (!target.put(copy)) ++rowClashes_;
  }

  // One line for each header that clashes, up to a number of them.
  std::string clashText(const std::vector<std::string>& files,
                        const std::vector<FileHeaders>& headers, bool isVerbose) const {
    constexpr std::uint64_t kMostSaid = 20;
    std::uint64_t clashes = 0;
    std::string text;
    for (std::size_t i = 0; i < files.size(); ++i) {
      for (const HeaderUse& use : headers[i].all()) {
        if (!use.isClash || (++clashes > kMostSaid && !isVerbose)) continue;
        text += files[i] + ": header " + shownHeader(use.key) +
                " clashes: " + counted(use.elements, "element") + ' ' + outcomeOf(use) + '\n';
      }
    }
    if (clashes > kMostSaid && !isVerbose)
      text += "and " + counted(clashes - kMostSaid, "more header") + "; -v shows all\n";
    return text;
  }

  std::string jsonOf(const std::vector<std::string>& files, const std::vector<FileHeaders>& headers,
                     const RecordTarget& target) const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.merge/1");
    json.key("written").value(!dryRun_);
    target.append(json);
    json.key("style").value(styleName(mode_));
    json.key("rowsLeftOut").value(rowClashes_).key("inputs").beginArray();
    for (const std::string& file : files) json.value(file);
    json.endArray().key("clashes").beginArray();
    for (std::size_t i = 0; i < files.size(); ++i) {
      for (const HeaderUse& use : headers[i].all()) {
        if (!use.isClash) continue;
        json.beginObjectRow().key("file").value(files[i]).key("header").value(shownHeader(use.key));
        json.key("elements").value(use.elements).key("becomes").value(shownHeader(use.newKey));
        json.key("shift").value(use.shift).endObject();
      }
    }
    json.endArray().endObject();
    return text;
  }

  std::string outcomeOf(const HeaderUse& use) const {
    const int first = use.counters.smallest();
    const int last = use.counters.largest();
    const auto range = [&](int shift) {
      return std::to_string(first + shift) + " to " + std::to_string(last + shift);
    };
    if (clash_ == "rename") return "renamed to " + shownHeader(use.newKey);
    if (clash_ == "renumber") return "renumbered, " + range(0) + " become " + range(use.shift);
    return clash_ == "keep" ? "kept as they are" : "have counters that are already taken";
  }

  std::vector<std::string> words_;
  std::string output_;
  std::string style_;
  std::string clash_ = "renumber";
  std::uint64_t limit_ = 20;
  bool strict_ = false;
  bool dryRun_ = false;
  bool noAttributes_ = false;
  bool json_ = false;
  bool force_ = false;
  int mode_ = 0;
  std::uint64_t rowClashes_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeMerge() { return std::make_unique<MergeCommand>(); }

}  // namespace VeskTool
