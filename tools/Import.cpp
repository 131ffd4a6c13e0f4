#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "Command.h"
#include "Json.h"
#include "Numbers.h"
#include "Terminal.h"
#include "vesk.h"

// The piping host's reading and drawing, in C.
extern "C" {
#include "draw.h"
#include "pcf.h"
#include "record.h"
#include "report.h"
}

namespace VeskTool {
namespace {

namespace fs = std::filesystem;

class PipingReport {
 public:
  PipingReport(std::string file, bool quiet) : file_(std::move(file)) {
    reportStart(&report_, file_.c_str());
    report_.quiet = quiet ? 1 : 0;
  }
  ~PipingReport() { reportFree(&report_); }
  PipingReport(const PipingReport&) = delete;
  PipingReport& operator=(const PipingReport&) = delete;

  Report* get() { return &report_; }

 private:
  std::string file_;
  Report report_{};
};

class PipingFile {
 public:
  PipingFile(const std::string& file, Report* report) {
    isRead_ = pcfRead(&piping_, file.c_str(), report) != 0;
  }
  ~PipingFile() {
    if (isRead_) pcfFree(&piping_);
  }
  PipingFile(const PipingFile&) = delete;
  PipingFile& operator=(const PipingFile&) = delete;

  bool isRead() const { return isRead_; }
  const Piping* get() const { return &piping_; }

 private:
  Piping piping_{};
  bool isRead_ = false;
};

// What the exports write to until it is whole: "veskplant.part-17.dat" beside
// "veskplant.dat". It goes when it was not renamed.
class PartFile {
 public:
  explicit PartFile(const std::string& name)
      : name_(name + ".part-" + std::to_string(processNumber())) {}
  ~PartFile() {
    vk_openVesk(nullptr);
    std::error_code error;
    fs::remove(pathOf(file()), error);
  }
  PartFile(const PartFile&) = delete;
  PartFile& operator=(const PartFile&) = delete;

  const std::string& name() const { return name_; }
  std::string file() const { return "vesk" + name_ + ".dat"; }

  void renameTo(const std::string& target) const {
    if (std::FILE* written = openFile(pathOf(file()), "rb+")) {
      const bool synced = syncFile(written);
      const int number = errno;
      std::fclose(written);
      if (!synced) throw Failure(Exit::kOutput, target + ": " + errorText(number));
    }
    std::error_code error;
    fs::rename(pathOf(file()), pathOf(target), error);
    if (error) throw Failure(Exit::kOutput, target + ": " + error.message());
  }

 private:
  std::string name_;
};

// Only the file itself tells whether the disk took all of it.
void requireComplete(const Drawing& drawing, const PartFile& part, const std::string& target) {
  Record record;
  if (recordCount(&record, part.file().c_str()) == 0) {
    throw Failure(Exit::kOutput, target + ": cannot be read back: " + errorText(errno));
  }
  bool same = record.elements == putSoFar(&drawing);
  for (int i = 0; i < kElements; ++i) same = same && drawing.made[i] == record.kinds[i];
  if (!same) {
    throw Failure(Exit::kOutput, target + ": incomplete, is the disk full? It would hold " +
                                     std::to_string(record.elements) + " of " +
                                     std::to_string(putSoFar(&drawing)) + " elements");
  }
}

constexpr std::string_view kOutcomeNames[kOutcomes] = {"drawn", "nothing to draw", "not drawn"};

std::string textOf(const Report& report, const std::string& target, long elements) {
  std::string text = target + ": " + counted(static_cast<std::uint64_t>(elements), "element") +
                     " of " + counted(static_cast<std::uint64_t>(report.components), "component") +
                     "\n";
  for (int outcome = 0; outcome < kOutcomes; ++outcome) {
    if (report.outcomes[outcome] == 0) continue;
    text.append("  ").append(kOutcomeNames[outcome]);
    text += ": " + std::to_string(report.outcomes[outcome]) + '\n';
    for (std::size_t i = 0; i < report.tallyCount; ++i) {
      const Tally& tally = report.tallies[i];
      if (static_cast<int>(tally.outcome) != outcome) continue;
      text += "    " + std::to_string(tally.count) + "  " + tally.name;
      if (tally.reason[0] != '\0') {
        text += std::string(": ") + tally.reason + " (first in line " +
                std::to_string(tally.first) + ')';
      }
      text += '\n';
    }
  }
  return text;
}

void appendTally(JsonWriter& json, const Tally& tally) {
  json.beginObjectRow().key("name").value(tally.name);
  json.key("outcome").value(kOutcomeNames[tally.outcome]);
  json.key("reason").value(tally.reason);
  json.key("count").value(std::int64_t{tally.count});
  json.key("firstLine").value(std::int64_t{tally.first}).endObject();
}

std::string jsonOf(const Report& report, const std::string& target, long elements) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk.import/1").key("file").value(target);
  json.key("elements").value(std::int64_t{elements});
  json.key("components").value(std::int64_t{report.components});
  json.key("errors").value(std::int64_t{report.errors});
  json.key("warnings").value(std::int64_t{report.warnings});
  json.key("fates").beginArray();
  for (std::size_t i = 0; i < report.tallyCount; ++i) appendTally(json, report.tallies[i]);
  json.endArray().key("remarks").beginArray();
  for (std::size_t i = 0; i < report.remarkCount; ++i) appendTally(json, report.remarks[i]);
  json.endArray().endObject();
  return text;
}

class ImportCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "import",
        Group::kChange,
        "IN NAME",
        "piping component files (PCF) to records",
        "Writes veskNAME.dat in the current folder, in the token style, lengths in millimetres. "
        "What can't be drawn, or is drawn otherwise than the file says, is said with its line; "
        "the exit code is 1 then.",
        {{"vesk import pump.pcf pump", "writes veskpump.dat"},
         {"vesk import -f - line7 < line7.pcf", "from a pipe, over an older file"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("IN", input_, "piping component file; - is stdin")->required();
    app.add_option("NAME", name_, "what stands between \"vesk\" and \".dat\"")->required();
    app.add_flag("--bore-as-diameter", boreAsDiameter_,
                 "draw pipes as wide as their bores, not with the outside diameter of such a pipe");
    app.add_flag("-f,--force", force_, "replace veskNAME.dat");
    app.add_flag("--json", json_, "one JSON document");
  }

  Exit run(Session& session) override {
    const std::string target = "vesk" + name_ + ".dat";
    std::error_code error;
    if (name_.empty()) throw Failure(Exit::kUsage, "the name is empty");
    refuseSameFile(input_, target);
    if (!force_ && fs::exists(pathOf(target), error)) {
      throw Failure(Exit::kOutput, target + ": there is such a file already", "-f replaces it");
    }
    PipingReport report(shownName(input_), session.options().quiet);
    const PipingFile piping(input_, report.get());
    if (!piping.isRead()) {
      checkInterrupt();
      throw Failure(Exit::kInput, shownName(input_) + ": " + errorText(errno));
    }
    if (pcfHasComponents(piping.get()) == 0) {
      throw Failure(Exit::kInput, shownName(input_) + ": this is no piping component file",
                    "a component begins with its name, PIPE or ELBOW, at the start of a line");
    }
    const PartFile part(name_);
    Drawing drawing{piping.get(), report.get(), boreAsDiameter_ ? 1 : 0, {}, 0};
    if (vk_openVesk(part.name().c_str()) == 0) {
      throw Failure(Exit::kOutput, target + ": " + errorText(errno));
    }
    drawAll(&drawing);
    errno = 0;
    vk_openVesk(nullptr);  // leaves in errno what was refused since the opening
    const int refused = errno;
    checkInterrupt();
    if (refused != 0) throw Failure(Exit::kOutput, target + ": " + errorText(refused));
    requireComplete(drawing, part, target);
    part.renameTo(target);
    const long elements = putSoFar(&drawing);
    session.out().write(json_ ? jsonOf(*report.get(), target, elements)
                              : textOf(*report.get(), target, elements));
    return report.get()->errors + report.get()->warnings > 0 ? Exit::kNo : Exit::kDone;
  }

 private:
  std::string input_;
  std::string name_;
  bool boreAsDiameter_ = false;
  bool force_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeImport() { return std::make_unique<ImportCommand>(); }

}  // namespace VeskTool
