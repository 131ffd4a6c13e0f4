#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "prims/Relb.h"

namespace Vesk {
namespace {

GeVector fromOrigin(const GePoint& p) { return p - GePoint(); }

// The elbow whose record holds these points; see Relb::write for their order.
Relb elbowOf(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& e,
             double innerRadius) {
  Relb relb(fromOrigin(a), fromOrigin(b), fromOrigin(c), fromOrigin(e), innerRadius);
  relb.flipped = dot(cross(relb.startVector, relb.endVector), a - relb.centre) < 0.0;
  return relb;
}

}  // namespace

std::int32_t Relb::read(Input& in) {
  return readRecord(", primitive relbow", [&] {
    startRecord(in);
    if (in.mode == kFixedColumns) {
      needLine(in, LineNumbers::kFirst);
      const std::uint32_t first = in.lineIndex;
      const GePoint a = getPoint9(in);
      const GePoint b = getPoint9(in);
      const GePoint c = getPoint9(in);
      const GePoint e = getPoint9(in);
      needSecondPart(in, first);
      *this = elbowOf(a, b, c, e, in.getFixedDouble(kNumberFieldWidth));
    } else if (in.mode == kTokens) {
      in.setDelimiters(kBlankOrComma);
      in.getPoint(centre);
      startVector = getVector(in);
      endVector = getVector(in);
      depth = in.getDouble();
      width = in.getDouble();
      flipped = false;
    } else {
      failReading("relb: wrong style");
    }
  });
}

}  // namespace Vesk
