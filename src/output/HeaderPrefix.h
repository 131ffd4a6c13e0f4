// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_HEADERPREFIX_H
#define VESK_OUTPUT_HEADERPREFIX_H

#include "output/RecordLayout.h"
#include "vesk/HeaderFields.h"

namespace Vesk {

// Calls visit(field) for the fields of a mode 2 or mode 3 prefix in their
// order, those of mode 2 behind the line number. `fields` may be const.
template <class Fields, class Visit>
void visitPrefix(Fields& fields, std::int32_t mode, Visit visit) {
  if (mode == kFixedColumns) {
    visit(fields.f6);
    visit(fields.f2);
    visit(fields.f4);
    visit(fields.f1);
    visit(fields.f3);
  } else if (mode == kTokens) {
    visit(fields.f1);
    visit(fields.f2);
    visit(fields.f3);
    visit(fields.f4);
    visit(fields.f5);
  }
}

}  // namespace Vesk

#endif
