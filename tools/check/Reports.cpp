// SPDX-License-Identifier: MIT
#include "check/Reports.h"

#include <algorithm>
#include <string_view>

#include "elements/Kinds.h"
#include "findings/Catalogue.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

constexpr const char* kSarifSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

// A column of the finding in characters, both from 1; bytes that are no UTF-8
// count as one each.
std::uint64_t characterColumn(const Finding& finding, std::size_t column) {
  const std::string_view line = finding.sourceLine;
  if (line.empty()) return column - finding.insideBytes;
  const std::string_view before = line.substr(0, std::min(column - 1, line.size()));
  const auto inside = std::count_if(before.begin(), before.end(), isContinuationByte);
  return column - static_cast<std::uint64_t>(inside);
}

// A file name as a URI: what is no letter, digit or one of -._~/ is escaped.
std::string uriOf(std::string_view name) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::string_view kKept =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/";
  std::string uri;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\') {
      uri += '/';
    } else if (kKept.find(c) != kKept.npos) {
      uri += c;
    } else {
      uri += '%';
      uri += kDigits[byte / 16];
      uri += kDigits[byte % 16];
    }
  }
  return uri;
}

void appendCounts(JsonWriter& json, const CheckCounts& counts) {
  json.key("errors").value(counts.errors);
  json.key("warnings").value(counts.warnings);
  json.key("notes").value(counts.notes);
}

void appendText(JsonWriter& json, std::string_view key, std::string_view text) {
  json.key(key).beginObjectRow().key("text").value(text).endObject();
}

void appendRules(JsonWriter& json, std::string_view families) {
  json.key("rules").beginArray();
  for (const CodeText& code : catalogue()) {
    if (families.find(code.code[1]) == families.npos) continue;
    json.beginObject().key("id").value(code.code);
    appendText(json, "shortDescription", code.title);
    appendText(json, "fullDescription", code.meaning);
    appendText(json, "help", code.remedy);
    json.endObject();
  }
  json.endArray();
}

void appendResult(JsonWriter& json, const Finding& finding) {
  json.beginObject().key("ruleId").value(finding.code);
  json.key("level").value(nameOf(finding.severity));
  std::string message = finding.message;
  if (!finding.expected.empty()) message += "; expected " + finding.expected;
  appendText(json, "message", message);
  json.key("locations").beginArray().beginObject().key("physicalLocation").beginObject();
  json.key("artifactLocation").beginObjectRow().key("uri").value(uriOf(finding.file)).endObject();
  if (finding.line > 0) {
    json.key("region").beginObjectRow().key("startLine").value(finding.line);
    if (finding.column > 0) {
      const std::size_t last = std::max(finding.column, finding.endColumn);
      json.key("startColumn").value(characterColumn(finding, finding.column));
      json.key("endColumn").value(characterColumn(finding, last + 1));
    }
    json.endObject();
  }
  json.endObject().endObject().endArray().endObject();
}

}  // namespace

std::string summaryOf(const FileReport& report) {
  const CheckCounts& counts = report.counts;
  std::string text = report.file + ": " + counted(counts.errors, "error") + ", " +
                     counted(counts.warnings, "warning");
  if (counts.notes > 0) text += ", " + counted(counts.notes, "note");
  text += " in " + counted(counts.elements, "element") + '\n';
  for (const auto& [code, count] : counts.untold) {
    text += "  " + grouped(count) + " more of " + std::string(code) + '\n';
  }
  return text;
}

std::string jsonOf(const std::vector<FileReport>& reports) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk.check/1").key("files").beginArray();
  CheckCounts all;
  for (const FileReport& report : reports) {
    json.beginObject().key("file").value(report.file);
    json.key("style").value(styleName(report.mode));
    json.key("elements").value(report.counts.elements);
    appendCounts(json, report.counts);
    json.key("untold").beginObject();
    for (const auto& [code, count] : report.counts.untold) json.key(code).value(count);
    json.endObject();
    json.key("findings").beginArray();
    for (const Finding& finding : report.findings) appendJson(json, finding);
    json.endArray().endObject();
    all.elements += report.counts.elements;
    all.errors += report.counts.errors;
    all.warnings += report.counts.warnings;
    all.notes += report.counts.notes;
  }
  json.endArray().key("elements").value(all.elements);
  appendCounts(json, all);
  json.endObject();
  return text;
}

std::string sarifOf(const std::vector<FileReport>& reports, bool allRead,
                    std::string_view families) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("$schema").value(kSarifSchema).key("version").value("2.1.0");
  json.key("runs").beginArray().beginObject();
  json.key("tool").beginObject().key("driver").beginObject().key("name").value("vesk");
  json.key("version").value(VESK_VERSION);
  appendRules(json, families);
  json.endObject().endObject();
  json.key("invocations").beginArray().beginObjectRow();
  json.key("executionSuccessful").value(allRead).endObject().endArray();
  json.key("columnKind").value("unicodeCodePoints");
  json.key("results").beginArray();
  for (const FileReport& report : reports) {
    for (const Finding& finding : report.findings) appendResult(json, finding);
  }
  json.endArray().endObject().endArray().endObject();
  return text;
}

}  // namespace VeskTool
