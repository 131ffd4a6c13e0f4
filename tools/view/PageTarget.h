// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PAGETARGET_H
#define VESK_TOOLS_VIEW_PAGETARGET_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "terminal/Session.h"
#include "view/PageModel.h"

namespace VeskTool {

// Where a page goes: the options -o, -f and --no-open.
struct PageTarget {
  std::string output;  // empty: a temporary file, which is opened
  bool force = false;
  bool noOpen = false;

  // With `view` they need that option.
  void define(CLI::App& app, CLI::Option* view = nullptr);

  // Throws a Failure before anything is read: for an output that is no page, or
  // is an input or there already, and when the tool was built without the viewer.
  void require(const std::vector<std::string>& inputs) const;

  // Writes the page of a finished model, opens it if it has a temporary name and
  // says where it is. `name` is what a temporary file is called.
  void write(const PageModel& model, const std::string& title, const std::string& name,
             Session& session) const;
};

}  // namespace VeskTool

#endif
