#include "api/ElementHolder.h"

#include <new>
#include <typeinfo>

#include "output/RecordWords.h"
#include "prims/Box.h"
#include "prims/Cone.h"
#include "prims/Cyl.h"
#include "prims/Pgon.h"
#include "prims/Pline.h"
#include "prims/Red.h"
#include "prims/Relb.h"
#include "prims/Torus.h"
#include "prims/Txt.h"

namespace Vesk {
namespace {

template <class Primitive>
std::unique_ptr<Geo> copyAs(const Geo& g) {
  // The class itself in most cases, which is known faster than a class derived
  // from it.
  const auto* primitive = typeid(g) == typeid(Primitive) ? static_cast<const Primitive*>(&g)
                                                         : dynamic_cast<const Primitive*>(&g);
  return primitive == nullptr ? nullptr : std::make_unique<Primitive>(*primitive);
}

std::unique_ptr<Geo> copyOf(const Geo& g) {
  switch (g.typeCode()) {
    case Cyl::kTypeCode:
      return copyAs<Cyl>(g);
    case Box::kTypeCode:
      return copyAs<Box>(g);
    case Relb::kTypeCode:
      return copyAs<Relb>(g);
    case Torus::kTypeCode:
      return copyAs<Torus>(g);
    case Red::kTypeCode:
      return copyAs<Red>(g);
    case Cone::kTypeCode:
      return copyAs<Cone>(g);
    case Pline::kTypeCode:
      return copyAs<Pline>(g);
    case Pgon::kTypeCode:
      return copyAs<Pgon>(g);
    case Txt::kTypeCode:
      return copyAs<Txt>(g);
    default:
      return nullptr;
  }
}

void writeClosing(Output& out, std::string_view name, const std::optional<std::int32_t>& value) {
  if (!value) return;
  out.addText(",");
  out.addText(name);
  out.addFixed(*value, 0, false);
}

}  // namespace

void ElementHolder::reset() {
  element_.reset();
  valid_ = false;
}

void ElementHolder::setElement(const Geo& g) {
  if (&g == element_.get()) return;
  reset();
  try {
    element_ = copyOf(g);
  } catch (const std::bad_alloc&) {
    return;
  }
  valid_ = element_ != nullptr;
}

void ElementHolder::writeRecords(Output& out) const {
  header.writeTo(out);
  element_->write(out);
  if (out.mode != kTokens) return;
  writeClosing(out, Words::kFt, ft);
  writeClosing(out, Words::kTk, tk);
}

}  // namespace Vesk
