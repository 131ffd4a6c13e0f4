// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_VISIT_H
#define VESK_PRIMS_VISIT_H

#include <cstdint>

#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace Vesk {

// The kinds of primitives, by their type codes. Whoever asks an element what it is
// asks here: a new kind stands in this enumeration, then the compiler names the
// switch below, and then every visitor that does not know it.
//
// A switch over them has a case for each, a default or not: whoever can write one has
// this header, and from here on to the end of its source that is an error.
#pragma GCC diagnostic error "-Wswitch-enum"

enum class PrimitiveKind : std::int32_t {
  kCyl = Cyl::kTypeCode,
  kBox = Box::kTypeCode,
  kRelb = Relb::kTypeCode,
  kTorus = Torus::kTypeCode,
  kRed = Red::kTypeCode,
  kCone = Cone::kTypeCode,
  kPline = Pline::kTypeCode,
  kPgon = Pgon::kTypeCode,
  kTxt = Txt::kTypeCode,
};

template <class Primitive>
struct PrimitiveClass {
  using Class = Primitive;
};

// Calls `visitor` with the PrimitiveClass of this type code, and returns what it
// returns; `other` for a code that is none of them.
template <class Visitor, class Other>
constexpr auto visitKind(std::int32_t typeCode, Visitor&& visitor, Other&& other) {
  switch (static_cast<PrimitiveKind>(typeCode)) {
    case PrimitiveKind::kCyl:
      return visitor(PrimitiveClass<Cyl>());
    case PrimitiveKind::kBox:
      return visitor(PrimitiveClass<Box>());
    case PrimitiveKind::kRelb:
      return visitor(PrimitiveClass<Relb>());
    case PrimitiveKind::kTorus:
      return visitor(PrimitiveClass<Torus>());
    case PrimitiveKind::kRed:
      return visitor(PrimitiveClass<Red>());
    case PrimitiveKind::kCone:
      return visitor(PrimitiveClass<Cone>());
    case PrimitiveKind::kPline:
      return visitor(PrimitiveClass<Pline>());
    case PrimitiveKind::kPgon:
      return visitor(PrimitiveClass<Pgon>());
    case PrimitiveKind::kTxt:
      return visitor(PrimitiveClass<Txt>());
  }
  return other();
}

// Whether this is the type code of a kind.
constexpr bool isTypeCode(std::int32_t typeCode) {
  return visitKind(
      typeCode, [](auto) { return true; }, [] { return false; });
}

// The codes count from 1.
inline constexpr std::int32_t kLastTypeCode = [] {
  std::int32_t last = 0;
  while (isTypeCode(last + 1)) ++last;
  return last;
}();

// Calls `visitor` with the element as what it is, `other` with nothing if it is of
// a class that a host has made. The visitor has an answer for each class by its
// name; one for Geo would take a new kind unseen.
template <class Visitor, class Other>
auto visit(const Geo& geo, Visitor&& visitor, Other&& other) {
  return visitKind(
      geo.typeCode(),
      [&](auto kind) {
        using Primitive = typename decltype(kind)::Class;
        return visitor(static_cast<const Primitive&>(geo));
      },
      other);
}

}  // namespace Vesk

#endif
