// SPDX-License-Identifier: MIT
#include "files/SelectionOptions.h"

#include <algorithm>
#include <optional>

#include "files/Files.h"
#include "terminal/Nearest.h"
#include "terminal/Options.h"
#include "text/Table.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

using Vesk::Criterion;
using Vesk::CriterionText;

Vesk::SelectionElement seen(const Vesk::RecordElement& element) {
  const Vesk::HeaderFields& header = element.header;
  return {*element.geo,
          {header.f1.data(), header.f1.width()},
          {header.f2.data(), header.f2.width()},
          element.firstLine,
          element.lastLine};
}

Failure failureOf(const Vesk::SelectionError& error) {
  const std::string nearest =
      error.choices.empty() ? std::string() : didYouMean(error.word, error.choices);
  return {Exit::kUsage, error.what(), nearest.empty() ? error.hint : nearest};
}

struct Meaning {
  std::string_view command;
  std::string_view what;
};

constexpr Meaning kMeanings[] = {
    {"info", "counts and sums what is chosen; a file without any is not listed"},
    {"list", "lists what is chosen"},
    {"show", "shows each chosen element, in place of a line"},
    {"measure", "measures what is chosen"},
    {"check",
     "reports findings of chosen elements, of a joint if either end is chosen, and always lines "
     "that can't be read; --only takes codes too"},
    {"diff", "reports a pair if either side is chosen; each side is judged by its own file"},
    {"clash", "reports a pair if either of the two is chosen"},
    {"convert", "writes what is chosen, in the style of OUT"},
    {"extract", "writes what is chosen as it stands, byte for byte"},
    {"export", "exports what is chosen"},
    {"view",
     "hides what is not chosen; --context shows it translucent; a drawing has only what is "
     "chosen"},
};

}  // namespace

void SelectionOptions::define(CLI::App& app, Beside beside) {
  app_ = &app;
  beside_ = beside;
  texts_.resize(Vesk::kCriteria);
  for (const CriterionText& each : Vesk::criteria()) {
    const auto index = static_cast<std::size_t>(each.criterion);
    std::string what(each.what);
    std::string form(each.form);
    if (beside == Beside::kToleranceAndCodes && each.criterion == Criterion::kOnly) {
      what =
          "only these codes, where V1 means all that begin with V1; or only findings of these "
          "kinds of elements";
      form = "CODE,...";
    }
    options_.push_back(app.add_option(std::string(each.option), texts_[index], what)
                           ->type_name(form)
                           ->default_str("all")
                           ->take_all()
                           ->expected(1)
                           ->allow_extra_args(false)
                           ->group(kGroup));
  }
  not_ = app.add_flag("--not", negates_, "before one of these options: all but what it chooses")
             ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
             ->group(kGroup);
  const auto addTolerance = [&](const char* name, const char* what) {
    return app.add_option(name, tolerance_, what)
        ->type_name("LENGTH")
        ->check(zeroOrMore())
        ->capture_default_str()
        ->group(kGroup);
  };
  CLI::Option* tolerance = addTolerance("--touch-tolerance",
                                        "how far from it an element that counts as --touching may "
                                        "be");
  if (beside == Beside::kNothing)
    addTolerance("--tolerance", "the same as --touch-tolerance")->excludes(tolerance);
}

bool SelectionOptions::isCode(std::string_view word) const {
  return beside_ == Beside::kToleranceAndCodes && !word.empty() &&
         (word[0] == 'V' || word[0] == 'v') && word.find_first_not_of("0123456789", 1) == word.npos;
}

template <class Take>
void SelectionOptions::forEachText(Take take) const {
  if (app_ == nullptr) return;
  std::vector<std::size_t> next(options_.size(), 0);
  bool isNegated = false;
  for (const CLI::Option* option : app_->parse_order()) {
    if (option == not_) {
      isNegated = true;
      continue;
    }
    const auto found = std::find(options_.begin(), options_.end(), option);
    if (found != options_.end()) {
      const auto index = static_cast<std::size_t>(found - options_.begin());
      take(static_cast<Criterion>(index), texts_[index][next[index]++], isNegated);
    } else if (isNegated) {
      break;
    }
    isNegated = false;
  }
  if (isNegated) {
    throw Failure(Exit::kUsage,
                  "--not must stand before --header or another option that chooses "
                  "elements",
                  "for instance --not --header P-1001");
  }
}

bool SelectionOptions::isGiven() const { return !selection().isEmpty(); }

Vesk::Selection SelectionOptions::selection() const {
  Vesk::Selection selection;
  selection.setTolerance(tolerance_);
  forEachText([&](Criterion criterion, const std::string& text, bool isNegated) {
    std::string kept = text;
    if (criterion == Criterion::kOnly && beside_ == Beside::kToleranceAndCodes) {
      kept.clear();
      for (const std::string& word : splitAt(text, ',')) {
        if (!isCode(word)) {
          kept += (kept.empty() ? "" : ",") + word;
        } else if (isNegated) {
          throw Failure(Exit::kUsage, "--not --only " + word + ": that is a code, not a kind",
                        "--ignore " + word);
        }
      }
      if (kept.empty() && !text.empty()) return;
    }
    try {
      selection.add(criterion, kept, isNegated);
    } catch (const Vesk::SelectionError& error) {
      throw failureOf(error);
    }
  });
  return selection;
}

std::vector<std::string> SelectionOptions::codes() const {
  std::vector<std::string> codes;
  forEachText([&](Criterion criterion, const std::string& text, bool /*isNegated*/) {
    if (criterion != Criterion::kOnly) return;
    for (const std::string& word : splitAt(text, ',')) {
      if (isCode(word)) codes.push_back(word);
    }
  });
  return codes;
}

Choice::Choice(const SelectionOptions& options, const std::vector<std::string>& files,
               Session& session)
    : selection_(options.selection()), isGiven_(!selection_.isEmpty()) {
  if (!selection_.needsModel()) return;
  if (std::find(files.begin(), files.end(), "-") != files.end()) {
    throw Failure(Exit::kUsage, "--touching reads its files twice, which stdin does not allow",
                  "name a file");
  }
  for (const std::string& file : files) expectInput(file, session.progress());
  for (const std::string& file : files) {
    try {
      InputCount count;
      Vesk::RecordFile records = openRecords(file, count, session);
      for (Vesk::RecordFile::Found found;
           (found = records.next()) != Vesk::RecordFile::Found::kEnd;) {
        if (found == Vesk::RecordFile::Found::kElement) selection_.gather(seen(records.element()));
      }
    } catch (const Failure&) {
      continue;
    }
  }
  selection_.finish();
}

bool Choice::takes(const Vesk::RecordElement& element) {
  if (!isGiven_) return true;
  if (!selection_.takes(seen(element))) return false;
  taken_.fetch_add(1, std::memory_order_relaxed);
  return true;
}

Exit Choice::finish(Session& session) const {
  if (!isNothing()) return Exit::kDone;
  session.error("no element is chosen", "vesk info --headers lists what there is");
  return Exit::kNo;
}

std::string selectionHelp() {
  std::string help =
      "How to choose elements, for all commands that read record files:\n"
      "\n";
  for (const CriterionText& each : Vesk::criteria()) {
    const std::string left = "  " + std::string(each.option) + ' ' + std::string(each.form);
    std::string lines = wrapped(each.what, 26, 80);
    lines.replace(0, left.size(), left);
    help += lines;
  }
  help +=
      "  --not                   before one of these options: all but what it chooses\n"
      "  --touch-tolerance LENGTH  for --touching; --tolerance too where it has no other\n"
      "                          meaning\n"
      "\n"
      "The same option several times means any of its values; different options must\n"
      "all be met. --header takes what `vesk info --headers` prints, F1 alone, or a\n"
      "pattern; a group is the header's second field: --header '* A1'. Places are\n"
      "compared by true shape. --touching reads the files twice and keeps each element\n"
      "of that header in memory. --lines are lines of the file. If nothing is chosen,\n"
      "the exit code is 1 and nothing is written.\n"
      "\n";
  for (const Meaning& each : kMeanings) {
    std::string lines = wrapped(each.what, 11, 80);
    const std::string left = "  " + std::string(each.command);
    lines.replace(0, left.size(), left);
    help += lines;
  }
  return help;
}

}  // namespace VeskTool
