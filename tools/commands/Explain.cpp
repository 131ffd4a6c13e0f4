// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "commands/Command.h"
#include "findings/Catalogue.h"
#include "terminal/Nearest.h"
#include "text/Json.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

std::string textOf(const CodeText& code, const Look& look) {
  std::string text;
  look.append(text, Look::Paint::kBold, std::string(code.code) + ": " + std::string(code.title));
  text += "\n\n" + wrapped(code.meaning, 0) + "\n" + wrapped(code.remedy, 0);
  return text;
}

const CodeText& need(const std::string& word) {
  const CodeText* code = findCode(word);
  if (code != nullptr) return *code;
  std::vector<std::string> names;
  for (const CodeText& each : catalogue()) names.emplace_back(each.code);
  throw Failure(Exit::kUsage, "there is no code " + word, didYouMean(word, names));
}

class ExplainCommand : public Command {
 public:
  CommandText text() const override {
    return {"explain",
            Group::kHelp,
            "[CODE...]",
            "what the code of a finding means",
            "Without a code, lists all codes, one on each line.",
            {{"vesk explain V021", "what it means, why it matters, what to do"},
             {"vesk explain", "all codes"}}};
  }

  bool takesMixed() const override { return false; }

  void define(CLI::App& app) override {
    app.add_option("CODE", codes_, "the code in brackets after a finding");
    app.add_flag("--json", json_, "one JSON document");
  }

  Exit run(Session& session) override {
    std::vector<const CodeText*> codes;
    for (const std::string& word : codes_) codes.push_back(&need(word));
    if (codes.empty()) {
      for (const CodeText& each : catalogue()) codes.push_back(&each);
    }
    std::string text;
    if (json_) {
      appendDocument(text, codes);
    } else if (codes_.empty()) {
      for (const CodeText* each : codes) {
        text.append(each->code).append("  ").append(each->title).append("\n");
      }
    } else {
      for (const CodeText* each : codes) {
        if (each != codes.front()) text += '\n';
        text += textOf(*each, session.look());
      }
    }
    session.out().write(text);
    return Exit::kDone;
  }

 private:
  static void appendDocument(std::string& text, const std::vector<const CodeText*>& codes) {
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.explain/1").key("codes").beginArray();
    for (const CodeText* each : codes) {
      json.beginObject().key("code").value(each->code).key("title").value(each->title);
      json.key("meaning").value(each->meaning).key("remedy").value(each->remedy).endObject();
    }
    json.endArray().endObject();
  }

  std::vector<std::string> codes_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeExplain() { return std::make_unique<ExplainCommand>(); }

}  // namespace VeskTool
