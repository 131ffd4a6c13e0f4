// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_SESSION_H
#define VESK_TOOLS_SESSION_H

#include <cstdio>
#include <string>
#include <string_view>

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

  // How the answer and the messages look.
  const Look& look() const { return look_; }
  const Look& messageLook() const { return messageLook_; }

  // "vesk: error: text", and below it "  hint: ..." if there is one.
  void error(std::string_view text, std::string_view hint = "");

  // The same for warnings; not with -q.
  void warning(std::string_view text, std::string_view hint = "");

  // Only with -v.
  void note(std::string_view text);

  // Something found on the way, as a message. With -q only errors.
  void say(const Finding& finding);

  // Text that is a message as it stands; not with -q.
  void remark(std::string_view text);

  // Writes texts that another session has made.
  void replay(std::string_view answer, std::string_view messages);

 private:
  const CommonOptions& options_;
  TextSink& out_;
  TextSink& messages_;
  Progress& progress_;
  Look look_;
  Look messageLook_;
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
