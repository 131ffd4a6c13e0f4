// SPDX-License-Identifier: MIT
#include <cstdint>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "draw/Drawing.h"
#include "draw/Painter.h"
#include "files/Files.h"
#include "files/SceneReader.h"
#include "files/SelectionOptions.h"
#include "files/Watch.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "view/DrawingOptions.h"
#include "view/PageInput.h"
#include "view/PageTarget.h"
#include "view/Png.h"
#include "view/Svg.h"

namespace VeskTool {
namespace {

enum class Format { kPage, kSvg, kPng };

// In small letters.
std::string endingOf(const std::string& file) {
  std::string ending = nameOf(pathOf(file).extension());
  for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return ending;
}

class ViewCommand : public Command {
 public:
  CommandText text() const override {
    return {"view",
            Group::kSee,
            "FILE...",
            "a page, or a drawing, that shows the model",
            "Writes one HTML file that needs no network: turn, cut and measure the model, or click "
            "an element to see its record. Without -o it is a temporary file, which is opened; if "
            "your browser may not read the temporary folder, name a file with -o.\n"
            "\n"
            "With -o x.svg or x.png it is a drawing without hidden lines. In an .svg lines are "
            "paths and texts are text; a .png is coloured by the kinds of elements. Drawings are "
            "as fine as can be seen at their size unless --quality or --tolerance is given.\n"
            "\n"
            "The whole model is in memory: about 700 bytes for each element of a page, here and in "
            "the browser, and 2 KB for each of a drawing. The exit code is 1 if elements can't be "
            "read or drawn.",
            {{"vesk view plant.dat", "look at the model"},
             {"vesk view plant.dat --header P-1001 --context", "one header within the plant"},
             {"vesk view zones/ -o plant.html", "a page to pass on"},
             {"vesk view plant.dat -o plant.png", "a picture"},
             {"vesk view plant.dat -o plant.png --watch", "again whenever plant.dat is written"},
             {"vesk view plant.dat -o top.svg --from top", "a line drawing"},
             {"vesk check plant.dat --view", "see what is wrong with it"},
             {"vesk diff old.dat new.dat --view", "see what has changed"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("FILE", words_, "record files or folders of them; - is stdin")->required();
    target_.define(app);
    app.get_option("--output")
        ->description(
            "write this .html, .svg or .png file and open no browser; - is stdout (see --to)");
    app.add_option("--to", to_, "html, svg or png")
        ->type_name("FORMAT")
        ->default_str("by the ending of the file")
        ->check(CLI::IsMember(std::vector<std::string>{"html", "svg", "png"}));
    app.add_option("--title", title_, "title of the page")
        ->type_name("TITLE")
        ->default_str("name of the file");
    app.add_option("--attributes", attributes_, "the sidecar with the components of a single FILE")
        ->type_name("FILE")
        ->default_str("FILE.attributes.csv beside it");
    fineness_.define(app);
    drawing_.define(app);
    app.add_flag("--context", context_, "also show what is not chosen, translucent");
    app.add_flag("--watch", watch_, "write it again whenever a file is written; Ctrl-C ends it");
    selection_.define(app, Beside::kTolerance);
    app_ = &app;
  }

  Exit run(Session& session) override {
    if (!watch_) return viewAll(session);
    if (target_.output.empty() || target_.output == "-") {
      throw Failure(Exit::kUsage, "--watch needs a file to write", "name it with -o FILE.html");
    }
    watchFiles(words_, session, [&] {
      viewAll(session);
      target_.force = true;  // what was written the first time
    });
  }

 private:
  Exit viewAll(Session& session) const {
    const std::vector<std::string> files = expandFiles(words_);
    const Format format = chosenFormat();
    if (context_ && (format != Format::kPage || !selection_.isGiven())) {
      throw Failure(Exit::kUsage, "--context is for a page of chosen elements",
                    "for instance --header P-1001 --context");
    }
    if (format != Format::kPage) return draw(format, files, session);
    if (drawing_.isGiven()) {
      throw Failure(Exit::kUsage,
                    "--from and the other options for drawings do not apply to a page",
                    "use -o FILE.png or -o FILE.svg");
    }
    if (!attributes_.empty() && files.size() > 1) {
      throw Failure(Exit::kUsage, "--attributes is for a single file",
                    "FILE.attributes.csv beside each file is read without it");
    }
    target_.require(files);
    Choice choice(selection_, files, session);
    for (const std::string& file : files) expectInput(file, session.progress());
    PageModel model(fineness_.fineness());
    Exit exit = Exit::kDone;
    const PageModel::Shown others =
        context_ ? PageModel::Shown::kContext : PageModel::Shown::kHidden;
    for (const std::string& file : files) {
      exit = worst(exit, readInto(model, file, choice, others, session, attributes_));
    }
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    model.finish();
    exit = worst(exit, sayFailures(model.scene(), session));
    session.progress().enter("writing");
    target_.write(model, titleOf(files), nameOfAll(files), session);
    return exit;
  }

  Format chosenFormat() const {
    const std::string ending = to_.empty() ? endingOf(target_.output) : '.' + to_;
    if (!to_.empty() && target_.output.empty() && to_ != "html") {
      throw Failure(Exit::kUsage, "--to " + to_ + " needs -o", "-o FILE" + ending);
    }
    if (ending == ".svg") return Format::kSvg;
    if (ending == ".png") return Format::kPng;
    const bool isPage = ending == ".html" || ending == ".htm";
    if (!isPage && !target_.output.empty() && target_.output != "-") {
      throw Failure(Exit::kUsage, "the ending of \"" + target_.output + "\" names no format",
                    "--to html, svg or png");
    }
    return Format::kPage;
  }

  Exit draw(Format format, const std::vector<std::string>& files, Session& session) const {
    Vesk::DrawingStyle style = drawing_.style();
    style.poll = checkInterrupt;
    for (const std::string& file : files) refuseSameFile(file, target_.output);
    OutputFile out(target_.output, target_.force);
    const bool isChosen = app_->count("--quality") + app_->count("--tolerance") > 0;
    Choice choice(selection_, files, session);
    Vesk::Scene scene;
    const Exit exit = isChosen ? readScene(files, fineness_.fineness(), choice, session, scene)
                               : readDrawnScene(files, style, choice, session, scene);
    if (choice.isNothing()) return worst(exit, choice.finish(session));
    session.progress().enter("drawing");
    const Vesk::Drawing drawing(scene, style);
    if (format == Format::kSvg) {
      writeSvg(out, drawing, titleOf(files));
    } else {
      writePng(out, Vesk::paint(drawing, drawing_.hasFaces()));
    }
    out.commit();
    sayLeftOut(drawing.farTexts(), "far from everything else and would shrink the plant", session);
    sayLeftOut(drawing.buriedTexts(),
               "where " + std::to_string(Vesk::Drawing::kMostOverEachOther) + " others do",
               session);
    if (target_.output == "-") return exit;
    const std::size_t count = scene.elements.size();
    session.out().write(target_.output + ": " + grouped(count) +
                        (count == 1 ? " element, " : " elements, ") + std::to_string(style.width) +
                        " x " + std::to_string(style.height) + " pixels\n");
    return exit;
  }

  static void sayLeftOut(std::size_t texts, const std::string& where, Session& session) {
    if (texts == 0) return;
    session.warning(grouped(texts) + (texts == 1 ? " text lies " : " texts lie ") + where +
                    ": left out");
  }

  // What a temporary file is called.
  static std::string nameOfAll(const std::vector<std::string>& files) {
    return files.front() == "-" ? "stdin" : nameOf(pathOf(files.front()).stem());
  }

  std::string titleOf(const std::vector<std::string>& files) const {
    if (!title_.empty()) return title_;
    return files.size() == 1 ? shownTitle(files.front()) : nameOfAll(files) + " and others";
  }

  static std::string shownTitle(const std::string& file) {
    return file == "-" ? shownName(file) : nameOf(pathOf(file).filename());
  }

  std::vector<std::string> words_;
  PageTarget target_;
  std::string title_;
  std::string attributes_;
  std::string to_;
  FinenessOptions fineness_;
  DrawingOptions drawing_;
  SelectionOptions selection_;
  bool context_ = false;
  bool watch_ = false;
  const CLI::App* app_ = nullptr;
};

}  // namespace

std::unique_ptr<Command> makeView() { return std::make_unique<ViewCommand>(); }

}  // namespace VeskTool
