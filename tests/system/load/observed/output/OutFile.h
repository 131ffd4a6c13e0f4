// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_LOAD_OBSERVED_OUTFILE_H
#define VESK_TESTS_LOAD_OBSERVED_OUTFILE_H

#include "observe.h"

namespace Vesk {

// Stands in for the output file and tells of its life.
class OutFile {
 public:
  OutFile() { observe("output file built"); }
  ~OutFile() { observe("output file destroyed"); }
};

}  // namespace Vesk

#endif
