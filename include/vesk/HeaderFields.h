// SPDX-License-Identifier: MIT
#ifndef VESK_HEADERFIELDS_H
#define VESK_HEADERFIELDS_H

#include <vesk/FixStr.h>

namespace Vesk {

// The header fields of an element; all blank at first.
//
//   mode 2 prefix, 21 characters:  "60" f6 f2 f4 f1 f3
//   mode 3 prefix, 19 characters:  f1 f2 f3 f4 f5 "00"
//
// f3 is also the element counter. In mode 3 the fields f6 and f7, where they
// are not blank, are attribute tokens of the first line: "cs " f6 "," and
// "sp " f7 ",", both without trailing blanks and line ends. In mode 2 f5 and f7
// are not kept.
struct HeaderFields {
  FixStr<8> f1;
  FixStr<2> f2;
  FixStr<3> f3;
  FixStr<2> f4;
  FixStr<2> f5;
  FixStr<4> f6;
  FixStr<18> f7;
};

}  // namespace Vesk

#endif
