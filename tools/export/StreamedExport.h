// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_STREAMEDEXPORT_H
#define VESK_TOOLS_EXPORT_STREAMEDEXPORT_H

#include <string>
#include <vector>

#include "export/ElementWriter.h"
#include "files/SelectionOptions.h"
#include "terminal/Exit.h"
#include "terminal/Session.h"

namespace VeskTool {

// Hands the chosen elements of record files to a writer, one after the other. Damaged ones,
// and those that can't be in the file, are said with their lines; what the format
// leaves out or loses is counted in a warning; what it leaves out is kNo if `isStrict`. Returns kNo
// if there was any such element. `ending` names the format in messages: "step".
Exit exportStream(const std::vector<std::string>& files, std::string_view ending, Choice& choice,
                  ElementWriter& writer, bool isStrict, Session& session);

}  // namespace VeskTool

#endif
