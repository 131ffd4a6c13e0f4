// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "commands/Command.h"
#include "terminal/Exit.h"

namespace VeskTool {
namespace {

struct CommandWords {
  std::string name;
  std::string summary;
  std::string options;  // "--json --headers"
};

// Every option is long, but for those without a long name.
std::string optionsOf(Command& command) {
  CLI::App app;
  app.set_help_flag();
  command.define(app);
  std::string words;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) words += "--" + name + ' ';
  }
  return words + "--quiet --verbose --color --progress --help";
}

std::vector<CommandWords> allCommands() {
  std::vector<CommandWords> all;
  for (const auto& command : makeCommands()) {
    const CommandText text = command->text();
    all.push_back({std::string(text.name), std::string(text.summary), optionsOf(*command)});
  }
  all.push_back({"help", "examples and options of a command", ""});
  return all;
}

std::string namesOf(const std::vector<CommandWords>& commands) {
  std::string names;
  for (const CommandWords& each : commands) names += (names.empty() ? "" : " ") + each.name;
  return names;
}

std::string bash(const std::vector<CommandWords>& commands) {
  std::string text =
      "# Completion for bash: eval \"$(vesk completion bash)\"\n"
      "_vesk() {\n"
      "  local word=\"${COMP_WORDS[COMP_CWORD]}\" words=''\n"
      "  if ((COMP_CWORD == 1)); then\n"
      "    COMPREPLY=($(compgen -W '" +
      namesOf(commands) +
      "' -- \"$word\"))\n"
      "    return\n"
      "  fi\n"
      "  case \"${COMP_WORDS[1]}\" in\n";
  for (const CommandWords& each : commands) {
    const std::string words = each.name == "help" ? namesOf(commands) : each.options;
    text += "    " + each.name + ") words='" + words + "' ;;\n";
  }
  text +=
      "  esac\n"
      "  if [[ \"$word\" == -* || \"${COMP_WORDS[1]}\" == help ]]; then\n"
      "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
      "  else\n"
      "    COMPREPLY=($(compgen -f -- \"$word\"))\n"
      "  fi\n"
      "}\n"
      "complete -o filenames -F _vesk vesk\n";
  return text;
}

std::string zsh(const std::vector<CommandWords>& commands) {
  std::string text =
      "#compdef vesk\n"
      "# Completion for zsh: eval \"$(vesk completion zsh)\"\n"
      "_vesk() {\n"
      "  local -a commands=(\n";
  for (const CommandWords& each : commands) {
    text += "    '" + each.name + ':' + each.summary + "'\n";
  }
  text +=
      "  )\n"
      "  if ((CURRENT == 2)); then\n"
      "    _describe command commands\n"
      "    return\n"
      "  fi\n"
      "  case \"$words[2]\" in\n";
  for (const CommandWords& each : commands) {
    const std::string words = each.name == "help" ? namesOf(commands) : each.options;
    text += "    " + each.name + ") compadd -- " + words + " ;;\n";
  }
  text +=
      "  esac\n"
      "  _files\n"
      "}\n"
      "if [[ \"$funcstack[1]\" == _vesk ]]; then\n"
      "  _vesk \"$@\"\n"  // loaded at the first use, from a folder of completions
      "else\n"
      "  compdef _vesk vesk\n"
      "fi\n";
  return text;
}

std::string fish(const std::vector<CommandWords>& commands) {
  std::string text = "# Completion for fish: vesk completion fish | source\n";
  for (const CommandWords& each : commands) {
    text += "complete -c vesk -n __fish_use_subcommand -f -a " + each.name + " -d '" +
            each.summary + "'\n";
    std::string_view options = each.options;
    while (!options.empty()) {
      const std::string_view option = options.substr(0, options.find(' '));
      options.remove_prefix(std::min(options.size(), option.size() + 1));
      text += "complete -c vesk -n '__fish_seen_subcommand_from " + each.name + "' -l " +
              std::string(option.substr(2)) + '\n';
    }
  }
  text +=
      "complete -c vesk -n '__fish_seen_subcommand_from help' -f -a '" + namesOf(commands) + "'\n";
  return text;
}

class CompletionCommand : public Command {
 public:
  CommandText text() const override {
    return {"completion",
            Group::kHelp,
            "SHELL",
            "a script that completes commands and options",
            "",
            {{"eval \"$(vesk completion bash)\"", "in ~/.bashrc"},
             {"eval \"$(vesk completion zsh)\"", "in ~/.zshrc, behind compinit"},
             {"vesk completion fish | source", "in config.fish"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("SHELL", shell_, "bash, zsh or fish")
        ->required()
        ->check(CLI::IsMember(std::vector<std::string>{"bash", "zsh", "fish"}));
  }

  Exit run(Session& session) override {
    const std::vector<CommandWords> commands = allCommands();
    if (shell_ == "bash") session.out().write(bash(commands));
    if (shell_ == "zsh") session.out().write(zsh(commands));
    if (shell_ == "fish") session.out().write(fish(commands));
    return Exit::kDone;
  }

 private:
  std::string shell_;
};

}  // namespace

std::unique_ptr<Command> makeCompletion() { return std::make_unique<CompletionCommand>(); }

}  // namespace VeskTool
