#ifndef VESK_TESTS_INPUT_READERTESTING_H
#define VESK_TESTS_INPUT_READERTESTING_H

#include <string>

#include "ge/ExceptionInfo.h"
#include "output/Recs.h"

namespace Vesk {

// "level: message" of the ExceptionInfo that `work` throws; "nothing" if none.
template <class Work>
std::string failureOf(Work work) {
  try {
    work();
  } catch (const ExceptionInfo& e) {
    return std::to_string(e.level) + ": " + e.message;
  }
  return "nothing";
}

// A mode 2 line: line number, 19 header characters, keyword, data.
inline std::string fixedLine(const std::string& number, const std::string& keyword,
                             const std::string& data) {
  return number + "CSCSBBDDAAAAAAAA00A" + keyword + data;
}

// A mode 3 line: 17 header characters, line number, keyword, data.
inline std::string tokenLine(const std::string& number, const std::string& keyword,
                             const std::string& data) {
  return "AAAAAAAABB00ADDEE" + number + keyword + data;
}

// Numbers of nine characters, blanks between, side by side.
//   fields("1 -2.5") -> "        1     -2.5"
inline std::string fields(const std::string& numbers) {
  std::string text;
  std::string number;
  for (const char c : numbers + " ") {
    if (c != ' ') {
      number += c;
    } else if (!number.empty()) {
      text += std::string(9 - number.size(), ' ') + number;
      number.clear();
    }
  }
  return text;
}

}  // namespace Vesk

#endif
