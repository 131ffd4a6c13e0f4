#ifndef VESK_OUTPUT_NUMBERTEXT_H
#define VESK_OUTPUT_NUMBERTEXT_H

#include <string>

namespace Vesk {

// The text of numbers in records. The digits are those of the C library's
// formatted print in the "C" locale (correctly rounded, exact halves to even),
// whatever the locale of the process. Each function appends to `text`.

// The nine-character form:
//
//       v > 99999999      mantissa "e" exponent: 123456789.0 -> "1.23457e8"
//   9999999.9  < v        no decimals            12345678.5  -> " 12345678"
//    999999.99 < v        one                    1234567.25  -> "1234567.2"
//     99999.999 < v       two                    123456.5    -> "123456.50"
//     -9999.999 < v       three                  1.5         -> "    1.500"
//    -99999.99 < v        two                    -12345.5    -> "-12345.50"
//   -999999.9  < v        one                    -123456.5   -> "-123456.5"
//  -9999999    < v        no decimals            -1234567.0  -> " -1234567"
//       v <= -9999999     mantissa "e" exponent: -1e8        -> "-1.0000e8"
//
// The two sides are no mirror images, since the sign takes a column. In the
// exponent form the exponent is log10 of the absolute value truncated, the
// mantissa keeps as many decimals as nine characters hold; one that rounds up
// to 10 makes ten characters: 99999999.5 -> "10.00000e7". The infinities are
// "inf" and "-inf", every NaN is "nan", right-aligned in nine.
void appendField9(std::string& text, double v);

// The trimmed fixed form: `decimals` decimals (none if not positive), then
// trailing zeros and a bare point removed, right-aligned in `width` characters
// before the trimming if width is positive.
//
//   4 decimals: 10.0 -> "10", 1.5 -> "1.5", 0.0 -> "0", -0.00001 -> "-0"
//
// The infinities are "inf" and "-inf", every NaN is "nan".
void appendFixed(std::string& text, double v, int decimals, int width);

// The decimal text of an int.
void appendInt(std::string& text, int v);

}  // namespace Vesk

#endif
