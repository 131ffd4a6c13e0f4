#include <string>
#include <vector>

#include "Command.h"
#include "Files.h"
#include "SceneReader.h"
#include "Terminal.h"
#include "view/PageInput.h"
#include "view/PageTarget.h"

namespace VeskTool {
namespace {

class ViewCommand : public Command {
 public:
  CommandText text() const override {
    return {"view",
            Group::kSee,
            "FILE...",
            "a page that shows the model, in the browser",
            "Writes one HTML file that needs no network: turn, cut and measure the model, click "
            "an element to see its record. Without -o it is a temporary file, which is opened; "
            "if your browser may not read the temporary folder, give it a name of your own.\n"
            "\n"
            "The whole model is in memory: about 900 bytes for each element, here and in the "
            "browser. The exit code is 1 if elements can't be read or drawn.",
            {{"vesk view plant.dat", "look at it"},
             {"vesk view zones/ -o plant.html", "a page to pass on"},
             {"vesk check plant.dat --view", "look at what is wrong with it"},
             {"vesk diff old.dat new.dat --view", "look at what has changed"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", words_, "record files, folders of them; - is stdin")->required();
    target_.define(app);
    app.add_option("--title", title_, "what stands above the model [name of the file]")
        ->type_name("TEXT");
    fineness_.define(app);
  }

  Exit run(Session& session) override {
    const std::vector<std::string> files = expandFiles(words_);
    target_.require(files);
    for (const std::string& file : files) expectInput(file, session.progress());
    PageModel model(fineness_.fineness());
    Exit exit = Exit::kDone;
    for (const std::string& file : files) exit = worst(exit, readInto(model, file, session));
    model.finish();
    exit = worst(exit, sayFailures(model.scene(), session));
    const std::string name = files.front() == "-" ? "stdin" : nameOf(pathOf(files.front()).stem());
    std::string title = title_;
    if (title.empty()) title = files.size() == 1 ? shownTitle(files.front()) : name + " and others";
    target_.write(model, title, name, session);
    return exit;
  }

 private:
  static std::string shownTitle(const std::string& file) {
    return file == "-" ? shownName(file) : nameOf(pathOf(file).filename());
  }

  std::vector<std::string> words_;
  PageTarget target_;
  std::string title_;
  FinenessOptions fineness_;
};

}  // namespace

std::unique_ptr<Command> makeView() { return std::make_unique<ViewCommand>(); }

}  // namespace VeskTool
