// SPDX-License-Identifier: MIT
#include "export/GlobalIds.h"

#include <algorithm>

#include "elements/Describe.h"
#include "elements/Kinds.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

std::uint64_t hashOf(std::string_view text, std::uint64_t seed) {
  std::uint64_t hash = seed;
  for (const char c : text) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    hash ^= hash >> 29U;
  }
  hash *= 0x9E3779B97F4A7C15U;
  return hash ^ hash >> 32U;
}

}  // namespace

std::string ifcGlobalId(std::string_view content) {
  constexpr std::string_view kDigits =
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
  const std::uint64_t words[] = {hashOf(content, 0xCBF29CE484222325U),
                                 hashOf(content, 0x84222325CBF29CE4U)};
  // 128 bits: one digit of 2 bits, then 21 of 6.
  std::string id;
  for (int at = 126; at >= 0; at -= 6) {
    std::uint64_t digit = 0;
    for (int bit = std::min(at + 5, 127); bit >= at; --bit) {
      digit = digit << 1U | (words[bit / 64] >> static_cast<unsigned>(bit % 64) & 1U);
    }
    id += kDigits[digit];
  }
  return id;
}

std::string GlobalIds::contentOf(const Vesk::RecordElement& record) {
  std::string content = headerText(record.header) + '\n' + std::to_string(record.counter()) + '\n';
  content += nameOf(kindOf(*record.geo));
  for (const Property& property : propertiesOf(*record.geo)) {
    content += '\n' + property.name + ' ';
    content += property.type == Property::Type::kText ? property.text : pointText(property.value);
  }
  while (!seen_.insert(hashOf(content, 1)).second) content += '+';
  return content;
}

}  // namespace VeskTool
