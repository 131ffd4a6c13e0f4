// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_SQLITE_H
#define VESK_TOOLS_EXPORT_SQLITE_H

#include <memory>
#include <string>

#include "export/ElementWriter.h"
#include "terminal/Streams.h"

namespace VeskTool {

// An SQLite database of elements, their values, headers, sidecars and faults, with an
// R*Tree of boxes; docs/formats.md tells the tables. It grows in a file beside `beside`
// (or in the folder of temporary files for "-") and goes to `out` at the end. Memory is
// that of the headers.
//
// Throws a Failure when the tool was built without SQLite, and for what SQLite refuses.
std::unique_ptr<ElementWriter> makeSqliteWriter(double millimetres, const std::string& beside,
                                                TextSink& out);

}  // namespace VeskTool

#endif
