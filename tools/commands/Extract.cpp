// SPDX-License-Identifier: MIT
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "records/RawRecords.h"
#include "records/RecordTarget.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

class ExtractCommand : public Command {
 public:
  CommandText text() const override {
    return {"extract",
            Group::kChange,
            "IN... -o OUT",
            "chosen elements unchanged, byte for byte",
            "Every line of a chosen element is written as it stands in IN, in the order of IN; if "
            "no option chooses, every element is. Elements that can't be read are named and left "
            "out; the exit code is then 1. The chosen elements must have the same style. Rows of "
            "plant.attributes.csv beside plant.dat are copied into the file beside OUT. Memory: "
            "about 100 bytes for each of these rows.",
            {{"vesk extract plant.dat -o line.dat --header P-1001", "one line of piping"},
             {"vesk extract plant.dat -o - --near 1000,0,500,2000 | vesk view -", "around a point"},
             {"vesk extract zones/ -o bends.dat --only bend --size 150..", "from many files"},
             {"vesk extract plant.dat -o rest.dat --not --lines 1-100 -n", "say only how many"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("IN", words_, "record files, folders of *.dat files or patterns; - is stdin")
        ->required();
    app.add_option("-o,--output", output_, "record file; - is stdout")
        ->type_name("OUT")
        ->required()
        ->default_str("to be given");
    app.add_flag("-n,--dry-run", dryRun_, "say only what would be written");
    app.add_flag("--no-attributes", noAttributes_, "leave the sidecar where it is");
    app.add_flag("--json", json_, "one JSON document of what was done");
    app.add_flag("-f,--force", force_, "replace OUT");
    selection_.define(app);
  }

  Exit run(Session& session) override {
    if (json_) refuseJsonBeside(output_);
    const std::vector<std::string> files = expandFiles(words_);
    for (const std::string& file : files) refuseSameRecords(file, output_);
    Choice choice(selection_, files, session);
    const Sidecars sidecars(files, noAttributes_);
    RecordTarget target(output_, sidecars.columns(), force_, dryRun_);
    for (const std::string& file : files) expectInput(file, session.progress());
    Exit exit = Exit::kDone;
    for (const std::string& file : files)
      exit = worst(exit, extract(file, choice, sidecars, target, session));
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    if (clashes_ > 0) {
      session.warning(counted(clashes_, "row") +
                          " left out, since elements of two files have the same header and counter",
                      "vesk merge gives each its own");
      exit = worst(exit, Exit::kNo);
    }
    commitTogether({&target});
    if (json_) {
      session.out().write(jsonOf(files, target));
    } else if (output_ == "-") {
      session.note(target.summary());
    } else {
      session.out().write(target.summary());
    }
    return exit;
  }

 private:
  Exit extract(const std::string& file, Choice& choice, const Sidecars& sidecars,
               RecordTarget& target, Session& session) {
    const std::unique_ptr<SidecarFile> sidecar = sidecars.open(file);
    RawRecords records(file, session);
    while (records.next()) {
      const Vesk::RecordElement& element = records.element();
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(element);
      if (!choice.takes(element)) continue;
      requireMode(records.mode(), file);
      target.write(records.bytes());
      if (row == nullptr) continue;
      Vesk::SidecarRow copy = *row;
      sidecars.arrange(copy, *sidecar);
      if (!target.put(copy)) ++clashes_;
    }
    if (sidecar != nullptr) sidecar->finish(session);
    return records.exit();
  }

  std::string jsonOf(const std::vector<std::string>& files, const RecordTarget& target) const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.extract/1");
    json.key("written").value(!dryRun_);
    target.append(json);
    json.key("rowsLeftOut").value(clashes_).key("inputs").beginArray();
    for (const std::string& file : files) json.value(file);
    json.endArray().endObject();
    return text;
  }

  void requireMode(int mode, const std::string& file) {
    if (mode_ == 0) mode_ = mode;
    if (mode == mode_) return;
    throw Failure(Exit::kInput,
                  shownName(file) + ": " + std::string(styleName(mode)) +
                      " style, but what comes before it has " + std::string(styleName(mode_)),
                  "vesk merge brings them to one style");
  }

  std::vector<std::string> words_;
  std::string output_;
  SelectionOptions selection_;
  bool dryRun_ = false;
  bool noAttributes_ = false;
  bool json_ = false;
  bool force_ = false;
  int mode_ = 0;
  std::uint64_t clashes_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeExtract() { return std::make_unique<ExtractCommand>(); }

}  // namespace VeskTool
