// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_DESCRIBE_H
#define VESK_TOOLS_DESCRIBE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "output/RecordFields.h"
#include "text/Json.h"
#include "vesk/Geo.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// One value of an element.
struct Property {
  enum class Type { kNumber, kInteger, kPoint, kVector, kText };

  Vesk::Value id = Vesk::Value::kOrigin;  // what it is
  std::size_t index = 0;                  // of a numbered one
  std::string name;                       // for people and programs: "vertex 0"
  Type type = Type::kNumber;
  GePoint value;     // a number stands in x
  std::string text;  // of kText

  friend bool operator==(const Property&, const Property&) = default;

  bool isSameValue(const Property& other) const { return id == other.id && index == other.index; }
};

// The property that is the same value; null if there is none.
const Property* findValue(const std::vector<Property>& in, const Property& wanted);

// All values of an element in the order of its record. Corners, vertices and
// arcs have numbers: "vertex 0", "arc 1 radius". The first is its place.
std::vector<Property> propertiesOf(const Vesk::Geo& geo);

// The place: the first point of the record.
GePoint placeOf(const Vesk::Geo& geo);

// A copy of the element as what it is.
std::unique_ptr<Vesk::Geo> copyOf(const Vesk::Geo& geo);

// What an element measures, in words: "length 2000, diameter 219.1".
std::string sizesOf(const Vesk::Geo& geo);

// Field F1 or F2 without blanks at its end.
std::string trimmedField(const Vesk::FixStrB& field);

// "DUCT-7 A1": F1 and F2.
std::string headerText(const Vesk::HeaderFields& header);

// The value in words with six decimals at most, and as JSON.
std::string valueText(const Property& property);
void appendJson(JsonWriter& json, const Property& property);

}  // namespace VeskTool

#endif
