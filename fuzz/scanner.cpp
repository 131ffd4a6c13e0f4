// SPDX-License-Identifier: MIT
// The scanner: any lines, any sequence of its operations; and the text of one
// number beside the C library's reader.
//
//   1 byte style and delimiters, 1 the start column, 1 the number of operations,
//   the operations, then the lines
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

#include "Fuzz.h"
#include "Records.h"
#include "input/Input.h"
#include "input/ParseDouble.h"
#include "output/RecordLayout.h"
#include "vesk/ExceptionInfo.h"

using VeskFuzz::Bytes;
using VeskFuzz::check;
using VeskFuzz::linesOf;

namespace {

void checkNumber(const std::string& text) {
  // Neither a zero byte nor the payload of a NaN is for the C library.
  if (text.find('\0') != text.npos || text.find('(') != text.npos) return;
  char* end = nullptr;
  const double judge = std::strtod(text.c_str(), &end);
  bool whole = end != text.c_str();
  for (; *end != '\0'; ++end) whole = whole && std::isspace(static_cast<unsigned char>(*end));
  const std::optional<double> value = Vesk::parseDouble(text);
  check(value.has_value() == whole, "a number is what the C library takes", text);
  if (!value) return;
  check(std::isnan(*value) == std::isnan(judge) &&
            (std::isnan(judge) || (*value == judge && std::signbit(*value) == std::signbit(judge))),
        "the value is that of the C library", text);
}

void step(Vesk::Input& in, int operation, Bytes& bytes) {
  std::string text;
  double numbers[3];
  GePoint point;
  switch (operation) {
    case 0:
      in.getDouble();
      break;
    case 1:
      in.getLastDouble();
      break;
    case 2:
      in.peekToken(text);
      check(text.find_first_of(in.delimiters) == text.npos, "a token has no delimiter", text);
      break;
    case 3:
      in.getToken(text);
      check(text.find_first_of(in.delimiters) == text.npos, "a token has no delimiter", text);
      break;
    case 4: {
      const std::size_t length = bytes.byte();
      in.getFixedString(text, length);
      check(text.size() <= length, "no more than was asked for", text);
      break;
    }
    case 5:
      in.getFixedDouble(bytes.byte());
      break;
    case 6:
      in.getFixedDoubles(3, numbers, 9);
      break;
    case 7:
      in.getPoint(point);
      check(in.delimiters == ",", "a point leaves the comma", in.delimiters);
      break;
    case 8:
      in.getInt();
      break;
    case 9:
      in.atDigit();
      break;
    case 10:
      in.atNonDigit();
      break;
    case 11:
      in.nextLine();
      break;
    case 12:
      in.atEnd();
      break;
    case 13:
      in.skipChars(" ,", bytes.below(2) == 1);
      break;
    case 14:
      in.skipChar(",", bytes.below(2) == 1);
      break;
    case 15:
      in.setCursor(bytes.byte());
      break;
    case 16:
      in.findLine("60", bytes.below(3));
      break;
    case 17:
      in.countLines("61");
      break;
    case 18:
      in.setDelimiters(bytes.below(2) == 1 ? "," : " ,");
      break;
    case 19:
      in.startAt(bytes.byte());
      break;
    case 20:
      in.rewind();
      break;
    case 21:
      check(in.getRest().size() <= in.line.size(), "a rest is part of its line");
      break;
    case 22:
      in.nextLineVerbatim();
      break;
    default:
      in.peekTokenN(text, bytes.byte());
      break;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes head(data, size);
  const int choice = head.byte();
  const int start = head.byte();
  const std::size_t count = head.byte() % 64u;
  const std::size_t used = std::min<std::size_t>(3, size);
  const std::size_t operations = std::min(count, size - used);
  Bytes program(data + used, operations);
  const std::string text = Bytes(data + used + operations, size - used - operations).rest();

  checkNumber(text);
  Vesk::Input in(linesOf(text), choice % 2 == 0 ? Vesk::kFixedColumns : Vesk::kTokens);
  in.rewind();
  if (choice % 4 > 1) in.setDelimiters(" ,");
  in.startAt(static_cast<std::uint32_t>(start));
  while (!program.empty()) {
    const int operation = program.below(24);
    try {
      step(in, operation, program);
    } catch (const Vesk::ExceptionInfo& e) {
      check(e.level == Vesk::ExceptionInfo::kFatal, "the scanner's failures are fatal", e.message);
      check(e.message.starts_with("Input: "), "the scanner's messages", e.message);
    }
    check(in.line.size() == in.lineLength, "line and length belong together");
    check(in.lineIndex <= in.recs.size(), "the line is one of the record's");
  }
  return 0;
}
