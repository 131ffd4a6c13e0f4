// SPDX-License-Identifier: MIT
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/Reports.h"
#include "clash/Bcf.h"
#include "clash/ClashReports.h"
#include "clash/ClashSearch.h"
#include "commands/Command.h"
#include "elements/Describe.h"
#include "files/Files.h"
#include "files/SceneReader.h"
#include "files/SelectionOptions.h"
#include "sidecar/Sidecar.h"
#include "terminal/Options.h"
#include "terminal/Terminal.h"
#include "view/PageInput.h"
#include "view/PageTarget.h"

namespace VeskTool {
namespace {

constexpr std::uint64_t kMostInText = 20;

// Which component of a sidecar the elements of a file belong to; none without one.
class ComponentReader {
 public:
  // With `isAsked` the file must be there.
  ComponentReader(const std::string& name, bool isAsked) {
    if (name.empty() || (!isAsked && !std::filesystem::exists(pathOf(name)))) return;
    stream_.open(pathOf(name), std::ios::binary);
    if (!stream_) throw Failure(Exit::kInput, name + ": can't be read");
    reader_ = std::make_unique<Vesk::SidecarReader>(stream_, name);
    join_ = std::make_unique<Vesk::SidecarJoin>(*reader_);
  }

  std::string componentOf(const Vesk::RecordElement& element) {
    if (!join_) return {};
    const std::string f1 = trimmedField(element.header.f1);
    const std::string f2 = trimmedField(element.header.f2);
    const Vesk::SidecarRow* row = join_->find(f1, f2, element.counter());
    if (row == nullptr) return {};
    return f1 + '\n' + f2 + '\n' + std::to_string(row->first);
  }

  // Throws a Failure if the sidecar could not be read to its end.
  void finish() {
    if (!join_) return;
    join_->finish();
    if (!reader_->fault().empty()) throw Failure(Exit::kInput, reader_->fault());
  }

 private:
  std::ifstream stream_;
  std::unique_ptr<Vesk::SidecarReader> reader_;
  std::unique_ptr<Vesk::SidecarJoin> join_;
};

class ClashCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "clash",
        Group::kJudge,
        "A [B]",
        "what collides or comes too near",
        "A and B are record files, folders or patterns. With A alone, clashes are searched for "
        "between its headers, or as --between says; with both, between elements of A and elements "
        "of B. The exit code is 1 if anything was found. Lengths are in the unit of the file, by "
        "custom millimetres, exact to 0.001.\n"
        "\n"
        "V501: overlap by more than --tolerance; V502: nearer than --clearance; V503: same shape "
        "twice; V504 (--strict): a pipe that ends inside another. These are not clashes: pipes "
        "that meet end to end within the tolerance, a branch that ends in the pipe whose surface "
        "it crosses once, and elements of one component by the attributes beside the file. Lines, "
        "points and texts take up no room.\n"
        "\n"
        "Memory: 1 KB for each element. More than 2 000 000 pairs to be measured, or 100 000 000 "
        "near to each other, are refused before the work begins.",
        {{"vesk clash plant.dat", "what collides"},
         {"vesk clash piping.dat steel.dat --clearance 50", "also what is too near to the steel"},
         {"vesk clash zones/ --between lines --ignore 'INS-*:*'", "without the insulation"},
         {"vesk clash plant.dat --header P-1001", "what one line collides with"},
         {"vesk clash --view plant.dat", "a page that shows the places"},
         {"vesk clash plant.dat --bcf plant.bcf", "for coordination tools"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("A", a_, "record file, folder or pattern; - is stdin")->required();
    app.add_option("B", b_, "the other side; - is stdin");
    app.add_option("--between", between_,
                   "headers, lines (field F1), files, or elements, which compares all with all")
        ->type_name("WHAT")
        ->check(CLI::IsMember(std::vector<std::string>{"headers", "lines", "files", "elements"}))
        ->capture_default_str();
    app.add_option("--clearance", options_.clearance,
                   "also report elements that are nearer than "
                   "this")
        ->type_name("MM")
        ->check(zeroOrMore())
        ->capture_default_str();
    app.add_option("--tolerance", options_.tolerance,
                   "overlaps up to this count as contact, and ends of pipes this near as meeting")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    app.add_flag("--strict", options_.isStrict, "also report pipes that end inside another");
    app.add_option("--ignore", ignored_,
                   "two headers that may clash, A:B; * and ? stand for any characters; without :B, "
                   "A may clash with all")
        ->type_name("A[:B]")
        ->default_str("none")
        ->allow_extra_args(false);
    app.add_option("--attributes", attributes_,
                   "the sidecar with the components, if its name is not plant.attributes.csv "
                   "beside plant.dat")
        ->type_name("FILE")
        ->default_str("beside the file");
    app.add_option("--format", format_, "text, json or sarif")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>{"text", "json", "sarif"}))
        ->capture_default_str();
    app.add_flag("--json", json_, "the same as --format json");
    app.add_option("--max", most_, "show at most this many findings of each code; 0: all")
        ->type_name("N")
        ->default_str("20 in text, else all")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--bcf", bcf_, "also write the findings to this BCF 2.1 file")
        ->type_name("FILE")
        ->default_str("none");
    app.add_flag("--view", view_, "show all findings in a page and open it");
    page_.define(app);
    selection_.define(app, Beside::kTolerance);
  }

  Exit run(Session& session) override {
    if (json_) format_ = "json";
    std::vector<std::string> words = {a_};
    if (!b_.empty()) words.push_back(b_);
    refuseStdinTwice(words);
    const std::vector<std::string> first = expandFiles({a_});
    std::vector<std::string> files = first;
    if (!b_.empty()) {
      const std::vector<std::string> second = expandFiles({b_});
      files.insert(files.end(), second.begin(), second.end());
      options_.secondFrom = static_cast<std::uint32_t>(first.size());
    }
    takeOptions(files);
    for (const std::string& file : files) expectInput(file, session.progress());
    Choice choice(selection_, files, session);
    ClashModel model;
    if (!bcf_.empty()) model.keepGlobalIds();
    Exit exit = Exit::kDone;
    for (const std::string& file : files) exit = worst(exit, read(model, file, choice, session));
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    session.progress().enter("searching");
    ClashSearch search(model, options_);
    const std::vector<Clash> found = search.find();
    ClashReport report = reportOf(found);
    report.pairs = search.pairs();
    if (!bcf_.empty()) writeBcf(found, model, search);
    print(report, model, search, files, session);
    if (view_) exit = worst(exit, showPage(report, model, search, files, session));
    return worst(exit, found.empty() ? Exit::kDone : Exit::kNo);
  }

 private:
  void takeOptions(const std::vector<std::string>& files) {
    options_.between = between_ == "headers" ? ClashScope::kHeaders
                       : between_ == "lines" ? ClashScope::kLines
                       : between_ == "files" ? ClashScope::kFiles
                                             : ClashScope::kElements;
    for (const std::string& rule : ignored_) {
      const std::size_t colon = rule.find(':');
      const std::string first = rule.substr(0, colon);
      const std::string second = colon == rule.npos ? "*" : rule.substr(colon + 1);
      if (first.empty() || second.empty()) {
        throw Failure(Exit::kUsage, "--ignore " + rule + ": a header is missing",
                      "give two headers or patterns, for instance --ignore 'P-10*:STEEL'");
      }
      options_.ignored.emplace_back(first, second);
    }
    if (!attributes_.empty() && files.size() > 1) {
      throw Failure(Exit::kUsage, "--attributes is for a single file, and there are several",
                    "put each sidecar beside its file: plant.dat, plant.attributes.csv");
    }
    if (!view_ && !page_.output.empty()) {
      throw Failure(Exit::kUsage, "-o names the page of --view, which is not given",
                    "add --view, or use --bcf FILE");
    }
    for (const std::string& file : files) {
      if (!bcf_.empty()) refuseSameFile(file, bcf_);
    }
    if (!view_) return;
    if (format_ != "text") throw Failure(Exit::kUsage, "--view shows a page, not " + format_);
    if (std::find(files.begin(), files.end(), "-") != files.end()) {
      throw Failure(Exit::kUsage, "--view reads its files twice, which stdin does not allow");
    }
    page_.require(files);
  }

  Exit read(ClashModel& model, const std::string& file, Choice& choice, Session& session) const {
    const bool isAsked = !attributes_.empty();
    const std::string beside = file == "-" ? "" : Vesk::sidecarNameOf(file);
    ComponentReader components(isAsked ? attributes_ : beside, isAsked);
    model.beginFile(shownName(file));
    const RecordsRead read = readRecords(file, session, [&](Vesk::RecordFile& records) {
      const Vesk::RecordElement& element = records.element();
      model.add(element, components.componentOf(element), choice.takes(element));
    });
    components.finish();
    return read.exit();
  }

  ClashReport reportOf(const std::vector<Clash>& found) const {
    const std::uint64_t most = most_.value_or(format_ == "text" && !view_ ? kMostInText : 0);
    ClashReport report;
    for (const Clash::Kind kind : {Clash::Kind::kHard, Clash::Kind::kClearance,
                                   Clash::Kind::kDuplicate, Clash::Kind::kInside}) {
      report.counts[codeOf(kind)] = 0;
    }
    for (const Clash& clash : found) {
      const std::string_view code = codeOf(clash.kind);
      if (++report.counts[code] > most && most > 0) {
        ++report.untold[code];
      } else {
        report.clashes.push_back(clash);
      }
    }
    return report;
  }

  void print(const ClashReport& report, const ClashModel& model, const ClashSearch& search,
             const std::vector<std::string>& files, Session& session) const {
    if (format_ == "json") return session.out().write(jsonOf(report, model, search));
    if (format_ == "sarif") {
      std::vector<FileReport> reports(model.files().size());
      for (std::size_t i = 0; i < files.size(); ++i) reports[i].file = model.files()[i];
      for (const Clash& clash : report.clashes) {
        checkInterrupt();
        reports[model.elements()[clash.a].file].findings.push_back(findingOf(clash, model, search));
      }
      return session.out().write(sarifOf(reports, true, "5"));
    }
    std::string text;
    for (const Clash& clash : report.clashes) {
      if (view_) break;
      checkInterrupt();
      text.clear();
      appendText(text, findingOf(clash, model, search), session.look());
      session.out().write(text);
    }
    if (!session.options().quiet) session.out().write(summaryOf(report, model));
  }

  // All of them, however few are shown.
  void writeBcf(const std::vector<Clash>& found, const ClashModel& model,
                const ClashSearch& search) const {
    OutputFile file(bcf_, page_.force);
    file.write(bcfOf(found, model, search));
    file.commit();
  }

  Exit showPage(const ClashReport& report, const ClashModel& model, const ClashSearch& search,
                const std::vector<std::string>& files, Session& session) const {
    PageModel page(Vesk::Fineness::ofSegments(Vesk::Fineness::kNormal));
    for (const std::string& file : files) readInto(page, file, session, false);
    page.finish();
    for (std::size_t i = 0; i < files.size(); ++i) {
      std::vector<Finding> findings;
      for (const Clash& clash : report.clashes) {
        for (const bool isBack : {false, true}) {
          const ClashElement& element = model.elements()[isBack ? clash.b : clash.a];
          if (element.file == i) findings.push_back(findingOf(clash, model, search, isBack));
        }
      }
      markFindings(page, model.files()[i], findings);
    }
    page_.write(page, "Clashes of " + model.files().front(), "clash", session);
    return sayFailures(page.scene(), session);
  }

  std::string a_;
  std::string b_;
  ClashOptions options_;
  std::string between_ = "headers";
  std::vector<std::string> ignored_;
  std::string attributes_;
  std::string format_ = "text";
  bool json_ = false;
  std::optional<std::uint64_t> most_;
  std::string bcf_;
  bool view_ = false;
  PageTarget page_;
  SelectionOptions selection_;
};

}  // namespace

std::unique_ptr<Command> makeClash() { return std::make_unique<ClashCommand>(); }

}  // namespace VeskTool
