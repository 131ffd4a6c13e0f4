#include "api/HeaderRecord.h"

#include <string_view>

#include "output/Base36.h"
#include "output/RecordWords.h"

namespace Vesk {
namespace {

void appendAttribute(std::string& attributes, std::string_view name, const FixStrB& field) {
  if (field.isBlank()) return;
  const std::string_view text(field.data());
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
  if (out.mode == kFixedColumns) out.prefix = LineNumbers::kFirst;
  visitPrefix(*this, out.mode, [&out](const auto& field) { out.prefix += field.data(); });
  if (out.mode == kTokens) {
    out.prefix += LineNumbers::kFirstOfTokens;
    appendAttribute(out.attributes, Words::kCs, f6);
    appendAttribute(out.attributes, Words::kSp, f7);
  }
}

}  // namespace Vesk
