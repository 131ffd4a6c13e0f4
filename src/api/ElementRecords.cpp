// SPDX-License-Identifier: MIT
#include "api/ElementRecords.h"

#include <string>
#include <string_view>

#include "output/HeaderPrefix.h"
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

void writeClosing(Output& out, std::string_view name, const std::optional<std::int32_t>& value) {
  if (!value) return;
  out.addText(",");
  out.addText(name);
  out.addFixed(*value, 0, false);
}

}  // namespace

void writeHeader(const HeaderFields& header, Output& out) {
  const std::int32_t mode = out.mode;
  std::size_t length = 0;
  visitPrefix(header, mode, [&length](const auto& field) { length += field.view().size(); });
  if (length > 0) length += kLineNumberWidth;
  // Into the text itself: its length seldom changes.
  out.prefix.resize(length);
  char* to = out.prefix.data();
  const auto add = [&to](std::string_view text) { to += text.copy(to, text.size()); };
  if (mode == kFixedColumns) add(LineNumbers::kFirst);
  visitPrefix(header, mode, [&add](const auto& field) { add(field.view()); });
  if (mode == kTokens) add(LineNumbers::kFirstOfTokens);

  out.attributes.clear();
  if (mode != kTokens) return;
  appendAttribute(out.attributes, Words::kCs, header.f6);
  appendAttribute(out.attributes, Words::kSp, header.f7);
}

void writeElementRecords(const HeaderFields& header, const Geo& geo,
                         const ClosingAttributes& closing, Output& out) {
  writeHeader(header, out);
  geo.write(out);
  if (out.mode != kTokens) return;
  writeClosing(out, Words::kFt, closing.ft);
  writeClosing(out, Words::kTk, closing.tk);
}

}  // namespace Vesk
