// SPDX-License-Identifier: MIT
#ifndef VESK_API_ELEMENTRECORDS_H
#define VESK_API_ELEMENTRECORDS_H

#include <cstdint>
#include <optional>

#include "output/Output.h"
#include "vesk/Geo.h"
#include "vesk/HeaderFields.h"

namespace Vesk {

// Tokens after a mode 3 element: "ft " and "tk " with the value.
struct ClosingAttributes {
  std::optional<std::int32_t> ft;
  std::optional<std::int32_t> tk;
};

// Writes header, primitive and closing attributes in the assembler's mode. The
// last line is still the assembler's. Throws what assembler and primitive throw.
void writeElementRecords(const HeaderFields& header, const Geo& geo,
                         const ClosingAttributes& closing, Output& out);

// The header alone: prefix and attribute text; a mode other than 2 and 3 has
// none.
void writeHeader(const HeaderFields& header, Output& out);

}  // namespace Vesk

#endif
