// SPDX-License-Identifier: MIT
#include "takeoff/Xlsx.h"
#include "terminal/Libraries.h"

namespace VeskTool {

void writeXlsx(const TakeOff&, const TakeOffOptions&, bool, TextSink&) {
  requireLibrary("libxlsxwriter");
}

}  // namespace VeskTool
