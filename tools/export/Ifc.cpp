// SPDX-License-Identifier: MIT
#include "export/Ifc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <numbers>
#include <optional>
#include <unordered_map>
#include <vector>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "export/ExactShape.h"
#include "export/GlobalIds.h"
#include "export/StepText.h"
#include "sidecar/Sidecar.h"
#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

using Id = StepText::Id;

constexpr double kPi = std::numbers::pi;

// Elements of a header, or of the site, that one relation names.
constexpr std::size_t kBatch = 64;

constexpr Word kNone{"$"};
constexpr Word kDerived{"*"};

// An IFC class for an element, and its predefined type.
struct Class {
  std::string_view name;
  std::string_view type;
};

// By what a piping file calls the component.
struct ComponentClass {
  std::string_view begin;
  Class what;
};

constexpr ComponentClass kComponents[] = {
    {"PIPE", {"IFCPIPESEGMENT", ".RIGIDSEGMENT."}},
    {"ELBOW", {"IFCPIPEFITTING", ".BEND."}},
    {"BEND", {"IFCPIPEFITTING", ".BEND."}},
    {"TEE", {"IFCPIPEFITTING", ".JUNCTION."}},
    {"CROSS", {"IFCPIPEFITTING", ".JUNCTION."}},
    {"OLET", {"IFCPIPEFITTING", ".JUNCTION."}},
    {"REDUCER", {"IFCPIPEFITTING", ".TRANSITION."}},
    {"FLANGE", {"IFCPIPEFITTING", ".CONNECTOR."}},
    {"COUPLING", {"IFCPIPEFITTING", ".CONNECTOR."}},
    {"CAP", {"IFCPIPEFITTING", ".OBSTRUCTION."}},
    {"VALVE", {"IFCVALVE", ".NOTDEFINED."}},
    {"INSTRUMENT", {"IFCFLOWINSTRUMENT", ".NOTDEFINED."}},
    {"FILTER", {"IFCFILTER", ".NOTDEFINED."}},
};

Class classOf(Kind kind, std::string_view component) {
  for (const ComponentClass& each : kComponents) {
    if (component.starts_with(each.begin)) return each.what;
  }
  switch (kind) {
    case Kind::kCylinder:
      return {"IFCPIPESEGMENT", ".RIGIDSEGMENT."};
    case Kind::kTorus:
      return {"IFCPIPEFITTING", ".BEND."};
    case Kind::kCone:
      return {"IFCPIPEFITTING", ".TRANSITION."};
    case Kind::kElbow:
      return {"IFCDUCTFITTING", ".BEND."};
    case Kind::kReducer:
      return {"IFCDUCTFITTING", ".TRANSITION."};
    case Kind::kPoint:
    case Kind::kSegment:
    case Kind::kPolyline:
    case Kind::kTriangle:
    case Kind::kQuadrangle:
    case Kind::kPolygon:
    case Kind::kText:
    case Kind::kBox:
      break;
  }
  return {"IFCBUILDINGELEMENTPROXY", ".NOTDEFINED."};
}

class IfcWriter : public ElementWriter {
 public:
  IfcWriter(double millimetres, TextSink& out) : ifc_(out), millimetres_(millimetres) { begin(); }

  void beginFile(const std::string& name, const std::string& /*handedOn*/) override {
    endFile();
    if (name == "-") return;
    const std::string sidecar = Vesk::sidecarNameOf(name);
    stream_.emplace(pathOf(sidecar), std::ios::binary);
    if (!*stream_) return;
    reader_.emplace(*stream_, sidecar);
    join_.emplace(*reader_);
    component_ = reader_->columnOf("component");
  }

  std::string add(const ExportedElement& element) override {
    const Vesk::RecordElement& record = element.record;
    std::string reason = makeExact(*record.geo, shape_);
    if (!reason.empty()) return reason;
    countLosses(record);
    const std::string f1 = trimmedField(record.header.f1);
    const std::string f2 = trimmedField(record.header.f2);
    const Vesk::SidecarRow* row = join_ ? join_->find(f1, f2, record.counter()) : nullptr;
    if (reader_ && !reader_->fault().empty()) throw Failure(Exit::kInput, reader_->fault());
    if (std::holds_alternative<ExactText>(shape_)) {
      ++leftOut_["text"];
      return {};
    }
    const Id product = addProduct(record, row);
    relate(headerText(record.header), product);
    addQuantities(product);
    if (row != nullptr) addProperties(product, *row);
    ifc_.flush(false);
    return {};
  }

  void finish() override {
    endFile();
    for (const std::string& header : order_) flushSystem(header, systems_[header]);
    flushSite();
    ifc_.raw("ENDSEC;\nEND-ISO-10303-21;\n");
    ifc_.flush(true);
  }

 private:
  struct System {
    Id id = 0;
    std::vector<Id> members;
    std::uint64_t relations = 0;
  };

  void endFile() {
    if (join_) join_->finish();
    join_.reset();
    reader_.reset();
    stream_.reset();
    component_ = -1;
  }

  void begin() {
    ifc_.raw(
        "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('ViewDefinition [ReferenceView_V1.2]'),'2;1');\n"
        "FILE_NAME('','',(''),(''),'vesk " VESK_VERSION
        "','vesk','');\nFILE_SCHEMA(('IFC4'));\nENDSEC;\nDATA;\n");
    origin_ = point(GePoint());
    z_ = direction({0, 0, 1});
    x_ = direction({1, 0, 0});
    axes_ = ifc_.add("IFCAXIS2PLACEMENT3D", origin_, z_, x_);
    up2_ = ifc_.add("IFCDIRECTION", Word{"(1.,0.)"});
    revolution_ = ifc_.add("IFCAXIS1PLACEMENT", origin_, direction({0, 1, 0}));
    place_ = ifc_.add("IFCLOCALPLACEMENT", kNone, axes_);
    const Id context = ifc_.add("IFCGEOMETRICREPRESENTATIONCONTEXT", kNone, Word{"'Model'"},
                                Word{"3"}, 1e-5, axes_, kNone);
    body_ =
        ifc_.add("IFCGEOMETRICREPRESENTATIONSUBCONTEXT", Word{"'Body'"}, Word{"'Model'"}, kDerived,
                 kDerived, kDerived, kDerived, context, kNone, Word{".MODEL_VIEW."}, kNone);
    const Id project = ifc_.add("IFCPROJECT", guid("project"), kNone, Word{"'plant'"}, kNone, kNone,
                                kNone, kNone, std::vector<Id>{context}, addUnits());
    site_ = ifc_.add("IFCSITE", guid("site"), kNone, Word{"'plant'"}, kNone, kNone, place_, kNone,
                     kNone, Word{".ELEMENT."}, kNone, kNone, kNone, kNone, kNone);
    ifc_.add("IFCRELAGGREGATES", guid("project and site"), kNone, kNone, kNone, project,
             std::vector<Id>{site_});
  }

  Id addUnits() {
    Id length = 0;
    if (millimetres_ == 1.0 || millimetres_ == 1000.0) {
      length = ifc_.add("IFCSIUNIT", kDerived, Word{".LENGTHUNIT."},
                        millimetres_ == 1.0 ? Word{".MILLI."} : kNone, Word{".METRE."});
    } else {
      const Id metre =
          ifc_.add("IFCSIUNIT", kDerived, Word{".LENGTHUNIT."}, Word{".MILLI."}, Word{".METRE."});
      const Id exponents = ifc_.addComplex("IFCDIMENSIONALEXPONENTS(1,0,0,0,0,0,0)");
      const Id measure =
          ifc_.addComplex("IFCMEASUREWITHUNIT(IFCLENGTHMEASURE(", millimetres_, "),", metre, ")");
      length = ifc_.add("IFCCONVERSIONBASEDUNIT", exponents, Word{".LENGTHUNIT."},
                        millimetres_ == 25.4 ? Word{"'INCH'"} : Word{"'UNIT'"}, measure);
    }
    const Id area =
        ifc_.add("IFCSIUNIT", kDerived, Word{".AREAUNIT."}, kNone, Word{".SQUARE_METRE."});
    const Id volume =
        ifc_.add("IFCSIUNIT", kDerived, Word{".VOLUMEUNIT."}, kNone, Word{".CUBIC_METRE."});
    const Id angle =
        ifc_.add("IFCSIUNIT", kDerived, Word{".PLANEANGLEUNIT."}, kNone, Word{".RADIAN."});
    return ifc_.add("IFCUNITASSIGNMENT", std::vector<Id>{length, area, volume, angle});
  }

  static std::string guid(std::string_view content) { return ifcGlobalId(content); }

  Id point(const GePoint& p) { return ifc_.add("IFCCARTESIANPOINT", p - GePoint()); }
  Id direction(const GeVector& v) { return ifc_.add("IFCDIRECTION", v); }

  Id placement(const GePoint& origin, const GeVector& z, const GeVector& x) {
    // One entity after the other: compilers differ in the order of arguments.
    const Id at = point(origin);
    const Id up = direction(z);
    return ifc_.add("IFCAXIS2PLACEMENT3D", at, up, direction(x));
  }

  // In the plane of a profile.
  Id placement2(double x, double y) {
    const Id at = ifc_.addComplex("IFCCARTESIANPOINT((", x, ",", y, "))");
    return ifc_.add("IFCAXIS2PLACEMENT2D", at, up2_);
  }

  Id addProduct(const Vesk::RecordElement& record, const Vesk::SidecarRow* row) {
    const Kind kind = kindOf(*record.geo);
    const std::string content = ids_.contentOf(record);
    content_ = content;
    Representation made = std::visit([&](const auto& shape) { return represent(shape); }, shape_);
    const Id shape = ifc_.add("IFCSHAPEREPRESENTATION", body_, Word{"'Body'"}, made.type,
                              std::vector<Id>{made.item});
    const Id definition =
        ifc_.add("IFCPRODUCTDEFINITIONSHAPE", kNone, kNone, std::vector<Id>{shape});
    const std::string name = headerText(record.header) + ' ' + std::to_string(record.counter());
    const std::string tag = std::string(nameOf(kind)) + ':' + std::to_string(record.firstLine);
    const std::string id = guid(content);
    const std::string_view component =
        row != nullptr && component_ >= 0 &&
                static_cast<std::size_t>(component_) < row->values.size()
            ? std::string_view(row->values[static_cast<std::size_t>(component_)])
            : std::string_view();
    if (std::holds_alternative<ExactPolyline>(shape_)) {
      return ifc_.add("IFCANNOTATION", id, kNone, name, kNone, tag, place_, definition);
    }
    const Class what = classOf(kind, component);
    return ifc_.add(what.name, id, kNone, name, kNone, std::string(nameOf(kind)), place_,
                    definition, tag, Word{what.type});
  }

  struct Representation {
    Word type;
    Id item;
  };

  Representation represent(const std::monostate&) { return {Word{"'Body'"}, 0}; }
  Representation represent(const ExactText&) { return {Word{"'Body'"}, 0}; }

  Representation represent(const ExactRound& round) {
    const ExactFrame& f = round.frame;
    if (round.radius == round.endRadius) {
      const Id circle = ifc_.add("IFCCIRCLEPROFILEDEF", Word{".AREA."}, kNone, kNone, round.radius);
      return extruded(circle, placement(f.origin, f.z, f.x), round.height);
    }
    // Half a section, turned about its side on the axis.
    std::vector<Id> ring;
    const auto corner = [&](double x, double y) {
      ring.push_back(ifc_.addComplex("IFCCARTESIANPOINT((", x, ",", y, "))"));
    };
    corner(0.0, 0.0);
    corner(round.radius, 0.0);
    if (round.endRadius > 0.0) corner(round.endRadius, round.height);
    corner(0.0, round.height);
    ring.push_back(ring.front());
    const Id outline = ifc_.add("IFCPOLYLINE", ring);
    const Id profile = ifc_.add("IFCARBITRARYCLOSEDPROFILEDEF", Word{".AREA."}, kNone, outline);
    return revolved(profile, f, 2.0 * kPi);
  }

  Representation represent(const ExactBend& bend) {
    const Id circle = ifc_.add("IFCCIRCLEPROFILEDEF", Word{".AREA."}, kNone,
                               placement2(bend.radius, 0.0), bend.tube);
    return revolved(circle, bend.frame, bend.sweep);
  }

  Representation represent(const ExactDuct& duct) {
    const Id rectangle = ifc_.add("IFCRECTANGLEPROFILEDEF", Word{".AREA."}, kNone,
                                  placement2(duct.radius, 0.0), duct.depth, duct.width);
    return revolved(rectangle, duct.frame, duct.sweep);
  }

  Representation extruded(Id profile, Id place, double depth) {
    return {Word{"'SweptSolid'"}, ifc_.add("IFCEXTRUDEDAREASOLID", profile, place, z_, depth)};
  }

  // The profile's x is the frame's, its y the frame's z, about which it is turned.
  Representation revolved(Id profile, const ExactFrame& f, double angle) {
    return {Word{"'SweptSolid'"}, ifc_.add("IFCREVOLVEDAREASOLID", profile,
                                           placement(f.origin, -f.y, f.x), revolution_, angle)};
  }

  Representation represent(const ExactBody& body) {
    const auto& c = body.corners;
    const GeVector e1 = c[1] - c[0];
    const GeVector e2 = c[2] - c[0];
    const GeVector e3 = c[4] - c[0];
    const auto isRight = [](const GeVector& a, const GeVector& b) {
      return std::fabs(dot(a, b)) <= 1e-9 * a.length() * b.length();
    };
    if (body.isBox && isRight(e1, e2) && isRight(e2, e3) && isRight(e3, e1)) {
      const Id middle =
          ifc_.add("IFCRECTANGLEPROFILEDEF", Word{".AREA."}, kNone,
                   placement2(e1.length() / 2.0, e2.length() / 2.0), e1.length(), e2.length());
      return extruded(middle, placement(c[0], e3 / e3.length(), e1 / e1.length()), e3.length());
    }
    std::array<Id, 8> points{};
    for (std::size_t k = 0; k < 8; ++k) {
      const auto same = std::find(c.begin(), c.begin() + static_cast<std::ptrdiff_t>(k), c[k]);
      const auto first = static_cast<std::size_t>(same - c.begin());
      points[k] = first < k ? points[first] : point(c[k]);
    }
    std::vector<Id> faces;
    for (const auto& f : kBodyFaces) addBodyFace(body, f, points, faces);
    return {Word{"'Brep'"}, ifc_.add("IFCFACETEDBREP", ifc_.add("IFCCLOSEDSHELL", faces))};
  }

  // A face that is not plane becomes four triangles about its middle, which enclose the
  // same volume as the ruled one.
  void addBodyFace(const ExactBody& body, const std::array<std::size_t, 4>& f,
                   const std::array<Id, 8>& points, std::vector<Id>& faces) {
    const auto& c = body.corners;
    std::vector<std::size_t> ring;
    for (const std::size_t k : f) {
      if (ring.empty() || (!(c[ring.back()] == c[k]) && !(c[ring.front()] == c[k]))) {
        ring.push_back(k);
      }
    }
    if (ring.size() < 3) return;
    std::vector<Id> corners;
    for (const std::size_t k : ring) corners.push_back(points[k]);
    if (ring.size() == 3 || body.isBox || offPlane(c[f[0]], c[f[1]], c[f[2]], c[f[3]]) <= 1e-6) {
      faces.push_back(face(corners));
      return;
    }
    GeVector sum;
    for (const std::size_t k : ring) sum += c[k] - c[0];
    const Id middle = point(c[0] + sum * 0.25);
    for (std::size_t i = 0; i < 4; ++i) {
      faces.push_back(face({corners[i], corners[(i + 1) % 4], middle}));
    }
  }

  Id face(const std::vector<Id>& corners) {
    const Id loop = ifc_.add("IFCPOLYLOOP", corners);
    const Id bound = ifc_.add("IFCFACEOUTERBOUND", loop, Word{".T."});
    return ifc_.add("IFCFACE", std::vector<Id>{bound});
  }

  Representation represent(const ExactFace& shape) {
    std::vector<Id> points;
    for (const GePoint& corner : shape.corners) points.push_back(point(corner));
    std::vector<Id> faces;
    if (shape.off <= 1e-6) {
      faces.push_back(face(points));
    } else {
      for (const auto& t : shape.triangles) {
        faces.push_back(face({points[t[0]], points[t[1]], points[t[2]]}));
      }
    }
    const Id set = ifc_.add("IFCCONNECTEDFACESET", faces);
    return {Word{"'SurfaceModel'"}, ifc_.add("IFCFACEBASEDSURFACEMODEL", std::vector<Id>{set})};
  }

  Representation represent(const ExactPolyline& line) {
    std::vector<Id> points;
    for (const GePoint& p : line.points) points.push_back(point(p));
    if (points.size() == 1) return {Word{"'GeometricSet'"}, ifc_.add("IFCGEOMETRICSET", points)};
    const Id curve = ifc_.add("IFCPOLYLINE", points);
    return {Word{"'GeometricCurveSet'"}, ifc_.add("IFCGEOMETRICCURVESET", std::vector<Id>{curve})};
  }

  void relate(const std::string& header, Id product) {
    const auto [place, isNew] = systems_.try_emplace(header);
    System& system = place->second;
    if (isNew) {
      order_.push_back(header);
      system.id =
          ifc_.add("IFCDISTRIBUTIONSYSTEM", guid("system " + header), kNone,
                   header.empty() ? std::string("(none)") : header, kNone, kNone, kNone, kNone);
    }
    system.members.push_back(product);
    if (system.members.size() == kBatch) flushSystem(header, system);
    onSite_.push_back(product);
    if (onSite_.size() == kBatch) flushSite();
  }

  void flushSystem(const std::string& header, System& system) {
    if (system.members.empty()) return;
    ifc_.add("IFCRELASSIGNSTOGROUP",
             guid("members " + std::to_string(++system.relations) + " of " + header), kNone, kNone,
             kNone, system.members, kNone, system.id);
    system.members.clear();
  }

  void flushSite() {
    if (onSite_.empty()) return;
    ifc_.add("IFCRELCONTAINEDINSPATIALSTRUCTURE", guid("site " + std::to_string(++siteRelations_)),
             kNone, kNone, kNone, onSite_, site_);
    onSite_.clear();
  }

  void addQuantities(Id product) {
    std::vector<Id> quantities;
    double length = 0.0;
    if (const auto* round = std::get_if<ExactRound>(&shape_)) length = round->height;
    if (const auto* bend = std::get_if<ExactBend>(&shape_)) length = bend->radius * bend->sweep;
    if (const auto* duct = std::get_if<ExactDuct>(&shape_)) length = duct->radius * duct->sweep;
    if (length > 0.0) {
      quantities.push_back(
          ifc_.add("IFCQUANTITYLENGTH", Word{"'Length'"}, kNone, kNone, length, kNone));
    }
    const double volume = volumeOf(shape_);
    if (volume > 0.0) {
      const double metre = millimetres_ / 1000.0;
      quantities.push_back(ifc_.add("IFCQUANTITYVOLUME", Word{"'GrossVolume'"}, kNone, kNone,
                                    volume * metre * metre * metre, kNone));
    }
    if (quantities.empty()) return;
    const Id set = ifc_.add("IFCELEMENTQUANTITY", guid("quantities " + content_), kNone,
                            Word{"'BaseQuantities'"}, kNone, kNone, quantities);
    ifc_.add("IFCRELDEFINESBYPROPERTIES", guid("quantities of " + content_), kNone, kNone, kNone,
             std::vector<Id>{product}, set);
  }

  void addProperties(Id product, const Vesk::SidecarRow& row) {
    std::vector<Id> properties;
    for (std::size_t i = 0; i < row.values.size(); ++i) {
      if (row.values[i].empty()) continue;
      const bool isLabel = row.values[i].size() <= 255;  // at most so many characters
      properties.push_back(ifc_.addComplex("IFCPROPERTYSINGLEVALUE(", reader_->columns()[i],
                                           isLabel ? ",$,IFCLABEL(" : ",$,IFCTEXT(", row.values[i],
                                           "),$)"));
    }
    if (properties.empty()) return;
    const Id set = ifc_.add("IFCPROPERTYSET", guid("properties " + content_), kNone,
                            Word{"'Vesk_Component'"}, kNone, properties);
    ifc_.add("IFCRELDEFINESBYPROPERTIES", guid("properties of " + content_), kNone, kNone, kNone,
             std::vector<Id>{product}, set);
  }

  StepText ifc_;
  double millimetres_;
  Id origin_ = 0;
  Id z_ = 0;
  Id x_ = 0;
  Id axes_ = 0;
  Id up2_ = 0;
  Id revolution_ = 0;
  Id place_ = 0;
  Id body_ = 0;
  Id site_ = 0;
  std::unordered_map<std::string, System> systems_;
  std::vector<std::string> order_;
  std::vector<Id> onSite_;
  std::uint64_t siteRelations_ = 0;
  GlobalIds ids_;
  std::optional<std::ifstream> stream_;
  std::optional<Vesk::SidecarReader> reader_;
  std::optional<Vesk::SidecarJoin> join_;
  int component_ = -1;
  ExactShape shape_;
  std::string content_;
};

}  // namespace

std::unique_ptr<ElementWriter> makeIfcWriter(double millimetres, TextSink& out) {
  return std::make_unique<IfcWriter>(millimetres, out);
}

}  // namespace VeskTool
