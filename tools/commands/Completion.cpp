// SPDX-License-Identifier: MIT
#include <algorithm>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "elements/Kinds.h"
#include "findings/Catalogue.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

using Names = std::vector<std::string>;

// An option that takes a value.
struct ValueWords {
  std::string option;   // "--format"
  Names values;         // empty: any
  bool isList = false;  // several, with commas
};

struct CommandWords {
  std::string name;
  std::string summary;
  Names options;                   // "--json", "--headers"
  std::vector<ValueWords> values;  // of those that take one
  Names arguments;                 // what may stand alone; empty: files
};

const Names kShells{"bash", "zsh", "fish", "powershell"};

// What IsMember has put behind the type: "FORMAT:{text,json}".
Names membersOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t begin = type.find(":{");
  const std::size_t end = type.rfind('}');
  if (begin == type.npos || end == type.npos || end < begin) return {};
  return splitAt(type.substr(begin + 2, end - begin - 2), ',');
}

Names codes() {
  Names names;
  for (const CodeText& each : catalogue()) names.emplace_back(each.code);
  return names;
}

Names kinds() {
  Names words;
  for (const std::string& word : Vesk::kindWords()) {
    if (word.find(' ') == word.npos) words.push_back(word);
  }
  return words;
}

ValueWords valuesOf(const std::string& command, const CLI::Option& option,
                    const std::string& name) {
  if (name == "only") {
    Names words = kinds();
    const Names known = codes();
    if (command == "check") words.insert(words.end(), known.begin(), known.end());
    return {"--" + name, words, true};
  }
  if (name == "ignore" && command == "check") return {"--" + name, codes(), true};
  if (name == "by" && command == "measure") {
    return {"--" + name, {"header", "group", "kind", "size", "item", "spec"}, true};
  }
  return {"--" + name, membersOf(option), false};
}

CommandWords wordsOf(Command& command) {
  const CommandText text = command.text();
  CommandWords words{std::string(text.name), std::string(text.summary), {}, {}, {}};
  CLI::App app;
  app.set_help_flag();
  command.define(app);
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional()) words.arguments = membersOf(*option);
    // Every option is long, but for those without a long name.
    for (const std::string& name : option->get_lnames()) {
      words.options.push_back("--" + name);
      if (option->get_items_expected_max() == 0 || option->get_type_size_max() == 0) continue;
      words.values.push_back(valuesOf(words.name, *option, name));
    }
  }
  if (words.name == "explain") words.arguments = codes();
  for (const char* name : {"--quiet", "--verbose", "--color", "--progress", "--help"}) {
    words.options.emplace_back(name);
  }
  if (command.takesMixed()) words.options.emplace_back("--mixed");
  words.values.push_back({"--color", {"auto", "always", "never"}});
  words.values.push_back({"--progress", {"auto", "always", "never", "json"}});
  return words;
}

std::vector<CommandWords> allCommands() {
  std::vector<CommandWords> all;
  Names names;
  for (const auto& command : makeCommands()) {
    all.push_back(wordsOf(*command));
    names.push_back(all.back().name);
  }
  names.insert(names.end(), {"help", "selection"});
  all.push_back({"help", "examples and options of a command", {}, {}, names});
  return all;
}

std::string joined(const Names& names, std::string_view separator = " ") {
  std::string text;
  for (const std::string& name : names) {
    if (!text.empty()) text += separator;
    text += name;
  }
  return text;
}

std::string namesOf(const std::vector<CommandWords>& commands) {
  Names names;
  for (const CommandWords& each : commands) names.push_back(each.name);
  return joined(names);
}

std::string bash(const std::vector<CommandWords>& commands) {
  std::string text =
      "# Completion for bash: eval \"$(vesk completion bash)\"\n"
      "_vesk() {\n"
      "  local word=\"${COMP_WORDS[COMP_CWORD]}\" before=\"${COMP_WORDS[COMP_CWORD-1]}\"\n"
      "  local options='' arguments='' values='' list=''\n"
      "  if ((COMP_CWORD == 1)); then\n"
      "    COMPREPLY=($(compgen -W '" +
      namesOf(commands) +
      "' -- \"$word\"))\n"
      "    return\n"
      "  fi\n"
      "  if [[ \"$word\" == = ]]; then word=''; fi\n"
      "  if [[ \"$before\" == = ]]; then before=\"${COMP_WORDS[COMP_CWORD-2]}\"; fi\n"
      "  case \"${COMP_WORDS[1]}\" in\n";
  for (const CommandWords& each : commands) {
    text += "    " + each.name + ") options='" + joined(each.options) + "'";
    if (!each.arguments.empty()) text += " arguments='" + joined(each.arguments) + "'";
    text += " ;;\n";
  }
  text +=
      "  esac\n"
      "  case \"${COMP_WORDS[1]} $before\" in\n";
  for (const CommandWords& each : commands) {
    for (const ValueWords& option : each.values) {
      if (option.values.empty()) continue;
      text += "    '" + each.name + ' ' + option.option + "') values='" + joined(option.values) +
              (option.isList ? "' list=yes ;;\n" : "' ;;\n");
    }
  }
  text +=
      "  esac\n"
      "  if [[ -n \"$list\" && \"$word\" == *,* ]]; then\n"
      "    COMPREPLY=($(compgen -P \"${word%,*},\" -W \"$values\" -- \"${word##*,}\"))\n"
      "  elif [[ -n \"$values\" ]]; then\n"
      "    COMPREPLY=($(compgen -W \"$values\" -- \"$word\"))\n"
      "  elif [[ \"$word\" == -* ]]; then\n"
      "    COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
      "  elif [[ -n \"$arguments\" ]]; then\n"
      "    COMPREPLY=($(compgen -W \"$arguments\" -- \"$word\"))\n"
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
      "  case \"$words[2] $words[CURRENT-1]\" in\n";
  for (const CommandWords& each : commands) {
    for (const ValueWords& option : each.values) {
      if (option.values.empty()) continue;
      text += "    '" + each.name + ' ' + option.option + "') " +
              (option.isList ? "compset -P '*,'; " : "") + "compadd -- " + joined(option.values) +
              "; return ;;\n";
    }
  }
  text +=
      "  esac\n"
      "  case \"$words[2]\" in\n";
  for (const CommandWords& each : commands) {
    Names words = each.options;
    words.insert(words.end(), each.arguments.begin(), each.arguments.end());
    text += "    " + each.name + ") compadd -- " + joined(words) + " ;;\n";
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

// What follows the name of an option: its values, or files.
std::string fishValues(const ValueWords& option) {
  if (option.values.empty()) return " -r";
  if (!option.isList) return " -x -a '" + joined(option.values) + "'";
  return " -x -a \"(__fish_append , " + joined(option.values) + ")\"";
}

std::string fish(const std::vector<CommandWords>& commands) {
  std::string text = "# Completion for fish: vesk completion fish | source\n";
  for (const CommandWords& each : commands) {
    text += "complete -c vesk -n __fish_use_subcommand -f -a " + each.name + " -d '" +
            each.summary + "'\n";
    const std::string line = "complete -c vesk -n '__fish_seen_subcommand_from " + each.name + "'";
    for (const std::string& option : each.options) {
      const auto found = std::find_if(each.values.begin(), each.values.end(),
                                      [&](const ValueWords& of) { return of.option == option; });
      text += line + " -l " + option.substr(2) +
              (found == each.values.end() ? "" : fishValues(*found)) + '\n';
    }
    if (!each.arguments.empty()) text += line + " -f -a '" + joined(each.arguments) + "'\n";
  }
  return text;
}

std::string quoted(const Names& names) {
  return names.empty() ? "" : "'" + joined(names, "','") + "'";
}

std::string powershell(const std::vector<CommandWords>& commands) {
  std::string text =
      "# Completion for PowerShell: vesk completion powershell | Out-String | Invoke-Expression\n"
      "Register-ArgumentCompleter -Native -CommandName vesk -ScriptBlock {\n"
      "  param($word, $line, $position)\n"
      "  $options = @{\n";
  for (const CommandWords& each : commands) {
    text += "    '" + each.name + "' = @(" + quoted(each.options) + ")\n";
  }
  text += "  }\n  $arguments = @{\n";
  for (const CommandWords& each : commands) {
    if (!each.arguments.empty()) {
      text += "    '" + each.name + "' = @(" + quoted(each.arguments) + ")\n";
    }
  }
  text += "  }\n  $values = @{\n";
  for (const CommandWords& each : commands) {
    for (const ValueWords& option : each.values) {
      if (option.values.empty()) continue;
      text += "    '" + each.name + ' ' + option.option + "' = @(" + quoted(option.values) + ")\n";
    }
  }
  text +=
      "  }\n"
      // What stands before the cursor; a blank at the end is no part of the command.
      "  $typed = \"$line\"\n"
      "  $length = $position - $line.Extent.StartOffset\n"
      "  if ($length -lt $typed.Length) { $typed = $typed.Substring(0, $length) }\n"
      "  $words = @($typed -split '\\s+' | Where-Object { $_ -ne '' })\n"
      "  if ($length -le $typed.Length -and $typed -notmatch '\\s$') {\n"
      "    $words = @($words | Select-Object -SkipLast 1)\n"
      "  }\n"
      "  $last = $words[-1]\n"
      "  if ($words.Count -lt 2) { $found = $options.Keys | Sort-Object }\n"
      "  elseif ($values.ContainsKey(\"$($words[1]) $last\")) { $found = $values[\"$($words[1]) "
      "$last\"] }\n"
      "  elseif ($word.StartsWith('-')) { $found = $options[$words[1]] }\n"
      "  else { $found = $arguments[$words[1]] }\n"
      "  $start = ''\n"
      "  $end = $word\n"
      "  if ($word.Contains(',')) {\n"
      "    $start = $word.Substring(0, $word.LastIndexOf(',') + 1)\n"
      "    $end = $word.Substring($start.Length)\n"
      "  }\n"
      "  $found | Where-Object { $_ -like \"$end*\" } | ForEach-Object {\n"
      "    [System.Management.Automation.CompletionResult]::new(\"$start$_\", $_, "
      "'ParameterValue', $_)\n"
      "  }\n"
      "}\n";
  return text;
}

class CompletionCommand : public Command {
 public:
  CommandText text() const override {
    return {"completion",
            Group::kHelp,
            "SHELL",
            "completes commands, options and values",
            "",
            {{"eval \"$(vesk completion bash)\"", "in ~/.bashrc"},
             {"eval \"$(vesk completion zsh)\"", "in ~/.zshrc, after compinit"},
             {"vesk completion fish | source", "in config.fish"},
             {"vesk completion powershell | Out-String | Invoke-Expression", "in $PROFILE"}}};
  }

  bool takesMixed() const override { return false; }

  void define(CLI::App& app) override {
    app.add_option("SHELL", shell_, "bash, zsh, fish or powershell")
        ->required()
        ->check(CLI::IsMember(kShells));
  }

  Exit run(Session& session) override {
    const std::vector<CommandWords> commands = allCommands();
    if (shell_ == "bash") session.out().write(bash(commands));
    if (shell_ == "zsh") session.out().write(zsh(commands));
    if (shell_ == "fish") session.out().write(fish(commands));
    if (shell_ == "powershell") session.out().write(powershell(commands));
    return Exit::kDone;
  }

 private:
  std::string shell_;
};

}  // namespace

std::unique_ptr<Command> makeCompletion() { return std::make_unique<CompletionCommand>(); }

}  // namespace VeskTool
