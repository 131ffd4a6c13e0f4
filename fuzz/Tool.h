// SPDX-License-Identifier: MIT
#ifndef VESK_FUZZ_TOOL_H
#define VESK_FUZZ_TOOL_H

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Fuzz.h"
#include "commands/Tool.h"

namespace VeskFuzz {

// The tool in a folder of its own, which is the current one.
class Workplace {
 public:
  Workplace() {
    // What waits for the standard input gets nothing.
    static_cast<void>(!std::freopen("/dev/null", "r", stdin));
    std::string name = (std::filesystem::temp_directory_path() / "vesk-fuzz-XXXXXX").string();
    check(mkdtemp(name.data()) != nullptr, "there is a folder to work in", name);
    folder_ = name;
    std::filesystem::current_path(folder_);
  }
  ~Workplace() {
    std::error_code unused;
    std::filesystem::current_path(folder_.parent_path(), unused);
    std::filesystem::remove_all(folder_, unused);
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;

  struct Outcome {
    int code = 0;
    std::string answer;
    std::string messages;
  };

  // Every command ends with one of its exit codes, says why if it failed, and leaves nothing
  // half written.
  Outcome run(const std::vector<std::string>& words) {
    VeskTool::TextBuffer answer;
    VeskTool::TextBuffer messages;
    Outcome outcome;
    outcome.code = static_cast<int>(VeskTool::runTool(words, answer, &messages));
    outcome.answer = answer.text();
    outcome.messages = messages.text();
    std::string line;
    for (const std::string& word : words) line += '\'' + word + "' ";
    check(outcome.code >= 0 && outcome.code <= 4, "an exit code is one of those of the manual",
          line + outcome.messages);
    check(outcome.code < 2 || outcome.messages.find("error: ") != std::string::npos,
          "a failure has a reason", line);
    for (const std::string& name : names()) {
      check(name.find("part-") == std::string::npos && name.find(".old-") == std::string::npos,
            "nothing is left half written", line + name);
    }
    return outcome;
  }

  static void put(const std::string& name, std::string_view bytes) {
    std::ofstream(name, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  static bool has(const std::string& name) { return std::filesystem::is_regular_file(name); }

  static std::string get(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  void clear() const {
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
      std::filesystem::remove_all(entry.path());
  }

 private:
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_))
      all.push_back(entry.path().filename().string());
    return all;
  }

  std::filesystem::path folder_;
};

}  // namespace VeskFuzz

#endif
