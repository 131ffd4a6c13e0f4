// SPDX-License-Identifier: MIT
#include "input/ReaderFrame.h"
#include "input/TagReader.h"
#include "output/RecordWords.h"
#include "vesk/Box.h"

namespace Vesk {
namespace {

constexpr TagTokens kTagTokens{Keywords::kBoxTags, false, ReadCause::kUnknownMark};

}  // namespace

std::int32_t Box::read(Input& in) {
  return readRecord(in, "box", [&] {
    edges.clear();
    startRecord(in);
    if (in.mode == kFixedColumns) {
      needLine(in, LineNumbers::kFirst);
      origin = getPoint9(in);
      for (GeVector* edge : {&edge1, &edge2, &edge3}) *edge = vectorBetween(origin, getPoint9(in));
      readTagLines(in, edges);
    } else if (in.mode == kTokens) {
      in.setDelimiters(kBlankOrComma);
      edge1 = getVector(in);
      in.getPoint(origin);
      edge2 = getVector(in);
      edge3 = getVector(in);
      readTagTokens(in, kTagTokens, edges);
    } else {
      in.fail(ReadCause::kWrongStyle, "box");
    }
  });
}

}  // namespace Vesk
