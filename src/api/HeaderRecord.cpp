#include "api/HeaderRecord.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "output/Base36.h"

namespace Vesk {
namespace {

std::string_view textOf(std::string_view word) { return word; }

template <std::size_t N>
std::string_view textOf(const FixStr<N>& field) {
  return field.view();
}

// Puts the parts together, with one step of the string.
template <class... Parts>
void setText(std::string& text, const Parts&... parts) {
  std::array<char, kFixedColumnsLayout.keyword> chars;
  char* end = chars.data();
  const auto add = [&end](std::string_view part) {
    end = std::copy(part.begin(), part.end(), end);
  };
  (add(textOf(parts)), ...);
  text.assign(chars.data(), end);
}

template <std::size_t N>
void appendAttribute(std::string& attributes, std::string_view name, const FixStr<N>& field) {
  const std::string_view text = field.view();
  if (std::count(text.begin(), text.end(), field.padChar()) == N) return;
  attributes += name;
  attributes += text.substr(0, text.find_last_not_of(" \r\n") + 1);
  attributes += ',';
}

}  // namespace

bool HeaderRecord::set(const char* a, const char* b, int n) {
  f1.assign(a, true);
  f2.assign(b, true);
  char digits[kCounterWidth + 1] = {};
  const bool fits = encodeBase36(n, std::span(digits, kCounterWidth));
  f3.assign(digits, false);
  return fits;
}

void HeaderRecord::writeTo(Output& out) const {
  out.prefix.clear();
  out.attributes.clear();
  if (out.mode == kFixedColumns) {
    setText(out.prefix, std::string_view("60"), f6, f2, f4, f1, f3);
  } else if (out.mode == kTokens) {
    setText(out.prefix, f1, f2, f3, f4, f5, std::string_view("00"));
    appendAttribute(out.attributes, "cs ", f6);
    appendAttribute(out.attributes, "sp ", f7);
  }
}

}  // namespace Vesk
