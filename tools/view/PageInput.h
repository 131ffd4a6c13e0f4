// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PAGEINPUT_H
#define VESK_TOOLS_VIEW_PAGEINPUT_H

#include <cstdint>
#include <string>
#include <vector>

#include "files/SelectionOptions.h"
#include "findings/Findings.h"
#include "terminal/Exit.h"
#include "terminal/Session.h"
#include "view/PageModel.h"

namespace VeskTool {

// Reads a record file into a page, and what its sidecar knows of the components:
// `attributes`, or the file beside it where that is empty. What can't be read is said, if `says`,
// and gives Exit::kNo. Throws a Failure as openRecords and requireRecords do.
Exit readInto(PageModel& model, const std::string& file, Session& session, bool says = true,
              const std::string& attributes = {});

// The same; elements that are not chosen are shown as `others` says.
Exit readInto(PageModel& model, const std::string& file, Choice& choice, PageModel::Shown others,
              Session& session, const std::string& attributes);

// Marks the elements of a finished model at the findings of a file.
void markFindings(PageModel& model, const std::string& file, const std::vector<Finding>& findings);

}  // namespace VeskTool

#endif
