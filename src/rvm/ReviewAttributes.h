// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_REVIEWATTRIBUTES_H
#define VESK_RVM_REVIEWATTRIBUTES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "rvm/ReviewModel.h"

namespace Vesk {

// The attributes of the groups of review models, from their text files.
//
//   CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&
//   NEW Header Information
//   ...
//   END
//   NEW /PUMP-1
//   Spec:= A1A &end& Weight:= 12kg
//   END
//
// The first line declares the marks. The first block of a file, "Header
// Information", belongs to no group. Blocks nest as groups do and match them by
// name under the same parent. All of it is in memory.
class ReviewAttributes {
 public:
  // A value by its key, which is an index into keys().
  using Values = std::vector<std::pair<std::size_t, std::string>>;

  // Adds the blocks of a file. Throws ReviewFault for what is no such file, and for
  // one that is cut off, nested too deeply or with too many different keys.
  void read(const ReadBytes& bytes);

  // The keys in the order of their first use.
  const std::vector<std::string>& keys() const { return keys_; }

  // A block; kNone is none, kTop what holds the outermost ones.
  using Block = std::size_t;
  static constexpr Block kTop = 0;
  static constexpr Block kNone = static_cast<Block>(-1);

  // The block of this name in `parent`: of those with the same name the first that
  // was not asked for yet, else the last.
  Block find(Block parent, std::string_view name);

  const Values& valuesOf(Block block) const { return blocks_[block].values; }

  std::size_t blockCount() const { return blocks_.size() - 1; }

  // Blocks that no group has asked for.
  std::size_t unusedCount() const;

  // Values outside of blocks, and lines that are none of what is expected.
  std::size_t strayCount() const { return stray_; }

  // Values that a later one of the same key in the same block has replaced.
  std::size_t replacedCount() const { return replaced_; }

 private:
  friend class AttributeReader;

  struct Data {
    Values values;
    bool isUsed = false;
  };

  // Blocks of one name in one parent.
  struct Namesakes {
    std::vector<Block> blocks;
    std::size_t asked = 0;  // how many of them were
  };

  Block add(Block parent, std::string_view name);
  std::size_t keyOf(std::string_view key);

  std::vector<Data> blocks_ = std::vector<Data>(1);
  std::unordered_map<std::string, Namesakes> byName_;  // parent, then name
  std::vector<std::string> keys_;
  std::unordered_map<std::string, std::size_t> keyNumbers_;
  std::size_t stray_ = 0;
  std::size_t replaced_ = 0;
};

}  // namespace Vesk

#endif
