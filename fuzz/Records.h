// SPDX-License-Identifier: MIT
#ifndef VESK_FUZZ_RECORDS_H
#define VESK_FUZZ_RECORDS_H

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>
#include <string_view>

#include "api/ElementHolder.h"
#include "vesk/RecordFile.h"
#include "vesk/TovException.h"

namespace VeskFuzz {

// The lines of the text, each in memory of just its size, so that a step beyond is seen.
inline Vesk::Recs linesOf(const std::string& text) {
  Vesk::Recs lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.emplace_back(text.substr(at, end - at)).shrink_to_fit();
    at = end + 1;
  }
  return lines;
}

// The text of the holder's element as it stands in a file; empty when it can't
// be written.
inline std::string writtenText(const Vesk::ElementHolder& holder, std::int32_t mode) {
  Vesk::Output out;
  out.mode = mode;
  out.lineSize = mode == Vesk::kTokens ? Vesk::kTokensLineSize : Vesk::kFixedColumnsLineSize;
  try {
    holder.writeRecords(out);
    out.flushLine();
  } catch (const Vesk::TovException&) {
    return {};
  }
  std::string text;
  for (const std::string& line : out.recs) text += line + '\n';
  return text;
}

inline Vesk::ElementHolder holderOf(const Vesk::RecordElement& element) {
  Vesk::ElementHolder holder;
  static_cast<Vesk::HeaderFields&>(holder.header) = element.header;
  holder.ft = element.ft;
  holder.tk = element.tk;
  holder.setElement(*element.geo);
  return holder;
}

// Whether all numbers in the text are such as plants have them, so that a
// difference of two keeps its decimals: none has more than seven digits before
// the point, an exponent, or is none at all.
inline bool isTame(std::string_view text) {
  int digits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '.') {
      while (i + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[i + 1]))) ++i;
      digits = 0;
    } else {
      digits = std::isdigit(static_cast<unsigned char>(c)) ? digits + 1 : 0;
    }
    if (digits > 7) return false;
  }
  return text.find("nan") == text.npos && text.find("inf") == text.npos &&
         text.find("e+") == text.npos && text.find("0e") == text.npos;
}

// The text of all elements, written again; how many faults there were.
struct Reading {
  std::string text;
  std::string lines;
  int elements = 0;
  int faults = 0;
  int unwritable = 0;
  std::string report;
};

inline Reading readAll(std::unique_ptr<Vesk::ByteSource> source, std::int32_t mode) {
  Vesk::RecordOptions options;
  options.mode = mode;
  Vesk::RecordFile file(std::move(source), "f", options);
  Reading all;
  for (;;) {
    const Vesk::RecordFile::Found found = file.next();
    if (found == Vesk::RecordFile::Found::kEnd) return all;
    if (found == Vesk::RecordFile::Found::kFault) {
      ++all.faults;
      all.report += file.textOf(file.fault()) + '\n';
      continue;
    }
    ++all.elements;
    for (const std::string& line : file.lines()) all.lines += line + '\n';
    const std::string written = writtenText(holderOf(file.element()), file.mode());
    if (written.empty()) ++all.unwritable;
    all.text += written;
  }
}

inline Reading readAll(std::string_view text, std::int32_t mode) {
  return readAll(std::make_unique<Vesk::TextSource>(text), mode);
}

}  // namespace VeskFuzz

#endif
