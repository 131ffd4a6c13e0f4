#include <string>
#include <vector>

#include "Command.h"
#include "Files.h"
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
            "The whole model is in memory: about 500 bytes for each element, here and in the "
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
    CLI::Option* quality =
        app.add_option("--quality", quality_,
                       "draft, normal or fine: 16, 32 or 64 pieces for a circle")
            ->type_name("NAME")
            ->check(CLI::IsMember(std::vector<std::string>{"draft", "normal", "fine"}))
            ->capture_default_str();
    app.add_option("--tolerance", tolerance_, "as many pieces as keep within this of the circle")
        ->type_name("MM")
        ->check(CLI::PositiveNumber)
        ->excludes(quality);
  }

  Exit run(Session& session) override {
    const std::vector<std::string> files = expandFiles(words_);
    target_.require(files);
    for (const std::string& file : files) expectInput(file, session.progress());
    PageModel model(fineness());
    Exit exit = Exit::kDone;
    for (const std::string& file : files) exit = worst(exit, readInto(model, file, session));
    model.finish();
    exit = worst(exit, sayFailures(model, session));
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

  Vesk::Fineness fineness() const {
    if (tolerance_ > 0.0) return Vesk::Fineness::ofTolerance(tolerance_);
    return Vesk::Fineness::ofSegments(quality_ == "draft"  ? Vesk::Fineness::kDraft
                                      : quality_ == "fine" ? Vesk::Fineness::kFine
                                                           : Vesk::Fineness::kNormal);
  }

  std::vector<std::string> words_;
  PageTarget target_;
  std::string title_;
  std::string quality_ = "normal";
  double tolerance_ = 0.0;
};

}  // namespace

std::unique_ptr<Command> makeView() { return std::make_unique<ViewCommand>(); }

}  // namespace VeskTool
