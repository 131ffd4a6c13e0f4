#include "Catalogue.h"

#include <algorithm>
#include <string>

namespace VeskTool {
namespace {

// clang-format off
constexpr CodeText kCodes[] = {
    {"V011", "line that belongs to no element",
     "The line is neither the first line of a record nor the next line of the record before it. "
     "Readers skip it or stop there, so what it was meant to say is lost.",
     "Look whether a line before it is missing, or whether something that is no record was put "
     "into the file."},
    {"V012", "line missing in a record",
     "The line numbers of a record rise one by one (60, 61 ... or 00, 01 ...), and here one is "
     "left out or comes too early. The element can't be read.",
     "Write the element again; the file was changed after it was written."},
    {"V013", "line too long",
     "The line is longer than any record line. It is skipped.",
     "Look whether line ends were lost when the file was copied."},
    {"V014", "file cut off",
     "Every line ends with a line end, and the last one does not: the file was cut off, perhaps "
     "inside a number, which would then be read as a smaller one.",
     "Copy or write the file again."},
    {"V020", "damaged element",
     "The element can't be read as it stands.",
     "Write the element again."},
    {"V021", "not a number",
     "A number was expected and something else stands there: a decimal comma, a letter, a blank "
     "inside. The element can't be read.",
     "Numbers have a decimal point and no separators: 1234.5, -0.001, 1.5e8."},
    {"V022", "number out of range",
     "A whole number of 32 bits was expected and the number is larger. The element can't be read.",
     "Correct the number."},
    {"V023", "field missing or of the wrong width",
     "A value is missing, or the numbers of a fixed-column record do not fill their nine "
     "characters each; then all later ones would be taken for each other.",
     "Write the element again; editors that change blanks or strip line ends do this."},
    {"V024", "malformed tag line",
     "Line 63 holds names, line 64 a name and pairs of numbers; an asterisk stands before and "
     "behind each name.",
     "Write the element again."},
    {"V025", "unknown word in a record",
     "A token of this element begins with pt, vn, ar, ed, ft or tk, and this one does not.",
     "Correct the word."},
    {"V026", "NUL character in a header",
     "A header field holds a zero byte, which ends the text for most programs.",
     "Write the element again with a header of printable characters."},
    {"V027", "text behind the record",
     "The element is complete and the line goes on. Two records may have run into each other.",
     "Look whether a line end was lost."},
    {"V028", "text and its length differ",
     "A text record gives the number of bytes of its text, and the text is not that long.",
     "Write the element again, or correct the length; a program may have changed the encoding."},
    {"V029", "polygon of less than three points",
     "A polygon needs three points to be a face.",
     "Write the element again, or leave it out."},
    {"V030", "direction of no length",
     "Two points that give a direction are the same point. The element can't be read.",
     "Correct the points."},
    {"V301", "number too large for nine characters",
     "A number of the fixed-column style has nine characters, and this one needs ten. All behind "
     "it in the record would be read wrongly.",
     "Move the model nearer to the origin (--move), or keep the token style."},
    {"V302", "decimals lost",
     "The target style keeps fewer decimals than the number has: three and fewer in columns, four "
     "of a point and six of a vector or size in tokens.",
     "Often harmless; --verify tells whether every element is the same within the digits of the "
     "style. Move the model nearer to the origin (--move) to keep more of them."},
    {"V303", "size or direction of a point lost",
     "Points of the token style have neither a symbol size nor a direction.",
     "Keep the fixed-column style if they are needed."},
    {"V304", "arcs lost",
     "Arcs of polylines and polygons are kept by the token style alone.",
     "Keep the token style if they are needed."},
    {"V305", "alignment flag of a text lost",
     "The flag behind the alignment of a text is kept by the fixed-column style alone.",
     "Keep the fixed-column style if it is needed."},
    {"V306", "bend radius lost",
     "The bend radius that a torus states is kept by the fixed-column style alone; in tokens the "
     "mean length of its two vectors counts, and here it is another number.",
     "Look which of both is right, and keep the fixed-column style if it is the stated one."},
    {"V307", "element becomes several records",
     "Polylines and polygons of more than four vertices are written in pieces by the fixed-column "
     "style. They do not come back as one element, and their pieces take further counters.",
     "Keep the token style if they must stay whole."},
    {"V308", "header field lost",
     "The fixed-column style has no room for the header fields F5 and F7 and for ft and tk.",
     "Keep the token style if they are needed."},
    {"V309", "element not written",
     "The target style can't hold the element: a token is longer than a line, or a number is none.",
     "Correct the element; vesk show gives its fields."},
    {"V310", "tags changed",
     "A name, or the order of tags with and without values, does not come back from the target "
     "style as it was.",
     "Names without * and , come back; otherwise keep the style."},
    {"V311", "element differs after reading back",
     "The element was written, and what was read back differs by more than the digits of the "
     "style explain.",
     "See the other findings for this line; keep the original file."},
};
// clang-format on

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

std::span<const CodeText> catalogue() { return kCodes; }

const CodeText* findCode(std::string_view code) {
  std::string wanted(code);
  std::transform(wanted.begin(), wanted.end(), wanted.begin(), upper);
  const auto* found = std::find_if(std::begin(kCodes), std::end(kCodes),
                                   [&](const CodeText& each) { return each.code == wanted; });
  return found == std::end(kCodes) ? nullptr : found;
}

}  // namespace VeskTool
