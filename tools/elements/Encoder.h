// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_ENCODER_H
#define VESK_TOOLS_ENCODER_H

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "api/ElementHolder.h"
#include "findings/Findings.h"
#include "input/Input.h"
#include "output/Output.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// Makes the record lines of an element in one style, and says what the style
// does not keep of it.
//
// It finds out by reading its own lines back: whatever differs from the element
// by more than the rounding of doubles is named.
class Encoder {
 public:
  explicit Encoder(int mode);

  // Makes the lines. False if the style can't hold the element; then nothing is
  // to be written, and `losses` says why.
  bool encode(const Vesk::RecordElement& element);

  // What encode has made.
  const Vesk::Recs& lines() const { return out_.recs; }
  std::size_t records() const { return records_; }

  // What does not come back, without file and line: "diameter 12.34567 becomes
  // 12.346". Valid until the next encode.
  const std::vector<Finding>& losses() const { return losses_; }

  // How far a number of the element may be from what was written: two units of
  // the last decimal that the style keeps of its largest coordinate.
  double toleranceOf(const Vesk::Geo& geo) const;

 private:
  void compareHeader(const Vesk::RecordElement& element);
  void compareValues(const Vesk::Geo& geo);
  bool checkWidths(const Vesk::Geo& geo);
  void lose(std::string_view code, std::string message);

  int mode_;
  Vesk::ElementHolder holder_;
  Vesk::Output out_;
  Vesk::Input in_;
  std::vector<std::unique_ptr<Vesk::Geo>> geos_;  // by type code
  std::size_t records_ = 0;
  std::vector<Finding> losses_;
};

}  // namespace VeskTool

#endif
