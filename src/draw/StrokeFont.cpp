// SPDX-License-Identifier: MIT
#include "draw/StrokeFont.h"

#include <algorithm>
#include <cstdint>

namespace Vesk {
namespace {

// Lines by two digits for each point, to the right and up: small letters stand on
// 2 and go up to 6, capitals to 8, tails go down to 0.
constexpr std::string_view kAscii[] = {
    "",                                     // blank
    "0804 0202",                            // !
    "0806 2826",                            // "
    "1713 2723 0636 0434",                  // #
    "473818070615354443321203 2921",        // $
    "4802 0818170708 3343423233",           // %
    "4216172837360403122244",               // &
    "0806",                                 // '
    "18060412",                             // (
    "08161402",                             // )
    "1713 0624 2604",                       // *
    "2723 0545",                            // +
    "1201",                                 // ,
    "0535",                                 // -
    "0202",                                 // .
    "0238",                                 // /
    "182837332212030718",                   // 0
    "172822 1232",                          // 1
    "07182837360232",                       // 2
    "0718283736253433221203 1525",          // 3
    "280434 2822",                          // 4
    "380805253433221203",                   // 5
    "372818070312223334251504",             // 6
    "083812",                               // 7
    "182837362515060718 1504031222333425",  // 8
    "031222333728180706152536",             // 9
    "0202 0606",                            // :
    "1201 1515",                            // ;
    "370533",                               // <
    "0636 0434",                            // =
    "073503",                               // >
    "071828373614 1212",                    // ?
    "4332120307183847443436262434",         // @
    "022842 1535",                          // A
    "02083847463505 3544433202",            // B
    "4738180703123243",                     // C
    "02082846442202",                       // D
    "48080242 0535",                        // E
    "480802 0535",                          // F
    "47381807031232434525",                 // G
    "0802 4842 0545",                       // H
    "0828 1812 0222",                       // I
    "4843321203",                           // J
    "0802 4804 1542",                       // K
    "080242",                               // L
    "0208254842",                           // M
    "02084248",                             // N
    "183847433212030718",                   // O
    "02083847463505",                       // P
    "183847433212030718 2442",              // Q
    "02083847463505 2542",                  // R
    "473818070615354443321203",             // S
    "0848 2822",                            // T
    "080312324348",                         // U
    "082248",                               // V
    "0812253248",                           // W
    "0842 4802",                            // X
    "082548 2522",                          // Y
    "08480242",                             // Z
    "18080212",                             // [
    "0832",                                 // backslash
    "08181202",                             // ]
    "062846",                               // ^
    "0141",                                 // _
    "0817",                                 // `
    "0516263532 341403122233",              // a
    "0802 0516263533221203",                // b
    "3526160503122233",                     // c
    "3832 3526160503122233",                // d
    "04343526160503122233",                 // e
    "281712 0626",                          // f
    "3526160503122233 3631201001",          // g
    "0802 0516263532",                      // h
    "0602 0808",                            // i
    "161100 1818",                          // j
    "0802 3603 1432",                       // k
    "080312",                               // l
    "0602 05162522 25364542",               // m
    "0602 0516263532",                      // n
    "162635332212030516",                   // o
    "0600 0516263533221203",                // p
    "3630 3526160503122233",                // q
    "0602 051626",                          // r
    "35261605142433221203",                 // s
    "181322 0626",                          // t
    "0603122233 3632",                      // u
    "062246",                               // v
    "0612243246",                           // w
    "0632 3602",                            // x
    "0622 4610",                            // y
    "06360232",                             // z
    "28171605141322",                       // {
    "0901",                                 // |
    "08171625141302",                       // }
    "05163445",                             // ~
};
static_assert(std::size(kAscii) == 0x7F - 0x20);

struct Sign {
  char32_t character;
  std::string_view lines;
};

constexpr Sign kSigns[] = {
    {0xB0, "0818170708"},                         // degree
    {0xB1, "2824 0646 0242"},                     // plus or minus
    {0xB2, "0718270525"},                         // squared
    {0xB3, "082817261505"},                       // cubed
    {0xB5, "0600 0603122233 3632"},               // micro
    {0xC4, "022842 1535 0909 4949"},              // A umlaut
    {0xD6, "183847433212030718 0909 4949"},       // O umlaut
    {0xD8, "183847433212030718 0248"},            // diameter
    {0xDC, "080312324348 1919 3939"},             // U umlaut
    {0xDF, "0207182837362534332212"},             // sharp s
    {0xE4, "0516263532 341403122233 0808 3838"},  // a umlaut
    {0xF6, "162635332212030516 0808 3838"},       // o umlaut
    {0xF8, "162635332212030516 0236"},            // o with a stroke
    {0xFC, "0603122233 3632 0808 3838"},          // u umlaut
    {0x3BC, "0600 0603122233 3632"},              // mu
    {0x2300, "183847433212030718 0248"},          // diameter sign
};

constexpr std::string_view kOther = "0208484202";

constexpr double kUnit = 6.0;  // of a capital letter
constexpr double kBase = 2.0;
constexpr double kBlank = 3.0;
constexpr double kGap = 2.0;

std::string_view linesOf(char32_t c) {
  if (c >= 0x20 && c < 0x7F) return kAscii[c - 0x20];
  if (c == 0xA0) return kAscii[0];
  for (const Sign& sign : kSigns) {
    if (sign.character == c) return sign.lines;
  }
  return kOther;
}

double widthOfLetter(std::string_view lines) {
  if (lines.empty()) return kBlank;
  char widest = '0';
  for (std::size_t i = 0; i < lines.size(); i += 2) {
    if (lines[i] == ' ') ++i;
    widest = std::max(widest, lines[i]);
  }
  return widest - '0';
}

std::uint32_t byteAt(std::string_view text, std::size_t i) {
  return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
}

// The bytes of the character that begins here; 1 if they are none.
std::size_t sizeOfCharacter(std::string_view text, std::size_t at, char32_t& character) {
  const std::uint32_t first = byteAt(text, at);
  character = first;
  const std::size_t size = first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (size == 1 || first > 0xF4) return 1;
  std::uint32_t value = first & (0x7FU >> size);
  for (std::size_t k = 1; k < size; ++k) {
    const std::uint32_t next = byteAt(text, at + k);
    if ((next & 0xC0U) != 0x80U) return 1;
    value = value << 6U | (next & 0x3FU);
  }
  constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  if (value < kLeast[size] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return 1;
  character = value;
  return size;
}

}  // namespace

std::u32string charactersOf(std::string_view text) {
  std::u32string characters;
  for (std::size_t i = 0; i < text.size();) {
    char32_t character = 0;
    i += sizeOfCharacter(text, i, character);
    characters.push_back(character);
  }
  return characters;
}

void StrokeFont::append(std::string_view text, std::vector<FontLine>& lines) {
  double left = 0.0;
  for (const char32_t c : charactersOf(text)) {
    const std::string_view letter = linesOf(c);
    bool isNew = true;
    for (std::size_t i = 0; i + 1 < letter.size(); i += 2) {
      if (letter[i] == ' ') {
        isNew = true;
        ++i;
      }
      if (isNew) lines.emplace_back();
      isNew = false;
      const double x = (left + (letter[i] - '0')) / kUnit;
      const double y = (letter[i + 1] - '0' - kBase) / kUnit;
      FontLine& line = lines.back();
      if (line.empty() || line.back().x != x || line.back().y != y) line.push_back({x, y});
    }
    left += widthOfLetter(letter) + kGap;
  }
}

double StrokeFont::widthOf(std::string_view text) {
  double width = 0.0;
  for (const char32_t c : charactersOf(text)) width += widthOfLetter(linesOf(c)) + kGap;
  return width == 0.0 ? 0.0 : (width - kGap) / kUnit;
}

}  // namespace Vesk
