// SPDX-License-Identifier: MIT
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/FileCheck.h"
#include "check/Reports.h"
#include "commands/Command.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SceneReader.h"
#include "files/SelectionOptions.h"
#include "files/SidecarFile.h"
#include "files/Watch.h"
#include "findings/Catalogue.h"
#include "terminal/Nearest.h"
#include "terminal/Options.h"
#include "view/PageInput.h"
#include "view/PageTarget.h"

namespace VeskTool {
namespace {

constexpr std::uint64_t kMostInText = 20;

class CheckCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "check",
        Group::kJudge,
        "FILE...",
        "format and geometry, findings with their places",
        "The exit code is 1 if there are errors. Lengths are in the unit of the file, by custom "
        "millimetres. Memory: up to 64 bytes for each element, to find elements that are drawn "
        "twice (none with --ignore V204), with --joints 600 bytes for each pipe, and with json and "
        "sarif all findings.\n"
        "\n"
        "--joints examines the ends of cylinders, cones and bends. Two ends face each other if "
        "their axes are in line within five degrees and they are no further apart than --reach and "
        "half of the larger diameter; the ends nearest to each other form a joint. They should "
        "meet within --tolerance: along the axis (V201), across it (V202) and in diameter (V203; "
        "within 1.5 % they are one nominal size). Cylinders shorter than three diameters and "
        "pointed or flat cones may be wider than their pipe. Ends that meet nothing are open "
        "(V205), do not reach the pipe that they branch from (V206), or face each other across a "
        "missing piece (V207).\n"
        "\n"
        "With the attributes beside a file, or --attributes, everything drawn for one component "
        "counts as one: a duplicate is reported once (V204), a component that closes a line leaves "
        "no open end, and supports are compared (V208).",
        {{"vesk check plant.dat", "what is wrong with the file"},
         {"vesk check --joints --tolerance 0.5 plant.dat", "also pipes that do not quite meet"},
         {"vesk check -j 0 --format sarif zones/ > zones.sarif", "for editors and code hosts"},
         {"vesk check --header P-1001 plant.dat", "only one header"},
         {"vesk check --view plant.dat", "a page that shows the places"},
         {"vesk check --strict --ignore V120,V032 plant.dat", "warnings fail too"}}};
  }

  void define(CLI::App& app) override {
    files_.define(app);
    app.add_option("--format", format_, "text, json or sarif")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>{"text", "json", "sarif"}))
        ->capture_default_str();
    app.add_flag("--json", json_, "the same as --format json");
    app.add_option("--max", most_, "show at most this many findings of each code and file; 0: all")
        ->type_name("N")
        ->default_str("20 in text, else all")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--ignore", ignore_, "do not report these codes")
        ->type_name("CODES")
        ->default_str("none")
        ->delimiter(',')
        ->allow_extra_args(false);
    app.add_option("--level", level_, "the lowest level to report: error, warning or note")
        ->type_name("LEVEL")
        ->check(CLI::IsMember(std::vector<std::string>{"error", "warning", "note"}))
        ->capture_default_str();
    app.add_flag("--strict", strict_, "exit code 1 for warnings too");
    app.add_flag("--joints", options_.joints,
                 "look for ends of pipes that almost meet or are open");
    app.add_option("--attributes", attributes_,
                   "the sidecar with the components, for a single record file")
        ->type_name("FILE")
        ->default_str("beside each file");
    app.add_option("--tolerance", options_.joint.tolerance,
                   "how far apart the ends of a joint may be")
        ->type_name("MM")
        ->check(zeroOrMore())
        ->capture_default_str();
    app.add_option("--reach", options_.joint.reach,
                   "ends further apart than this do not form a "
                   "joint")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    CLI::Option* view = app.add_flag(
        "--view", view_, "show all findings in a page and open it; print only how many there are");
    page_.define(app, view);
    app.add_flag("--watch", watch_, "check again whenever a file is written; Ctrl-C ends it");
    selection_.define(app, Beside::kToleranceAndCodes);
  }

  Exit run(Session& session) override {
    if (!watch_) return checkAll(session);
    if (json_ || format_ != "text" || view_) {
      throw Failure(Exit::kUsage, "--watch reports findings only as text");
    }
    watchFiles(files_.words, session, [&] { checkAll(session); });
  }

 private:
  Exit checkAll(Session& session) {
    if (json_) format_ = "json";
    takeOptions();
    const std::vector<std::string> files = expandFiles(files_.words);
    if (!attributes_.empty() && files.size() > 1)
      throw Failure(Exit::kUsage, "--attributes is for a single record file");
    if (view_) requirePage(files);
    Choice choice(selection_, files, session);
    if (choice.isGiven()) {
      options_.takes = [&](const Vesk::RecordElement& element) { return choice.takes(element); };
    }
    std::vector<std::optional<FileReport>> reports(files.size());
    const Exit exit =
        forEachFile(session, files, files_.jobs, [&](std::size_t index, Session& own) {
          FileReport report = check(files[index], own);
          const bool bad = report.counts.errors > 0 || (strict_ && report.counts.warnings > 0);
          if (!isText()) reports[index] = std::move(report);
          return bad ? Exit::kNo : Exit::kDone;
        });
    const Exit chosen = worst(exit, choice.finish(session));
    if (choice.isNothing() && exit == Exit::kDone) return chosen;
    if (view_) return worst(chosen, showPage(files, reports, session));
    if (format_ != "text") printDocument(session, reports, exit < Exit::kUsage);
    return chosen;
  }

  void takeOptions() {
    options_.most = most_.value_or(isText() ? kMostInText : 0);
    options_.level = level_ == "error"     ? Severity::kError
                     : level_ == "warning" ? Severity::kWarning
                                           : Severity::kNote;
    options_.only = codesOf(selection_.codes());
    // Who asks for what only joints have, asks for these.
    const auto isOfJoints = [](const std::string& code) {
      return code.starts_with("V2") && !code.starts_with("V204");
    };
    if (std::any_of(options_.only.begin(), options_.only.end(), isOfJoints)) {
      options_.joints = true;
    }
    options_.ignore = codesOf(ignore_);
  }

  // Whether findings go to stdout one by one.
  bool isText() const { return format_ == "text" && !view_; }

  void requirePage(const std::vector<std::string>& files) const {
    if (format_ != "text") throw Failure(Exit::kUsage, "--view shows a page, not " + format_);
    if (std::find(files.begin(), files.end(), "-") != files.end()) {
      throw Failure(Exit::kUsage, "--view reads its files twice, which stdin does not allow");
    }
    page_.require(files);
  }

  // Of the files that could be read.
  Exit showPage(const std::vector<std::string>& files,
                const std::vector<std::optional<FileReport>>& reports, Session& session) const {
    PageModel model(Vesk::Fineness::ofSegments(Vesk::Fineness::kNormal));
    std::string title;
    for (std::size_t i = 0; i < files.size(); ++i) {
      if (!reports[i]) continue;
      if (title.empty()) title = reports[i]->file;
      readInto(model, files[i], session, false);
    }
    if (title.empty()) return Exit::kDone;
    model.finish();
    for (const std::optional<FileReport>& report : reports) {
      if (report) markFindings(model, report->file, report->findings);
    }
    page_.write(model, "Check of " + title, "check", session);
    return sayFailures(model.scene(), session);
  }

  // In capitals; each must be a code or what some begin with.
  static std::vector<std::string> codesOf(const std::vector<std::string>& words) {
    std::vector<std::string> codes;
    std::vector<std::string> names;
    for (const CodeText& each : catalogue()) names.emplace_back(each.code);
    for (std::string word : words) {
      if (word.starts_with('v')) word.front() = 'V';
      const bool known =
          !word.empty() && std::any_of(names.begin(), names.end(), [&](const std::string& name) {
            return name.starts_with(word);
          });
      if (!known) throw Failure(Exit::kUsage, "there is no code " + word, didYouMean(word, names));
      codes.push_back(std::move(word));
    }
    return codes;
  }

  FileReport check(const std::string& file, Session& session) const {
    InputCount count;
    Vesk::RecordFile records = openRecords(file, count, session);
    FileReport report;
    std::string text;
    FileCheck work(options_, [&](Finding&& finding) {
      if (!isText()) return report.findings.push_back(std::move(finding));
      text.clear();
      appendText(text, finding, session.look());
      session.out().write(text);
    });
    const std::unique_ptr<SidecarFile> attributes = SidecarFile::open(file, attributes_);
    report.counts = work.run(records, attributes.get());
    if (attributes) attributes->finish(session);
    requireRecords(records, count, report.counts.elements);
    report.file = records.name();
    report.mode = report.counts.mode == kMixedStyle ? kMixedStyle : records.mode();
    const CheckCounts& counts = report.counts;
    const bool isNothing =
        options_.takes && counts.elements + counts.errors + counts.warnings + counts.notes == 0;
    if (format_ == "text" && !session.options().quiet && !isNothing) {
      session.out().write(summaryOf(report));
    }
    return report;
  }

  void printDocument(Session& session, std::vector<std::optional<FileReport>>& reports,
                     bool allRead) const {
    std::vector<FileReport> read;
    for (std::optional<FileReport>& report : reports) {
      if (report) read.push_back(std::move(*report));
    }
    session.out().write(format_ == "json" ? jsonOf(read) : sarifOf(read, allRead));
  }

  ManyFiles files_;
  CheckOptions options_;
  std::string format_ = "text";
  std::string level_ = "note";
  bool json_ = false;
  bool strict_ = false;
  bool view_ = false;
  bool watch_ = false;
  PageTarget page_;
  std::string attributes_;
  std::optional<std::uint64_t> most_;
  SelectionOptions selection_;
  std::vector<std::string> ignore_;
};

}  // namespace

std::unique_ptr<Command> makeCheck() { return std::make_unique<CheckCommand>(); }

}  // namespace VeskTool
