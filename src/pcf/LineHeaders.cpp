// SPDX-License-Identifier: MIT
#include "pcf/LineHeaders.h"

#include <algorithm>

#include "output/Base36.h"
#include "sidecar/Utf8.h"

namespace Vesk::Pcf {
namespace {

constexpr std::size_t kF1 = 8;

// As the header keeps it: control characters are blanks, those at the end do not count.
std::string f1Of(std::string_view reference) {
  std::string f1(cutUtf8(reference, kF1));
  std::replace_if(
      f1.begin(), f1.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  f1.erase(f1.find_last_not_of(' ') + 1);
  return f1;
}

std::string twoDigits(std::size_t number) {
  std::string digits(2, '0');
  encodeBase36(static_cast<int>(number % 1296), digits);
  return digits;
}

}  // namespace

LineHeaders::Fields LineHeaders::fieldsFor(std::string_view reference, bool isFirstWithout) {
  Fields fields{f1Of(reference), {}};
  const std::string stem(cutUtf8(fields.f1, kF1 - 3));
  for (std::size_t i = 1;; ++i) {
    std::bitset<kGroups>& used = used_[fields.f1];
    for (std::size_t k = 0; k + 1 < kGroups; ++k) {
      // 00 is for what has no reference.
      const std::size_t group = isFirstWithout ? 0 : (next_ - 1 + k) % (kGroups - 1) + 1;
      if (used[group]) continue;
      used.set(group);
      fields.f2 = twoDigits(group);
      if (!isFirstWithout) ++next_;
      return fields;
    }
    fields.f1 = stem + '~' + twoDigits(i);
  }
}

const LineHeaders::Fields& LineHeaders::fieldsOf(std::uint32_t pipeline) {
  const auto [place, isNew] = fields_.try_emplace(pipeline);
  if (isNew) {
    const bool hasNone = pipeline == kNoPipeline;
    place->second = fieldsFor(hasNone ? std::string_view() : references_[pipeline],
                              hasNone && isFirstFile_ && block_ == 0);
  }
  return place->second;
}

void LineHeaders::beginFile(const Plan& plan) {
  isFirstFile_ = used_.empty() && references_.empty() && fields_.empty();
  references_.clear();
  for (const Pipeline& pipeline : plan.pipelines) references_.push_back(pipeline.reference);
  fields_.clear();
  block_ = 0;
  for (std::uint32_t i = 0; i < references_.size(); ++i) fieldsOf(i);
}

LineHeader LineHeaders::headerOf(std::size_t index, std::uint32_t pipeline) {
  if (index / kLargestNumber != block_) {
    block_ = index / kLargestNumber;
    fields_.clear();
  }
  const Fields& fields = fieldsOf(pipeline);
  return {fields.f1, fields.f2, static_cast<int>(index % kLargestNumber) + 1};
}

}  // namespace Vesk::Pcf
