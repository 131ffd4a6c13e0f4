// SPDX-License-Identifier: MIT
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "export/Dxf.h"
#include "export/Gltf.h"
#include "export/Ifc.h"
#include "export/MeshPacker.h"
#include "export/Report.h"
#include "export/Sqlite.h"
#include "export/Step.h"
#include "export/StreamedExport.h"
#include "export/Writers.h"
#include "files/Files.h"
#include "files/SceneReader.h"
#include "files/SelectionOptions.h"
#include "terminal/Options.h"
#include "text/Numbers.h"
#include "tiles/Tiles.h"
#include "tiles/TilesFolder.h"
#include "tiles/TilesMerge.h"
#include "tiles/TilesPage.h"

namespace VeskTool {
namespace {

enum class Format { kNone, kGlb, kGltf, kObj, kPly, kStl, kStep, kIfc, kDxf, kSqlite, kTiles };

struct FormatName {
  Format format;
  std::string_view name;
};

constexpr FormatName kFormats[] = {{Format::kGlb, "glb"},       {Format::kGltf, "gltf"},
                                   {Format::kObj, "obj"},       {Format::kPly, "ply"},
                                   {Format::kStl, "stl"},       {Format::kStep, "step"},
                                   {Format::kIfc, "ifc"},       {Format::kDxf, "dxf"},
                                   {Format::kSqlite, "sqlite"}, {Format::kTiles, "tiles"}};

// The others are written from a scene that is in memory as a whole.
bool isStreamed(Format format) {
  return format == Format::kStep || format == Format::kIfc || format == Format::kDxf ||
         format == Format::kSqlite;
}

// "glb, gltf, obj, ply or stl"
std::string formatList() {
  std::string list;
  for (const FormatName& each : kFormats) {
    const bool isLast = &each == std::end(kFormats) - 1;
    if (!list.empty()) list += isLast ? " or " : ", ";
    list += each.name;
  }
  return list;
}

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const FormatName& each : kFormats) names.emplace_back(each.name);
  return names;
}

Format formatNamed(std::string_view name) {
  for (const FormatName& each : kFormats) {
    if (name == each.name) return each.format;
  }
  return name == "stp" ? Format::kStep : name == "db" ? Format::kSqlite : Format::kNone;
}

std::string_view nameOf(Format format) {
  for (const FormatName& each : kFormats) {
    if (format == each.format) return each.name;
  }
  return "none";
}

// By what stands behind the last point, in small letters; a folder is for tiles.
Format formatOf(const std::string& file) {
  if (file.ends_with('/') || file.ends_with('\\')) return Format::kTiles;
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
    return {
        "export",
        Group::kChange,
        "FILE...",
        "files for viewers, CAD, BIM and databases",
        "Writes all nine primitives, the solids closed. In a .glb or .gltf, which is in metres and "
        "has y up, every element is a node whose extras name its header, kind, file and line, "
        "below a node for its header and one for its group; colours are by kind. The other formats "
        "keep the unit and z up. Elements that the format can't hold (.obj and .ply: texts; .stl: "
        "texts, lines and points) are counted on stderr, which is not an error unless --strict is "
        "given. Elements that can't be shown are named with their lines; the exit code is then 1. "
        "For large plants: --instances writes each shape once and its places as "
        "EXT_mesh_gpu_instancing, which three.js draws, assimp reads as shapes of unit size "
        "without a warning and f3d as one lump; --merge writes one mesh for each kind in a header, "
        "which every reader opens, but files grow. --compress packs either as "
        "EXT_meshopt_compression, with points within a tenth of the tolerance; three.js reads it "
        "with its MeshoptDecoder, assimp refuses it and f3d 1.3 crashes.\n"
        ".step and .ifc keep the true surfaces, .dxf has meshes in layers by kind, and .sqlite has "
        "every value, including those of the sidecar, for SQL queries; these four are streamed. "
        "docs/formats.md describes what each keeps and loses.\n"
        "A folder, -o plant/, becomes a tileset (3D Tiles) for models that are too large for one "
        "file: a viewer fetches what is in sight. index.html beside it is one; it needs a web "
        "server. From afar small elements are left out and round "
        "ones have fewer pieces. Memory does not grow with the model; while the tiles are made, "
        "some 250 bytes for each element wait in files beside them. Zones can be exported each by "
        "itself; given finished tilesets instead of records, export writes one that shows them "
        "together, in a folder that holds them all.\n"
        "--report shows for each kind how far the meshes are from the true surfaces, their volume, "
        "and whether they are closed. For meshes other than .dxf and tiles the whole model is in "
        "memory: about 150 bytes for each element, in a .glb or .gltf 500, with --merge 5 KB.",
        {{"vesk export plant.dat -o plant.glb", "for any viewer of glTF"},
         {"vesk export zones -o plant.obj --quality draft", "all files of a folder, coarse"},
         {"vesk export plant.dat -o p.stl --tolerance 0.1", "within a tenth of a millimetre"},
         {"vesk export plant.dat -o p.glb --header 'P-10*'", "only some of its headers"},
         {"vesk export plant.dat -o p.glb --instances --compress", "as small as it gets"},
         {"vesk export plant.dat -o tiles/", "a tileset, however large the plant"},
         {"vesk export web/z1 web/z2 -o web/", "finished tilesets shown as one"},
         {"vesk export plant.dat --report", "only a report on the meshes"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", words_, "record files, folders of *.dat files or patterns; - is stdin")
        ->required();
    app.add_option("-o,--output", output_, "the file to write; - is stdout")
        ->type_name("OUT")
        ->default_str("none, with --report");
    app.add_option("--to", to_, formatList())
        ->type_name("FORMAT")
        ->default_str("by the ending of OUT")
        ->check(CLI::IsMember(formatNames()));
    CLI::Option* instances =
        app.add_flag("--instances", instances_,
                     "glTF: write each shape once, its places as instances (see "
                     "above)");
    app.add_flag("--merge", merge_, "glTF: write one mesh for each kind in a header")
        ->excludes(instances);
    app.add_flag("--compress", compress_,
                 "glTF: pack the meshes by meshopt, with --merge or --instances (see above)");
    app.add_option("--tile-triangles", tiles_.triangles,
                   "tiles: most triangles in a tile, 5000 or more; a segment of a line and a point "
                   "count as one")
        ->type_name("N")
        ->check(CLI::Range(TilesOptions::kLeastTriangles, TilesOptions::kMostTriangles))
        ->capture_default_str();
    fineness_.define(app);
    app.add_option("--unit", unit_, "length of the file's unit in millimetres")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    CLI::Option* report = app.add_flag("--report", report_, "print how exact the meshes are");
    app.add_flag("--json", json_, "the report as one JSON document")->needs(report);
    app.add_flag("--strict", strict_, "exit code 1 also if the format has no place for something");
    app.add_flag("-f,--force", force_, "replace OUT");
    selection_.define(app, Beside::kTolerance);
  }

  Exit run(Session& session) override {
    const Format format = chosenFormat();
    if (format == Format::kTiles && isTileset(words_.front())) return mergeTiles(session);
    if (compress_) packer_ = makeMeshPacker();
    const std::vector<std::string> files = expandFiles(words_);
    if (format == Format::kTiles) return writeTiles(files, session);
    std::optional<OutputFile> out;
    if (format != Format::kNone) {
      for (const std::string& file : files) refuseSameFile(file, output_);
      out.emplace(output_, force_);
    }
    Choice choice(selection_, files, session);
    if (isStreamed(format)) return writeStream(format, files, choice, *out, session);
    Vesk::Scene scene;
    Exit exit = readScene(files, fineness_.fineness(), choice, session, scene);
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    session.progress().enter("writing");
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
      throw Failure(Exit::kUsage, "the mesh and the report can't both go to stdout", "-o FILE");
    }
    const Format format = to_.empty() ? formatOf(output_) : formatNamed(to_);
    if ((instances_ || merge_ || compress_) && format != Format::kNone && !isGltf(format)) {
      throw Failure(Exit::kUsage, "--instances, --merge and --compress are for glb and gltf");
    }
    if (format != Format::kNone) return format;
    throw Failure(Exit::kUsage, "the ending of \"" + output_ + "\" names no format",
                  "--to " + formatList());
  }

  std::unique_ptr<ElementWriter> makeWriter(Format format, OutputFile& out) const {
    if (format == Format::kDxf) return makeDxfWriter(fineness_.fineness(), unit_, out);
    if (format == Format::kIfc) return makeIfcWriter(unit_, out);
    if (format == Format::kSqlite) return makeSqliteWriter(unit_, output_, out);
    return makeStepWriter(unit_, out);
  }

  Exit writeStream(Format format, const std::vector<std::string>& files, Choice& choice,
                   OutputFile& out, Session& session) const {
    if (report_) throw Failure(Exit::kUsage, "--report is for meshes: glb, gltf, obj, ply, stl");
    const std::unique_ptr<ElementWriter> writer = makeWriter(format, out);
    const Exit exit = exportStream(files, nameOf(format), choice, *writer, strict_, session);
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    out.commit();
    return exit;
  }

  Exit writeTiles(const std::vector<std::string>& files, Session& session) {
    if (report_) throw Failure(Exit::kUsage, "--report is for meshes: glb, gltf, obj, ply, stl");
    if (output_ == "-") throw Failure(Exit::kUsage, "a tileset is a folder", "-o FOLDER");
    tiles_.fineness = fineness_.fineness();
    tiles_.millimetres = unit_;
    Choice choice(selection_, files, session);
    TilesFolder folder(output_, force_);
    TilesWriter writer(tiles_, folder, session);
    Exit exit = exportStream(files, nameOf(Format::kTiles), choice, writer, strict_, session);
    exit = worst(exit, writer.exit());
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    const std::string page = pageOrWarning(session);
    if (!page.empty()) {
      TileFile file(folder.path() / kTilesPageName);
      file.write(page);
      file.close();
    }
    folder.commit();
    session.note(amount(writer.tiles(), "tile", "tiles"));
    return exit;
  }

  static std::string pageOrWarning(Session& session) {
    std::string page = tilesPage();
    if (page.empty()) {
      session.warning("the folder has no index.html: this build has no viewer",
                      "any viewer of 3D Tiles shows tileset.json");
    }
    return page;
  }

  // A folder may hold its zones already: only the files of the whole are new.
  Exit mergeTiles(Session& session) const {
    for (const std::string& word : words_) {
      if (!isTileset(word)) {
        throw Failure(Exit::kUsage, word + " is no tileset, and others are",
                      "export records and tilesets one after the other");
      }
    }
    const std::string text = mergedTileset(words_, output_);
    OutputFile tileset(output_ + '/' + kTilesetName, force_);
    tileset.write(text);
    std::vector<OutputFile*> files;
    std::optional<OutputFile> file;
    const std::string page = pageOrWarning(session);
    if (!page.empty()) {
      file.emplace(output_ + '/' + kTilesPageName, force_);
      file->write(page);
      files.push_back(&*file);
    }
    files.push_back(&tileset);
    commitTogether(files);
    session.note(amount(words_.size(), "tileset", "tilesets") + " shown as one");
    return Exit::kDone;
  }

  static bool isGltf(Format format) { return format == Format::kGlb || format == Format::kGltf; }

  GltfOptions gltfOptions(Format format) const {
    using Grouping = GltfOptions::Grouping;
    return {format == Format::kGlb,
            instances_ ? Grouping::kInstances
            : merge_   ? Grouping::kMerged
                       : Grouping::kElements,
            packer_.get()};
  }

  Exit write(Format format, const Vesk::Scene& scene, OutputFile& out, Session& session) const {
    if (!(scene.offset == GeVector())) {
      session.warning("far from the origin: " + pointText(GePoint(scene.offset)) +
                          " is taken off all coordinates",
                      isGltf(format)           ? "the extras of the node \"model\" keep it"
                      : format == Format::kStl ? "STL has no place for it"
                                               : "a comment at the top keeps it");
    }
    if (compress_ && !merge_ && !instances_) {
      session.warning("--compress gains little: nearly all of the file is text about its elements",
                      "--compress with --instances or --merge");
    }
    if (merge_) {
      constexpr std::uint64_t kMegabyte = 1000000;
      session.note("merged: about " + grouped(mergedBytes(scene) / kMegabyte + 1) +
                   " MB of corners and triangles");
    }
    LeftOut left;
    switch (format) {
      case Format::kGlb:
      case Format::kGltf:
        writeGltf(scene, unit_, gltfOptions(format), out);
        break;
      case Format::kPly:
        left = writePly(scene, unit_, out);
        break;
      case Format::kObj:
        left = writeObj(scene, unit_, out);
        break;
      case Format::kNone:
      case Format::kStl:
      case Format::kStep:
      case Format::kIfc:
      case Format::kDxf:
      case Format::kSqlite:
      case Format::kTiles:
        left = writeStl(scene, out);
        break;
    }
    return say(format, left, session);
  }

  Exit say(Format format, const LeftOut& left, Session& session) const {
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
    return strict_ ? Exit::kNo : Exit::kDone;
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
  SelectionOptions selection_;
  double unit_ = 1.0;
  bool report_ = false;
  bool instances_ = false;
  bool merge_ = false;
  bool compress_ = false;
  std::unique_ptr<MeshPacker> packer_;
  TilesOptions tiles_;
  bool json_ = false;
  bool force_ = false;
  bool strict_ = false;
};

}  // namespace

std::unique_ptr<Command> makeExport() { return std::make_unique<ExportCommand>(); }

}  // namespace VeskTool
