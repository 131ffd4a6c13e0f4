// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <numbers>
#include <string>
#include <tuple>
#include <vector>

#include "commands/Command.h"
#include "commands/MeasureBy.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "files/SidecarFile.h"
#include "terminal/Options.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Table.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"

namespace VeskTool {
namespace {

constexpr double kMillimetre = 1e-3;  // metres

// Sizes are told apart to a hundredth of a millimetre.
double sizeKey(double size) { return std::round(size * 100.0) / 100.0; }

double degreesOf(double radians) { return radians * 180.0 / std::numbers::pi; }

double angleBetween(const GeVector& a, const GeVector& b) {
  return a.length() == 0.0 || b.length() == 0.0 ? 0.0 : a.angleTo(b);
}

double triangleArea(const GePoint& a, const GePoint& b, const GePoint& c) {
  return cross(b - a, c - a).length() / 2.0;
}

// What the elements of one kind and size come to, in metres.
struct Amount {
  std::uint64_t count = 0;
  double length = 0.0;   // m, on the centre line
  double surface = 0.0;  // m2, outside, with end faces; of a pipe or bend without them
  double volume = 0.0;   // m3, as the primitive's volume tells it
};

// What is measured apart: kind, then what tells sizes apart.
struct Key {
  Kind kind;
  double size1 = 0.0;  // diameter; of a cone the first one
  double size2 = 0.0;  // the second diameter of a cone
  double angle = 0.0;  // degrees, of a bend

  friend bool operator<(const Key& a, const Key& b) {
    return std::tie(a.kind, a.size1, a.size2, a.angle) <
           std::tie(b.kind, b.size1, b.size2, b.angle);
  }
};

using TakeOff = std::map<Key, Amount>;

double boxSurface(const Vesk::Box& box) {
  return 2.0 * (cross(box.edge1, box.edge2).length() + cross(box.edge2, box.edge3).length() +
                cross(box.edge3, box.edge1).length());
}

// A face that is not plane counts as the mean of its two triangulations.
double redSurface(const Vesk::Red& red) {
  constexpr int kFaces[6][4] = {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                {1, 3, 7, 5}, {3, 2, 6, 7}, {2, 0, 4, 6}};
  double surface = 0.0;
  for (const auto& face : kFaces) {
    const GePoint a = red.corner(face[0]);
    const GePoint b = red.corner(face[1]);
    const GePoint c = red.corner(face[2]);
    const GePoint d = red.corner(face[3]);
    surface += (triangleArea(a, b, c) + triangleArea(a, c, d) + triangleArea(a, b, d) +
                triangleArea(b, c, d)) /
               2.0;
  }
  return surface;
}

double polygonArea(const Vesk::Pgon& pgon) {
  GeVector sum;
  for (std::size_t i = 2; i < pgon.vertices.size(); ++i) {
    sum += cross(pgon.point(i - 1) - pgon.point(0), pgon.point(i) - pgon.point(0));
  }
  return sum.length() / 2.0;
}

class Taker {
 public:
  Taker(TakeOff& to, double unit) : to_(to), unit_(unit) {}

  void add(const Vesk::Geo& geo) {
    switch (const Kind kind = kindOf(geo)) {
      case Kind::kCylinder:
        addPipe(static_cast<const Vesk::Cyl&>(geo));
        break;
      case Kind::kTorus:
        addBend(static_cast<const Vesk::Torus&>(geo));
        break;
      case Kind::kCone:
        addCone(static_cast<const Vesk::Cone&>(geo));
        break;
      case Kind::kElbow:
        addElbow(static_cast<const Vesk::Relb&>(geo));
        break;
      case Kind::kBox:
        put({kind}, 0.0, boxSurface(static_cast<const Vesk::Box&>(geo)), geo.volume());
        break;
      case Kind::kReducer:
        put({kind}, 0.0, redSurface(static_cast<const Vesk::Red&>(geo)), geo.volume());
        break;
      case Kind::kTriangle:
      case Kind::kQuadrangle:
      case Kind::kPolygon:
        put({kind}, 0.0, polygonArea(static_cast<const Vesk::Pgon&>(geo)), 0.0);
        break;
      default:
        break;
    }
  }

 private:
  // Sizes in the unit of the file.
  void put(const Key& key, double length, double surface, double volume) {
    Amount& amount = to_[key];
    ++amount.count;
    amount.length += length * unit_;
    amount.surface += surface * unit_ * unit_;
    amount.volume += volume * unit_ * unit_ * unit_;
  }

  void addPipe(const Vesk::Cyl& cyl) {
    const double length = cyl.axis.length();
    put({Kind::kCylinder, sizeKey(cyl.diameter)}, length,
        std::numbers::pi * std::fabs(cyl.diameter) * length, cyl.volume());
  }

  void addBend(const Vesk::Torus& torus) {
    const double angle = angleBetween(torus.startVector, torus.endVector);
    const double length = angle * (torus.startVector.length() + torus.endVector.length()) / 2.0;
    put({Kind::kTorus, sizeKey(torus.diameter), 0.0, sizeKey(degreesOf(angle))}, length,
        std::numbers::pi * std::fabs(torus.diameter) * length, torus.volume());
  }

  void addCone(const Vesk::Cone& cone) {
    const double r1 = std::fabs(cone.diameter1) / 2.0;
    const double r2 = std::fabs(cone.diameter2) / 2.0;
    const double length = cone.axis.length();
    const double slant = std::hypot(length, r1 - r2);
    put({Kind::kCone, sizeKey(cone.diameter1), sizeKey(cone.diameter2)}, length,
        std::numbers::pi * (r1 + r2) * slant, cone.volume());
  }

  // The four sides of the duct: by Pappus, the perimeter times the arc.
  void addElbow(const Vesk::Relb& relb) {
    const double angle = angleBetween(relb.startVector, relb.endVector);
    const double length = angle * (relb.startVector.length() + relb.endVector.length()) / 2.0;
    put({Kind::kElbow, 0.0, 0.0, sizeKey(degreesOf(angle))}, length,
        2.0 * (std::fabs(relb.width) + std::fabs(relb.depth)) * length, relb.volume());
  }

  TakeOff& to_;
  double unit_;
};

void merge(TakeOff& to, const TakeOff& from) {
  for (const auto& [key, amount] : from) {
    Amount& sum = to[key];
    sum.count += amount.count;
    sum.length += amount.length;
    sum.surface += amount.surface;
    sum.volume += amount.volume;
  }
}

std::string sizeText(const Key& key) {
  if (key.kind == Kind::kCone) return shortest(key.size1) + " x " + shortest(key.size2);
  return key.size1 == 0.0 ? std::string() : shortest(key.size1);
}

std::string angleText(const Key& key) { return key.angle == 0.0 ? "" : shortest(key.angle); }

Amount sumOf(const TakeOff& takeOff) {
  Amount sum;
  for (const auto& [key, amount] : takeOff) {
    sum.count += amount.count;
    sum.length += amount.length;
    sum.surface += amount.surface;
    sum.volume += amount.volume;
  }
  return sum;
}

class MeasureCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "measure",
        Group::kLook,
        "FILE...",
        "take-off: metres of pipe, bends, areas, weight",
        "From the primitives, not from a mesh. Solids count as full: a pipe has the volume of "
        "its cylinder. Surfaces of round bodies and duct elbows leave out the end faces. Several "
        "files are one plant.",
        {{"vesk measure plant.dat", "the table"},
         {"vesk measure zones/*.dat --density 7850", "with the weight in steel"},
         {"vesk measure --by item-code plant.dat", "a bill of materials, by plant.attributes.csv"},
         {"vesk measure --csv plant.dat > takeoff.csv", "for a spreadsheet"}}};
  }

  void define(CLI::App& app) override {
    files_.define(app);
    app.add_option("--density", density_, "kg/m3 of the solids; 0: no weight")
        ->type_name("KG/M3")
        ->check(zeroOrMore())
        ->capture_default_str();
    app.add_option("--unit", unit_, "length of the file's unit in millimetres")
        ->type_name("MM")
        ->check(aboveZero())
        ->capture_default_str();
    app.add_option("--by", by_,
                   "components, by this column of the sidecar: item-code, pipeline, kind ...")
        ->type_name("COLUMN")
        ->default_str("kind and size of the elements");
    app.add_option("--attributes", attributes_, "the sidecar, in place of the one beside FILE")
        ->type_name("SIDECAR")
        ->default_str("beside FILE");
    CLI::Option* csv = app.add_flag("--csv", csv_, "comma-separated values");
    app.add_flag("--json", json_, "one JSON document")->excludes(csv);
    selection_.define(app);
  }

  Exit run(Session& session) override {
    const std::vector<std::string> files = expandFiles(files_.words);
    Choice choice(selection_, files, session);
    if (!by_.empty()) return runBy(files, choice, session);
    std::vector<TakeOff> parts(files.size());
    const Exit exit =
        forEachFile(session, files, files_.jobs, [&](std::size_t index, Session& own) {
          return measure(files[index], choice, parts[index], own);
        });
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    // In the order of the files, so that the sums are the same with any number of jobs.
    TakeOff all;
    for (const TakeOff& part : parts) merge(all, part);
    if (json_) {
      session.out().write(jsonOf(all));
    } else if (csv_) {
      session.out().write(csvOf(all));
    } else {
      session.out().write(tableOf(all));
    }
    return exit;
  }

 private:
  Exit runBy(const std::vector<std::string>& files, Choice& choice, Session& session) const {
    std::vector<std::map<std::string, BillRow>> parts(files.size());
    const Exit exit = forEachFile(session, files, files_.jobs, [&](std::size_t i, Session& own) {
      return measureBy(files[i], choice, parts[i], own);
    });
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    std::map<std::string, BillRow> all;
    for (const auto& part : parts) merge(all, part);
    if (all.empty() && exit > Exit::kNo) return exit;
    session.out().write(json_ ? jsonOf(all) : csv_ ? csvOf(all) : tableOf(all));
    return exit;
  }

  Exit measureBy(const std::string& file, Choice& choice, std::map<std::string, BillRow>& to,
                 Session& session) const {
    const std::unique_ptr<SidecarFile> sidecar = SidecarFile::open(file, attributes_);
    if (sidecar == nullptr) {
      throw Failure(Exit::kInput, shownName(file) + ": has no sidecar to measure by",
                    "--attributes names it; vesk import writes one");
    }
    const auto& columns = sidecar->columns();
    const auto description = std::find(columns.begin(), columns.end(), "description");
    Bill bill(sidecar->columnOf(by_), by_ != "item-code" || description == columns.end()
                                          ? -1
                                          : static_cast<int>(description - columns.begin()));
    const RecordsRead read = readRecords(file, session, [&](Vesk::RecordFile& records) {
      const Vesk::SidecarRow* row = sidecar->find(records.element());
      if (choice.takes(records.element())) bill.add(*records.element().geo, row);
    });
    sidecar->finish(session);
    to = bill.rows();
    return read.exit();
  }

  double metres(double length) const { return length * unit_ * kMillimetre; }
  double cubicMetres(double volume) const { return metres(metres(metres(volume))); }

  std::string tableOf(const std::map<std::string, BillRow>& rows) const {
    using Side = Table::Side;
    std::vector<Table::Column> columns{{by_, Side::kLeft},         {"DESCRIPTION", Side::kLeft},
                                       {"COUNT", Side::kRight},    {"ELEMENTS", Side::kRight},
                                       {"LENGTH m", Side::kRight}, {"VOLUME m3", Side::kRight}};
    if (density_ > 0.0) columns.push_back({"WEIGHT kg", Side::kRight});
    Table table(columns);
    for (const auto& [value, row] : rows) {
      std::vector<std::string> cells{
          value.empty() ? "(none)" : value, row.description,
          grouped(row.components),          grouped(row.elements),
          rounded(metres(row.length), 3),   rounded(cubicMetres(row.volume), 6)};
      if (density_ > 0.0) cells.push_back(rounded(cubicMetres(row.volume) * density_, 1));
      table.add(std::move(cells));
    }
    return table.text();
  }

  std::string csvOf(const std::map<std::string, BillRow>& rows) const {
    std::string text;
    appendCsv(text, by_);
    text += ",description,count,elements,length_m,volume_m3,weight_kg\n";
    for (const auto& [value, row] : rows) {
      appendCsv(text, value);
      appendCsv(text += ',', row.description);
      text += ',' + std::to_string(row.components) + ',' + std::to_string(row.elements);
      const double volume = cubicMetres(row.volume);
      for (const double v : {metres(row.length), volume, volume * density_})
        text += ',' + shortest(v);
      text += '\n';
    }
    return text;
  }

  std::string jsonOf(const std::map<std::string, BillRow>& rows) const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.measure-by/1");
    json.key("unit").value(unit_).key("density").value(density_);
    json.key("by").value(by_).key("rows").beginArray();
    for (const auto& [value, row] : rows) {
      json.beginObjectRow().key("value").value(value).key("description").value(row.description);
      json.key("count").value(row.components).key("elements").value(row.elements);
      json.key("length").value(metres(row.length));
      json.key("volume").value(cubicMetres(row.volume));
      json.key("weight").value(cubicMetres(row.volume) * density_).endObject();
    }
    json.endArray().endObject();
    return text;
  }

  Exit measure(const std::string& file, Choice& choice, TakeOff& to, Session& session) const {
    Taker taker(to, unit_ * kMillimetre);
    const auto take = [&](Vesk::RecordFile& records) {
      if (choice.takes(records.element())) taker.add(*records.element().geo);
    };
    return readRecords(file, session, take).exit();
  }

  std::string tableOf(const TakeOff& takeOff) const {
    using Side = Table::Side;
    std::vector<Table::Column> columns{{"KIND", Side::kLeft},       {"SIZE mm", Side::kRight},
                                       {"ANGLE deg", Side::kRight}, {"COUNT", Side::kRight},
                                       {"LENGTH m", Side::kRight},  {"SURFACE m2", Side::kRight},
                                       {"VOLUME m3", Side::kRight}};
    if (density_ > 0.0) columns.push_back({"WEIGHT kg", Side::kRight});
    Table table(columns);
    const auto add = [&](std::string kind, std::string size, std::string angle,
                         const Amount& amount) {
      std::vector<std::string> cells{std::move(kind),
                                     std::move(size),
                                     std::move(angle),
                                     grouped(amount.count),
                                     amount.length == 0.0 ? "" : rounded(amount.length, 3),
                                     rounded(amount.surface, 3),
                                     rounded(amount.volume, 6)};
      if (density_ > 0.0) cells.push_back(rounded(amount.volume * density_, 1));
      table.add(std::move(cells));
    };
    for (const auto& [key, amount] : takeOff) {
      add(std::string(wordsOf(key.kind)), sizeText(key), angleText(key), amount);
    }
    add("all", "", "", sumOf(takeOff));
    return table.text();
  }

  std::string csvOf(const TakeOff& takeOff) const {
    std::string text =
        "kind,diameter1_mm,diameter2_mm,angle_deg,count,length_m,surface_m2,volume_m3,"
        "weight_kg\n";
    for (const auto& [key, amount] : takeOff) {
      text += nameOf(key.kind);
      for (const double v : {key.size1, key.size2, key.angle}) text += ',' + shortest(v);
      text += ',' + std::to_string(amount.count);
      for (const double v :
           {amount.length, amount.surface, amount.volume, amount.volume * density_}) {
        text += ',' + shortest(v);
      }
      text += '\n';
    }
    return text;
  }

  void appendAmount(JsonWriter& json, const Amount& amount) const {
    json.key("count").value(amount.count).key("length").value(amount.length);
    json.key("surface").value(amount.surface).key("volume").value(amount.volume);
    json.key("weight").value(amount.volume * density_);
  }

  std::string jsonOf(const TakeOff& takeOff) const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.measure/1");
    json.key("unit").value(unit_).key("density").value(density_);
    json.key("rows").beginArray();
    for (const auto& [key, amount] : takeOff) {
      json.beginObjectRow().key("kind").value(nameOf(key.kind));
      json.key("diameter1").value(key.size1).key("diameter2").value(key.size2);
      json.key("angle").value(key.angle);
      appendAmount(json, amount);
      json.endObject();
    }
    json.endArray();
    json.key("all").beginObjectRow();
    appendAmount(json, sumOf(takeOff));
    json.endObject().endObject();
    return text;
  }

  ManyFiles files_;
  SelectionOptions selection_;
  std::string by_;
  std::string attributes_;
  double density_ = 0.0;
  double unit_ = 1.0;
  bool csv_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeMeasure() { return std::make_unique<MeasureCommand>(); }

}  // namespace VeskTool
