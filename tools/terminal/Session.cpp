// SPDX-License-Identifier: MIT
#include "terminal/Session.h"

#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

std::string messageOf(const Look& look, Look::Paint paint, std::string_view word,
                      std::string_view text, std::string_view hint) {
  std::string message = "vesk: ";
  look.append(message, paint, word);
  message += ' ';
  message += text;
  message += '\n';
  if (!hint.empty()) message.append("  hint: ").append(hint).append("\n");
  return message;
}

}  // namespace

Session::Session(const CommonOptions& options, TextSink& answer, TextSink& messages,
                 Progress& progress)
    : options_(options),
      out_(answer),
      messages_(messages),
      progress_(progress),
      look_(isColoured(options.colour, stdout)),
      messageLook_(isColoured(options.colour, stderr)),
      isTerminal_(VeskTool::isTerminal(stdout)) {}

Session::Session(const Session& parent, TextSink& answer, TextSink& messages)
    : options_(parent.options_),
      out_(answer),
      messages_(messages),
      progress_(parent.progress_),
      look_(parent.look_),
      messageLook_(parent.messageLook_),
      isTerminal_(parent.isTerminal_) {}

std::string Session::shown(std::string_view text) const {
  return isTerminal_ ? withoutControls(text) : std::string(text);
}

void Session::error(std::string_view text, std::string_view hint) {
  messages_.write(messageOf(messageLook_, Look::Paint::kError, "error:", text, hint));
}

void Session::warning(std::string_view text, std::string_view hint) {
  if (options_.quiet) return;
  messages_.write(messageOf(messageLook_, Look::Paint::kWarning, "warning:", text, hint));
}

void Session::note(std::string_view text) {
  if (!options_.verbose || options_.quiet) return;
  messages_.write(messageOf(messageLook_, Look::Paint::kNote, "note:", text, ""));
}

void Session::say(const Finding& finding) {
  if (!options_.verbose && !finding.code.empty()) {
    Repeated& same = repeated_[{finding.file, std::string(finding.code)}];
    if (++same.count > kMostOfCode) {
      constexpr std::size_t kMostPlaces = 3;
      if (same.untold.size() < kMostPlaces && finding.line > 0) same.untold.push_back(finding.line);
      return;
    }
  }
  print(finding);
}

void Session::print(const Finding& finding) {
  if (options_.quiet && finding.severity != Severity::kError) return;
  std::string text;
  appendText(text, finding, messageLook_);
  messages_.write(text);
}

void Session::sayRest() {
  for (const auto& [key, same] : repeated_) {
    if (same.count <= kMostOfCode) continue;
    std::string text = key.first + ": " + grouped(same.count - kMostOfCode) + " more";
    for (std::size_t i = 0; i < same.untold.size(); ++i) {
      text += (i == 0 ? ", at lines " : ", ") + std::to_string(same.untold[i]);
    }
    if (same.count - kMostOfCode > same.untold.size() && !same.untold.empty()) text += " and so on";
    messages_.write(text + " [" + key.second + "]; -v shows all\n");
  }
  repeated_.clear();
}

void Session::remark(std::string_view text) {
  if (!options_.quiet) messages_.write(text);
}

void Session::replay(std::string_view answer, std::string_view messages) {
  if (!messages.empty()) messages_.write(messages);
  if (!answer.empty()) out_.write(answer);
}

void ErrorStream::write(std::string_view text) {
  progress_.clear();
  std::string shown;
  if (isTerminal(stderr)) text = shown = harmless(text);
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

bool isColoured(const std::string& option, std::FILE* stream) {
  if (option == "always") return true;
  if (option == "never" || hasVariable("NO_COLOR")) return false;
  return isTerminal(stream);
}

Progress::Mode progressMode(const CommonOptions& options) {
  if (options.progress == "json") return Progress::Mode::kJson;
  if (options.progress == "always") return Progress::Mode::kLine;
  const bool wanted = options.progress == "auto" && !options.quiet && !hasVariable("CI");
  return wanted && isTerminal(stderr) ? Progress::Mode::kLine : Progress::Mode::kNever;
}

}  // namespace VeskTool
