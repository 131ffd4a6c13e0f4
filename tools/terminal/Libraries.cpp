// SPDX-License-Identifier: MIT
#include "terminal/Libraries.h"

#include <algorithm>
#include <cassert>
#include <string>

#include "terminal/Exit.h"

namespace VeskTool {
namespace {

constexpr Library kLibraries[] = {
#include "LibraryTable.inc"
};

}  // namespace

std::span<const Library> libraries() { return kLibraries; }

void requireLibrary(std::string_view name) {
  const auto found = std::find_if(std::begin(kLibraries), std::end(kLibraries),
                                  [name](const Library& each) { return each.name == name; });
  assert(found != std::end(kLibraries));
  if (found->isIn) return;
  throw Failure(Exit::kUsage,
                std::string(found->use) + " needs " + found->name +
                    ", which this build of vesk was made without",
                std::string("install ") + found->package + " and build vesk again");
}

}  // namespace VeskTool
