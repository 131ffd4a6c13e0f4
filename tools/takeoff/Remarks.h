// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_REMARKS_H
#define VESK_TOOLS_TAKEOFF_REMARKS_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "terminal/Session.h"
#include "text/Json.h"

namespace VeskTool {

// What is to be said of elements: the same words many times are one line with a count
// and the first places.
class Remarks {
 public:
  // With `all` every place is kept.
  explicit Remarks(bool all = false) : all_(all) {}

  void add(const std::string& text, const std::string& file, std::uint64_t line);

  // Behind what is here.
  void merge(const Remarks& later);

  // As warnings: "plant.dat:12: oblique box (3 times, also plant.dat:14, ...)". Of more
  // than kMostTexts different ones the rest is counted.
  void say(Session& session) const;

  void appendJson(JsonWriter& json) const;

  static constexpr std::size_t kPlaces = 3;
  static constexpr std::size_t kMostTexts = 20;

 private:
  struct Said {
    std::uint64_t count = 0;
    std::vector<std::string> places;
  };

  bool all_;
  std::map<std::string, Said> said_;
};

}  // namespace VeskTool

#endif
