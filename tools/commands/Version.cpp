// SPDX-License-Identifier: MIT
#include <string>
#include <string_view>

#include "commands/Command.h"
#include "terminal/Libraries.h"
#include "text/Json.h"

namespace VeskTool {
namespace {

// Of the sources; empty where they are in no repository.
constexpr std::string_view kCommit =
#include "Commit.inc"
    ;

struct BuildOption {
  std::string_view name;
  std::string_view value;
};

constexpr BuildOption kOptions[] = {{"build", VESK_BUILD_TYPE},
                                    {"compiler", VESK_COMPILER},
                                    {"system", VESK_SYSTEM},
                                    {"sanitizers", VESK_SANITIZERS}};

class VersionCommand : public Command {
 public:
  CommandText text() const override {
    return {"version",
            Group::kHelp,
            "",
            "the version of the tool and its library",
            "",
            {{"vesk version", "for people"},
             {"vesk version --json", "for programs"},
             {"vesk version --licences", "the third-party libraries in this build"}}};
  }

  bool takesMixed() const override { return false; }

  void define(CLI::App& app) override {
    CLI::Option* json = app.add_flag("--json", json_, "one JSON document");
    app.add_flag("--licences", licences_, "show the licence of each third-party library")
        ->excludes(json);
  }

  Exit run(Session& session) override {
    std::string text;
    if (json_) {
      JsonWriter json(text);
      json.beginObject().key("schema").value("vesk.version/1");
      json.key("version").value(VESK_VERSION).key("libraries").beginArray();
      for (const Library& library : libraries()) {
        json.beginObject().key("name").value(library.name).key("licence").value(library.licence);
        json.key("use").value(library.use).key("in").value(library.isIn).endObject();
      }
      json.endArray().key("commit");
      if (kCommit.empty()) {
        json.null();
      } else {
        json.value(kCommit);
      }
      json.key("options").beginObject();
      for (const auto& [name, value] : kOptions) json.key(name).value(value);
      json.endObject().endObject();
    } else {
      text = "vesk " VESK_VERSION ", under the MIT licence\n";
      if (!kCommit.empty()) session.note("commit " + std::string(kCommit));
      for (const Library& library : libraries()) text += lineOf(library);
    }
    session.out().write(text);
    return Exit::kDone;
  }

 private:
  std::string lineOf(const Library& library) const {
    std::string line = std::string(library.isIn ? "  with " : "  without ") + library.name;
    if (licences_) line += std::string(" (") + library.licence + ')';
    if (!library.isIn) line += std::string(": no ") + library.use;
    return line + '\n';
  }

  bool json_ = false;
  bool licences_ = false;
};

}  // namespace

std::unique_ptr<Command> makeVersion() { return std::make_unique<VersionCommand>(); }

}  // namespace VeskTool
