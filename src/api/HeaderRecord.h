// SPDX-License-Identifier: MIT
#ifndef VESK_API_HEADERRECORD_H
#define VESK_API_HEADERRECORD_H

#include "output/Output.h"
#include "vesk/HeaderFields.h"

namespace Vesk {

// The header of the elements that follow.
class HeaderRecord : public HeaderFields {
 public:
  // Sets f1, f2 and f3 as vk_setHeader does; returns whether n fits into the
  // three base-36 digits of f3.
  bool set(const char* a, const char* b, int n);

  // Writes prefix and attribute text of the assembler's mode; a mode other
  // than 2 and 3 has none.
  void writeTo(Output& out) const;
};

}  // namespace Vesk

#endif
