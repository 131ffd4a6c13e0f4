// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TRANSFORM_H
#define VESK_TOOLS_TRANSFORM_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "vesk/GeMatrix.h"
#include "vesk/Geo.h"

namespace VeskTool {

// Scales, then turns, then moves. Texts are moved too, unlike Txt::move does it:
// a label belongs to what it stands beside.
class Transform {
 public:
  void define(CLI::App& app);

  // Takes the words apart; throws a Failure for those that mean nothing.
  void prepare();

  // May throw GeEx for a normal of no length.
  void apply(Vesk::Geo& geo) const;

 private:
  std::string moveWord_;
  std::vector<std::string> turnWords_;
  std::string scaleWord_;
  bool moves_ = false;
  double scale_ = 1.0;
  std::vector<GeMatrix> turns_;
  GeVector move_;
};

}  // namespace VeskTool

#endif
