#include "api/HeaderRecord.h"

#include <string>
#include <string_view>

#include "output/Base36.h"
#include "output/RecordWords.h"

namespace Vesk {
namespace {

constexpr std::string_view kBlanks = "                  ";

// With a width that the compiler knows, a few comparisons of words.
template <std::size_t N>
bool isBlank(const FixStr<N>& field) {
  static_assert(N <= kBlanks.size());
  return field.view() == kBlanks.substr(0, N);
}

template <std::size_t N>
void appendAttribute(std::string& attributes, std::string_view name, const FixStr<N>& field) {
  if (isBlank(field)) return;
  const std::string_view text = field.view();
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
  const std::int32_t mode = out.mode;
  std::size_t length = 0;
  visitPrefix(*this, mode, [&length](const auto& field) { length += field.view().size(); });
  if (length > 0) length += kLineNumberWidth;
  // Into the text itself: its length seldom changes.
  out.prefix.resize(length);
  char* to = out.prefix.data();
  const auto add = [&to](std::string_view text) { to += text.copy(to, text.size()); };
  if (mode == kFixedColumns) add(LineNumbers::kFirst);
  visitPrefix(*this, mode, [&add](const auto& field) { add(field.view()); });
  if (mode == kTokens) add(LineNumbers::kFirstOfTokens);

  out.attributes.clear();
  if (mode != kTokens) return;
  appendAttribute(out.attributes, Words::kCs, f6);
  appendAttribute(out.attributes, Words::kSp, f7);
}

}  // namespace Vesk
