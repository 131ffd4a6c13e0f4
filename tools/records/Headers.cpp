// SPDX-License-Identifier: MIT
#include "records/Headers.h"

#include <algorithm>
#include <array>
#include <span>

#include "output/Base36.h"
#include "output/HeaderPrefix.h"
#include "select/Pattern.h"
#include "sidecar/Utf8.h"

namespace VeskTool {
namespace {

const std::size_t kF1Width = Vesk::HeaderFields().f1.width();

std::string_view withoutBlanks(std::string_view field) {
  return field.substr(0, field.find_last_not_of(' ') + 1);
}

}  // namespace

std::string headerKey(const Vesk::HeaderFields& header) {
  return std::string(header.f1.view()).append(header.f2.view());
}

std::string shownHeader(std::string_view key) {
  return withoutControls(Vesk::headerName(key.substr(0, kF1Width), key.substr(kF1Width)));
}

std::string withoutControls(std::string text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }, '?');
  return text;
}

std::optional<std::string> headerKeyOf(std::string_view name) {
  const Vesk::HeaderFields blank;
  const std::size_t blankAt = name.rfind(' ');
  std::string_view f1 = name;
  std::string_view f2;
  if (blankAt != std::string_view::npos && name.size() - blankAt - 1 <= blank.f2.width()) {
    f1 = withoutBlanks(name.substr(0, blankAt));
    f2 = name.substr(blankAt + 1);
  }
  if (name.empty() || f1.size() > blank.f1.width() || withoutControls(std::string(name)) != name)
    return std::nullopt;
  std::string key(f1);
  key.resize(kF1Width, ' ');
  key += f2;
  if (!f2.empty()) key.resize(kF1Width + blank.f2.width(), ' ');
  return key;
}

void setHeader(Vesk::HeaderFields& header, std::string_view key) {
  header.f1.assign(std::string(key.substr(0, kF1Width)).c_str(), false);
  header.f2.assign(std::string(key.substr(kF1Width)).c_str(), false);
}

void setCounter(Vesk::HeaderFields& header, int counter) {
  std::array<char, Vesk::kCounterWidth + 1> digits{};
  Vesk::encodeBase36(counter, std::span(digits).first<Vesk::kCounterWidth>());
  header.f3.assign(digits.data(), false);
}

void putHeader(std::string& lines, int mode, const Vesk::HeaderFields& header) {
  const bool isFixed = mode == Vesk::kFixedColumns;
  const Vesk::RecordLayout& layout = isFixed ? Vesk::kFixedColumnsLayout : Vesk::kTokensLayout;
  for (std::size_t begin = 0; begin < lines.size();) {
    const std::size_t end = std::min(lines.find('\n', begin), lines.size());
    if (end - begin >= layout.keyword) {
      std::size_t column = begin + (isFixed ? Vesk::kLineNumberWidth : 0);
      Vesk::visitPrefix(header, mode, [&](const auto& field) {
        lines.replace(column, field.width(), field.view());
        column += field.width();
      });
    }
    begin = end + 1;
  }
}

void setHeader(Vesk::SidecarRow& row, std::string_view key) {
  row.f1 = Vesk::toUtf8(withoutBlanks(key.substr(0, kF1Width)));
  row.f2 = Vesk::toUtf8(withoutBlanks(key.substr(kF1Width)));
}

}  // namespace VeskTool
