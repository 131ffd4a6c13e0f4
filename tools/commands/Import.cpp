// SPDX-License-Identifier: MIT
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "commands/Command.h"
#include "commands/ImportReviewModel.h"
#include "files/Files.h"
#include "files/PackedSource.h"
#include "files/PlantTarget.h"
#include "findings/Findings.h"
#include "pcf/Attributes.h"
#include "pcf/Importer.h"
#include "terminal/Options.h"
#include "terminal/Terminal.h"
#include "text/Json.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;
namespace Pcf = Vesk::Pcf;

const std::map<std::string, Pcf::BoreMeaning> kBoreMeanings = {
    {"auto", Pcf::BoreMeaning::kAuto},
    {"nominal", Pcf::BoreMeaning::kNominal},
    {"inches", Pcf::BoreMeaning::kInches},
    {"diameter", Pcf::BoreMeaning::kDiameter},
};

// Gives what is drawn to the target.
class TargetSink : public Pcf::Sink {
 public:
  explicit TargetSink(PlantTarget& target) : target_(target) {}

  void begin(const Pcf::LineHeader& header) override {
    target_.setHeader(header.f1, header.f2, header.number);
  }
  void put(const Vesk::Geo& geo) override { target_.put(geo); }
  void end(const Vesk::SidecarRow& row) override { target_.put(row); }

 private:
  PlantTarget& target_;
};

std::string bytesOf(const std::string& file, Session& session) {
  InputCount count;
  PackedSource source(file, count, session.progress());
  std::error_code error;
  const std::uintmax_t size = file == "-" ? 0 : fs::file_size(pathOf(file), error);
  std::string bytes;
  // A string that grows would for a moment be there twice.
  if (file != "-" && !error) bytes.reserve(static_cast<std::size_t>(size) + 1);
  constexpr std::size_t kBlock = std::size_t{1} << 20;
  for (std::size_t read = kBlock; read > 0;) {
    const std::size_t before = bytes.size();
    const std::size_t room = std::max<std::size_t>(bytes.capacity() - before, 1);
    bytes.resize(before + std::min(kBlock, room));
    read = source.read(bytes.data() + before, bytes.size() - before);
    bytes.resize(before + read);
    if (read > 0 && bytes.size() == bytes.capacity()) bytes.reserve(bytes.size() * 2);
  }
  if (!source.error().empty()) throw Failure(Exit::kInput, shownName(file) + ": " + source.error());
  return bytes;
}

std::string placeOf(const Pcf::Place& place, const Pcf::Messages& messages) {
  if (messages.files().size() == 1) return "line " + std::to_string(place.line);
  return messages.files()[place.file] + ':' + std::to_string(place.line);
}

std::string textOf(const Pcf::Importer& importer, const Pcf::Messages& messages,
                   const std::string& target) {
  std::string text = target + ": " + counted(importer.elements(), "element") + " of " +
                     counted(importer.components(), "component");
  if (messages.files().size() > 1) text += " in " + counted(messages.files().size(), "file");
  text += '\n';
  for (std::size_t i = 0; i < static_cast<std::size_t>(Pcf::Outcome::kOutcomes); ++i) {
    const auto outcome = static_cast<Pcf::Outcome>(i);
    if (importer.count(outcome) == 0) continue;
    text.append("  ").append(nameOf(outcome)) += ": " + grouped(importer.count(outcome)) + '\n';
    for (const Pcf::Fate& fate : importer.fates()) {
      if (fate.outcome != outcome) continue;
      text += "    " + grouped(fate.count) + "  " + fate.word;
      if (!fate.reason.empty())
        text += ": " + fate.reason + " (first in " + placeOf(fate.first, messages) + ')';
      text += '\n';
    }
  }
  return text;
}

void appendPlace(JsonWriter& json, const Pcf::Place& place, const Pcf::Messages& messages) {
  json.key("file").value(messages.files()[place.file]);
  json.key("line").value(std::int64_t{place.line});
}

void appendFate(JsonWriter& json, const Pcf::Fate& fate, const Pcf::Messages& messages) {
  json.beginObjectRow().key("name").value(fate.word);
  json.key("outcome").value(nameOf(fate.outcome));
  json.key("reason").value(fate.reason);
  json.key("count").value(fate.count).key("first").beginObject();
  appendPlace(json, fate.first, messages);
  json.endObject().endObject();
}

void appendMessage(JsonWriter& json, const Pcf::Message& message, const Pcf::Messages& messages) {
  json.beginObjectRow().key("severity").value(nameOf(message.severity));
  json.key("text").value(message.text + message.detail);
  json.key("count").value(message.count).key("places").beginArray();
  for (const Pcf::Place& place : message.places) {
    json.beginObject();
    appendPlace(json, place, messages);
    json.endObject();
  }
  json.endArray().endObject();
}

std::string jsonOf(const Pcf::Importer& importer, const Pcf::Messages& messages,
                   const std::string& target, const std::optional<std::string>& sidecar) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk.import/2").key("file").value(target);
  json.key("attributes");
  if (sidecar) {
    json.value(*sidecar);
  } else {
    json.null();
  }
  json.key("inputs").beginArray();
  for (const std::string& file : messages.files()) json.value(file);
  json.endArray().key("elements").value(importer.elements());
  json.key("components").value(importer.components());
  json.key("errors").value(messages.count(Pcf::Severity::kError));
  json.key("warnings").value(messages.count(Pcf::Severity::kWarning));
  json.key("fates").beginArray();
  for (const Pcf::Fate& fate : importer.fates()) appendFate(json, fate, messages);
  json.endArray().key("messages").beginArray();
  for (const Pcf::Message& message : messages.all()) appendMessage(json, message, messages);
  json.endArray().endObject();
  return text;
}

Severity severityOf(Pcf::Severity severity) {
  if (severity == Pcf::Severity::kError) return Severity::kError;
  return severity == Pcf::Severity::kWarning ? Severity::kWarning : Severity::kNote;
}

void say(Session& session, const Pcf::Messages& messages) {
  for (const Pcf::Message& message : messages.all()) {
    if (message.severity == Pcf::Severity::kQuiet && !session.options().verbose) continue;
    Finding finding;
    finding.severity = severityOf(message.severity);
    finding.file = messages.files()[message.places[0].file];
    finding.line = message.places[0].line;
    finding.message = messages.bodyOf(message);
    session.say(finding);
  }
}

// What was meant by "import IN NAME", the form of before.
std::string outputHint(const std::vector<std::string>& words) {
  std::error_code error;
  const bool isName = words.size() == 2 && !fs::exists(pathOf(words[1]), error);
  std::string line = "vesk import";
  for (std::size_t i = 0; i < (isName ? 1 : std::min<std::size_t>(words.size(), 3)); ++i)
    line += ' ' + words[i];
  return "-o names it: " + line + " -o " + (isName ? words[1] : std::string("plant")) + ".dat";
}

class ImportCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "import",
        Group::kChange,
        "IN... -o OUT",
        "piping files and review models to records",
        "Writes a record file in the token style, with lengths in millimetres, and beside "
        "plant.dat a sidecar, plant.attributes.csv, with what the headers can't hold: pipeline, "
        "item code, description. A folder stands for all *.pcf files in it and below. Components "
        "that can't be drawn, or are drawn by guess, are reported with their line; the exit code "
        "is then 1. One file is in memory at a time.\n"
        "Review models (.rvm, .rev), binary or text, are streamed: their shapes are counted as "
        "exact, in pieces, sliced, faceted, doubtful or refused, and the exit code is 1 unless all "
        "are exact or in pieces. For these --attributes names the file with their attributes, "
        "which go into the sidecar with the paths of their groups.",
        {{"vesk import pump.pcf -o pump.dat", "writes pump.dat and pump.attributes.csv"},
         {"vesk import lines/*.pcf -o plant.dat", "a file for each line"},
         {"vesk import - -o - < line7.pcf | vesk info -", "from and to other programs"},
         {"vesk import plant.rvm --attributes plant.att -o plant.dat", "a review model"}}};
  }

  bool takesMixed() const override { return false; }

  void define(CLI::App& app) override {
    app.add_option("IN", words_, "piping component files, folders of them or patterns; - is stdin")
        ->required();
    app.add_option("-o,--output", output_, "record file; - is stdout")
        ->type_name("OUT")
        ->default_str("to be given");
    app.add_option("--attributes", attributes_,
                   "the sidecar to write, instead of the one beside OUT; for review models, the "
                   "file with their attributes to read")
        ->type_name("FILE")
        ->default_str("beside OUT");
    app.add_option("--group", review_.groups,
                   "review models: only groups whose path is this or ends with it, \"/SITE/ZONE\"; "
                   "* stands for any characters")
        ->type_name("PATH")
        ->default_str("all");
    app.add_flag("--obstructions", review_.obstructions, "review models: draw obstructions");
    app.add_flag("--insulations", review_.insulations, "review models: draw insulation");
    app.add_flag("--no-attributes", noAttributes_, "write no sidecar");
    app.add_option("--bores", bores_,
                   "what bores in millimetres mean: nominal (DN), inches (NPS times 25.4), "
                   "diameter (drawn as they are) or auto (as most bores of the file indicate)")
        ->type_name("MEANING")
        ->check(CLI::IsMember(std::vector<std::string>{"auto", "nominal", "inches", "diameter"}))
        ->capture_default_str();
    app.add_option("--tolerance", tolerance_,
                   "how far the faces of oblique round bodies, and the slices of domes, may lie "
                   "from the true shape")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    app.add_flag("-f,--force", force_, "replace OUT");
    app.add_flag("--json", json_, "one JSON document");
  }

  Exit run(Session& session) override {
    if (output_.empty()) {
      throw Failure(Exit::kUsage, "no output is given", outputHint(words_));
    }
    const std::vector<std::string> files = expandFiles(words_, {".pcf", ".rvm"});
    if (areReviewModels(files)) return importReviews(files, session);
    const std::optional<std::string> sidecar = sidecarName();
    for (const std::string& file : files) {
      refuseSameFile(file, output_);
      if (sidecar) refuseSameFile(file, *sidecar);
      expectInput(file, session.progress());
    }
    PlantTarget target(output_, sidecar, Pcf::sidecarColumns(), force_);
    TargetSink sink(target);
    Pcf::Messages messages(session.options().verbose ? std::size_t{1} << 20 : 3);
    const Pcf::ImportOptions options{kBoreMeanings.at(bores_), tolerance_, sidecar.has_value(),
                                     files.size() > 1};
    Pcf::Importer importer(options, sink, messages);
    bool isPiping = true;
    for (const std::string& file : files)
      isPiping = importer.add(shownName(file), bytesOf(file, session)) && isPiping;
    say(session, messages);
    if (!isPiping) {
      throw Failure(Exit::kInput,
                    output_ + ": not written, since not all of the input can be read");
    }
    if (importer.elements() == 0)
      throw Failure(Exit::kInput, output_ + ": not written, since nothing can be drawn");
    target.commit();
    const std::string answer =
        json_ ? jsonOf(importer, messages, output_, sidecar) : textOf(importer, messages, output_);
    if (output_ == "-") {
      session.remark(answer);
    } else if (json_ || !session.options().quiet) {
      session.out().write(answer);
    }
    const bool isAsItWas =
        messages.count(Pcf::Severity::kError) == 0 && messages.count(Pcf::Severity::kWarning) == 0;
    return isAsItWas ? Exit::kDone : Exit::kNo;
  }

 private:
  // Throws a Failure for a mixture.
  static bool areReviewModels(const std::vector<std::string>& files) {
    const auto reviews = std::count_if(files.begin(), files.end(), isReviewModel);
    if (reviews == 0) return false;
    if (reviews == static_cast<std::ptrdiff_t>(files.size())) return true;
    throw Failure(Exit::kUsage, "piping files and review models can't go into one file",
                  "import them one after another and merge the record files");
  }

  Exit importReviews(const std::vector<std::string>& files, Session& session) const {
    ReviewModelJob job;
    job.files = files;
    job.attributes = attributes_;
    job.output = output_;
    if (!noAttributes_) job.sidecar = besideOutput();
    job.options = review_;
    job.options.tolerance = tolerance_;
    job.force = force_;
    job.json = json_;
    std::vector<std::string> inputs = files;
    inputs.insert(inputs.end(), attributes_.begin(), attributes_.end());
    for (const std::string& file : inputs) {
      refuseSameFile(file, output_);
      if (job.sidecar) refuseSameFile(file, *job.sidecar);
      expectInput(file, session.progress());
    }
    return importReviewModels(job, session);
  }

  std::optional<std::string> sidecarName() const {
    if (noAttributes_) return std::nullopt;
    if (attributes_.size() > 1) throw Failure(Exit::kUsage, "there can be only one sidecar");
    if (!attributes_.empty()) return attributes_[0];
    return besideOutput();
  }

  std::optional<std::string> besideOutput() const {
    if (output_ == "-" || isDevice(pathOf(output_))) return std::nullopt;
    return Vesk::sidecarNameOf(output_);
  }

  std::vector<std::string> words_;
  std::string output_;
  std::vector<std::string> attributes_;
  Vesk::ReviewOptions review_;
  bool noAttributes_ = false;
  std::string bores_ = "auto";
  double tolerance_ = 1;
  bool force_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeImport() { return std::make_unique<ImportCommand>(); }

}  // namespace VeskTool
