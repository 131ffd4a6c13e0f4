// SPDX-License-Identifier: MIT
#include "api/HeaderRecord.h"

#include "api/ElementRecords.h"
#include "output/Base36.h"
#include "output/RecordLayout.h"

namespace Vesk {

bool HeaderRecord::set(const char* a, const char* b, int n) {
  f1.assign(a, true);
  f2.assign(b, true);
  char digits[kCounterWidth + 1] = {};
  const bool fits = encodeBase36(n, std::span(digits, kCounterWidth));
  f3.assign(digits, false);
  return fits;
}

void HeaderRecord::writeTo(Output& out) const { writeHeader(*this, out); }

}  // namespace Vesk
