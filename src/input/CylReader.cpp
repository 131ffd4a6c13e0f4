// SPDX-License-Identifier: MIT
#include "input/ReaderFrame.h"
#include "vesk/Cyl.h"

namespace Vesk {

std::int32_t Cyl::read(Input& in) {
  return readRecord(in, "cylinder", [&] {
    startRecord(in);
    if (in.mode == kFixedColumns) {
      origin = getPoint9(in);
      axis = vectorBetween(origin, getPoint9(in));
      diameter = in.getFixedDouble(kNumberFieldWidth);
    } else if (in.mode == kTokens) {
      in.setDelimiters(kBlankOrComma);
      in.getPoint(origin);
      axis = getVector(in);
      in.setDelimiters(",");
      diameter = in.getDouble();
    } else {
      in.fail(ReadCause::kWrongStyle, "cylinder");
    }
  });
}

}  // namespace Vesk
