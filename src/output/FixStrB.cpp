#include "output/FixStrB.h"

#include <algorithm>
#include <cstring>

namespace Vesk {

bool FixStrB::isBlank() const {
  return std::all_of(data(), data() + width(), [this](char c) { return c == padChar(); });
}

bool operator==(const FixStrB& a, const FixStrB& b) { return std::strcmp(a.data(), b.data()) == 0; }

}  // namespace Vesk
