// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_SYSTEMFAILURE_H
#define VESK_TOOLS_SYSTEMFAILURE_H

#include <string>
#include <utility>

#include "terminal/Exit.h"

namespace VeskTool {

// The system refuses something: `number` is its errno, 0 if nobody knows, `name` the file.
class SystemFailure : public Failure {
 public:
  SystemFailure(Exit code, const std::string& message, int errorNumber, std::string file)
      : Failure(code, message), number(errorNumber), name(std::move(file)) {}

  int number;
  std::string name;
};

}  // namespace VeskTool

#endif
