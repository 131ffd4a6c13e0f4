// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_RENUMBERING_H
#define VESK_TOOLS_RECORDS_RENUMBERING_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>

#include "records/RecordTarget.h"
#include "sidecar/Sidecar.h"

namespace VeskTool {

// Gives counters from a first one on, header by header, in the order of the elements.
class Renumbering {
 public:
  // With `isEach` every element gets its own; else elements of one counter that follow
  // each other in a header, a component, go on sharing one.
  Renumbering(bool isEach, int first) : isEach_(isEach), first_(first) {}

  // The counter of the next element, which now has the header `key`, and had `oldKey`
  // and `oldCounter`. Throws a Failure with Exit::kOutput when there is none left.
  int next(const std::string& key, const std::string& oldKey, int oldCounter);

 private:
  struct Last {
    std::string oldKey;
    int oldCounter = 0;
    int counter = 0;
  };

  bool isEach_;
  int first_;
  std::unordered_map<std::string, Last> lasts_;  // by header
};

// Writes rows whose elements get new counters, once all of these are known. Of a
// component whose counters no longer follow each other there are several rows.
class MovedRows {
 public:
  // So many rows wait for further elements.
  static constexpr std::size_t kMostWaiting = 1024;

  explicit MovedRows(RecordTarget& target) : target_(target) {}

  // An element of this row now has this header and counter.
  void add(const Vesk::SidecarRow& row, const std::string& key, int counter);

  void finish();

  // Rows that came to be because a component fell apart.
  std::uint64_t moreRows() const { return moreRows_; }
  std::uint64_t clashes() const { return clashes_; }

 private:
  struct Waiting {
    std::string source;  // the row and the header
    Vesk::SidecarRow row;
  };

  void writeFirst();

  RecordTarget& target_;
  std::deque<Waiting> waiting_;
  std::uint64_t written_ = 0;                              // of those that have waited
  std::unordered_map<std::string, std::uint64_t> places_;  // by source, counted from the first
  std::uint64_t moreRows_ = 0;
  std::uint64_t clashes_ = 0;
};

}  // namespace VeskTool

#endif
