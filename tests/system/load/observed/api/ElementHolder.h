// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_LOAD_OBSERVED_ELEMENTHOLDER_H
#define VESK_TESTS_LOAD_OBSERVED_ELEMENTHOLDER_H

#include "observe.h"

namespace Vesk {

// Stands in for the element holder and tells of its life.
class ElementHolder {
 public:
  ElementHolder() { observe("element holder built"); }
  ~ElementHolder() { observe("element holder destroyed"); }
};

}  // namespace Vesk

#endif
