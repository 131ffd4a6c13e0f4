#include "output/NumberText.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "output/RecordLayout.h"

namespace Vesk {
namespace {

// Right-aligns what stands in `text` behind `start`.
void alignRight(std::string& text, std::size_t start, std::size_t width) {
  const std::size_t length = text.size() - start;
  if (length < width) text.insert(start, width - length, ' ');
}

// Appends v with exactly `decimals` decimals.
void appendDecimals(std::string& text, double v, int decimals) {
  if (std::isnan(v)) {
    text += "nan";
    return;
  }
  // Sign, digits before the point, point, decimals.
  const std::size_t longest = 2 + std::numeric_limits<double>::max_exponent10 + 1;
  const std::size_t start = text.size();
  text.resize(start + longest + static_cast<std::size_t>(decimals));
  const auto end = std::to_chars(text.data() + start, text.data() + text.size(), v,
                                 std::chars_format::fixed, decimals);
  text.resize(static_cast<std::size_t>(end.ptr - text.data()));
}

// 10^exponent by repeated squaring.
double powerOfTen(int exponent) {
  double result = 1.0;
  for (double square = 10.0; exponent != 0; exponent >>= 1, square *= square) {
    if ((exponent & 1) != 0) result *= square;
  }
  return result;
}

// Mantissa and exponent of a finite v beyond the fixed forms. `decimals` is
// for a two-digit exponent: a digit less of it leaves room for one decimal
// more, a third one takes one.
void appendExponentForm(std::string& text, double v, int decimals) {
  const int exponent = static_cast<int>(std::log10(std::fabs(v)));
  if (exponent < 10) {
    ++decimals;
  } else if (exponent >= 100) {
    --decimals;
  }
  appendDecimals(text, v / powerOfTen(exponent), decimals);
  text += 'e';
  appendInt(text, exponent);
}

}  // namespace

void appendField9(std::string& text, double v) {
  const std::size_t start = text.size();
  if (!std::isfinite(v)) {
    appendDecimals(text, v, 0);
  } else if (v > 99999999.0) {
    appendExponentForm(text, v, 4);
  } else if (v > 9999999.9) {
    appendDecimals(text, v, 0);
  } else if (v > 999999.99) {
    appendDecimals(text, v, 1);
  } else if (v > 99999.999) {
    appendDecimals(text, v, 2);
  } else if (v > -9999.999) {
    appendDecimals(text, v, 3);
  } else if (v > -99999.99) {
    appendDecimals(text, v, 2);
  } else if (v > -999999.9) {
    appendDecimals(text, v, 1);
  } else if (v > -9999999.0) {
    appendDecimals(text, v, 0);
  } else {
    appendExponentForm(text, v, 3);
  }
  alignRight(text, start, kNumberFieldWidth);
}

void appendFixed(std::string& text, double v, int decimals, int width) {
  const std::size_t start = text.size();
  appendDecimals(text, v, decimals > 0 ? decimals : 0);
  if (width > 0) alignRight(text, start, static_cast<std::size_t>(width));
  if (decimals <= 0 || !std::isfinite(v)) return;
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
}

void appendInt(std::string& text, int v) {
  char digits[std::numeric_limits<int>::digits10 + 2];
  text.append(digits, std::to_chars(std::begin(digits), std::end(digits), v).ptr);
}

}  // namespace Vesk
