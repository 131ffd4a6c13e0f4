// SPDX-License-Identifier: MIT
#include "input/ReaderFrame.h"
#include "input/TagReader.h"
#include "output/RecordWords.h"
#include "vesk/Red.h"

namespace Vesk {
namespace {

constexpr TagTokens kTagTokens{Keywords::kRedTags, true, ReadCause::kUnknownTag};

}  // namespace

std::int32_t Red::read(Input& in) {
  return readRecord(in, "reducer", [&] {
    tags.clear();
    startRecord(in);
    if (in.mode == kFixedColumns) {
      needLine(in, LineNumbers::kFirst);
      const std::uint32_t first = in.lineIndex;
      origin = getPoint9(in);
      for (std::size_t k = 1; k < 8; ++k) {
        if (k == 4) needSecondPart(in, first);
        cornerVectors[k - 1] = vectorBetween(origin, getPoint9(in));
      }
      readTagLines(in, tags);
    } else if (in.mode == kTokens) {
      in.setDelimiters(kBlankOrComma);
      in.getPoint(origin);
      for (GeVector& v : cornerVectors) v = getVector(in);
      readTagTokens(in, kTagTokens, tags);
    } else {
      in.fail(ReadCause::kWrongStyle, "reducer");
    }
  });
}

}  // namespace Vesk
