#ifndef VESK_TOOLS_VIEW_PAGEINPUT_H
#define VESK_TOOLS_VIEW_PAGEINPUT_H

#include <cstdint>
#include <string>
#include <vector>

#include "Exit.h"
#include "Findings.h"
#include "Session.h"
#include "view/PageModel.h"

namespace VeskTool {

// Reads a record file into a page. What can't be read is said, if `says`, and
// gives Exit::kNo. Throws a Failure as openRecords and requireRecords do.
Exit readInto(PageModel& model, const std::string& file, Session& session, bool says = true);

// Marks the elements of a finished model at the findings of a file.
void markFindings(PageModel& model, const std::string& file, const std::vector<Finding>& findings);

}  // namespace VeskTool

#endif
