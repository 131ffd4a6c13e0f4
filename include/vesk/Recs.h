// SPDX-License-Identifier: MIT
#ifndef VESK_RECS_H
#define VESK_RECS_H

#include <string>
#include <vector>

namespace Vesk {

// The finished lines of one element, in order of completion, without their
// newlines.
class Recs : public std::vector<std::string> {
 public:
  using std::vector<std::string>::vector;
  Recs() = default;
  Recs(const Recs&) = default;
  Recs(Recs&&) = default;
  Recs& operator=(const Recs&) = default;
  Recs& operator=(Recs&&) = default;
  virtual ~Recs() = default;
};

}  // namespace Vesk

#endif
