// SPDX-License-Identifier: MIT
#include "takeoff/Remarks.h"

#include "text/Numbers.h"

namespace VeskTool {

void Remarks::add(const std::string& text, const std::string& file, std::uint64_t line) {
  Said& said = said_[text];
  ++said.count;
  if (all_ || said.places.size() < kPlaces) {
    said.places.push_back(file + ':' + std::to_string(line));
  }
}

void Remarks::merge(const Remarks& later) {
  for (const auto& [text, from] : later.said_) {
    Said& said = said_[text];
    said.count += from.count;
    for (const std::string& place : from.places) {
      if (all_ || said.places.size() < kPlaces) said.places.push_back(place);
    }
  }
}

void Remarks::say(Session& session) const {
  std::size_t texts = 0;
  std::uint64_t left = 0;
  for (const auto& [text, said] : said_) {
    if (++texts > kMostTexts && !all_) {
      left += said.count;
      continue;
    }
    std::string line = said.places.front() + ": " + text;
    if (said.count > 1) line += " (" + grouped(said.count) + " times";
    for (std::size_t i = 1; i < said.places.size(); ++i) {
      line += (i == 1 ? ", also " : ", ") + said.places[i];
    }
    if (said.count > said.places.size()) line += " ...";
    session.warning(line + (said.count > 1 ? ")" : ""));
  }
  if (left > 0) session.warning("and so on, for " + counted(left, "more element"), "-v names them");
}

void Remarks::appendJson(JsonWriter& json) const {
  json.beginArray();
  for (const auto& [text, said] : said_) {
    json.beginObjectRow().key("text").value(text).key("count").value(said.count);
    json.key("places").beginArray();
    for (const std::string& place : said.places) json.value(place);
    json.endArray().endObject();
  }
  json.endArray();
}

}  // namespace VeskTool
