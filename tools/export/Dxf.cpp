// SPDX-License-Identifier: MIT
#include "export/Dxf.h"

#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "export/ExactShape.h"
#include "mesh/SceneBuilder.h"
#include "text/Json.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::size_t kBatch = 512;  // elements in memory

// Of AutoCAD's colours, by Kind.
constexpr std::array kColours = {7, 8, 8, 3, 3, 3, 7, 30, 40, 5, 4, 150, 70};
static_assert(kColours.size() == kKinds, "a colour for each kind");

// Pairs of a code and a value, each on a line, and handles in hexadecimal.
class DxfText {
 public:
  explicit DxfText(TextSink& out) : out_(out) {}

  DxfText& pair(int code, std::string_view value) {
    appendInt(code);
    text_ += value;
    text_ += '\n';
    return *this;
  }
  DxfText& pair(int code, const char* value) { return pair(code, std::string_view(value)); }
  DxfText& pair(int code, std::uint64_t value) { return pair(code, std::to_string(value)); }
  DxfText& pair(int code, int value) { return pair(code, std::to_string(value)); }
  DxfText& pair(int code, double value) {
    appendInt(code);
    appendShortest(text_, value == 0.0 ? 0.0 : value);
    text_ += '\n';
    return *this;
  }
  // x, y and z with codes ten apart.
  DxfText& point(int code, const GePoint& p) {
    return pair(code, p.x).pair(code + 10, p.y).pair(code + 20, p.z);
  }

  // A handle that no other object has.
  std::string handle() { return hex(++last_); }

  static std::string hex(std::uint64_t value) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string digits;
    do {
      digits.insert(digits.begin(), kDigits[value & 0xFU]);
      value >>= 4;
    } while (value > 0);
    return digits;
  }

  void flush(bool all) {
    if (text_.size() < kBlock && !all) return;
    out_.write(text_);
    text_.clear();
  }

 private:
  void appendInt(int code) {
    const std::string digits = std::to_string(code);
    text_.append(digits.size() < 3 ? 3 - digits.size() : 0, ' ');
    text_ += digits;
    text_ += '\n';
  }

  TextSink& out_;
  std::string text_;
  std::uint64_t last_ = 0xFF;  // below it what is fixed
};

class DxfWriter : public ElementWriter {
 public:
  DxfWriter(const Vesk::Fineness& fineness, double millimetres, TextSink& out)
      : dxf_(out), builder_(fineness) {
    writeHeading(millimetres);
    writeTables();
    writeBlocks();
    dxf_.pair(0, "SECTION").pair(2, "ENTITIES");
  }

  std::string add(const ExportedElement& element) override {
    ExactShape shape;
    std::string reason = makeExact(*element.record.geo, shape);
    if (!reason.empty()) return reason;
    countLosses(element.record);
    Vesk::SceneElement shown;
    shown.header = builder_.headerId(headerText(element.record.header));
    shown.line = element.record.firstLine;
    shown.kind = static_cast<std::uint8_t>(kindOf(*element.record.geo));
    builder_.add(*element.record.geo, shown);
    if (++inBatch_ == kBatch) writeBatch();
    return {};
  }

  void finish() override {
    writeBatch();
    dxf_.pair(0, "ENDSEC");
    // The dictionary at the root, and the one of groups, which must be there.
    dxf_.pair(0, "SECTION").pair(2, "OBJECTS");
    dxf_.pair(0, "DICTIONARY").pair(5, "C").pair(330, "0").pair(100, "AcDbDictionary");
    dxf_.pair(281, 1).pair(3, "ACAD_GROUP").pair(350, "D");
    dxf_.pair(0, "DICTIONARY").pair(5, "D").pair(330, "C").pair(100, "AcDbDictionary");
    dxf_.pair(281, 1);
    dxf_.pair(0, "ENDSEC").pair(0, "EOF");
    dxf_.flush(true);
  }

 private:
  void writeHeading(double millimetres) {
    dxf_.pair(0, "SECTION").pair(2, "HEADER");
    dxf_.pair(9, "$ACADVER").pair(1, "AC1024");
    dxf_.pair(9, "$DWGCODEPAGE").pair(3, "UTF-8");
    // 4 millimetres, 6 metres, 5 centimetres, 1 inches, 2 feet, 0 none.
    const int unit = millimetres == 1.0      ? 4
                     : millimetres == 1000.0 ? 6
                     : millimetres == 10.0   ? 5
                     : millimetres == 25.4   ? 1
                     : millimetres == 304.8  ? 2
                                             : 0;
    dxf_.pair(9, "$INSUNITS").pair(70, unit);
    dxf_.pair(9, "$MEASUREMENT").pair(70, 1);
    dxf_.pair(9, "$HANDSEED").pair(5, "FFFFFFFF");
    dxf_.pair(0, "ENDSEC");
  }

  DxfText& beginTable(const char* name, const char* handle, std::size_t entries) {
    return dxf_.pair(0, "TABLE")
        .pair(2, name)
        .pair(5, handle)
        .pair(330, "0")
        .pair(100, "AcDbSymbolTable")
        .pair(70, static_cast<int>(entries));
  }

  DxfText& beginEntry(const char* type, const std::string& handle, const char* table,
                      const char* record) {
    return dxf_.pair(0, type)
        .pair(5, handle)
        .pair(330, table)
        .pair(100, "AcDbSymbolTableRecord")
        .pair(100, record);
  }

  void writeTables() {
    dxf_.pair(0, "SECTION").pair(2, "TABLES");
    beginTable("VPORT", "8", 0);
    dxf_.pair(0, "ENDTAB");
    beginTable("LTYPE", "5", 3);
    for (const char* name : {"ByBlock", "ByLayer", "Continuous"}) {
      beginEntry("LTYPE", dxf_.handle(), "5", "AcDbLinetypeTableRecord");
      dxf_.pair(2, name).pair(70, 0).pair(3, "").pair(72, 65).pair(73, 0).pair(40, 0.0);
    }
    dxf_.pair(0, "ENDTAB");
    beginTable("LAYER", "2", kKinds + 1);
    addLayer("0", 7);
    for (std::size_t k = 0; k < kKinds; ++k) {
      addLayer(std::string(nameOf(static_cast<Kind>(k))), kColours[k]);
    }
    dxf_.pair(0, "ENDTAB");
    beginTable("STYLE", "3", 1);
    beginEntry("STYLE", dxf_.handle(), "3", "AcDbTextStyleTableRecord");
    dxf_.pair(2, "Standard").pair(70, 0).pair(40, 0.0).pair(41, 1.0).pair(50, 0.0).pair(71, 0);
    dxf_.pair(42, 2.5).pair(3, "txt").pair(4, "").pair(0, "ENDTAB");
    beginTable("VIEW", "6", 0);
    dxf_.pair(0, "ENDTAB");
    beginTable("UCS", "7", 0);
    dxf_.pair(0, "ENDTAB");
    beginTable("APPID", "9", 2);
    for (const char* name : {"ACAD", "VESK"}) {
      beginEntry("APPID", dxf_.handle(), "9", "AcDbRegAppTableRecord");
      dxf_.pair(2, name).pair(70, 0);
    }
    dxf_.pair(0, "ENDTAB");
    beginTable("DIMSTYLE", "A", 0);
    dxf_.pair(100, "AcDbDimStyleTable").pair(0, "ENDTAB");
    beginTable("BLOCK_RECORD", "1", 2);
    beginEntry("BLOCK_RECORD", "1F", "1", "AcDbBlockTableRecord");
    dxf_.pair(2, "*Model_Space");
    beginEntry("BLOCK_RECORD", "1E", "1", "AcDbBlockTableRecord");
    dxf_.pair(2, "*Paper_Space");
    dxf_.pair(0, "ENDTAB").pair(0, "ENDSEC");
  }

  void addLayer(const std::string& name, int colour) {
    beginEntry("LAYER", dxf_.handle(), "2", "AcDbLayerTableRecord");
    dxf_.pair(2, name).pair(70, 0).pair(62, colour).pair(6, "Continuous");
  }

  void writeBlocks() {
    dxf_.pair(0, "SECTION").pair(2, "BLOCKS");
    for (const auto& [name, record] :
         {std::pair{"*Model_Space", "1F"}, std::pair{"*Paper_Space", "1E"}}) {
      dxf_.pair(0, "BLOCK").pair(5, dxf_.handle()).pair(330, record).pair(100, "AcDbEntity");
      dxf_.pair(8, "0").pair(100, "AcDbBlockBegin").pair(2, name).pair(70, 0);
      dxf_.point(10, GePoint()).pair(3, name).pair(1, "");
      dxf_.pair(0, "ENDBLK").pair(5, dxf_.handle()).pair(330, record).pair(100, "AcDbEntity");
      dxf_.pair(8, "0").pair(100, "AcDbBlockEnd");
    }
    dxf_.pair(0, "ENDSEC");
  }

  // Returns its handle.
  std::string beginEntity(const char* type, const Vesk::Scene& scene, std::uint32_t element) {
    std::string handle = dxf_.handle();
    dxf_.pair(0, type).pair(5, handle).pair(330, "1F").pair(100, "AcDbEntity");
    dxf_.pair(8, layerOf(scene, element));
    return handle;
  }

  // What belongs to the record, as extended data of this program.
  void endEntity(const Vesk::Scene& scene, std::uint32_t element) {
    const Vesk::SceneElement& each = scene.elements[element];
    dxf_.pair(1001, "VESK").pair(1000, validUtf8(scene.headers[each.header]));
    dxf_.pair(1000, "line " + std::to_string(each.line));
  }

  static std::string_view layerOf(const Vesk::Scene& scene, std::uint32_t element) {
    return nameOf(static_cast<Kind>(scene.elements[element].kind));
  }

  void writeBatch() {
    inBatch_ = 0;
    const Vesk::Scene scene = builder_.finish();
    for (const Vesk::SceneInstance& instance : scene.instances) writeMesh(scene, instance);
    for (const Vesk::ScenePoint& point : scene.points) {
      beginEntity("POINT", scene, point.element);
      dxf_.pair(100, "AcDbPoint").point(10, point.position + scene.offset);
      endEntity(scene, point.element);
    }
    for (const Vesk::SceneLine& line : scene.lines) writeLine(scene, line);
    for (const Vesk::SceneText& text : scene.texts) writeText(scene, text);
    dxf_.flush(false);
  }

  void writeMesh(const Vesk::Scene& scene, const Vesk::SceneInstance& instance) {
    const Vesk::Mesh& mesh = scene.meshes[instance.mesh];
    beginEntity("MESH", scene, instance.element);
    dxf_.pair(100, "AcDbSubDMesh").pair(71, 2).pair(72, 0).pair(91, 0);
    dxf_.pair(92, std::uint64_t{mesh.positions.size()});
    for (const GePoint& local : mesh.positions) {
      dxf_.point(10, instance.placement.point(local) + scene.offset);
    }
    dxf_.pair(93, std::uint64_t{4 * mesh.triangles.size()});
    for (const Vesk::MeshTriangle& triangle : mesh.triangles) {
      dxf_.pair(90, 3);
      for (std::size_t k = 0; k < 3; ++k) dxf_.pair(90, std::uint64_t{triangle[k]});
    }
    dxf_.pair(94, 0).pair(95, 0).pair(90, 0);
    endEntity(scene, instance.element);
    dxf_.flush(false);
  }

  void writeLine(const Vesk::Scene& scene, const Vesk::SceneLine& line) {
    const auto vertex = [&](std::size_t i) {
      return scene.lineVertices[line.first + i] + scene.offset;
    };
    if (line.count == 2) {
      beginEntity("LINE", scene, line.element);
      dxf_.pair(100, "AcDbLine").point(10, vertex(0)).point(11, vertex(1));
      endEntity(scene, line.element);
      return;
    }
    const std::string owner = beginEntity("POLYLINE", scene, line.element);
    dxf_.pair(100, "AcDb3dPolyline").pair(66, 1).point(10, GePoint()).pair(70, 8);
    endEntity(scene, line.element);
    for (std::size_t i = 0; i < line.count; ++i) {
      dxf_.pair(0, "VERTEX").pair(5, dxf_.handle()).pair(330, owner).pair(100, "AcDbEntity");
      dxf_.pair(8, layerOf(scene, line.element)).pair(100, "AcDbVertex");
      dxf_.pair(100, "AcDb3dPolylineVertex").point(10, vertex(i)).pair(70, 32);
    }
    dxf_.pair(0, "SEQEND").pair(5, dxf_.handle()).pair(330, owner).pair(100, "AcDbEntity");
    dxf_.pair(8, layerOf(scene, line.element));
  }

  void writeText(const Vesk::Scene& scene, const Vesk::SceneText& text) {
    const auto unit = [](const GeVector& v, const GeVector& otherwise) {
      const double length = v.length();
      return length > 1e-12 ? v / length : otherwise;
    };
    const GeVector along = unit(text.along, GeVector(1, 0, 0));
    const GeVector across = cross(along, unit(text.up, GeVector(0, 1, 0)));
    const double height = text.height * text.up.length();
    beginEntity("MTEXT", scene, text.element);
    dxf_.pair(100, "AcDbMText").point(10, text.position + scene.offset);
    dxf_.pair(40, height > 0.0 ? height : 1.0).pair(41, 0.0).pair(71, 7).pair(72, 1);
    const std::string characters = escaped(text.text);
    // 250 bytes a line at most, and no character cut.
    std::size_t from = 0;
    while (characters.size() - from > 250) {
      std::size_t size = 250;
      while (size > 1 && (static_cast<unsigned char>(characters[from + size]) & 0xC0U) == 0x80U) {
        --size;
      }
      dxf_.pair(3, std::string_view(characters).substr(from, size));
      from += size;
    }
    dxf_.pair(1, std::string_view(characters).substr(from)).pair(7, "Standard");
    dxf_.point(210, GePoint(unit(across, GeVector(0, 0, 1)))).point(11, GePoint(along));
    endEntity(scene, text.element);
  }

  // Backslashes and braces mean something in an MTEXT, ^J is a line end, and %%d a
  // degree sign; controls can't be on a line.
  static std::string escaped(std::string_view text) {
    const std::string valid = validUtf8(text);
    std::string escaped;
    for (std::size_t i = 0; i < valid.size(); ++i) {
      const char c = valid[i];
      if (c == '\\' || c == '{' || c == '}') escaped += '\\';
      if (c == '^') {
        escaped += "^ ";
      } else if (c == '%' && i + 1 < valid.size() && valid[i + 1] == '%') {
        escaped += "{%}";  // a group of its own, so that both do not belong together
      } else {
        escaped += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
      }
    }
    return escaped;
  }

  DxfText dxf_;
  Vesk::SceneBuilder builder_;
  std::size_t inBatch_ = 0;
};

}  // namespace

std::unique_ptr<ElementWriter> makeDxfWriter(const Vesk::Fineness& fineness, double millimetres,
                                             TextSink& out) {
  return std::make_unique<DxfWriter>(fineness, millimetres, out);
}

}  // namespace VeskTool
