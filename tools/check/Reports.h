// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_REPORTS_H
#define VESK_TOOLS_CHECK_REPORTS_H

#include <string>
#include <string_view>
#include <vector>

#include "check/FileCheck.h"
#include "findings/Findings.h"

namespace VeskTool {

// What was found in one file.
struct FileReport {
  std::string file;
  std::int32_t mode = 0;
  CheckCounts counts;
  std::vector<Finding> findings;
};

// "plant.dat: 2 errors, 1 warning in 2 513 004 elements", and what was not told.
std::string summaryOf(const FileReport& report);

// One document, schema "vesk.check/1"; docs/schema/check.json.
std::string jsonOf(const std::vector<FileReport>& reports);

// SARIF 2.1.0, the form that code hosts and editors read. Its columns count
// characters and its last column is the one behind. `families` are the first digits
// of the codes that it explains.
std::string sarifOf(const std::vector<FileReport>& reports, bool allRead,
                    std::string_view families = "012");

}  // namespace VeskTool

#endif
