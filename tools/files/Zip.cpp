// SPDX-License-Identifier: MIT
#include "files/Zip.h"

#include <zlib.h>

#include <utility>

namespace VeskTool {
namespace {

constexpr std::uint32_t kVersion = 20;
constexpr std::uint32_t kUtf8Names = 0x0800;
constexpr std::uint32_t kDate = (0U << 9U) | (1U << 5U) | 1U;  // 1980-01-01

void append(std::string& to, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    to += static_cast<char>(value & 0xffU);
    value >>= 8U;
  }
}

std::uint32_t sizeOf(std::string_view text) { return static_cast<std::uint32_t>(text.size()); }

// What the header of a file and its entry in the directory have in common.
void appendFacts(std::string& to, std::string_view name, std::string_view content) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(content.data());
  const auto sum = static_cast<std::uint32_t>(crc32_z(0, bytes, content.size()));
  append(to, kVersion, 2);
  append(to, kUtf8Names, 2);
  append(to, 0, 2);  // stored
  append(to, 0, 2);  // midnight
  append(to, kDate, 2);
  append(to, sum, 4);
  append(to, sizeOf(content), 4);
  append(to, sizeOf(content), 4);
  append(to, sizeOf(name), 2);
  append(to, 0, 2);  // nothing more
}

}  // namespace

void Zip::add(std::string_view name, std::string_view content) {
  const std::uint32_t place = sizeOf(archive_);
  archive_ += "PK\3\4";
  appendFacts(archive_, name, content);
  archive_.append(name).append(content);
  directory_ += "PK\1\2";
  append(directory_, kVersion, 2);
  appendFacts(directory_, name, content);
  append(directory_, 0, 2);  // no remark
  append(directory_, 0, 2);  // on this disk
  append(directory_, 0, 2);
  append(directory_, 0, 4);
  append(directory_, place, 4);
  directory_ += name;
  ++files_;
}

std::string Zip::finish() {
  const std::uint32_t place = sizeOf(archive_);
  archive_ += directory_;
  archive_ += "PK\5\6";
  append(archive_, 0, 4);
  append(archive_, static_cast<std::uint32_t>(files_), 2);
  append(archive_, static_cast<std::uint32_t>(files_), 2);
  append(archive_, sizeOf(directory_), 4);
  append(archive_, place, 4);
  append(archive_, 0, 2);
  return std::exchange(archive_, {});
}

}  // namespace VeskTool
