// SPDX-License-Identifier: MIT
#include "select/Kinds.h"

#include <algorithm>
#include <array>

#include "prims/Visit.h"

namespace Vesk {
namespace {

struct KindName {
  std::string_view one;
  std::string_view many;
  std::string_view word;  // what people read
  std::string_view words;
  std::string_view fitter;  // the fitter's word, if there is another
  std::string_view fitters;
};

// By kind.
constexpr KindName kNames[kKinds] = {
    {"point", "points", "point", "points", "", ""},
    {"segment", "segments", "segment", "segments", "", ""},
    {"polyline", "polylines", "polyline", "polylines", "", ""},
    {"triangle", "triangles", "triangle", "triangles", "", ""},
    {"quadrangle", "quadrangles", "quadrangle", "quadrangles", "", ""},
    {"polygon", "polygons", "polygon", "polygons", "", ""},
    {"text", "texts", "text", "texts", "", ""},
    {"box", "boxes", "box", "boxes", "", ""},
    {"reducer", "reducers", "reducer", "reducers", "", ""},
    {"cylinder", "cylinders", "cylinder", "cylinders", "pipe", "pipes"},
    {"cone", "cones", "cone", "cones", "", ""},
    {"torus", "tori", "bend", "bends", "", ""},
    {"elbow", "elbows", "duct elbow", "duct elbows", "duct", "ducts"},
};

static_assert(!kNames[kKinds - 1].one.empty(), "a row for each kind");

std::array<std::string_view, 6> wordsFor(const KindName& name) {
  return {name.one, name.many, name.word, name.words, name.fitter, name.fitters};
}

Kind kindOfLine(std::size_t vertices) {
  if (vertices == 1) return Kind::kPoint;
  return vertices == 2 ? Kind::kSegment : Kind::kPolyline;
}

Kind kindOfFace(std::size_t vertices) {
  if (vertices == 3) return Kind::kTriangle;
  return vertices == 4 ? Kind::kQuadrangle : Kind::kPolygon;
}

// One for each class.
struct KindOf {
  Kind operator()(const Cyl&) const { return Kind::kCylinder; }
  Kind operator()(const Box&) const { return Kind::kBox; }
  Kind operator()(const Relb&) const { return Kind::kElbow; }
  Kind operator()(const Torus&) const { return Kind::kTorus; }
  Kind operator()(const Red&) const { return Kind::kReducer; }
  Kind operator()(const Cone&) const { return Kind::kCone; }
  Kind operator()(const Pline& pline) const { return kindOfLine(pline.vertices.size()); }
  Kind operator()(const Pgon& pgon) const { return kindOfFace(pgon.vertices.size()); }
  Kind operator()(const Txt&) const { return Kind::kText; }
};

}  // namespace

Kind kindOf(const Geo& geo) {
  return visit(geo, KindOf(), [] { return Kind::kText; });
}

std::string_view nameOf(Kind kind) { return kNames[static_cast<std::size_t>(kind)].one; }

std::string_view pluralOf(Kind kind) { return kNames[static_cast<std::size_t>(kind)].many; }

std::string_view wordOf(Kind kind) { return kNames[static_cast<std::size_t>(kind)].word; }

std::string_view wordsOf(Kind kind) { return kNames[static_cast<std::size_t>(kind)].words; }

std::optional<Kind> kindNamed(std::string_view name) {
  if (name.empty()) return std::nullopt;
  for (std::size_t i = 0; i < kKinds; ++i) {
    const KindName& each = kNames[i];
    for (const std::string_view word : wordsFor(each)) {
      if (name == word) return static_cast<Kind>(i);
    }
  }
  return std::nullopt;
}

std::string kindNames() {
  std::string names;
  for (const KindName& each : kNames) {
    if (!names.empty()) names += ", ";
    names += each.word;
  }
  return names;
}

std::vector<std::string> kindWords() {
  std::vector<std::string> words;
  for (const KindName& each : kNames) {
    for (const std::string_view word : wordsFor(each)) {
      const bool isNew = std::find(words.begin(), words.end(), word) == words.end();
      if (!word.empty() && isNew) words.emplace_back(word);
    }
  }
  return words;
}

}  // namespace Vesk
