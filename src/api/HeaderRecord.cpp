#include "api/HeaderRecord.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "output/Base36.h"
#include "output/RecordWords.h"

namespace Vesk {
namespace {

// Collects the parts of a prefix, so that the string takes one step.
class PrefixText {
 public:
  void add(std::string_view part) { end_ = std::copy(part.begin(), part.end(), end_); }
  std::string_view text() const { return {chars_.data(), end_}; }

 private:
  std::array<char, kFixedColumnsLayout.keyword> chars_;  // the longer prefix
  char* end_ = chars_.data();
};

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
  PrefixText prefix;
  if (out.mode == kFixedColumns) prefix.add(LineNumbers::kFirst);
  visitPrefix(*this, out.mode, [&prefix](const auto& field) { prefix.add(field.view()); });
  if (out.mode == kTokens) prefix.add(LineNumbers::kFirstOfTokens);
  out.prefix = prefix.text();

  out.attributes.clear();
  if (out.mode == kTokens) {
    appendAttribute(out.attributes, Words::kCs, f6);
    appendAttribute(out.attributes, Words::kSp, f7);
  }
}

}  // namespace Vesk
