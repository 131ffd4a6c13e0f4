// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_PLANTFILE_H
#define VESK_BENCH_PLANTFILE_H

#include <cstddef>
#include <string>
#include <vector>

#include "PlantModel.h"

namespace VeskBench {

// The model's elements; longer plants repeat them, so that what is measured is
// the writing and not the reading of a list from memory.
inline constexpr std::size_t kModelSize = 20000;

// A header serves this many elements.
inline constexpr std::size_t kPipeline = 32;

// Calls write(element) for `count` elements and header(n) where a header is due.
template <class Header, class Write>
void forEachElement(const std::vector<Element>& model, std::size_t count, Header header,
                    Write write) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t k = i % model.size();
    if (k % kPipeline == 0) header(static_cast<int>(k / kPipeline));
    write(model[k]);
  }
}

// Mode 3, into the open file of the exports.
void writeByExports(const std::vector<Element>& model, std::size_t count);

// Mode 2, into a new file.
void writeByModel(const std::vector<Element>& model, std::size_t count, const char* name);

// A new file in either mode; returns its name.
std::string writePlant(const std::vector<Element>& model, std::size_t count, int mode);

}  // namespace VeskBench

#endif
