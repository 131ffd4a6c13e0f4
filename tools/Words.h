#ifndef VESK_TOOLS_WORDS_H
#define VESK_TOOLS_WORDS_H

#include <string>
#include <string_view>

namespace VeskTool {

// The text in lines of at most `width` columns, each after so many blanks and
// with a line end; its own line ends stay.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t width = 80);

}  // namespace VeskTool

#endif
