// SPDX-License-Identifier: MIT
#include "clash/ClashReports.h"

#include <cmath>

#include "text/Json.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr int kShownDecimals = 3;

bool isDeep(const Clash& clash) {
  return clash.kind == Clash::Kind::kHard || clash.kind == Clash::Kind::kInside;
}

std::string nameOfElement(const ClashElement& element, const ClashModel& model) {
  std::string name(Vesk::wordOf(element.kind));
  const std::string& header = model.headers()[element.header].text;
  if (!header.empty()) name += " of " + header;
  return name;
}

std::string pointShown(const GePoint& p) {
  return trimmedNumber(p.x, kShownDecimals) + ' ' + trimmedNumber(p.y, kShownDecimals) + ' ' +
         trimmedNumber(p.z, kShownDecimals);
}

std::string_view wordOf(Clash::Kind kind) {
  switch (kind) {
    case Clash::Kind::kHard:
      return "hard";
    case Clash::Kind::kClearance:
      return "clearance";
    case Clash::Kind::kDuplicate:
      return "duplicate";
    case Clash::Kind::kInside:
      break;
  }
  return "inside";
}

std::string messageOf(const Clash& clash, const std::string& one, const std::string& other,
                      const ClashSearch& search) {
  const std::string place = " at " + pointShown(clash.place);
  switch (clash.kind) {
    case Clash::Kind::kDuplicate:
      return one + " is the same shape as the " + other;
    case Clash::Kind::kClearance:
      if (clash.distance == 0.0) return one + " touches the " + other + place;
      return one + " is " + trimmedNumber(clash.distance, kShownDecimals) + " from the " + other +
             place;
    case Clash::Kind::kHard:
    case Clash::Kind::kInside:
      break;
  }
  const ClashDepth depth = search.depthOf(clash);
  std::string text = one;
  text += clash.kind == Clash::Kind::kHard ? " overlaps the " : " and the pipe that ends in it: ";
  text += other + place;
  text += depth.isBound ? ", at least " : ", ";
  return text + trimmedNumber(depth.depth, kShownDecimals) + " deep";
}

// Rounded to a millionth: what is behind depends on the compiler.
double settled(double v) { return std::round(v * 1e6) / 1e6 + 0.0; }

void appendElement(JsonWriter& json, std::string_view key, const ClashElement& element,
                   const ClashModel& model) {
  const ClashHeader& header = model.headers()[element.header];
  json.key(key).beginObjectRow().key("file").value(model.files()[element.file]);
  json.key("line").value(element.line).key("kind").value(nameOf(element.kind));
  json.key("header").value(header.text).key("counter").value(element.counter).endObject();
}

}  // namespace

std::string_view codeOf(Clash::Kind kind) {
  switch (kind) {
    case Clash::Kind::kHard:
      return "V501";
    case Clash::Kind::kClearance:
      return "V502";
    case Clash::Kind::kDuplicate:
      return "V503";
    case Clash::Kind::kInside:
      break;
  }
  return "V504";
}

Finding findingOf(const Clash& clash, const ClashModel& model, const ClashSearch& search,
                  bool isBack) {
  const ClashElement& here = model.elements()[isBack ? clash.b : clash.a];
  const ClashElement& there = model.elements()[isBack ? clash.a : clash.b];
  Finding finding;
  finding.code = codeOf(clash.kind);
  finding.severity = isDeep(clash) ? Severity::kError : Severity::kWarning;
  finding.file = model.files()[here.file];
  finding.line = here.line;
  std::string other = nameOfElement(there, model) + " at ";
  other += here.file == there.file ? "line " : model.files()[there.file] + ':';
  other += std::to_string(there.line);
  finding.message = messageOf(clash, nameOfElement(here, model), other, search);
  return finding;
}

std::string summaryOf(const ClashReport& report, const ClashModel& model) {
  std::string text;
  for (const std::string& file : model.files()) text += (text.empty() ? "" : ", ") + file;
  const auto countOf = [&](std::string_view code) { return report.counts.at(code); };
  text += ": " + grouped(countOf("V501")) + (countOf("V501") == 1 ? " clash" : " clashes");
  if (countOf("V504") > 0) text += ", " + grouped(countOf("V504")) + " inside";
  text += ", " + grouped(countOf("V502")) + " too near, " + counted(countOf("V503"), "duplicate");
  text += " in " + counted(model.elements().size(), "element");
  if (model.withoutBody() > 0) text += "; " + grouped(model.withoutBody()) + " without room";
  text += '\n';
  for (const auto& [code, count] : report.untold) {
    text += "  " + grouped(count) + " more of " + std::string(code) + '\n';
  }
  return text;
}

std::string jsonOf(const ClashReport& report, const ClashModel& model, const ClashSearch& search) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk.clash/1");
  json.key("files").beginArrayRow();
  for (const std::string& file : model.files()) json.value(file);
  json.endArray();
  json.key("elements").value(std::uint64_t{model.elements().size()});
  json.key("withoutRoom").value(model.withoutBody());
  json.key("pairs").value(report.pairs);
  json.key("counts").beginObject();
  for (const auto& [code, count] : report.counts) json.key(code).value(count);
  json.endObject().key("untold").beginObject();
  for (const auto& [code, count] : report.untold) json.key(code).value(count);
  json.endObject().key("clashes").beginArray();
  for (const Clash& clash : report.clashes) {
    json.beginObject().key("code").value(codeOf(clash.kind));
    json.key("kind").value(wordOf(clash.kind));
    appendElement(json, "a", model.elements()[clash.a], model);
    appendElement(json, "b", model.elements()[clash.b], model);
    json.key("place").value(
        GePoint(settled(clash.place.x), settled(clash.place.y), settled(clash.place.z)));
    json.key("distance").value(settled(clash.distance));
    if (isDeep(clash)) {
      const ClashDepth depth = search.depthOf(clash);
      json.key("depth").value(settled(depth.depth)).key("depthIsLowerBound").value(depth.isBound);
    }
    json.endObject();
  }
  json.endArray().endObject();
  return text;
}

}  // namespace VeskTool
