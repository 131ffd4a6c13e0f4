// SPDX-License-Identifier: MIT
#include <algorithm>
#include <functional>

#include "sidecar/Sidecar.h"
#include "sidecar/Utf8.h"

namespace Vesk {
namespace {

std::string fieldText(std::string_view field) {
  const std::size_t end = field.find_last_not_of(' ');
  return toUtf8(field.substr(0, end == std::string_view::npos ? 0 : end + 1));
}

// Rows of other hosts may have many elements; a few of them tell enough.
constexpr int kMostOfARow = 16;

std::uint64_t numberOf(std::string_view f1, std::string_view f2, int counter) {
  std::uint64_t number = std::hash<std::string_view>()(f1);
  number = (number ^ std::hash<std::string_view>()(f2)) * 0x9E3779B97F4A7C15U;
  return (number ^ (number >> 29U)) * 0x9E3779B97F4A7C15U + static_cast<std::uint64_t>(counter);
}

}  // namespace

bool SidecarJoin::isMissed(const SidecarRow& row) const {
  const int last = std::min(row.last, row.first + kMostOfARow - 1);
  for (int counter = row.first; counter <= last; ++counter) {
    if (missed_.contains(numberOf(row.f1, row.f2, counter))) return true;
  }
  return false;
}

void SidecarJoin::remember(const SidecarRow& row) {
  const int last = std::min(row.last, row.first + kMostOfARow - 1);
  for (int counter = row.first; counter <= last && passed_.size() < kMostRemembered; ++counter)
    passed_.insert(numberOf(row.f1, row.f2, counter));
}

bool SidecarJoin::readOne() {
  SidecarRow row;
  if (!reader_.next(row)) return false;
  if (!missed_.empty() && isMissed(row)) ++outOfOrder_;
  kept_.push_back(Kept{std::move(row), rows_, false});
  Kept& kept = kept_.back();
  places_.emplace(Key(kept.row.f1, kept.row.f2, kept.row.first), &kept);
  ++rows_;
  return true;
}

void SidecarJoin::dropFirst() {
  const Kept& kept = kept_.front();
  if (!kept.isUsed) {
    ++rowsWithoutElements_;
    remember(kept.row);
  }
  const auto place = places_.find(Key(kept.row.f1, kept.row.f2, kept.row.first));
  if (place != places_.end() && place->second == &kept) places_.erase(place);
  kept_.pop_front();
}

// Rows have no element in common, so it is the one with the largest `first` that is
// not behind the counter.
SidecarJoin::Kept* SidecarJoin::keptOf(std::string_view f1, std::string_view f2, int counter) {
  auto place = places_.upper_bound(Key(f1, f2, counter));
  if (place == places_.begin()) return nullptr;
  --place;
  const SidecarRow& row = place->second->row;
  return row.f1 == f1 && row.f2 == f2 && counter <= row.last ? place->second : nullptr;
}

const SidecarRow* SidecarJoin::find(std::string_view f1, std::string_view f2, int counter) {
  const std::string one = fieldText(f1);
  const std::string two = fieldText(f2);
  Kept* kept = keptOf(one, two, counter);
  while (kept == nullptr && rows_ < last_ + kMostAhead && readOne())
    kept = keptOf(one, two, counter);
  if (kept == nullptr) {
    ++elementsWithoutRows_;
    const std::uint64_t number = numberOf(one, two, counter);
    if (passed_.contains(number)) ++outOfOrder_;
    if (missed_.size() < kMostRemembered) missed_.insert(number);
    return nullptr;
  }
  kept->isUsed = true;
  last_ = kept->number;
  while (kept_.front().number + kMostBehind < last_) dropFirst();
  return &kept->row;
}

void SidecarJoin::finish() {
  while (!kept_.empty() || readOne()) dropFirst();
}

}  // namespace Vesk
