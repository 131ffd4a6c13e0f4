#include <optional>
#include <string>
#include <vector>

#include "Command.h"
#include "Files.h"
#include "Numbers.h"
#include "Options.h"
#include "SceneReader.h"
#include "export/Report.h"
#include "export/Writers.h"

namespace VeskTool {
namespace {

enum class Format { kNone, kGlb, kObj, kStl };

struct FormatName {
  Format format;
  std::string_view name;
};

constexpr FormatName kFormats[] = {
    {Format::kGlb, "glb"}, {Format::kObj, "obj"}, {Format::kStl, "stl"}};

Format formatNamed(std::string_view name) {
  for (const FormatName& each : kFormats) {
    if (name == each.name) return each.format;
  }
  return Format::kNone;
}

std::string_view nameOf(Format format) {
  for (const FormatName& each : kFormats) {
    if (format == each.format) return each.name;
  }
  return "none";
}

// By what stands behind the last point, in small letters.
Format formatOf(const std::string& file) {
  const std::size_t point = file.find_last_of("./\\");
  if (point == std::string::npos || file[point] != '.') return Format::kNone;
  std::string ending = file.substr(point + 1);
  for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return formatNamed(ending);
}

std::string amount(std::size_t count, std::string_view one, std::string_view many) {
  return grouped(count) + ' ' + std::string(count == 1 ? one : many);
}

class ExportCommand : public Command {
 public:
  CommandText text() const override {
    return {"export",
            Group::kChange,
            "FILE...",
            "meshes for viewers: glb, obj, stl",
            "All nine primitives, solids closed. In a .glb, which is in metres and has y up, every "
            "element is a node whose extras name its header, kind, file and line; .obj and .stl "
            "keep the unit and z up. What the format can't hold (.obj texts; .stl texts, lines and "
            "points) is counted on stderr, and elements that can't be shown are named with their "
            "lines; the exit code is 1 then. --report tells for each kind how far the meshes are "
            "from the true surfaces, their volume, and whether they are closed. The whole model is "
            "in memory.",
            {{"vesk export plant.dat -o plant.glb", "for any viewer of glTF"},
             {"vesk export zones -o plant.obj --quality draft", "all files of a folder, coarse"},
             {"vesk export plant.dat -o p.stl --tolerance 0.1", "within a tenth of a millimetre"},
             {"vesk export plant.dat --report", "only the certificate of the meshes"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", words_, "record files, folders of *.dat files or patterns; - is stdin")
        ->required();
    app.add_option("-o,--output", output_, "the file to write; - is stdout")
        ->type_name("OUT")
        ->default_str("none, with --report");
    app.add_option("--to", to_, "glb, obj or stl")
        ->type_name("FORMAT")
        ->default_str("by the ending of OUT")
        ->check(CLI::IsMember(std::vector<std::string>{"glb", "obj", "stl"}));
    fineness_.define(app);
    app.add_option("--unit", unit_, "length of the file's unit in millimetres")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    CLI::Option* report = app.add_flag("--report", report_, "print what the meshes are good for");
    app.add_flag("--json", json_, "the report as one JSON document")->needs(report);
    app.add_flag("-f,--force", force_, "replace OUT");
  }

  Exit run(Session& session) override {
    const Format format = chosenFormat();
    const std::vector<std::string> files = expandFiles(words_);
    std::optional<OutputFile> out;
    if (format != Format::kNone) {
      for (const std::string& file : files) refuseSameFile(file, output_);
      out.emplace(output_, force_);
    }
    Vesk::Scene scene;
    Exit exit = readScene(files, fineness_.fineness(), session, scene);
    if (out) exit = worst(exit, write(format, scene, *out, session));
    if (report_) exit = worst(exit, report(format, scene, session));
    if (out) out->commit();
    return exit;
  }

 private:
  Format chosenFormat() const {
    if (output_.empty()) {
      if (!report_) throw Failure(Exit::kUsage, "-o is missing", "-o plant.glb, or --report");
      if (!to_.empty()) throw Failure(Exit::kUsage, "--to needs -o");
      return Format::kNone;
    }
    if (output_ == "-" && report_) {
      throw Failure(Exit::kUsage, "mesh and report can't both go to stdout", "-o FILE");
    }
    const Format format = to_.empty() ? formatOf(output_) : formatNamed(to_);
    if (format != Format::kNone) return format;
    throw Failure(Exit::kUsage, "the ending of \"" + output_ + "\" names no format",
                  "--to glb, obj or stl");
  }

  Exit write(Format format, const Vesk::Scene& scene, OutputFile& out, Session& session) const {
    if (!(scene.offset == GeVector())) {
      session.warning("far from the origin: " + pointText(GePoint(scene.offset)) +
                          " is taken off all coordinates",
                      format == Format::kGlb   ? "the extras of the node \"model\" keep it"
                      : format == Format::kObj ? "a comment at the top keeps it"
                                               : "STL has no place for it");
    }
    LeftOut left;
    switch (format) {
      case Format::kGlb:
        writeGlb(scene, unit_, out);
        break;
      case Format::kObj:
        left = writeObj(scene, unit_, out);
        break;
      default:
        left = writeStl(scene, out);
    }
    return say(format, left, session);
  }

  static Exit say(Format format, const LeftOut& left, Session& session) {
    if (left.triangles > 0) {
      session.note(amount(left.triangles, "triangle has", "triangles have") +
                   " no area in 32 bits and are left out");
    }
    std::string text;
    const auto add = [&](std::size_t count, std::string_view one, std::string_view many) {
      if (count > 0) text += (text.empty() ? "" : ", ") + amount(count, one, many);
    };
    add(left.points, "point", "points");
    add(left.lines, "line", "lines");
    add(left.texts, "text", "texts");
    if (text.empty()) return Exit::kDone;
    session.warning("left out: " + text,
                    "." + std::string(nameOf(format)) + " has no place for them; .glb has");
    return Exit::kNo;
  }

  Exit report(Format format, const Vesk::Scene& scene, Session& session) const {
    const std::vector<KindReport> rows = reportOf(scene);
    std::string text;
    if (json_) {
      JsonWriter json(text);
      json.beginObject().key("schema").value("vesk.export/1");
      json.key("format").value(nameOf(format)).key("unit").value(unit_);
      json.key("offset").value(GePoint(scene.offset));
      json.key("kinds");
      appendReport(json, rows, unit_);
      json.endObject();
    } else {
      text = reportTable(rows, unit_);
    }
    session.out().write(text);
    for (const KindReport& row : rows) {
      if (!row.isGood()) return Exit::kNo;
    }
    return Exit::kDone;
  }

  std::vector<std::string> words_;
  std::string output_;
  std::string to_;
  FinenessOptions fineness_;
  double unit_ = 1.0;
  bool report_ = false;
  bool json_ = false;
  bool force_ = false;
};

}  // namespace

std::unique_ptr<Command> makeExport() { return std::make_unique<ExportCommand>(); }

}  // namespace VeskTool
