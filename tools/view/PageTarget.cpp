// SPDX-License-Identifier: MIT
#include "view/PageTarget.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "terminal/Exit.h"
#include "terminal/Streams.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "view/Browser.h"
#include "view/Page.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;

// Counts what goes through.
class CountingSink : public TextSink {
 public:
  explicit CountingSink(TextSink& to) : to_(to) {}
  void write(std::string_view text) override {
    bytes_ += text.size();
    to_.write(text);
  }
  std::uint64_t bytes() const { return bytes_; }

 private:
  TextSink& to_;
  std::uint64_t bytes_ = 0;
};

// A private folder, which goes with this object unless something is to stay in it.
class PrivateFolder {
 public:
  PrivateFolder() : path_(pathOf(makePrivateFolder())), half_(path_) {}
  ~PrivateFolder() {
    std::error_code error;
    fs::remove(path_, error);  // refused unless it is empty
  }
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
  HalfFile half_;
};

}  // namespace

void PageTarget::define(CLI::App& app, CLI::Option* view) {
  CLI::Option* options[] = {
      app.add_option("-o,--output", output,
                     "write the page to this .html file and don't open it; - is stdout")
          ->type_name("FILE")
          ->default_str("a temporary file, opened"),
      app.add_flag("-f,--force", force, "replace the file"),
      app.add_flag("--no-open", noOpen, "do not open the temporary file")};
  for (CLI::Option* option : options) {
    if (view != nullptr) option->needs(view);
  }
}

void PageTarget::require(const std::vector<std::string>& inputs) const {
  if (!output.empty() && output != "-") {
    const std::string extension = nameOf(pathOf(output).extension());
    if (extension != ".html" && extension != ".htm") {
      throw Failure(Exit::kUsage, output + ": a page is an .html file",
                    "vesk view -o " + nameOf(pathOf(output).replace_extension(".html")));
    }
    for (const std::string& input : inputs) refuseSameFile(input, output);
    std::error_code error;
    if (!force && fs::is_regular_file(pathOf(output), error)) {
      throw Failure(Exit::kOutput, output + ": the file already exists", "-f replaces it");
    }
  }
  requirePageTemplate();
}

void PageTarget::write(const PageModel& model, const std::string& title, const std::string& name,
                       Session& session) const {
  const bool isTemporary = output.empty();
  std::string file = output;
  std::optional<PrivateFolder> folder;
  if (isTemporary) file = nameOf(folder.emplace().path() / pathOf(name + ".html"));
  OutputFile target(file, force);
  CountingSink counted(target);
  writePage(counted, model, title);
  target.commit();
  if (output == "-") return;
  const std::size_t elements = model.scene().elements.size();
  session.out().write(file + ": " + grouped(elements) +
                      (elements == 1 ? " element, " : " elements, ") +
                      grouped((counted.bytes() + 999) / 1000) + " kB\n");
  if (!isTemporary || noOpen) return;
  const std::string problem = openOnDesktop(file);
  if (!problem.empty()) session.warning(problem, "open " + file + " in a browser");
}

}  // namespace VeskTool
