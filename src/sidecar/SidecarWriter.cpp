// SPDX-License-Identifier: MIT
#include <charconv>
#include <utility>

#include "sidecar/Sidecar.h"
#include "sidecar/Utf8.h"

namespace Vesk {
namespace {

// Most texts are plain: letters, digits and blanks that need no quotes.
bool isPlain(std::string_view text) {
  if (isLikeFormula(text)) return false;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte > '~' || c == ',' || c == '"') return false;
  }
  return true;
}

void appendField(std::string& line, std::string_view text) {
  if (isPlain(text)) {
    line += text;
    return;
  }
  const std::string field = (isLikeFormula(text) ? "'" : "") + toUtf8(text);
  if (field.find_first_of(",\"\r\n") == std::string::npos) {
    line += field;
    return;
  }
  line += '"';
  for (const char c : field) {
    if (c == '"') line += '"';
    line += c;
  }
  line += '"';
}

void appendNumber(std::string& line, int number) {
  char digits[16];
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
  line.append(digits, end.ptr);
}

}  // namespace

SidecarWriter::SidecarWriter(std::ostream& out, std::vector<std::string> columns)
    : out_(out), columns_(std::move(columns)) {
  for (const std::string_view name : kSidecarKeyNames) {
    if (!line_.empty()) line_ += ',';
    line_ += name;
  }
  for (const std::string& name : columns_) appendField(line_ += ',', name);
  line_ += '\n';
  out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
}

void SidecarWriter::add(const SidecarRow& row) {
  line_.clear();
  appendField(line_, row.f1);
  appendField(line_ += ',', row.f2);
  appendNumber(line_ += ',', row.first);
  appendNumber(line_ += ',', row.last);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    line_ += ',';
    if (i < row.values.size()) appendField(line_, row.values[i]);
  }
  line_ += '\n';
  out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
}

std::string sidecarNameOf(std::string_view recordFile) {
  constexpr std::string_view kEnd = ".dat";
  bool hasEnd = recordFile.size() > kEnd.size();
  for (std::size_t i = 0; hasEnd && i < kEnd.size(); ++i) {
    const char c = recordFile[recordFile.size() - kEnd.size() + i];
    const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    hasEnd = lower == kEnd[i];
  }
  if (hasEnd) recordFile.remove_suffix(kEnd.size());
  return std::string(recordFile) + ".attributes.csv";
}

}  // namespace Vesk
