// SPDX-License-Identifier: MIT
#include "pcf/Attributes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <utility>

#include "sidecar/Utf8.h"

namespace Vesk::Pcf {
namespace {

// clang-format off
// The columns of the sidecar; those with keys take the first that is there.
enum Column : std::size_t {
  kPipeline, kComponent, kFamily, kComponentIdentifier, kUci, kItemCode, kDescription, kSkey,
  kSpec, kMaterial, kWeight, kTag, kAttributes, kSource, kLine, kColumns
};

constexpr std::string_view kColumnNames[kColumns] = {
    "pipeline", "component", "kind", "component-identifier", "uci", "item-code", "description",
    "skey", "spec", "material", "weight", "tag", "attributes", "source", "line"};

struct KeyRow {
  std::string_view key;
  Column column;
};

constexpr KeyRow kKeys[] = {
    {"COMPONENT-IDENTIFIER",        kComponentIdentifier},
    {"UCI",                         kUci},
    {"UNIQUE-COMPONENT-IDENTIFIER", kUci},
    {"ITEM-CODE",                   kItemCode},
    {"ITEM-DESCRIPTION",            kDescription},
    {"DESCRIPTION",                 kDescription},
    {"PIPING-SPEC",                 kSpec},
    {"MATERIAL-IDENTIFIER",         kMaterial},
    {"MATERIAL",                    kMaterial},
    {"WEIGHT",                      kWeight},
    {"TAG",                         kTag},
    {"NAME",                        kTag},
};

struct DirectionRow {
  std::string_view word;
  GeVector direction;
};

constexpr DirectionRow kDirections[] = {
    {"EAST", {1, 0, 0}},   {"WEST", {-1, 0, 0}}, {"NORTH", {0, 1, 0}},
    {"SOUTH", {0, -1, 0}}, {"UP", {0, 0, 1}},    {"DOWN", {0, 0, -1}},
    {"E", {1, 0, 0}},      {"W", {-1, 0, 0}},    {"N", {0, 1, 0}},
    {"S", {0, -1, 0}},     {"U", {0, 0, 1}},     {"D", {0, 0, -1}},
};
// clang-format on

// Attributes that a message may have beside its text. Of a bare text the first word is
// anything.
bool isAttributeOfMessage(std::string_view key) {
  if (roleOf(key) != Role::kNone) return true;
  const std::string word = capitals(key);
  constexpr std::string_view kPlain[] = {"SKEY", "UCI", "STATUS", "CATEGORY"};
  if (std::find(std::begin(kPlain), std::end(kPlain), word) != std::end(kPlain)) return true;
  const bool isCompound = word.find('-') != std::string::npos;
  const Word meaning = wordOf(word);
  return isCompound && (meaning == Word::kAttribute || meaning == Word::kHeader);
}

bool isTextKey(std::string_view key) {
  const char first = key.front();
  if (std::string_view("TMDNLtmdnl").find(first) == std::string_view::npos) return false;
  return wordOf(capitals(key)) == Word::kText;
}

// What stands behind the word in the first line of a component.
std::string_view valueBehindWord(const Plan& plan, const Component& component) {
  Lines lines(plan.textOf(component), component.line);
  return lines.next() ? keyValueOf(lines.line()).value : std::string_view();
}

// A value goes to its column; of two the first.
void takeAttribute(std::vector<std::string>& values, const KeyValue& entry) {
  constexpr std::string_view kNumbered = "COMPONENT-ATTRIBUTE";
  if (isWord(entry.key.substr(0, kNumbered.size()), kNumbered)) {
    std::string& all = values[kAttributes];
    if (!all.empty()) all += "; ";
    all.append(entry.key.substr(kNumbered.size())).append("=").append(entry.value);
    return;
  }
  for (const KeyRow& row : kKeys) {
    if (!isWord(entry.key, row.key)) continue;
    if (values[row.column].empty()) values[row.column] = entry.value;
    return;
  }
}

}  // namespace

std::vector<std::string> textsOfMessage(const Plan& plan, const Component& component) {
  std::vector<std::string> texts;
  std::vector<std::string> bare;
  const std::string_view behind = valueBehindWord(plan, component);
  if (!behind.empty()) texts.emplace_back(behind);
  visitAttributes(plan, component, [&](const KeyValue& entry, std::string_view line) {
    if (isTextKey(entry.key) && !entry.value.empty()) {
      texts.emplace_back(entry.value);
    } else if (!isAttributeOfMessage(entry.key)) {
      bare.emplace_back(line);
    }
  });
  return texts.empty() ? bare : texts;
}

std::vector<std::string> textsOfMark(const Plan& plan, const Component& component) {
  std::vector<std::string> texts;
  visitAttributes(plan, component, [&](const KeyValue& entry, std::string_view) {
    const bool isReference = capitals(entry.key).find("-REFERENCE") != std::string::npos;
    if ((isReference || isTextKey(entry.key)) && !entry.value.empty())
      texts.emplace_back(entry.value);
  });
  return texts;
}

GeVector directionOf(std::string_view words) {
  GeVector direction;
  while (!words.empty()) {
    const std::size_t end = std::min(words.find_first_of(" -_"), words.size());
    const std::string word = capitals(words.substr(0, end));
    for (const DirectionRow& row : kDirections) {
      if (row.word == word) direction += row.direction;
    }
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return direction;
}

GeVector flatDirectionOf(const Plan& plan, const Component& component) {
  GeVector direction;
  visitAttributes(plan, component, [&](const KeyValue& entry, std::string_view) {
    if (isWord(entry.key, "FLAT-DIRECTION")) direction = directionOf(entry.value);
  });
  return direction;
}

SpindleData spindleOf(const Plan& plan, const Component& component) {
  SpindleData spindle;
  visitAttributes(plan, component, [&](const KeyValue& entry, std::string_view) {
    const std::string_view starts("SAOsao");
    if (starts.find(entry.key.front()) == std::string_view::npos) return;
    const std::string key = capitals(entry.key);
    if (key == "SPINDLE-DIRECTION") {
      spindle.direction = directionOf(entry.value);
    } else if (key.starts_with("SPINDLE") || key.starts_with("ACTUATOR") ||
               key.starts_with("OPERATOR")) {
      const Actuator actuator = actuatorOf(entry.value);
      if (actuator != Actuator::kNotTold) spindle.actuator = actuator;
      if (spindle.direction == GeVector()) spindle.direction = directionOf(entry.value);
    }
  });
  return spindle;
}

std::vector<std::string> sidecarColumns() {
  return {std::begin(kColumnNames), std::end(kColumnNames)};
}

void fillSidecarValues(std::vector<std::string>& values, const Plan& plan,
                       const Component& component, std::string_view source) {
  values.resize(kColumns);
  for (std::string& value : values) value.clear();
  const Kind& kind = plan.kindOf(component);
  values[kComponent] = kind.word;
  values[kFamily] = kind.family == Family::kNothing ? "" : nameOf(kind.family);
  values[kSkey] = kind.skey;
  values[kSource] = source;
  char digits[16];
  values[kLine].assign(digits, std::to_chars(digits, digits + sizeof digits, component.line).ptr);
  visitAttributes(plan, component, [&](const KeyValue& entry, std::string_view) {
    if (!entry.value.empty()) takeAttribute(values, entry);
  });
  if (component.pipeline != kNoPipeline) {
    const Pipeline& pipeline = plan.pipelines[component.pipeline];
    values[kPipeline] = pipeline.reference;
    if (values[kSpec].empty()) values[kSpec] = pipeline.spec;
  }
  for (const Column code : {kItemCode, kMaterial}) {
    if (!values[kDescription].empty() || values[code].empty()) continue;
    const auto description = plan.descriptions.find(values[code]);
    if (description != plan.descriptions.end()) values[kDescription] = description->second;
  }
  for (std::string& value : values) {
    std::replace_if(
        value.begin(), value.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; },
        ' ');
  }
}

}  // namespace Vesk::Pcf
