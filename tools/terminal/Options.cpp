// SPDX-License-Identifier: MIT
#include "terminal/Options.h"

#include <cmath>
#include <string>

#include "text/Numbers.h"

namespace VeskTool {
namespace {

// The validator takes the empty text as "good".
CLI::Validator numberThat(bool (*isGood)(double), const std::string& what) {
  return {[isGood, what](std::string& word) {
            double value = 0.0;
            const bool good = readNumber(word, value) && std::isfinite(value) && isGood(value);
            return good ? std::string() : '"' + word + "\" is not a " + what;
          },
          what};
}

}  // namespace

CLI::Validator zeroOrMore() {
  return numberThat([](double v) { return v >= 0.0; }, "number of 0 or more");
}

CLI::Validator aboveZero() {
  return numberThat([](double v) { return v > 0.0; }, "number above 0");
}

}  // namespace VeskTool
