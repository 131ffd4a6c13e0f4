// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_HEADERCLASHES_H
#define VESK_TOOLS_RECORDS_HEADERCLASHES_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "records/CounterSet.h"

namespace VeskTool {

// What becomes of a header that clashes.
enum class ClashRule {
  kRenumber,  // its counters move behind those that are taken
  kRename,    // F1 gets "~2" at its end, or the next number that is free
  kKeep,      // both are one header, and what has the same counter one component
};

// What one file has of a header.
struct HeaderUse {
  std::string key;  // see headerKey
  CounterSet counters;
  std::uint64_t elements = 0;
  // What becomes of it; see HeaderClashes::settle.
  std::string newKey;
  int shift = 0;  // of the counters
  bool isClash = false;
};

// The headers of one file, in the order of their first elements.
class FileHeaders {
 public:
  HeaderUse& of(std::string_view key);
  const HeaderUse* find(std::string_view key) const;

  std::deque<HeaderUse>& all() { return all_; }
  const std::deque<HeaderUse>& all() const { return all_; }

 private:
  std::deque<HeaderUse> all_;  // none of them moves
  std::unordered_map<std::string, std::size_t> places_;
};

// Brings the headers of several files together, so that no two files have a header
// and a counter in common, unless the rule says so.
class HeaderClashes {
 public:
  explicit HeaderClashes(ClashRule rule) : rule_(rule) {}

  // All files' headers first: no new name may be one of them.
  void know(const FileHeaders& headers);

  // Then the files one after the other: sets newKey, shift and isClash of each header.
  // Throws a Failure with Exit::kOutput when the 46 656 counters of a header, or the
  // names, run out.
  void settle(FileHeaders& headers, const std::string& file);

 private:
  void settle(HeaderUse& use, const std::string& file);
  std::string freeName(std::string_view key) const;

  ClashRule rule_;
  std::unordered_set<std::string> known_;
  std::unordered_map<std::string, CounterSet> taken_;
};

}  // namespace VeskTool

#endif
