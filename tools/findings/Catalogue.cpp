// SPDX-License-Identifier: MIT
#include "findings/Catalogue.h"

#include <algorithm>
#include <string>

namespace VeskTool {
namespace {

// clang-format off
constexpr CodeText kCodes[] = {
    {"V011", "line that belongs to no element",
     "The line is neither the first line of a record nor the next line of the record before it. "
     "Readers skip it or stop there, so its content is lost.",
     "Check whether a line before it is missing, or whether something that is not a record got "
     "into the file."},
    {"V012", "line missing in a record",
     "The line numbers of a record rise one by one (60, 61 ... or 00, 01 ...), and here one is "
     "missing or comes too early. The element can't be read.",
     "Write the element again. The file was changed after it had been written."},
    {"V013", "line too long",
     "The line is longer than any record line. It is skipped.",
     "Check whether line ends were lost when the file was copied."},
    {"V014", "file cut off",
     "Every line of a file must have a line end, and the last one has none: the file was cut off, "
     "perhaps inside a number, which would then be read as a smaller one.",
     "Copy or write the file again."},
    {"V015", "no record keyword",
     "There is none of the thirteen keywords where the keyword of a record should be, or the line "
     "ends before it. Readers skip the line.",
     "Correct the keyword, or remove the line if it is not a record."},
    {"V016", "no line number",
     "There is something else where the two digits of the line number should be: the line is "
     "shifted, or it is not a record line. Readers skip it.",
     "Check whether characters were lost or inserted before the number: each field has fixed "
     "columns."},
    {"V017", "empty line",
     "A record file has no empty lines. Some readers stop at one.",
     "Remove the line."},
    {"V018", "line longer than its style allows",
     "Lines have at most 256 characters in columns and 512 in tokens; a continuation line may be "
     "longer by the length of its heading. Readers with a fixed line buffer cut off the rest.",
     "Write the element again; it will then continue on further lines."},
    {"V019", "control character",
     "The line contains a tab, a zero byte or another character below 0x20. Columns shift, and "
     "readers in other languages may end the line there.",
     "Replace tabs with blanks and remove the others; in a text record, enter the text again."},
    {"V020", "damaged element",
     "The element can't be read as it stands.",
     "Write the element again."},
    {"V021", "not a number",
     "There is something else where a number was expected: a decimal comma, a letter, a blank "
     "inside the number. The element can't be read.",
     "Write numbers with a decimal point and without separators: 1234.5, -0.001, 1.5e8."},
    {"V022", "number out of range",
     "A whole number of 32 bits was expected and the number is larger. The element can't be read.",
     "Correct the number."},
    {"V023", "field missing or of the wrong width",
     "A value is missing, or the numbers of a fixed-column record do not fill their nine "
     "characters each, so that each number after it would be mistaken for another.",
     "Write the element again. Editors that change blanks or strip the ends of lines cause this."},
    {"V024", "malformed tag line",
     "Line 63 holds names, and line 64 holds a name and pairs of numbers, with an asterisk before "
     "and after each name. This line does not.",
     "Write the element again."},
    {"V025", "unknown word in a record",
     "Every token of this element must begin with pt, vn, ar, ed, ft or tk, and this one does not.",
     "Correct the word."},
    {"V026", "NUL character in a header",
     "A header field holds a zero byte, which ends the text for most programs.",
     "Write the element again with a header of printable characters."},
    {"V027", "text behind the record",
     "The element is complete, but the line continues. Two records may have run into each other.",
     "Check whether a line end was lost."},
    {"V028", "text and its length differ",
     "A text record states the number of bytes of its text, and the text has another length.",
     "Write the element again, or correct the length; a program may have changed the encoding."},
    {"V029", "polygon of fewer than three points",
     "A polygon needs three points to be a face.",
     "Write the element again, or leave it out."},
    {"V030", "direction without a length",
     "Two points that give a direction are the same point. The element can't be read.",
     "Correct the points."},
    {"V031", "element counter is not base 36",
     "The counter consists of three of the characters 0 to 9 and A to Z. Any other character, even "
     "a small letter, gives a wrong number, and two elements may get the same one.",
     "Renumber the elements from 0 to 46655."},
    {"V032", "blanks at the end of a line",
     "Record writers leave none. They are harmless to this reader, but they show that the file "
     "went through another program, and they may make a line too long.",
     "Nothing needs to be done; vesk convert writes the file without them."},
    {"V101", "size below zero",
     "A diameter, width, depth or height is negative. The element has no meaning, and programs "
     "differ in what they draw.",
     "Correct the size in the program that exported it; often two points were swapped when the "
     "size was calculated."},
    {"V102", "section wider than its bend",
     "Half of the width of the pipe or duct is more than the radius of the bend, so that the "
     "inside of the bend runs through itself. Volume and weight are wrong.",
     "Check whether radius and diameter were swapped, or the radius was given as a diameter."},
    {"V103", "element without extent",
     "A length, diameter, area or volume is zero, or below the smallest size of 0.01. The element "
     "can't be seen and adds nothing, but takes time in every program.",
     "Leave it out when exporting."},
    {"V105", "number that is not finite",
     "The record holds an infinite number, or nan (not a number), usually from a division by zero "
     "in the program that exported it. It makes the bounding box of the whole model useless.",
     "Correct the export; leave the element out until then."},
    {"V106", "twisted reducer",
     "Corners 0, 1, 3, 2 run round the first end and corner k + 4 is opposite corner k. Here a "
     "face crosses itself or the solid turns inside out, so that it has no shape; or, if this is a "
     "warning, the second end would fit the first better if it were turned.",
     "Give the corners of the second end in the same order as those of the first."},
    {"V107", "reducer inside out",
     "The corners are in order, but run the wrong way round, so that the volume comes out negative "
     "and is subtracted from the total.",
     "Swap the two ends, or swap corners 1 and 2 as well as corners 5 and 6."},
    {"V108", "face that crosses itself",
     "The points do not run round the face: two sides cross. Programs differ in what they draw, "
     "and vesk export leaves it out.",
     "Swap two neighbouring points."},
    {"V110", "bend with two radii",
     "The start and the end of a bend or duct elbow are not at the same distance from its centre. "
     "Programs take the mean, so that the bend does not meet its pipes.",
     "Correct the centre: it lies where the normals of both ends meet."},
    {"V111", "stated bend radius differs",
     "A bend in fixed columns states its radius, and its ends are at another distance from the "
     "centre. The token style does not keep the stated radius.",
     "Correct the radius, or the points."},
    {"V112", "bend without a plane",
     "The start and the end of the bend are in line with its centre, so that its plane is unknown: "
     "it can't be drawn, and its bounding box is a point.",
     "Export half turns as two quarter bends, and leave out bends without an angle."},
    {"V113", "bend of half a turn",
     "The bend is within a hundredth of a degree of half a turn. Its start and its end are nearly "
     "in line with its centre, so that the last decimals decide on which side it lies: when it is "
     "written and read again, or read by another program, it may come out on the other side.",
     "Export half turns as two quarter bends."},
    {"V120", "fewer than three decimals",
     "In fixed columns a number has nine characters. Above 99999.999 and at or below -9999.999 it "
     "keeps two decimals or one: ends that met may be apart by that much.",
     "Harmless for most uses. To keep all decimals, export in the token style or nearer to the "
     "origin."},
    {"V121", "no decimals left",
     "The number is so large that it is kept only to whole units or less: in fixed columns above "
     "9999999.9 and at or below -999999.9, in tokens above 9 x 10^11, where a double no longer has "
     "four decimals. Small elements lose their shape.",
     "Export nearer to the origin; check whether the number was meant to be so large."},
    {"V201", "ends of pipes leave a gap or overlap",
     "Two ends in one line almost meet: there is more than the tolerance between their faces, or "
     "they run into each other. The pipe would leak, and its length is wrong by that much.",
     "Correct one of the two ends. A gasket that was left out makes such gaps too."},
    {"V202", "ends of pipes are offset",
     "Two ends face each other, but their axes are apart by more than the tolerance.",
     "Correct one of the two pipes; an intended offset needs an eccentric reducer."},
    {"V203", "diameters differ at a joint",
     "Two pipes meet, and their diameters differ by more than the tolerance. A reducer may be "
     "missing, or the wrong size was looked up (outer, inner or nominal diameter).",
     "Correct the diameter or put a cone between."},
    {"V204", "element drawn twice",
     "An earlier element has the same kind, place and size, to a thousandth, whatever its header "
     "says. Lengths, volumes and weights are counted twice, and viewers flicker.",
     "Leave one of them out; often the same component belongs to two exported groups."},
    {"V205", "open end of a pipe",
     "Nothing meets the end: no other end, and no solid in which it lies. The message says what "
     "lies ahead of it within 20 of its diameters. Where the header of the element (its F1 and F2) "
     "has centre lines, only the ends on these are checked.",
     "Normal for nozzles, vents and where the model ends; otherwise check what is missing there."},
    {"V206", "branch that does not reach its pipe",
     "The open end of a pipe stops short of what is ahead of it by less than the reach, or it "
     "passes a pipe that it almost touches.",
     "Move the end to the surface or the axis of the pipe that it belongs to."},
    {"V207", "piece missing in a line",
     "Two open ends face each other in line, and nothing is between them.",
     "Look for a component that was left out, or one that is shorter than its place."},
    {"V208", "the same support twice",
     "Two supports of the same kind stand no further apart than the reach. Supports are known only "
     "from the attributes beside the file.",
     "Leave one of them out."},
    {"V301", "number too large for nine characters",
     "A number of the fixed-column style has nine characters, and this one needs ten. Everything "
     "after it in the record would be misread.",
     "Move the model nearer to the origin (--move), or keep the token style."},
    {"V302", "decimals lost",
     "The target style keeps fewer decimals than the number has: at most three in fixed columns; "
     "in tokens four for a point and six for a vector or size.",
     "Often harmless; --verify checks whether every element is the same within the digits of the "
     "style. Move the model nearer to the origin (--move) to keep more of them."},
    {"V303", "size or direction of a point lost",
     "Points of the token style have neither a symbol size nor a direction.",
     "Keep the fixed-column style if they are needed."},
    {"V304", "arcs lost",
     "Only the token style keeps the arcs of polylines and polygons.",
     "Keep the token style if they are needed."},
    {"V305", "alignment flag of a text lost",
     "Only the fixed-column style keeps the flag after the alignment of a text.",
     "Keep the fixed-column style if it is needed."},
    {"V306", "bend radius lost",
     "Only the fixed-column style keeps the stated radius of a bend; in tokens the mean length of "
     "its two vectors counts, and here that is another number.",
     "Check which of the two is right, and keep the fixed-column style if it is the stated one."},
    {"V307", "element becomes several records",
     "Polylines and polygons of more than four vertices are written in pieces by the fixed-column "
     "style. They do not come back as one element, and their pieces use up further counters.",
     "Keep the token style if they must stay whole."},
    {"V308", "header field lost",
     "The fixed-column style has no room for the header fields F5 and F7 and for ft and tk.",
     "Keep the token style if they are needed."},
    {"V309", "element not written",
     "The target style can't hold the element: a token is longer than a line, or a number is NaN.",
     "Correct the element; vesk show prints its fields."},
    {"V310", "tags changed",
     "A name, or the order of tags with and without values, does not come back unchanged from the "
     "target style.",
     "Use names without * and , or keep the style."},
    {"V311", "element differs after reading back",
     "The element was written, and what was read back differs by more than the digits of the "
     "style explain.",
     "See the other findings for this line; keep the original file."},
    {"V312", "duct elbow out of square",
     "The fixed-column style holds four points of a duct elbow, and no duct elbow has these four: "
     "the ends of its axis do not stand at right angles to its plane, by more than rounding "
     "explains. The points were moved as little as possible to make them fit.",
     "Correct the points in the program that exported them; the records written now stay as they "
     "are."},
    {"V401", "element that can't be shown",
     "The numbers of this element do not describe a surface: a size of zero or below, an infinite "
     "number, a bend without a plane or tighter than its pipe, a face that crosses itself. It is "
     "left out of meshes and pictures, and everything else is shown.",
     "Run vesk check for the details, and correct the element in the program that exported it."},
    {"V501", "clash",
     "Two elements overlap by more than the tolerance and are neither joined nor a branch and its "
     "run: they can't be built this way. The depth is the shortest move that separates them; \"at "
     "least\" means that it is a lower bound.",
     "Move one of them, or allow the clash with --ignore if it is intended."},
    {"V502", "too near",
     "The surfaces of two elements are nearer to each other than the clearance that was asked for. "
     "There may be no room for insulation, flanges, tools or hands.",
     "Move one of them, or ask for less with --clearance."},
    {"V503", "same element twice",
     "Two elements of different headers, lines or files have the same kind, place and size, to a "
     "thousandth. They are counted and built twice.",
     "Leave one of them out; often two exports overlap."},
    {"V504", "pipe ends inside another",
     "A pipe ends inside another whose surface it crosses once, as branches are usually drawn. "
     "--strict reports this, since an end that was drawn too far looks the same.",
     "Let the branch end at the surface of its run, or leave out --strict."},
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
