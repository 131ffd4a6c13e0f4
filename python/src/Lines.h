// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_LINES_H
#define VESK_PYTHON_LINES_H

#include "api/ElementRecords.h"
#include "output/Output.h"
#include "vesk/RecordFile.h"

namespace VeskPython {

// The lines of elements as they are written in a style.
class Lines {
 public:
  explicit Lines(int style) { out_.setStyle(style); }

  // Valid until the next call.
  const Vesk::Recs& of(const Vesk::RecordElement& element) {
    out_.counter = 0;
    out_.clear();
    Vesk::writeElementRecords(element.header, *element.geo, {element.ft, element.tk}, out_);
    out_.flushLine();
    return out_.recs;
  }

 private:
  Vesk::Output out_;
};

}  // namespace VeskPython

#endif
