// SPDX-License-Identifier: MIT
// Command lines: any options of any command, with values that suit and that do not, over any
// record file. Each ends with one of the exit codes, says why it failed, leaves nothing half
// written, and leaves no new file if the line itself was wrong.
//
//   1 byte the command; 1 byte how many words; for each 1 byte which option or input, and for a
//   value 1 byte which, or a text of up to 15 bytes behind its length; then the record file
#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "Tool.h"
#include "commands/Command.h"

using VeskFuzz::check;
using VeskFuzz::Workplace;

namespace {

constexpr std::array kValues = {
    "0",         "1",       "-1",          "2",          "0.5",       "1e300",
    "1e-300",    "nan",     "10000",       "0,0,0",      "0,0,0,100", "z,30",
    "x,90",      "P-1001",  "P-*",         "P-1001 01",  "cylinder",  "pipe,bend",
    "header",    "group",   "kind",        "size",       "grid",      "counter",
    "elements",  "volume",  "100..200",    "..50",       "1-3",       "fixed",
    "token",     "json",    "csv",         "text",       "sarif",     "html",
    "svg",       "png",     "iso",         "top",        "draft",     "fine",
    "new.dat",   "new.glb", "new.gltf",    "new.obj",    "new.stl",   "new.ply",
    "new.step",  "new.ifc", "new.dxf",     "new.sqlite", "new.html",  "new.svg",
    "new.png",   "new",     "new-*.dat",   "new.bcf",    "new.xlsx",  "in.dat",
    "other.dat", "in.pcf",  "nothing.dat", "320x240",    "white",     "#1c2430",
    "mm",        "m",       "renumber",    "rename",     "keep",      "refuse",
    "always",    "never",   "auto",        "all",        "warning",   "-1,-1,-1,1,1,1",
};

constexpr std::string_view kPlant =
    "P-1001  01001    00c 0 0 0,1000 0 0,114.3\n"
    "P-1001  01002    00t 1000 305 0,1000 0 0,1305 305 0,114.3\n"
    "STEEL   01001    00b 0 0 -110,500 0 0,0 100 0,0 0 50\n";

constexpr std::string_view kPiping =
    "UNITS-BORE MM\nUNITS-CO-ORDS MM\nPIPELINE-REFERENCE P-1\n"
    "PIPE\n END-POINT 0 0 0 100\n END-POINT 500 0 0 100\n";

// Nothing that is a way out of the folder, or the standard input.
std::string harmless(std::string text) {
  for (char& c : text) {
    if (c == '/' || c == '\0' || c == '~') c = '_';
  }
  if (text.starts_with('-') && (text.size() < 2 || text[1] < '0' || text[1] > '9')) text[0] = '_';
  return text.find("..") == 0 && text.size() < 3 ? "_" : text;
}

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

bool has(const std::vector<std::string>& words, std::string_view one, std::string_view other = "") {
  for (const std::string& word : words) {
    if (word == one || word == other) return true;
  }
  return false;
}

std::vector<std::string> lineOf(VeskFuzz::Bytes& bytes) {
  auto commands = VeskTool::makeCommands();
  VeskTool::Command& command = *commands[static_cast<std::size_t>(bytes.byte()) % commands.size()];
  CLI::App app;
  command.define(app);
  std::vector<const CLI::Option*> options;
  for (const CLI::Option* option : app.get_options()) {
    if (!option->get_lnames().empty()) options.push_back(option);
  }
  const std::string name(command.text().name);
  std::vector<std::string> words{name};
  for (int left = bytes.below(12); left > 0; --left) {
    const std::size_t choice = bytes.byte();
    if (options.empty() || choice % 4 == 0) {
      words.emplace_back(name == "import" ? "in.pcf" : choice % 8 == 0 ? "in.dat" : "other.dat");
      continue;
    }
    const CLI::Option& option = *options[choice / 4 % options.size()];
    const std::string& word = option.get_lnames().front();
    // It would go on for ever.
    if (word == "watch") continue;
    words.push_back("--" + word);
    if (!takesValue(option)) continue;
    const std::size_t value = bytes.byte();
    words.push_back(value < 224 ? kValues[value % kValues.size()] : harmless(bytes.text(15)));
  }
  // No browser.
  const bool shows = name == "view" || has(words, "--view");
  if (shows && !has(words, "-o", "--output")) words.insert(words.end(), {"-o", "new.svg"});
  return words;
}

bool isThere(const char* name) { return std::filesystem::exists(name); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Workplace workplace;
  VeskFuzz::Bytes bytes(data, size);
  const std::vector<std::string> words = lineOf(bytes);
  const std::string records = bytes.rest();
  workplace.clear();
  Workplace::put("in.dat", records.empty() ? kPlant : records);
  Workplace::put("other.dat", kPlant);
  Workplace::put("in.pcf", kPiping);
  const Workplace::Outcome outcome = workplace.run(words);
  if (outcome.code != 2) return 0;
  for (const char* name : kValues) {
    if (std::string_view(name).starts_with("new") && isThere(name)) {
      check(false, "a wrong line writes nothing", words.front() + ' ' + name);
    }
  }
  return 0;
}
