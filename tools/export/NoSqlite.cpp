// SPDX-License-Identifier: MIT
#include "export/Sqlite.h"
#include "terminal/Libraries.h"

namespace VeskTool {

std::unique_ptr<ElementWriter> makeSqliteWriter(double, const std::string&, TextSink&) {
  requireLibrary("SQLite");
  return nullptr;
}

}  // namespace VeskTool
