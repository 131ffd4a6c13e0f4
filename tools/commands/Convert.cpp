// SPDX-License-Identifier: MIT
#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "elements/Describe.h"
#include "elements/Encoder.h"
#include "elements/Kinds.h"
#include "elements/Transform.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "output/RecordLayout.h"
#include "records/Losses.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "vesk/TovException.h"

namespace VeskTool {
namespace {

// Records under the name of another format would mislead.
void refuseMesh(const std::string& output) {
  const std::string ending = nameOf(pathOf(output).extension());
  for (const std::string_view other : {".glb", ".gltf", ".obj", ".stl", ".ply", ".step", ".stp",
                                       ".ifc", ".dxf", ".html", ".svg", ".png"}) {
    if (ending == other) {
      throw Failure(Exit::kUsage, "convert writes record files, not " + ending,
                    "vesk export or vesk view writes other formats");
    }
  }
}

class ConvertCommand : public Command {
 public:
  CommandText text() const override {
    return {"convert",
            Group::kChange,
            "IN OUT",
            "to the other record style; move, rotate, scale",
            "Every value that the style of OUT can't keep is named on stderr before OUT appears. "
            "The exit code is 1 if anything but decimals is lost, or if elements of IN can't be "
            "read and are left out.",
            {{"vesk convert plant.dat columns.dat --style fixed", "tokens to fixed columns"},
             {"vesk convert a.dat b.dat --verify", "read back and compare"},
             {"vesk convert a.dat b.dat --rotate z,90 --move 5000,0,0", "put it in another place"},
             {"vesk convert a.dat b.dat --header P-1001", "a part of it"},
             {"vesk convert a.dat - --style token | vesk info -", "through a pipe"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("IN", input_, "record file; - is stdin")->required();
    app.add_option("OUT", output_, "record file; - is stdout")->required();
    app.add_option("--style", style_, "fixed or token")
        ->type_name("STYLE")
        ->default_str("that of IN")
        ->check(CLI::IsMember(std::vector<std::string>{"fixed", "token"}));
    transform_.define(app);
    app.add_flag("--verify", verify_, "read OUT back and compare every element with IN");
    app.add_flag("--strict", strict_, "write nothing if anything but decimals is lost");
    app.add_flag("-n,--dry-run", dryRun_, "only say what would be lost");
    app.add_option("--limit", limit_, "name at most this many lost values; 0: all")
        ->type_name("N")
        ->capture_default_str();
    app.add_flag("-f,--force", force_, "replace OUT");
    selection_.define(app);
  }

  Exit run(Session& session) override {
    refuseMesh(output_);
    transform_.prepare();
    refuseSameFile(input_, output_);
    if (verify_ && (input_ == "-" || output_ == "-")) {
      throw Failure(Exit::kUsage, "--verify needs files: it reads IN and OUT once more");
    }
    Choice choice(selection_, {input_}, session);
    std::optional<OutputFile> out;
    if (!dryRun_) out.emplace(output_, force_);
    const Exit exit = convert(session, choice, out);
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    if (!out) return exit;
    if (strict_ && exit != Exit::kDone) {
      session.error(output_ + " is not written, since something would be lost (--strict)");
      return exit;
    }
    out->commit();
    return verify_ ? worst(exit, verify(session, choice)) : exit;
  }

 private:
  int modeFor(const Vesk::RecordFile& records) const {
    if (style_.empty()) return records.mode();
    return style_ == "fixed" ? Vesk::kFixedColumns : Vesk::kTokens;
  }

  // Turns and moves what was read; false if that can't be done.
  bool place(const Vesk::RecordElement& element) const {
    try {
      transform_.apply(*element.geo);
    } catch (const Vesk::TovException&) {
      return false;
    }
    return true;
  }

  Exit convert(Session& session, Choice& choice, std::optional<OutputFile>& out) {
    expectInput(input_, session.progress());
    if (verify_) {
      expectInput(input_, session.progress());
      session.progress().expectUnknown();
    }
    LossReport report(session, limit_);
    std::optional<Encoder> encoder;
    std::string text;
    const RecordsRead read = readRecords(input_, session, [&](Vesk::RecordFile& records) {
      if (!encoder) encoder.emplace(modeFor(records));
      const Vesk::RecordElement& element = records.element();
      if (!choice.takes(element)) return;
      if (const auto moved = movedByReading(records, *element.geo)) {
        report.add(*moved, records.name(), element);
      }
      if (!place(element)) {
        Finding finding;
        finding.code = "V309";
        finding.severity = Severity::kWarning;
        finding.message = "element not written: a normal has no length";
        return report.add(finding, records.name(), element);
      }
      const bool written = encoder->encode(element);
      for (const Finding& loss : encoder->losses()) report.add(loss, records.name(), element);
      if (!written || !out) return;
      text.clear();
      for (const std::string& line : encoder->lines()) text.append(line).append("\n");
      out->write(text);
    });
    report.sum();
    return report.isHarmful() ? Exit::kNo : read.exit();
  }

  // Reads both files side by side.
  Exit verify(Session& session, Choice& choice) const {
    InputCount count;
    InputCount backCount;
    Vesk::RecordFile records = openRecords(input_, count, session);
    Vesk::RecordFile back = openRecords(output_, backCount, session);
    std::optional<Encoder> encoder;
    std::uint64_t compared = 0;
    std::uint64_t different = 0;
    const auto say = [&](const std::string& message) {
      ++different;
      Finding finding;
      finding.code = "V311";
      finding.file = records.name();
      finding.line = records.element().firstLine;
      finding.message = message;
      session.say(finding);
    };
    for (;;) {
      const Vesk::RecordFile::Found found = records.next();
      if (found == Vesk::RecordFile::Found::kEnd) break;
      if (found == Vesk::RecordFile::Found::kFault) continue;
      if (!encoder) encoder.emplace(modeFor(records));
      if (!choice.takes(records.element())) continue;
      const auto moved = movedByReading(records, *records.element().geo);
      if (moved) say(moved->message);
      if (!place(records.element()) || !encoder->encode(records.element())) continue;
      const Vesk::Geo& geo = *records.element().geo;
      for (std::size_t i = 0; i < encoder->records(); ++i) {
        if (back.next() != Vesk::RecordFile::Found::kElement) {
          say("missing or damaged in " + output_);
        } else if (encoder->records() == 1 && !moved &&
                   !geo.equal(*back.element().geo, encoder->toleranceOf(geo))) {
          say("differs in line " + std::to_string(back.element().firstLine) + " of " + output_);
        }
      }
      ++compared;
    }
    if (back.next() != Vesk::RecordFile::Found::kEnd) say("more elements in " + output_);
    if (!back.error().empty()) throw Failure(Exit::kInput, output_ + ": " + back.error());
    session.remark("vesk: verified " + counted(compared, "element") + ", " + grouped(different) +
                   " differ\n");
    return different == 0 ? Exit::kDone : Exit::kNo;
  }

  std::string input_;
  std::string output_;
  std::string style_;
  Transform transform_;
  SelectionOptions selection_;
  bool verify_ = false;
  bool strict_ = false;
  bool dryRun_ = false;
  bool force_ = false;
  std::uint64_t limit_ = 20;
};

}  // namespace

std::unique_ptr<Command> makeConvert() { return std::make_unique<ConvertCommand>(); }

}  // namespace VeskTool
