#include "Kinds.h"

#include "output/RecordLayout.h"
#include "prims/Box.h"
#include "prims/Cone.h"
#include "prims/Cyl.h"
#include "prims/Pgon.h"
#include "prims/Pline.h"
#include "prims/Red.h"
#include "prims/Relb.h"
#include "prims/Torus.h"
#include "prims/Txt.h"

namespace VeskTool {
namespace {

struct KindName {
  std::string_view one;
  std::string_view many;
};

// By kind.
constexpr KindName kNames[kKinds] = {
    {"point", "points"},
    {"segment", "segments"},
    {"polyline", "polylines"},
    {"triangle", "triangles"},
    {"quadrangle", "quadrangles"},
    {"polygon", "polygons"},
    {"text", "texts"},
    {"box", "boxes"},
    {"reducer", "reducers"},
    {"cylinder", "cylinders"},
    {"cone", "cones"},
    {"torus", "tori"},
    {"elbow", "elbows"},
};

Kind kindOfLine(std::size_t vertices) {
  if (vertices == 1) return Kind::kPoint;
  return vertices == 2 ? Kind::kSegment : Kind::kPolyline;
}

Kind kindOfFace(std::size_t vertices) {
  if (vertices == 3) return Kind::kTriangle;
  return vertices == 4 ? Kind::kQuadrangle : Kind::kPolygon;
}

}  // namespace

Kind kindOf(const Vesk::Geo& geo) {
  switch (geo.typeCode()) {
    case Vesk::Cyl::kTypeCode:
      return Kind::kCylinder;
    case Vesk::Box::kTypeCode:
      return Kind::kBox;
    case Vesk::Relb::kTypeCode:
      return Kind::kElbow;
    case Vesk::Torus::kTypeCode:
      return Kind::kTorus;
    case Vesk::Red::kTypeCode:
      return Kind::kReducer;
    case Vesk::Cone::kTypeCode:
      return Kind::kCone;
    case Vesk::Pline::kTypeCode:
      return kindOfLine(static_cast<const Vesk::Pline&>(geo).vertices.size());
    case Vesk::Pgon::kTypeCode:
      return kindOfFace(static_cast<const Vesk::Pgon&>(geo).vertices.size());
    default:
      return Kind::kText;
  }
}

std::string_view nameOf(Kind kind) { return kNames[static_cast<std::size_t>(kind)].one; }

std::string_view pluralOf(Kind kind) { return kNames[static_cast<std::size_t>(kind)].many; }

std::optional<Kind> kindNamed(std::string_view name) {
  for (std::size_t i = 0; i < kKinds; ++i) {
    if (name == kNames[i].one || name == kNames[i].many) return static_cast<Kind>(i);
  }
  return std::nullopt;
}

std::string kindNames() {
  std::string names;
  for (const KindName& each : kNames) {
    if (!names.empty()) names += ", ";
    names += each.one;
  }
  return names;
}

std::string_view styleName(int mode) {
  if (mode == Vesk::kFixedColumns) return "fixed";
  return mode == Vesk::kTokens ? "token" : "none";
}

}  // namespace VeskTool
