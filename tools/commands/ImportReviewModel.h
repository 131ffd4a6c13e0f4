// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_COMMANDS_IMPORTREVIEWMODEL_H
#define VESK_TOOLS_COMMANDS_IMPORTREVIEWMODEL_H

#include <optional>
#include <string>
#include <vector>

#include "rvm/ReviewImport.h"
#include "terminal/Exit.h"
#include "terminal/Session.h"

namespace VeskTool {

// What `vesk import` was asked to do with review models.
struct ReviewModelJob {
  std::vector<std::string> files;
  std::vector<std::string> attributes;  // files of attributes
  std::string output;
  std::optional<std::string> sidecar;
  Vesk::ReviewOptions options;
  bool force = false;
  bool json = false;
};

// Whether the file is a review model, by its ending (.rvm, .rev) or else by its first
// bytes; standard input is none.
bool isReviewModel(const std::string& file);

// Reads review models into one record file and its sidecar, both whole or not at all,
// and tells what became of their shapes. Returns kNo unless all of them are exact.
// Throws a Failure with Exit::kInput for what can't be read to its end.
Exit importReviewModels(const ReviewModelJob& job, Session& session);

}  // namespace VeskTool

#endif
