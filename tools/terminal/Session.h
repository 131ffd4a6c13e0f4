// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_SESSION_H
#define VESK_TOOLS_SESSION_H

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "findings/Findings.h"
#include "terminal/Look.h"
#include "terminal/Progress.h"
#include "terminal/Streams.h"

namespace VeskTool {

// The options that every command has.
struct CommonOptions {
  std::string colour = "auto";
  std::string progress = "auto";
  bool quiet = false;
  bool verbose = false;
  bool mixed = false;  // for those that read records: both styles in one file
};

// What a command works with: the answer (standard output), the messages
// (standard error) and the progress.
class Session {
 public:
  Session(const CommonOptions& options, TextSink& answer, TextSink& messages, Progress& progress);

  // The same with other sinks, for work whose text is printed later.
  Session(const Session& parent, TextSink& answer, TextSink& messages);

  TextSink& out() { return out_; }
  Progress& progress() { return progress_; }
  const CommonOptions& options() const { return options_; }

  // A text of a file as it may stand in the answer: what a terminal would obey is "?"
  // if the answer goes to one, and stays as it is else.
  std::string shown(std::string_view text) const;

  // Whether the answer goes to a terminal.
  bool isTerminal() const { return isTerminal_; }

  // How the answer and the messages look.
  const Look& look() const { return look_; }
  const Look& messageLook() const { return messageLook_; }

  // "vesk: error: text", and below it "  hint: ..." if there is one.
  void error(std::string_view text, std::string_view hint = "");

  // The same for warnings; not with -q.
  void warning(std::string_view text, std::string_view hint = "");

  // Only with -v.
  void note(std::string_view text);

  // Something found on the way, as a message. With -q only errors. Of each file and
  // code only the first kMostOfCode, unless with -v; the others are counted.
  void say(const Finding& finding);

  // The same, however many there are.
  void print(const Finding& finding);

  // Says how many findings were counted only, and where the first of them are. To be
  // called behind the last of a file or of all.
  void sayRest();

  static constexpr std::uint64_t kMostOfCode = 5;

  // Text that is a message as it stands; not with -q.
  void remark(std::string_view text);

  // Writes texts that another session has made.
  void replay(std::string_view answer, std::string_view messages);

 private:
  const CommonOptions& options_;
  TextSink& out_;
  TextSink& messages_;
  Progress& progress_;
  // Findings of one code in one file.
  struct Repeated {
    std::uint64_t count = 0;
    std::vector<std::uint64_t> untold;  // lines of the first of these
  };

  Look look_;
  Look messageLook_;
  bool isTerminal_ = false;                                           // of the answer
  std::map<std::pair<std::string, std::string>, Repeated> repeated_;  // by file and code
};

// The standard error stream. Takes the progress line away before it writes.
class ErrorStream : public TextSink {
 public:
  explicit ErrorStream(Progress& progress) : progress_(progress) {}
  void write(std::string_view text) override;

 private:
  Progress& progress_;
};

// What --color and --progress come to for these streams and variables.
bool isColoured(const std::string& option, std::FILE* stream);
Progress::Mode progressMode(const CommonOptions& options);

}  // namespace VeskTool

#endif
