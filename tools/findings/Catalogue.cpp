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
     "Readers skip it or stop there, so what it was meant to say is lost.",
     "Check whether a line before it is missing, or whether something that is no record was put "
     "into the file."},
    {"V012", "line missing in a record",
     "The line numbers of a record rise one by one (60, 61 ... or 00, 01 ...), and here one is "
     "left out or comes too early. The element can't be read.",
     "Write the element again; the file was changed after it was written."},
    {"V013", "line too long",
     "The line is longer than any record line. It is skipped.",
     "Check whether line ends were lost when the file was copied."},
    {"V014", "file cut off",
     "Every line ends with a line end, and the last one does not: the file was cut off, perhaps "
     "inside a number, which would then be read as a smaller one.",
     "Copy or write the file again."},
    {"V015", "no record keyword",
     "Where the keyword of a record should stand there is none of the thirteen, or the line ends "
     "before it. Readers skip the line.",
     "Correct the keyword, or take out the line if it is no record."},
    {"V016", "no line number",
     "Where the two digits of the line number should stand there is something else: the line is "
     "shifted, or it is no record line. Readers skip it.",
     "Check whether characters were lost or put in before the number; columns count."},
    {"V017", "empty line",
     "There are no empty lines in a record file. Some readers stop at one.",
     "Take the line out."},
    {"V018", "line longer than its style allows",
     "Lines have at most 256 characters in columns and 512 in tokens; a continuation line may be "
     "longer by its heading. Readers with a fixed line buffer cut the rest off.",
     "Write the element again; it then runs on over several lines."},
    {"V019", "control character",
     "A tab, a zero byte or another character below 0x20 stands in the line. Columns shift, and "
     "readers in other languages may end the line there.",
     "Replace tabs by blanks and take others out; in a text write the words again."},
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
     "Check whether a line end was lost."},
    {"V028", "text and its length differ",
     "A text record gives the number of bytes of its text, and the text is not that long.",
     "Write the element again, or correct the length; a program may have changed the encoding."},
    {"V029", "polygon of less than three points",
     "A polygon needs three points to be a face.",
     "Write the element again, or leave it out."},
    {"V030", "direction of no length",
     "Two points that give a direction are the same point. The element can't be read.",
     "Correct the points."},
    {"V031", "element counter is not base 36",
     "The counter has three of the characters 0 to 9 and A to Z. Another one, a small letter too, "
     "gives a wrong number, and two elements may get the same.",
     "Number the elements again from 0 to 46655."},
    {"V032", "blanks at the end of a line",
     "Writers leave none. It is harmless to this reader, but it shows that the file went through "
     "another program, and lines may grow over their size.",
     "Nothing needs to be done; convert writes the file without them."},
    {"V101", "size below zero",
     "A diameter, width, depth or height is negative. The element has no meaning, and programs "
     "differ in what they draw.",
     "Correct the size in the program that exported it; often two points were swapped in the sum "
     "that made it."},
    {"V102", "section wider than its bend",
     "Half of the tube's or duct's width is more than the radius of the bend, so that the inside "
     "of the bend runs through itself. Volume and weight are wrong.",
     "Check whether radius and diameter were swapped, or the radius was given as a diameter."},
    {"V103", "element without extent",
     "A length, diameter, area or volume is zero, or below the smallest size of 0.01. The "
     "element can't be seen and adds nothing, but costs time everywhere.",
     "Leave it out when exporting."},
    {"V105", "number that is not finite",
     "The record holds an infinite number, or nan, which is no number: a division by zero in "
     "the program that exported it. The box of the whole model becomes useless.",
     "Correct the export; leave the element out until then."},
    {"V106", "twisted reducer",
     "Corners 0, 1, 3, 2 run round the first end and corner k + 4 is opposite corner k. Here a "
     "face crosses itself or the solid turns inside out, so that it has no shape; or, as a warning, the "
     "second end would fit the first better if it were turned.",
     "Give the corners of the second end in the order of the first."},
    {"V107", "reducer inside out",
     "The corners are in order, but run the wrong way round, so that the volume comes out "
     "negative and is taken off the sum.",
     "Exchange the two ends, or corners 1 and 2 and corners 5 and 6."},
    {"V108", "face that crosses itself",
     "The points do not run round the face: two sides cross. Programs differ in what they draw, "
     "and export leaves it out.",
     "Exchange two neighbouring points."},
    {"V110", "bend with two radii",
     "The start and the end of a bend or a duct elbow are not at the same distance from its centre. "
     "Programs take the mean, so that the bend does not meet its pipes.",
     "Correct the centre: it lies where the normals of both ends meet."},
    {"V111", "stated bend radius differs",
     "A bend in columns states its radius, and its ends are at another distance from the "
     "centre. The token style does not keep the stated one.",
     "Correct the radius, or the points."},
    {"V112", "bend without a plane",
     "The start and the end of the bend lie in one line with its centre, so that its plane is "
     "unknown: it can't be drawn, and its box is a point.",
     "Export half turns as two bends of a quarter, and leave out bends of no angle."},
    {"V113", "bend of half a turn",
     "The bend is within a hundredth of a degree of half a turn. Its start and its end are nearly in "
     "line with its centre, so that the last decimals decide on which side it lies: written and read "
     "again, or by another program, it may come out on the other side.",
     "Export half turns as two bends of a quarter."},
    {"V120", "fewer than three decimals",
     "In columns a number has nine characters. Above 99999.999 and from -9999.999 down it keeps "
     "two decimals or one: ends that met may be apart by that much.",
     "Harmless for most uses. To keep all decimals export in tokens, or nearer to the origin."},
    {"V121", "no decimals left",
     "The number is so large that it is kept to whole units or less: in columns above 9999999.9 "
     "and from -999999.9 down, in tokens above 9 x 10^11, where a double has no four decimals. "
     "Small elements lose their shape.",
     "Export nearer to the origin; check whether the number was meant to be so large."},
    {"V201", "ends of pipes leave a gap or overlap",
     "Two ends in one line almost meet: there is more than the tolerance between their faces, or "
     "they run into each other. The pipe is not tight, and its length is wrong by that much.",
     "Correct one of the two ends. A gasket that was left out makes such gaps too."},
    {"V202", "ends of pipes are offset",
     "Two ends face each other and their axes are apart by more than the tolerance.",
     "Correct one of the two pipes; an offset on purpose needs an eccentric reducer."},
    {"V203", "diameters differ at a joint",
     "Two pipes meet, and their diameters differ by more than the tolerance. A reducer may be "
     "missing, or a wrong size was looked up (outer, inner or nominal diameter).",
     "Correct the diameter or put a cone between."},
    {"V204", "element drawn twice",
     "An element of the same kind, place and size was there before, to a thousandth, whatever its "
     "header says. Lengths, volumes and weights are counted twice, and viewers flicker.",
     "Leave one of them out; often the same component belongs to two exported groups."},
    {"V205", "open end of a pipe",
     "Nothing meets the end: no other end, and no solid in which it lies. The message tells what "
     "lies ahead of it within 20 of its diameters. Where the group of the element (its F1 and F2) has "
     "centre lines, only their ends are looked at.",
     "Normal for nozzles, vents and where the model ends; else look what is missing there."},
    {"V206", "branch that does not reach its pipe",
     "The open end of a pipe stops short of what is ahead of it by less than the reach, or it "
     "passes beside a pipe that it almost touches.",
     "Move the end to the surface or the axis of the pipe that it belongs to."},
    {"V207", "piece missing in a line",
     "Two open ends face each other in one line, and nothing is between them.",
     "Look for a component that was left out, or one that is shorter than its place."},
    {"V208", "the same support twice",
     "Two supports of one kind stand no further apart than the reach. Only the attributes beside "
     "the file tell what is a support.",
     "Leave one of them out."},
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
     "The radius that a bend states is kept by the fixed-column style alone; in tokens the "
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
     "The target style can't hold the element: a token is longer than a line, or a number is NaN.",
     "Correct the element; vesk show gives its fields."},
    {"V310", "tags changed",
     "A name, or the order of tags with and without values, does not come back from the target "
     "style as it was.",
     "Names without * and , come back; otherwise keep the style."},
    {"V311", "element differs after reading back",
     "The element was written, and what was read back differs by more than the digits of the "
     "style explain.",
     "See the other findings for this line; keep the original file."},
    {"V312", "duct elbow out of square",
     "The fixed-column style holds four points of a duct elbow, and no duct elbow has these four: "
     "the ends of its axis do not stand at right angles to its plane, by more than rounding "
     "explains. The points were moved as little as makes them fit.",
     "Correct the points in the program that exported them; the records written now stay as they "
     "are."},
    {"V401", "element that can't be shown",
     "No surface follows from the numbers of this element: a size of zero or below, an infinite "
     "number, a bend without a plane or narrower than its tube, a face that crosses itself. It is "
     "left out of meshes and pictures, and everything else is shown.",
     "vesk check tells more about it; correct it in the program that exported it."},
    {"V501", "clash",
     "Two elements overlap by more than the tolerance and are neither joined nor a branch and its "
     "run: they can't be built so. The depth is the shortest way that takes them apart; \"at "
     "least\" says that it is a bound from below.",
     "Move one of them, or allow it by --ignore if it is meant so."},
    {"V502", "too near",
     "The surfaces of two elements are nearer to each other than the clearance that was asked for. "
     "Insulation, flanges, tools and hands may have no room.",
     "Move one of them, or ask for less by --clearance."},
    {"V503", "same element twice",
     "Two elements of different headers, lines or files are of the same kind, place and size, to a "
     "thousandth. It is counted and built twice.",
     "Leave one of them out; often two exports overlap."},
    {"V504", "pipe ends inside another",
     "A pipe ends inside another whose surface it crosses once, as branches are drawn. With "
     "--strict that is told, since an end that was drawn too far looks the same.",
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
