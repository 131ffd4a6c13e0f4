// SPDX-License-Identifier: MIT
#include "elements/Describe.h"

#include <algorithm>
#include <numbers>
#include <type_traits>
#include <utility>

#include "elements/Kinds.h"
#include "prims/Visit.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

using Properties = std::vector<Property>;
using Type = Property::Type;
using Vesk::Value;

// What people and programs call it; a numbered one has its number behind.
std::string_view nameOf(Value value) {
  switch (value) {
    case Value::kOrigin:
      return "origin";
    case Value::kAxis:
      return "axis";
    case Value::kDiameter:
      return "diameter";
    case Value::kDiameter1:
      return "diameter 1";
    case Value::kDiameter2:
      return "diameter 2";
    case Value::kEdge1:
      return "edge 1";
    case Value::kEdge2:
      return "edge 2";
    case Value::kEdge3:
      return "edge 3";
    case Value::kMark:
      return "mark";
    case Value::kCentre:
      return "centre";
    case Value::kStart:
      return "start";
    case Value::kEnd:
      return "end";
    case Value::kBendRadius:
      return "bend radius";
    case Value::kDepth:
      return "depth";
    case Value::kWidth:
    case Value::kCharWidth:
      return "width";
    case Value::kAxisEndA:
      return "bend axis end a";
    case Value::kAxisEndB:
      return "bend axis end b";
    case Value::kInnerRadius:
      return "inner radius";
    case Value::kCorner:
      return "corner";
    case Value::kTag:
      return "tag";
    case Value::kVertex:
      return "vertex";
    case Value::kNormal:
      return "normal";
    case Value::kArc:
      return "arc";
    case Value::kPointSize:
      return "point size";
    case Value::kPointDirection:
    case Value::kDirection:
      return "direction";
    case Value::kPosition:
      return "position";
    case Value::kUp:
      return "up";
    case Value::kHeight:
      return "height";
    case Value::kAlignment:
      return "alignment";
    case Value::kFlag:
      return "flag";
    case Value::kTextLength:
      return "length of the text";
    case Value::kText:
      break;
  }
  return "text";
}

void add(Properties& to, Value id, const GePoint& p) {
  to.push_back({id, 0, std::string(nameOf(id)), Type::kPoint, p, {}});
}

void add(Properties& to, Value id, const GeVector& v) {
  to.push_back({id, 0, std::string(nameOf(id)), Type::kVector, GePoint(v), {}});
}

void add(Properties& to, Value id, double value) {
  to.push_back({id, 0, std::string(nameOf(id)), Type::kNumber, {value, 0.0, 0.0}, {}});
}

void add(Properties& to, Value id, std::int32_t value) {
  const GePoint number(static_cast<double>(value), 0.0, 0.0);
  to.push_back({id, 0, std::string(nameOf(id)), Type::kInteger, number, {}});
}

void add(Properties& to, Value id, std::string text) {
  to.push_back({id, 0, std::string(nameOf(id)), Type::kText, {}, std::move(text)});
}

// One of several: its number belongs to its name.
template <class T>
void add(Properties& to, Value id, std::size_t index, T value) {
  add(to, id, std::move(value));
  to.back().index = index;
  to.back().name += ' ' + std::to_string(index);
}

// The most that a record keeps.
constexpr int kShownDecimals = 6;

void addTags(Properties& to, Value id, const std::vector<Vesk::TagEntry>& tags) {
  for (std::size_t i = 0; i < tags.size(); ++i) {
    std::string text = tags[i].name;
    for (const auto& [first, second] : tags[i].values) {
      text += ' ' + shortest(first) + ' ' + shortest(second);
    }
    add(to, id, i, std::move(text));
  }
}

void addArcs(Properties& to, const std::vector<Vesk::ArcEntry>& arcs) {
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    std::string text = "radius " + shortest(arcs[i].radius);
    for (const std::int32_t value : arcs[i].values) text += ' ' + std::to_string(value);
    add(to, Value::kArc, i, std::move(text));
  }
}

void describe(Properties& to, const Vesk::Cyl& cyl) {
  add(to, Value::kOrigin, cyl.origin);
  add(to, Value::kAxis, cyl.axis);
  add(to, Value::kDiameter, cyl.diameter);
}

void describe(Properties& to, const Vesk::Cone& cone) {
  add(to, Value::kOrigin, cone.origin);
  add(to, Value::kAxis, cone.axis);
  add(to, Value::kDiameter1, cone.diameter1);
  add(to, Value::kDiameter2, cone.diameter2);
}

void describe(Properties& to, const Vesk::Box& box) {
  add(to, Value::kOrigin, box.origin);
  add(to, Value::kEdge1, box.edge1);
  add(to, Value::kEdge2, box.edge2);
  add(to, Value::kEdge3, box.edge3);
  addTags(to, Value::kMark, box.edges);
}

void describe(Properties& to, const Vesk::Torus& torus) {
  add(to, Value::kCentre, torus.centre);
  add(to, Value::kStart, torus.startVector);
  add(to, Value::kEnd, torus.endVector);
  add(to, Value::kDiameter, torus.diameter);
  if (torus.bendRadius > 0.0) add(to, Value::kBendRadius, torus.bendRadius);
}

void describe(Properties& to, const Vesk::Red& red) {
  add(to, Value::kCorner, 0, red.origin);
  for (std::size_t i = 0; i < red.cornerVectors.size(); ++i) {
    add(to, Value::kCorner, i + 1, red.cornerVectors[i]);
  }
  addTags(to, Value::kTag, red.tags);
}

void describe(Properties& to, const Vesk::Relb& relb) {
  add(to, Value::kCentre, relb.centre);
  add(to, Value::kStart, relb.startVector);
  add(to, Value::kEnd, relb.endVector);
  add(to, Value::kDepth, relb.depth);
  add(to, Value::kWidth, relb.width);
}

void describe(Properties& to, const Vesk::Pline& pline) {
  for (std::size_t i = 0; i < pline.vertices.size(); ++i) {
    add(to, Value::kVertex, i, pline.vertices[i]);
  }
  addArcs(to, pline.arcs);
  if (pline.pointSize != 0) add(to, Value::kPointSize, pline.pointSize);
  if (!(pline.pointDirection == GePoint())) add(to, Value::kPointDirection, pline.pointDirection);
}

void describe(Properties& to, const Vesk::Pgon& pgon) {
  for (std::size_t i = 0; i < pgon.vertices.size(); ++i) {
    add(to, Value::kVertex, i, pgon.vertices[i].point);
  }
  for (std::size_t i = 0; i < pgon.vertices.size(); ++i) {
    if (pgon.vertices[i].hasNormal) add(to, Value::kNormal, i, pgon.vertices[i].normal);
  }
  addArcs(to, pgon.arcs);
}

void describe(Properties& to, const Vesk::Txt& txt) {
  add(to, Value::kPosition, txt.position);
  add(to, Value::kDirection, txt.direction);
  add(to, Value::kUp, txt.upDirection);
  add(to, Value::kHeight, txt.height);
  add(to, Value::kCharWidth, txt.charWidth);
  add(to, Value::kAlignment, txt.alignment);
  if (txt.alignmentFlag != 0) add(to, Value::kFlag, std::int32_t{1});
  add(to, Value::kText, txt.text);
}

// Calls visit with the element as what it is; nothing becomes of a host's own class.
template <class Visit>
auto visitGeo(const Vesk::Geo& geo, Visit visit) {
  using Answer = decltype(visit(std::declval<const Vesk::Txt&>()));
  return Vesk::visit(geo, visit, [] { return Answer(); });
}

GePoint firstOf(const Vesk::Cyl& cyl) { return cyl.origin; }
GePoint firstOf(const Vesk::Cone& cone) { return cone.origin; }
GePoint firstOf(const Vesk::Box& box) { return box.origin; }
GePoint firstOf(const Vesk::Torus& torus) { return torus.centre; }
GePoint firstOf(const Vesk::Red& red) { return red.origin; }
GePoint firstOf(const Vesk::Relb& relb) { return relb.centre; }
GePoint firstOf(const Vesk::Pline& pline) { return pline.vertex(0); }
GePoint firstOf(const Vesk::Pgon& pgon) {
  return pgon.vertices.empty() ? GePoint() : pgon.point(0);
}
GePoint firstOf(const Vesk::Txt& txt) { return txt.position; }

// Appends words and numbers in turn; three decimals are enough for people.
void appendPart(std::string& to, std::string_view words) { to += words; }
void appendPart(std::string& to, double value) { appendTrimmed(to, value, 3); }

template <class... Parts>
std::string joined(const Parts&... parts) {
  std::string text;
  text.reserve(64);
  (appendPart(text, parts), ...);
  return text;
}

double degreesBetween(const GeVector& a, const GeVector& b) {
  if (a.length() == 0.0 || b.length() == 0.0) return 0.0;
  return a.angleTo(b) * 180.0 / std::numbers::pi;
}

std::string sizes(const Vesk::Cyl& cyl) {
  return joined("length ", cyl.axis.length(), ", diameter ", cyl.diameter);
}

std::string sizes(const Vesk::Cone& cone) {
  return joined("length ", cone.axis.length(), ", diameters ", cone.diameter1, " and ",
                cone.diameter2);
}

std::string sizes(const Vesk::Box& box) {
  return joined("edges ", box.edge1.length(), ", ", box.edge2.length(), ", ", box.edge3.length());
}

double meanLength(const GeVector& a, const GeVector& b) { return (a.length() + b.length()) / 2.0; }

std::string sizes(const Vesk::Torus& torus) {
  return joined("radius ", meanLength(torus.startVector, torus.endVector), ", angle ",
                degreesBetween(torus.startVector, torus.endVector), ", diameter ", torus.diameter);
}

std::string sizes(const Vesk::Red& red) { return joined("volume ", red.volume()); }

std::string sizes(const Vesk::Relb& relb) {
  return joined("radius ", meanLength(relb.startVector, relb.endVector), ", angle ",
                degreesBetween(relb.startVector, relb.endVector), ", depth ", relb.depth,
                ", width ", relb.width);
}

std::string sizes(const Vesk::Pline& pline) {
  if (pline.vertices.size() < 2) return {};
  double length = 0.0;
  for (std::size_t i = 1; i < pline.vertices.size(); ++i) {
    length += distance(pline.vertices[i - 1], pline.vertices[i]);
  }
  std::string text = joined("length ", length);
  if (pline.vertices.size() > 2) {
    text += ", " + std::to_string(pline.vertices.size()) + " vertices";
  }
  return text;
}

std::string sizes(const Vesk::Pgon& pgon) {
  return std::to_string(pgon.vertices.size()) + " vertices";
}

std::string sizes(const Vesk::Txt& txt) {
  return joined("height ", txt.height, ", \"", txt.text, "\"");
}

}  // namespace

std::vector<Property> propertiesOf(const Vesk::Geo& geo) {
  Properties properties;
  visitGeo(geo, [&](const auto& element) { describe(properties, element); });
  return properties;
}

const Property* findValue(const std::vector<Property>& in, const Property& wanted) {
  const auto found = std::find_if(in.begin(), in.end(),
                                  [&](const Property& each) { return each.isSameValue(wanted); });
  return found == in.end() ? nullptr : &*found;
}

GePoint placeOf(const Vesk::Geo& geo) {
  return visitGeo(geo, [](const auto& element) { return firstOf(element); });
}

std::unique_ptr<Vesk::Geo> copyOf(const Vesk::Geo& geo) {
  return visitGeo(geo, [](const auto& element) -> std::unique_ptr<Vesk::Geo> {
    return std::make_unique<std::decay_t<decltype(element)>>(element);
  });
}

std::string sizesOf(const Vesk::Geo& geo) {
  return visitGeo(geo, [](const auto& element) { return sizes(element); });
}

std::string trimmedField(const Vesk::FixStrB& field) {
  std::string_view text(field.data(), field.width());
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string headerText(const Vesk::HeaderFields& header) {
  std::string text = trimmedField(header.f1);
  const std::string group = trimmedField(header.f2);
  if (!group.empty()) text += (text.empty() ? "" : " ") + group;
  return text;
}

std::string valueText(const Property& property) {
  switch (property.type) {
    case Type::kText:
      return '"' + property.text + '"';
    case Type::kPoint:
    case Type::kVector:
      return trimmedNumber(property.value.x, kShownDecimals) + ' ' +
             trimmedNumber(property.value.y, kShownDecimals) + ' ' +
             trimmedNumber(property.value.z, kShownDecimals);
    case Type::kNumber:
    case Type::kInteger:
      break;
  }
  return trimmedNumber(property.value.x, kShownDecimals);
}

void appendJson(JsonWriter& json, const Property& property) {
  json.key(property.name);
  switch (property.type) {
    case Type::kText:
      json.value(property.text);
      break;
    case Type::kPoint:
    case Type::kVector:
      json.value(property.value);
      break;
    case Type::kNumber:
    case Type::kInteger:
      json.value(property.value.x);
      break;
  }
}

}  // namespace VeskTool
