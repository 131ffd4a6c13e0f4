// SPDX-License-Identifier: MIT
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "files/SidecarFile.h"
#include "takeoff/Tables.h"
#include "takeoff/TakeOff.h"
#include "takeoff/Walls.h"
#include "takeoff/Xlsx.h"
#include "terminal/Libraries.h"
#include "terminal/Options.h"

namespace VeskTool {
namespace {

// "5S, 10S ... or XXS"
std::string scheduleList() {
  std::string list;
  for (const std::string& name : scheduleNames()) list += (list.empty() ? "" : " ") + name;
  return list;
}

class MeasureCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "measure",
        Group::kLook,
        "FILE...",
        "take-off: metres of pipe, bends, areas, weight",
        "Measures the bodies as they are drawn, not their meshes; elements that are measured "
        "otherwise than their numbers say, or not at all, are named. Without walls solids count as "
        "full: a pipe has the volume of its cylinder. Surfaces, meant for painting, leave out the "
        "ends of round bodies and duct elbows. Drawn lines (segments, polylines) have a length of "
        "their own, LINES, so that a centre line does not count as pipe again. A box is a piece of "
        "duct along its longest edge. Several files are one plant.\n"
        "--by takes header, group, kind and size from the records, and item, spec and any other "
        "column from the sidecar. Words with commas between them group by combination; each "
        "further --by gives another table. With columns of the sidecar a group is one line, and "
        "everything drawn for one component counts as one.\n"
        "With walls, weights are those of steel, and elements without a wall are named and "
        "counted. Where the sidecar knows components, flanges, valves and the like have neither "
        "wall nor insulation. docs/takeoff.md leads from a piping file to an order.",
        {{"vesk measure plant.dat", "the table"},
         {"vesk measure zones/*.dat --density 7850", "with the weight of solid steel"},
         {"vesk measure --schedule 40 --by header,size plant.dat", "pipe with walls"},
         {"vesk measure --by item plant.dat", "a bill of materials, by plant.attributes.csv"},
         {"vesk measure --by item --by spec --xlsx bill.xlsx plant.dat", "a sheet for each"},
         {"vesk measure --csv plant.dat > takeoff.csv", "for programs"}}};
  }

  void define(CLI::App& app) override {
    files_.define(app);
    app.add_option("--by", by_, "header, group, kind, size, item, spec or a column of the sidecar")
        ->type_name("WORD,...")
        ->allow_extra_args(false)
        ->default_str("one table of kinds and sizes");
    app.add_flag("--sums", sums_, "with --by, show only the sum of each group");
    app.add_option("--attributes", attributes_, "the sidecar, instead of the one beside FILE")
        ->type_name("SIDECAR")
        ->default_str("beside FILE");
    defineWalls(app);
    app.add_option("--unit", options_.unit, "length of the file's unit in millimetres")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    app.add_option("--units", units_, "metric (mm, m, kg) or imperial (in, ft, lb)")
        ->type_name("UNITS")
        ->check(CLI::IsMember(std::vector<std::string>{"metric", "imperial"}))
        ->capture_default_str();
    CLI::Option* csv = app.add_flag("--csv", csv_, "comma-separated values");
    CLI::Option* json = app.add_flag("--json", json_, "one JSON document")->excludes(csv);
    app.add_option("--xlsx", xlsx_, "write a workbook instead of the table, a sheet for each --by")
        ->type_name("OUT")
        ->default_str("none")
        ->excludes(csv)
        ->excludes(json);
    app.add_flag("-f,--force", force_, "replace OUT");
    selection_.define(app);
  }

  Exit run(Session& session) override {
    prepare(session);
    const std::vector<std::string> files = expandFiles(files_.words);
    std::optional<OutputFile> out;
    if (!xlsx_.empty()) {
      requireLibrary("libxlsxwriter");
      for (const std::string& file : files) refuseSameFile(file, xlsx_);
      out.emplace(xlsx_, force_);
    }
    Choice choice(selection_, files, session);
    std::vector<std::optional<TakeOff>> parts(files.size());
    Exit exit = forEachFile(session, files, files_.jobs, [&](std::size_t index, Session& own) {
      return read(files[index], choice, parts[index], own);
    });
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    // In the order of the files, so that the sums are the same with any number of jobs.
    TakeOff all(options_);
    bool isRead = false;
    for (const std::optional<TakeOff>& part : parts) {
      if (!part) continue;
      all.merge(*part);
      isRead = true;
    }
    if (!isRead) return exit;
    all.finish();
    all.remarks().say(session);
    if (all.faults() > 0) exit = worst(exit, Exit::kNo);
    write(all, exit, out, session);
    return exit;
  }

 private:
  void defineWalls(CLI::App& app) {
    CLI::Option* schedule =
        app.add_option("--schedule", schedule_,
                       "walls of ASME B36.10M and B36.19M by outside diameter: " + scheduleList())
            ->type_name("NAME")
            ->default_str("solid")
            ->check(CLI::IsMember(scheduleNames()));
    app.add_option("--walls", walls_,
                   "your own walls from a CSV file: 114.3,6.02 or, for ducts, 400 x 300,1")
        ->type_name("TABLE")
        ->default_str("none")
        ->excludes(schedule);
    density_ = app.add_option("--density", options_.density,
                              "density of the solids in kg/m3; 0: "
                              "no weight")
                   ->type_name("KG/M3")
                   ->check(zeroOrMore())
                   ->default_str("0, with walls 7850");
    app.add_option("--content", options_.content, "density in kg/m3 of what flows inside the walls")
        ->type_name("KG/M3")
        ->check(zeroOrMore())
        ->default_str("1000");
    app.add_option(
           "--insulation", options_.insulation,
           "thickness in millimetres of the insulation around pipes, bends, cones and ducts")
        ->type_name("MM")
        ->check(zeroOrMore())
        ->default_str("0");
  }

  void prepare(const Session& session) {
    options_.units = Units(units_ == "imperial");
    options_.isVerbose = session.options().verbose && !session.options().quiet;
    for (const std::string& words : by_) options_.groupings.emplace_back(words);
    if (!schedule_.empty()) options_.walls = Walls::ofSchedule(schedule_);
    if (!walls_.empty()) options_.walls = Walls::ofFile(walls_);
    if (!options_.walls.isEmpty() && density_->count() == 0) options_.density = kSteel;
    if (sums_ && by_.empty()) throw Failure(Exit::kUsage, "--sums needs --by");
  }

  Exit read(const std::string& file, Choice& choice, std::optional<TakeOff>& to,
            Session& session) const {
    const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(file, attributes_);
    for (const Grouping& grouping : options_.groupings) {
      if (sidecar != nullptr || !grouping.needsSidecar()) continue;
      throw Failure(Exit::kInput, shownName(file) + ": has no sidecar to measure by",
                    "name it with --attributes; vesk import writes one");
    }
    TakeOff part(options_);
    part.begin(shownName(file), sidecar == nullptr ? nullptr : &sidecar->names());
    const RecordsRead read = readRecords(file, session, [&](Vesk::RecordFile& records) {
      const Vesk::RecordElement& element = records.element();
      const Vesk::SidecarRow* row = sidecar == nullptr ? nullptr : sidecar->find(element);
      if (choice.takes(element)) part.add(element, row);
    });
    if (sidecar != nullptr) sidecar->finish(session);
    to.emplace(std::move(part));
    return read.exit();
  }

  void write(const TakeOff& all, Exit exit, std::optional<OutputFile>& out, Session& session) {
    if (out) {
      // Half a plant is no order.
      if (exit > Exit::kNo) return;
      writeXlsx(all, options_, sums_, *out);
      out->commit();
    } else if (json_) {
      session.out().write(tableJson(all, options_, sums_));
    } else if (csv_) {
      session.out().write(tableCsv(all, options_, sums_));
    } else {
      session.out().write(tableText(all, options_, sums_));
    }
  }

  static TakeOffOptions initial() {
    TakeOffOptions options;
    options.content = kWater;
    return options;
  }

  ManyFiles files_;
  SelectionOptions selection_;
  TakeOffOptions options_ = initial();
  const CLI::Option* density_ = nullptr;
  std::vector<std::string> by_;
  std::string attributes_;
  std::string schedule_;
  std::string walls_;
  std::string units_ = "metric";
  std::string xlsx_;
  bool sums_ = false;
  bool force_ = false;
  bool csv_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeMeasure() { return std::make_unique<MeasureCommand>(); }

}  // namespace VeskTool
