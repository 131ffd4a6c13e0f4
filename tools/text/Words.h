// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_WORDS_H
#define VESK_TOOLS_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace VeskTool {

// The text in lines of at most `width` columns, each after so many blanks and
// with a line end; its own line ends stay.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t width = 80);

// The parts between these characters, without blanks around them; one at least.
std::vector<std::string> splitAt(std::string_view text, char separator);

// Whether the byte goes on with a letter of UTF-8 instead of beginning one.
inline bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// "?" for each control character but the line end and the tab: those below 32, 127,
// and 128 to 159, alone or as a letter of UTF-8. Terminals obey them.
std::string withoutControls(std::string_view text);

// The same for a text with our own colours in it, which stay.
std::string harmless(std::string_view text);

}  // namespace VeskTool

#endif
