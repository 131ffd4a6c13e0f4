#include "Command.h"
#include "Json.h"

namespace VeskTool {
namespace {

class VersionCommand : public Command {
 public:
  CommandText text() const override {
    return {"version", Group::kHelp,
            "",        "the version of the tool and its library",
            "",        {{"vesk version", "for people"}, {"vesk version --json", "for programs"}}};
  }

  void define(CLI::App& app) override { app.add_flag("--json", json_, "one JSON document"); }

  Exit run(Session& session) override {
    std::string text;
    if (json_) {
      JsonWriter json(text);
      json.beginObject().key("schema").value("vesk.version/1");
      json.key("version").value(VESK_VERSION).endObject();
    } else {
      text = "vesk " VESK_VERSION "\n";
    }
    session.out().write(text);
    return Exit::kDone;
  }

 private:
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeVersion() { return std::make_unique<VersionCommand>(); }

}  // namespace VeskTool
