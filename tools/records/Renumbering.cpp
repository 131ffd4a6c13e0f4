// SPDX-License-Identifier: MIT
#include "records/Renumbering.h"

#include "output/Base36.h"
#include "records/Headers.h"
#include "terminal/Exit.h"

namespace VeskTool {

int Renumbering::next(const std::string& key, const std::string& oldKey, int oldCounter) {
  const auto [found, isNew] = lasts_.try_emplace(key);
  Last& last = found->second;
  if (isNew) {
    last.counter = first_;
  } else if (isEach_ || last.oldCounter != oldCounter || last.oldKey != oldKey) {
    ++last.counter;
  }
  if (last.counter > Vesk::kMaxCounter) {
    throw Failure(Exit::kOutput, "the 46 656 counters of header " + shownHeader(key) + " run out",
                  "--rename or --group gives some of its elements another header");
  }
  last.oldKey = oldKey;
  last.oldCounter = oldCounter;
  return last.counter;
}

void MovedRows::add(const Vesk::SidecarRow& row, const std::string& key, int counter) {
  const std::string source = row.f1 + '\n' + row.f2 + '\n' + std::to_string(row.first) + '\n' + key;
  const auto [found, isNew] = places_.try_emplace(source, written_ + waiting_.size());
  if (!isNew) {
    Vesk::SidecarRow& last = waiting_[found->second - written_].row;
    if (counter >= last.first && counter <= last.last + 1) {
      last.last = std::max(last.last, counter);
      return;
    }
    ++moreRows_;
    found->second = written_ + waiting_.size();
  }
  waiting_.push_back({source, row});
  Vesk::SidecarRow& moved = waiting_.back().row;
  setHeader(moved, key);
  moved.first = moved.last = counter;
  if (waiting_.size() > kMostWaiting) writeFirst();
}

void MovedRows::writeFirst() {
  const Waiting& first = waiting_.front();
  if (!target_.put(first.row)) ++clashes_;
  const auto found = places_.find(first.source);
  if (found != places_.end() && found->second == written_) places_.erase(found);
  waiting_.pop_front();
  ++written_;
}

void MovedRows::finish() {
  while (!waiting_.empty()) writeFirst();
}

}  // namespace VeskTool
