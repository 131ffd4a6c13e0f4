// SPDX-License-Identifier: MIT
#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "commands/Command.h"
#include "elements/Kinds.h"
#include "files/Files.h"
#include "files/SelectionOptions.h"
#include "select/Pattern.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Table.h"

namespace VeskTool {
namespace {

struct HeaderCount {
  std::string text;  // as --header takes it
  std::uint64_t elements;
};

// What is to be said about one file.
struct Summary {
  RecordsRead read;
  std::uint64_t elements = 0;  // that are chosen
  std::array<std::uint64_t, kKinds> kinds{};
  std::vector<HeaderCount> headers;  // in the order of the file
  Vesk::Extents box;
  double volume = 0.0;

  bool hasBox() const { return box.min.x <= box.max.x; }
};

// Counts elements by header; most elements have the header of the one before.
class HeaderCounter {
 public:
  explicit HeaderCounter(std::vector<HeaderCount>& headers) : headers_(headers) {}

  void add(const Vesk::HeaderFields& header) {
    const std::string_view f1(header.f1.data(), header.f1.width());
    const std::string_view f2(header.f2.data(), header.f2.width());
    if (last_ == headers_.size() || key_.compare(0, f1.size(), f1) != 0 ||
        key_.compare(f1.size(), f2.size(), f2) != 0) {
      key_.assign(f1).append(f2);
      const auto [found, isNew] = places_.try_emplace(key_, headers_.size());
      if (isNew) headers_.push_back({Vesk::headerName(f1, f2), 0});
      last_ = found->second;
    }
    ++headers_[last_].elements;
  }

 private:
  std::vector<HeaderCount>& headers_;
  std::unordered_map<std::string, std::size_t> places_;
  std::string key_;
  std::size_t last_ = 0;
};

Summary summarise(const std::string& file, Choice& choice, Session& session) {
  Summary summary;
  HeaderCounter headers(summary.headers);
  summary.read = readRecords(file, session, [&](Vesk::RecordFile& records) {
    const Vesk::RecordElement& element = records.element();
    if (!choice.takes(element)) return;
    ++summary.elements;
    ++summary.kinds[static_cast<std::size_t>(kindOf(*element.geo))];
    headers.add(element.header);
    element.geo->addExtents(summary.box);
    summary.volume += element.geo->volume();
  });
  return summary;
}

void appendRow(std::string& to, std::string_view name, const std::string& value) {
  to += "  " + padded(name, 10, Table::Side::kLeft) + value + '\n';
}

std::string boxCorner(const GePoint& p) {
  return rounded(p.x, 3) + ' ' + rounded(p.y, 3) + ' ' + rounded(p.z, 3);
}

std::string textOf(const Summary& summary, bool allHeaders, const Look& look) {
  std::string text;
  look.append(text, Look::Paint::kBold, summary.read.name);
  text += '\n';
  appendRow(text, "style", std::string(styleName(summary.read.mode)));
  appendRow(text, "elements", grouped(summary.elements));
  for (std::size_t i = 0; i < kKinds; ++i) {
    if (summary.kinds[i] == 0) continue;
    text += "    " + padded(wordsOf(static_cast<Kind>(i)), 12, Table::Side::kLeft) +
            grouped(summary.kinds[i]) + '\n';
  }
  if (summary.read.faults > 0) appendRow(text, "faults", grouped(summary.read.faults));
  appendRow(text, "headers", grouped(summary.headers.size()));
  if (allHeaders) {
    for (const HeaderCount& header : summary.headers) {
      text +=
          "    " + padded(header.text, 12, Table::Side::kLeft) + grouped(header.elements) + '\n';
    }
  }
  appendRow(text, "lines", grouped(summary.read.count.lines));
  appendRow(text, "bytes", grouped(summary.read.count.bytes));
  if (summary.hasBox()) {
    appendRow(text, "box from", boxCorner(summary.box.min));
    appendRow(text, "to", boxCorner(summary.box.max));
  }
  appendRow(text, "volume", rounded(summary.volume, 3));
  return text;
}

void appendJson(JsonWriter& json, const Summary& summary, bool allHeaders) {
  json.beginObject();
  json.key("file").value(summary.read.name);
  json.key("style").value(styleName(summary.read.mode));
  json.key("elements").value(summary.elements);
  json.key("kinds").beginObject();
  for (std::size_t i = 0; i < kKinds; ++i) {
    json.key(nameOf(static_cast<Kind>(i))).value(summary.kinds[i]);
  }
  json.endObject();
  json.key("faults").value(summary.read.faults);
  json.key("headers").value(std::uint64_t{summary.headers.size()});
  if (allHeaders) {
    json.key("headerList").beginArray();
    for (const HeaderCount& header : summary.headers) {
      json.beginObjectRow().key("header").value(header.text);
      json.key("elements").value(header.elements).endObject();
    }
    json.endArray();
  }
  json.key("lines").value(summary.read.count.lines);
  json.key("bytes").value(summary.read.count.bytes);
  json.key("box");
  if (summary.hasBox()) {
    json.beginObject().key("min").value(summary.box.min);
    json.key("max").value(summary.box.max).endObject();
  } else {
    json.null();
  }
  json.key("volume").value(summary.volume);
  json.endObject();
}

class InfoCommand : public Command {
 public:
  CommandText text() const override {
    return {"info",
            Group::kLook,
            "FILE...",
            "style, counts by kind, bounding box, volume",
            "Lengths are in the unit of the file, by custom millimetres; the volume is in that "
            "unit cubed. Elements that can't be read are reported and left out; the exit code is "
            "then 1.",
            {{"vesk info plant.dat", "what is in the file"},
             {"vesk info plant.dat --header 'P-10*'", "only some of its headers"},
             {"vesk info -j 0 --json zones/ | jq '.files[].elements'", "every file of a folder"},
             {"vesk info plant.dat.gz", "packed by gzip; zstd works too"}}};
  }

  void define(CLI::App& app) override {
    files_.define(app);
    app.add_flag("--headers", allHeaders_, "list the headers with their counts");
    app.add_flag("--json", json_, "one JSON document");
    selection_.define(app);
  }

  Exit run(Session& session) override {
    const std::vector<std::string> files = expandFiles(files_.words);
    Choice choice(selection_, files, session);
    std::vector<Summary> summaries(json_ ? files.size() : 0);
    const Exit exit =
        forEachFile(session, files, files_.jobs, [&](std::size_t index, Session& own) {
          Summary summary = summarise(files[index], choice, own);
          const Exit result = summary.read.exit();
          if (choice.isGiven() && summary.elements == 0) return result;
          if (json_) {
            summaries[index] = std::move(summary);
          } else {
            own.out().write(textOf(summary, allHeaders_, own.look()));
          }
          return result;
        });
    if (json_ && !choice.isNothing()) session.out().write(jsonOf(summaries));
    return worst(exit, choice.finish(session));
  }

 private:
  // Files that could not be read have no name.
  std::string jsonOf(const std::vector<Summary>& summaries) const {
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("schema").value("vesk.info/1").key("files").beginArray();
    for (const Summary& summary : summaries) {
      if (!summary.read.name.empty()) appendJson(json, summary, allHeaders_);
    }
    json.endArray().endObject();
    return text;
  }

  ManyFiles files_;
  SelectionOptions selection_;
  bool allHeaders_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeInfo() { return std::make_unique<InfoCommand>(); }

}  // namespace VeskTool
