// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_TEXT_H
#define VESK_PCF_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Vesk::Pcf {

// The bytes of a file as 8-bit text: UTF-16 of either order, with a mark or without,
// becomes UTF-8; a byte order mark goes; a no-break space of UTF-8 is a blank; all else
// stays as it is.
std::string decoded(std::string bytes);

inline bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v' || c == '\0'; }

// Without blanks at both ends.
std::string_view trimmed(std::string_view text);

// Cuts the first word off the text; empty at its end.
std::string_view nextWord(std::string_view& text);

// With the letters a to z in capitals.
std::string capitals(std::string_view text);

// Whether the text is this word, which is in capitals, in any case.
bool isWord(std::string_view text, std::string_view word);

// What may stand between quotes in a message: control characters and bytes that are
// no UTF-8 become "?", more than 40 bytes are cut.
std::string harmless(std::string_view text);

// The columns before the first character that is not blank; tabs stop at each eighth.
std::size_t indentOf(std::string_view line);

// Goes through a text line by line; a line ends with LF, CR LF or CR.
class Lines {
 public:
  explicit Lines(std::string_view text, std::uint32_t firstLine = 1)
      : text_(text), next_(firstLine) {}

  // Goes to the next line; false at the end.
  bool next();

  std::string_view line() const { return line_; }
  std::size_t offset() const { return offset_; }      // of the line in the text
  std::size_t behind() const { return at_; }          // and of what follows it
  std::uint32_t number() const { return next_ - 1; }  // of the line

 private:
  std::string_view text_;
  std::string_view line_;
  std::size_t at_ = 0;
  std::size_t offset_ = 0;
  std::uint32_t next_ = 1;
};

// A line of an attribute: "KEY value", where key, value or both together may stand in
// angle brackets. The key is as in the file.
struct KeyValue {
  std::string_view key;
  std::string_view value;
};
KeyValue keyValueOf(std::string_view line);

// Lines that begin with !, #, ; or // are comments.
bool isComment(std::string_view trimmedLine);

}  // namespace Vesk::Pcf

#endif
