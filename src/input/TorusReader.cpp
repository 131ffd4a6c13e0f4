// SPDX-License-Identifier: MIT
#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "vesk/Torus.h"

namespace Vesk {

std::int32_t Torus::read(Input& in) {
  if (in.mode != kFixedColumns && in.mode != kTokens) in.fail(ReadCause::kWrongStyle, "torus");
  return readRecord(in, "torus", [&] {
    startRecord(in);
    if (in.mode == kFixedColumns) {
      needLine(in, LineNumbers::kFirst);
      centre = getPoint9(in);
      startVector = vectorBetween(centre, getPoint9(in));
      endVector = vectorBetween(centre, getPoint9(in));
      bendRadius = in.getFixedDouble(kNumberFieldWidth);
      diameter = in.getFixedDouble(kNumberFieldWidth);
    } else {
      in.setDelimiters(kBlankOrComma);
      in.getPoint(centre);
      startVector = getVector(in);
      endVector = getVector(in);
      diameter = in.getDouble();
      bendRadius = -1.0;
    }
  });
}

}  // namespace Vesk
