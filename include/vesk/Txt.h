// SPDX-License-Identifier: MIT
#ifndef VESK_TXT_H
#define VESK_TXT_H

#include <string>

#include <vesk/Geo.h>

namespace Vesk {

// A placed text.
//
//   mode 2  TXT position, direction, upDirection, height, charWidth, alignment
//           nothing                            line "71"
//           length in three characters, text   line "72"
//   mode 3  x   position,direction,upDirection,height,charWidth,alignment,length
//               text                           line "01"
//
// Mode 3 rounds the alignment to a whole number, which loses the flag. The length
// counts bytes. A text that does not fit beside the heading has a line of its own;
// one longer than the line size throws, after the lines before it.
class Txt : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 9;

  GePoint position;                // reference point
  GeVector direction;              // writing direction
  GeVector upDirection;            // direction of the height
  double charWidth = 0.0;          // of one character, in units of `direction`
  double height = 0.0;             // in units of `upDirection`
  std::int32_t alignment = 0;      // where the reference point is; see addExtents
  std::int32_t alignmentFlag = 0;  // adds 0.2 to the written alignment unless 0
  std::string text;                // the characters, bytes in any encoding

  Txt() = default;

  Txt(const GePoint& place, const GeVector& along, const GeVector& up, double widthOfChar,
      double textHeight, std::int32_t alignmentCode, std::int32_t flag, std::string characters);

  std::int32_t typeCode() const override { return kTypeCode; }

  // Gives back exactly the characters that were written. Mode 3 does not keep the
  // flag. A length that does not fit the line, as in a record made by hand, is
  // passed over: the text is the rest of the line then. Messages: "line "70" not
  // found", "line "72" not found" (mode 2), "Txt: wrong style" and the scanner's,
  // all with ", primitive text".
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;

  // Does nothing: a text is not moved by a translation.
  void move(const GeVector& v) override;

  void rot(const GeMatrix& m) override;

  // The directions stay as they are.
  void scale(double factor) override;

  // Encloses the parallelogram of A = length x charWidth x direction and B =
  // height x upDirection. The alignment says which of its points `position` is:
  // 1 start, 2 middle, 3 end of the base line, 4 to 6 of the middle row, 7 to 9
  // of the top row; any other code counts as 1.
  Extents& addExtents(Extents& box) const override;

  std::int32_t checkSize() const override { return 0; }
  bool isSolid() const override { return false; }

  // The middle of the parallelogram that the text occupies.
  GePoint& centroid(GePoint& p) const override;

  // Position, directions, sizes, alignment, whether the flag is set, and text.
  bool equal(const Geo& other, double tolerance) const override;
};

}  // namespace Vesk

#endif
