// SPDX-License-Identifier: MIT
#include "rvm/ReviewNames.h"

#include <algorithm>
#include <stdexcept>

#include "output/Base36.h"

namespace Vesk {
namespace {

constexpr std::size_t kEndBytes = 8;
constexpr int kMostNames = 36 * 36 - 1;

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

std::string ReviewNames::endOf(std::string_view name) {
  std::size_t from = name.size() > kEndBytes ? name.size() - kEndBytes : 0;
  if (from > 0) {
    while (from < name.size() && isContinuation(name[from])) ++from;
  }
  std::string end(name.substr(from));
  std::replace_if(
      end.begin(), end.end(), [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
  end.erase(end.find_last_not_of(' ') + 1);
  return end;
}

int ReviewNames::takeNumber(const std::string& f1) {
  int& used = ends_[f1];
  if (used < kMostNames) return ++used;
  ++crowded_;
  return kMostNames;
}

ReviewHeader ReviewNames::next(std::string_view name) {
  const auto [found, isNew] = counters_.try_emplace(std::string(name));
  Counter& counter = found->second;
  if (isNew) {
    counter.f1 = endOf(name);
    counter.name = takeNumber(counter.f1);
  } else if (counter.shapes == kMaxCounter && counter.name < kMostNames) {
    counter.name = takeNumber(counter.f1);
    counter.shapes = 0;
  }
  int& shapes = counter.name == kMostNames ? last_[counter.f1] : counter.shapes;
  if (shapes == kMaxCounter) throw std::length_error("no header is left for " + std::string(name));
  ReviewHeader header;
  header.f1 = counter.f1;
  header.f2.assign(2, '0');
  encodeBase36(counter.name, header.f2);
  header.number = ++shapes;
  return header;
}

}  // namespace Vesk
