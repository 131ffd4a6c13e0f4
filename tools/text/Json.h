// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_JSON_H
#define VESK_TOOLS_JSON_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vesk/GePoint.h"

namespace VeskTool {

// Writes one JSON document piece by piece, so that it need never be in memory:
//
//   json.beginObject().key("schema").value("vesk.info/1").key("files").beginArray()
//   ...
//   json.endArray().endObject();
//
// Keys stand in the order in which they are given. Numbers have the fewest
// digits that give the same double back; what is no finite number is null. Text
// that is no UTF-8 gets U+FFFD for what can't be kept. Two blanks for each depth;
// with beginRow an object or array stands on one line.
class JsonWriter {
 public:
  explicit JsonWriter(std::string& to) : to_(to) {}

  JsonWriter& beginObject() { return begin('{', false); }
  JsonWriter& beginArray() { return begin('[', false); }
  JsonWriter& beginObjectRow() { return begin('{', true); }
  JsonWriter& beginArrayRow() { return begin('[', true); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& endArray() { return end(']'); }
  JsonWriter& key(std::string_view name);

  JsonWriter& value(std::string_view text);
  JsonWriter& value(const char* text) { return value(std::string_view(text)); }
  JsonWriter& value(double number);
  JsonWriter& value(std::uint64_t number);
  JsonWriter& value(std::int64_t number);
  JsonWriter& value(int number) { return value(std::int64_t{number}); }
  JsonWriter& value(bool truth);
  JsonWriter& value(const GePoint& p);  // [x, y, z]
  JsonWriter& null();

  // JSON that was made elsewhere, as one value.
  JsonWriter& raw(std::string_view text);

 private:
  struct Level {
    bool row;
    bool empty;
  };

  JsonWriter& begin(char bracket, bool row);
  JsonWriter& end(char bracket);
  void separate();
  void newLine(std::size_t depth);

  std::string& to_;
  std::vector<Level> levels_;
  bool afterKey_ = false;
};

// The text with U+FFFD for what is no UTF-8.
std::string validUtf8(std::string_view text);

// A JSON string with its quotes.
void appendJsonString(std::string& to, std::string_view text);

}  // namespace VeskTool

#endif
