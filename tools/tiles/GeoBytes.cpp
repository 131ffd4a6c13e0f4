// SPDX-License-Identifier: MIT
#include "tiles/GeoBytes.h"

#include <concepts>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "prims/Visit.h"

namespace VeskTool {
namespace {

template <class T, class Primitive>
concept Is = std::same_as<std::remove_const_t<T>, Primitive>;

class Writer {
 public:
  explicit Writer(std::string& to) : to_(to) {}

  template <class Number>
  requires std::is_arithmetic_v<Number>
  void operator()(const Number& number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    to_.append(bytes, sizeof bytes);
  }

  void operator()(const std::string& text) {
    (*this)(std::uint64_t{text.size()});
    to_ += text;
  }

  template <class Each>
  void operator()(const std::vector<Each>& list);

 private:
  std::string& to_;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  template <class Number>
  requires std::is_arithmetic_v<Number>
  void operator()(Number& number) {
    std::memcpy(&number, bytes_.data(), sizeof number);
    bytes_.remove_prefix(sizeof number);
  }

  void operator()(std::string& text) {
    std::uint64_t size = 0;
    (*this)(size);
    text = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
  }

  template <class Each>
  void operator()(std::vector<Each>& list);

 private:
  std::string_view bytes_;
};

// What an element is made of, for both ways.

template <class Bytes, class T>
requires Is<T, GePoint> || Is<T, GeVector>
void pass(Bytes& bytes, T& p) {
  bytes(p.x);
  bytes(p.y);
  bytes(p.z);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::PgonVertex> auto& vertex) {
  pass(bytes, vertex.point);
  pass(bytes, vertex.normal);
  bytes(vertex.hasNormal);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Cyl> auto& cyl) {
  pass(bytes, cyl.origin);
  pass(bytes, cyl.axis);
  bytes(cyl.diameter);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Cone> auto& cone) {
  pass(bytes, cone.origin);
  pass(bytes, cone.axis);
  bytes(cone.diameter1);
  bytes(cone.diameter2);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Box> auto& box) {
  pass(bytes, box.origin);
  pass(bytes, box.edge1);
  pass(bytes, box.edge2);
  pass(bytes, box.edge3);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Torus> auto& torus) {
  pass(bytes, torus.centre);
  pass(bytes, torus.startVector);
  pass(bytes, torus.endVector);
  bytes(torus.diameter);
  bytes(torus.bendRadius);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Relb> auto& relb) {
  pass(bytes, relb.centre);
  pass(bytes, relb.startVector);
  pass(bytes, relb.endVector);
  bytes(relb.width);
  bytes(relb.depth);
  bytes(relb.flipped);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Red> auto& red) {
  pass(bytes, red.origin);
  for (auto& corner : red.cornerVectors) pass(bytes, corner);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Pgon> auto& pgon) {
  bytes(pgon.vertices);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Pline> auto& pline) {
  bytes(pline.vertices);
}

template <class Bytes>
void pass(Bytes& bytes, Is<Vesk::Txt> auto& txt) {
  pass(bytes, txt.position);
  pass(bytes, txt.direction);
  pass(bytes, txt.upDirection);
  bytes(txt.charWidth);
  bytes(txt.height);
  bytes(txt.alignment);
  bytes(txt.alignmentFlag);
  bytes(txt.text);
}

template <class Each>
void Writer::operator()(const std::vector<Each>& list) {
  (*this)(std::uint64_t{list.size()});
  for (const Each& each : list) pass(*this, each);
}

template <class Each>
void Reader::operator()(std::vector<Each>& list) {
  std::uint64_t size = 0;
  (*this)(size);
  list.resize(size);
  for (Each& each : list) pass(*this, each);
}

}  // namespace

void appendGeo(std::string& to, const Vesk::Geo& geo) {
  Vesk::visit(
      geo,
      [&to](const auto& primitive) {
        Writer writer(to);
        writer(primitive.typeCode());
        pass(writer, primitive);
      },
      [] {});
}

std::unique_ptr<Vesk::Geo> geoOf(std::string_view bytes) {
  Reader reader(bytes);
  std::int32_t code = 0;
  reader(code);
  return Vesk::visitKind(
      code,
      [&reader](auto kind) -> std::unique_ptr<Vesk::Geo> {
        auto made = std::make_unique<typename decltype(kind)::Class>();
        pass(reader, *made);
        return made;
      },
      [] { return std::unique_ptr<Vesk::Geo>(); });
}

}  // namespace VeskTool
