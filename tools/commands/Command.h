// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_COMMAND_H
#define VESK_TOOLS_COMMAND_H

#include <CLI/CLI.hpp>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "terminal/Exit.h"
#include "terminal/Session.h"

namespace VeskTool {

enum class Group { kLook, kJudge, kChange, kSee, kHelp };

struct Example {
  std::string_view line;  // "vesk info plant.dat"
  std::string_view what;  // what it is good for
};

// What a command is to its users.
struct CommandText {
  std::string_view name;
  Group group;
  std::string_view arguments;  // "FILE..."
  std::string_view summary;    // one line of 50 characters at most
  std::string_view details;    // what the options do not say; may be empty
  std::vector<Example> examples;
};

// One command of the tool. A new one is a source with a class, its name in the
// sources of CMakeLists.txt and its line in Commands.cpp.
class Command {
 public:
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  virtual CommandText text() const = 0;

  // Adds options and arguments. An option takes its unit as its type name, "MM",
  // and shows its default.
  virtual void define(CLI::App& app) = 0;

  // Whether it reads record files, and elements of both styles in one if --mixed asks for it.
  virtual bool takesMixed() const { return true; }

  // Does the work once the options are read. May throw Failure.
  virtual Exit run(Session& session) = 0;

 protected:
  Command() = default;
};

// All commands in the order in which help names them.
std::vector<std::unique_ptr<Command>> makeCommands();

// One maker for each command.
std::unique_ptr<Command> makeInfo();
std::unique_ptr<Command> makeList();
std::unique_ptr<Command> makeShow();
std::unique_ptr<Command> makeMeasure();
std::unique_ptr<Command> makeCheck();
std::unique_ptr<Command> makeDiff();
std::unique_ptr<Command> makeClash();
std::unique_ptr<Command> makeConvert();
std::unique_ptr<Command> makeExtract();
std::unique_ptr<Command> makeSplit();
std::unique_ptr<Command> makeMerge();
std::unique_ptr<Command> makeEdit();
std::unique_ptr<Command> makeExport();
std::unique_ptr<Command> makeImport();
std::unique_ptr<Command> makeView();
std::unique_ptr<Command> makeCompletion();
std::unique_ptr<Command> makeExplain();
std::unique_ptr<Command> makeVersion();

}  // namespace VeskTool

#endif
