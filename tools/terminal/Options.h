// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_OPTIONS_H
#define VESK_TOOLS_OPTIONS_H

#include <CLI/CLI.hpp>

namespace VeskTool {

// What the number of an option may be: finite, written with a point.
CLI::Validator zeroOrMore();
CLI::Validator aboveZero();

}  // namespace VeskTool

#endif
