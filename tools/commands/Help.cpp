// SPDX-License-Identifier: MIT
#include "commands/Help.h"

#include <algorithm>

#include "text/Table.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

constexpr std::size_t kHelpWidth = 80;

// Behind a colon stands what values are allowed, as the description says too; in brackets
// it is of the type itself: A[:B].
std::string typeOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  std::size_t end = type.find(':');
  while (end != type.npos && end > 0 && type[end - 1] == '[') end = type.find(':', end + 1);
  return type.substr(0, end);
}

std::string leftOf(const CLI::Option& option) {
  std::string left;
  if (option.get_positional()) {
    left = option.get_name();
  } else {
    for (const std::string& name : option.get_snames()) left += (left.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames()) {
      left += (left.empty() ? "    --" : ", --") + name;
    }
    const std::string type = typeOf(option);
    if (!type.empty()) left += ' ' + type;
  }
  return left;
}

void appendOption(std::string& to, const CLI::Option& option, std::size_t width) {
  std::string right = option.get_description();
  if (!option.get_default_str().empty()) right += " [" + option.get_default_str() + "]";
  const std::string left = "  " + leftOf(option);
  std::string lines = wrapped(right, width, kHelpWidth);
  if (left.size() + 2 <= width) {
    lines.replace(0, left.size(), left);
  } else {
    lines = left + '\n' + lines;
  }
  to += lines;
}

void appendOptions(std::string& to, std::string_view title,
                   const std::vector<const CLI::Option*>& options) {
  if (options.empty()) return;
  std::size_t width = 0;
  for (const CLI::Option* option : options) width = std::max(width, leftOf(*option).size() + 4);
  to.append("\n").append(title).append("\n");
  for (const CLI::Option* option : options) {
    appendOption(to, *option, std::min<std::size_t>(width, 28));
  }
}

}  // namespace

std::string_view nameOf(Group group) {
  switch (group) {
    case Group::kLook:
      return "Inspect";
    case Group::kJudge:
      return "Check";
    case Group::kChange:
      return "Change";
    case Group::kSee:
      return "Show";
    case Group::kHelp:
      break;
  }
  return "Help";
}

std::string helpOfTool(const std::vector<std::unique_ptr<Command>>& commands) {
  std::string help =
      "Usage: vesk COMMAND [OPTION]... FILE...\n"
      "Inspects, checks, compares and converts record files of plant geometry.\n"
      "\n";
  std::string_view last;
  for (const auto& command : commands) {
    const CommandText text = command->text();
    const std::string_view group = nameOf(text.group);
    help += padded(group == last ? "" : group, 8, Table::Side::kLeft);
    std::string line = std::string(text.name) + ' ' + std::string(text.arguments);
    help += padded(line, 25, Table::Side::kLeft) + std::string(text.summary) + '\n';
    last = group;
  }
  help +=
      "        help [COMMAND]           this, or examples and options of a command\n"
      "Everywhere: -q --quiet, -v --verbose, --color WHEN, --progress WHEN, -h --help\n"
      "Exit code: 0 done; 1 the answer is no; 2 usage; 3 input; 4 output; 130 stopped\n";
  return help;
}

std::string helpOfCommand(const CommandText& text, const CLI::App& app) {
  std::string help = "Examples:\n";
  std::size_t width = 0;
  for (const Example& example : text.examples) width = std::max(width, example.line.size());
  for (const Example& example : text.examples) {
    help += "  " + padded(example.line, width, Table::Side::kLeft) + "  " +
            std::string(example.what) + '\n';
  }
  std::string usage = "vesk " + std::string(text.name) + " [OPTION]... ";
  usage += text.arguments;
  usage.erase(usage.find_last_not_of(' ') + 1);
  help += "\nUsage: " + usage + '\n';
  help += wrapped(text.summary, 0, kHelpWidth);
  if (!text.details.empty()) help += wrapped(text.details, 0, kHelpWidth);

  std::vector<const CLI::Option*> arguments;
  std::vector<const CLI::Option*> own;
  std::vector<const CLI::Option*> common;
  std::vector<std::pair<std::string, std::vector<const CLI::Option*>>> groups;
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional()) {
      arguments.push_back(option);
    } else if (option->get_group() == "Everywhere") {
      common.push_back(option);
    } else if (option->get_group() == "Options") {
      own.push_back(option);
    } else {
      if (groups.empty() || groups.back().first != option->get_group()) {
        groups.push_back({option->get_group(), {}});
      }
      groups.back().second.push_back(option);
    }
  }
  appendOptions(help, "Arguments:", arguments);
  appendOptions(help, "Options:", own);
  for (const auto& [name, options] : groups) appendOptions(help, name + ':', options);
  appendOptions(help, "Everywhere:", common);
  return help;
}

}  // namespace VeskTool
