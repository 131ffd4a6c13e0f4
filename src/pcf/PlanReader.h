// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_PLANREADER_H
#define VESK_PCF_PLANREADER_H

#include <string>

#include "pcf/Messages.h"
#include "pcf/Plan.h"

namespace Vesk::Pcf {

// Reads a piping component file. What can't be read is said with its line, and reading
// goes on behind it.
//
// Words at the margin begin components and headers, what is indented below them
// belongs to them. In a file that indents nothing the words are told by name.
Plan readPlan(std::string bytes, Messages& messages);

// Whether anything of the file can be a component: one with a point.
bool hasComponents(const Plan& plan);

}  // namespace Vesk::Pcf

#endif
