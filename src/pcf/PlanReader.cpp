// SPDX-License-Identifier: MIT
#include "pcf/PlanReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "pcf/Layout.h"
#include "pcf/Numbers.h"
#include "pcf/Sizes.h"
#include "pcf/Text.h"

namespace Vesk::Pcf {
namespace {

// Places farther away than this (millimetres) are taken for a slip of the pen; beyond
// it the four decimals of the record could not be told apart.
constexpr double kFarthest = 1e10;

constexpr double kInch = 25.4;

struct Unit {
  double millimetres = 1;
  bool isInches = false;  // of a bore: the number is one of inches, `inches` each
  double inches = 1;
};

struct UnitRow {
  std::string_view name;
  Unit unit;
};

// clang-format off
constexpr UnitRow kUnits[] = {
    {"MM",              {1}},           {"MMS",             {1}},
    {"MILLIMETRE",      {1}},           {"MILLIMETRES",     {1}},
    {"MILLIMETER",      {1}},           {"MILLIMETERS",     {1}},
    {"MM-HUNDREDTH",    {0.01}},        {"MM-HUNDREDTHS",   {0.01}},
    {"CM",              {10}},
    {"M",               {1000}},
    {"METRE",           {1000}},        {"METRES",          {1000}},
    {"METER",           {1000}},        {"METERS",          {1000}},
    {"INCH",            {kInch, true}}, {"INCHES",          {kInch, true}},
    {"IN",              {kInch, true}},
    {"INCH-SIXTEENTH",  {kInch / 16, true, 1.0 / 16}},
    {"INCH-SIXTEENTHS", {kInch / 16, true, 1.0 / 16}},
    {"FEET",            {12 * kInch, true, 12}}, {"FOOT",   {12 * kInch, true, 12}},
    {"FT",              {12 * kInch, true, 12}},
};
// clang-format on

const Unit* unitOf(std::string_view name) {
  for (const UnitRow& row : kUnits) {
    if (row.name == name) return &row.unit;
  }
  return nullptr;
}

// Two letters, as they stand behind a bore. An O there is a slip for a 0.
bool isEndCode(std::string_view text) {
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return text.size() == 2 && isLetter(text[0]) && isLetter(text[1]) && text[0] != 'O';
}

class Reader {
 public:
  Reader(Plan& plan, Messages& messages, const Layout& layout)
      : plan_(plan), messages_(messages), layout_(layout) {}

  void read();

 private:
  // What the lines that come belong to.
  enum class Below { kNothing, kHeader, kPipeline, kComponent, kMaterials };

  void readLine();
  void readMargin(const KeyValue& entry);
  void readByName(const KeyValue& entry);
  void readBetween(const KeyValue& entry);
  void readAttribute(const KeyValue& entry);
  void readOfComponent(const KeyValue& entry);
  void readMaterial(const KeyValue& entry);
  bool readAnywhere(const KeyValue& entry);
  void readHeader(const std::string& key, std::string_view value);
  void readUnits(bool ofBores, std::string_view value);
  void supplyBoreUnit();
  void readPoint(std::string_view key, Role role, std::string_view value);
  bool readPlace(std::string_view key, std::string_view& value, GePoint& at);
  bool readBore(std::string_view key, std::string_view& value, Point& point);
  void readAngle(std::string_view value);
  void readBendRadius(std::string_view value);
  void readPipelineOfComponent(std::string_view value);

  Role roleBelow() const;
  bool hasPointBelow() const { return roleBelow() != Role::kNone; }
  bool isComponentOfItsOwn(Word meaning, const KeyValue& entry) const;
  bool havePointsToCome() const;
  bool isTextOfMessage() const;
  bool isOpen() const { return below_ == Below::kComponent; }
  Component& open() { return plan_.components.back(); }
  void start(const std::string& word, Word meaning, std::string_view value);
  void close(std::size_t end);
  void close() { close(lines_.offset()); }
  void setSkey(std::string_view skey);
  std::uint32_t kindOf(const std::string& word, const std::string& skey, Word meaning);
  std::uint32_t pipelineOf(std::string_view reference);
  Word meaningOf(std::string_view key, std::string& word);

  void say(Severity severity, std::string_view text, std::string_view detail = {}) {
    messages_.add(severity, lines_.number(), text, detail);
  }

  Plan& plan_;
  Messages& messages_;
  const Layout layout_;
  Lines lines_{""};
  Unit coordinate_;
  Unit bore_;
  bool isBoreUnitGiven_ = false;
  Below below_ = Below::kNothing;
  std::uint32_t pipeline_ = kNoPipeline;
  std::string material_;      // the item code that is described
  bool isTap_ = false;        // behind a TAP-CONNECTION
  bool isWithValue_ = false;  // something stands behind the word of the open component
  std::unordered_map<std::string, std::uint32_t> kindIndices_;
  std::unordered_map<std::string, std::uint32_t> pipelineIndices_;
  std::unordered_map<std::string, std::pair<std::string, Word>> words_;
};

void Reader::read() {
  lines_ = Lines(plan_.text);
  bool isReserved = false;
  while (lines_.next()) {
    readLine();
    if (isReserved || lines_.offset() < plan_.text.size() / 16) continue;
    // By what came so far; a vector that grows would for a moment be there twice.
    isReserved = true;
    const double times =
        1.1 * static_cast<double>(plan_.text.size()) / static_cast<double>(lines_.behind());
    const auto expected = [&](std::size_t count) {
      return static_cast<std::size_t>(static_cast<double>(count) * times);
    };
    plan_.points.reserve(expected(plan_.points.size()));
    plan_.components.reserve(expected(plan_.components.size()));
  }
  close(plan_.text.size());
  supplyBoreUnit();
}

// Without UNITS-BORE, beside co-ordinates in inches: inches too, if all of them can be.
void Reader::supplyBoreUnit() {
  if (isBoreUnitGiven_ || !coordinate_.isInches) return;
  const auto hasBore = [](const Point& point) { return point.bore > 0; };
  const auto isNps = [&](const Point& point) {
    return !hasBore(point) || sizeOfNps(point.bore, 0.006) != nullptr;
  };
  const auto first = std::find_if(plan_.points.begin(), plan_.points.end(), hasBore);
  if (first == plan_.points.end()) return;
  if (!std::all_of(first, plan_.points.end(), isNps)) return;
  for (Point& point : plan_.points) point.isInches = true;
  messages_.add(Severity::kNote, plan_.components[first->component].line,
                "no UNITS-BORE: bores are in inches, as the co-ordinates are");
}

void Reader::readLine() {
  const std::string_view text = trimmed(lines_.line());
  if (text.empty() || isComment(text)) return;
  const KeyValue entry = keyValueOf(text);
  if (entry.key.empty() || readAnywhere(entry)) return;
  if (layout_.isByName) {
    readByName(entry);
    return;
  }
  const std::size_t indent = indentOf(lines_.line());
  if (indent <= layout_.margin) {
    readMargin(entry);
  } else if (indent < layout_.pointIndent) {
    readBetween(entry);
  } else {
    readAttribute(entry);
  }
}

// The meaning of a key, and the key in capitals. A file repeats a few hundred keys.
Word Reader::meaningOf(std::string_view key, std::string& word) {
  const auto [place, isNew] = words_.try_emplace(std::string(key));
  if (isNew) {
    place->second.first = capitals(key);
    place->second.second = wordOf(place->second.first);
  }
  word = place->second.first;
  const Word meaning = place->second.second;
  if (words_.size() > 4096) words_.clear();
  return meaning;
}

// Units count wherever they stand.
bool Reader::readAnywhere(const KeyValue& entry) {
  if (entry.key.front() != 'U' && entry.key.front() != 'u') return false;
  const bool ofBores = isWord(entry.key, "UNITS-BORE");
  if (!ofBores && !isWord(entry.key, "UNITS-CO-ORDS") && !isWord(entry.key, "UNITS-COORDS"))
    return false;
  readUnits(ofBores, entry.value);
  if (below_ == Below::kMaterials) below_ = Below::kHeader;
  if (layout_.isByName) {
    close();
    below_ = Below::kHeader;
  }
  return true;
}

void Reader::readUnits(bool ofBores, std::string_view value) {
  const std::string name = capitals(nextWord(value));
  const Unit* unit = unitOf(name);
  if (unit == nullptr) {
    say(Severity::kError,
        std::string(ofBores ? "UNITS-BORE" : "UNITS-CO-ORDS") +
            ": taken as millimetres; expected MM or INCH",
        ", found \"" + harmless(name) + '"');
  }
  isBoreUnitGiven_ = isBoreUnitGiven_ || ofBores;
  (ofBores ? bore_ : coordinate_) = unit == nullptr ? Unit{} : *unit;
}

// ---- components ------------------------------------------------------------------

void Reader::readMargin(const KeyValue& entry) {
  std::string word;
  const Word meaning = meaningOf(entry.key, word);
  if (isComponentOfItsOwn(meaning, entry)) {
    start(word, Word::kUnknown, entry.value);
    return;
  }
  switch (meaning) {
    case Word::kPoint:
    case Word::kAttribute:
    case Word::kText:
      if (below_ == Below::kMaterials) {
        readMaterial(entry);
      } else if (isOpen()) {
        if (meaning == Word::kPoint)
          say(Severity::kNote,
              word + ": expected to be indented; taken as a part of the component above");
        readAttribute(entry);
      } else if (meaning == Word::kPoint) {
        readAttribute(entry);
      }
      return;
    case Word::kMaterials:
      close();
      below_ = Below::kMaterials;
      return;
    case Word::kHeader:
      close();
      readHeader(word, entry.value);
      return;
    default:
      break;
  }
  if (meaning == Word::kUnknown && trimmed(lines_.line()).front() == '<') return;
  if (below_ == Below::kMaterials && (!isComponent(meaning) || !hasPointBelow())) return;
  start(word, meaning, entry.value);
}

// More indented than components, less than points: a component only if it is known,
// stands alone and has points, as items of MATERIALS have not.
void Reader::readBetween(const KeyValue& entry) {
  std::string word;
  const Word meaning = meaningOf(entry.key, word);
  if (isComponent(meaning) && entry.value.empty() && hasPointBelow()) {
    start(word, meaning, entry.value);
  } else {
    readAttribute(entry);
  }
}

void Reader::readByName(const KeyValue& entry) {
  std::string word;
  const Word meaning = meaningOf(entry.key, word);
  if (below_ == Below::kMaterials) {
    const bool isNew = isComponent(meaning) && entry.value.empty() && hasPointBelow();
    const bool isHeader = word == "PIPELINE-REFERENCE" || word.ends_with("-FILES");
    if (!isNew && !isHeader) {
      readMaterial(entry);
      return;
    }
  }
  if (meaning == Word::kMaterials) {
    close();
    below_ = Below::kMaterials;
    return;
  }
  const bool isAlone = entry.value.empty();
  const bool isStart =
      isComponent(meaning) && (isAlone || meaning == Word::kMessage) && !isTextOfMessage();
  const bool isUnknownStart =
      meaning == Word::kUnknown && isAlone && hasPointBelow() && (!isOpen() || open().points > 0);
  if (isStart || isUnknownStart) {
    start(word, meaning, entry.value);
    return;
  }
  const bool ofMark = isOpen() && plan_.kindOf(open()).meaning == Word::kMark;
  const bool opensLine = word == "PIPELINE-REFERENCE" && !ofMark &&
                         !(isOpen() && open().points == 0 && havePointsToCome());
  if (opensLine || (meaning == Word::kHeader && (!isOpen() || word.ends_with("-FILES")))) {
    close();
    readHeader(word, entry.value);
    return;
  }
  readAttribute(entry);
}

// What the next line that is not empty gives, if it has co-ordinates.
Role Reader::roleBelow() const {
  for (Lines ahead = lines_; ahead.next();) {
    const std::string_view text = trimmed(ahead.line());
    if (text.empty() || isComment(text)) continue;
    return roleOf(keyValueOf(text).key);
  }
  return Role::kNone;
}

// A word that begins like an attribute or a header but has ends: FLOW-METER.
bool Reader::isComponentOfItsOwn(Word meaning, const KeyValue& entry) const {
  if (meaning != Word::kAttribute && meaning != Word::kHeader) return false;
  if (!entry.value.empty()) return false;
  const Role below = roleBelow();
  return below != Role::kNone && below != Role::kPlace;
}

// Whether points come before the next component, in a file that indents nothing.
bool Reader::havePointsToCome() const {
  constexpr int kMostAttributes = 64;
  int count = 0;
  for (Lines ahead = lines_; count < kMostAttributes && ahead.next();) {
    const KeyValue entry = keyValueOf(ahead.line());
    if (entry.key.empty() || isComment(entry.key)) continue;
    ++count;
    const Word meaning = wordOf(capitals(entry.key));
    if (meaning == Word::kPoint) return true;
    if (meaning == Word::kMaterials || (isComponent(meaning) && entry.value.empty())) return false;
  }
  return false;
}

// The first line below a message, in a file that indents nothing, if no place follows that
// would make it a component: WELD.
bool Reader::isTextOfMessage() const {
  if (!isOpen() || plan_.kindOf(plan_.components.back()).meaning != Word::kMessage) return false;
  const Component& message = plan_.components.back();
  return message.points == 0 && lines_.number() == message.line + 1 && !havePointsToCome();
}

void Reader::start(const std::string& word, Word meaning, std::string_view value) {
  close();
  Component component;
  component.begin = lines_.offset();
  component.line = lines_.number();
  component.firstPoint = static_cast<std::uint32_t>(plan_.points.size());
  component.kind = kindOf(meaning == Word::kUnknown ? harmless(word) : word, "", meaning);
  component.pipeline = pipeline_;
  plan_.components.push_back(component);
  below_ = Below::kComponent;
  isTap_ = false;
  isWithValue_ = !value.empty();
}

// An unknown word without a place below is a header, and so is one like PIPE-TYPE with
// a value behind it.
void Reader::close(std::size_t end) {
  if (!isOpen()) return;
  below_ = Below::kNothing;
  Component& component = open();
  component.size = static_cast<std::uint32_t>(end - component.begin);
  const Word meaning = plan_.kindOf(component).meaning;
  const bool isHeader = meaning == Word::kUnknown || (meaning == Word::kBody && isWithValue_);
  if (!isHeader || component.points > 0 || component.isDamaged) return;
  messages_.add(Severity::kQuiet, component.line, "unknown word, taken as a header",
                ": \"" + harmless(plan_.kindOf(component).word) + '"');
  plan_.components.pop_back();
  if (!plan_.bendRadii.empty() && plan_.bendRadii.back().component == plan_.components.size())
    plan_.bendRadii.pop_back();
  below_ = Below::kHeader;
}

std::uint32_t Reader::kindOf(const std::string& word, const std::string& skey, Word meaning) {
  const auto [place, isNew] =
      kindIndices_.try_emplace(word + '\n' + skey, static_cast<std::uint32_t>(plan_.kinds.size()));
  if (isNew) plan_.kinds.push_back({word, skey, meaning, familyOf(word, skey)});
  return place->second;
}

void Reader::setSkey(std::string_view skey) {
  if (skey.empty()) return;
  const Kind kind = plan_.kindOf(open());
  std::string_view rest = skey;
  open().kind = kindOf(kind.word, capitals(nextWord(rest)), kind.meaning);
}

// ---- headers ---------------------------------------------------------------------

void Reader::readHeader(const std::string& key, std::string_view value) {
  if (key == "PIPELINE-REFERENCE") {
    if (value.empty())
      say(Severity::kNote, "PIPELINE-REFERENCE: expected the reference of a pipeline, found none");
    pipeline_ = pipelineOf(value);
    below_ = Below::kPipeline;
    return;
  }
  const bool isSpec = key == "PIPING-SPEC" || key == "PIPE-SPEC" || key == "PIPING-CLASS";
  if (isSpec && pipeline_ != kNoPipeline) plan_.pipelines[pipeline_].spec = std::string(value);
  if (below_ != Below::kPipeline) below_ = Below::kHeader;
}

std::uint32_t Reader::pipelineOf(std::string_view reference) {
  const auto [place, isNew] = pipelineIndices_.try_emplace(
      std::string(reference), static_cast<std::uint32_t>(plan_.pipelines.size()));
  if (isNew) plan_.pipelines.push_back({std::string(reference), {}});
  return place->second;
}

void Reader::readMaterial(const KeyValue& entry) {
  const std::string key = capitals(entry.key);
  if (key == "ITEM-CODE" || key == "MATERIAL-IDENTIFIER") {
    material_ = std::string(entry.value);
  } else if ((key == "DESCRIPTION" || key == "ITEM-DESCRIPTION") && !material_.empty()) {
    plan_.descriptions.try_emplace(material_, entry.value);
  }
}

// ---- attributes ------------------------------------------------------------------

void Reader::readAttribute(const KeyValue& entry) {
  const Role role = roleOf(entry.key);
  switch (below_) {
    case Below::kComponent:
      readOfComponent(entry);
      return;
    case Below::kMaterials:
      readMaterial(entry);
      return;
    case Below::kPipeline:
      if (isWord(entry.key, "PIPING-SPEC") && pipeline_ != kNoPipeline)
        plan_.pipelines[pipeline_].spec = std::string(entry.value);
      break;
    case Below::kHeader:
    case Below::kNothing:
      if (isWord(entry.key, "PIPELINE-REFERENCE")) readHeader("PIPELINE-REFERENCE", entry.value);
      break;
  }
  // A header may have a place.
  const bool mayHaveIt = role == Role::kPlace && below_ != Below::kNothing;
  if (role != Role::kNone && !mayHaveIt)
    say(Severity::kError, capitals(entry.key) + ": expected a component before it");
}

void Reader::readOfComponent(const KeyValue& entry) {
  const Role role = roleOf(entry.key);
  if (role != Role::kNone) {
    if (isTap_ && role == Role::kPlace) return;
    readPoint(entry.key, role, entry.value);
    return;
  }
  switch (entry.key.front()) {
    case 'S':
    case 's':
      if (isWord(entry.key, "SKEY")) setSkey(entry.value);
      return;
    case 'A':
    case 'a':
      if (isWord(entry.key, "ANGLE")) readAngle(entry.value);
      return;
    case 'B':
    case 'b':
      if (isWord(entry.key, "BEND-RADIUS")) readBendRadius(entry.value);
      return;
    case 'P':
    case 'p':
      if (isWord(entry.key, "PIPELINE-REFERENCE")) readPipelineOfComponent(entry.value);
      return;
    case 'T':
    case 't':
      if (isWord(entry.key, "TAP-CONNECTION")) isTap_ = true;
      return;
    default:
      return;
  }
}

// Degrees; files write a quarter turn as 90, 90.0 or, in hundredths, 9000.
void Reader::readAngle(std::string_view value) {
  const std::optional<Number> angle = takeNumber(value);
  if (!angle || !(angle->value > 0)) return;
  const double degrees = angle->value > 180.5 ? angle->value / 100 : angle->value;
  open().angle = static_cast<float>(degrees);
}

// In the unit of the co-ordinates; of two the first.
void Reader::readBendRadius(std::string_view value) {
  const std::optional<Number> number = takeNumber(value);
  const auto index = static_cast<std::uint32_t>(plan_.components.size() - 1);
  const bool isGiven = !plan_.bendRadii.empty() && plan_.bendRadii.back().component == index;
  if (!number || isGiven) return;
  const double radius = number->value * (number->isInches ? kInch : coordinate_.millimetres);
  if (radius > 0 && radius < kFarthest)
    plan_.bendRadii.push_back({index, static_cast<float>(radius)});
}

// Below the end of a line it names the neighbour; elsewhere it places one component.
void Reader::readPipelineOfComponent(std::string_view value) {
  if (plan_.kindOf(open()).meaning == Word::kMark || value.empty()) return;
  open().pipeline = pipelineOf(value);
}

// ---- points ----------------------------------------------------------------------

enum class SizeMark { kNone, kDn, kNps };

// Takes what stands before a bore, glued to it or not: "DN150", "NPS 6".
SizeMark takeSizeMark(std::string_view& value) {
  constexpr std::pair<std::string_view, SizeMark> kMarks[] = {{"DN", SizeMark::kDn},
                                                              {"NPS", SizeMark::kNps}};
  const std::string_view text = trimmed(value);
  for (const auto& [word, mark] : kMarks) {
    if (!isWord(text.substr(0, word.size()), word)) continue;
    const std::string_view rest = trimmed(text.substr(word.size()));
    std::string_view number = rest;
    if (!takeNumber(number)) continue;
    value = rest;
    return mark;
  }
  return SizeMark::kNone;
}

void Reader::readPoint(std::string_view key, Role role, std::string_view value) {
  Point point;
  point.role = role;
  std::string joined;
  if (value.find('\'') != std::string_view::npos) {
    joined = withFeetJoined(value, role == Role::kEnd || role == Role::kBranch ? 4 : 3);
    value = joined;
  }
  if (!readPlace(key, value, point.at)) {
    open().isDamaged = true;
    return;
  }
  // A place with a bad bore is still a place.
  readBore(key, value, point);
  point.component = static_cast<std::uint32_t>(plan_.components.size() - 1);
  plan_.points.push_back(point);
  ++open().points;
}

bool Reader::readPlace(std::string_view key, std::string_view& value, GePoint& at) {
  double* const numbers[] = {&at.x, &at.y, &at.z};
  constexpr std::string_view kFound[] = {", found none", ", found only one", ", found only two"};
  for (std::size_t i = 0; i < 3; ++i) {
    const std::string_view word = nextWord(value);
    if (word.empty()) {
      say(Severity::kError, capitals(key) + ": expected three co-ordinates (x y z)", kFound[i]);
      return false;
    }
    const std::optional<Number> number = numberOf(word);
    if (!number) {
      say(Severity::kError, capitals(key) + ": expected a number as " + "xyz"[i],
          ", found \"" + harmless(word) + '"');
      return false;
    }
    *numbers[i] = number->value * (number->isInches ? kInch : coordinate_.millimetres);
    if (!(std::fabs(*numbers[i]) <= kFarthest)) {
      say(Severity::kError,
          capitals(key) + ": expected " + "xyz"[i] + " within ten thousand kilometres",
          ", found \"" + harmless(word) + '"');
      return false;
    }
  }
  return true;
}

// Bore and kind of end, each of which may be missing, together or apart: "6 BW", "6BW",
// "DN150 BW".
bool Reader::readBore(std::string_view key, std::string_view& value, Point& point) {
  const SizeMark mark = takeSizeMark(value);
  std::string_view word = nextWord(value);
  std::string_view rest = word;
  if (const std::optional<Number> number = takeNumber(rest)) {
    double bore = number->value;
    const bool isGlued = isWord(rest, "MM");  // "100mm"
    const bool isMarked = isGlued || mark == SizeMark::kDn;
    bool isInches = number->isInches || isWord(rest, "IN") || mark == SizeMark::kNps;
    if (isGlued || isWord(rest, "IN")) rest = {};
    std::string_view ahead = value;
    const std::string_view next = nextWord(ahead);
    if (rest.empty() && bore == std::floor(bore) && isFraction(next)) {  // "1 1/2"
      bore += numberOf(next)->value;
      isInches = isInches || numberOf(next)->isInches;
      value = ahead;
    }
    if (bore < 0 || bore * kInch > kFarthest || !(rest.empty() || isEndCode(rest))) {
      say(Severity::kWarning,
          capitals(key) + ": expected a bore (a number, 0 or more) as fourth value",
          ", found \"" + harmless(word) + '"');
    } else {
      const double unit = bore_.isInches ? bore_.inches : bore_.millimetres;
      point.isInches = isInches || (bore_.isInches && !isMarked);
      point.bore = isInches || isMarked ? bore : bore * unit;
    }
    if (rest.empty()) rest = nextWord(value);
  } else if (!word.empty() && word.size() != 2 && word[0] >= '!' && word[0] <= '9') {
    say(Severity::kWarning,
        capitals(key) + ": expected a bore (a number, 0 or more) as fourth value",
        ", found \"" + harmless(word) + '"');
  }
  point.kind = endKindOf(rest);
  return true;
}

}  // namespace

Plan readPlan(std::string bytes, Messages& messages) {
  Plan plan;
  plan.text = decoded(std::move(bytes));
  const Layout layout = layoutOf(plan.text);
  if (layout.isPiping) Reader(plan, messages, layout).read();
  return plan;
}

bool hasComponents(const Plan& plan) {
  return std::any_of(plan.components.begin(), plan.components.end(),
                     [](const Component& row) { return row.points > 0 || row.isDamaged; });
}

}  // namespace Vesk::Pcf
