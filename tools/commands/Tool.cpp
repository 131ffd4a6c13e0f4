// SPDX-License-Identifier: MIT
#include "commands/Tool.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "commands/Help.h"
#include "export/Formats.h"
#include "files/SelectionOptions.h"
#include "terminal/Nearest.h"
#include "terminal/Terminal.h"

namespace VeskTool {
namespace {

// When the reader of the answer has gone before its end, as other programs end by
// their signal: whatever the answer would have been, it is not "nothing found".
constexpr Exit kClosedPipe{141};

using Commands = std::vector<std::unique_ptr<Command>>;

Command* commandNamed(const Commands& commands, const std::string& name) {
  for (const auto& command : commands) {
    if (command->text().name == name) return command.get();
  }
  return nullptr;
}

Command& needCommand(const Commands& commands, const std::string& name) {
  if (Command* command = commandNamed(commands, name)) return *command;
  std::vector<std::string> names{"help"};
  for (const auto& command : commands) names.emplace_back(command->text().name);
  const std::string nearest = didYouMean(name, names);
  throw Failure(Exit::kUsage, "there is no command \"" + name + "\"",
                nearest.empty() ? "vesk --help lists them all" : nearest);
}

void defineCommon(CLI::App& app, const Command& command, CommonOptions& options) {
  const std::vector<std::string> when{"auto", "always", "never"};
  const std::vector<std::string> progress{"auto", "always", "never", "json"};
  const std::string group = "Everywhere";
  app.add_flag("-q,--quiet", options.quiet, "errors only")->group(group);
  app.add_flag("-v,--verbose", options.verbose, "say more")->group(group);
  app.add_option("--color", options.colour, "auto, always or never")
      ->type_name("WHEN")
      ->check(CLI::IsMember(when))
      ->capture_default_str()
      ->group(group);
  app.add_option("--progress", options.progress, "auto, always, never or json")
      ->type_name("WHEN")
      ->check(CLI::IsMember(progress))
      ->capture_default_str()
      ->group(group);
  if (command.takesMixed()) {
    app.add_flag("--mixed", options.mixed,
                 "read on where a file goes over to the other style, as joined files do");
  }
  app.set_help_flag();
  app.add_flag_callback(
         "-h,--help", [] {}, "this text")
      ->group(group);
}

std::vector<std::string> optionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
  }
  return names;
}

// What is wrong with a value, without the parser's own words for it.
std::string plainUsage(const std::string& text) {
  constexpr std::string_view kConvert = "Could not convert: ";
  constexpr std::string_view kEquals = " = ";
  const std::size_t equals = text.rfind(kEquals);
  if (text.starts_with(kConvert) && equals != text.npos) {
    return text.substr(kConvert.size(), equals - kConvert.size()) + ": \"" +
           text.substr(equals + kEquals.size()) + "\" is not a whole number of 0 or more";
  }
  const std::size_t list = text.rfind(" not in {");
  const std::size_t colon = text.find(": ");
  if (list != text.npos && colon != text.npos && text.ends_with('}')) {
    std::string names = text.substr(list + 9, text.size() - list - 10);
    for (std::size_t i = names.find(','); i != names.npos; i = names.find(',', i + 2)) {
      names.insert(i + 1, 1, ' ');
    }
    return text.substr(0, colon + 2) + '"' + text.substr(colon + 2, list - colon - 2) +
           "\" is not one of these: " + names;
  }
  const std::size_t range = text.find(" not in range ");
  const std::size_t value = text.find("Value ");
  if (range != text.npos && value != text.npos && value < range) {
    // Without an upper one the largest double stands there.
    constexpr std::size_t kLongBounds = 40;
    const std::string bounds = text.substr(range + 14);
    const std::string what =
        bounds.size() > kLongBounds ? "whole number of 0 or more" : "whole number in " + bounds;
    return text.substr(0, value) + '"' + text.substr(value + 6, range - value - 6) +
           "\" is not a " + what;
  }
  const std::size_t missing = text.find(" required ");
  if (text.ends_with(" missing") && missing != text.npos && colon != text.npos) {
    return text.substr(0, colon) + " needs a value";
  }
  return text;
}

// What is wrong with the words, as a Failure.
Failure usageFailure(const CLI::ParseError& error, const CLI::App& app, std::string_view command) {
  const std::string more = "vesk " + std::string(command) + " --help explains its options";
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    const std::vector<std::string> words = app.remaining();
    const std::string& word = words.empty() ? std::string() : words.front();
    if (!word.starts_with('-') || word == "-") {
      return {Exit::kUsage, "\"" + word + "\" is one argument too many", more};
    }
    const std::string name = word.substr(0, word.find('='));
    const std::string nearest = didYouMean(name, optionNames(app));
    return {Exit::kUsage, "there is no option \"" + name + "\"", nearest.empty() ? more : nearest};
  }
  return {Exit::kUsage, plainUsage(error.what()), more};
}

// Colours and progress may be asked for before the command too.
struct FirstWords {
  std::vector<std::string> options;
  std::string command;  // empty if there is none
  std::vector<std::string> rest;
};

FirstWords splitWords(const std::vector<std::string>& words) {
  FirstWords first;
  std::size_t i = 0;
  for (; i < words.size() && words[i].starts_with('-'); ++i) {
    first.options.push_back(words[i]);
    const bool takesValue = words[i] == "--color" || words[i] == "--progress";
    if (takesValue && i + 1 < words.size()) first.options.push_back(words[++i]);
  }
  if (i < words.size()) first.command = words[i++];
  for (; i < words.size(); ++i) first.rest.push_back(words[i]);
  return first;
}

bool contains(const std::vector<std::string>& words, std::string_view one) {
  for (const std::string& word : words) {
    if (word == one) return true;
  }
  return false;
}

// Prints what is asked about the tool itself. False if nothing is.
bool answerAboutTool(const FirstWords& first, const Commands& commands, TextSink& answer) {
  if (first.command.empty() &&
      (contains(first.options, "-h") || contains(first.options, "--help"))) {
    answer.write(helpOfTool(commands));
  } else if (first.command.empty() && contains(first.options, "--version")) {
    answer.write("vesk " VESK_VERSION "\n");
  } else if (first.command == "help") {
    if (first.rest.empty()) {
      answer.write(helpOfTool(commands));
    } else if (first.rest.front() == "help") {
      answer.write(
          "vesk help            lists all commands\n"
          "vesk help COMMAND    shows the examples and options of a command\n"
          "vesk help selection  explains how to choose elements\n"
          "vesk help formats    explains what other formats keep and lose\n");
    } else if (first.rest.front() == "selection") {
      answer.write(selectionHelp());
    } else if (first.rest.front() == "formats") {
      answer.write(formatsHelp());
    } else {
      CommonOptions unused;
      CLI::App app;
      Command& command = needCommand(commands, first.rest.front());
      command.define(app);
      defineCommon(app, command, unused);
      answer.write(helpOfCommand(command.text(), app));
    }
  } else {
    return false;
  }
  answer.flush();
  return true;
}

Exit runCommand(const FirstWords& first, Command& command, TextSink& answer, TextSink* messages,
                CommonOptions& options, std::unique_ptr<Progress>& progress) {
  CLI::App app;
  // On Windows too a word that begins with "/" is a file.
  app.allow_windows_style_options(false);
  command.define(app);
  defineCommon(app, command, options);
  std::vector<std::string> words = first.options;
  words.insert(words.end(), first.rest.begin(), first.rest.end());
  // A place in the standard input looks like an option.
  for (std::string& word : words) {
    if (word.starts_with("-:")) word.replace(0, 1, shownName("-"));
  }
  const auto separator = std::find(words.begin(), words.end(), "--");
  const std::vector<std::string> beforeSeparator(words.begin(), separator);
  if (contains(beforeSeparator, "-h") || contains(beforeSeparator, "--help")) {
    answer.write(helpOfCommand(command.text(), app));
    answer.flush();
    return Exit::kDone;
  }
  std::vector<std::string> reversed(words.rbegin(), words.rend());
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& error) {
    throw usageFailure(error, app, command.text().name);
  }
  progress =
      std::make_unique<Progress>("vesk " + std::string(command.text().name), progressMode(options));
  ErrorStream errors(*progress);
  Session session(options, answer, messages != nullptr ? *messages : errors, *progress);
  try {
    const Exit exit = command.run(session);
    session.sayRest();
    answer.flush();
    return exit;
  } catch (const Failure&) {
    session.sayRest();
    throw;
  }
}

}  // namespace

Exit runTool(const std::vector<std::string>& words, TextSink& answer, TextSink* messages) {
  CommonOptions options;
  std::unique_ptr<Progress> progress;
  const auto complain = [&](const std::string& text, const std::string& hint) {
    Progress none("", Progress::Mode::kNever);
    ErrorStream errors(progress ? *progress : none);
    TextBuffer unused;
    Session(options, unused, messages != nullptr ? *messages : errors, none).error(text, hint);
  };
  try {
    const Commands commands = makeCommands();
    const FirstWords first = splitWords(words);
    if (answerAboutTool(first, commands, answer)) return Exit::kDone;
    if (first.command.empty()) {
      throw Failure(Exit::kUsage, "a command is missing", "vesk --help lists them all");
    }
    Command& command = needCommand(commands, first.command);
    return runCommand(first, command, answer, messages, options, progress);
  } catch (const Failure& failure) {
    complain(failure.what(), failure.hint);
    return failure.exit;
  } catch (const ClosedPipe&) {
    return kClosedPipe;
  } catch (const Interrupted&) {
    return Exit::kInterrupted;
  } catch (const std::bad_alloc&) {
    complain("there is not enough memory", "");
    return Exit::kFault;
  } catch (const std::exception& error) {
    complain(std::string("unexpected: ") + error.what(), "this is a bug in vesk");
    return Exit::kFault;
  }
}

}  // namespace VeskTool
