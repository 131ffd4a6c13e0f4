// SPDX-License-Identifier: MIT
#ifndef VESK_API_ELEMENTHOLDER_H
#define VESK_API_ELEMENTHOLDER_H

#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "api/HeaderRecord.h"
#include "output/Output.h"
#include "vesk/Geo.h"

namespace Vesk {

// Carries the element being written: an owned copy of one primitive, the header
// of the elements and the two closing attributes.
class ElementHolder {
 public:
  HeaderRecord header;

  // Tokens after a mode 3 element: "ft " and "tk " with the value.
  std::optional<std::int32_t> ft;
  std::optional<std::int32_t> tk;

  // Whether a primitive is held.
  bool isValid() const { return element_ != nullptr && valid_; }

  // Deletes the primitive.
  void reset();

  // Replaces the primitive by a copy of `g`, chosen by its type code; header
  // and attributes stay. Holds nothing afterwards when the type code is not 1
  // to 9, when g is not of the class that its code says, or when there is no
  // memory for the copy. The held primitive itself stays as it is.
  void setElement(const Geo& g);

  // The same for a primitive of one of the nine classes that its owner gives
  // up: it is moved, so that the one heap copy takes over its lists.
  template <class Primitive>
  void takeElement(Primitive&& g) {
    static_assert(Primitive::kTypeCode >= 1, "one of the nine, not an lvalue");
    reset();
    element_.reset(new (std::nothrow) Primitive(std::forward<Primitive>(g)));
    valid_ = element_ != nullptr;
  }

  // The primitive, null if none is held.
  const Geo* element() const { return element_.get(); }

  // Writes header, primitive and closing attributes. The holder must be valid.
  // Throws what the assembler and the primitive throw.
  void writeRecords(Output& out) const;

 private:
  std::unique_ptr<Geo> element_;
  bool valid_ = false;
};

}  // namespace Vesk

#endif
