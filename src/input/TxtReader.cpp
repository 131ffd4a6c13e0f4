// SPDX-License-Identifier: MIT
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "vesk/Txt.h"

namespace Vesk {
namespace {

constexpr std::size_t kLengthWidth = 3;  // of the mode 2 length, unless it is longer

void setAlignment(const Input& in, Txt& txt, double number) {
  txt.alignment = in.toInt(number);
  txt.alignmentFlag = number - txt.alignment > 0.0 ? 1 : 0;
}

// "  5" -> 5; nothing if this is no right-aligned number.
std::optional<std::size_t> lengthIn(std::string_view field) {
  const std::size_t first = field.find_first_not_of(' ');
  if (first == std::string_view::npos) return std::nullopt;
  std::size_t length = 0;
  const char* last = field.data() + field.size();
  const auto end = std::from_chars(field.data() + first, last, length);
  if (end.ec != std::errc() || end.ptr != last) return std::nullopt;
  return length;
}

// How many characters of `data` are the length of the text behind it. It has
// more than three above 999, and then just one width leaves as many characters
// as it says; nothing if no width does.
std::optional<std::size_t> widthOfLength(std::string_view data) {
  for (std::size_t width = kLengthWidth; width <= data.size(); ++width) {
    const auto length = lengthIn(data.substr(0, width));
    if (!length) break;
    if (*length == data.size() - width) return width;
  }
  return std::nullopt;
}

void readFixedText(Input& in, Txt& txt) {
  if (!in.atDigit()) return;
  in.cursor = in.startColumn;
  const std::string_view data = in.getRest();
  const auto width = widthOfLength(data);
  const auto length = lengthIn(width ? data.substr(0, *width) : data);
  if (!width && length && in.lineIndex + 1 < in.recs.size()) {
    // The text did not fit beside its length.
    in.textLength = static_cast<double>(*length);
    in.nextLineVerbatim();
    txt.text = in.getRest();
    return;
  }
  if (const auto known = lengthIn(data.substr(0, width.value_or(kLengthWidth)))) {
    in.textLength = static_cast<double>(*known);
  }
  if (data.size() > kLengthWidth) txt.text = data.substr(width.value_or(kLengthWidth));
}

void readFixedColumns(Input& in, Txt& txt) {
  needLine(in, LineNumbers::kTextFirst);
  const std::uint32_t first = in.lineIndex;
  txt.position = getPoint9(in);
  txt.direction = getVector9(in);
  txt.upDirection = getVector9(in);
  txt.height = in.getFixedDouble(kNumberFieldWidth);
  txt.charWidth = in.getFixedDouble(kNumberFieldWidth);
  setAlignment(in, txt, in.getFixedDouble(kNumberFieldWidth));
  // Numbers that ran over several lines may have taken the number "72"; then it
  // is the second line behind them.
  const bool ranOn = in.lineIndex != first;
  if (!ranOn || !in.nextLineVerbatim() || !in.nextLineVerbatim()) {
    needLine(in, LineNumbers::kTextThird);
  }
  readFixedText(in, txt);
}

// Whether `text` is nothing but closing attributes, ",ft 5,tk 6"; takes them.
bool takeClosings(Input& in, std::string_view text) {
  while (text.starts_with(',')) {
    const std::size_t end = text.find(',', 1);
    if (!takeClosing(in, text.substr(1, end == std::string_view::npos ? end : end - 1))) {
      return false;
    }
    text = end == std::string_view::npos ? std::string_view() : text.substr(end);
  }
  return text.empty();
}

// The characters are taken as they stand: blanks in front and what looks like
// an attribute belong to the text. Its length says where closing attributes
// begin; if that can't be, the text is the whole line.
void readTokenText(Input& in, Txt& txt) {
  if (!in.nextLineVerbatim()) {
    in.markToken();
    in.fail(ReadCause::kNoValue);
  }
  txt.text = in.getRest();
  const double length = in.textLength.value_or(0.0);
  if (txt.text.empty() && length > 0.0 && in.nextLineVerbatim()) txt.text = in.getRest();

  std::string behind;
  while (in.nextLineVerbatim()) behind += in.getRest();
  if (!(length >= 0.0 && length <= static_cast<double>(txt.text.size()))) return;
  const std::size_t end = static_cast<std::size_t>(length);
  if (takeClosings(in, txt.text.substr(end) + behind)) {
    txt.text.resize(end);
  } else {
    in.ft.reset();
    in.tk.reset();
  }
}

void readTokens(Input& in, Txt& txt) {
  in.setDelimiters(kBlankOrComma);
  in.getPoint(txt.position);
  txt.direction = getVector(in);
  txt.upDirection = getVector(in);
  txt.height = in.getDouble();
  txt.charWidth = in.getDouble();
  setAlignment(in, txt, in.getDouble());
  // Nothing behind the length may be skipped: the text comes next.
  in.textLength = in.getLastDouble();
  in.setDelimiters("");
  readTokenText(in, txt);
}

}  // namespace

std::int32_t Txt::read(Input& in) {
  return readRecord(in, "text", [&] {
    text.clear();
    startRecord(in);
    if (in.mode == kFixedColumns) {
      readFixedColumns(in, *this);
    } else if (in.mode == kTokens) {
      readTokens(in, *this);
    } else {
      in.fail(ReadCause::kWrongStyle, "Txt");
    }
  });
}

}  // namespace Vesk
