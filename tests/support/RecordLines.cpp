// SPDX-License-Identifier: MIT
#include "support/RecordLines.h"

#include <cstdio>
#include <cstdlib>

#include "vesk/ExceptionInfo.h"

namespace VeskTest {
namespace {

using Vesk::Output;

constexpr std::string_view kHeader2 = "abcdefghijklmnop";  // columns 2 to 17
constexpr std::string_view kHeader3 = "ABCDEFGHIJ";        // columns 0 to 9
constexpr std::string_view kBlanks3 = "    ";              // columns 13 to 16

std::string shownLine(std::string_view line, std::int32_t mode) {
  std::string text;
  if (mode == 2 && line.size() >= 21 && line.substr(2, 16) == kHeader2) {
    text.append(line.substr(0, 2)).append("|").append(line.substr(18, 3));
    return text.append("|").append(line.substr(21));
  }
  if (mode == 3 && line.size() >= 19 && line.substr(0, 10) == kHeader3 &&
      line.substr(13, 4) == kBlanks3) {
    text.append(line.substr(17, 2)).append("|").append(line.substr(10, 3));
    return text.append("|").append(line.substr(19));
  }
  return text.append("header?").append(line);
}

}  // namespace

Output assembler(std::int32_t mode, std::string_view counter) {
  Output out;
  out.mode = mode;
  out.format = mode;
  out.lineSize = mode == 2 ? 256 : 512;
  if (mode == 3) {
    out.prefix.append(kHeader3).append(counter).append(kBlanks3).append("00");
  } else {
    out.prefix.append("60").append(kHeader2).append(counter);
  }
  return out;
}

Lines shown(const Output& out) {
  Lines lines;
  for (const std::string& line : out.recs) lines.push_back(shownLine(line, out.mode));
  if (!out.lineText().empty()) lines.push_back(shownLine(out.lineText(), out.mode));
  return lines;
}

Lines linesOf(const Vesk::Geo& geo, std::int32_t mode) {
  Output out = assembler(mode);
  return linesOf(geo, out);
}

Lines linesOf(const Vesk::Geo& geo, Output& out) {
  geo.write(out);
  return shown(out);
}

std::string fields(std::initializer_list<double> values) {
  std::string text;
  for (const double value : values) {
    char field[400];
    std::snprintf(field, sizeof field, "%9.3f", value);
    text += field;
  }
  return text;
}

std::vector<double> numbersOf(const std::string& shownLine) {
  std::vector<double> numbers;
  for (std::size_t i = std::string_view("60|000|TRI").size(); i < shownLine.size(); i += 9) {
    numbers.push_back(std::strtod(shownLine.substr(i, 9).c_str(), nullptr));
  }
  return numbers;
}

std::string writeFailure(const Vesk::Geo& geo, Output& out) {
  try {
    geo.write(out);
  } catch (const Vesk::ExceptionInfo& e) {
    return e.message;
  }
  return "nothing";
}

}  // namespace VeskTest
