// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "commands/Command.h"
#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "elements/Match.h"
#include "files/Files.h"
#include "files/SceneReader.h"
#include "files/SelectionOptions.h"
#include "terminal/Options.h"
#include "terminal/Terminal.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "view/PageInput.h"
#include "view/PageTarget.h"

namespace VeskTool {
namespace {

using Vesk::Value;

// One difference between two elements that belong together.
struct Change {
  std::string name;  // of the value
  std::string from;
  std::string to;
  bool isHeader = false;
};

struct Difference {
  const ModelElement* a = nullptr;  // null: added
  const ModelElement* b = nullptr;  // null: removed
  bool isMoved = false;
  GeVector by;
  std::vector<Change> changes;
};

// What Geo::equal does not look at.
bool isBesideShape(Value id) {
  return id == Value::kArc || id == Value::kMark || id == Value::kTag || id == Value::kFlag ||
         id == Value::kPointSize || id == Value::kPointDirection || id == Value::kDirection ||
         id == Value::kBendRadius;
}

bool isWithin(const GePoint& a, const GePoint& b, double tolerance) {
  const GeVector d = a - b;
  return std::max({std::fabs(d.x), std::fabs(d.y), std::fabs(d.z)}) <= tolerance;
}

bool isSame(const Property& a, const Property& b, double tolerance) {
  return a.text == b.text && isWithin(a.value, b.value, tolerance);
}

// Vertices as vectors from the first one, so that what is moved is not resized.
std::vector<Property> withoutPlace(const Vesk::Geo& geo) {
  std::vector<Property> properties = propertiesOf(geo);
  const GePoint place = placeOf(geo);
  for (Property& each : properties) {
    if (each.type == Property::Type::kPoint && each.id != Value::kPointDirection) {
      each.value = GePoint(each.value - place);
    }
  }
  return properties;
}

void addChange(Difference& to, const std::string& name, const std::string& from,
               const std::string& now) {
  to.changes.push_back({name, from, now});
}

// What differs between two elements of one kind; `isEqual` if their shapes do not.
Difference compare(const ModelElement& a, const ModelElement& b, bool isEqual, double tolerance) {
  Difference difference{&a, &b, false, {}, {}};
  if (a.header != b.header) difference.changes.push_back({"header", a.header, b.header, true});
  const std::vector<Property> before = withoutPlace(*a.geo);
  const std::vector<Property> after = withoutPlace(*b.geo);
  if (!isEqual) {
    difference.by = placeOf(*b.geo) - placeOf(*a.geo);
    difference.isMoved = !isWithin(GePoint(difference.by), {}, tolerance);
  }
  for (const Property& each : before) {
    if (isEqual && !isBesideShape(each.id)) continue;
    const Property* now = findValue(after, each);
    // One style does not keep it.
    if (now == nullptr && each.id == Value::kBendRadius) continue;
    if (now == nullptr) {
      addChange(difference, each.name, valueText(each), "nothing");
    } else if (!isSame(each, *now, tolerance)) {
      addChange(difference, each.name, valueText(each), valueText(*now));
    }
  }
  for (const Property& each : after) {
    if ((isEqual && !isBesideShape(each.id)) || each.id == Value::kBendRadius) continue;
    if (findValue(before, each) == nullptr) {
      addChange(difference, each.name, "nothing", valueText(each));
    }
  }
  return difference;
}

std::string_view wordOf(const Difference& difference) {
  if (difference.a == nullptr) return "added";
  if (difference.b == nullptr) return "removed";
  if (difference.changes.empty()) return "moved";
  const bool onlyHeader =
      difference.changes.size() == 1 && !difference.isMoved && difference.changes.front().isHeader;
  if (onlyHeader) return "renamed";
  return difference.isMoved ? "moved and changed" : "changed";
}

// ": by 0 0 500; diameter from 168.3 to 219.1"
std::string changesOf(const Difference& difference) {
  std::string text;
  if (difference.isMoved) {
    text += (difference.changes.empty() ? " by " : ": by ") + trimmedNumber(difference.by.x, 6) +
            ' ' + trimmedNumber(difference.by.y, 6) + ' ' + trimmedNumber(difference.by.z, 6);
  }
  bool first = !difference.isMoved;
  for (const Change& change : difference.changes) {
    text += (first ? ": " : "; ") + change.name + " from " + change.from + " to " + change.to;
    first = false;
  }
  return text;
}

// "A:12 B:14 cylinder P-1001 01/17: moved by 0 0 500; diameter 168.3 to 219.1"
std::string textOf(const Difference& difference, const Look& look) {
  const ModelElement& element = difference.a != nullptr ? *difference.a : *difference.b;
  std::string text;
  const Look::Paint paint = difference.a == nullptr   ? Look::Paint::kGood
                            : difference.b == nullptr ? Look::Paint::kError
                                                      : Look::Paint::kWarning;
  const std::string sign = difference.a == nullptr ? "+" : (difference.b == nullptr ? "-" : "~");
  look.append(text, paint, sign);
  text += difference.a == nullptr ? "       " : " A:" + std::to_string(difference.a->line);
  text += difference.b == nullptr ? "" : " B:" + std::to_string(difference.b->line);
  text += "  " + std::string(wordOf(element.kind)) + ' ' + element.header + '/' +
          std::to_string(element.counter) + ": ";
  look.append(text, paint, wordOf(difference));
  if (difference.a == nullptr || difference.b == nullptr) {
    const GePoint p = placeOf(*element.geo);
    text +=
        " at " + trimmedNumber(p.x, 3) + ' ' + trimmedNumber(p.y, 3) + ' ' + trimmedNumber(p.z, 3);
    const std::string sizes = sizesOf(*element.geo);
    if (!sizes.empty()) text += ", " + sizes;
  }
  return text + changesOf(difference) + '\n';
}

// ": by 0 0 500" as "by 0 0 500".
std::string withoutColon(std::string text) {
  return text.substr(std::min(text.find_first_not_of(": "), text.size()));
}

// What the page shows at an element that is there, or at one as it was.
PageMark markNow(const Difference& difference, std::uint32_t element) {
  if (difference.a == nullptr) return {element, "added", "", sizesOf(*difference.b->geo)};
  const std::string_view level = difference.changes.empty() ? "moved" : "changed";
  return {element, level, "", withoutColon(changesOf(difference))};
}

PageMark markBefore(const Difference& difference, std::uint32_t element) {
  if (difference.b == nullptr) return {element, "removed", "", sizesOf(*difference.a->geo)};
  return {element, "before", "", std::string(wordOf(difference)) + changesOf(difference)};
}

void appendJson(JsonWriter& json, const Difference& difference) {
  const ModelElement& element = difference.a != nullptr ? *difference.a : *difference.b;
  json.beginObjectRow().key("change").value(wordOf(difference));
  json.key("kind").value(nameOf(element.kind)).key("header").value(element.header);
  json.key("counter").value(element.counter);
  json.key("lineA");
  if (difference.a != nullptr) {
    json.value(difference.a->line);
  } else {
    json.null();
  }
  json.key("lineB");
  if (difference.b != nullptr) {
    json.value(difference.b->line);
  } else {
    json.null();
  }
  json.key("movedBy").value(GePoint(difference.by));
  json.key("values").beginArray();
  for (const Change& change : difference.changes) {
    json.beginObject().key("name").value(change.name).key("from").value(change.from);
    json.key("to").value(change.to).endObject();
  }
  json.endArray().endObject();
}

// What is told of each difference, where equal moves of many elements are one line.
std::string textOf(const std::vector<Difference>& differences, const Look& look, bool isAll) {
  constexpr std::size_t kAlike = 3;
  std::map<std::string, std::vector<const Difference*>> moves;
  const auto isMove = [](const Difference& each) { return each.isMoved && each.changes.empty(); };
  for (const Difference& each : differences) {
    if (isMove(each)) moves[changesOf(each)].push_back(&each);
  }
  std::string text;
  for (const Difference& each : differences) {
    const std::vector<const Difference*>* alike = isMove(each) ? &moves[changesOf(each)] : nullptr;
    if (isAll || alike == nullptr || alike->size() <= kAlike) {
      text += textOf(each, look);
    } else if (alike->front() == &each) {
      look.append(text, Look::Paint::kWarning, "~");
      text += " A:" + std::to_string(each.a->line) + " and on  " + grouped(alike->size()) +
              " elements ";
      look.append(text, Look::Paint::kWarning, "moved");
      text += changesOf(each) + '\n';
    }
  }
  return text;
}

// What became of two files, or of two elements of a folder.
struct Compared {
  Exit exit = Exit::kDone;
  bool isNothing = false;  // elements could be chosen, and none was
  std::string json;        // with --json
};

// The names below a folder, by what stands behind it.
std::map<std::string, std::string> filesBelow(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const std::string& file : expandFiles({folder})) {
    const std::filesystem::path name = pathOf(file).lexically_relative(pathOf(folder));
    files[nameOf(name)] = file;
  }
  return files;
}

bool isFolder(const std::string& name) {
  std::error_code error;
  return std::filesystem::is_directory(pathOf(name), error);
}

class DiffCommand : public Command {
 public:
  CommandText text() const override {
    return {
        "diff",
        Group::kJudge,
        "A B",
        "what moved, changed size, appeared or vanished",
        "Elements are paired by header, kind and nearness, in files of either style. The exit code "
        "is 1 if the models differ; a different order by itself is reported but does not count. "
        "Both files are held in memory. More than three elements that moved alike are reported in "
        "one line, or each of them with -v. With two folders, files of the same name are compared; "
        "a file that only one of them has is a difference.",
        {{"vesk diff old.dat new.dat", "what has changed"},
         {"vesk diff old.dat new.dat --header P-1001", "only one header"},
         {"vesk diff old.dat new.dat --view", "a page that shows it"},
         {"vesk diff --summary last/ this/", "two states of a plant, file by file"},
         {"vesk diff -q old.dat new.dat && echo same", "in a script"},
         {"vesk diff tokens.dat columns.dat --tolerance 0.001", "after a conversion"}}};
  }

  void define(CLI::App& app) override {
    app.add_option("A", a_, "record file, or a folder; - is stdin")->required();
    app.add_option("B", b_, "record file, or a folder; - is stdin")->required();
    app.add_option("--tolerance", tolerance_,
                   "differences up to this do not count, in the unit of the file")
        ->type_name("LENGTH")
        ->check(zeroOrMore())
        ->capture_default_str();
    CLI::Option* json = app.add_flag("--json", json_, "one JSON document");
    app.add_flag("--summary", summary_, "print only how many differences there are")
        ->excludes(json);
    CLI::Option* view =
        app.add_flag("--view", view_,
                     "show the differences in a page and open it; print only how many there are");
    page_.define(app, view);
    selection_.define(app, Beside::kTolerance);
  }

  Exit run(Session& session) override {
    refuseStdinTwice({a_, b_});
    if (view_ && json_) throw Failure(Exit::kUsage, "--view shows a page, not json");
    if (view_) page_.require({a_, b_});
    if (isFolder(a_) != isFolder(b_)) {
      throw Failure(Exit::kUsage, (isFolder(a_) ? a_ : b_) + " is a folder, the other is not",
                    "give two files or two folders");
    }
    if (isFolder(a_)) return compareFolders(session);
    const Compared compared = compareFiles(a_, b_, session);
    if (compared.isNothing) return worst(compared.exit, sayNothing(session));
    session.out().write(compared.json);
    return compared.exit;
  }

 private:
  // That no element is chosen.
  Exit sayNothing(Session& session) const {
    return Choice(selection_, {}, session).finish(session);
  }

  Compared compareFiles(const std::string& fileA, const std::string& fileB,
                        Session& session) const {
    Choice choiceA(selection_, {fileA}, session);
    Choice choiceB(selection_, {fileB}, session);
    expectInput(fileA, session.progress());
    expectInput(fileB, session.progress());
    Compared result;
    const Model a = modelOf(fileA, choiceA, session, result.exit);
    const Model b = modelOf(fileB, choiceB, session, result.exit);
    result.isNothing = choiceA.isNothing() && choiceB.isNothing();
    if (result.isNothing) return result;
    session.progress().enter("comparing");
    Matching matching = matchModels(a, b, tolerance_);
    keepChosen(matching, a, b);
    const std::vector<Difference> differences = differencesOf(a, b, matching);
    const bool isQuiet = session.options().quiet;
    if (json_) {
      result.json = jsonOf(fileA, fileB, differences, matching);
    } else if (view_) {
      if (!isQuiet) session.out().write(summaryOf(differences, matching));
      result.exit = worst(result.exit, showPage(b, differences, session));
    } else if (!isQuiet) {
      std::string text;
      if (!summary_) text = textOf(differences, session.look(), session.options().verbose);
      session.out().write(text + summaryOf(differences, matching));
    }
    if (!differences.empty()) result.exit = worst(result.exit, Exit::kNo);
    return result;
  }

  // The files of two folders.
  struct FolderCount {
    std::size_t alike = 0;
    std::size_t differ = 0;
    std::size_t unread = 0;
    std::vector<std::string> onlyA;
    std::vector<std::string> onlyB;
  };

  Exit compareFolders(Session& session) const {
    if (view_) throw Failure(Exit::kUsage, "--view shows two files, not folders");
    const std::map<std::string, std::string> filesA = filesBelow(a_);
    const std::map<std::string, std::string> filesB = filesBelow(b_);
    FolderCount count;
    std::string pairs;
    Exit exit = Exit::kDone;
    bool isNothing = selection_.isGiven();
    for (const auto& [name, fileA] : filesA) {
      const auto other = filesB.find(name);
      if (other == filesB.end()) {
        count.onlyA.push_back(name);
        continue;
      }
      const Compared compared = comparePair(name, fileA, other->second, session);
      isNothing = isNothing && compared.isNothing;
      exit = worst(exit, compared.exit);
      ++(compared.exit == Exit::kDone ? count.alike
         : compared.exit == Exit::kNo ? count.differ
                                      : count.unread);
      if (!compared.json.empty()) pairs += (pairs.empty() ? "" : ",\n") + compared.json;
    }
    for (const auto& [name, file] : filesB) {
      if (filesA.count(name) == 0) count.onlyB.push_back(name);
    }
    if (isNothing) return worst(exit, sayNothing(session));
    tellFolders(count, pairs, session);
    const bool isSame = count.onlyA.empty() && count.onlyB.empty();
    return isSame ? exit : worst(exit, Exit::kNo);
  }

  // Under a heading with its name.
  Compared comparePair(const std::string& name, const std::string& fileA, const std::string& fileB,
                       Session& session) const {
    TextBuffer answer;
    TextBuffer messages;
    Session own(session, answer, messages);
    Compared compared;
    try {
      compared = compareFiles(fileA, fileB, own);
      own.sayRest();
      if (!compared.json.empty()) compared.json.pop_back();
    } catch (const Failure& failure) {
      own.sayRest();
      own.error(failure.what(), failure.hint);
      compared.exit = failure.exit;
    }
    std::string text;
    if (!answer.text().empty()) {
      session.look().append(text, Look::Paint::kBold, session.shown(name));
      text += ":\n" + answer.text();
    }
    session.replay(text, messages.text());
    return compared;
  }

  void tellFolders(const FolderCount& count, const std::string& pairs, Session& session) const {
    if (json_) {
      std::string text;
      JsonWriter json(text);
      json.beginObject().key("schema").value("vesk.diff-folders/1").key("a").value(a_);
      json.key("b").value(b_).key("onlyA").beginArray();
      for (const std::string& name : count.onlyA) json.value(name);
      json.endArray().key("onlyB").beginArray();
      for (const std::string& name : count.onlyB) json.value(name);
      json.endArray().key("files").beginArray();
      if (!pairs.empty()) json.raw(pairs);
      json.endArray().endObject();
      return session.out().write(text);
    }
    if (session.options().quiet) return;
    std::string text;
    for (const auto& [folder, names] :
         {std::pair(&a_, &count.onlyA), std::pair(&b_, &count.onlyB)}) {
      for (const std::string& name : *names) text += "only in " + *folder + ": " + name + '\n';
    }
    text += grouped(count.differ) + " of " +
            counted(count.alike + count.differ + count.unread, "file") + " differ";
    const std::size_t only = count.onlyA.size() + count.onlyB.size();
    if (only > 0) text += ", " + grouped(only) + " in one folder only";
    session.out().write(text + '\n');
  }

  // A pair stays if either side is chosen.
  static void keepChosen(Matching& matching, const Model& a, const Model& b) {
    const auto isLeftOut = [&](const auto& pair) {
      return !a[pair.first].isChosen && !b[pair.second].isChosen;
    };
    std::erase_if(matching.same, isLeftOut);
    std::erase_if(matching.changed, isLeftOut);
    std::erase_if(matching.removed, [&](std::size_t i) { return !a[i].isChosen; });
    std::erase_if(matching.added, [&](std::size_t k) { return !b[k].isChosen; });
  }

  Model modelOf(const std::string& file, Choice& choice, Session& session, Exit& exit) const {
    Model model;
    const RecordsRead read = readRecords(file, session, [&](Vesk::RecordFile& records) {
      const Vesk::RecordElement& element = records.element();
      Vesk::Extents box;
      element.geo->addExtents(box);
      const GePoint middle =
          box.min.x <= box.max.x ? box.min + (box.max - box.min) * 0.5 : placeOf(*element.geo);
      model.push_back({copyOf(*element.geo), kindOf(*element.geo), headerText(element.header),
                       element.counter(), element.firstLine, middle,
                       view_ ? records.lines() : Vesk::Recs(), choice.takes(element)});
    });
    exit = worst(exit, read.exit());
    return model;
  }

  // The second model, and of the first one what is no longer there or was otherwise.
  Exit showPage(const Model& b, const std::vector<Difference>& differences,
                Session& session) const {
    PageModel model(Vesk::Fineness::ofSegments(Vesk::Fineness::kNormal));
    const auto add = [&](const ModelElement& element, std::uint32_t file) {
      return model.add(*element.geo, element.header, element.counter, file, element.line,
                       element.lines);
    };
    const std::uint32_t fileA = model.addFile(shownName(a_));
    const std::uint32_t fileB = model.addFile(shownName(b_));
    for (const ModelElement& element : b) {
      const std::uint32_t index = add(element, fileB);
      if (!element.isChosen) model.setShown(index, PageModel::Shown::kHidden);
    }
    for (const Difference& each : differences) {
      if (each.b != nullptr) {
        const auto index = static_cast<std::uint32_t>(each.b - b.data());
        model.setShown(index, PageModel::Shown::kWhole);
        model.mark(markNow(each, index));
      }
      if (each.a != nullptr) model.mark(markBefore(each, add(*each.a, fileA)));
    }
    model.finish();
    const std::vector<std::string> names = model.fileNames();
    page_.write(model, names[fileA] + " \u2192 " + names[fileB], "diff", session);
    return sayFailures(model.scene(), session);
  }

  std::vector<Difference> differencesOf(const Model& a, const Model& b,
                                        const Matching& matching) const {
    std::vector<Difference> differences;
    const auto add = [&](std::size_t i, std::size_t k, bool isEqual) {
      Difference difference = compare(a[i], b[k], isEqual, tolerance_);
      if (difference.isMoved || !difference.changes.empty()) {
        differences.push_back(std::move(difference));
      }
    };
    for (const auto& [i, k] : matching.same) add(i, k, true);
    for (const auto& [i, k] : matching.changed) {
      add(i, k, a[i].geo->equal(*b[k].geo, tolerance_));
    }
    for (const std::size_t i : matching.removed)
      differences.push_back({&a[i], nullptr, false, {}, {}});
    for (const std::size_t k : matching.added)
      differences.push_back({nullptr, &b[k], false, {}, {}});
    // By the place in A; what is added comes last, by its place in B.
    std::stable_sort(differences.begin(), differences.end(),
                     [](const Difference& one, const Difference& other) {
                       if (one.a == nullptr || other.a == nullptr)
                         return one.a != nullptr && other.a == nullptr;
                       return one.a->line < other.a->line;
                     });
    return differences;
  }

  static bool isReordered(const Matching& matching) {
    return !std::is_sorted(matching.same.begin(), matching.same.end(),
                           [](const auto& p, const auto& q) { return p.second < q.second; });
  }

  static std::string summaryOf(const std::vector<Difference>& differences,
                               const Matching& matching) {
    std::size_t moved = 0;
    std::size_t changed = 0;
    std::size_t renamed = 0;
    for (const Difference& each : differences) {
      const std::string_view word = wordOf(each);
      if (each.isMoved) ++moved;
      if (word == "changed" || word == "moved and changed") ++changed;
      if (word == "renamed") ++renamed;
    }
    std::string text;
    const auto add = [&](std::size_t count, const char* word) {
      if (count == 0) return;
      text += (text.empty() ? "" : ", ") + grouped(count) + ' ' + word;
    };
    add(moved, "moved");
    add(changed, "changed");
    add(renamed, "renamed");
    add(matching.added.size(), "added");
    add(matching.removed.size(), "removed");
    if (text.empty()) text = "no difference";
    text += "; " + grouped(matching.same.size()) + " in their places";
    if (isReordered(matching)) text += ", in another order";
    return text + '\n';
  }

  std::string jsonOf(const std::string& fileA, const std::string& fileB,
                     const std::vector<Difference>& differences, const Matching& matching) const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.diff/1");
    json.key("a").value(shownName(fileA)).key("b").value(shownName(fileB));
    json.key("tolerance").value(tolerance_);
    json.key("inPlace").value(std::uint64_t{matching.same.size()});
    json.key("reordered").value(isReordered(matching));
    json.key("differences").beginArray();
    for (const Difference& each : differences) appendJson(json, each);
    json.endArray().endObject();
    return text;
  }

  std::string a_;
  std::string b_;
  double tolerance_ = 0.01;
  bool json_ = false;
  bool summary_ = false;
  bool view_ = false;
  PageTarget page_;
  SelectionOptions selection_;
};

}  // namespace

std::unique_ptr<Command> makeDiff() { return std::make_unique<DiffCommand>(); }

}  // namespace VeskTool
