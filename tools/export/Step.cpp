// SPDX-License-Identifier: MIT
#include "export/Step.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <numbers>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "export/ExactShape.h"
#include "export/StepText.h"

namespace VeskTool {
namespace {

using Id = StepText::Id;

// The most that the corners of a plane face are off it: readers refuse more.
constexpr double kPlane = 1e-7;

// And what that may make of the volume, as a part of it.
constexpr double kPlaneVolume = 1e-10;

// Colours that are told apart, one header after the other.
constexpr std::array<std::array<int, 3>, 12> kColours = {{{31, 119, 180},
                                                          {255, 127, 14},
                                                          {44, 160, 44},
                                                          {214, 39, 40},
                                                          {148, 103, 189},
                                                          {140, 86, 75},
                                                          {227, 119, 194},
                                                          {127, 127, 127},
                                                          {188, 189, 34},
                                                          {23, 190, 207},
                                                          {174, 199, 232},
                                                          {255, 187, 120}}};

constexpr Word kTrue{".T."};
constexpr Word kFalse{".F."};
constexpr Word kNoName{"''"};
constexpr Word kDerived{"*"};

Word flag(bool truth) { return truth ? kTrue : kFalse; }

class StepWriter : public ElementWriter {
 public:
  StepWriter(double millimetres, TextSink& out) : step_(out), millimetres_(millimetres) { begin(); }

  std::string add(const ExportedElement& element) override {
    std::string reason = makeExact(*element.record.geo, shape_);
    if (!reason.empty()) return reason;
    countLosses(element.record);
    if (std::holds_alternative<ExactText>(shape_)) {
      ++leftOut_["text"];
      return {};
    }
    const Header& header = headerOf(element.record);
    name_ = nameOf(kindOf(*element.record.geo));
    name_ += ':';
    name_ += std::to_string(element.record.firstLine);
    std::visit([&](const auto& shape) { write(shape, header); }, shape_);
    step_.flush(false);
    return {};
  }

  void finish() override {
    step_.raw("ENDSEC;\nEND-ISO-10303-21;\n");
    step_.flush(true);
  }

 private:
  struct Header {
    Id representation = 0;
    Id style = 0;
    Id curveStyle = 0;
  };

  struct Product {
    Id definition = 0;
    Id representation = 0;
  };

  void begin() {
    step_.raw(
        "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('plant geometry, exact surfaces'),'2;1');\n"
        "FILE_NAME('','',(''),(''),'vesk " VESK_VERSION
        "','vesk','');\n"
        "FILE_SCHEMA(('AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF { 1 0 10303 442 1 1 4 "
        "}'));\nENDSEC;\nDATA;\n");
    application_ = step_.add("APPLICATION_CONTEXT", Word{"'managed model based 3d engineering'"});
    step_.add("APPLICATION_PROTOCOL_DEFINITION", Word{"'international standard'"},
              Word{"'ap242_managed_model_based_3d_engineering'"}, Word{"2014"}, application_);
    productContext_ = step_.add("PRODUCT_CONTEXT", kNoName, application_, Word{"'mechanical'"});
    definitionContext_ = step_.add("PRODUCT_DEFINITION_CONTEXT", Word{"'part definition'"},
                                   application_, Word{"'design'"});
    addUnits();
    origin_ = point(GePoint());
    zAxis_ = direction({0, 0, 1});
    xAxis_ = direction({1, 0, 0});
    axes_ = step_.add("AXIS2_PLACEMENT_3D", kNoName, origin_, zAxis_, xAxis_);
    root_ = addProduct("plant");
  }

  void addUnits() {
    Id length = 0;
    if (millimetres_ == 1.0 || millimetres_ == 1000.0) {
      length = step_.addComplex("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(",
                                millimetres_ == 1.0 ? ".MILLI." : "$", ",.METRE.))");
    } else {
      const Id metre = step_.addComplex("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))");
      const Id dimensions = step_.add("DIMENSIONAL_EXPONENTS", 1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
      const Id measure = step_.addComplex("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(", millimetres_,
                                          "),", metre, ")");
      length = step_.addComplex("(CONVERSION_BASED_UNIT('", millimetres_ == 25.4 ? "INCH" : "UNIT",
                                "',", measure, ")LENGTH_UNIT()NAMED_UNIT(", dimensions, "))");
    }
    const Id angle = step_.addComplex("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))");
    const Id solid = step_.addComplex("(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT())");
    const Id uncertainty = step_.addComplex("UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(", 1e-6,
                                            "),", length, ",'distance_accuracy_value','')");
    context_ = step_.addComplex(
        "(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((", uncertainty,
        "))GLOBAL_UNIT_ASSIGNED_CONTEXT((", length, ",", angle, ",", solid,
        "))REPRESENTATION_CONTEXT('',''))");
  }

  Product addProduct(const std::string& name) {
    const Id product = step_.add("PRODUCT", name, name, kNoName, std::vector<Id>{productContext_});
    step_.add("PRODUCT_RELATED_PRODUCT_CATEGORY", Word{"'part'"}, Word{"$"},
              std::vector<Id>{product});
    const Id formation = step_.add("PRODUCT_DEFINITION_FORMATION", kNoName, kNoName, product);
    Product made;
    made.definition =
        step_.add("PRODUCT_DEFINITION", Word{"'design'"}, kNoName, formation, definitionContext_);
    const Id shape = step_.add("PRODUCT_DEFINITION_SHAPE", kNoName, kNoName, made.definition);
    made.representation = step_.add("SHAPE_REPRESENTATION", name, std::vector<Id>{axes_}, context_);
    step_.add("SHAPE_DEFINITION_REPRESENTATION", shape, made.representation);
    return made;
  }

  const Header& headerOf(const Vesk::RecordElement& record) {
    const auto [place, isNew] = headers_.try_emplace(headerText(record.header));
    Header& header = place->second;
    if (!isNew) return header;
    const Product product = addProduct(place->first.empty() ? "(none)" : place->first);
    const Id occurrence = step_.add("NEXT_ASSEMBLY_USAGE_OCCURRENCE", place->first, place->first,
                                    kNoName, root_.definition, product.definition, Word{"$"});
    const Id shape = step_.add("PRODUCT_DEFINITION_SHAPE", kNoName, kNoName, occurrence);
    const Id transformation =
        step_.add("ITEM_DEFINED_TRANSFORMATION", kNoName, kNoName, axes_, axes_);
    const Id relation =
        step_.addComplex("(REPRESENTATION_RELATIONSHIP('','',", product.representation, ",",
                         root_.representation, ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(",
                         transformation, ")SHAPE_REPRESENTATION_RELATIONSHIP())");
    step_.add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", relation, shape);
    header.representation = product.representation;
    addStyles(header);
    return header;
  }

  // Styles are shared by the headers of a colour.
  void addStyles(Header& header) {
    const std::size_t colour = (headers_.size() - 1) % kColours.size();
    auto& [style, curveStyle] = styles_[colour];
    if (style == 0) {
      const auto part = [&](std::size_t i) { return kColours[colour][i] / 255.0; };
      const Id rgb = step_.add("COLOUR_RGB", kNoName, part(0), part(1), part(2));
      const Id fill = step_.add("FILL_AREA_STYLE_COLOUR", kNoName, rgb);
      const Id area = step_.add("FILL_AREA_STYLE", kNoName, std::vector<Id>{fill});
      const Id surface = step_.add("SURFACE_STYLE_FILL_AREA", area);
      const Id side = step_.add("SURFACE_SIDE_STYLE", kNoName, std::vector<Id>{surface});
      const Id usage = step_.add("SURFACE_STYLE_USAGE", Word{".BOTH."}, side);
      style = step_.add("PRESENTATION_STYLE_ASSIGNMENT", std::vector<Id>{usage});
      const Id font = step_.add("DRAUGHTING_PRE_DEFINED_CURVE_FONT", Word{"'continuous'"});
      const Id curve =
          step_.add("CURVE_STYLE", kNoName, font, Word{"POSITIVE_LENGTH_MEASURE(0.1)"}, rgb);
      curveStyle = step_.add("PRESENTATION_STYLE_ASSIGNMENT", std::vector<Id>{curve});
    }
    header.style = style;
    header.curveStyle = curveStyle;
  }

  Id point(const GePoint& p) { return step_.add("CARTESIAN_POINT", kNoName, p - GePoint()); }
  Id direction(const GeVector& v) { return step_.add("DIRECTION", kNoName, v); }
  Id vertex(const GePoint& p) { return step_.add("VERTEX_POINT", kNoName, point(p)); }

  Id placement(Id origin, Id z, Id x) {
    return step_.add("AXIS2_PLACEMENT_3D", kNoName, origin, z, x);
  }

  // One entity after the other: compilers differ in the order of arguments.
  Id placement(const GePoint& origin, const GeVector& z, Id x) {
    const Id at = point(origin);
    return placement(at, direction(z), x);
  }

  Id edge(Id from, Id to, Id curve) {
    return step_.add("EDGE_CURVE", kNoName, from, to, curve, kTrue);
  }

  Id circleEdge(Id from, Id to, Id place, double radius) {
    return edge(from, to, step_.add("CIRCLE", kNoName, place, radius));
  }

  // A line between two points; the direction points from the first to the second.
  Id lineEdge(Id from, Id to, Id start, Id along) {
    const Id vector = step_.add("VECTOR", kNoName, along, 1.0);
    return edge(from, to, step_.add("LINE", kNoName, start, vector));
  }

  Id oriented(Id edge, bool forward) {
    return step_.add("ORIENTED_EDGE", kNoName, kDerived, kDerived, edge, flag(forward));
  }

  struct Use {
    Id edge;
    bool forward;
  };

  Id face(const std::vector<Use>& uses, Id surface, bool same) {
    std::vector<Id> loop;
    for (const Use& use : uses) loop.push_back(oriented(use.edge, use.forward));
    const Id edges = step_.add("EDGE_LOOP", kNoName, loop);
    const Id bound = step_.add("FACE_OUTER_BOUND", kNoName, edges, kTrue);
    return step_.add("ADVANCED_FACE", kNoName, std::vector<Id>{bound}, surface, flag(same));
  }

  Id plane(Id place) { return step_.add("PLANE", kNoName, place); }

  void relate(const Header& header, Id representation) {
    step_.add("SHAPE_REPRESENTATION_RELATIONSHIP", kNoName, kNoName, header.representation,
              representation);
  }

  void style(Id style, Id item) {
    const Id styled = step_.add("STYLED_ITEM", kNoName, std::vector<Id>{style}, item);
    step_.add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION", kNoName,
              std::vector<Id>{styled}, context_);
  }

  void addSolid(const std::vector<Id>& faces, const Header& header) {
    const Id shell = step_.add("CLOSED_SHELL", kNoName, faces);
    const Id solid = step_.add("MANIFOLD_SOLID_BREP", name_, shell);
    relate(header, step_.add("ADVANCED_BREP_SHAPE_REPRESENTATION", name_, std::vector<Id>{solid},
                             context_));
    style(header.style, solid);
  }

  void write(const std::monostate&, const Header&) {}
  void write(const ExactText&, const Header&) {}

  void write(const ExactRound& round, const Header& header) {
    const ExactFrame& f = round.frame;
    const double r = round.radius;
    const double end = round.endRadius;
    const Id z = direction(f.z);
    const Id x = direction(f.x);
    const Id place = placement(point(f.origin), z, x);
    const Id from = vertex(f.at(r, 0.0, 0.0));
    const Id rim = circleEdge(from, from, place, r);
    const bool isPointed = end == 0.0;
    const Id endCentre = point(f.at(0.0, 0.0, round.height));
    const Id to = isPointed ? step_.add("VERTEX_POINT", kNoName, endCentre)
                            : vertex(f.at(end, 0.0, round.height));
    const GePoint start = f.at(r, 0.0, 0.0);
    GeVector along = f.at(end, 0.0, round.height) - start;
    along /= along.length();
    const Id seamStart = point(start);
    const Id seam = lineEdge(from, to, seamStart, r == end ? z : direction(along));
    std::vector<Id> faces;
    if (isPointed) {
      faces.push_back(face({{rim, true}, {seam, true}, {seam, false}},
                           cone(f, r, end, round.height, z, x), true));
    } else {
      const Id endPlace = placement(endCentre, z, x);
      const Id endRim = circleEdge(to, to, endPlace, end);
      const Id surface = r == end ? step_.add("CYLINDRICAL_SURFACE", kNoName, place, r)
                                  : cone(f, r, end, round.height, z, x);
      faces.push_back(
          face({{rim, true}, {seam, true}, {endRim, false}, {seam, false}}, surface, true));
      faces.push_back(face({{endRim, true}}, plane(endPlace), true));
    }
    faces.push_back(face({{rim, false}}, plane(place), false));
    addSolid(faces, header);
  }

  // From the narrow end on, since the angle is above zero. The axis points from there
  // to the wide one.
  Id cone(const ExactFrame& f, double r, double end, double height, Id, Id x) {
    const Id back = direction(-f.z);
    const Id place = placement(point(f.at(0.0, 0.0, height)), back, x);
    return step_.add("CONICAL_SURFACE", kNoName, place, end, std::atan2(r - end, height));
  }

  void write(const ExactBend& bend, const Header& header) {
    const ExactFrame& f = bend.frame;
    const double c = std::cos(bend.sweep);
    const double s = std::sin(bend.sweep);
    const GeVector out = f.x * c + f.y * s;
    const GeVector along = f.y * c - f.x * s;
    const double outer = bend.radius + bend.tube;
    const Id z = direction(f.z);
    const Id x = direction(f.x);
    const Id endX = direction(out);
    const Id place = placement(point(f.origin), z, x);
    const Id startPlace = placement(f.at(bend.radius, 0.0, 0.0), -f.y, x);
    const Id endPlace = placement(f.origin + out * bend.radius, -along, endX);
    const Id from = vertex(f.at(outer, 0.0, 0.0));
    const Id to = vertex(f.origin + out * outer);
    // About -y and the end's own: from outside towards z.
    const Id rim = circleEdge(from, from, startPlace, bend.tube);
    const Id endRim = circleEdge(to, to, endPlace, bend.tube);
    const Id seam = circleEdge(from, to, place, outer);
    const Id surface = step_.add("TOROIDAL_SURFACE", kNoName, place, bend.radius, bend.tube);
    addSolid({face({{seam, true}, {endRim, true}, {seam, false}, {rim, false}}, surface, true),
              face({{rim, true}}, plane(startPlace), true),
              face({{endRim, false}}, plane(endPlace), false)},
             header);
  }

  void write(const ExactDuct& duct, const Header& header) {
    const ExactFrame& f = duct.frame;
    const double c = std::cos(duct.sweep);
    const double s = std::sin(duct.sweep);
    const GeVector out = f.x * c + f.y * s;
    const GeVector along = f.y * c - f.x * s;
    const double half = duct.width / 2.0;
    // A corner line instead of the inner face.
    const bool isSharp = duct.inner() <= 1e-9 * duct.outer();
    const double radii[] = {isSharp ? 0.0 : duct.inner(), duct.outer()};
    const Id z = direction(f.z);
    const Id x = direction(f.x);
    const Id endX = direction(out);
    const Id low = placement(point(f.at(0.0, 0.0, -half)), z, x);
    const Id high = placement(point(f.at(0.0, 0.0, half)), z, x);
    const auto at = [&](int end, int side, double level) {
      return end == 0 ? f.at(radii[side], 0.0, level) : f.origin + out * radii[side] + f.z * level;
    };
    // By end, by inner and outer, by low and high.
    Id points[2][2][2];
    Id vertices[2][2][2];
    for (int end = 0; end < 2; ++end) {
      for (int side = 0; side < 2; ++side) {
        for (int level = 0; level < 2; ++level) {
          if (isSharp && side == 0 && end == 1) {
            points[1][0][level] = points[0][0][level];
            vertices[1][0][level] = vertices[0][0][level];
            continue;
          }
          points[end][side][level] = point(at(end, side, level == 0 ? -half : half));
          vertices[end][side][level] = step_.add("VERTEX_POINT", kNoName, points[end][side][level]);
        }
      }
    }
    Id across[2][2];   // from inner to outer; by end, by level
    Id upright[2][2];  // from low to high; by end, by side
    Id arcs[2][2];     // from start to end; by side, by level
    for (int end = 0; end < 2; ++end) {
      for (int level = 0; level < 2; ++level) {
        across[end][level] = lineEdge(vertices[end][0][level], vertices[end][1][level],
                                      points[end][0][level], end == 0 ? x : endX);
      }
      for (int side = 0; side < 2; ++side) {
        upright[end][side] =
            isSharp && side == 0 && end == 1
                ? upright[0][0]
                : lineEdge(vertices[end][side][0], vertices[end][side][1], points[end][side][0], z);
      }
    }
    for (int side = isSharp ? 1 : 0; side < 2; ++side) {
      for (int level = 0; level < 2; ++level) {
        arcs[side][level] = circleEdge(vertices[0][side][level], vertices[1][side][level],
                                       level == 0 ? low : high, radii[side]);
      }
    }
    const auto flat = [&](int level) {
      std::vector<Use> uses = {
          {across[0][level], true}, {arcs[1][level], true}, {across[1][level], false}};
      if (!isSharp) uses.push_back({arcs[0][level], false});
      if (level == 0) {
        std::vector<Use> turned(uses.rbegin(), uses.rend());
        for (Use& use : turned) use.forward = !use.forward;
        uses = std::move(turned);
      }
      return face(uses, plane(level == 0 ? low : high), level == 1);
    };
    const auto cap = [&](int end) {
      const Id place =
          placement(points[end][0][0], direction(end == 0 ? -f.y : along), end == 0 ? x : endX);
      std::vector<Use> uses = {{across[end][0], true},
                               {upright[end][1], true},
                               {across[end][1], false},
                               {upright[end][0], false}};
      if (end == 1) {
        std::vector<Use> turned(uses.rbegin(), uses.rend());
        for (Use& use : turned) use.forward = !use.forward;
        uses = std::move(turned);
      }
      return face(uses, plane(place), true);
    };
    std::vector<Id> faces = {flat(0), flat(1), cap(0), cap(1)};
    faces.push_back(face(
        {{arcs[1][0], true}, {upright[1][1], true}, {arcs[1][1], false}, {upright[0][1], false}},
        step_.add("CYLINDRICAL_SURFACE", kNoName, low, radii[1]), true));
    if (!isSharp) {
      faces.push_back(face(
          {{upright[0][0], true}, {arcs[0][1], true}, {upright[1][0], false}, {arcs[0][0], false}},
          step_.add("CYLINDRICAL_SURFACE", kNoName, low, radii[0]), false));
    }
    addSolid(faces, header);
  }

  // Straight edges between corners, each written once.
  class Edges {
   public:
    Edges(StepWriter& writer, const std::vector<GePoint>& corners)
        : writer_(writer), corners_(corners), points_(corners.size()), vertices_(corners.size()) {
      for (std::size_t i = 0; i < corners.size(); ++i) {
        points_[i] = writer.point(corners[i]);
        vertices_[i] = writer.step_.add("VERTEX_POINT", kNoName, points_[i]);
      }
    }

    Id point(std::size_t i) const { return points_[i]; }

    Use use(std::size_t from, std::size_t to) {
      const auto key = std::minmax(from, to);
      const auto [place, isNew] = edges_.try_emplace({key.first, key.second}, 0);
      if (isNew) place->second = make(key.first, key.second);
      return {place->second, from < to};
    }

   private:
    Id make(std::size_t from, std::size_t to) {
      GeVector along = corners_[to] - corners_[from];
      along /= along.length();
      return writer_.lineEdge(vertices_[from], vertices_[to], points_[from], directionOf(along));
    }

    // Parallel edges of a box share theirs.
    Id directionOf(const GeVector& along) {
      for (const auto& [known, id] : directions_) {
        if (known == along) return id;
      }
      directions_.emplace_back(along, writer_.direction(along));
      return directions_.back().second;
    }

    StepWriter& writer_;
    const std::vector<GePoint>& corners_;
    std::vector<Id> points_;
    std::vector<Id> vertices_;
    std::map<std::pair<std::size_t, std::size_t>, Id> edges_;
    std::vector<std::pair<GeVector, Id>> directions_;
  };

  // A face round these corners, three or more, which `edges` knows by their indices.
  Id straightFace(const std::vector<GePoint>& corners, const std::vector<std::size_t>& ring,
                  Edges& edges, bool isRuled) {
    std::vector<Use> uses;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      uses.push_back(edges.use(ring[i], ring[(i + 1) % ring.size()]));
    }
    if (isRuled) {
      // Over the unit square, u from corner 0 to 1 and v from 0 to 3.
      const Id surface = step_.addComplex(
          "B_SPLINE_SURFACE_WITH_KNOTS('',1,1,((", edges.point(ring[0]), ",", edges.point(ring[3]),
          "),(", edges.point(ring[1]), ",", edges.point(ring[2]),
          ")),.RULED_SURF.,.F.,.F.,.F.,(2,2),(2,2),(0.,1.),(0.,1.),.UNSPECIFIED.)");
      return face(uses, surface, true);
    }
    GeVector normal;
    const GePoint& first = corners[ring[0]];
    for (std::size_t i = 2; i < ring.size(); ++i) {
      normal += cross(corners[ring[i - 1]] - first, corners[ring[i]] - first);
    }
    normal /= normal.length();
    GeVector side = corners[ring[1]] - first;
    side = side - normal * dot(side, normal);
    side /= side.length();
    const Id z = direction(normal);
    const Id place = placement(edges.point(ring[0]), z, direction(side));
    return face(uses, plane(place), true);
  }

  static bool isPlane(const std::vector<GePoint>& corners, const std::vector<std::size_t>& ring,
                      double volume) {
    const GePoint& a = corners[ring[0]];
    const GePoint& b = corners[ring[1]];
    const GePoint& c = corners[ring[2]];
    const GePoint& d = corners[ring[3]];
    const double off = offPlane(a, b, c, d);
    return off <= kPlane && off * cross(c - a, d - b).length() <= kPlaneVolume * volume;
  }

  void write(const ExactBody& body, const Header& header) {
    // Corners that are the same one are one, and edges and faces between them none.
    std::vector<GePoint> corners;
    std::array<std::size_t, 8> index{};
    for (std::size_t k = 0; k < 8; ++k) {
      std::size_t i = 0;
      while (i < corners.size() && !(corners[i] == body.corners[k])) ++i;
      if (i == corners.size()) corners.push_back(body.corners[k]);
      index[k] = i;
    }
    Edges edges(*this, corners);
    const double volume = volumeOf(shape_);
    std::vector<Id> faces;
    for (const auto& f : kBodyFaces) {
      std::vector<std::size_t> ring;
      for (const std::size_t k : f) {
        if (ring.empty() || (ring.back() != index[k] && ring.front() != index[k])) {
          ring.push_back(index[k]);
        }
      }
      if (ring.size() < 3) continue;
      const bool isRuled = ring.size() == 4 && !body.isBox && !isPlane(corners, ring, volume);
      faces.push_back(straightFace(corners, ring, edges, isRuled));
    }
    addSolid(faces, header);
  }

  void write(const ExactFace& shape, const Header& header) {
    Edges edges(*this, shape.corners);
    std::vector<Id> faces;
    if (shape.off <= kPlane) {
      std::vector<std::size_t> ring(shape.corners.size());
      for (std::size_t i = 0; i < ring.size(); ++i) ring[i] = i;
      faces.push_back(straightFace(shape.corners, ring, edges, false));
    } else {
      for (const auto& t : shape.triangles) {
        faces.push_back(straightFace(shape.corners, {t[0], t[1], t[2]}, edges, false));
      }
    }
    const Id shell = step_.add("OPEN_SHELL", kNoName, faces);
    const Id model = step_.add("SHELL_BASED_SURFACE_MODEL", name_, std::vector<Id>{shell});
    relate(header, step_.add("MANIFOLD_SURFACE_SHAPE_REPRESENTATION", name_, std::vector<Id>{model},
                             context_));
    style(header.style, model);
  }

  void write(const ExactPolyline& line, const Header& header) {
    std::vector<Id> points;
    for (const GePoint& p : line.points) points.push_back(point(p));
    Id set = 0;
    if (points.size() == 1) {
      set = step_.add("GEOMETRIC_SET", name_, points);
    } else {
      const Id curve = step_.add("POLYLINE", name_, points);
      set = step_.add("GEOMETRIC_CURVE_SET", name_, std::vector<Id>{curve});
      style(header.curveStyle, curve);
    }
    relate(header, step_.add("GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION", name_,
                             std::vector<Id>{set}, context_));
  }

  StepText step_;
  double millimetres_;
  Id application_ = 0;
  Id productContext_ = 0;
  Id definitionContext_ = 0;
  Id context_ = 0;
  Id origin_ = 0;
  Id zAxis_ = 0;
  Id xAxis_ = 0;
  Id axes_ = 0;
  Product root_;
  std::unordered_map<std::string, Header> headers_;
  std::array<std::pair<Id, Id>, kColours.size()> styles_{};
  ExactShape shape_;
  std::string name_;
};

}  // namespace

std::unique_ptr<ElementWriter> makeStepWriter(double millimetres, TextSink& out) {
  return std::make_unique<StepWriter>(millimetres, out);
}

}  // namespace VeskTool
