// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_MATCH_H
#define VESK_TOOLS_MATCH_H

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "elements/Kinds.h"
#include "vesk/GePoint.h"
#include "vesk/Geo.h"
#include "vesk/Recs.h"

namespace VeskTool {

// An element of a model in memory.
struct ModelElement {
  std::unique_ptr<Vesk::Geo> geo;
  Kind kind = Kind::kPoint;
  std::string header;  // F1 and F2
  int counter = 0;
  std::uint64_t line = 0;
  GePoint middle;    // of its box
  Vesk::Recs lines;  // of its record, where they are wanted
  bool isChosen = true;
};

using Model = std::vector<ModelElement>;

// Which element of one model is which of the other, by index.
struct Matching {
  std::vector<std::pair<std::size_t, std::size_t>> same;     // equal within the tolerance
  std::vector<std::pair<std::size_t, std::size_t>> changed;  // moved, resized, renamed
  std::vector<std::size_t> removed;                          // of the first only
  std::vector<std::size_t> added;                            // of the second only
};

// Elements are matched within their header and kind. First those that are equal
// at the same place, then those with the same counter, then those of the same
// sizes, the nearest first, then what is left by nearness: not further apart
// than the larger of both is long. In the end equal elements under different
// headers. Every list is in the order of the first model, `added` in that of the
// second.
//
// Time is about n log n for what is equal. Of one header and kind, what is not
// equal is compared each with each up to a few thousand elements, and beyond that
// in the order of the files.
Matching matchModels(const Model& a, const Model& b, double tolerance);

}  // namespace VeskTool

#endif
