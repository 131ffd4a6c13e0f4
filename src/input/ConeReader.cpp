// SPDX-License-Identifier: MIT
#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "vesk/Cone.h"

namespace Vesk {
namespace {

// The line is looked for from the column of its keyword's second letter on.
constexpr std::uint32_t kFixedColumnsStart = 22;

}  // namespace

std::int32_t Cone::read(Input& in) {
  return readRecord(in, "cone", [&] {
    if (in.mode == kFixedColumns) {
      in.rewind();
      in.startAt(kFixedColumnsStart);
      needLine(in, LineNumbers::kFirst);
      in.setCursor(kFixedColumnsLayout.data);
      // Further lines have their data there too.
      in.startColumn = kFixedColumnsLayout.data;
      origin = getPoint9(in);
      axis = vectorBetween(origin, getPoint9(in));
      diameter1 = in.getFixedDouble(kNumberFieldWidth);
      diameter2 = in.getFixedDouble(kNumberFieldWidth);
    } else if (in.mode == kTokens) {
      startRecord(in);
      in.setDelimiters(kBlankOrComma);
      in.getPoint(origin);
      axis = getVector(in);
      in.setDelimiters(",");
      diameter1 = in.getDouble();
      diameter2 = in.getDouble();
    } else {
      in.fail(ReadCause::kWrongStyle, "Cone");
    }
  });
}

}  // namespace Vesk
