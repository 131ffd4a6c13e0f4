// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_CHUNKORDER_H
#define VESK_RVM_CHUNKORDER_H

#include <string_view>

namespace Vesk {

// HEAD, then MODL, then everything else.
class ChunkOrder {
 public:
  // Whether a chunk of this name may come next; what is missing is missed once.
  bool takes(std::string_view name) {
    const bool isHead = name == "HEAD";
    const bool isModel = name == "MODL";
    const bool fits = isHead    ? seen_ == Seen::kNothing
                      : isModel ? seen_ == Seen::kHead
                                : seen_ == Seen::kModel;
    seen_ = isHead && seen_ == Seen::kNothing ? Seen::kHead : isHead ? seen_ : Seen::kModel;
    return fits;
  }

 private:
  enum class Seen { kNothing, kHead, kModel };

  Seen seen_ = Seen::kNothing;
};

}  // namespace Vesk

#endif
