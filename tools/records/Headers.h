// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_HEADERS_H
#define VESK_TOOLS_RECORDS_HEADERS_H

#include <optional>
#include <string>
#include <string_view>

#include "sidecar/Sidecar.h"
#include "vesk/HeaderFields.h"

namespace VeskTool {

// Fields F1 and F2 as they stand in a record, ten characters: what elements of one
// header share.
std::string headerKey(const Vesk::HeaderFields& header);

// "P-1001 01": the key as people read it, without control characters.
std::string shownHeader(std::string_view key);

// With "?" for control characters, which a terminal would obey.
std::string withoutControls(std::string text);

// The key that is meant by "P-1001 01"; by "P-1001" its first eight characters only,
// for any F2. Nothing if F1 is longer than 8 or F2 than 2 characters, or with control
// characters. A blank before the last one or two characters parts F1 and F2.
std::optional<std::string> headerKeyOf(std::string_view name);

// Sets F1 and F2 to those of the key.
void setHeader(Vesk::HeaderFields& header, std::string_view key);

// Sets F3; the counter is 0 to 46655.
void setCounter(Vesk::HeaderFields& header, int counter);

// Writes the fields into the prefix of every line of an element in this style; all
// else stays byte for byte.
void putHeader(std::string& lines, int mode, const Vesk::HeaderFields& header);

// Sets f1 and f2 of a row to those of the key.
void setHeader(Vesk::SidecarRow& row, std::string_view key);

}  // namespace VeskTool

#endif
