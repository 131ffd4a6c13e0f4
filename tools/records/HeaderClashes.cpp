// SPDX-License-Identifier: MIT
#include "records/HeaderClashes.h"

#include <algorithm>

#include "output/Base36.h"
#include "records/Headers.h"
#include "sidecar/Utf8.h"
#include "terminal/Exit.h"
#include "vesk/HeaderFields.h"

namespace VeskTool {

HeaderUse& FileHeaders::of(std::string_view key) {
  const auto [found, isNew] = places_.try_emplace(std::string(key), all_.size());
  if (isNew) {
    all_.emplace_back();
    all_.back().key = all_.back().newKey = key;
  }
  return all_[found->second];
}

const HeaderUse* FileHeaders::find(std::string_view key) const {
  const auto found = places_.find(std::string(key));
  return found == places_.end() ? nullptr : &all_[found->second];
}

void HeaderClashes::know(const FileHeaders& headers) {
  for (const HeaderUse& use : headers.all()) known_.insert(use.key);
}

void HeaderClashes::settle(FileHeaders& headers, const std::string& file) {
  for (HeaderUse& use : headers.all()) settle(use, file);
}

void HeaderClashes::settle(HeaderUse& use, const std::string& file) {
  CounterSet& taken = taken_[use.key];
  use.isClash = taken.meets(use.counters);
  if (!use.isClash || rule_ == ClashRule::kKeep) {
    taken.add(use.counters);
    return;
  }
  if (rule_ == ClashRule::kRename) {
    use.newKey = freeName(use.key);
    if (use.newKey.empty()) {
      throw Failure(Exit::kOutput, file + ": no name is left for header " + shownHeader(use.key),
                    "vesk edit --rename gives it one");
    }
    known_.insert(use.newKey);
    taken_[use.newKey].add(use.counters);
    return;
  }
  use.shift = taken.largest() + 1 - use.counters.smallest();
  if (use.counters.largest() + use.shift > Vesk::kMaxCounter) {
    throw Failure(Exit::kOutput,
                  file + ": the 46 656 counters of header " + shownHeader(use.key) + " run out",
                  "--clash rename gives it another name, vesk edit --renumber closes gaps");
  }
  CounterSet moved;
  for (int i = use.counters.smallest(); i <= use.counters.largest(); ++i) {
    if (use.counters.has(i)) moved.add(i + use.shift);
  }
  taken.add(moved);
}

std::string HeaderClashes::freeName(std::string_view key) const {
  constexpr int kMost = 999;
  const std::size_t width = Vesk::HeaderFields().f1.width();
  std::string_view f1 = key.substr(0, width);
  f1 = f1.substr(0, f1.find_last_not_of(' ') + 1);
  for (int i = 2; i <= kMost; ++i) {
    const std::string number = '~' + std::to_string(i);
    std::string name(Vesk::cutUtf8(f1, width - number.size()));
    name += number;
    name.resize(width, ' ');
    name += key.substr(width);
    if (known_.count(name) == 0) return name;
  }
  return {};
}

}  // namespace VeskTool
