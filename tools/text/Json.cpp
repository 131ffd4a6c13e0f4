// SPDX-License-Identifier: MIT
#include "text/Json.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "text/Numbers.h"

namespace VeskTool {

void appendJsonString(std::string& to, std::string_view text) {
  const bool plain = std::all_of(text.begin(), text.end(), [](char c) {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
  });
  if (plain) {
    to += '"';
    to += text;
    to += '"';
    return;
  }
  to += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string validUtf8(std::string_view text) {
  const bool plain = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
  if (plain) return std::string(text);
  std::string quoted;
  appendJsonString(quoted, text);
  return nlohmann::json::parse(quoted).get<std::string>();
}

JsonWriter& JsonWriter::key(std::string_view name) {
  separate();
  appendJsonString(to_, name);
  to_ += ": ";
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
  separate();
  appendJsonString(to_, text);
  return *this;
}

JsonWriter& JsonWriter::value(double number) {
  if (!std::isfinite(number)) return null();
  separate();
  appendShortest(to_, number);
  return *this;
}

JsonWriter& JsonWriter::value(std::uint64_t number) {
  separate();
  to_ += std::to_string(number);
  return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number) {
  separate();
  to_ += std::to_string(number);
  return *this;
}

JsonWriter& JsonWriter::value(bool truth) { return raw(truth ? "true" : "false"); }

JsonWriter& JsonWriter::value(const GePoint& p) {
  return beginArrayRow().value(p.x).value(p.y).value(p.z).endArray();
}

JsonWriter& JsonWriter::null() { return raw("null"); }

JsonWriter& JsonWriter::raw(std::string_view text) {
  separate();
  to_ += text;
  return *this;
}

JsonWriter& JsonWriter::begin(char bracket, bool row) {
  separate();
  to_ += bracket;
  const bool inRow = !levels_.empty() && levels_.back().row;
  levels_.push_back({row || inRow, true});
  return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
  const Level level = levels_.back();
  levels_.pop_back();
  if (!level.row && !level.empty) newLine(levels_.size());
  to_ += bracket;
  if (levels_.empty()) to_ += '\n';
  return *this;
}

void JsonWriter::separate() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (levels_.empty()) return;
  Level& level = levels_.back();
  if (!level.empty) to_ += level.row ? ", " : ",";
  if (!level.row) newLine(levels_.size());
  level.empty = false;
}

void JsonWriter::newLine(std::size_t depth) {
  to_ += '\n';
  to_.append(2 * depth, ' ');
}

}  // namespace VeskTool
