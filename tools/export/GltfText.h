// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_GLTFTEXT_H
#define VESK_TOOLS_EXPORT_GLTFTEXT_H

#include <charconv>
#include <initializer_list>
#include <string>
#include <string_view>

namespace VeskTool {

// The shortest text that gives the number back; never minus zero. It must be
// finite.
template <class Number>
void appendJsonNumber(std::string& to, Number value) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, value == Number{0} ? Number{0} : value);
  to.append(text, end.ptr);
}

// "[1,2,3]"
template <class Numbers>
void appendJsonNumbers(std::string& to, const Numbers& numbers) {
  char before = '[';
  for (const auto number : numbers) {
    to += before;
    appendJsonNumber(to, number);
    before = ',';
  }
  to += before == '[' ? "[]" : "]";
}

}  // namespace VeskTool

#endif
