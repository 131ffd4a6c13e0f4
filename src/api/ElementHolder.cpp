// SPDX-License-Identifier: MIT
#include "api/ElementHolder.h"

#include <new>
#include <typeinfo>

#include "api/ElementRecords.h"
#include "prims/Visit.h"

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
  return visitKind(
      g.typeCode(), [&](auto kind) { return copyAs<typename decltype(kind)::Class>(g); },
      []() -> std::unique_ptr<Geo> { return nullptr; });
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
  writeElementRecords(header, *element_, {ft, tk}, out);
}

}  // namespace Vesk
