#ifndef VESK_API_HEADERRECORD_H
#define VESK_API_HEADERRECORD_H

#include "output/FixStr.h"
#include "output/Output.h"

namespace Vesk {

// The header fields of the elements that follow; all blank at first.
//
//   mode 2 prefix, 21 characters:  "60" f6 f2 f4 f1 f3
//   mode 3 prefix, 19 characters:  f1 f2 f3 f4 f5 "00"
//
// f3 is also the element counter. In mode 3 the fields f6 and f7, where they
// are not blank, are attribute tokens of the first line: "cs " f6 "," and
// "sp " f7 ",", both without trailing blanks and line ends. In mode 2 f5 and f7
// are not kept.
class HeaderRecord {
 public:
  FixStr<8> f1;
  FixStr<2> f2;
  FixStr<3> f3;
  FixStr<2> f4;
  FixStr<2> f5;
  FixStr<4> f6;
  FixStr<18> f7;

  // Sets f1, f2 and f3 as vk_setHeader does; returns whether n fits into the
  // three base-36 digits of f3.
  bool set(const char* a, const char* b, int n);

  // Writes prefix and attribute text of the assembler's mode; a mode other
  // than 2 and 3 has none.
  void writeTo(Output& out) const;
};

}  // namespace Vesk

#endif
