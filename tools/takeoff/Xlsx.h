// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_XLSX_H
#define VESK_TOOLS_TAKEOFF_XLSX_H

#include <string>

#include "takeoff/Tables.h"
#include "terminal/Streams.h"

namespace VeskTool {

// Writes a take-off as a workbook: a sheet for each grouping, "by header" or "take-off", with
// the columns of the CSV, numbers as numbers. The same take-off gives the same bytes.
// It is made in the folder of temporary files. Throws a Failure with Exit::kUsage where
// this build has no library for it, with Exit::kOutput for what no sheet holds: more
// than 1,048,576 lines, a text of more than 32,767 characters.
void writeXlsx(const TakeOff& takeOff, const TakeOffOptions& options, bool sumsOnly, TextSink& out);

}  // namespace VeskTool

#endif
