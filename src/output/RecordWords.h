// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_RECORDWORDS_H
#define VESK_OUTPUT_RECORDWORDS_H

#include <cstddef>
#include <string_view>

namespace Vesk {

// What a record is called in each style.
struct Keyword {
  std::string_view fixedColumns;
  std::string_view tokens;
};

namespace Keywords {
inline constexpr Keyword kCyl{"CYL", "c "};
inline constexpr Keyword kCone{"CON", "n "};
inline constexpr Keyword kBox{"BOX", "b "};
inline constexpr Keyword kTorus{"TOR", "t "};
inline constexpr Keyword kRed{"RED", "r "};
inline constexpr Keyword kRelb{"ELB", "e "};
inline constexpr Keyword kPoint{"PNT", "l "};
inline constexpr Keyword kSegment{"SEG", "l "};
inline constexpr Keyword kTriangle{"TRI", "g "};
inline constexpr Keyword kTriangleWithNormals{"TRN", "g "};
inline constexpr Keyword kQuadrangle{"QUA", "g "};
inline constexpr Keyword kQuadrangleWithNormals{"QUN", "g "};
inline constexpr Keyword kTxt{"TXT", "x "};

// The further lines of tags in mode 3.
inline constexpr std::string_view kBoxTags = "be";
inline constexpr std::string_view kRedTags = "re";
}  // namespace Keywords

// The words that open a token in mode 3. The first two letters are its tag.
namespace Words {
inline constexpr std::string_view kPoint = "pt ";
inline constexpr std::string_view kNormal = "vn ";
inline constexpr std::string_view kArc = "ar ";
inline constexpr std::string_view kCs = "cs ";  // attributes of the first line
inline constexpr std::string_view kSp = "sp ";
inline constexpr std::string_view kFt = "ft ";  // closing attributes
inline constexpr std::string_view kTk = "tk ";
}  // namespace Words

inline constexpr std::size_t kTagWidth = 2;

// "pt " -> "pt"
constexpr std::string_view tagOf(std::string_view word) { return word.substr(0, kTagWidth); }

// The line numbers with which lines begin that are no mere continuations.
namespace LineNumbers {
inline constexpr std::string_view kFirst = "60";  // mode 2
inline constexpr std::string_view kSecond = "61";
inline constexpr std::string_view kTextFirst = "70";  // mode 2, texts
inline constexpr std::string_view kTextSecond = "71";
inline constexpr std::string_view kTextThird = "72";
inline constexpr std::string_view kFirstOfTokens = "00";  // mode 3
}  // namespace LineNumbers

}  // namespace Vesk

#endif
