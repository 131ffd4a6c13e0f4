// SPDX-License-Identifier: MIT
#include "check/LineRules.h"

#include <algorithm>
#include <cstring>

#include "output/RecordLayout.h"
#include "output/RecordWords.h"

namespace VeskTool {
namespace {

using namespace Vesk;

constexpr std::size_t kBlock = 8;
constexpr std::uint64_t kOnes = 0x0101010101010101U;
constexpr std::uint64_t kHighBits = 0x80 * kOnes;

bool isControl(char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }

// Whether one of eight bytes may be a control character: eight at a time is what
// lets this rule keep up with the reading.
bool mayHaveControl(std::uint64_t bytes) {
  const std::uint64_t below32 = (bytes - 32 * kOnes) & ~bytes;
  const std::uint64_t from127 = (bytes + kOnes) & ~bytes;
  return ((below32 | from127) & kHighBits) != 0;
}

std::size_t findControl(std::string_view line) {
  std::size_t i = 0;
  for (; i + kBlock <= line.size(); i += kBlock) {
    std::uint64_t bytes;
    std::memcpy(&bytes, line.data() + i, kBlock);
    if (mayHaveControl(bytes)) break;
  }
  const auto found =
      std::find_if(line.begin() + static_cast<std::ptrdiff_t>(i), line.end(), isControl);
  return found == line.end() ? line.npos : static_cast<std::size_t>(found - line.begin());
}

std::string hexOf(char c) {
  constexpr char kDigits[] = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  return {'0', 'x', kDigits[byte / 16], kDigits[byte % 16]};
}

bool isBase36(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); }

void checkCounter(std::string_view line, const RecordLayout& layout, const TakeLineFault& take) {
  const std::string_view counter = line.substr(layout.counter, kCounterWidth);
  if (std::all_of(counter.begin(), counter.end(), isBase36)) return;
  if (counter == "   ") return;
  take({"V031", Severity::kError, 0, layout.counter, kCounterWidth,
        "element counter is not base 36: '" + std::string(counter) + '\'',
        "three of the characters 0 to 9 and A to Z"});
}

void checkSize(std::string_view line, std::size_t index, std::size_t size, std::size_t heading,
               const TakeLineFault& take) {
  const std::size_t most = index == 0 ? size : size + heading;
  if (line.size() <= most) return;
  take({"V018", Severity::kError, index, most, line.size() - most,
        "line of " + std::to_string(line.size()) + " characters",
        "at most " + std::to_string(most)});
}

void checkEnd(std::string_view line, std::size_t index, std::size_t data,
              const TakeLineFault& take) {
  if (line.size() <= data || line.back() != ' ') return;
  const std::size_t end = std::max(line.find_last_not_of(' ') + 1, data);
  take({"V032", Severity::kNote, index, end, line.size() - end,
        line.size() - end == 1
            ? "blank at the end of the line"
            : std::to_string(line.size() - end) + " blanks at the end of the line",
        ""});
}

}  // namespace

void checkLines(const Recs& lines, std::int32_t mode, const TakeLineFault& take) {
  const bool tokens = mode == kTokens;
  const RecordLayout& layout = tokens ? kTokensLayout : kFixedColumnsLayout;
  const std::size_t size = tokens ? kTokensLineSize : kFixedColumnsLineSize;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    if (i == 0 && line.size() >= layout.data) checkCounter(line, layout, take);
    const std::size_t control = findControl(line);
    if (control != line.npos) {
      take({"V019", Severity::kError, i, control, 1, "control character " + hexOf(line[control]),
            "characters from 0x20 on"});
    }
    checkSize(line, i, size, layout.data, take);
    const bool isText =
        line.substr(std::min(layout.keyword, line.size()))
            .starts_with(tokens ? Keywords::kTxt.tokens : Keywords::kTxt.fixedColumns);
    if (!isText) checkEnd(line, i, layout.data, take);
  }
}

}  // namespace VeskTool
