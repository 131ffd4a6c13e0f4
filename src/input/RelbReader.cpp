// SPDX-License-Identifier: MIT
#include <initializer_list>

#include "input/ElbowFit.h"
#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "vesk/Relb.h"

namespace Vesk {
ElbowCorners readCorners(Input& in) {
  needLine(in, LineNumbers::kFirst);
  const std::uint32_t first = in.lineIndex;
  ElbowCorners corners;
  for (GePoint* p : {&corners.a, &corners.b, &corners.c, &corners.e}) *p = getPoint9(in);
  needSecondPart(in, first);
  corners.innerRadius = in.getFixedDouble(kNumberFieldWidth);
  return corners;
}

std::int32_t Relb::read(Input& in) {
  return readRecord(in, "relbow", [&] {
    startRecord(in);
    if (in.mode == kFixedColumns) {
      *this = fitElbow(readCorners(in));
    } else if (in.mode == kTokens) {
      in.setDelimiters(kBlankOrComma);
      in.getPoint(centre);
      startVector = getVector(in);
      endVector = getVector(in);
      depth = in.getDouble();
      width = in.getDouble();
      flipped = false;
    } else {
      in.fail(ReadCause::kWrongStyle, "relb");
    }
  });
}

}  // namespace Vesk
