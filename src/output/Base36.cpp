// SPDX-License-Identifier: MIT
#include "output/Base36.h"

namespace Vesk {

bool encodeBase36(int value, std::span<char> digits) {
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    const int remainder = value % 36;
    *digit = static_cast<char>(remainder < 10 ? '0' + remainder : 'A' + remainder - 10);
    value /= 36;
  }
  return value == 0;
}

int decodeBase36(std::string_view digits) {
  int value = 0;
  for (const char c : digits) {
    const int code = static_cast<unsigned char>(c);
    value = value * 36 + (code <= '9' ? code - '0' : code - 'A' + 10);
  }
  return value;
}

}  // namespace Vesk
